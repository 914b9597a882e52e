// The window half of CZxProgressDialog, kept apart so the bookkeeping also
// builds where there are no windows.
#pragma once
#include "zxhost/progressdialog.h"

struct SZxProgressWindow {
    /// False where there is no window system: a dialog without a window is then
    /// still shown, as bookkeeping only.
    static const bool kHasWindows;
    /// Makes the window for `dialog` over `parent`'s top-level window, which it
    /// disables; null when it cannot (or there is no window system).
    static ZxHWnd Open(CZxProgressDialog& dialog, ZxHWnd parent, bool cancellable, const wchar_t* title,
                       int flags);
    /// Shows the dialog's position in the bar and the percentage.
    static void Update(CZxProgressDialog& dialog);
    /// Greys the Cancel button out.
    static void CancelTaken(CZxProgressDialog& dialog);
    /// Enables the owner again (if it was enabled) and destroys the window.
    static void Destroy(CZxProgressDialog& dialog);
};
