// The window system's own message box, behind ZX_MessageBox's test hook: Win32's
// box on Windows, none elsewhere.
#pragma once
#include "zxhost/export.h"

/// Shows the box (Windows MB_* flags) and returns the pressed button's id; 0
/// without a window system.
int ZxShowSystemMessageBox(ZxHWnd parent, const wchar_t* text, const wchar_t* title, unsigned flags);
