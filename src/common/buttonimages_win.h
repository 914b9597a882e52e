// The library's button images at the scale of a screen.
#pragma once
#include <windows.h>

namespace zxcommon {

/// Whether images for `dc` take their 200 % variant: from 144 dpi, or when the
/// application's GUI zoom is 1.5 or more.
bool UseDoubleScale(HDC dc);
/// The library's bitmap `name` with its light grey mapped to the button face:
/// `name`_200 at double scale when it fits into `height` pixels, else the 100 %
/// one (a zoomed application whose dialogs did not grow keeps small images);
/// null when missing. The caller deletes it.
HBITMAP LoadButtonImage(const wchar_t* name, HDC dc, int height);
/// Draws `bitmap` at (x, y), embossed grey when `disabled`.
void DrawButtonImage(HDC dc, HBITMAP bitmap, int x, int y, bool disabled);

} // namespace zxcommon
