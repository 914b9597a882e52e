// Edit controls typed into through the keyboard: commit, cancel, focus loss,
// the driver's answer and the registry of subclassed edits.
#include "numeric_fixture.h"
#include "zx_test.h"

using namespace numtest;
using zxtest::Messages;
using zxtest::TestDialog;

namespace {
const UINT kNotify = WM_APP + 7;

struct Registry {
    Registry() { CZxISControlEditBase::Init(); }
    ~Registry() { CZxISControlEditBase::Done(); }
};

} // namespace

// The numeric dialog with the edit registry up. The harness records WM_IS_* only;
// the edit's own notification is seen by a probe in front of the dialog's procedure.
class EditNotifications : public ::testing::Test {
protected:
    EditNotifications()
    {
        seen.clear();
        old = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(dlg.Hwnd(), GWLP_WNDPROC, LONG_PTR(&Probe)));
    }
    static LRESULT CALLBACK Probe(HWND w, UINT msg, WPARAM wParam, LPARAM lParam)
    {
        if (msg == kNotify)
            seen.push_back({wParam, lParam});
        return CallWindowProcW(old, w, msg, wParam, lParam);
    }
    static std::vector<std::pair<WPARAM, LPARAM>> seen;
    static WNDPROC old;
    Registry registry;
    TestDialog dlg{IDD_NUM_TEST};
};
std::vector<std::pair<WPARAM, LPARAM>> EditNotifications::seen;
WNDPROC EditNotifications::old = nullptr;

TEST_F(EditNotifications, EnterCommitsTheTypedValueAndNotifiesOnceUntilTheNextChange)
{
    CZxISControlEditDouble gain(L"Gain", 1, IDC_NUM_EDIT, 1, kNotify, false);
    dlg.Attach(gain);
    dlg.List().ReinitAndUpdateMany(~0u);
    EXPECT_EQ(ItemText(dlg, IDC_NUM_EDIT), L"1");
    Type(dlg, IDC_NUM_EDIT, L"2.5");
    EXPECT_TRUE(gain.IsPending());
    EXPECT_DOUBLE_EQ(Value(dlg.Camera(), L"Gain"), 1.0) << "typing alone writes nothing";
    dlg.Key(IDC_NUM_EDIT, VK_RETURN);
    dlg.Key(IDC_NUM_EDIT, VK_RETURN);
    EXPECT_DOUBLE_EQ(Value(dlg.Camera(), L"Gain"), 2.5);
    EXPECT_EQ(ItemText(dlg, IDC_NUM_EDIT), L"2.5");
    EXPECT_FALSE(gain.IsPending());
    EXPECT_EQ(Messages(dlg), std::vector<UINT>{WM_IS_PROPERTYCHANGED});
    EXPECT_EQ(seen, (std::vector<std::pair<WPARAM, LPARAM>>{{13, IDC_NUM_EDIT}}));
    Type(dlg, IDC_NUM_EDIT, L"3");
    dlg.Key(IDC_NUM_EDIT, VK_RETURN);
    EXPECT_EQ(seen.size(), 2u) << "a new change notifies again";
}

TEST_F(EditNotifications, EscapeDropsTheTypedTextAndRestoresTheDriversValueWhenFlagged)
{
    for (bool restore : {false, true}) {
        CZxISControlEditDouble gain(L"Gain", 1, IDC_NUM_EDIT, 1, kNotify, restore);
        dlg.Attach(gain);
        dlg.List().ReinitAndUpdateMany(~0u);
        seen.clear();
        Type(dlg, IDC_NUM_EDIT, L"7");
        dlg.Key(IDC_NUM_EDIT, VK_ESCAPE);
        dlg.Key(IDC_NUM_EDIT, VK_ESCAPE);
        EXPECT_FALSE(gain.IsPending());
        EXPECT_EQ(ItemText(dlg, IDC_NUM_EDIT), restore ? L"1" : L"7");
        dlg.Key(IDC_NUM_OTHER, 'X'); // focus leaves: nothing pending, nothing written
        EXPECT_DOUBLE_EQ(Value(dlg.Camera(), L"Gain"), 1.0);
        EXPECT_TRUE(dlg.Notifications().empty());
        EXPECT_EQ(seen, (std::vector<std::pair<WPARAM, LPARAM>>{{27, IDC_NUM_EDIT}}));
        dlg.List().Remove(&gain);
    }
}

TEST_F(EditNotifications, FocusLossCommitsAPendingTextWithoutTheKeyNotification)
{
    CZxISControlEditInt32 offset(L"Offset", 1, IDC_NUM_EDIT_INT, 1, kNotify, false);
    dlg.Attach(offset);
    dlg.List().ReinitAndUpdateMany(~0u);
    Type(dlg, IDC_NUM_EDIT_INT, L"12.6");
    dlg.Key(IDC_NUM_EDIT, VK_SHIFT); // the focus moves to the other edit
    EXPECT_EQ(Read(dlg.Camera(), L"Offset"), CZxVariant(13)) << "typed numbers are rounded";
    EXPECT_EQ(ItemText(dlg, IDC_NUM_EDIT_INT), L"13");
    EXPECT_TRUE(seen.empty());
}

TEST_F(EditNotifications, TypedValuesReachTheDriverUnclampedAndTheEditShowsWhatItKept)
{
    CZxISControlEditDouble gain(L"Gain", 1, IDC_NUM_EDIT, 1, kNotify, false, 10.0);
    CZxISControlEditInt32 offset(L"Offset", 1, IDC_NUM_EDIT_INT, 1, kNotify, false);
    dlg.Attach(gain);
    dlg.Attach(offset);
    dlg.List().ReinitAndUpdateMany(~0u);
    EXPECT_EQ(ItemText(dlg, IDC_NUM_EDIT), L"10") << "shown times the scale";
    {
        zxtest::DiagCapture diag;
        CZxISControlEditDouble zeroScale(L"Gain", 1, IDC_NUM_EDIT, 1, kNotify, false, 0.0);
        EXPECT_TRUE(diag.Has(L"scale==0 or not finite", L"inputsetupcontrols"));
        EXPECT_EQ(zeroScale.GetScale(), 1.0);
    }
    const struct {
        int id;
        const wchar_t* typed;
        std::vector<std::wstring> written;
        const wchar_t* shown;
    } cases[] = {{IDC_NUM_EDIT, L"990", {L"PropSet_WRP(1, Gain=99.000000)"}, L"160"},
                 {IDC_NUM_EDIT, L"125", {L"PropSet_WRP(1, Gain=12.500000)"}, L"125"},
                 {IDC_NUM_EDIT_INT, L"-3", {L"PropSet_WRP(1, Offset=-3)"}, L"0"},
                 {IDC_NUM_EDIT_INT, L"abc", {}, L"0"},
                 // The leading number counts, as wcstod reads it; text without one writes nothing.
                 {IDC_NUM_EDIT_INT, L"12 ms", {L"PropSet_WRP(1, Offset=12)"}, L"12"},
                 {IDC_NUM_EDIT, L"25x", {L"PropSet_WRP(1, Gain=2.500000)"}, L"25"}};
    for (const auto& c : cases) {
        dlg.Camera().ClearCallLog();
        Type(dlg, c.id, c.typed);
        dlg.Key(c.id, VK_RETURN);
        EXPECT_EQ(zxtest::Calls(dlg.Camera(), L"PropSet_WRP"), c.written) << c.typed;
        EXPECT_EQ(ItemText(dlg, c.id), c.shown) << c.typed;
    }
}

TEST_F(EditNotifications, DecimalsAreTheSmallerOfTheStepsAndTheShownValues)
{
    CZxISControlEditDouble tolerance(L"QuantilPromile", 1, IDC_NUM_EDIT, 1, kNotify, false); // step 0.1
    dlg.Attach(tolerance);
    tolerance.Reinit();
    const struct {
        double value;
        const wchar_t* shown;
    } cases[] = {{1.0, L"1"}, {2.5, L"2.5"}, {1.07, L"1.1"}, {40.0, L"40"}};
    for (const auto& c : cases) {
        tolerance.SetEditValue(c.value);
        EXPECT_EQ(ItemText(dlg, IDC_NUM_EDIT), c.shown) << c.value;
    }
}

TEST_F(EditNotifications, RegistryFindsTheControlOfASubclassedEditUntilDetach)
{
    HWND edit = dlg.Item(IDC_NUM_EDIT);
    const LONG_PTR original = GetWindowLongPtrW(edit, GWLP_WNDPROC);
    CZxISControlEditDouble gain(L"Gain", 1, IDC_NUM_EDIT, 1, kNotify, false);
    dlg.Attach(gain);
    EXPECT_EQ(CZxISControlEditBase::FromWindow(reinterpret_cast<ZxHWnd>(edit)), &gain);
    EXPECT_NE(GetWindowLongPtrW(edit, GWLP_WNDPROC), original);
    gain.Detach();
    EXPECT_EQ(CZxISControlEditBase::FromWindow(reinterpret_cast<ZxHWnd>(edit)), nullptr);
    EXPECT_EQ(GetWindowLongPtrW(edit, GWLP_WNDPROC), original);
    dlg.Attach(gain);
    CZxISControlEditBase::Done(); // with the edit still attached
    EXPECT_EQ(GetWindowLongPtrW(edit, GWLP_WNDPROC), original);
    CZxISControlEditBase::Init();
}
