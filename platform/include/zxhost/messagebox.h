// The host's message box helper. Tests replace the box with a hook that
// records what would have been shown.
#pragma once
#include "zxhost/export.h"

/// Receives every message box instead of the window system; returns the button id.
typedef int (*PFN_ZxMessageBoxHook)(ZxHWnd parent, const wchar_t* text, const wchar_t* title, unsigned flags);

/// Shows a message box (Windows MB_* flags) owned by `parent` and returns the
/// pressed button's id. Without a window system and without a hook it returns 0.
ZX_HOST_API int ZX_MessageBox(ZxHWnd parent, const wchar_t* text, const wchar_t* title, unsigned flags);
/// Replaces the box (null restores it); returns the previous hook.
ZX_HOST_API PFN_ZxMessageBoxHook ZX_SetMessageBoxHook(PFN_ZxMessageBoxHook hook);
