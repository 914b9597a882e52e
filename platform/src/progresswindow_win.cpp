#include <windows.h>

#include <commctrl.h>
#include <cwchar>

#include "progresswindow.h"
#include "zxhost/system.h"

namespace {

const wchar_t kClass[] = L"ZxProgressWindow";
enum { kBarId = 100, kPercentId = 101 };
// Client layout in pixels: a margin, the bar, the percentage, the button row.
enum { kMargin = 14, kWidth = 340, kBarHeight = 20, kTextHeight = 16, kButtonWidth = 88, kButtonHeight = 26 };

HWND H(ZxHWnd w) { return reinterpret_cast<HWND>(w); }

CZxProgressDialog* DialogOf(HWND hwnd)
{
    return reinterpret_cast<CZxProgressDialog*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
}

LRESULT CALLBACK ProgressProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_NCCREATE:
        SetWindowLongPtrW(hwnd, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
        break;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDCANCEL && HIWORD(wParam) == BN_CLICKED) {
            if (CZxProgressDialog* dialog = DialogOf(hwnd))
                dialog->Cancel();
            return 0;
        }
        break;
    case WM_CLOSE:
        // Only the job's owner closes the window; the close box asks like Cancel.
        if (CZxProgressDialog* dialog = DialogOf(hwnd))
            if (GetDlgItem(hwnd, IDCANCEL))
                dialog->Cancel();
        return 0;
    case WM_CTLCOLORSTATIC:
        SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    }
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

bool RegisterOnce(HINSTANCE instance)
{
    static const bool registered = [instance] {
        INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_PROGRESS_CLASS};
        InitCommonControlsEx(&icc);
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = ProgressProc;
        wc.hInstance = instance;
        wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        wc.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        wc.lpszClassName = kClass;
        return RegisterClassExW(&wc) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    }();
    return registered;
}

HWND Child(HWND parent, const wchar_t* cls, const wchar_t* text, DWORD style, int x, int y, int w, int h, int id,
           HINSTANCE instance)
{
    HWND child = CreateWindowExW(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, parent,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return child;
}

} // namespace

const bool SZxProgressWindow::kHasWindows = true;

ZxHWnd SZxProgressWindow::Open(CZxProgressDialog& dialog, ZxHWnd parent, bool cancellable, const wchar_t* title,
                               int flags)
{
    HINSTANCE instance = GetModuleHandleW(nullptr);
    if (!RegisterOnce(instance))
        return nullptr;
    HWND owner = parent ? GetAncestor(H(parent), GA_ROOT) : nullptr;
    const int clientHeight =
        kMargin + kBarHeight + 6 + kTextHeight + (cancellable ? 6 + kButtonHeight : 0) + kMargin;
    const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    RECT rc{0, 0, kWidth, clientHeight};
    AdjustWindowRectEx(&rc, style, FALSE, WS_EX_DLGMODALFRAME);
    const int w = rc.right - rc.left, h = rc.bottom - rc.top;
    int x = CW_USEDEFAULT, y = CW_USEDEFAULT;
    if ((flags & CZxProgressDialog::ZX_PROGRESS_CENTER) && owner) {
        RECT o;
        GetWindowRect(owner, &o);
        x = o.left + ((o.right - o.left) - w) / 2;
        y = o.top + ((o.bottom - o.top) - h) / 2;
    }
    HWND hwnd = CreateWindowExW(WS_EX_DLGMODALFRAME, kClass, title, style, x, y, w, h, owner, nullptr, instance,
                                &dialog);
    if (!hwnd)
        return nullptr;
    Child(hwnd, PROGRESS_CLASSW, L"", 0, kMargin, kMargin, kWidth - 2 * kMargin, kBarHeight, kBarId, instance);
    if (flags & CZxProgressDialog::ZX_PROGRESS_PERCENT)
        Child(hwnd, L"STATIC", L"", SS_LEFT, kMargin, kMargin + kBarHeight + 6, 120, kTextHeight, kPercentId,
              instance);
    if (cancellable)
        Child(hwnd, L"BUTTON", ZX_GetTranslation(L"Cancel", L"progressdialog"), BS_PUSHBUTTON | WS_TABSTOP,
              kWidth - kMargin - kButtonWidth, clientHeight - kMargin - kButtonHeight, kButtonWidth,
              kButtonHeight, IDCANCEL, instance);
    // The owner waits while the job runs: it takes no input until Close.
    dialog.m_hOwner = reinterpret_cast<ZxHWnd>(owner);
    dialog.m_bOwnerWasEnabled = owner && IsWindowEnabled(owner);
    if (dialog.m_bOwnerWasEnabled)
        EnableWindow(owner, FALSE);
    ShowWindow(hwnd, SW_SHOWNORMAL);
    UpdateWindow(hwnd);
    return reinterpret_cast<ZxHWnd>(hwnd);
}

void SZxProgressWindow::Update(CZxProgressDialog& dialog)
{
    HWND hwnd = H(dialog.m_hWnd);
    if (!hwnd)
        return;
    HWND bar = GetDlgItem(hwnd, kBarId);
    SendMessageW(bar, PBM_SETRANGE32, dialog.m_iMin, dialog.m_iMax);
    SendMessageW(bar, PBM_SETPOS, dialog.m_iPos, 0);
    if (HWND text = GetDlgItem(hwnd, kPercentId)) {
        const long long span = static_cast<long long>(dialog.m_iMax) - dialog.m_iMin;
        wchar_t buf[16];
        std::swprintf(buf, 16, L"%d %%", static_cast<int>((dialog.m_iPos - dialog.m_iMin) * 100LL / span));
        SetWindowTextW(text, buf);
    }
}

void SZxProgressWindow::CancelTaken(CZxProgressDialog& dialog)
{
    if (HWND button = GetDlgItem(H(dialog.m_hWnd), IDCANCEL))
        EnableWindow(button, FALSE);
}

void SZxProgressWindow::Destroy(CZxProgressDialog& dialog)
{
    // Enable the owner first, so it gets the activation back when the window goes.
    if (dialog.m_hOwner && dialog.m_bOwnerWasEnabled)
        EnableWindow(H(dialog.m_hOwner), TRUE);
    if (dialog.m_hWnd)
        DestroyWindow(H(dialog.m_hWnd));
}
