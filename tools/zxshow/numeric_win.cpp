// Scene "numeric": the numeric controls' test dialog with every numeric control
// attached to the simulated camera, the dialog routing its messages through the
// control list as the hosts do, so the controls can be moved and typed into.
// The tests bind several controls to one property; here each shows a property
// of its own under its own label, as a driver's dialog would.
#include <windows.h>

#include "../../tests/inputsetup/numeric_test_resource.h"
#include "zx/inputsetupcontrols.h"
#include "zxshow.h"
#include "zxsim/camera.h"

namespace {
CZxISControlList* g_list = nullptr;

INT_PTR CALLBACK SceneProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_INITDIALOG)
        return TRUE;
    if (msg == WM_IS_PROPERTYCHANGED && g_list) {
        g_list->UpdateFromGenericMany(~0u);
        return TRUE;
    }
    if (msg != WM_COMMAND && msg != WM_HSCROLL && msg != WM_VSCROLL && msg != WM_CTLCOLORSTATIC)
        return FALSE;
    LRESULT result = 0;
    if (!g_list || !g_list->DlgProcHookMany(reinterpret_cast<ZxHWnd>(dlg), msg, wParam, lParam, &result, nullptr, ~0u))
        return FALSE;
    if (msg == WM_CTLCOLORSTATIC)
        return result;
    SetWindowLongPtrW(dlg, DWLP_MSGRESULT, result);
    return TRUE;
}

void ShowNumeric(HINSTANCE instance)
{
    static CZxSimCamera camera;
    static CZxISControlList list;
    g_list = &list;
    CZxISControlEditBase::Init();
    CZxVector_SZxGrabberPropertyValue values;
    values.Add(SZxGrabberPropertyValue(L"Gain", CZxVariant(4.5)));
    values.Add(SZxGrabberPropertyValue(L"Offset", CZxVariant(12)));
    values.Add(SZxGrabberPropertyValue(L"Gamma", CZxVariant(120)));
    values.Add(SZxGrabberPropertyValue(L"QuantilPromile", CZxVariant(25.0)));
    values.Add(SZxGrabberPropertyValue(L"TriggerMode", CZxVariant(L"Software")));
    camera.PropSet_WRP(ZX_MODE_FAST, values, nullptr, false);

    HWND dlg = CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_NUM_TEST), nullptr, SceneProc, 0);
    if (!dlg)
        return;
    const COLORREF blue = RGB(0, 0, 160);
    static CZxISControlScrollDouble gain(L"Gain", 1, IDC_NUM_SCROLL, IDC_NUM_SCROLL_TEXT, 1, blue);
    static CZxISControlScrollDoubleLog exposure(L"CaptureMaxExposure", 1, IDC_NUM_LOG, IDC_NUM_LOG_TEXT, 1, blue);
    static CZxISControlScrollInt32 offset(L"Offset", 1, IDC_NUM_INT, IDC_NUM_INT_TEXT, 1);
    static CZxISControlScrollString trigger(L"TriggerMode", 1, IDC_NUM_LIST, IDC_NUM_LIST_TEXT, 1);
    static CZxISControlSliderDouble tolerance(L"QuantilPromile", 1, IDC_NUM_TRACK, IDC_NUM_TRACK_TEXT, 1);
    static CZxISControlSliderListInt32 readout(L"ReadoutMode", 1, IDC_NUM_TRACK_LIST, 1);
    static CZxISControlSpinDouble gainSpin(L"Temperature", 1, IDC_NUM_SPIN_EDIT, 1);
    static CZxISControlSpinInt gamma(L"Gamma", 1, IDC_NUM_SPININT_EDIT, 1);
    static CZxISControlEditDouble gainEdit(L"Exposure", 1, IDC_NUM_EDIT, 1, 0, true);
    static CZxISControlEditInt32 offsetEdit(L"QuantilPixels", 1, IDC_NUM_EDIT_INT, 1, 0, true);
    static CZxISControlTextDouble sensor(L"SensorTemperature", 1, IDC_NUM_TEXT, 1);
    CZxISControl* controls[] = {&gain,     &exposure, &offset, &trigger,    &tolerance,  &readout,
                                &gainSpin, &gamma,    &gainEdit, &offsetEdit, &sensor};
    for (CZxISControl* c : controls)
        c->Attach(reinterpret_cast<ZxHWnd>(dlg), &camera, &list);
    list.ReinitAndUpdateMany(~0u);
    // The template's labels (id -1), top to bottom, named after the properties above.
    const wchar_t* labels[] = {L"Gain", L"Max. exposure", L"Offset", L"Trigger", L"Tolerance (%)", L"Readout",
                               L"Target temp.", L"Gamma", L"Exposure", L"Tolerance (px)", L"Sensor temp."};
    size_t next = 0;
    for (HWND c = GetWindow(dlg, GW_CHILD); c && next < sizeof(labels) / sizeof(labels[0]); c = GetWindow(c, GW_HWNDNEXT))
        if ((GetDlgCtrlID(c) & 0xFFFF) == 0xFFFF)
            SetWindowTextW(c, labels[next++]);
    ShowWindow(GetDlgItem(dlg, IDC_NUM_OTHER), SW_HIDE);   // the tests' focus target
    ShowWindow(dlg, SW_SHOW);
}
ZXSHOW_SCENE(L"numeric", ShowNumeric);
} // namespace
