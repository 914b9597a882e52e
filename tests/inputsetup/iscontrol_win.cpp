// The control base on a real dialog: registration by item window, the window
// calls behind Enable/Show, and the harness's input reaching a control.
#include <windows.h>

#include <commctrl.h>
#include "inputsetup_test_resource.h"
#include "zx_dialog.h"
#include "zx_test.h"

using zxtest::TestDialog;

namespace {
// Remembers every message its hook was given.
class HookProbe : public CZxISControl {
public:
    explicit HookProbe(int id) : CZxISControl(ctValueEditor, btProperty, L"Probe", 1, id, 1) {}
    bool DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam lParam, ZxLResult* result) override
    {
        seen.push_back(zxtest::Notification{message, wParam, lParam});
        *result = 0;
        return true;
    }
    std::vector<zxtest::Notification> seen;
};

LPARAM L(HWND h) { return reinterpret_cast<LPARAM>(h); }
} // namespace

TEST(ControlBase, AttachRegistersTheItemWindowOnlyWhenGivenAList)
{
    TestDialog dlg(IDD_IS_TEST);
    CZxISControl c(CZxISControl::ctCheck, CZxISControl::btProperty, L"Cooler", 1, IDC_IS_CHECK, 1);
    CZxISControlList other;
    EXPECT_EQ(c.Attach(dlg.ZxHwnd(), nullptr, nullptr), 0);
    EXPECT_EQ(c.GetDialog(), dlg.ZxHwnd());
    EXPECT_EQ(other.GetCount(), 0u);
    EXPECT_EQ(dlg.List().GetCount(), 0u);

    EXPECT_EQ(dlg.Attach(c), 0);
    EXPECT_EQ(dlg.List()._FindControl(reinterpret_cast<ZxHWnd>(dlg.Item(IDC_IS_CHECK)), ~0u), &c);
    EXPECT_EQ(c.Detach(), 0);
    EXPECT_EQ(c.Detach(), 0);
    EXPECT_EQ(c.GetDialog(), nullptr);
    EXPECT_EQ(c.GetProvider(), nullptr);
    // Detaching leaves the registration to the host.
    EXPECT_EQ(dlg.List().GetCount(), 1u);
    // Detached, the window calls reach no item.
    EXPECT_EQ(c.Enable(true), -11);
}

TEST(ControlBase, EnableAndShowMapThePreviousStateOfTheItem)
{
    TestDialog dlg(IDD_IS_TEST);
    CZxISControl c(CZxISControl::ctCombo, CZxISControl::btProperty, L"Mode", 1, IDC_IS_COMBO, 1);
    dlg.Attach(c);
    HWND item = dlg.Item(IDC_IS_COMBO);

    // EnableWindow answers nonzero when the item was disabled before.
    EXPECT_EQ(c.Enable(false), -11);
    EXPECT_FALSE(IsWindowEnabled(item));
    EXPECT_EQ(c.Enable(false), 0);
    EXPECT_EQ(c.Enable(true), 0);
    EXPECT_TRUE(IsWindowEnabled(item));

    // ShowWindow answers nonzero when the item was visible before.
    EXPECT_EQ(c.Show(false), 0);
    EXPECT_FALSE(GetWindowLongPtrW(item, GWL_STYLE) & WS_VISIBLE);
    EXPECT_EQ(c.Show(false), -11);
    EXPECT_EQ(c.Show(true), -11);
    EXPECT_TRUE(GetWindowLongPtrW(item, GWL_STYLE) & WS_VISIBLE);
}

TEST(DialogHarness, UserInputReachesTheControlAsWindowsReportsIt)
{
    TestDialog dlg(IDD_IS_TEST);
    HookProbe push(IDC_IS_PUSH), combo(IDC_IS_COMBO), scroll(IDC_IS_SCROLL), track(IDC_IS_TRACK),
        spin(IDC_IS_SPIN);
    for (HookProbe* p : {&push, &combo, &scroll, &track, &spin})
        dlg.Attach(*p);

    EXPECT_TRUE(dlg.Click(IDC_IS_PUSH));
    EXPECT_EQ(dlg.LastRouted(), &push);
    ASSERT_EQ(push.seen.size(), 1u);
    EXPECT_EQ(push.seen[0], (zxtest::Notification{WM_COMMAND, MAKEWPARAM(IDC_IS_PUSH, BN_CLICKED),
                                                   L(dlg.Item(IDC_IS_PUSH))}));

    HWND comboWnd = dlg.Item(IDC_IS_COMBO);
    for (const wchar_t* s : {L"a", L"b", L"c"})
        SendMessageW(comboWnd, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    EXPECT_TRUE(dlg.SelectComboItem(IDC_IS_COMBO, 2));
    EXPECT_EQ(SendMessageW(comboWnd, CB_GETCURSEL, 0, 0), 2);
    ASSERT_EQ(combo.seen.size(), 1u);
    EXPECT_EQ(combo.seen[0].wParam, MAKEWPARAM(IDC_IS_COMBO, CBN_SELCHANGE));

    dlg.Scroll(IDC_IS_SCROLL, SB_PAGERIGHT);
    dlg.Scroll(IDC_IS_TRACK, SB_THUMBTRACK, 7);
    ASSERT_EQ(scroll.seen.size(), 1u);
    EXPECT_EQ(scroll.seen[0], (zxtest::Notification{WM_HSCROLL, SB_PAGERIGHT, L(dlg.Item(IDC_IS_SCROLL))}));
    ASSERT_EQ(track.seen.size(), 1u);
    EXPECT_EQ(track.seen[0], (zxtest::Notification{WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 7), L(dlg.Item(IDC_IS_TRACK))}));

    // An arrow click moves the up-down within its range and notifies twice.
    SendMessageW(dlg.Item(IDC_IS_SPIN), UDM_SETRANGE32, 0, 5);
    SendMessageW(dlg.Item(IDC_IS_SPIN), UDM_SETPOS32, 0, 4);
    EXPECT_TRUE(dlg.SpinClick(IDC_IS_SPIN, 3));
    EXPECT_EQ(SendMessageW(dlg.Item(IDC_IS_SPIN), UDM_GETPOS32, 0, 0), 5);
    ASSERT_EQ(spin.seen.size(), 2u);
    EXPECT_EQ(spin.seen[0].message, static_cast<UINT>(WM_VSCROLL));
    EXPECT_EQ(spin.seen[0].wParam, MAKEWPARAM(SB_THUMBPOSITION, 5));
    EXPECT_EQ(LOWORD(spin.seen[1].wParam), SB_ENDSCROLL);

    // Items nobody registered stay with the dialog.
    EXPECT_FALSE(dlg.Click(IDC_IS_PUSH_TEXT));
    EXPECT_EQ(dlg.LastRouted(), nullptr);
}

namespace {
std::vector<WPARAM> g_hookedKeys;
LRESULT CALLBACK KeyHook(int code, WPARAM key, LPARAM lParam)
{
    if (code == HC_ACTION)
        g_hookedKeys.push_back(key);
    return CallNextHookEx(nullptr, code, key, lParam);
}
} // namespace

TEST(DialogHarness, KeyPressPassesTheThreadKeyboardHookAndTheFocusedItem)
{
    TestDialog dlg(IDD_IS_TEST);
    HHOOK hook = SetWindowsHookExW(WH_KEYBOARD, &KeyHook, nullptr, GetCurrentThreadId());
    ASSERT_NE(hook, nullptr);
    g_hookedKeys.clear();
    SetDlgItemTextW(dlg.Hwnd(), IDC_IS_EDIT, L"");
    dlg.Key(IDC_IS_EDIT, 'A');
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(GetFocus(), dlg.Item(IDC_IS_EDIT));
    // Down and up both pass the hook.
    EXPECT_EQ(g_hookedKeys, (std::vector<WPARAM>{'A', 'A'}));
    wchar_t text[8] = {};
    GetDlgItemTextW(dlg.Hwnd(), IDC_IS_EDIT, text, 8);
    EXPECT_STREQ(text, L"a");
}
