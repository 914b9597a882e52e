// The reference driver's setup dialog on the simulated camera: Cancel of a
// modal dialog, and the live histogram and auto exposure of its acquisition.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "zx/inputform.h"
#include "zx_dialog.h"
#include "reference_driver.h"
#include "zx_modal.h"

namespace {

// The driver reads and writes the set in use (mode 0).
void Set(CZxGenProvider_Low& camera, const wchar_t* name, const CZxVariant& value) { zxtest::Set(camera, name, value, 0); }
double Get(CZxGenProvider_Low& camera, const wchar_t* name) { return zxtest::Value(camera, name, 0); }

TEST_F(ReferenceDriver, ModalCancelRestoresTheSettingsAndTheControlsShowThem)
{
    SZxGrabberCameraSettings before, after;
    camera.CameraSettingsGet_UNI_WRP(before, ZX_SETTINGS_ALL, true);
    const int shown[] = {IDC_ZX_EXPOSURE, IDC_ZX_INFO, IDC_ZX_GAIN_TEXT, IDC_ZX_OFFSET_EDIT, IDC_ZX_FORMAT,
                         IDC_ZX_BINNING, IDC_ZX_CHOICE3};
    const int n = int(std::size(shown));
    std::wstring initial[7], changed[7], restored[7];
    auto read = [&](HWND dlg, std::wstring* texts) {
        for (int i = 0; i < n; ++i)
            texts[i] = shown[i] == IDC_ZX_CHOICE3 ? std::to_wstring(IsDlgButtonChecked(dlg, IDC_ZX_CHOICE3))
                                                  : zxtest::ItemText(dlg, shown[i]);
    };
    EXPECT_EQ(zxtest::DriveModal([&] { return ui.InputSetup(nullptr); }, [&](HWND dlg) {
        EXPECT_EQ(dlg, ui.GetHDlg());
        read(dlg, initial);
        // The longest preset, picked in the exposure combo as a user does.
        zxtest::SelectCombo(dlg, IDC_ZX_EXPOSURE, int(SendDlgItemMessageW(dlg, IDC_ZX_EXPOSURE, CB_GETCOUNT, 0, 0)) - 1);
        // Another readout in the radio run, the full-size format in its combo.
        SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDC_ZX_CHOICE1, BN_CLICKED), LPARAM(GetDlgItem(dlg, IDC_ZX_CHOICE1)));
        zxtest::SelectCombo(dlg, IDC_ZX_FORMAT, 0);
        // A page to the right on the gain's scroll bar.
        SendMessageW(dlg, WM_HSCROLL, SB_PAGERIGHT, LPARAM(GetDlgItem(dlg, IDC_ZX_GAIN)));
        // The offset changed by the camera itself, shown after a refresh; the set
        // link and the ROI too, which Cancel restores with the rest.
        Set(camera, L"Offset", 40);
        camera.ModeFQSynchronize(!before.m_bFQSynchronized);
        camera.ROISet(CZxRect(8, 8, 64, 64));
        camera.ROIEnable(true);
        SendMessageW(dlg, WM_IS_REFRESH, WPARAM(-1), 0);
        read(dlg, changed);
        SendMessageW(dlg, WM_COMMAND, IDCANCEL, LPARAM(GetDlgItem(dlg, IDCANCEL)));
        // Ended, not yet destroyed: the controls show what Cancel restored.
        read(dlg, restored);
    }), IDCANCEL);
    EXPECT_EQ(initial[1], L"30.0 frames/s");
    for (int i = 0; i < n; ++i) {
        EXPECT_NE(changed[i], initial[i]) << "item " << shown[i];
        EXPECT_EQ(restored[i], initial[i]) << "item " << shown[i];
    }
    EXPECT_EQ(Get(camera, L"Exposure"), 20.0);
    camera.CameraSettingsGet_UNI_WRP(after, ZX_SETTINGS_ALL, true);
    EXPECT_TRUE(after.m_vecPropFast == before.m_vecPropFast);
    EXPECT_TRUE(after.m_vecPropQuality == before.m_vecPropQuality);
    EXPECT_EQ(after.m_fmtFast, before.m_fmtFast);
    EXPECT_EQ(after.m_bFQSynchronized, before.m_bFQSynchronized);
    EXPECT_EQ(after.m_bROIEnabled, before.m_bROIEnabled);
    EXPECT_EQ(after.m_rcROI, before.m_rcROI);
    EXPECT_EQ(ui.GetHDlg(), nullptr);
}

TEST_F(ReferenceDriver, LiveHistogramFollowsTheExposureAndAutoExposureCorrectsIt)
{
    ASSERT_EQ(ui.InputSetupModelessShow(nullptr), 0);
    HWND dlg = ui.GetHDlg();
    ASSERT_TRUE(dlg);
    ui.StartAcquisition(10);
    ASSERT_TRUE(zxtest::PumpUntil([&] { return !zxtest::ItemText(dlg, IDC_ZX_RANGE_RED).empty(); }));
    const std::wstring atDefault = zxtest::ItemText(dlg, IDC_ZX_RANGE_RED);
    Set(camera, L"Exposure", 5.0);
    EXPECT_TRUE(zxtest::PumpUntil([&] { return zxtest::ItemText(dlg, IDC_ZX_RANGE_RED) != atDefault; })) << "range stays " << atDefault.c_str();

    // Over-exposed with auto exposure on: the driver brings the exposure down.
    Set(camera, L"Exposure", 200.0);
    Set(camera, L"AutoExposure", true);
    EXPECT_TRUE(zxtest::PumpUntil([&] { return Get(camera, L"Exposure") < 100.0; }))
        << Get(camera, L"Exposure");
    ui.StopAcquisition();
    // The modeless dialog's OK goes through the provider back to the driver, which closes it.
    SendMessageW(dlg, WM_COMMAND, IDOK, LPARAM(GetDlgItem(dlg, IDOK)));
    EXPECT_FALSE(IsWindow(dlg));
    EXPECT_EQ(ui.GetHDlg(), nullptr);
}

} // namespace

TEST_F(ReferenceDriver, TheSamePageDocksAsAnElementAndOpensTheAdvancedSetupFromBothHosts)
{
    HWND page = reinterpret_cast<HWND>(element.CreateUI(L"setup", 0, reinterpret_cast<ZxHWnd>(pane), nullptr, nullptr));
    ASSERT_TRUE(page);
    for (bool docked : {false, true}) {
        SCOPED_TRACE(docked ? "element" : "dialog");
        if (!docked)
            ui.InputSetupModelessShow(nullptr);
        HWND hwnd = docked ? page : ui.GetHDlg();
        ASSERT_TRUE(hwnd);
        CZxISControlList& list = docked ? element.GetControls() : ui.GetControls();
        EXPECT_EQ(list.GetCount(), 10u);
        EXPECT_EQ(IsWindowVisible(GetDlgItem(hwnd, IDOK)) != 0, !docked);
        EXPECT_FALSE(zxtest::ItemText(hwnd, IDC_ZX_EXPOSURE).empty());
        // The page's button opens the advanced setup on the same camera.
        Set(camera, L"CaptureMaxExposure", 2000.0);
        const int r = zxtest::DriveModal(
            [&] {
                zxtest::ClickButton(hwnd, IDC_ZX_ADVANCED);
                return 1;
            },
            [&](HWND advanced) {
                EXPECT_EQ(zxtest::ItemText(advanced, 0), L"Advanced Setup");
                Set(camera, L"CaptureMaxExposure", 30.0);
                zxtest::ClickButton(advanced, IDCANCEL);
            });
        EXPECT_EQ(r, 1);
        EXPECT_EQ(Get(camera, L"CaptureMaxExposure"), 2000.0) << "its Cancel restored the value";

        // The library-drawn fast/quality pair switches the set in use, and the
        // items show the other set's values.
        zxtest::Set(camera, L"Exposure", 20.0, ZX_MODE_FAST);
        zxtest::Set(camera, L"Exposure", 80.0, ZX_MODE_QUALITY);
        EXPECT_EQ(GetWindowLongPtrW(GetDlgItem(hwnd, IDC_ZX_QUALITY), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
        EXPECT_EQ(zxtest::ItemText(hwnd, IDC_ZX_QUALITY), L"Live - Quality");
        EXPECT_EQ(IsDlgButtonChecked(hwnd, IDC_ZX_FAST), BST_CHECKED);
        const std::wstring fastExposure = zxtest::ItemText(hwnd, IDC_ZX_EXPOSURE);
        zxtest::ClickButton(hwnd, IDC_ZX_QUALITY);
        EXPECT_EQ(camera.GetModeFQ(), uint32_t(ZX_MODE_QUALITY));
        EXPECT_EQ(IsDlgButtonChecked(hwnd, IDC_ZX_QUALITY), BST_CHECKED);
        EXPECT_EQ(IsDlgButtonChecked(hwnd, IDC_ZX_FAST), BST_UNCHECKED);
        EXPECT_NE(zxtest::ItemText(hwnd, IDC_ZX_EXPOSURE), fastExposure);
        zxtest::ClickButton(hwnd, IDC_ZX_FAST);
        EXPECT_EQ(camera.GetModeFQ(), uint32_t(ZX_MODE_FAST));
        EXPECT_EQ(zxtest::ItemText(hwnd, IDC_ZX_EXPOSURE), fastExposure);

        // Live acceleration shows in the frame rate at the page's next poll.
        Set(camera, L"Exposure", 200.0);
        const struct { int speedUp, time; const wchar_t* shown; } rates[] = {
            {1, 0, L"5.0 frames/s"}, {5, 0, L"25.0 frames/s"}, {1, 100, L"10.0 frames/s"}, {1, 0, L"5.0 frames/s"}};
        for (const auto& r : rates) {
            Set(camera, L"LiveSpeedUp", r.speedUp);
            Set(camera, L"SpeedUpTime", r.time);
            SendMessageW(hwnd, WM_TIMER, 1, 0);
            EXPECT_EQ(zxtest::ItemText(hwnd, IDC_ZX_INFO), r.shown) << r.speedUp << "x, " << r.time << " ms";
        }
        Set(camera, L"Exposure", 20.0);
        if (!docked)
            ui.InputSetupModelessHide();
    }
    element.DestroyUI();
    EXPECT_EQ(element.GetControls().GetCount(), 0u);
}
