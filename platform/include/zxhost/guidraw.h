// The GUI library's drawing helpers for owner-drawn items: edges, button
// frames and the drop-down picker arrow. Windows only.
#pragma once
#include <windows.h>

#include "zxhost/export.h"

/// Draws an edge (EDGE_* / BDR_* values) on the given sides (BF_* values) of `rect`.
ZX_HOST_API bool ZX_DrawEdge(HDC dc, const RECT& rect, UINT edge, UINT sides);
/// Draws a frame control (DFC_* type, DFCS_* state); with DFCS_ADJUSTRECT,
/// `rect` shrinks to the area inside the frame.
ZX_HOST_API bool ZX_DrawFrameControl(HDC dc, RECT& rect, UINT type, UINT state);
/// Draws the downward arrow of a drop-down picker: a filled triangle `width`
/// pixels wide, centred vertically in [top, bottom), with its left edge at x;
/// grey when `disabled`.
ZX_HOST_API void ZX_DrawPickerArrow(HDC dc, int x, int top, int bottom, int width, bool disabled);
