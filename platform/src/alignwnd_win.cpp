#include "zxhost/alignwnd.h"

bool ZX_AlignWnd(HWND wnd, HWND reference, UINT code, UINT flags)
{
    if (!IsWindow(wnd))
        return false;
    if (!reference)
        reference = GetWindow(wnd, GW_OWNER);
    if (!reference)
        reference = GetParent(wnd);
    HMONITOR monitor = MonitorFromWindow(reference ? reference : wnd, MONITOR_DEFAULTTONEAREST);
    MONITORINFO mi{};
    mi.cbSize = sizeof(mi);
    GetMonitorInfoW(monitor, &mi);
    RECT ref = mi.rcWork;
    if (reference)
        GetWindowRect(reference, &ref);
    RECT r;
    GetWindowRect(wnd, &r);
    const int w = r.right - r.left, h = r.bottom - r.top;
    int x = ref.left, y = ref.top;
    switch (code & 3) {
    case 1: x = ref.right - w; break;
    case 2: x = ref.left + (ref.right - ref.left - w) / 2; break;
    default: break;
    }
    switch ((code >> 2) & 3) {
    case 2: y = ref.bottom - h; break;
    case 3: break;   // top
    default: y = ref.top + (ref.bottom - ref.top - h) / 2; break;
    }
    if (flags & ZX_ALIGN_KEEP_ON_SCREEN) {
        if (x + w > mi.rcWork.right)
            x = mi.rcWork.right - w;
        if (y + h > mi.rcWork.bottom)
            y = mi.rcWork.bottom - h;
        if (x < mi.rcWork.left)
            x = mi.rcWork.left;
        if (y < mi.rcWork.top)
            y = mi.rcWork.top;
    }
    // Child windows are placed in their parent's client coordinates.
    if (GetWindowLongPtrW(wnd, GWL_STYLE) & WS_CHILD) {
        POINT p{x, y};
        ScreenToClient(GetParent(wnd), &p);
        x = p.x;
        y = p.y;
    }
    return SetWindowPos(wnd, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) != FALSE;
}
