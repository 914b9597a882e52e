// The live histogram under load: two acquisition threads hand over frames at
// about 1 kHz each while the reference driver's page opens and closes, modal
// and modeless on the dialog host and docked on the GUI-element host. Nothing
// may crash or hang, no new-histogram message may reach a window other than
// the open dialog, and windows, GDI objects and heap blocks must not grow with
// the number of openings.
//
// ZX_HISTO_LOAD_CYCLES=N sets the openings per variant (50 by default, which
// keeps ./zx test short; 200 or more for a soak run).
#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

#include "zx/grabberuibase.h"
#include "zx/histodraw.h"
#include "zx/inputform.h"
#include "reference_driver.h"
#include "zx_modal.h"

namespace {

int Cycles()
{
    const char* s = std::getenv("ZX_HISTO_LOAD_CYCLES");
    const int n = s ? std::atoi(s) : 0;
    return n > 0 ? n : 50;
}

// Two acquisition threads, each handing over a 12-bit colour histogram about
// once a millisecond, until destroyed.
class Feeders {
public:
    explicit Feeders(CZxGrabberUI_Base& ui)
    {
        for (int t = 0; t < 2; ++t)
            m_threads.emplace_back([this, &ui, t] {
                std::vector<uint32_t> counts(4 * 4096);
                SZxHisto h;
                h.uiBits = 12;
                h.uiComp = 3;
                h.pdwHisto = counts.data();
                for (int c = 0; c < 3; ++c)
                    h.pdwCompHisto[c] = counts.data() + 4096 * (c + 1);
                for (uint32_t round = 0; !m_stop; ++round) {
                    for (size_t i = 0; i < counts.size(); ++i)
                        counts[i] = uint32_t((i % 4096 * 7 + round + t) % 97);
                    ui.OnNewHisto(h, uint32_t(CZxHistoDraw::PIXELKIND_RGB));
                    ++m_frames;
                    Sleep(1);
                }
            });
    }
    ~Feeders()
    {
        m_stop = true;
        for (std::thread& t : m_threads)
            t.join();
    }
    Feeders(const Feeders&) = delete;
    Feeders& operator=(const Feeders&) = delete;
    long Frames() const { return m_frames; }

private:
    std::atomic<bool> m_stop{false};
    std::atomic<long> m_frames{0};
    std::vector<std::thread> m_threads;
};

// New-histogram messages the UI thread retrieves: for the host's open dialog
// (drawn), or for any other window (a frame after its dialog closed).
CZxGrabberUI_Base* g_host = nullptr;
int g_strayHisto = 0;
int g_histoDrawn = 0;
LRESULT CALLBACK CountHisto(int code, WPARAM wParam, LPARAM lParam)
{
    const MSG* m = reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && wParam == PM_REMOVE && m && m->message == WM_ZX_NEWHISTO) {
        if (m->hwnd && g_host && m->hwnd == g_host->GetHDlg())
            ++g_histoDrawn;
        else
            ++g_strayHisto;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// Handles what is queued, at most 200 messages: under load the queue need never run dry.
void Pump()
{
    MSG m;
    for (int i = 0; i < 200 && PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE); ++i) {
        TranslateMessage(&m);
        DispatchMessageW(&m);
    }
}

// Busy blocks of every heap of the process.
long HeapBlocks()
{
    HANDLE heaps[64];
    const DWORD n = GetProcessHeaps(64, heaps);
    long blocks = 0;
    for (DWORD i = 0; i < n && i < 64; ++i) {
        if (!HeapLock(heaps[i]))
            continue;
        PROCESS_HEAP_ENTRY e{};
        while (HeapWalk(heaps[i], &e))
            blocks += (e.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
        HeapUnlock(heaps[i]);
    }
    return blocks;
}

// Windows (Wine answers GetGuiResources with 0, so its windows are counted too:
// the thread's top-level windows, tooltips included), GDI and USER objects,
// heap blocks.
struct Usage {
    int windows = [] {
        int n = 0;
        EnumThreadWindows(GetCurrentThreadId(), [](HWND, LPARAM c) -> BOOL { return ++*reinterpret_cast<int*>(c) > 0; },
                          reinterpret_cast<LPARAM>(&n));
        return n;
    }();
    DWORD gdi = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    long heap = HeapBlocks();
};

} // namespace

using HistogramUnderLoad = ReferenceDriver;

TEST_F(HistogramUnderLoad, OpeningAndClosingWhileTwoThreadsDeliverFramesLeavesNothingBehind)
{
    g_host = &ui;
    HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, &CountHisto, nullptr, GetCurrentThreadId());
    ASSERT_TRUE(hook);
    const int cycles = Cycles();

    // One opening of each variant; the dialog is open while `openFor` runs.
    auto openModal = [&] {
        zxtest::DriveModal([&] { return ui.InputSetup(nullptr); }, [&](HWND dlg) {
            Pump();
            SendMessageW(dlg, WM_COMMAND, IDCANCEL, LPARAM(GetDlgItem(dlg, IDCANCEL)));
        });
    };
    auto openModeless = [&] {
        ASSERT_EQ(ui.InputSetupModelessShow(nullptr), 0);
        Pump(), Sleep(2), Pump();
        HWND dlg = ui.GetHDlg();
        ui.InputSetupModelessHide();
        EXPECT_FALSE(IsWindow(dlg));
    };
    auto openDocked = [&] {
        ASSERT_TRUE(element.CreateUI(L"setup", 0, reinterpret_cast<ZxHWnd>(pane), nullptr, nullptr));
        Pump();
        element.DestroyUI();
    };

    Feeders feeders(ui);
    const struct {
        const char* name;
        std::function<void()> open;
    } variants[] = {{"modal", openModal}, {"modeless", openModeless}, {"docked", openDocked}};
    for (const auto& v : variants) {
        SCOPED_TRACE(v.name);
        // A first opening: what the system creates once (classes, fonts, the
        // tooltip and hook machinery) is not a leak. The simulated camera's
        // call log grows with every provider call; it is the test's, not the
        // library's, and is emptied after each opening.
        v.open();
        Pump();
        camera.ClearCallLog();
        const Usage before;
        for (int i = 0; i < cycles; ++i) {
            v.open();
            camera.ClearCallLog();
        }
        Pump();
        const Usage after;
        EXPECT_LE(after.windows, before.windows) << "windows of this thread";
        EXPECT_LE(after.gdi, before.gdi) << "GDI objects";
        EXPECT_LE(after.user, before.user) << "USER objects";
        // A leak per opening would add at least `cycles` blocks; the allocator's
        // own bookkeeping moves by a few.
        EXPECT_LT(after.heap - before.heap, long(cycles) / 2) << before.heap << " -> " << after.heap;
    }
    const long frames = feeders.Frames();
    UnhookWindowsHookEx(hook);
    g_host = nullptr;

    EXPECT_GT(frames, long(cycles)) << "the threads delivered while the dialogs opened and closed";
    EXPECT_GT(g_histoDrawn, 0) << "open dialogs drew frames";
    EXPECT_EQ(g_strayHisto, 0) << "a frame reached a window after its dialog closed";
    EXPECT_EQ(ui.GetHDlg(), nullptr);
}

