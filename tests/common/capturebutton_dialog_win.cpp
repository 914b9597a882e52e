// The capture-button setup dialog, driven from inside its modal loop.
#include <windows.h>

#include <string>

#include "zx/capturebutton.h"
#include "zx/selectionids.h"
#include "zx/status.h"
#include "record_compare.h"
#include "zx_modal.h"
#include "zx_test.h"
#include "zxhost/locale.h"
#include "zxsim/grabber.h"

using zxtest::ClickButton;
using zxtest::ItemText;

namespace {

const wchar_t kNoCamera[] = L"\"Always use specified camera\" is checked, but no camera is specified.";
const wchar_t kNoOC[] = L"\"Use Optical Configuration\" is checked, but no OC is selected.";

bool Checked(HWND dlg, int id) { return IsDlgButtonChecked(dlg, id) == BST_CHECKED; }
bool Enabled(HWND dlg, int id) { return IsWindowEnabled(GetDlgItem(dlg, id)) != FALSE; }
LRESULT ComboSel(HWND dlg, int id) { return SendDlgItemMessageW(dlg, id, CB_GETCURSEL, 0, 0); }

int ShowDialog(SZxCaptureButtonDlgParams& params, const std::function<void(HWND)>& script, HWND owner = nullptr)
{
    return zxtest::DriveModal([&] { return ZX_CaptureButtonSetup(reinterpret_cast<ZxHWnd>(owner), params); }, script);
}

} // namespace

// Opened over an owner in the middle of the screen, then over one at its
// corner: centred over it and wholly on its monitor both times.
TEST(CaptureButtonDialog, SwitchedOffAutoCaptureShowsCentredOverItsOwnerAndComesBackUnchanged)
{
    SZxCaptureButtonSetup_Param rec(-2, true, L"kept", false, L"", L"", true, false);
    const SZxCaptureButtonSetup_Param before = rec;
    CZxSimGrabber grabber(1);   // one camera: the camera choice is off
    SZxCaptureButtonDlgParams params(&grabber, rec);
    zxtest::OwnerWindow middle(0), corner(1);
    EXPECT_EQ(ShowDialog(params,
                  [&](HWND dlg) {
                      EXPECT_TRUE(zxtest::CentredOnOwner(dlg, middle.Hwnd()));
                      EXPECT_FALSE(Checked(dlg, IDC_CB_PERFORM));
                      EXPECT_TRUE(Checked(dlg, IDC_CB_AUTOCAPTURE));
                      EXPECT_FALSE(Checked(dlg, IDC_CB_CAPTURE));
                      EXPECT_FALSE(Enabled(dlg, IDC_CB_USE_CAMERA));
                      EXPECT_FALSE(Enabled(dlg, IDC_CB_CAMERA));
                      // No configuration lists: their items and the switch are off.
                      EXPECT_FALSE(Enabled(dlg, IDC_CB_USE_OC));
                      EXPECT_FALSE(Enabled(dlg, IDC_CB_OC1_LABEL));
                      EXPECT_TRUE(Checked(dlg, IDC_CB_RESTORE));
                      EXPECT_FALSE(Checked(dlg, IDC_CB_SOUND));
                      EXPECT_EQ(ItemText(dlg, IDC_CB_NOTE),
                                L"Device Capture Button event also available in 'Run macro on event'.\r\n"
                                L"Device Capture Button event can be invoked by hotkey: Ctrl + Shift + (-).");
                      ClickButton(dlg, IDOK);
                  },
                  middle.Hwnd()),
              ZX_OK);
    EXPECT_TRUE(SameRecord(rec, before));

    // Cancel after changes leaves the record alone and gives -9.
    EXPECT_EQ(ShowDialog(params,
                  [&](HWND dlg) {
                      EXPECT_TRUE(zxtest::CentredOnOwner(dlg, corner.Hwnd()));
                      ClickButton(dlg, IDC_CB_PERFORM);
                      ClickButton(dlg, IDC_CB_CAPTURE);
                      ClickButton(dlg, IDCANCEL);
                  },
                  corner.Hwnd()),
              ZX_E_FAIL);
    EXPECT_TRUE(SameRecord(rec, before));
}

TEST(CaptureButtonDialog, ChoicesAreWrittenOnOk)
{
    CZxSimGrabber grabber(2);
    SZxGrabberCameraDesc second;
    ASSERT_EQ(grabber.CameraGet_WRP(1, second), ZX_OK);
    SZxCaptureButtonSetup_Param rec(1, false, L"", true, L"GFP", L"missing", false, true);
    SZxCaptureButtonDlgParams params(&grabber, rec);
    params.m_vecOC[0].Add(L"DAPI");
    params.m_vecOC[0].Add(L"GFP");
    params.m_vecOC[1].Add(L"Brightfield");
    EXPECT_EQ(ShowDialog(params,
                  [&](HWND dlg) {
                      EXPECT_TRUE(Checked(dlg, IDC_CB_PERFORM));
                      EXPECT_TRUE(Checked(dlg, IDC_CB_CAPTURE));
                      EXPECT_EQ(ComboSel(dlg, IDC_CB_CAMERA), CB_ERR);   // no stored camera
                      EXPECT_EQ(ComboSel(dlg, IDC_CB_OC1), 2);           // "GFP" after "(empty)", "DAPI"
                      EXPECT_EQ(ComboSel(dlg, IDC_CB_OC2), 0);           // unknown name: "(empty)"
                      EXPECT_EQ(ItemText(dlg, IDC_CB_OC2), L"(empty)");
                      EXPECT_TRUE(Checked(dlg, IDC_CB_USE_OC));
                      ClickButton(dlg, IDC_CB_AUTOCAPTURE);
                      ClickButton(dlg, IDC_CB_USE_CAMERA);
                      zxtest::SelectCombo(dlg, IDC_CB_CAMERA, 1);
                      zxtest::SelectCombo(dlg, IDC_CB_OC2, 1);
                      zxtest::SelectCombo(dlg, IDC_CB_OC1, 0);
                      ClickButton(dlg, IDC_CB_SOUND);
                      ClickButton(dlg, IDOK);
                  }),
              ZX_OK);
    const SZxCaptureButtonSetup_Param expected(2, true, second.m_wszName, true, L"", L"Brightfield", false, false);
    EXPECT_TRUE(SameRecord(rec, expected)) << rec.m_iPerformCapture << " " << rec.m_wszSpecifiedCamera;
}

TEST(CaptureButtonDialog, OkIsRefusedWithEveryMissingChoiceInOneWarning)
{
    CZxSimGrabber grabber(2);
    struct Case {
        bool useCamera;
        const wchar_t* camera;
        bool useOC;
        std::wstring message;
    } cases[] = {
        {false, L"", true, kNoOC},
        {true, L"no such camera", false, kNoCamera},
        {true, L"", true, std::wstring(kNoCamera) + L"\r\n" + kNoOC},
    };
    for (const Case& c : cases) {
        SZxCaptureButtonSetup_Param rec(1, c.useCamera, c.camera, c.useOC, L"", L"", false, true);
        const SZxCaptureButtonSetup_Param before = rec;
        SZxCaptureButtonDlgParams params(&grabber, rec);
        params.m_vecOC[0].Add(L"DAPI");
        params.m_vecOC[1].Add(L"GFP");
        zxtest::MessageBoxCapture boxes;
        EXPECT_EQ(ShowDialog(params,
                      [&](HWND dlg) {
                          ClickButton(dlg, IDOK);
                          EXPECT_TRUE(IsWindowVisible(dlg)) << "OK refused: the dialog stays";
                          ClickButton(dlg, IDCANCEL);
                      }),
                  ZX_E_FAIL);
        EXPECT_EQ(boxes.Count(), 1);
        EXPECT_EQ(boxes.LastText(), c.message);
        EXPECT_EQ(boxes.LastTitle(), L"Error");
        EXPECT_EQ(boxes.LastFlags() & MB_ICONMASK, unsigned(MB_ICONWARNING));
        EXPECT_TRUE(SameRecord(rec, before));
    }
}

TEST(CaptureButtonDialog, TemplateFollowsTheUserLanguageAndFallsBackByName)
{
    SZxCaptureButtonSetup_Param rec;
    SZxCaptureButtonDlgParams params(nullptr, rec);
    struct Case {
        uint16_t lang;
        std::wstring title;
    } cases[] = {{0x0407, L"Aufnahmetaste des Ger\u00e4ts einrichten"},
                 {0x0409, L"Device Capture Button Setup"},
                 {0x0408, L"Device Capture Button Setup"}};   // no Greek template: the neutral one
    for (const Case& c : cases) {
        const uint16_t old = ZX_SetLanguageId(c.lang);
        ShowDialog(params, [&](HWND dlg) {
            EXPECT_EQ(ItemText(dlg, 0), c.title) << c.lang;
            ClickButton(dlg, IDCANCEL);
        });
        ZX_SetLanguageId(old);
    }
}
