// A driver's setup dialog: the library's generic template, every message of
// the dialog procedure offered to the host first.
#include "setup_dialog.h"

#include <windows.h>
#include <cstdio>

#include <zx/grabberuibase.h>
#include <zx/inputform.h>
#include <zx/status.h>

#include "provider.h"

namespace {

class CMinimalSetupUI : public CZxGrabberUI_Base {
public:
    int32_t DoInputSetup(bool modal, ZxHWnd parent) override
    {
        HWND owner = reinterpret_cast<HWND>(parent);
        if (modal)
            return int32_t(DialogBoxParamW(ZX_GetLibraryModule(), ZX_INPUT_FORM, owner, &Proc, LPARAM(this)));
        return CreateDialogParamW(ZX_GetLibraryModule(), ZX_INPUT_FORM, owner, &Proc, LPARAM(this)) ? ZX_OK : ZX_E_WINDOW;
    }

private:
    static INT_PTR CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
    {
        if (msg == WM_INITDIALOG) {
            SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
            auto* self = reinterpret_cast<CMinimalSetupUI*>(lParam);
            self->IS_InitDialog(hwnd, nullptr, nullptr);
            RECT area;
            GetWindowRect(GetDlgItem(hwnd, IDC_ZX_HISTO_AREA), &area);
            MapWindowPoints(nullptr, hwnd, reinterpret_cast<POINT*>(&area), 2);
            self->IS_Histo(area.left, area.top, area.bottom - area.top - 20, IDC_ZX_HISTO_VIEW, IDC_ZX_RANGE_RED,
                           IDC_ZX_RANGE_GREEN, IDC_ZX_RANGE_BLUE);
            // This example is run unattended: the user presses Cancel at once.
            PostMessageW(hwnd, WM_COMMAND, IDCANCEL, 0);
            return TRUE;
        }
        auto* self = reinterpret_cast<CMinimalSetupUI*>(GetWindowLongPtrW(hwnd, DWLP_USER));
        if (!self)
            return FALSE;
        INT_PTR result = 0;
        if (self->IS_Message(hwnd, msg, wParam, lParam, &result, nullptr)) {
            SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, result);
            return TRUE;
        }
        if (msg == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
            EndDialog(hwnd, LOWORD(wParam));
            return TRUE;
        }
        return FALSE;
    }
};

int g_dialogsOpened = 0;

// The application's side of the events: it counts the modal dialogs it was
// told about and leaves every event to the library (-1: not handled).
int32_t OnEvent(IZxGrabberUI::EZxEvent event, ZxHWnd, int64_t, void*)
{
    if (event == IZxGrabberUI::evInitModal)
        ++g_dialogsOpened;
    return -1;
}

}  // namespace

bool RunSetupDialog()
{
    CMinimalProvider provider;
    CMinimalSetupUI ui;
    ui.Init(&provider, &OnEvent);
    const int32_t result = ui.InputSetup(nullptr);
    std::printf("setup dialog: result %d, opened %d, settings read %d, written back %d\n", int(result),
                g_dialogsOpened, provider.settingsReads, provider.settingsWrites);
    return result == IDCANCEL && g_dialogsOpened == 1 && provider.settingsReads == 1 && provider.settingsWrites == 1;
}
