// Dialog harness for the Windows UI tests: a dialog template of the test
// executable created modeless over a simulated camera, whose dialog procedure
// records every private notification (WM_IS_*) and hands every other message
// to a control list as the setup hosts do; plus helpers that send what
// Windows sends for user input.
#pragma once
#include <windows.h>

#include <functional>
#include <string>
#include <vector>
#include "zx/inputsetupcontrols.h"
#include "zx_modal.h"
#include "zx_props.h"
#include "zxsim/camera.h"

namespace zxtest {

/// One WM_IS_* notification as the dialog received it. The format a
/// WM_IS_FORMATCHANGING points at lives only while the message is handled, so it
/// is copied into `format` (left empty when lParam is 0); equality compares the
/// three parameters.
struct Notification {
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    SZxGrabberFormatValue format{};   // the new format of WM_IS_FORMATCHANGING, when it names one
    Notification() = default;
    Notification(UINT m, WPARAM w, LPARAM l) : message(m), wParam(w), lParam(l) {}
    bool operator==(const Notification& o) const
    {
        return message == o.message && wParam == o.wParam && lParam == o.lParam;
    }
};

class TestDialog {
public:
    /// Creates the template `templateId` of the executable; fails the running
    /// test when the dialog cannot be created.
    explicit TestDialog(int templateId);
    ~TestDialog();
    TestDialog(const TestDialog&) = delete;
    TestDialog& operator=(const TestDialog&) = delete;

    HWND Hwnd() const { return m_hDlg; }
    ZxHWnd ZxHwnd() const { return reinterpret_cast<ZxHWnd>(m_hDlg); }
    HWND Item(int id) const { return GetDlgItem(m_hDlg, id); }
    CZxSimCamera& Camera() { return m_camera; }
    /// The list the dialog hands its messages to (WM_IS_* aside).
    CZxISControlList& List() { return m_list; }
    /// Attaches `control` to this dialog, the camera and the list.
    int Attach(CZxISControl& control) { return control.Attach(ZxHwnd(), &m_camera, &m_list); }

    /// The WM_IS_* notifications received, in order.
    const std::vector<Notification>& Notifications() const { return m_notes; }

    // ---- User input, as Windows reports it; each returns whether a control handled it ----
    /// WM_COMMAND with `code` from item `id` (lParam = the item's window).
    bool Command(int id, WORD code);
    bool Click(int id) { return Command(id, BN_CLICKED); }
    /// Selects `index` in a combo (CB_SETCURSEL, which notifies nothing) and sends CBN_SELCHANGE.
    bool SelectComboItem(int id, int index);
    /// WM_HSCROLL or WM_VSCROLL, by the item's orientation, with `code` and `pos`.
    bool Scroll(int id, WORD code, int pos = 0);
    /// WM_CTLCOLORSTATIC from item `id` with a DC of it, as when it paints: the
    /// brush the dialog answered, and the DC's text colour after.
    bool CtlColorStatic(int id, HBRUSH& brush, COLORREF& textColor);
    /// Focuses item `id` and presses and releases the virtual key `vk` through the
    /// input queue, so keyboard hooks and the item's window procedure see it. A
    /// `held` key (e.g. VK_LCONTROL) goes down before and up after it, so the
    /// keyboard state shows it held while the press is handled.
    void Key(int id, UINT vk, UINT held = 0);
    /// Handles every queued message.
    static void Pump();

private:
    static INT_PTR CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
    /// Sends a message from `sender` to the dialog; whether a control handled it.
    bool SendFrom(UINT msg, WPARAM wParam, HWND sender, LRESULT* answer = nullptr);

    HWND m_hDlg = nullptr;
    CZxSimCamera m_camera;
    CZxISControlList m_list;
    std::vector<Notification> m_notes;
    bool m_lastHandled = false;
};

/// Pumps until `done` holds, for about five seconds at most; whether it held.
bool PumpUntil(const std::function<bool()>& done);

inline std::wstring ItemText(const TestDialog& dlg, int id) { return ItemText(dlg.Hwnd(), id); }

/// The message of each WM_IS_* notification the dialog received, in order.
inline std::vector<UINT> Messages(const TestDialog& dlg)
{
    std::vector<UINT> m;
    for (const Notification& n : dlg.Notifications())
        m.push_back(n.message);
    return m;
}

/// The entries of a combo box, and its selected index.
inline std::vector<std::wstring> ComboTexts(HWND combo)
{
    std::vector<std::wstring> t;
    for (int i = 0; i < SendMessageW(combo, CB_GETCOUNT, 0, 0); ++i) {
        wchar_t buf[300] = {};
        SendMessageW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(buf));
        t.push_back(buf);
    }
    return t;
}
inline int Selection(HWND combo) { return static_cast<int>(SendMessageW(combo, CB_GETCURSEL, 0, 0)); }

} // namespace zxtest
