// Shared helpers of the selection dialogs.
#pragma once
#include <windows.h>

#include "zxhost/string.h"
#include "zxhost/system.h"

namespace zx {
namespace sel {

inline CZxStringW Tr(const wchar_t* text, const wchar_t* context) { return ZX_GetTranslation(text, context); }

/// The rectangle of dialog item `id` in the dialog's client coordinates.
inline RECT ItemRect(HWND dlg, int id)
{
    RECT r{};
    HWND item = GetDlgItem(dlg, id);
    if (item) {
        GetWindowRect(item, &r);
        MapWindowPoints(nullptr, dlg, reinterpret_cast<POINT*>(&r), 2);
    }
    return r;
}

/// Makes the list fill the element below its labels when the element is resized.
inline void FitList(HWND dlg, int listId)
{
    HWND list = GetDlgItem(dlg, listId);
    if (!list)
        return;
    RECT client{}, r = ItemRect(dlg, listId);
    GetClientRect(dlg, &client);
    const int w = client.right - r.left * 2, h = client.bottom - r.top - r.left;
    if (w > 20 && h > 20)
        SetWindowPos(list, nullptr, 0, 0, w, h, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// Three 16 x 16 list images: 0 a plus (define a connection), 1 a filled dot
/// (the unit in use), 2 a hollow dot (another unit).
HIMAGELIST CreateUnitImages();

} // namespace sel
} // namespace zx
