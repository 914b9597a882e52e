#include "zxhost/guidraw.h"

bool ZX_DrawEdge(HDC dc, const RECT& rect, UINT edge, UINT sides)
{
    RECT r = rect;
    return dc && DrawEdge(dc, &r, edge, sides) != FALSE;
}

bool ZX_DrawFrameControl(HDC dc, RECT& rect, UINT type, UINT state)
{
    return dc && DrawFrameControl(dc, &rect, type, state) != FALSE;
}

void ZX_DrawPickerArrow(HDC dc, int x, int top, int bottom, int width, bool disabled)
{
    if (!dc || width < 3)
        return;
    // An odd width gives a triangle with a sharp tip.
    const int w = (width - 1) | 1;
    const int h = (w + 1) / 2;
    const int y = top + (bottom - top - h) / 2;
    const POINT tri[3] = {{x, y}, {x + w - 1, y}, {x + w / 2, y + h - 1}};
    const COLORREF colour = GetSysColor(disabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT);
    HBRUSH brush = CreateSolidBrush(colour);
    HPEN pen = CreatePen(PS_SOLID, 1, colour);
    HGDIOBJ oldBrush = SelectObject(dc, brush);
    HGDIOBJ oldPen = SelectObject(dc, pen);
    Polygon(dc, tri, 3);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldPen);
    DeleteObject(brush);
    DeleteObject(pen);
}
