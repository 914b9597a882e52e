// Scene "buttons": the owner-drawn button helpers on the library's INPUT_FORM:
// command-menu and format buttons, the fast/quality pair (quality pressed) and
// flat checks, one of them disabled.
// Scene "caution": the TEMPERATURE dialog with the library's caution icon.
#include <windows.h>

#include "zx/dialoghelpers.h"
#include "zx/grabberuibase.h"
#include "zx/inputform.h"
#include "zxshow.h"

namespace {

INT_PTR CALLBACK ButtonsProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_INITDIALOG: {
        SetWindowTextW(dlg, L"Owner-drawn buttons");
        SetDlgItemTextW(dlg, IDC_ZX_COMMAND1, L"Settings");
        SetDlgItemTextW(dlg, IDC_ZX_COMMAND2, L"2048 x 2048, 12 bit");
        ZX_InitCommandsButton(dlg, IDC_ZX_COMMAND1);
        ZX_InitCommandsButton(dlg, IDC_ZX_COMMANDMENU);
        for (int id : {IDC_ZX_HISTO_VIEW, IDC_ZX_RANGE_RED, IDC_ZX_RANGE_GREEN, IDC_ZX_RANGE_BLUE})
            ShowWindow(GetDlgItem(dlg, id), SW_HIDE);
        ZX_InitFormatButton(dlg, IDC_ZX_COMMAND2);
        ZX_InitFastQualityButtons(dlg, IDC_ZX_FAST, IDC_ZX_QUALITY);
        CheckDlgButton(dlg, IDC_ZX_QUALITY, BST_CHECKED);
        for (int id : {IDC_ZX_FAST, IDC_ZX_QUALITY})
            ShowWindow(GetDlgItem(dlg, id), SW_SHOW);
        // Two flat checks: "Automatic" (on) and "Fast = Quality" (off, disabled).
        for (int id : {IDC_ZX_AUTO, IDC_ZX_FQSYNC}) {
            HWND b = GetDlgItem(dlg, id);
            SetWindowLongPtrW(b, GWL_STYLE, (GetWindowLongPtrW(b, GWL_STYLE) & ~LONG_PTR(BS_TYPEMASK)) | BS_OWNERDRAW);
        }
        EnableWindow(GetDlgItem(dlg, IDC_ZX_FQSYNC), FALSE);
        // The value controls as a driver's page would fill them, so the buttons
        // are seen among the rest of a real page.
        const struct {
            int id;
            const wchar_t* text;
        } combos[] = {{IDC_ZX_EXPOSURE, L"20 ms"}, {IDC_ZX_FORMAT, L"2048 x 2048"}, {IDC_ZX_BINNING, L"1x1"}};
        for (const auto& c : combos) {
            SendDlgItemMessageW(dlg, c.id, CB_ADDSTRING, 0, LPARAM(c.text));
            SendDlgItemMessageW(dlg, c.id, CB_SETCURSEL, 0, 0);
        }
        SetScrollRange(GetDlgItem(dlg, IDC_ZX_GAIN), SB_CTL, 0, 100, FALSE);
        SetScrollPos(GetDlgItem(dlg, IDC_ZX_GAIN), SB_CTL, 10, TRUE);
        SetDlgItemTextW(dlg, IDC_ZX_GAIN_TEXT, L"1.0");
        SetDlgItemTextW(dlg, IDC_ZX_OFFSET_EDIT, L"0");
        SetDlgItemTextW(dlg, IDC_ZX_LBL_CHOICE, L"Readout:");
        SetDlgItemTextW(dlg, IDC_ZX_CHOICE1, L"Low Noise");
        SetDlgItemTextW(dlg, IDC_ZX_CHOICE2, L"Standard");
        SetDlgItemTextW(dlg, IDC_ZX_CHOICE3, L"Fast");
        CheckRadioButton(dlg, IDC_ZX_CHOICE1, IDC_ZX_CHOICE3, IDC_ZX_CHOICE3);
        SetDlgItemTextW(dlg, IDC_ZX_LBL_INFO, L"Frame Rate:");
        SetDlgItemTextW(dlg, IDC_ZX_INFO, L"30.0 frames/s");
        return TRUE;
    }
    case WM_DRAWITEM: {
        const auto* dis = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (dis->CtlID != IDC_ZX_AUTO && dis->CtlID != IDC_ZX_FQSYNC)
            return FALSE;
        ZX_DrawCheckButtonXP(dis, dis->CtlID == IDC_ZX_AUTO, (dis->itemState & ODS_DISABLED) != 0, true);
        return TRUE;
    }
    case WM_CLOSE:
        DestroyWindow(dlg);
        PostQuitMessage(0);
        return TRUE;
    }
    (void)wParam;
    return FALSE;
}

void ShowButtons(HINSTANCE)
{
    HWND dlg = CreateDialogParamW(ZX_GetLibraryModule(), ZX_INPUT_FORM, nullptr, &ButtonsProc, 0);
    ShowWindow(dlg, SW_SHOW);
}
ZXSHOW_SCENE(L"buttons", ShowButtons);


INT_PTR CALLBACK CautionProc(HWND dlg, UINT msg, WPARAM, LPARAM)
{
    if (msg == WM_CLOSE || (msg == WM_COMMAND)) {
        DestroyWindow(dlg);
        PostQuitMessage(0);
        return TRUE;
    }
    return msg == WM_INITDIALOG;
}

void ShowCaution(HINSTANCE)
{
    ShowWindow(CreateDialogParamW(ZX_GetLibraryModule(), L"TEMPERATURE", nullptr, &CautionProc, 0), SW_SHOW);
}
ZXSHOW_SCENE(L"caution", ShowCaution);

} // namespace
