// The input-setup dialog host over the library's "INPUT_FORM" and a simulated
// camera: message routing, the histogram area, Cancel, reopening and the
// histogram fed from another thread.
#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

#include "zx/grabberuibase.h"
#include "zx/inputform.h"
#include "zxsim/camera.h"
#include "zx_canvas.h"
#include "zx_dialog.h"

namespace {

struct Event {
    IZxGrabberUI::EZxEvent event;
    int64_t value;
};
std::vector<Event> g_events;
int32_t g_startSplit = 0;   // what the evHistoSetup handler asks for

int32_t Sink(IZxGrabberUI::EZxEvent event, ZxHWnd, int64_t value, void* data)
{
    g_events.push_back({event, value});
    if (event == IZxGrabberUI::evHistoSetup)
        static_cast<SZxHistoSetupEvent*>(data)->m_iStartSplit = g_startSplit;
    // Messages stay the dialog's; every other event counts as handled.
    return event == IZxGrabberUI::evMessage ? 1 : 0;
}

int CountOf(IZxGrabberUI::EZxEvent e)
{
    int n = 0;
    for (const Event& ev : g_events)
        n += ev.event == e;
    return n;
}

// A driver-shaped host: the generic template, every message through IS_Message,
// OK and Cancel that reach it end the dialog.
class TestHost : public CZxGrabberUI_Base {
public:
    std::function<void(HWND)> onOpen;   // runs inside the dialog, once it is up
    std::vector<std::pair<WPARAM, LPARAM>> commands;   // WM_COMMANDs that reached the dialog

    int32_t DoInputSetup(bool modal, ZxHWnd parent) override
    {
        HWND owner = reinterpret_cast<HWND>(parent);
        if (modal)
            return int32_t(DialogBoxParamW(ZX_GetLibraryModule(), ZX_INPUT_FORM, owner, &Proc, LPARAM(this)));
        return CreateDialogParamW(ZX_GetLibraryModule(), ZX_INPUT_FORM, owner, &Proc, LPARAM(this)) ? 0 : -11;
    }
    /// A dialog the host takes for modal or modeless, created modeless so the test keeps the thread.
    HWND Open(bool modal)
    {
        m_bModal = modal;
        DoInputSetup(false, nullptr);
        return m_hDlg;
    }

private:
    static INT_PTR CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
    {
        if (msg == WM_INITDIALOG) {
            SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
            auto* self = reinterpret_cast<TestHost*>(lParam);
            self->IS_InitDialog(hwnd, nullptr, nullptr);
            self->IS_Histo(10, 10, 100, IDC_ZX_HISTO_VIEW, IDC_ZX_RANGE_RED, IDC_ZX_RANGE_GREEN, IDC_ZX_RANGE_BLUE);
            self->IS_CommandX(IDC_ZX_COMMANDMENU, 0);
            self->IS_Help(IDC_ZX_HELP, L"setup");
            if (self->onOpen)
                PostMessageW(hwnd, WM_APP, 0, 0);
            return TRUE;
        }
        auto* self = reinterpret_cast<TestHost*>(GetWindowLongPtrW(hwnd, DWLP_USER));
        if (!self)
            return FALSE;
        if (msg == WM_COMMAND)
            self->commands.emplace_back(wParam, lParam);
        INT_PTR result = 0;
        if (self->IS_Message(hwnd, msg, wParam, lParam, &result, nullptr)) {
            SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, result);
            return TRUE;
        }
        if (msg == WM_APP && self->onOpen) {
            auto run = std::move(self->onOpen);
            self->onOpen = nullptr;
            run(hwnd);
        } else if (msg == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
            if (self->IS_IsModal())
                EndDialog(hwnd, LOWORD(wParam));
            else
                DestroyWindow(hwnd);
        }
        return FALSE;
    }
};

void Pump() { zxtest::TestDialog::Pump(); }

using zxtest::Canvas;

// A colour histogram at 8 bits: one peak per channel.
struct ColourHisto {
    std::vector<uint32_t> sum, comp[3];
    SZxHisto h;
    explicit ColourHisto(int peak)
    {
        sum.assign(256, 0);
        for (int c = 0; c < 3; ++c) {
            comp[c].assign(256, 0);
            comp[c][size_t((peak + 40 * c) % 256)] = 1000;
            comp[c][size_t((peak + 40 * c + 7) % 256)] = 300;
            for (int i = 0; i < 256; ++i)
                sum[size_t(i)] += comp[c][size_t(i)];
        }
        h.pdwHisto = sum.data();
        h.uiComp = 3;
        for (int c = 0; c < 3; ++c)
            h.pdwCompHisto[c] = comp[c].data();
        h.uiBits = 8;
    }
};

class GrabberUIBase : public ::testing::Test {
protected:
    void SetUp() override
    {
        g_events.clear();
        g_startSplit = 0;
        host.Init(&camera, &Sink);
    }
    void TearDown() override
    {
        if (host.GetHDlg())
            DestroyWindow(host.GetHDlg());
        Pump();
    }
    bool Message(UINT msg, WPARAM w, LPARAM l, int64_t* result = nullptr)
    {
        int64_t r = 0;
        return host.IS_Message(reinterpret_cast<ZxHWnd>(host.GetHDlg()), msg, int64_t(w), int64_t(l),
                               result ? result : &r, nullptr);
    }
    bool Command(int id) { return Message(WM_COMMAND, MAKEWPARAM(id, 0), LPARAM(GetDlgItem(host.GetHDlg(), id))); }

    CZxSimCamera camera;
    TestHost host;
};

// Handles every message it is sent, so routing to the list shows.
class ProbeControl : public CZxISControl {
public:
    explicit ProbeControl(int id) : CZxISControl(ctPushCommand, btCommand, L"Snap", 1, id, 1) {}
    bool DlgProcHook(ZxHWnd, uint32_t message, ZxWParam, ZxLParam, ZxLResult*) override
    {
        seen.push_back(message);
        return true;
    }
    std::vector<uint32_t> seen;
};

// ---- Routing -----------------------------------------------------------------------

TEST_F(GrabberUIBase, WithoutCallbackEveryMessageGoesToTheList)
{
    host.Init(&camera, nullptr);
    HWND dlg = host.Open(false);
    ASSERT_TRUE(dlg);
    ProbeControl probe(IDOK);
    probe.Attach(reinterpret_cast<ZxHWnd>(dlg), &camera, &host.GetControls());
    camera.ClearCallLog();

    Canvas canvas(500, 200, RGB(0x12, 0x34, 0x56));
    EXPECT_FALSE(Message(WM_ERASEBKGND, WPARAM(canvas.Dc()), 0));
    EXPECT_EQ(canvas.At(20, 20), RGB(0x12, 0x34, 0x56)) << "nothing painted";
    EXPECT_FALSE(Message(WM_IS_FORMATCHANGING, 1, 0));
    EXPECT_FALSE(host.IsBusy()) << "no wait cursor without a callback";
    EXPECT_FALSE(Message(WM_NCLBUTTONDBLCLK, HTCAPTION, 0));
    // A modeless OK is the host's with a callback; without one the list gets it.
    EXPECT_TRUE(Command(IDOK));
    EXPECT_EQ(probe.seen, std::vector<uint32_t>{WM_COMMAND});
    EXPECT_EQ(camera.CallCount(L"InputSetupModelessHide"), 0);
    host.GetControls().Clear();
}

TEST_F(GrabberUIBase, OkAndCancelAreTheHostsOnlyForTheirKindOfDialog)
{
    struct Case {
        bool modal;
        int id;
        bool handled;
        int hides, restores;
    } cases[] = {
        {false, IDOK, true, 1, 0},
        {true, IDOK, false, 0, 0},
        {false, IDCANCEL, false, 0, 0},
        {true, IDCANCEL, false, 0, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << (c.modal ? "modal " : "modeless ") << c.id);
        HWND dlg = host.Open(c.modal);
        ASSERT_TRUE(dlg);
        camera.ClearCallLog();
        host.commands.clear();
        g_events.clear();
        EXPECT_EQ(Command(c.id), c.handled);
        EXPECT_EQ(camera.CallCount(L"InputSetupModelessHide"), c.hides);
        EXPECT_EQ(camera.CallCount(L"CameraSettingsSet_UNI_WRP"), c.restores);
        // The restore is announced around the write: changing, then changed.
        EXPECT_EQ(CountOf(IZxGrabberUI::evPropChanging), c.restores);
        EXPECT_EQ(CountOf(IZxGrabberUI::evPropChanged), c.restores);
        EXPECT_EQ(host.GetWaitCount(), 0u);
        DestroyWindow(dlg);
    }
}

TEST_F(GrabberUIBase, HelpPropertyAndLiveMessagesBecomeEventsUnlessBusy)
{
    ASSERT_TRUE(host.Open(false));
    struct Case {
        UINT msg;
        IZxGrabberUI::EZxEvent event;
        int64_t value;
    } cases[] = {
        {WM_IS_PROPERTYCHANGED, IZxGrabberUI::evPropSet, 5},
        {WM_IS_REFRESH, IZxGrabberUI::evPropRefresh, -1},
        {WM_IS_COMMANDDONE, IZxGrabberUI::evCommandDone, 3},
    };
    for (const Case& c : cases) {
        g_events.clear();
        EXPECT_TRUE(Message(c.msg, WPARAM(c.value), 0));
        ASSERT_EQ(g_events.size(), 1u);
        EXPECT_EQ(g_events[0].event, c.event);
        EXPECT_EQ(g_events[0].value, c.value);
    }
    g_events.clear();
    EXPECT_TRUE(Command(IDC_ZX_HELP));
    EXPECT_EQ(CountOf(IZxGrabberUI::evHelp), 1);
    // The state-change notification is an ordinary message: the callback declines it.
    EXPECT_FALSE(Message(WM_IS_STATECHANGE, 0, 0));

    // A change of the live state reaches the dialog, unless the host is busy.
    auto liveMessages = [] {
        int n = 0;
        for (const Event& e : g_events)
            n += e.event == IZxGrabberUI::evMessage && e.value == WM_ZX_LIVECHANGE;
        return n;
    };
    host.OnLiveChange(true, 2);
    EXPECT_EQ(liveMessages(), 1);
    host.IS_SetWaitCursor(true);
    host.OnLiveChange(false, 2);
    EXPECT_EQ(liveMessages(), 1);
    host.IS_SetWaitCursor(false);
}

// ---- Wait cursor and menu -------------------------------------------------------------

TEST_F(GrabberUIBase, NestedWaitCursorSurvivesOneOffButBusyDoesNot)
{
    HCURSOR wait = LoadCursorW(nullptr, IDC_WAIT);
    HCURSOR before = SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    EXPECT_FALSE(host.IS_SetWaitCursor(true));
    EXPECT_TRUE(host.IS_SetWaitCursor(true));
    EXPECT_TRUE(host.IS_SetWaitCursor(false));
    EXPECT_EQ(GetCursor(), wait);
    EXPECT_FALSE(host.IsBusy());
    EXPECT_EQ(host.GetWaitCount(), 1u);
    EXPECT_TRUE(host.IS_SetWaitCursor(false));
    EXPECT_NE(GetCursor(), wait);
    EXPECT_EQ(host.GetWaitCount(), 0u);
    EXPECT_FALSE(host.IS_SetWaitCursor(false)) << "an unmatched off stays at zero";
    EXPECT_EQ(host.GetWaitCount(), 0u);
    SetCursor(before);
}

TEST_F(GrabberUIBase, DismissedCommandMenuStillReachesTheHandlerWithZero)
{
    HWND dlg = host.Open(false);
    ASSERT_TRUE(dlg);
    ShowWindow(dlg, SW_SHOW);
    // Dismiss the menu from inside its own loop, as a click elsewhere would.
    SetTimer(nullptr, 0, 100, [](HWND, UINT, UINT_PTR id, DWORD) {
        KillTimer(nullptr, id);
        EndMenu();
    });
    host.commands.clear();
    EXPECT_TRUE(Command(IDC_ZX_COMMANDMENU));
    ASSERT_EQ(host.commands.size(), 1u);
    EXPECT_EQ(host.commands[0], std::make_pair(WPARAM(0), LPARAM(0)));
}

// ---- Histogram area -------------------------------------------------------------------

TEST_F(GrabberUIBase, CombinedPlotIsCentredInTheArea)
{
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    for (int magnifier : {0, int(IDC_ZX_HISTO_VIEW)}) {
        SCOPED_TRACE(magnifier);
        ASSERT_TRUE(host.Open(false));
        host.IS_Histo(10, 10, 100, magnifier, IDC_ZX_RANGE_RED, -1, -1);
        RECT outer;
        host.IS_HistoGetRect(outer);
        const int offset = magnifier == 0 ? 14 : 78;
        EXPECT_EQ(outer.right - outer.left, magnifier == 0 ? 292 : 420);
        EXPECT_EQ(outer.bottom - outer.top, 120);
        Canvas canvas(500, 200, RGB(0x12, 0x34, 0x56));
        EXPECT_TRUE(Message(WM_ERASEBKGND, WPARAM(canvas.Dc()), 0));
        // The plot is 256 pixels from left + offset + 2, inside its frame.
        EXPECT_NE(canvas.At(10 + offset + 1, 60), window);
        EXPECT_EQ(canvas.At(10 + offset + 2, 60), window);
        EXPECT_EQ(canvas.At(10 + offset + 257, 60), window);
        EXPECT_NE(canvas.At(10 + offset + 258, 60), window);
        DestroyWindow(host.GetHDlg());
    }
}

TEST_F(GrabberUIBase, SplitViewShowsRedGreenBlueEndingEightPixelsInside)
{
    g_startSplit = 1;
    ASSERT_TRUE(host.Open(false));
    ASSERT_FALSE(host.IsHistoCombined());
    ColourHisto histo(60);
    host.OnNewHisto(histo.h, CZxHistoDraw::PIXELKIND_RGB);
    Canvas canvas(500, 200, RGB(0x12, 0x34, 0x56));
    EXPECT_TRUE(Message(WM_ERASEBKGND, WPARAM(canvas.Dc()), 0));
    const COLORREF window = GetSysColor(COLOR_WINDOW), face = GetSysColor(COLOR_BTNFACE);
    const COLORREF colours[3] = {RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255)};
    for (int k = 0; k < 3; ++k) {
        const int x = 10 + 10 + 136 * k;
        EXPECT_EQ(canvas.At(x, 25), window) << k;
        EXPECT_EQ(canvas.At(x + 127, 25), window) << k;
        EXPECT_NE(canvas.At(x + 128, 25), window) << k;
        // Bars of the plot are in its component's colour only.
        int coloured = 0;
        for (int px = x; px < x + 128; ++px) {
            const COLORREF c = canvas.At(px, 10 + 10 + 99);
            if (c != window) {
                EXPECT_EQ(c, colours[k]) << "plot " << k << " column " << px - x;
                ++coloured;
            }
        }
        EXPECT_GT(coloured, 0) << k;
    }
    RECT outer;
    host.IS_HistoGetRect(outer);
    EXPECT_NE(canvas.At(outer.right - 9, 60), face) << "last frame's edge";
    EXPECT_EQ(canvas.At(outer.right - 8, 60), face);
    // The view button toggles back to one plot.
    g_events.clear();
    EXPECT_TRUE(Command(IDC_ZX_HISTO_VIEW));
    EXPECT_TRUE(host.IsHistoCombined());
}

// A driver's frame histogram as ZX_ComputeHistogramAE fills it: each channel of
// a pixel reaches its own range text, whatever order the buffers between keep.
TEST_F(GrabberUIBase, FrameHistogramShowsEachChannelAsItsOwn)
{
    HWND dlg = host.Open(false);
    ASSERT_TRUE(dlg);
    CZxGrabberSample01 frame(1, 1, 8, 3);
    auto* bgr = static_cast<uint8_t*>(frame.GetDataPtr());
    bgr[0] = 50;    // blue
    bgr[1] = 100;   // green
    bgr[2] = 200;   // red
    SZxAEHistogram hist(8, false, true);
    ZX_ComputeHistogramAE(&hist, &frame, nullptr);
    host.OnNewFrameHisto(hist);
    Pump();
    const std::pair<int, const wchar_t*> ranges[] = {
        {IDC_ZX_RANGE_RED, L"<200, 200>"}, {IDC_ZX_RANGE_GREEN, L"<100, 100>"}, {IDC_ZX_RANGE_BLUE, L"<50, 50>"}};
    for (const auto& range : ranges)
        EXPECT_EQ(zxtest::ItemText(dlg, range.first), range.second) << range.first;
}

TEST_F(GrabberUIBase, HistogramFromAnotherThreadRepaintsTheOpenDialog)
{
    HWND dlg = host.Open(false);
    ASSERT_TRUE(dlg);
    // A monochrome histogram first: one range, the other texts hidden.
    std::vector<uint32_t> mono(256, 0);
    mono[30] = 500;
    SZxHisto first;
    first.pdwHisto = mono.data();
    first.uiBits = 8;
    host.OnNewHisto(first, 0);
    Pump();
    Canvas before(500, 200), after(500, 200);
    Message(WM_ERASEBKGND, WPARAM(before.Dc()), 0);
    EXPECT_EQ(zxtest::ItemText(dlg, IDC_ZX_RANGE_RED), L"<30, 30>");
    EXPECT_FALSE(GetWindowLongW(GetDlgItem(dlg, IDC_ZX_RANGE_GREEN), GWL_STYLE) & WS_VISIBLE);

    // A frame that arrives while the texts of the previous one are being drawn
    // is shown as well, not left behind until some later frame.
    static TestHost* s_host;
    static WNDPROC s_static;
    s_host = &host;
    HWND red = GetDlgItem(dlg, IDC_ZX_RANGE_RED);
    s_static = WNDPROC(SetWindowLongPtrW(
        red, GWLP_WNDPROC, LONG_PTR(+[](HWND w, UINT m, WPARAM wp, LPARAM lp) -> LRESULT {
            if (m == WM_SETTEXT && s_host) {
                ColourHisto late(20);
                std::exchange(s_host, nullptr)->OnNewHisto(late.h, CZxHistoDraw::PIXELKIND_RGB);
            }
            return CallWindowProcW(s_static, w, m, wp, lp);
        })));
    ColourHisto early(10);
    host.OnNewHisto(early.h, CZxHistoDraw::PIXELKIND_RGB);
    Pump();
    SetWindowLongPtrW(red, GWLP_WNDPROC, LONG_PTR(s_static));
    EXPECT_EQ(zxtest::ItemText(dlg, IDC_ZX_RANGE_RED), L"<100, 107>");

    std::atomic<bool> done{false};
    std::thread feeder([&] {
        for (int peak = 21; peak <= 120; ++peak) {
            ColourHisto h(peak);
            host.OnNewHisto(h.h, CZxHistoDraw::PIXELKIND_RGB);
            Sleep(1);
        }
        done = true;
    });
    // Pump while the feeder runs: painting and posting overlap.
    for (int i = 0; i < 2000 && !(done && zxtest::ItemText(dlg, IDC_ZX_RANGE_RED) == L"<200, 207>"); ++i) {
        Pump();
        Sleep(1);
    }
    feeder.join();
    Pump();
    // Red is component 2: peak + 80 and 7 above it.
    EXPECT_EQ(zxtest::ItemText(dlg, IDC_ZX_RANGE_RED), L"<200, 207>");
    EXPECT_EQ(zxtest::ItemText(dlg, IDC_ZX_RANGE_BLUE), L"<120, 127>");
    EXPECT_TRUE(GetWindowLongW(GetDlgItem(dlg, IDC_ZX_RANGE_GREEN), GWL_STYLE) & WS_VISIBLE);
    Message(WM_ERASEBKGND, WPARAM(after.Dc()), 0);
    EXPECT_NE(before.Row(10 + 10 + 99, 10, 430), after.Row(10 + 10 + 99, 10, 430));
}

// ---- Opening -------------------------------------------------------------------------------
// (Cancel of a modal dialog restoring every captured setting is the reference
// driver's test, in simsetup_win.cpp, where the controls show it too.)

TEST_F(GrabberUIBase, ReopeningWhileOpenEndsTheOldDialogWithTwo)
{
    int32_t inner = -1;
    host.onOpen = [&](HWND) {
        host.onOpen = [](HWND dlg) { SendMessageW(dlg, WM_COMMAND, IDOK, 0); };
        inner = host.InputSetup(nullptr);
    };
    EXPECT_EQ(host.InputSetup(nullptr), 2);
    EXPECT_EQ(inner, IDOK);
    EXPECT_EQ(CountOf(IZxGrabberUI::evInitModal), 2);
    EXPECT_EQ(CountOf(IZxGrabberUI::evDestroyModal), 2);
}

} // namespace
