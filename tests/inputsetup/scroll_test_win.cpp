// Scroll-bar controls on the numeric test dialog over the simulated camera.
#include "numeric_fixture.h"
#include "zx_test.h"

using namespace numtest;
using zxtest::TestDialog;

namespace {
int ScrollPos(TestDialog& dlg, int id) { return GetScrollPos(dlg.Item(id), SB_CTL); }
int ScrollMax(TestDialog& dlg, int id)
{
    int lo = 0, hi = 0;
    GetScrollRange(dlg.Item(id), SB_CTL, &lo, &hi);
    return hi;
}
} // namespace

TEST(ScrollControls, EachScrollCodeMovesAndWritesByItsAmountAndNothingPastTheEnd)
{
    GainScroll g;
    TestDialog& dlg = g.dlg;
    ASSERT_EQ(ScrollMax(dlg, IDC_NUM_SCROLL), 150); // 1 .. 16 in steps of 0.1
    const struct {
        double from;
        WORD code;
        int pos;
        const wchar_t* text;
    } cases[] = {{5, SB_LINERIGHT, 41, L"5.1"},      {5, SB_LINELEFT, 39, L"4.9"},    {5, SB_PAGERIGHT, 50, L"6.0"},
                 {5, SB_PAGELEFT, 30, L"4.0"},       {5, SB_THUMBPOSITION, 40, L"5.0"}, {5, SB_ENDSCROLL, 40, L"5.0"},
                 {5, SB_TOP, 40, L"5.0"},            {16, SB_PAGERIGHT, 150, L"16.0"} /* at the last position */};
    for (const auto& c : cases) {
        Set(dlg.Camera(), L"Gain", c.from);
        g.gain.UpdateFromGeneric();
        const size_t notes = dlg.Notifications().size(), moved = c.pos != std::lround((c.from - 1) * 10);
        dlg.Camera().ClearCallLog();
        EXPECT_TRUE(dlg.Scroll(IDC_NUM_SCROLL, c.code, 99)) << c.code;
        EXPECT_EQ(ScrollPos(dlg, IDC_NUM_SCROLL), c.pos) << c.code;
        EXPECT_NEAR(Value(dlg.Camera(), L"Gain"), 1 + c.pos * 0.1, 1e-9) << c.code;
        EXPECT_EQ(ItemText(dlg, IDC_NUM_SCROLL_TEXT), c.text) << c.code;
        EXPECT_EQ(dlg.Notifications().size() - notes, moved) << "one write per move, " << c.code;
        EXPECT_EQ(zxtest::Calls(dlg.Camera(), L"PropSet_WRP").size(), moved) << c.code;
    }
}

TEST(ScrollControls, DisabledScrollKeepsItsPositionWhileItsTextFollowsTheDriver)
{
    GainScroll g(2.0);
    TestDialog& dlg = g.dlg;
    ASSERT_EQ(ScrollPos(dlg, IDC_NUM_SCROLL), 10);
    g.gain.Enable(false);
    Set(dlg.Camera(), L"Gain", 3.5);
    EXPECT_EQ(g.gain.UpdateFromGeneric(), 0);
    EXPECT_FALSE(IsWindowEnabled(dlg.Item(IDC_NUM_SCROLL)));
    EXPECT_EQ(ScrollPos(dlg, IDC_NUM_SCROLL), 10);
    EXPECT_EQ(ItemText(dlg, IDC_NUM_SCROLL_TEXT), L"3.5");
    g.gain.Enable(true); // enabling catches the position up
    EXPECT_EQ(ScrollPos(dlg, IDC_NUM_SCROLL), 25);
}

TEST(ScrollControls, ThumbTrackWritesTheTrackedValue)
{
    GainScroll g;
    TestDialog& dlg = g.dlg;
    // Drag the thumb with the mouse from the left end to the middle of the bar.
    HWND bar = dlg.Item(IDC_NUM_SCROLL);
    RECT rc;
    GetWindowRect(bar, &rc);
    const int arrow = GetSystemMetrics(SM_CXHSCROLL), y = (rc.top + rc.bottom) / 2;
    const POINT thumb{rc.left + arrow + 3, y}, middle{(rc.left + rc.right) / 2, y};
    SetForegroundWindow(dlg.Hwnd());
    Mouse({{thumb, 0}, {thumb, MOUSEEVENTF_LEFTDOWN}, {middle, 0}, {middle, MOUSEEVENTF_LEFTUP}});
    const int pos = ScrollPos(dlg, IDC_NUM_SCROLL);
    EXPECT_GT(pos, 50);
    EXPECT_LT(pos, 100);
    EXPECT_NEAR(Value(dlg.Camera(), L"Gain"), 1 + pos * 0.1, 1e-9);
}

TEST(ScrollControls, OnlyAControlWithATextColourAnswersItsTextsColourQuery)
{
    TestDialog dlg(IDD_NUM_TEST);
    CZxISControlScrollDouble red(L"Gain", 1, IDC_NUM_SCROLL, IDC_NUM_SCROLL_TEXT, 1, RGB(200, 0, 0));
    CZxISControlScrollDouble plain(L"Gain", 1, IDC_NUM_INT, IDC_NUM_INT_TEXT, 1);
    dlg.Attach(red);
    dlg.Attach(plain);
    HBRUSH brush = nullptr;
    COLORREF colour = 0;
    EXPECT_TRUE(dlg.CtlColorStatic(IDC_NUM_SCROLL_TEXT, brush, colour));
    EXPECT_EQ(brush, GetSysColorBrush(COLOR_BTNFACE));
    EXPECT_EQ(colour, RGB(200, 0, 0));
    EXPECT_FALSE(dlg.CtlColorStatic(IDC_NUM_INT_TEXT, brush, colour));
}

TEST(ScrollControls, LogScrollSpacesPositionsByRatioAfterOneLinearStep)
{
    TestDialog dlg(IDD_NUM_TEST);
    OddCamera cam;
    cam.defs[L"LogTest"] = Doubles(0, 1000, 0.1);
    CZxISControlScrollDoubleLog log(L"LogTest", 1, IDC_NUM_LOG, IDC_NUM_LOG_TEXT, 1);
    log.Attach(dlg.ZxHwnd(), &cam, &dlg.List());
    EXPECT_EQ(log.Reinit(), 0);
    EXPECT_EQ(log.GetMin(), 0.1) << "a minimum of 0 becomes the step";
    EXPECT_EQ(ScrollMax(dlg, IDC_NUM_LOG), 27);
    EXPECT_EQ(log.PosToValue(0), 0.1);
    EXPECT_EQ(log.PosToValue(1), 0.2) << "min + step, although min * sqrt(2) is smaller";
    EXPECT_NEAR(log.PosToValue(2), 0.2, 1e-12);
    EXPECT_EQ(log.PosToValue(27), 1000.0) << "capped at the maximum";
    const struct {
        double value;
        int pos;
    } cases[] = {{0, 0}, {0.1, 0}, {0.15, 1}, {0.2, 1}, {0.3, 3}, {1000, 27}, {5000, 27}};
    for (const auto& c : cases)
        EXPECT_EQ(log.ValueToPos(c.value), c.pos) << c.value;
}

TEST(ScrollControls, LogScrollWritesExposureStepsAndShowsTheirTimes)
{
    TestDialog dlg(IDD_NUM_TEST);
    CZxISControlScrollDoubleLog exposure(L"Exposure", 1, IDC_NUM_LOG, IDC_NUM_LOG_TEXT, 1);
    dlg.Attach(exposure);
    Set(dlg.Camera(), L"Exposure", 0.5);
    dlg.List().ReinitAndUpdateMany(~0u);
    EXPECT_EQ(ItemText(dlg, IDC_NUM_LOG_TEXT), L"500 \u00b5s");
    const int pos = ScrollPos(dlg, IDC_NUM_LOG);
    EXPECT_EQ(pos, exposure.ValueToPos(0.5));
    EXPECT_TRUE(dlg.Scroll(IDC_NUM_LOG, SB_PAGERIGHT));
    EXPECT_DOUBLE_EQ(Value(dlg.Camera(), L"Exposure"), exposure.PosToValue(pos + 10));
    EXPECT_EQ(ItemText(dlg, IDC_NUM_LOG_TEXT), ZX_ExposureMsToText(exposure.PosToValue(pos + 10)).Std());
    SZxGrabberPropertyValue v(L"Exposure");
    EXPECT_EQ(exposure.GetPropValForGeneric(v), 0);
    EXPECT_DOUBLE_EQ(v.m_varValue.GetDouble(), exposure.PosToValue(pos + 10));
}

TEST(ScrollControls, IntegerAndTextScrollsWriteTheirOwnKindOfValue)
{
    TestDialog dlg(IDD_NUM_TEST);
    CZxISControlScrollInt32 offset(L"Offset", 1, IDC_NUM_INT, IDC_NUM_INT_TEXT, 1);
    CZxISControlScrollString trigger(L"TriggerMode", 1, IDC_NUM_LIST, IDC_NUM_LIST_TEXT, 1);
    dlg.Attach(offset);
    dlg.Attach(trigger);
    Set(dlg.Camera(), L"Offset", 10);
    dlg.List().ReinitAndUpdateMany(~0u);
    EXPECT_EQ(ScrollMax(dlg, IDC_NUM_LIST), 2);
    EXPECT_EQ(ItemText(dlg, IDC_NUM_LIST_TEXT), L"Free Run");
    EXPECT_TRUE(dlg.Scroll(IDC_NUM_INT, SB_LINERIGHT));
    EXPECT_TRUE(dlg.Scroll(IDC_NUM_LIST, SB_PAGERIGHT)); // clamped to the last element
    EXPECT_EQ(Read(dlg.Camera(), L"Offset"), CZxVariant(11));
    EXPECT_EQ(Read(dlg.Camera(), L"TriggerMode"), CZxVariant(L"Hardware"));
    EXPECT_EQ(ItemText(dlg, IDC_NUM_INT_TEXT), L"11");
    EXPECT_EQ(ItemText(dlg, IDC_NUM_LIST_TEXT), L"Hardware");
}

TEST(ScrollControls, UnusableDefinitionsAreReportedAndLeaveScrollsSpinsEditsAndSlidersDisabled)
{
    TestDialog dlg(IDD_NUM_TEST);
    OddCamera cam;
    CZxVariant wrongList = CZxVariant::MakeRecord(L"RZxList");
    wrongList[L"m_list"] = CZxVariant::MakeArray();
    wrongList[L"m_list"].Add(CZxVariant(L"a"));   // neither a record nor a number
    wrongList[L"m_list"].Add(CZxVariant(3));
    cam.defs = {{L"NoMin", Record(L"RZxRangeDouble", {{L"m_dMax", 10.0}, {L"m_dStep", 1.0}})},
                {L"StepZero", Doubles(0, 10, 0)},
                {L"StepNegative", Doubles(0, 10, -1)},
                {L"MinAboveMax", Doubles(10, 0, 1)},
                {L"IntStepZero", Record(L"RZxRangeInt32", {{L"m_iMin", 0}, {L"m_iMax", 10}, {L"m_iStep", 0}})},
                {L"NoList", CZxVariant::MakeRecord(L"RZxList")},
                {L"WrongList", wrongList}};
    CZxISControlScrollDouble scroll(L"", 1, IDC_NUM_SCROLL, IDC_NUM_SCROLL_TEXT, 1);
    CZxISControlScrollDoubleLog log(L"", 1, IDC_NUM_LOG, IDC_NUM_LOG_TEXT, 1);
    CZxISControlScrollString list(L"", 1, IDC_NUM_LIST, IDC_NUM_LIST_TEXT, 1);
    CZxISControlSpinInt spinInt(L"", 1, IDC_NUM_SPININT_EDIT, 1);
    CZxISControlSpinDouble spinDouble(L"", 1, IDC_NUM_SPIN_EDIT, 1);
    CZxISControlSliderListInt32 slider(L"", 1, IDC_NUM_TRACK_LIST, 1);
    CZxISControlEditBase::Init();   // edits are subclassed through their registry
    CZxISControlEditDouble edit(L"", 1, IDC_NUM_EDIT, 1, WM_APP, false);
    // A spin disables its buddy edit and its up-down; the others have one window.
    const struct {
        CZxISControl* control;
        int id, bar;
        const wchar_t* usable;
        const wchar_t* name;
        const wchar_t* condition;
    } cases[] = {{&scroll, IDC_NUM_SCROLL, IDC_NUM_SCROLL, L"Gain", L"NoMin", L"m_dMin missing or no finite number"},
                 {&scroll, IDC_NUM_SCROLL, IDC_NUM_SCROLL, L"Gain", L"StepZero", L"m_dStep<=0"},
                 {&log, IDC_NUM_LOG, IDC_NUM_LOG, L"Gain", L"StepNegative", L"m_dStep<=0"},
                 {&log, IDC_NUM_LOG, IDC_NUM_LOG, L"Gain", L"MinAboveMax", L"m_dMin>m_dMax"},
                 {&list, IDC_NUM_LIST, IDC_NUM_LIST, L"TriggerMode", L"NoList", L"m_list missing or empty"},
                 {&list, IDC_NUM_LIST, IDC_NUM_LIST, L"TriggerMode", L"WrongList", L"m_list element is no text"},
                 {&spinInt, IDC_NUM_SPININT_EDIT, IDC_NUM_SPININT, L"Offset", L"IntStepZero", L"m_iStep<=0"},
                 {&spinDouble, IDC_NUM_SPIN_EDIT, IDC_NUM_SPIN, L"Gain", L"NoMin",
                  L"m_dMin missing or no finite number"},
                 {&edit, IDC_NUM_EDIT, IDC_NUM_EDIT, L"Gain", L"StepZero", L"m_dStep missing or <=0"},
                 {&slider, IDC_NUM_TRACK_LIST, IDC_NUM_TRACK_LIST, L"ReadoutMode", L"WrongList",
                  L"m_list element without m_iValue"}};
    for (const auto& c : cases) {
        c.control->ChangeName(c.usable);   // first a usable definition
        c.control->Attach(dlg.ZxHwnd(), &cam, &dlg.List());
        c.control->Reinit();
        c.control->ChangeName(c.name);
        zxtest::DiagCapture diag;
        EXPECT_EQ(c.control->Reinit(), -9) << c.name;
        EXPECT_TRUE(diag.Has(c.condition, L"inputsetupcontrols")) << c.name;
        EXPECT_EQ(c.control->Enable(true), 0);
        EXPECT_FALSE(IsWindowEnabled(dlg.Item(c.id))) << c.name;
        EXPECT_FALSE(IsWindowEnabled(dlg.Item(c.bar))) << c.name;
        SZxGrabberPropertyValue v(c.name);
        EXPECT_EQ(c.control->GetPropValForGeneric(v), -9) << c.name;
        EXPECT_TRUE(v.m_varValue.IsNull());
        EXPECT_FALSE(dlg.Scroll(c.bar, SB_THUMBPOSITION, 3)) << c.name;
        EXPECT_EQ(c.control->UpdateFromGeneric(), -9) << c.name;
    }
    edit.Detach();
    CZxISControlEditBase::Done();
}
