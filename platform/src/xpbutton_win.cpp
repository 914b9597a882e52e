#include "zxhost/xpbutton.h"

namespace {
const wchar_t kMark[] = L"ZxXPOwnerDraw";
}

bool ZX_CreateXPOwnerDrawButton(HWND dialog, int id)
{
    HWND button = id != -1 && id != 0 ? GetDlgItem(dialog, id) : nullptr;
    if (!button)
        return false;
    const LONG_PTR style = GetWindowLongPtrW(button, GWL_STYLE);
    SetWindowLongPtrW(button, GWL_STYLE, (style & ~LONG_PTR(BS_TYPEMASK)) | BS_OWNERDRAW);
    SetPropW(button, kMark, reinterpret_cast<HANDLE>(1));
    InvalidateRect(button, nullptr, TRUE);
    return true;
}

bool ZX_IsXPOwnerDrawButton(HWND button) { return button && GetPropW(button, kMark) != nullptr; }
