// The control list's bookkeeping and routing; window handles are only keys here.
#include "recording_control.h"
#include "zx_test.h"

namespace {
typedef std::vector<std::string> Log;

ZxHWnd H(uintptr_t n) { return reinterpret_cast<ZxHWnd>(n); }

const uint32_t kWmCommand = 0x0111, kWmHScroll = 0x0114, kWmVScroll = 0x0115, kWmCtlColorStatic = 0x0138;
const uint32_t kWmSysCommand = 0x0112, kWmTimer = 0x0113;
} // namespace

TEST(ControlList, AddWithNullHandlesOrNoCountIsRefusedAndRegistersNothing)
{
    Log log;
    RecordingControl a(log, "a", 1);
    CZxISControlList list;
    ZxHWnd h = H(0x100);
    EXPECT_EQ(list.Add(&a, nullptr, 1), -9);
    EXPECT_EQ(list.Add(&a, &h, 0), -9);
    EXPECT_EQ(list.Add(&a, &h, -1), -9);
    EXPECT_EQ(list.Add(nullptr, &h, 1), -9);
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_EQ(list._FindControl(h, ~0u), nullptr);
}

TEST(ControlList, OneControlUnderTwoHandlesKeepsOneEntry)
{
    Log log;
    RecordingControl spin(log, "spin", 1);
    CZxISControlList list;
    ZxHWnd edit = H(0x10), updown = H(0x20);
    ASSERT_EQ(list.Add(&spin, &edit, 1), 0);
    ASSERT_EQ(list.Add(&spin, &updown, 1), 0);
    EXPECT_EQ(list.GetCount(), 1u);
    EXPECT_EQ(list._FindControl(edit, ~0u), &spin);
    EXPECT_EQ(list._FindControl(updown, ~0u), &spin);
    EXPECT_EQ(list._FindControl(H(0x30), ~0u), nullptr);
}

TEST(ControlList, RemovingFirstOfThreeKeepsOthersReachableByHandle)
{
    Log log;
    RecordingControl a(log, "a", 1), b(log, "b", 1), c(log, "c", 1);
    CZxISControlList list;
    ZxHWnd ha[2] = {H(1), H(2)}, hb = H(3), hc[2] = {H(4), H(5)};
    list.Add(&a, ha, 2);
    list.Add(&b, &hb, 1);
    list.Add(&c, hc, 2);
    EXPECT_EQ(list.Remove(&a), 0);
    EXPECT_EQ(list.GetCount(), 2u);
    EXPECT_EQ(list._FindControl(H(1), ~0u), nullptr);
    EXPECT_EQ(list._FindControl(H(2), ~0u), nullptr);
    EXPECT_EQ(list._FindControl(H(3), ~0u), &b);
    EXPECT_EQ(list._FindControl(H(4), ~0u), &c);
    EXPECT_EQ(list._FindControl(H(5), ~0u), &c);
    EXPECT_EQ(list.Remove(&a), 0); // no longer there: harmless
    EXPECT_TRUE(log.empty()) << "removing must not detach";
}

TEST(ControlList, RemoveManyTakesTheGroupInOrderAndRepairsTheIndex)
{
    Log log;
    RecordingControl a(log, "a", 1), b(log, "b", 2), c(log, "c", 3), d(log, "d", 2);
    CZxISControlList list;
    ZxHWnd h[4] = {H(1), H(2), H(3), H(4)};
    list.Add(&a, &h[0], 1);
    list.Add(&b, &h[1], 1);
    list.Add(&c, &h[2], 1);
    list.Add(&d, &h[3], 1);
    CZxISControl* removed[4] = {};
    uint32_t count = 99;
    EXPECT_EQ(list.RemoveMany(2, removed, &count), 0);
    ASSERT_EQ(count, 3u);
    EXPECT_EQ(removed[0], &b);
    EXPECT_EQ(removed[1], &c);
    EXPECT_EQ(removed[2], &d);
    EXPECT_EQ(list.GetCount(), 1u);
    EXPECT_EQ(list._FindControl(H(1), ~0u), &a);
    EXPECT_EQ(list._FindControl(H(4), ~0u), nullptr);
    EXPECT_EQ(list.RemoveMany(1, nullptr, nullptr), 0);
    EXPECT_EQ(list.GetCount(), 0u);
}

TEST(ControlList, RoutesOnlyTheFourControlMessagesBySenderAndMask)
{
    Log log;
    RecordingControl a(log, "a", 0x1), b(log, "b", 0x6);
    CZxISControlList list;
    ZxHWnd ha = H(0x40), hb = H(0x50);
    list.Add(&a, &ha, 1);
    list.Add(&b, &hb, 1);

    for (uint32_t msg : {kWmCommand, kWmHScroll, kWmVScroll, kWmCtlColorStatic}) {
        CZxISControl* found = nullptr;
        ZxLResult result = 0;
        EXPECT_TRUE(list.DlgProcHookMany(nullptr, msg, 0, reinterpret_cast<ZxLParam>(hb), &result, &found, 0x4));
        EXPECT_EQ(found, &b);
        EXPECT_EQ(result, 77);
    }
    // The hook alone decides whether the message counts as handled.
    b.m_handles = false;
    CZxISControl* found = nullptr;
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, kWmCommand, 0, reinterpret_cast<ZxLParam>(hb), nullptr, &found, ~0u));
    EXPECT_EQ(found, &b);
    log.clear();

    CZxISControl* untouched = &b;
    const ZxLParam fromA = reinterpret_cast<ZxLParam>(ha);
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, kWmCommand, 0, fromA, nullptr, &untouched, 0x6)); // outside mask
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, kWmSysCommand, 0, fromA, nullptr, &untouched, ~0u));
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, kWmTimer, 0, fromA, nullptr, &untouched, ~0u));
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, kWmCommand, 0, 0x999, nullptr, &untouched, ~0u)); // unknown sender
    EXPECT_EQ(untouched, &b);
    EXPECT_TRUE(log.empty());
}

TEST(ControlList, BulkOperationsTouchExactlyTheGroupInRegistrationOrder)
{
    Log log;
    RecordingControl a(log, "a", 0x1), b(log, "b", 0x2), c(log, "c", 0x3);
    CZxISControlList list;
    ZxHWnd h[3] = {H(1), H(2), H(3)};
    list.Add(&c, &h[2], 1);
    list.Add(&a, &h[0], 1);
    list.Add(&b, &h[1], 1);

    EXPECT_EQ(list.ReinitAndUpdateMany(0x2), 0);
    EXPECT_EQ(log, (Log{"c:Reinit", "c:UpdateState", "c:UpdateFromGeneric", "b:Reinit", "b:UpdateState",
                        "b:UpdateFromGeneric"}));
    log.clear();
    list.ReinitMany(0x1);
    list.UpdateFromGenericMany(0x1);
    list.UpdateStateMany(0x1);
    list.ResetToDefaultMany(0x1);
    list.EnableMany(false, 0x1);
    list.ShowMany(true, 0x1);
    list.ChangeModeMany(2, 0x1);
    list.DetachMany(0x1);
    EXPECT_EQ(log, (Log{"c:Reinit", "a:Reinit", "c:UpdateFromGeneric", "a:UpdateFromGeneric", "c:UpdateState",
                        "a:UpdateState", "c:ResetToDefault", "a:ResetToDefault", "c:Enable0", "a:Enable0", "c:Show1",
                        "a:Show1", "c:ChangeMode", "a:ChangeMode", "c:Detach", "a:Detach"}));
    EXPECT_EQ(b.GetMode(), 1u);
    EXPECT_EQ(a.GetMode(), 2u);
    log.clear();
    list.EnableMany(true, 0);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(list.Clear(), 0);
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_EQ(list._FindControl(h[0], ~0u), nullptr);
}

TEST(ControlList, StateChangeRefreshesFormatControlsFirstThenPropertiesByName)
{
    Log log;
    RecordingControl fmt(log, "fmt", 0, CZxISControl::btFormat, L"");
    RecordingControl gain(log, "gain", 1, CZxISControl::btProperty, L"Gain");
    RecordingControl gain2(log, "gain2", 2, CZxISControl::btProperty, L"Gain");
    RecordingControl exposure(log, "exp", 1, CZxISControl::btProperty, L"Exposure");
    RecordingControl run(log, "run", 1, CZxISControl::btCommand, L"Gain");
    CZxISControlList list;
    ZxHWnd h[5] = {H(1), H(2), H(3), H(4), H(5)};
    list.Add(&gain, &h[0], 1);
    list.Add(&fmt, &h[1], 1);
    list.Add(&exposure, &h[2], 1);
    list.Add(&run, &h[3], 1);
    list.Add(&gain2, &h[4], 1);

    SZxStateChangeInfo info;
    info.m_bFormatChanged = true;
    info.Add(L"Exposure", true, false, false);
    info.Add(L"Gain", false, true, false);
    info.Add(L"Offset", true, true, true);
    EXPECT_EQ(list.UpdateWithStateChangeInfo(info), 0);
    EXPECT_EQ(log, (Log{"fmt:Reinit", "fmt:UpdateFromGeneric", "exp:UpdateState", "gain:Reinit",
                        "gain:UpdateFromGeneric", "gain:UpdateState", "gain2:Reinit", "gain2:UpdateFromGeneric",
                        "gain2:UpdateState"}));

    // Changed format values refresh format controls without rebuilding them; a
    // value change alone is shown without Reinit.
    log.clear();
    SZxStateChangeInfo values;
    values.m_bFormatValuesChanged = true;
    values.Add(L"Exposure", false, false, true);
    list.UpdateWithStateChangeInfo(values);
    EXPECT_EQ(log, (Log{"fmt:UpdateFromGeneric", "exp:UpdateFromGeneric", "exp:UpdateState"}));
}
