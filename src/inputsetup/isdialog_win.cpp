#include <windows.h>

#include <type_traits>
#include "inputsetup/isdialog.h"

// The portable hook signatures must be the system's own, or derived controls
// written against WPARAM/LPARAM/LRESULT would not override them.
static_assert(std::is_same<ZxWParam, WPARAM>::value, "ZxWParam must be WPARAM");
static_assert(std::is_same<ZxLParam, LPARAM>::value, "ZxLParam must be LPARAM");
static_assert(std::is_same<ZxLResult, LRESULT>::value, "ZxLResult must be LRESULT");
static_assert(ZX_WM_USER_BASE == WM_USER, "private notifications start at WM_USER");

namespace zxis {

ZxHWnd DlgItem(ZxHWnd dialog, int id)
{
    return dialog ? reinterpret_cast<ZxHWnd>(GetDlgItem(reinterpret_cast<HWND>(dialog), id)) : nullptr;
}

ZxLResult Send(ZxHWnd window, unsigned message, ZxWParam wParam, ZxLParam lParam)
{
    return window ? SendMessageW(reinterpret_cast<HWND>(window), message, wParam, lParam) : 0;
}

int EnableItem(ZxHWnd item, bool enable)
{
    return EnableWindow(reinterpret_cast<HWND>(item), enable ? TRUE : FALSE);
}

int ShowItem(ZxHWnd item, bool show)
{
    return ShowWindow(reinterpret_cast<HWND>(item), show ? SW_SHOW : SW_HIDE);
}

} // namespace zxis
