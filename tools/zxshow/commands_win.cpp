// Scenes "exposure-combo" and "progress": the free-entry exposure combo opened
// by a click, with the current value in the middle of its list, and the progress
// window of an asynchronous command running on the simulated camera.
#include <windows.h>

#include "../../tests/inputsetup/command_test_resource.h"
#include "../../tests/inputsetup/freecombo_test_resource.h"
#include "zx/inputsetupcontrols.h"
#include "zxhost/exposure.h"
#include "zxshow.h"
#include "zxsim/camera.h"

namespace {
const UINT kPrivate = WM_USER + 500;
const UINT_PTR kPollTimer = 1;
CZxISControlList* g_list = nullptr;

// Every message goes to the list, as the hosts hand it; a timer polls the values.
INT_PTR CALLBACK SceneProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_INITDIALOG)
        return TRUE;
    if (msg == WM_TIMER && wParam == kPollTimer && g_list) {
        g_list->UpdateFromGenericMany(~0u);
        return TRUE;
    }
    LRESULT result = 0;
    if (!g_list || !g_list->DlgProcHookMany(reinterpret_cast<ZxHWnd>(dlg), msg, wParam, lParam, &result, nullptr, ~0u))
        return FALSE;
    if (msg == WM_CTLCOLORSTATIC)
        return result;
    SetWindowLongPtrW(dlg, DWLP_MSGRESULT, result);
    return TRUE;
}

// A camera whose exposure presets go in third stops from 0.1 ms to 10 s, a list
// longer than the open combo shows.
class ThirdStopCamera : public CZxSimCamera {
public:
    int PropGetDesc_WRP(uint32_t mode, const wchar_t* name, SZxGrabberPropertyDesc01& desc) override
    {
        const int rc = CZxSimCamera::PropGetDesc_WRP(mode, name, desc);
        if (rc == 0 && name && desc.m_wstrName == CZxStringW(L"Exposure")) {
            CZxVariant presets = CZxVariant::MakeArray();
            const double third[] = {1.0, 1.25, 1.6, 2.0, 2.5, 3.2, 4.0, 5.0, 6.4, 8.0};
            for (double decade = 0.1; decade < 10000.0; decade *= 10)
                for (double f : third) {
                    CZxVariant e;
                    e[L"m_dValue"] = f * decade;
                    e[L"m_wstrText"] = ZX_ExposureToText(f * decade, -1.0);
                    presets.Add(e);
                }
            desc.varValDefinition[L"m_List"] = presets;
        }
        return rc;
    }
};

int AbortThroughProvider(void* provider) { return static_cast<CZxGenProvider_Low*>(provider)->Command_Abort_WRP(); }

void ShowExposureCombo(HINSTANCE instance)
{
    static ThirdStopCamera camera;
    static CZxISControlList list;
    g_list = &list;
    CZxISControlEditBase::Init();
    CZxVector_SZxGrabberPropertyValue values;
    values.Add(SZxGrabberPropertyValue(L"Exposure", CZxVariant(50.0)));
    values.Add(SZxGrabberPropertyValue(L"Temperature", CZxVariant(-12.5)));
    camera.PropSet_WRP(ZX_MODE_FAST, values, nullptr, false);
    HWND dlg = CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_FREE_TEST), nullptr, SceneProc, 0);
    if (!dlg)
        return;
    static CZxISControlComboFreeExposure exposure(L"Exposure", 1, IDC_FREE_EXPOSURE, 1, kPrivate, false);
    static CZxISControlComboFreeExposure capture(L"CaptureMaxExposure", 1, IDC_FREE_EXPOSURE2, 1, kPrivate, false);
    static CZxISControlComboFreeTemperature temperature(L"Temperature", 1, IDC_FREE_TEMPERATURE, 1, kPrivate);
    static CZxISControlEditExposure edit(L"Exposure", 1, IDC_FREE_EDIT, 1, 0, true);
    CZxISControl* controls[] = {&exposure, &capture, &temperature, &edit};
    for (CZxISControl* c : controls)
        c->Attach(reinterpret_cast<ZxHWnd>(dlg), &camera, &list);
    list.ReinitAndUpdateMany(~0u);
    SetWindowPos(dlg, nullptr, 60, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ShowWindow(dlg, SW_SHOW);
    // The user's click on the combo, once the dialog is up.
    PostMessageW(GetDlgItem(dlg, IDC_FREE_EXPOSURE), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 8));
}
ZXSHOW_SCENE(L"exposure-combo", ShowExposureCombo);

void ShowProgress(HINSTANCE instance)
{
    static CZxSimCamera camera;
    static CZxISControlList list;
    g_list = &list;
    camera.SetCommandDuration(20000);
    HWND dlg = CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_CMD_TEST), nullptr, SceneProc, 0);
    if (!dlg)
        return;
    static CZxISControlPushCommand push(L"RestoreFactory", IDC_CMD_PUSH, 1);
    static CZxISControlPushCommandAsync calibrate(L"Calibrate", IDC_CMD_ASYNC_PROGRESS, 1, AbortThroughProvider, true);
    static CZxISControlMultiPush presets(L"ApplyExposurePreset", IDC_CMD_MULTI1, 1, IDC_CMD_MULTI3, 1);
    static CZxISControlStatic exposure(L"Exposure", 1, IDC_CMD_STATIC, 1, L"Exposure %.1f ms");
    CZxISControl* controls[] = {&push, &calibrate, &presets, &exposure};
    for (CZxISControl* c : controls)
        c->Attach(reinterpret_cast<ZxHWnd>(dlg), &camera, &list);
    list.ReinitAndUpdateMany(~0u);
    // The test dialog's own OK and Cancel would stand beside the command's Cancel.
    ShowWindow(GetDlgItem(dlg, IDOK), SW_HIDE);
    ShowWindow(GetDlgItem(dlg, IDCANCEL), SW_HIDE);
    SetWindowPos(dlg, nullptr, 60, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ShowWindow(dlg, SW_SHOW);
    SetTimer(dlg, kPollTimer, 200, nullptr);
    // The user's click on the command's button.
    HWND button = GetDlgItem(dlg, IDC_CMD_ASYNC_PROGRESS);
    PostMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDC_CMD_ASYNC_PROGRESS, BN_CLICKED), reinterpret_cast<LPARAM>(button));
}
ZXSHOW_SCENE(L"progress", ShowProgress);
} // namespace
