// The advanced auto-exposure setup over the simulated camera: centred over its
// owner, Cancel in both speed-up variants, the tolerance radios and their edits,
// the re-read message, and the maximum exposure acting on the reference driver's
// auto exposure.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <string>

#include "zx/advancedsetup.h"
#include "zx/iscontrols_numeric.h"
#include "zx_modal.h"
#include "zx_props.h"
#include "zxsim/camera.h"
#include "zxsim/setupui.h"

namespace {

// The setup reads and writes the set in use (mode 0).
double Get(CZxGenProvider_Low& cam, const wchar_t* name) { return zxtest::Value(cam, name, 0); }
void Set(CZxGenProvider_Low& cam, const wchar_t* name, const CZxVariant& value) { zxtest::Set(cam, name, value, 0); }

bool Wrote(CZxSimCamera& cam, const wchar_t* name)
{
    return !zxtest::Calls(cam, (std::wstring(L"PropSet_WRP(0, ") + name + L"=").c_str()).empty();
}

// Types `text` into a bound edit and commits it, as Enter does.
void TypeAndCommit(CZxGrabberAdvancedSetupUI& ui, HWND dlg, int id, const wchar_t* text)
{
    HWND edit = GetDlgItem(dlg, id);
    SetWindowTextW(edit, text);
    auto* control = dynamic_cast<CZxISControlEditBase*>(
        ui.GetControls()._FindControl(reinterpret_cast<ZxHWnd>(edit), 0xFFFFFFFFu));
    ASSERT_TRUE(control);
    control->Commit();
}

bool Visible(HWND dlg, int id) { return (GetWindowLongPtrW(GetDlgItem(dlg, id), GWL_STYLE) & WS_VISIBLE) != 0; }

} // namespace

TEST(AdvancedSetup, OpensCentredOverItsOwnerAndCancelRestoresTheValuesReadAtStartWithTheSpeedUpInUse)
{
    // What the dialog reads at its start, each changed below and restored by Cancel.
    const std::pair<const wchar_t*, CZxVariant> start[] = {
        {L"LiveSpeedUp", 5},          {L"CaptureQuality", 95}, {L"CaptureMaxExposure", 500.0},
        {L"QuantilPromile", 2.5},     {L"QuantilPixels", 40},  {L"QuantilRelative", true}};
    for (int speedUpTime : {0, 250}) {
        SCOPED_TRACE(speedUpTime);
        CZxSimCamera cam;
        Set(cam, L"SpeedUpTime", speedUpTime);
        for (const auto& p : start)
            Set(cam, p.first, p.second);
        cam.ClearCallLog();
        CZxGrabberAdvancedSetupUI ui(&cam);
        // Each run opens over an owner in another place (see zxtest::OwnerWindow).
        zxtest::OwnerWindow owner(speedUpTime ? 1 : 0);
        const auto parent = reinterpret_cast<ZxHWnd>(owner.Hwnd());
        const int r = zxtest::DriveModal([&] { return ui.CreateUI(parent); }, [&](HWND dlg) {
            EXPECT_TRUE(zxtest::CentredOnOwner(dlg, owner.Hwnd()));
            EXPECT_TRUE(ui.IsCreated());
            EXPECT_EQ(CZxGrabberAdvancedSetupUI::IsTimeBasedSpeedUp(), speedUpTime > 0);
            EXPECT_EQ(Visible(dlg, IDC_ZX_AS_SPEEDUP), speedUpTime == 0);
            EXPECT_EQ(Visible(dlg, IDC_ZX_AS_SPEEDUPTIME), speedUpTime > 0);
            // The time combo sits inside the dialog once it is in use.
            RECT client{}, combo{};
            GetClientRect(dlg, &client);
            GetWindowRect(GetDlgItem(dlg, IDC_ZX_AS_SPEEDUPTIME), &combo);
            MapWindowPoints(nullptr, dlg, reinterpret_cast<POINT*>(&combo), 2);
            EXPECT_EQ(combo.right <= client.right, speedUpTime > 0);

            if (speedUpTime > 0) {
                zxtest::SelectCombo(dlg, IDC_ZX_AS_SPEEDUPTIME, 4);
                EXPECT_EQ(Get(cam, L"SpeedUpTime"), 1000.0);
            } else {
                HWND track = GetDlgItem(dlg, IDC_ZX_AS_SPEEDUP);
                SendMessageW(track, TBM_SETPOS, TRUE, 6);
                SendMessageW(dlg, WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 0), LPARAM(track));
                EXPECT_EQ(Get(cam, L"LiveSpeedUp"), 100.0);
            }
            zxtest::SelectCombo(dlg, IDC_ZX_AS_QUALITY, 0);
            TypeAndCommit(ui, dlg, IDC_ZX_AS_MAXEXPOSURE, L"20");
            zxtest::ClickButton(dlg, IDC_ZX_AS_ABSOLUTE);
            TypeAndCommit(ui, dlg, IDC_ZX_AS_PIXELS, L"7");
            zxtest::ClickButton(dlg, IDC_ZX_AS_RELATIVE);
            // The relative tolerance is per mille in the driver and percent beside its edit.
            EXPECT_EQ(zxtest::ItemText(dlg, IDC_ZX_AS_PROMILE), L"0.25");
            TypeAndCommit(ui, dlg, IDC_ZX_AS_PROMILE, L"1");
            EXPECT_EQ(Get(cam, L"QuantilPromile"), 10.0);
            EXPECT_EQ(zxtest::ItemText(dlg, IDC_ZX_AS_PROMILE), L"1");
            TypeAndCommit(ui, dlg, IDC_ZX_AS_PROMILE, L"0.03");
            EXPECT_EQ(Get(cam, L"CaptureQuality"), 80.0);
            EXPECT_EQ(Get(cam, L"CaptureMaxExposure"), 20.0);
            EXPECT_EQ(Get(cam, L"QuantilPixels"), 7.0);
            EXPECT_DOUBLE_EQ(Get(cam, L"QuantilPromile"), 0.3);
            EXPECT_EQ(zxtest::ItemText(dlg, IDC_ZX_AS_PROMILE), L"0.03");
            cam.ClearCallLog();
            zxtest::ClickButton(dlg, IDCANCEL);
        });
        EXPECT_EQ(r, 2);
        EXPECT_FALSE(ui.IsCreated());
        EXPECT_EQ(Get(cam, L"SpeedUpTime"), double(speedUpTime));
        for (const auto& p : start)
            EXPECT_EQ(zxtest::Read(cam, p.first, 0), p.second) << p.first;
        // Only the speed-up property in use is written back.
        EXPECT_EQ(Wrote(cam, L"SpeedUpTime"), speedUpTime > 0);
        EXPECT_EQ(Wrote(cam, L"LiveSpeedUp"), speedUpTime == 0);
        EXPECT_EQ(ui.GetControls().GetCount(), 0u) << "the list is detached with the window";
    }
}

TEST(AdvancedSetup, RadiosWriteRelativeAndEnableTheirEditAndTheRereadMessageFollowsTheDriver)
{
    CZxSimCamera cam;
    Set(cam, L"QuantilRelative", true);
    CZxGrabberAdvancedSetupUI ui(&cam);
    const int r = zxtest::DriveModal([&] { return ui.CreateUI(nullptr); }, [&](HWND dlg) {
        struct Row {
            int click;          // 0: the driver changes the value and posts the re-read message
            bool driverValue;
            bool relative;      // expected value and radio
        };
        const Row rows[] = {{0, false, true}, {IDC_ZX_AS_ABSOLUTE, false, false}, {IDC_ZX_AS_RELATIVE, false, true},
                            {0, false, false}, {0, true, true}};
        bool first = true;
        for (const Row& row : rows) {
            if (row.click) {
                zxtest::ClickButton(dlg, row.click);
            } else if (!first) {
                Set(cam, L"QuantilRelative", row.driverValue);
                cam.ClearCallLog();
                SendMessageW(dlg, WM_ZX_ADVANCED_REREAD, 0, 0);
                // The switch is read first: the refresh after it already sees the driver's choice.
                ASSERT_FALSE(cam.CallLog().empty());
                EXPECT_EQ(cam.CallLog().front(), L"PropGetSingle_WRP(0, QuantilRelative)");
            }
            first = false;
            EXPECT_EQ(Get(cam, L"QuantilRelative") != 0.0, row.relative);
            EXPECT_EQ(IsDlgButtonChecked(dlg, IDC_ZX_AS_RELATIVE) == BST_CHECKED, row.relative);
            EXPECT_EQ(IsDlgButtonChecked(dlg, IDC_ZX_AS_ABSOLUTE) == BST_CHECKED, !row.relative);
            EXPECT_EQ(IsWindowEnabled(GetDlgItem(dlg, IDC_ZX_AS_PROMILE)) != 0, row.relative);
            EXPECT_EQ(IsWindowEnabled(GetDlgItem(dlg, IDC_ZX_AS_PIXELS)) != 0, !row.relative);
        }
        // Default writes the documented defaults.
        Set(cam, L"CaptureMaxExposure", 7.0);
        zxtest::ClickButton(dlg, IDC_ZX_AS_DEFAULT);
        EXPECT_EQ(Get(cam, L"CaptureMaxExposure"), 2000.0);
        EXPECT_EQ(Get(cam, L"CaptureQuality"), 90.0);
        EXPECT_EQ(Get(cam, L"QuantilPromile"), 1.0) << "one per mille";
        EXPECT_EQ(zxtest::ItemText(dlg, IDC_ZX_AS_PROMILE), L"0.1") << "shown as 0.1 %";
        zxtest::ClickButton(dlg, IDOK);
    });
    EXPECT_EQ(r, 1);
    EXPECT_EQ(Get(cam, L"CaptureMaxExposure"), 2000.0) << "OK keeps what the dialog wrote";
}

TEST(AdvancedSetup, MaximumExposureSetInTheDialogMovesWhereAutoExposureSettles)
{
    CZxSimDriverCamera cam;
    CZxSimSetupUI driver(cam);
    Set(cam, L"AutoExposure", true);
    Set(cam, L"Exposure", 1.0);
    auto settle = [&] {
        for (int i = 0; i < 8; ++i)
            driver.AcquireFrame();
        return Get(cam, L"Exposure");
    };
    const double free = settle();
    EXPECT_GT(free, 10.0) << "the scene needs more than the limit set below";

    CZxGrabberAdvancedSetupUI ui(&cam);
    EXPECT_EQ(zxtest::DriveModal([&] { return ui.CreateUI(nullptr); },
                                 [&](HWND dlg) {
                                     TypeAndCommit(ui, dlg, IDC_ZX_AS_MAXEXPOSURE, L"5");
                                     zxtest::ClickButton(dlg, IDOK);
                                 }),
              1);
    EXPECT_EQ(Get(cam, L"CaptureMaxExposure"), 5.0);
    const double limited = settle();
    EXPECT_LE(limited, 5.0 + 1e-9);
    EXPECT_GT(limited, 4.0);
}
