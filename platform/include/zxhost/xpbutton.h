// The GUI library's owner-drawn button style. Windows only.
#pragma once
#include <windows.h>

#include "zxhost/export.h"

/// Turns the dialog's button `id` into an owner-drawn button (its owner paints
/// it on WM_DRAWITEM) and marks it for the hot-tracked look; ids of -1 or 0 and
/// missing items are skipped. Whether the button exists.
ZX_HOST_API bool ZX_CreateXPOwnerDrawButton(HWND dialog, int id);
/// Whether ZX_CreateXPOwnerDrawButton made this window owner-drawn.
ZX_HOST_API bool ZX_IsXPOwnerDrawButton(HWND button);
