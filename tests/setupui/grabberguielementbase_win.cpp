// The GUI-element host: message routing and the wrapper's calls with and
// without a handler, and the secondary grabber around events and GUI commands.
// (One page procedure on both hosts is the reference driver's test, in
// simsetup_win.cpp.)
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "zx/grabberguielementbase.h"
#include "zx/grabberuibase.h"
#include "zx/inputform.h"
#include "zx/iscontrols_command.h"
#include "zxsim/camera.h"
#include "zxsim/grabber.h"
#include "zx_props.h"
#include "zx_test.h"

namespace {

// A page written against the wrapper interface, as drivers write theirs.
struct SharedContext {
    IZxGrabberUI_Wrapper* wrapper;
    std::unique_ptr<CZxISControl> snap;
};

INT_PTR CALLBACK SharedProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_INITDIALOG) {
        SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
        auto* ctx = reinterpret_cast<SharedContext*>(lParam);
        IZxGrabberUI_Wrapper* w = ctx->wrapper;
        w->IS_CheckFQSync(IDC_ZX_FQSYNC);
        w->IS_InitDialog(reinterpret_cast<ZxHWnd>(hwnd), nullptr, nullptr);
        w->IS_Histo(10, 10, 100, IDC_ZX_HISTO_VIEW, IDC_ZX_RANGE_RED, IDC_ZX_RANGE_GREEN, IDC_ZX_RANGE_BLUE);
        w->IS_CommandX(IDC_ZX_COMMANDMENU, 2);
        ctx->snap = std::make_unique<CZxISControlPushCommand>(L"Snap", IDC_ZX_COMMAND1, 1);
        ctx->snap->Attach(reinterpret_cast<ZxHWnd>(hwnd), w->GetGeneric(), &w->GetControls());
        SetDlgItemInt(hwnd, IDC_ZX_OFFSET_EDIT, UINT(w->GetPropInt32(0, L"Offset")), FALSE);
        return TRUE;
    }
    auto* ctx = reinterpret_cast<SharedContext*>(GetWindowLongPtrW(hwnd, DWLP_USER));
    if (!ctx)
        return FALSE;
    if (msg == WM_DESTROY) {
        ctx->wrapper->GetControls().DetachMany(0xFFFFFFFFu);
        ctx->wrapper->GetControls().Clear();
    }
    int64_t result = 0;
    if (ctx->wrapper->IS_Message(reinterpret_cast<ZxHWnd>(hwnd), msg, int64_t(wParam), int64_t(lParam), &result,
                                 nullptr)) {
        SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, LONG_PTR(result));
        return TRUE;
    }
    return FALSE;
}

class ElementHost : public CZxGrabberGUIElement_Base {
public:
    SharedContext* ctx = nullptr;

protected:
    HWND CreateElementWindow(HWND parent) override
    {
        return CreateChildDialog(ZX_GetLibraryModule(), ZX_INPUT_FORM, parent, &SharedProc, LPARAM(ctx));
    }
};

struct Seen {
    int32_t code;
    uintptr_t wParam;
    int active;   // the grabber's active secondary grabber at that moment
};
// What the handler saw, and what it answers.
struct Sink {
    std::vector<Seen> events;
    CZxSimGrabber* grabber = nullptr;
    ElementHost* element = nullptr;
    int answer = 0;
    uint32_t waitCount = 0;   // the element's wait cursor during the last event
    std::wstring topic;
    intptr_t payload = 0;
    HWND activeAnswer = nullptr;
};

int Handler(void* context, SZxGUIElementEvent* e)
{
    auto* sink = static_cast<Sink*>(context);
    sink->events.push_back({e->m_iCode, e->m_wParam, sink->grabber ? sink->grabber->SecGrabber_GetActive() : -1});
    sink->waitCount = sink->element ? sink->element->GetWaitCount() : 0;
    sink->payload = e->m_lParam;
    if (e->m_iCode == ZX_GUIEVENT_HELP)
        sink->topic = reinterpret_cast<const wchar_t*>(e->m_lParam);
    if (e->m_iCode == ZX_GUIEVENT_SETACTIVEDIALOG)
        *reinterpret_cast<HWND*>(e->m_lParam) = sink->activeAnswer;
    return sink->answer;
}

struct ParentWindow {
    HWND hwnd = CreateWindowExW(0, L"STATIC", L"pane", WS_OVERLAPPEDWINDOW, 0, 0, 600, 500, nullptr, nullptr,
                                nullptr, nullptr);
    ~ParentWindow() { DestroyWindow(hwnd); }
};

// The shared page on the element host for `cam`, docked in a pane, with `sink`
// (if any) as its handler from the start.
struct Page {
    ParentWindow parent;
    ElementHost element;
    CZxGrabberGUIElement_Wrapper wrapper{&element};
    SharedContext ctx{&wrapper, nullptr};
    HWND hwnd = nullptr;
    Page(CZxSimCamera* cam, Sink* sink)
    {
        element.ctx = &ctx;
        element.Init(cam);
        if (sink) {
            sink->element = &element;
            element.SetHandler(&Handler, sink);
        }
        hwnd = reinterpret_cast<HWND>(
            element.CreateUI(L"setup", 0, reinterpret_cast<ZxHWnd>(parent.hwnd), nullptr, nullptr));
    }
    ~Page() { element.DestroyUI(); }
    ZxHWnd W() const { return reinterpret_cast<ZxHWnd>(hwnd); }
};

} // namespace

TEST(GUIElement, WithoutHandlerEveryMessageGoesToTheListAndTheWrapperCallsReachAHandlerOnceSet)
{
    CZxSimGrabber grabber(1);
    CZxSimCamera* cam = grabber.Camera(0);
    Page page(cam, nullptr);
    HWND w = page.hwnd;
    ASSERT_TRUE(w);
    EXPECT_EQ(GetParent(w), page.parent.hwnd);
    EXPECT_TRUE(GetWindowLongPtrW(w, GWL_STYLE) & WS_CHILD);

    // The host's own messages do nothing without a handler: no wait cursor.
    for (UINT msg : {UINT(WM_IS_FORMATCHANGING), UINT(WM_IS_FORMATCHANGED), UINT(WM_IS_REFRESH),
                     UINT(WM_IS_COMMANDDONE)}) {
        int64_t result = 7;
        EXPECT_FALSE(page.element.IS_ProcessMessage(page.W(), msg, 1, 0, &result, nullptr)) << msg;
        EXPECT_EQ(result, 0) << msg;
        EXPECT_EQ(page.element.GetWaitCount(), 0u) << msg;
    }
    // A click on a bound button reaches its control through the list.
    cam->ClearCallLog();
    CZxISControl* found = nullptr;
    page.element.IS_ProcessMessage(page.W(), WM_COMMAND, MAKEWPARAM(IDC_ZX_COMMAND1, BN_CLICKED),
                                   int64_t(GetDlgItem(w, IDC_ZX_COMMAND1)), nullptr, &found);
    EXPECT_EQ(found, page.ctx.snap.get());
    EXPECT_FALSE(zxtest::Calls(*cam, L"Command_WRP(Snap").empty());

    // Shared driver code calls these through the wrapper: nothing is raised, the
    // switch is allowed, and asking for the active dialog is a caller's fault.
    IZxGrabberUI_Wrapper& ui = page.wrapper;
    ui.IS_ChangeLiveMode(page.W(), 1);
    ui.IS_OpenFreeTopicHelp(L"topic");
    EXPECT_TRUE(ui.IS_FQModeChangeAllowed());
    zxtest::DiagCapture diag;
    EXPECT_EQ(ui.IS_SetHDLGActive(page.W()), nullptr);
    EXPECT_EQ(diag.Size(), 1u);
    EXPECT_EQ(page.element.GetWaitCount(), 0u);

    // Once a handler is set, the element asks it what the dialog host asks its callback.
    Sink sink;
    sink.element = &page.element;
    page.element.SetHandler(&Handler, &sink);
    ui.IS_ChangeLiveMode(page.W(), 2);
    ASSERT_EQ(sink.events.size(), 1u);
    EXPECT_EQ(sink.events[0].code, ZX_GUIEVENT_LIVEMODECHANGE);
    EXPECT_EQ(sink.events[0].wParam, 2u);
    EXPECT_EQ(sink.waitCount, 1u) << "the change runs under the wait cursor";
    EXPECT_EQ(page.element.GetWaitCount(), 0u);

    ui.IS_OpenFreeTopicHelp(L"Cooling");
    EXPECT_EQ(sink.events.back().code, ZX_GUIEVENT_HELP);
    EXPECT_EQ(sink.topic, L"Cooling");
    ui.IS_OpenFreeTopicHelp(nullptr);
    EXPECT_EQ(sink.topic, L"");

    sink.activeAnswer = page.parent.hwnd;
    EXPECT_EQ(ui.IS_SetHDLGActive(page.W()), reinterpret_cast<ZxHWnd>(page.parent.hwnd));
    EXPECT_EQ(sink.events.back().code, ZX_GUIEVENT_SETACTIVEDIALOG);
    sink.activeAnswer = nullptr;
    EXPECT_EQ(ui.IS_SetHDLGActive(page.W()), nullptr) << "the handler's answer, not the element's own window";

    EXPECT_TRUE(ui.IS_FQModeChangeAllowed());
    EXPECT_EQ(sink.events.back().code, ZX_GUIEVENT_FQMODECHANGEQUERY);
    EXPECT_EQ(sink.payload, reinterpret_cast<intptr_t>(static_cast<CZxGenProvider_Low*>(grabber.Camera(0))));
    sink.answer = 1;
    EXPECT_FALSE(ui.IS_FQModeChangeAllowed()) << "a handler that refuses keeps the set";
    EXPECT_EQ(sink.events.size(), 7u);
    EXPECT_EQ(diag.Size(), 1u) << "nothing raised once a handler answers";
}

TEST(GUIElement, EventsArriveWithTheElementsCameraActiveAndTheOldOneBack)
{
    CZxSimGrabber grabber(3);
    Sink sink;
    sink.grabber = &grabber;
    Page page(grabber.Camera(2), &sink);
    ElementHost& element = page.element;
    ASSERT_TRUE(page.hwnd);
    grabber.SecGrabber_SetActive(1);

    // The wait cursor: on before 10003, off after the others.
    const struct {
        UINT msg;
        int32_t code;
        uint32_t waitAfter;
    } rows[] = {{WM_IS_FORMATCHANGING, 10003, 1}, {WM_IS_FORMATCHANGED, 10004, 0}, {WM_IS_FORMATCHANGING, 10003, 1},
                {WM_IS_REFRESH, 10005, 0},        {WM_IS_FORMATCHANGING, 10003, 1}, {WM_IS_COMMANDDONE, 10008, 0}};
    for (const auto& row : rows) {
        sink.events.clear();
        EXPECT_FALSE(element.IS_ProcessMessage(page.W(), row.msg, 2, 0, nullptr, nullptr));
        ASSERT_EQ(sink.events.size(), 1u) << row.msg;
        EXPECT_EQ(sink.events[0].code, row.code);
        EXPECT_EQ(sink.events[0].wParam, 2u);
        EXPECT_EQ(sink.events[0].active, 2);
        EXPECT_EQ(grabber.SecGrabber_GetActive(), 1);
        EXPECT_EQ(element.GetWaitCount(), row.waitAfter);
    }
    // A handler that answers non-zero takes the message.
    sink.answer = 5;
    int64_t result = 0;
    EXPECT_TRUE(element.IS_ProcessMessage(page.W(), WM_IS_REFRESH, 0, 0, &result, nullptr));
    EXPECT_EQ(result, 5);

    // The command menu's ROI commands arrive as GUI commands, under the same switch.
    sink.events.clear();
    for (uint32_t id : {7001u, 7004u, 7005u, 7007u, 7016u})
        element.CommandMenuHandle(id);
    const std::vector<int32_t> codes = {10006, 10010, 10011, 10013, 10022};
    ASSERT_EQ(sink.events.size(), codes.size());
    for (size_t i = 0; i < codes.size(); ++i) {
        EXPECT_EQ(sink.events[i].code, codes[i]);
        EXPECT_EQ(sink.events[i].active, 2);
    }
    EXPECT_EQ(grabber.SecGrabber_GetActive(), 1);
}

namespace {
// What the command menu showed while it was open: ROI "Use" (7000) and "Define..." (7001).
struct MenuSeen {
    CZxMenu* menu = nullptr;
    bool tracked = false, useEnabled = false, defineEnabled = false, useChecked = false;
} g_seen;
} // namespace

TEST(GUIElement, CommandMenuFollowsTheDialogHostsROIRules)
{
    CZxSimGrabber grabber(1);
    CZxSimCamera* cam = grabber.Camera(0);
    Sink sink;
    Page page(cam, &sink);
    ASSERT_TRUE(page.hwnd);
    ShowWindow(page.parent.hwnd, SW_SHOW);
    page.element.IS_InitCommandX(IDC_ZX_COMMANDMENU, 4);   // the ROI group
    g_seen.menu = &page.element.GetCommandMenu();
    const struct {
        bool multiView;
        CZxRect roi;
        bool roiOn;
        bool use, define;   // enabled
    } rows[] = {{false, CZxRect(8, 8, 64, 64), true, true, true},
                {false, CZxRect(0, 0, 0, 0), false, false, true},   // nothing to use yet
                {true, CZxRect(8, 8, 64, 64), true, false, false}};  // several cameras in view
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.multiView << " " << row.roi.IsNull());
        cam->SetMultiView(row.multiView);
        cam->ROISet(row.roi);
        cam->ROIEnable(row.roiOn);
        g_seen.tracked = false;
        SetTimer(nullptr, 0, 100, [](HWND, UINT, UINT_PTR id, DWORD) {
            KillTimer(nullptr, id);
            g_seen.tracked = true;
            g_seen.useEnabled = g_seen.menu->IsEnabled(7000);
            g_seen.defineEnabled = g_seen.menu->IsEnabled(7001);
            g_seen.useChecked = g_seen.menu->IsChecked(7000);
            EndMenu();
        });
        SendMessageW(page.hwnd, WM_COMMAND, MAKEWPARAM(IDC_ZX_COMMANDMENU, 0),
                     LPARAM(GetDlgItem(page.hwnd, IDC_ZX_COMMANDMENU)));
        ASSERT_TRUE(g_seen.tracked);
        EXPECT_EQ(g_seen.useEnabled, row.use);
        EXPECT_EQ(g_seen.defineEnabled, row.define);
        EXPECT_EQ(g_seen.useChecked, row.roiOn);
    }
}
