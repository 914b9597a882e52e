// The GUI library's window alignment. Windows only.
#pragma once
#include <windows.h>

#include "zxhost/export.h"

/// Alignment codes: horizontal part (code & 3) 0 left, 1 right, 2 centred;
/// vertical part ((code >> 2) & 3) 0 or 1 centred, 2 bottom, 3 top. So 2 and 6
/// both centre a window over its reference (dialogs open centred unless asked
/// otherwise) and 14 puts it centred at the reference's top.
enum : UINT { ZX_ALIGN_KEEP_ON_SCREEN = 1 /**< flag: keep the window inside the work area */ };

/// Moves `wnd` (size kept) to the place `code` names inside `reference`'s window
/// rectangle (null: `wnd`'s owner or parent, else the work area). With
/// ZX_ALIGN_KEEP_ON_SCREEN the result is pushed inside the work area of the
/// reference's monitor. False when `wnd` is no window.
ZX_HOST_API bool ZX_AlignWnd(HWND wnd, HWND reference, UINT code, UINT flags);
