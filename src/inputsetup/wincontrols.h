// Thin typed wrappers over the window controls the input-setup controls drive:
// one message per method, so the controls' code names what it does and every
// message parameter is converted here, once.
#pragma once
#include <windows.h>

#include <commctrl.h>

#include <vector>
#include "zx/inputsetupmessages.h"
#include "zxhost/string.h"

namespace zxwin {

/// The portable handle as the system's, and back.
inline HWND H(ZxHWnd w) { return reinterpret_cast<HWND>(w); }
inline ZxHWnd Z(HWND w) { return reinterpret_cast<ZxHWnd>(w); }
/// Item `id` of `dialog`.
inline HWND Item(ZxHWnd dialog, int id) { return GetDlgItem(H(dialog), id); }
/// The window a notification (WM_COMMAND, scroll, colour) names in its lParam.
inline HWND Sender(ZxLParam lParam) { return reinterpret_cast<HWND>(lParam); }

/// Any window: its text, redraw switch and font.
class Window {
public:
    explicit Window(HWND w) : m_hWnd(w) {}
    explicit Window(ZxHWnd w) : m_hWnd(H(w)) {}
    HWND Handle() const { return m_hWnd; }

    /// The text, at most `maxChars` characters of it.
    CZxStringW Text(int maxChars) const
    {
        std::vector<wchar_t> buf(size_t(maxChars) + 1, L'\0');
        GetWindowTextW(m_hWnd, buf.data(), maxChars + 1);
        return CZxStringW(buf.data());
    }
    void SetRedraw(bool on) const { Send(WM_SETREDRAW, on ? TRUE : FALSE, 0); }
    HFONT Font() const { return reinterpret_cast<HFONT>(Send(WM_GETFONT, 0, 0)); }

protected:
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        return SendMessageW(m_hWnd, message, wParam, lParam);
    }
    static LPARAM Ptr(const void* p) { return reinterpret_cast<LPARAM>(p); }

    HWND m_hWnd;
};

/// A combo box; indexes are -1 where the control answers CB_ERR.
class Combo : public Window {
public:
    using Window::Window;
    int Count() const { return int(Send(CB_GETCOUNT, 0, 0)); }
    int Selection() const { return int(Send(CB_GETCURSEL, 0, 0)); }
    void Select(int index) const { Send(CB_SETCURSEL, WPARAM(index), 0); }
    /// Appends (or inserts sorted) `text`; its index, negative on failure.
    int Add(const wchar_t* text) const { return int(Send(CB_ADDSTRING, 0, Ptr(text))); }
    void Delete(int index) const { Send(CB_DELETESTRING, WPARAM(index), 0); }
    void Clear() const { Send(CB_RESETCONTENT, 0, 0); }
    LRESULT Data(int index) const { return Send(CB_GETITEMDATA, WPARAM(index), 0); }
    /// False when the control refused (CB_ERR).
    bool SetData(int index, LPARAM data) const { return Send(CB_SETITEMDATA, WPARAM(index), data) != CB_ERR; }
    /// The text of item `index`; empty for an index the combo does not have.
    CZxStringW ItemText(int index) const
    {
        const LRESULT len = Send(CB_GETLBTEXTLEN, WPARAM(index), 0);
        if (len < 0)
            return CZxStringW();
        std::vector<wchar_t> buf(size_t(len) + 1, L'\0');
        Send(CB_GETLBTEXT, WPARAM(index), Ptr(buf.data()));
        return CZxStringW(buf.data());
    }
    int ItemHeight() const { return int(Send(CB_GETITEMHEIGHT, 0, 0)); }
    void SetMinVisible(int count) const { Send(CB_SETMINVISIBLE, WPARAM(count), 0); }
    void ShowDropDown(bool show) const { Send(CB_SHOWDROPDOWN, show ? TRUE : FALSE, 0); }
    void SetTopIndex(int index) const { Send(CB_SETTOPINDEX, WPARAM(index), 0); }
};

/// A list box (a combo's drop-down list).
class ListBox : public Window {
public:
    using Window::Window;
    void SetTopIndex(int index) const { Send(LB_SETTOPINDEX, WPARAM(index), 0); }
};

/// An up-down control (32-bit range and position).
class UpDown : public Window {
public:
    using Window::Window;
    void SetRange(int low, int high) const { Send(UDM_SETRANGE32, WPARAM(low), LPARAM(high)); }
    void Range(int& low, int& high) const { Send(UDM_GETRANGE32, WPARAM(&low), Ptr(&high)); }
    void SetPos(int pos) const { Send(UDM_SETPOS32, 0, LPARAM(pos)); }
    /// The position; 0 when the control has no window.
    int Pos() const
    {
        BOOL failed = FALSE;
        return int(Send(UDM_GETPOS32, 0, Ptr(&failed)));
    }
    HWND Buddy() const { return reinterpret_cast<HWND>(Send(UDM_GETBUDDY, 0, 0)); }
};

/// A track bar.
class TrackBar : public Window {
public:
    using Window::Window;
    void SetRangeMin(int pos, bool redraw) const { Send(TBM_SETRANGEMIN, redraw ? TRUE : FALSE, LPARAM(pos)); }
    void SetRangeMax(int pos, bool redraw) const { Send(TBM_SETRANGEMAX, redraw ? TRUE : FALSE, LPARAM(pos)); }
    void SetPageSize(int size) const { Send(TBM_SETPAGESIZE, 0, LPARAM(size)); }
    void SetPos(int pos) const { Send(TBM_SETPOS, TRUE, LPARAM(pos)); }
    int Pos() const { return int(Send(TBM_GETPOS, 0, 0)); }
};

/// A scroll-bar control (range from 0).
class ScrollBar : public Window {
public:
    using Window::Window;
    void SetRange(int maxPos) const { Send(SBM_SETRANGEREDRAW, 0, LPARAM(maxPos)); }
    void SetPos(int pos) const { Send(SBM_SETPOS, WPARAM(pos), TRUE); }
    int Pos() const { return int(Send(SBM_GETPOS, 0, 0)); }
};

/// A button.
class Button : public Window {
public:
    using Window::Window;
    void SetCheck(bool checked) const { Send(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0); }
};

/// A tooltip control.
class Tooltip : public Window {
public:
    using Window::Window;
    void SetMaxWidth(int pixels) const { Send(TTM_SETMAXTIPWIDTH, 0, LPARAM(pixels)); }
    void AddTool(const TOOLINFOW& tool) const { Send(TTM_ADDTOOLW, 0, Ptr(&tool)); }
    void UpdateText(const TOOLINFOW& tool) const { Send(TTM_UPDATETIPTEXTW, 0, Ptr(&tool)); }
};

/// A dialog: its private notifications to itself.
class Dialog : public Window {
public:
    using Window::Window;
    /// Sends `message` with a key code and the sending control's id.
    LRESULT Notify(UINT message, WPARAM key, int controlId) const { return Send(message, key, LPARAM(controlId)); }
};

} // namespace zxwin
