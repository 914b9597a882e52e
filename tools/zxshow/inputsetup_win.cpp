// Scene "inputsetup": the input-setup test dialog with base controls attached
// through a control list; the group shown disabled is switched off by the list.
#include <windows.h>

#include <commctrl.h>

#include "../../tests/inputsetup/inputsetup_test_resource.h"
#include "zx/inputsetupcontrols.h"
#include "zxshow.h"

namespace {
INT_PTR CALLBACK SceneProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

void ShowInputSetup(HINSTANCE instance)
{
    HWND dlg = CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_IS_TEST), nullptr, SceneProc, 0);
    if (!dlg)
        return;
    SetDlgItemTextW(dlg, IDC_IS_EDIT, L"12.5");
    HWND combo = GetDlgItem(dlg, IDC_IS_COMBO);
    for (const wchar_t* s : {L"Mono 8", L"Mono 12", L"Colour"})
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    SendMessageW(combo, CB_SETCURSEL, 1, 0);
    SetDlgItemTextW(dlg, IDC_IS_COMBO_EDIT, L"20 ms");
    SCROLLINFO si{sizeof(si), SIF_RANGE | SIF_POS, 0, 100, 0, 40, 0};
    SetScrollInfo(GetDlgItem(dlg, IDC_IS_SCROLL), SB_CTL, &si, TRUE);
    SetDlgItemTextW(dlg, IDC_IS_SCROLL_TEXT, L"40.0");
    SendDlgItemMessageW(dlg, IDC_IS_TRACK, TBM_SETRANGEMAX, TRUE, 10);
    SendDlgItemMessageW(dlg, IDC_IS_TRACK, TBM_SETPOS, TRUE, 3);
    SetDlgItemTextW(dlg, IDC_IS_TRACK_TEXT, L"3");
    SetDlgItemTextW(dlg, IDC_IS_SPIN_EDIT, L"1.50");
    CheckDlgButton(dlg, IDC_IS_CHECK, BST_CHECKED);
    CheckRadioButton(dlg, IDC_IS_RADIO1, IDC_IS_RADIO3, IDC_IS_RADIO2);
    SetDlgItemTextW(dlg, IDC_IS_STATIC, L"Sensor temperature 21.5");
    SetDlgItemTextW(dlg, IDC_IS_LIST_TEXT, L"Binning 2x2");

    // Group 1 stays enabled, group 2 (the value editors) is disabled by the list.
    static CZxISControlList list;
    static CZxISControl controls[] = {
        {CZxISControl::ctCombo, CZxISControl::btProperty, L"PixelFormat", 1, IDC_IS_COMBO, 1},
        {CZxISControl::ctCheck, CZxISControl::btProperty, L"Cooler", 1, IDC_IS_CHECK, 1},
        {CZxISControl::ctPushCommand, CZxISControl::btCommand, L"Snap", 1, IDC_IS_PUSH_TEXT, 1},
        {CZxISControl::ctValueEditor, CZxISControl::btProperty, L"Gain", 1, IDC_IS_SCROLL, 2},
        {CZxISControl::ctValueEditor, CZxISControl::btProperty, L"Exposure", 1, IDC_IS_COMBO_EDIT, 2},
        {CZxISControl::ctValueEditor, CZxISControl::btProperty, L"Offset", 1, IDC_IS_TRACK, 2},
    };
    for (CZxISControl& c : controls)
        c.Attach(reinterpret_cast<ZxHWnd>(dlg), nullptr, &list);
    list.EnableMany(false, 2);
    ShowWindow(dlg, SW_SHOW);
}
ZXSHOW_SCENE(L"inputsetup", ShowInputSetup);
} // namespace
