// Scene "inputsetup": the input-setup test dialog with base controls attached
// to the simulated camera through a control list. The tests' template names
// its items after their kinds; the scene names them after what they show.
#include <windows.h>

#include <commctrl.h>
#include <utility>

#include "../../tests/inputsetup/inputsetup_test_resource.h"
#include "zx/inputsetupcontrols.h"
#include "zxshow.h"
#include "zxsim/camera.h"

namespace {
INT_PTR CALLBACK SceneProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

void ShowInputSetup(HINSTANCE instance)
{
    HWND dlg = CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_IS_TEST), nullptr, SceneProc, 0);
    if (!dlg)
        return;
    const wchar_t* labels[] = {L"Trigger", L"Target temp.", L"Exposure", L"Sharpness", L"Sensor temp."};
    size_t next = 0;
    for (HWND c = GetWindow(dlg, GW_CHILD); c && next < sizeof(labels) / sizeof(labels[0]); c = GetWindow(c, GW_HWNDNEXT))
        if ((GetDlgCtrlID(c) & 0xFFFF) == 0xFFFF)
            SetWindowTextW(c, labels[next++]);
    const std::pair<int, const wchar_t*> captions[] = {
        {IDC_IS_LABEL, L"Gain"},          {IDC_IS_CHECK, L"Cooling"},     {IDC_IS_RADIO1, L"Slow"},
        {IDC_IS_RADIO2, L"Normal"},       {IDC_IS_RADIO3, L"Fast"}, {IDC_IS_PUSH, L"Snap"},
        {IDC_IS_PUSH_TEXT, L"Calibrate"}, {IDC_IS_MULTI1, L"1 ms"},       {IDC_IS_MULTI2, L"10 ms"},
        {IDC_IS_MULTI3, L"100 ms"}};
    for (const auto& c : captions)
        SetDlgItemTextW(dlg, c.first, c.second);
    ShowWindow(GetDlgItem(dlg, IDC_IS_OWNERDRAW), SW_HIDE);   // drawn by the tests only
    SetWindowTextW(dlg, L"Input Setup");
    SetDlgItemTextW(dlg, IDC_IS_EDIT, L"1.0");
    HWND combo = GetDlgItem(dlg, IDC_IS_COMBO);
    for (const wchar_t* s : {L"Free Run", L"Software", L"Hardware"})
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    SendMessageW(combo, CB_SETCURSEL, 0, 0);
    SetDlgItemTextW(dlg, IDC_IS_COMBO_EDIT, L"-10.0");
    SCROLLINFO si{sizeof(si), SIF_RANGE | SIF_POS, 0, 100, 0, 40, 0};
    SetScrollInfo(GetDlgItem(dlg, IDC_IS_SCROLL), SB_CTL, &si, TRUE);
    SetDlgItemTextW(dlg, IDC_IS_SCROLL_TEXT, L"20 ms");
    SendDlgItemMessageW(dlg, IDC_IS_TRACK, TBM_SETRANGEMAX, TRUE, 10);
    SendDlgItemMessageW(dlg, IDC_IS_TRACK, TBM_SETPOS, TRUE, 3);
    SetDlgItemTextW(dlg, IDC_IS_TRACK_TEXT, L"3");
    SetDlgItemTextW(dlg, IDC_IS_SPIN_EDIT, L"25.0");
    CheckRadioButton(dlg, IDC_IS_RADIO1, IDC_IS_RADIO3, IDC_IS_RADIO2);
    SetDlgItemTextW(dlg, IDC_IS_STATIC, L"Frame rate 30.0");
    SetDlgItemTextW(dlg, IDC_IS_LIST_TEXT, L"Binning 2x2");

    // The controls follow the simulated camera's property states: the sensor
    // temperature is read-only and the target temperature unavailable while the
    // cooler is off, so their items come out disabled. The command group is
    // switched off by the list.
    static CZxSimCamera camera;
    CZxVector_SZxGrabberPropertyValue coolerOff;
    coolerOff.Add(SZxGrabberPropertyValue(L"Cooling", CZxVariant(false)));
    camera.PropSet_WRP(ZX_MODE_FAST, coolerOff, nullptr, false);
    static CZxISControlList list;
    static CZxISControl controls[] = {
        {CZxISControl::ctValueEditor, CZxISControl::btProperty, L"Gain", 1, IDC_IS_EDIT, 1},
        {CZxISControl::ctCombo, CZxISControl::btProperty, L"TriggerMode", 1, IDC_IS_COMBO, 1},
        {CZxISControl::ctValueEditor, CZxISControl::btProperty, L"Temperature", 1, IDC_IS_COMBO_EDIT, 1},
        {CZxISControl::ctValueEditor, CZxISControl::btProperty, L"Exposure", 1, IDC_IS_SCROLL, 1},
        {CZxISControl::ctValueEditor, CZxISControl::btProperty, L"SensorTemperature", 1, IDC_IS_SPIN_EDIT, 1},
        {CZxISControl::ctCheck, CZxISControl::btProperty, L"Cooling", 1, IDC_IS_CHECK, 1},
        {CZxISControl::ctMultiPush, CZxISControl::btCommand, L"ApplyExposurePreset", 1, IDC_IS_MULTI2, 2},
    };
    for (CZxISControl& c : controls)
        c.Attach(reinterpret_cast<ZxHWnd>(dlg), &camera, &list);
    list.UpdateStateMany(1);
    list.EnableMany(false, 2);
    ShowWindow(dlg, SW_SHOW);
}
ZXSHOW_SCENE(L"inputsetup", ShowInputSetup);
} // namespace
