#include <windows.h>

#include <type_traits>
#include "inputsetup/isdialog.h"
#include "inputsetup/wincontrols.h"

// The portable hook signatures must be the system's own, or derived controls
// written against WPARAM/LPARAM/LRESULT would not override them.
static_assert(std::is_same<ZxWParam, WPARAM>::value, "ZxWParam must be WPARAM");
static_assert(std::is_same<ZxLParam, LPARAM>::value, "ZxLParam must be LPARAM");
static_assert(std::is_same<ZxLResult, LRESULT>::value, "ZxLResult must be LRESULT");
static_assert(ZX_WM_USER_BASE == WM_USER, "private notifications start at WM_USER");

namespace zxis {

ZxHWnd DlgItem(ZxHWnd dialog, int id)
{
    return dialog ? zxwin::Z(zxwin::Item(dialog, id)) : nullptr;
}

ZxLResult Send(ZxHWnd window, unsigned message, ZxWParam wParam, ZxLParam lParam)
{
    return window ? SendMessageW(zxwin::H(window), message, wParam, lParam) : 0;
}

int EnableItem(ZxHWnd item, bool enable)
{
    return EnableWindow(zxwin::H(item), enable ? TRUE : FALSE);
}

int ShowItem(ZxHWnd item, bool show)
{
    return ShowWindow(zxwin::H(item), show ? SW_SHOW : SW_HIDE);
}

} // namespace zxis
