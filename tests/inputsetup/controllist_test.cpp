// The control list's bookkeeping, routing and bulk operations; window handles
// are only keys here.
#include <string>
#include <vector>
#include "zx/inputsetupcontrols.h"
#include "zx_props.h"
#include "zx_test.h"

namespace {
// Records which of its operations the list called, in order, into a log shared
// by the controls of a test ("a:Reinit", ...); answers as a test sets it up.
class RecordingControl : public CZxISControl {
public:
    RecordingControl(std::vector<std::string>& log, const char* tag, uint32_t groupMask,
                     EBoundTo boundTo = btProperty, const wchar_t* name = L"Gain", int32_t id = 0)
        : CZxISControl(ctValueEditor, boundTo, name, 1, id, groupMask), m_log(log), m_tag(tag)
    {
    }
    int32_t Reinit() override { return Note("Reinit"); }
    int32_t UpdateState() override { return Note("UpdateState"); }
    int32_t UpdateFromGeneric() override { return Note("UpdateFromGeneric"); }
    int32_t ResetToDefault() override { return Note("ResetToDefault"); }
    int32_t Enable(bool b) override { return Note(b ? "Enable1" : "Enable0"); }
    int32_t Show(bool b) override { return Note(b ? "Show1" : "Show0"); }
    int32_t ChangeMode(uint32_t m) override
    {
        CZxISControl::ChangeMode(m);
        return Note("ChangeMode");
    }
    int32_t Detach() override { return Note("Detach"); }
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override
    {
        if (m_iGives == 0)
            value.m_varValue = m_varGives;
        return m_iGives;
    }
    bool DlgProcHook(ZxHWnd, uint32_t, ZxWParam, ZxLParam, ZxLResult* result) override
    {
        Note("Hook");
        if (result)
            *result = 77;
        return m_handles;
    }
    bool m_handles = true; ///< what DlgProcHook answers
    int32_t m_iGives = -2; ///< what GetPropValForGeneric answers, with m_varGives when 0
    CZxVariant m_varGives;

private:
    int32_t Note(const char* op)
    {
        m_log.push_back(m_tag + ":" + op);
        return -1; // the list must ignore the controls' results
    }
    std::vector<std::string>& m_log;
    std::string m_tag;
};

typedef std::vector<std::string> Log;
typedef CZxISControl C;

ZxHWnd H(uintptr_t n) { return reinterpret_cast<ZxHWnd>(n); }
ZxLParam From(uintptr_t n) { return static_cast<ZxLParam>(n); }
using zxtest::Value;

// Registers each control under the handle numbered by its place (1, 2, ...).
void Register(CZxISControlList& list, std::initializer_list<CZxISControl*> controls)
{
    uintptr_t n = 0;
    for (CZxISControl* c : controls) {
        ZxHWnd h = H(++n);
        ASSERT_EQ(list.Add(c, &h, 1), 0);
    }
}

} // namespace

TEST(ControlList, AddRefusesBadArgumentsAndKeepsOneEntryPerControl)
{
    Log log;
    RecordingControl spin(log, "spin", 1);
    CZxISControlList list;
    ZxHWnd edit = H(0x10), updown = H(0x20);
    EXPECT_EQ(list.Add(&spin, nullptr, 1), -9);
    EXPECT_EQ(list.Add(&spin, &edit, 0), -9);
    EXPECT_EQ(list.Add(nullptr, &edit, 1), -9);
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_EQ(list._FindControl(edit, ~0u), nullptr);

    ASSERT_EQ(list.Add(&spin, &edit, 1), 0);
    ASSERT_EQ(list.Add(&spin, &updown, 1), 0);
    EXPECT_EQ(list.GetCount(), 1u);
    EXPECT_EQ(list._FindControl(edit, ~0u), &spin);
    EXPECT_EQ(list._FindControl(updown, ~0u), &spin);
    ZxHWnd missing = nullptr; // an item the dialog lacks: a menu command (lParam 0) must not reach it
    EXPECT_EQ(list.Add(&spin, &missing, 1), 0);
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, 0x0111, 0, 0, nullptr, nullptr, ~0u));
}

TEST(ControlList, RemovingFirstOfThreeKeepsOthersReachableByHandle)
{
    Log log;
    RecordingControl a(log, "a", 1), b(log, "b", 2), c(log, "c", 3), d(log, "d", 2);
    CZxISControlList list;
    ZxHWnd extra = H(9);
    Register(list, {&a, &b, &c, &d});
    list.Add(&a, &extra, 1);
    EXPECT_EQ(list.Remove(&a), 0);
    EXPECT_EQ(list._FindControl(H(1), ~0u), nullptr);
    EXPECT_EQ(list._FindControl(extra, ~0u), nullptr);
    EXPECT_EQ(list._FindControl(H(2), ~0u), &b);
    EXPECT_EQ(list._FindControl(H(4), ~0u), &d);

    CZxISControl* removed[3] = {};
    uint32_t count = 0;
    EXPECT_EQ(list.RemoveMany(1, removed, &count), 0);
    ASSERT_EQ(count, 1u);
    EXPECT_EQ(removed[0], &c);
    EXPECT_EQ(list._FindControl(H(4), ~0u), &d);
    EXPECT_EQ(list.RemoveMany(2, nullptr, nullptr), 0);
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_TRUE(log.empty()) << "removing must not detach";
}

TEST(ControlList, RoutesOnlyTheFourControlMessagesBySenderAndMask)
{
    Log log;
    RecordingControl a(log, "a", 0x1), b(log, "b", 0x6);
    CZxISControlList list;
    Register(list, {&a, &b});
    for (uint32_t msg : {0x0111u, 0x0114u, 0x0115u, 0x0138u}) { // command, h/v scroll, static colour
        CZxISControl* found = nullptr;
        ZxLResult result = 0;
        EXPECT_TRUE(list.DlgProcHookMany(nullptr, msg, 0, From(2), &result, &found, 0x4));
        EXPECT_EQ(found, &b);
        EXPECT_EQ(result, 77);
    }
    b.m_handles = false; // the hook alone decides whether it handled the message
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, 0x0111, 0, From(2), nullptr, nullptr, ~0u));
    log.clear();

    CZxISControl* untouched = &b;
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, 0x0111, 0, From(1), nullptr, &untouched, 0x6)); // outside mask
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, 0x0112, 0, From(1), nullptr, &untouched, ~0u)); // WM_SYSCOMMAND
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, 0x0113, 0, From(1), nullptr, &untouched, ~0u)); // WM_TIMER
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, 0x0111, 0, From(7), nullptr, &untouched, ~0u)); // unknown sender
    EXPECT_EQ(untouched, &b);
    EXPECT_TRUE(log.empty());
}

TEST(ControlList, BulkOperationsTouchExactlyTheGroupInRegistrationOrder)
{
    Log log;
    RecordingControl a(log, "a", 0x1), b(log, "b", 0x2), c(log, "c", 0x3);
    CZxISControlList list;
    Register(list, {&c, &a, &b});
    list.ReinitAndUpdateMany(0x2);
    list.ReinitMany(0x1);
    list.UpdateFromGenericMany(0x1);
    list.UpdateStateMany(0x1);
    list.ResetToDefaultMany(0x1);
    list.EnableMany(false, 0x1);
    list.ShowMany(true, 0x1);
    list.ChangeModeMany(2, 0x1);
    list.DetachMany(0x1);
    list.EnableMany(true, 0);
    EXPECT_EQ(log, (Log{"c:Reinit", "c:UpdateState", "c:UpdateFromGeneric", "b:Reinit", "b:UpdateState",
                        "b:UpdateFromGeneric", "c:Reinit", "a:Reinit", "c:UpdateFromGeneric", "a:UpdateFromGeneric",
                        "c:UpdateState", "a:UpdateState", "c:ResetToDefault", "a:ResetToDefault", "c:Enable0",
                        "a:Enable0", "c:Show1", "a:Show1", "c:ChangeMode", "a:ChangeMode", "c:Detach", "a:Detach"}));
    EXPECT_EQ(a.GetMode(), 2u);
    EXPECT_EQ(list.Clear(), 0);
    EXPECT_EQ(list._FindControl(H(1), ~0u), nullptr);
}

TEST(ControlList, StateChangeRefreshesFormatControlsFirstThenPropertiesByName)
{
    Log log;
    RecordingControl fmt(log, "fmt", 0, C::btFormat, L""), gain(log, "gain", 1, C::btProperty, L"Gain"),
        gain2(log, "gain2", 2, C::btProperty, L"Gain"), exposure(log, "exp", 1, C::btProperty, L"Exposure"),
        run(log, "run", 1, C::btCommand, L"Gain");
    CZxISControlList list;
    Register(list, {&gain, &fmt, &exposure, &run, &gain2});

    SZxStateChangeInfo info;
    info.m_bFormatChanged = true;
    info.Add(L"Exposure", true, false, false);
    info.Add(L"Gain", false, true, false);
    info.Add(L"Offset", true, true, true);
    EXPECT_EQ(list.UpdateWithStateChangeInfo(info), 0);
    EXPECT_EQ(log, (Log{"fmt:Reinit", "fmt:UpdateFromGeneric", "exp:UpdateState", "gain:Reinit",
                        "gain:UpdateFromGeneric", "gain:UpdateState", "gain2:Reinit", "gain2:UpdateFromGeneric",
                        "gain2:UpdateState"}));

    log.clear(); // new format values and a new value alone rebuild nothing
    SZxStateChangeInfo values;
    values.m_bFormatValuesChanged = true;
    values.Add(L"Exposure", false, false, true);
    list.UpdateWithStateChangeInfo(values);
    EXPECT_EQ(log, (Log{"fmt:UpdateFromGeneric", "exp:UpdateFromGeneric", "exp:UpdateState"}));
}

TEST(ControlList, SetToGenericManyWritesTheGroupInOneCallSkippingRefusingControls)
{
    CZxSimCamera cam;
    Log log;
    RecordingControl gain(log, "gain", 1, C::btProperty, L"Gain"), busy(log, "busy", 1, C::btProperty, L"Offset"),
        other(log, "other", 2, C::btProperty, L"Gamma"), command(log, "cmd", 1, C::btCommand, L"Offset");
    gain.m_iGives = other.m_iGives = command.m_iGives = 0;
    gain.m_varGives = 2.5;
    other.m_varGives = command.m_varGives = 150;
    busy.m_iGives = -10;
    CZxISControlList list;
    Register(list, {&gain, &busy, &other, &command});

    // The list's mode is used, not the controls' (which are all fast).
    EXPECT_EQ(list.SetToGenericMany(&cam, 2, 1), 0);
    EXPECT_EQ(cam.CallCount(L"PropSet_WRP"), 1);
    EXPECT_EQ((std::vector<double>{Value(cam, L"Gain", 2), Value(cam, L"Offset", 2), Value(cam, L"Gamma", 2),
                                   Value(cam, L"Gain", 1)}),
              (std::vector<double>{2.5, 0.0, 100.0, 1.0}));

    cam.ClearCallLog(); // no property-bound control in the group: still one (empty) write
    EXPECT_EQ(list.SetToGenericMany(&cam, 1, 0x100), 0);
    EXPECT_EQ(cam.CallCount(L"PropSet_WRP"), 1);
    cam.FailNext(L"PropSet_WRP", -2);
    EXPECT_EQ(list.SetToGenericMany(&cam, 1, 1), -2);
}

TEST(ControlList, TimerRefreshesOnlyPropertiesThatChangeByThemselves)
{
    CZxSimCamera cam;
    ASSERT_EQ(zxtest::Set(cam, L"AutoExposure", true), 0);
    Log log;
    RecordingControl exposure(log, "exp", 0, C::btProperty, L"Exposure"), gain(log, "gain", 1, C::btProperty, L"Gain"),
        sensor(log, "sensor", 1, C::btProperty, L"SensorTemperature"),
        unknown(log, "unknown", 1, C::btProperty, L"NoSuchProperty");
    CZxISControlList list;
    Register(list, {&exposure, &gain, &sensor, &unknown});
    for (RecordingControl* c : {&exposure, &gain, &sensor, &unknown})
        c->Attach(nullptr, &cam, nullptr);
    EXPECT_EQ(list.UpdateChangingPropsOnTimer(), 0);
    EXPECT_EQ(log, (Log{"exp:UpdateFromGeneric", "sensor:UpdateFromGeneric"}));
}

TEST(ControlListRouting, APrivateMessageReachesTheRegisteredControlItNamesById)
{
    const uint32_t kPrivate = 0x400 + 400, kTimer = 0x113;
    Log log;
    CZxISControlList list;
    RecordingControl a(log, "a", 1, C::btProperty, L"Gain", 7), b(log, "b", 2, C::btProperty, L"Gain", 8),
        stranger(log, "s", 1, C::btProperty, L"Gain", 9);
    Register(list, {&a, &b});
    EXPECT_EQ(list.AddPrivateMessage(&a, kPrivate), 0);
    EXPECT_EQ(list.AddPrivateMessage(&b, kPrivate), 0);
    EXPECT_EQ(list.AddPrivateMessage(&stranger, kPrivate), -9) << "not registered";
    EXPECT_EQ(list.AddPrivateMessage(nullptr, kPrivate), -9);
    EXPECT_EQ(list.AddPrivateMessage(&a, kTimer), -9) << "a system message";

    const struct {
        uint32_t message;
        ZxLParam id;
        uint32_t mask;
        CZxISControl* routed;
    } cases[] = {{kPrivate, 8, ~0u, &b}, {kPrivate, 7, 2, nullptr}, {kPrivate, 9, ~0u, nullptr},
                 {kPrivate + 1, 7, ~0u, nullptr}, {kTimer, 7, ~0u, nullptr}};
    for (const auto& k : cases) {
        CZxISControl* found = nullptr;
        ZxLResult result = 0;
        EXPECT_EQ(list.DlgProcHookMany(nullptr, k.message, 13, k.id, &result, &found, k.mask), k.routed != nullptr)
            << k.message << " " << k.id;
        EXPECT_EQ(found, k.routed);
    }
    EXPECT_EQ(log, (Log{"b:Hook"}));
    list.Remove(&a);
    EXPECT_TRUE(list.DlgProcHookMany(nullptr, kPrivate, 27, 8, nullptr, nullptr, ~0u)) << "b moved up, still found";
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, kPrivate, 27, 7, nullptr, nullptr, ~0u)) << "a's entry went with it";
    list.Clear();
    EXPECT_FALSE(list.DlgProcHookMany(nullptr, kPrivate, 27, 8, nullptr, nullptr, ~0u));
}
