#include "zx_dialog.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "zx_test.h"

namespace zxtest {

TestDialog::TestDialog(int templateId)
{
    static const bool commonControls = [] {
        INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
        return InitCommonControlsEx(&icc) != FALSE;
    }();
    (void)commonControls;
    m_hDlg = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(templateId), nullptr, &Proc,
                                reinterpret_cast<LPARAM>(this));
    if (!m_hDlg)
        ADD_FAILURE() << "dialog " << templateId << " not created, error " << GetLastError();
}

TestDialog::~TestDialog()
{
    if (m_hDlg)
        DestroyWindow(m_hDlg);
    Pump();
}

INT_PTR CALLBACK TestDialog::Proc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_INITDIALOG) {
        SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
        return TRUE;
    }
    auto* self = reinterpret_cast<TestDialog*>(GetWindowLongPtrW(hwnd, DWLP_USER));
    if (!self)
        return FALSE;
    if (msg >= WM_IS_FORMATCHANGING && msg <= WM_IS_COMMANDDONE) {
        Notification n{msg, wParam, lParam};
        if (msg == WM_IS_FORMATCHANGING && lParam)
            n.format = *reinterpret_cast<const SZxGrabberFormatValue*>(lParam);
        self->m_notes.push_back(n);
        return TRUE;
    }
    // Every other message goes to the list, which picks what it routes.
    LRESULT result = 0;
    self->m_lastHandled = self->m_list.DlgProcHookMany(self->ZxHwnd(), msg, wParam, lParam, &result, nullptr, ~0u);
    if (!self->m_lastHandled)
        return FALSE;
    // A dialog procedure answers the colour messages with the brush itself.
    if (msg == WM_CTLCOLORSTATIC)
        return result;
    SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, result);
    return TRUE;
}

bool TestDialog::SendFrom(UINT msg, WPARAM wParam, HWND sender, LRESULT* answer)
{
    m_lastHandled = false;
    const LRESULT r = SendMessageW(m_hDlg, msg, wParam, reinterpret_cast<LPARAM>(sender));
    if (answer)
        *answer = r;
    return m_lastHandled;
}

bool TestDialog::Command(int id, WORD code) { return SendFrom(WM_COMMAND, MAKEWPARAM(id, code), Item(id)); }

bool TestDialog::SelectComboItem(int id, int index)
{
    SendMessageW(Item(id), CB_SETCURSEL, index, 0);
    return Command(id, CBN_SELCHANGE);
}

bool TestDialog::Scroll(int id, WORD code, int pos)
{
    HWND item = Item(id);
    const LONG_PTR style = GetWindowLongPtrW(item, GWL_STYLE);
    wchar_t cls[32] = {};
    GetClassNameW(item, cls, 32);
    // An up-down is vertical unless told otherwise; scroll and track bars are horizontal.
    const bool vertical = lstrcmpiW(cls, UPDOWN_CLASSW) == 0
                              ? (style & UDS_HORZ) == 0
                              : (style & (lstrcmpiW(cls, TRACKBAR_CLASSW) == 0 ? TBS_VERT : SBS_VERT)) != 0;
    return SendFrom(vertical ? WM_VSCROLL : WM_HSCROLL, MAKEWPARAM(code, pos), item);
}

bool TestDialog::CtlColorStatic(int id, HBRUSH& brush, COLORREF& textColor)
{
    HWND item = Item(id);
    HDC dc = GetDC(item);
    LRESULT answer = 0;
    const bool handled = SendFrom(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), item, &answer);
    brush = reinterpret_cast<HBRUSH>(answer);
    textColor = GetTextColor(dc);
    ReleaseDC(item, dc);
    return handled;
}

void TestDialog::Key(int id, UINT vk, UINT held)
{
    SetForegroundWindow(m_hDlg);
    // Focusing an item that already holds the focus (or whose child does, as the
    // edit part of a combo) would make it lose the focus for a moment.
    HWND item = Item(id), focus = GetFocus();
    if (focus != item && !IsChild(item, focus))
        SetFocus(item);
    INPUT in[4] = {};
    UINT n = 0;
    const UINT keys[4] = {held, vk, vk, held};
    for (int i = 0; i < 4; ++i) {
        if (!keys[i])
            continue;
        in[n].type = INPUT_KEYBOARD;
        in[n].ki.wVk = static_cast<WORD>(keys[i]);
        in[n].ki.dwFlags = i >= 2 ? KEYEVENTF_KEYUP : 0;
        ++n;
    }
    ::SendInput(n, in, sizeof(INPUT));
    Pump();
}

void TestDialog::Pump()
{
    MSG m;
    while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&m);
        DispatchMessageW(&m);
    }
}

bool PumpUntil(const std::function<bool()>& done)
{
    return WaitFor([&] {
        TestDialog::Pump();
        return done();
    });
}

} // namespace zxtest
