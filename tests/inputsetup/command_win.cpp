// Command controls on a real dialog over the simulated camera: button texts,
// commands run by clicks, the formatted static, and asynchronous commands
// followed by polling, in button mode and with the progress window.
#include <windows.h>

#include <string>

#include "command_test_resource.h"
#include "zx_dialog.h"
#include "zx_test.h"
#include "zxhost/rtti.h"
#include "zxhost/system.h"

using zxtest::Calls;
using zxtest::ItemText;
using zxtest::TestDialog;


TEST(PushCommand, KeepsATemplateTextFillsAnEmptyOneAndRunsItsCommandToTheEnd)
{
    TestDialog dlg(IDD_CMD_TEST);
    CZxISControlPushCommand empty(L"RestoreFactory", IDC_CMD_PUSH, 1), given(L"Snap", IDC_CMD_PUSH_TEXT, 1);
    dlg.Attach(empty);
    dlg.Attach(given);
    EXPECT_EQ(empty.Reinit(), 0);
    EXPECT_EQ(given.Reinit(), 0);
    EXPECT_EQ(ItemText(dlg, IDC_CMD_PUSH), L"Factory Settings");
    EXPECT_EQ(ItemText(dlg, IDC_CMD_PUSH_TEXT), L"Start");
    dlg.List().UpdateStateMany(~0u);
    EXPECT_EQ(IsWindowEnabled(dlg.Item(IDC_CMD_PUSH)), TRUE) << "a command is always available";

    zxtest::Set(dlg.Camera(), L"Gain", 5.0);
    dlg.Camera().ClearCallLog();
    EXPECT_TRUE(dlg.Click(IDC_CMD_PUSH));
    EXPECT_FALSE(dlg.Command(IDC_CMD_PUSH, BN_SETFOCUS));
    // Synchronous: the command has done its work when the click returns.
    EXPECT_EQ(Calls(dlg.Camera(), L"Command_WRP"), std::vector<std::wstring>{L"Command_WRP(RestoreFactory, null)"});
    EXPECT_EQ(zxtest::Value(dlg.Camera(), L"Gain"), 1.0);
}

TEST(MultiPush, PressingTheMiddleOfThreeButtonsSendsIndexOneAndAllButtonsFollowEnableAndShow)
{
    TestDialog dlg(IDD_CMD_TEST);
    CZxISControlMultiPush row(L"ApplyExposurePreset", IDC_CMD_MULTI1, ZX_MODE_FAST, IDC_CMD_MULTI3, 1);
    dlg.Attach(row);
    EXPECT_EQ(dlg.List().GetCount(), 1u);
    for (int id : {IDC_CMD_MULTI1, IDC_CMD_MULTI2, IDC_CMD_MULTI3})
        EXPECT_EQ(dlg.List()._FindControl(reinterpret_cast<ZxHWnd>(dlg.Item(id)), ~0u), &row) << id;

    dlg.Camera().ClearCallLog();
    EXPECT_TRUE(dlg.Click(IDC_CMD_MULTI2));
    EXPECT_EQ(Calls(dlg.Camera(), L"Command_WRP"), std::vector<std::wstring>{L"Command_WRP(ApplyExposurePreset, 1)"});
    EXPECT_FALSE(dlg.Click(IDOK)) << "only its own buttons reach it";

    EXPECT_EQ(row.Enable(false), 0);
    EXPECT_EQ(row.Show(false), 0);
    for (int id : {IDC_CMD_MULTI1, IDC_CMD_MULTI2, IDC_CMD_MULTI3}) {
        EXPECT_FALSE(IsWindowEnabled(dlg.Item(id))) << id;
        EXPECT_FALSE(IsWindowVisible(dlg.Item(id))) << id;
    }
    EXPECT_EQ(IsWindowEnabled(dlg.Item(IDC_CMD_PUSH)), TRUE) << "other items are left alone";
}

TEST(StaticValue, FormatsByRunTypeOrItsOwnFormatAndEmptiesForOtherTypes)
{
    const struct {
        const wchar_t* name;
        CZxVariant value;
        const wchar_t* format;
        const wchar_t* shown;
    } cases[] = {
        {L"Gain", 2.5, L"Gain %.2f x", L"Gain 2.50 x"},
        {L"Gain", 2.5, nullptr, L"2.500000"},
        {L"BufferCount", -3, nullptr, L"-3"},
        {L"BufferCount", 7, L"%03i buffers", L"007 buffers"},
        {L"CameraLabel", L"Bench 2", nullptr, L"Bench 2"},
        {L"Cooling", false, nullptr, L""},
        {L"NoSuchProperty", 0, L"%i", L""},
    };
    TestDialog dlg(IDD_CMD_TEST);
    for (const auto& k : cases) {
        zxtest::Set(dlg.Camera(), k.name, k.value);
        SetDlgItemTextW(dlg.Hwnd(), IDC_CMD_STATIC, L"old");
        CZxISControlStatic s(k.name, ZX_MODE_FAST, IDC_CMD_STATIC, 1, k.format);
        dlg.Attach(s);
        EXPECT_EQ(s.UpdateFromGeneric(), 0);
        EXPECT_EQ(ItemText(dlg, IDC_CMD_STATIC), k.shown) << k.name;
        dlg.List().Remove(&s);
    }
    zxtest::DiagCapture diag;
    const std::wstring tooLong(300, L'x');
    CZxISControlStatic cut(L"Gain", ZX_MODE_FAST, IDC_CMD_STATIC, 1, tooLong.c_str());
    EXPECT_EQ(std::wstring(cut.GetFormat()), tooLong.substr(0, 255));
    EXPECT_EQ(diag.Count(L"wcslen(format) > 255"), 1);
}

namespace {
int g_general = 0;
int CountGeneral(void*, int code, void*)
{
    g_general += code == 1;
    return 0;
}

int AbortThroughProvider(void* provider) { return static_cast<CZxGenProvider_Low*>(provider)->Command_Abort_WRP(); }
} // namespace

TEST(AsyncCommand, InButtonModeTheButtonCancelsWhileRunningAndComesBackWhenTheCommandEnds)
{
    TestDialog dlg(IDD_CMD_TEST);
    CZxSimCamera& cam = dlg.Camera();
    cam.SetGeneralCallback(CountGeneral, nullptr);
    g_general = 0;
    HWND button = dlg.Item(IDC_CMD_ASYNC);
    CZxISControlPushCommandAsync c(L"Calibrate", IDC_CMD_ASYNC, 1, nullptr, false);
    dlg.Attach(c);
    c.Reinit();
    cam.SetCommandDuration(20);
    cam.HoldCommandAt(0.0);
    cam.ClearCallLog();
    EXPECT_TRUE(dlg.Click(IDC_CMD_ASYNC));
    EXPECT_EQ(Calls(cam, L"Command_WRP"), std::vector<std::wstring>{L"Command_WRP(Calibrate, null, async)"});
    EXPECT_EQ(ItemText(button, 0), L"Cancel");
    c.Reinit();
    EXPECT_EQ(c.UpdateFromGeneric(), 0);
    EXPECT_TRUE(c.IsRunning()) << "progress 0.0 is still running";
    EXPECT_EQ(ItemText(button, 0), L"Cancel");

    cam.HoldCommandAt(-1);
    ASSERT_TRUE(zxtest::WaitForProgress(cam, L"Calibrate", -1));
    c.UpdateFromGeneric();
    c.UpdateFromGeneric();
    EXPECT_FALSE(c.IsRunning());
    EXPECT_EQ(ItemText(button, 0), L"Calibrate") << "the saved text, not the Cancel of the last Reinit";
    EXPECT_EQ(g_general, 1);

    // A second click aborts the running command in the camera.
    cam.SetCommandDuration(60000);
    dlg.Click(IDC_CMD_ASYNC);
    dlg.Click(IDC_CMD_ASYNC);
    EXPECT_EQ(cam.CallCount(L"Command_Abort_WRP"), 1);
    double progress = 0;
    CZxStringW status;
    cam.Command_Status_WRP(L"Calibrate", progress, status);
    EXPECT_STREQ(status, L"Aborted");
    EXPECT_EQ(ItemText(button, 0), L"Calibrate");
    EXPECT_EQ(g_general, 2);

    // Enabled exactly while the command's status can be read.
    EnableWindow(button, FALSE);
    c.UpdateState();
    EXPECT_TRUE(IsWindowEnabled(button));
    cam.FailNext(L"Command_Status_WRP", -9);
    c.UpdateState();
    EXPECT_FALSE(IsWindowEnabled(button));
}

TEST(AsyncCommand, InProgressModeTheWindowFollowsThePollAndItsCancelAbortsTheCamera)
{
    TestDialog dlg(IDD_CMD_TEST);
    CZxSimCamera& cam = dlg.Camera();
    cam.SetGeneralCallback(CountGeneral, nullptr);
    g_general = 0;
    CZxISControlPushCommandAsync c(L"Calibrate", IDC_CMD_ASYNC_PROGRESS, 1, AbortThroughProvider, true);
    dlg.Attach(c);
    c.Reinit();
    EXPECT_EQ(ItemText(dlg, IDC_CMD_ASYNC_PROGRESS), L"Dark Calibration");

    cam.SetCommandDuration(20);
    cam.HoldCommandAt(0.456);
    EXPECT_TRUE(dlg.Click(IDC_CMD_ASYNC_PROGRESS));
    const CZxProgressDialog& progress = c.GetProgressDialog();
    ASSERT_TRUE(progress.IsOn());
    EXPECT_FALSE(IsWindowEnabled(dlg.Hwnd())) << "the dialog waits for the command";
    EXPECT_EQ(dlg.Notifications().back(), zxtest::Notification(WM_IS_REFRESH, 0xFFFFFFFF, 0));
    ASSERT_TRUE(zxtest::WaitForProgress(cam, L"Calibrate", 0.456));
    EXPECT_EQ(c.UpdateFromGeneric(), 0);
    EXPECT_EQ(progress.GetPos(), 46);

    HWND cancel = GetDlgItem(reinterpret_cast<HWND>(progress.GetWindow()), IDCANCEL);
    ASSERT_TRUE(cancel);
    SendMessageW(cancel, BM_CLICK, 0, 0);
    EXPECT_EQ(cam.CallCount(L"Command_Abort_WRP"), 1);
    c.UpdateFromGeneric();
    c.UpdateFromGeneric();
    EXPECT_FALSE(progress.IsOn());
    EXPECT_TRUE(IsWindowEnabled(dlg.Hwnd()));
    EXPECT_EQ(g_general, 1);
}

namespace {
CZxStringW MarkContext(const wchar_t* text, const wchar_t* context)
{
    return CZxStringW::Formatted(L"%s:%s", context, text);
}

// A driver class of its own with a translation module: the driver's labels are
// looked up there, so a library text found there would be looked up in the wrong place.
class ContextDriver : public CZxSimCamera {
public:
    CZxStringW GrabberDriverGetClassName() override { return L"CZxGrabberDriverContext"; }
};
} // namespace

TEST(AsyncCommand, ItsCancelAndProgressTextsAreTheLibrarysNotTheDrivers)
{
    CZxVariant meta = CZxVariant::MakeRecord(L"SZxDriverMetadata");
    meta[L"m_fileReference"] = L"contextdriver";
    ASSERT_EQ(CZxRTTI::RegisterClassImpl(L"IZxGrabberDriver01", L"CZxGrabberDriverContext", meta), 0);
    PFN_ZxTranslate old = ZX_SetTranslationHook(&MarkContext);
    TestDialog dlg(IDD_CMD_TEST);
    ContextDriver cam;
    cam.SetCommandDuration(60000);
    CZxISControlPushCommandAsync button(L"Calibrate", IDC_CMD_ASYNC, 1, nullptr, false);
    CZxISControlPushCommandAsync window(L"Calibrate", IDC_CMD_ASYNC_PROGRESS, 1, AbortThroughProvider, true);
    for (CZxISControl* c : {static_cast<CZxISControl*>(&button), static_cast<CZxISControl*>(&window)}) {
        c->Attach(dlg.ZxHwnd(), &cam, &dlg.List());
        c->Reinit();
    }
    EXPECT_EQ(ItemText(dlg, IDC_CMD_ASYNC_PROGRESS), L"contextdriver:Dark Calibration") << "the driver's own label";

    EXPECT_TRUE(dlg.Click(IDC_CMD_ASYNC));
    EXPECT_EQ(ItemText(dlg, IDC_CMD_ASYNC), L"inputsetupcontrols:Cancel");
    dlg.Click(IDC_CMD_ASYNC);   // aborts
    EXPECT_TRUE(dlg.Click(IDC_CMD_ASYNC_PROGRESS));
    ASSERT_TRUE(window.GetProgressDialog().IsOn());
    EXPECT_EQ(ItemText(reinterpret_cast<HWND>(window.GetProgressDialog().GetWindow()), 0),
              L"inputsetupcontrols:Progress");
    cam.Command_Abort_WRP();
    window.UpdateFromGeneric();
    window.UpdateFromGeneric();
    EXPECT_FALSE(window.GetProgressDialog().IsOn());

    ZX_SetTranslationHook(old);
    CZxRTTI::UnregisterClassImpl(L"IZxGrabberDriver01", L"CZxGrabberDriverContext");
}
