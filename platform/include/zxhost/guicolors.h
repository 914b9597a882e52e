// The GUI library's colour scheme and default font. Windows only.
#pragma once
#include <windows.h>

#include "zxhost/export.h"

/// Indices of the scheme's colours.
enum : int {
    /// Window background.
    ZX_GUICOLOR_WINDOW = 0,
    /// Text.
    ZX_GUICOLOR_TEXT = 1,
    /// Selection highlight.
    ZX_GUICOLOR_HIGHLIGHT = 2,
    /// Background the scheme paints behind owner-drawn buttons; 0 means the
    /// scheme paints none and the item fills itself with the button face.
    ZX_GUICOLOR_BUTTONBACK = 8,
    /// Number of colour slots.
    ZX_GUICOLOR_COUNT = 16,
};

/// A colour of the scheme (COLORREF); 0 for indices out of range.
ZX_HOST_API COLORREF ZX_GetGUIColor(int index);
/// Changes a colour of the scheme (a skinned application does this).
ZX_HOST_API void ZX_SetGUIColor(int index, COLORREF colour);
/// The application's default GUI font (the system's message font), created once.
ZX_HOST_API HFONT ZX_GetDefaultGUIFont();
