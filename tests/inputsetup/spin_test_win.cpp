// Up-down controls with their buddy edits, clicked with the mouse (real input;
// a click notifies twice, on press and on release).
#include "numeric_fixture.h"
#include "zx_test.h"

using namespace numtest;
using zxtest::TestDialog;

namespace {
int UpDownPos(TestDialog& dlg, int id) { return static_cast<int>(SendMessageW(dlg.Item(id), UDM_GETPOS32, 0, 0)); }
} // namespace

TEST(SpinControls, AClickWritesOneStepOnBothNotificationsAControlClickTenAndBothStopAtTheRangeEnd)
{
    TestDialog dlg(IDD_NUM_TEST);
    CZxISControlSpinDouble gain(L"Gain", 1, IDC_NUM_SPIN_EDIT, 1);
    dlg.Attach(gain);
    EXPECT_EQ(dlg.List()._FindControl(reinterpret_cast<ZxHWnd>(dlg.Item(IDC_NUM_SPIN)), ~0u), &gain);
    const struct {
        double from;
        bool up;
        UINT control;
        double to;
    } cases[] = {{2.0, true, 0, 2.1},            {2.0, false, 0, 1.9},           {5.0, true, VK_LCONTROL, 6.0},
                 {5.0, false, VK_RCONTROL, 4.0}, {15.5, true, VK_LCONTROL, 16.0}, {1.3, false, VK_LCONTROL, 1.0},
                 {16.0, true, VK_LCONTROL, 16.0}};
    for (const auto& c : cases) {
        Set(dlg.Camera(), L"Gain", c.from);
        dlg.List().ReinitAndUpdateMany(~0u);
        const size_t notes = dlg.Notifications().size();
        ClickArrow(dlg, IDC_NUM_SPIN, c.up, c.control);
        EXPECT_NEAR(Value(dlg.Camera(), L"Gain"), c.to, 1e-9) << c.from << " " << c.up << " " << c.control;
        EXPECT_EQ(ItemText(dlg, IDC_NUM_SPIN_EDIT), CZxStringW::Formatted(L"%.1f", c.to).Std());
        EXPECT_EQ(UpDownPos(dlg, IDC_NUM_SPIN), int(std::lround((c.to - 1) * 10)));
        if (!c.control) {
            EXPECT_EQ(dlg.Notifications().size() - notes, 2u) << "press and release each write";
        }
    }
}

TEST(SpinControls, IntegerSpinShowsTheValueOverItsDenominator)
{
    TestDialog dlg(IDD_NUM_TEST);
    OddCamera cam;
    cam.defs[L"DenomOnly"] =
        Record(L"RZxRangeInt32", {{L"m_iMin", 0}, {L"m_iMax", 1000}, {L"m_iStep", 10}, {L"m_iDenom", 1000}});
    CZxISControlSpinInt gamma(L"Gamma", 1, IDC_NUM_SPININT_EDIT, 1);
    gamma.Attach(dlg.ZxHwnd(), &cam, &dlg.List());
    gamma.Reinit();
    gamma.Enable(true);
    EXPECT_EQ(ItemText(dlg, IDC_NUM_SPININT_EDIT), L"1.00");
    ClickArrow(dlg, IDC_NUM_SPININT, true);
    EXPECT_EQ(Read(cam, L"Gamma"), CZxVariant(105)) << "an integer step of 5";
    EXPECT_EQ(ItemText(dlg, IDC_NUM_SPININT_EDIT), L"1.05");

    gamma.ChangeName(L"DenomOnly");
    EXPECT_EQ(gamma.Reinit(), 0);
    EXPECT_EQ(gamma.GetPrecision(), 2) << "a denominator without precision shows two decimals";
    CZxISControlSpinInt32 plain(L"DenomOnly", 1, IDC_NUM_SPININT_EDIT, 1);
    plain.Attach(dlg.ZxHwnd(), &cam, nullptr);
    EXPECT_EQ(plain.Reinit(), 0);
    EXPECT_EQ(plain.GetDenom(), 0);
    EXPECT_EQ(plain.GetPrecision(), 0);
}

TEST(SpinControls, NoSpinOrScrollWritesPastAMaximumThatIsOffTheStepGrid)
{
    // 0 .. 9 in steps of 5: three positions, the last of which stands for 9, not 10.
    TestDialog dlg(IDD_NUM_TEST);
    OddCamera cam;
    cam.members[L"Offset"] = {{L"m_iMin", 0}, {L"m_iMax", 9}, {L"m_iStep", 5}};
    cam.members[L"Gain"] = {{L"m_dMin", 0.0}, {L"m_dMax", 9.0}, {L"m_dStep", 5.0}};
    CZxISControlSpinInt32 spinInt(L"Offset", 1, IDC_NUM_SPININT_EDIT, 1);
    CZxISControlSpinDouble spinDouble(L"Gain", 1, IDC_NUM_SPIN_EDIT, 1);
    CZxISControlScrollInt32 scrollInt(L"Offset", 1, IDC_NUM_INT, IDC_NUM_INT_TEXT, 1);
    CZxISControlScrollDouble scrollDouble(L"Gain", 1, IDC_NUM_SCROLL, IDC_NUM_SCROLL_TEXT, 1);
    const struct {
        CZxISControl* control;
        const wchar_t* name;
        int upDown, scroll, text;   // an up-down to click, or a scroll bar to move right
    } cases[] = {{&spinInt, L"Offset", IDC_NUM_SPININT, 0, IDC_NUM_SPININT_EDIT},
                 {&spinDouble, L"Gain", IDC_NUM_SPIN, 0, IDC_NUM_SPIN_EDIT},
                 {&scrollInt, L"Offset", 0, IDC_NUM_INT, IDC_NUM_INT_TEXT},
                 {&scrollDouble, L"Gain", 0, IDC_NUM_SCROLL, IDC_NUM_SCROLL_TEXT}};
    for (const auto& c : cases) {
        c.control->Attach(dlg.ZxHwnd(), &cam, &dlg.List());
        Set(cam, c.name, 5.0);
        c.control->Reinit();
        c.control->Enable(true);
        for (int click = 1; click <= 2; ++click) {   // the second at the top of the range
            if (c.upDown)
                ClickArrow(dlg, c.upDown, true);
            else
                dlg.Scroll(c.scroll, SB_LINERIGHT);
            EXPECT_EQ(Value(cam, c.name), 9.0) << c.name << " " << c.text << ", click " << click;
            EXPECT_EQ(ItemText(dlg, c.text), L"9") << c.name << " " << c.text << ", click " << click;
        }
    }
}
