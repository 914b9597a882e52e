// Scene "histodraw": live histograms of a synthetic monochrome and colour camera,
// drawn the way the setup dialog lays them out (combined plot, then split panels).
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "zx/histodraw.h"
#include "zxhost/string.h"
#include "zxshow.h"

namespace {

const int kPlotH = 100;

struct SceneState {
    std::mt19937 rng{7};
    int tick = 0;
    CZxHistoDraw mono{256, 3};
    CZxHistoDraw full{256, 3};
    CZxHistoDraw split{128, 2};
};

SceneState* g_scene = nullptr;

uint32_t Clamp(double v, uint32_t top) { return uint32_t(std::min<double>(std::max(v, 0.0), top)); }

// A 12-bit mono frame (background peak plus a bright object) and an 8-bit colour
// frame with a warm cast, drifting a little every tick.
void NewFrames(SceneState& s)
{
    const double drift = 150.0 * std::sin(s.tick * 0.3);
    std::normal_distribution<double> bg(1100 + drift, 260), obj(3100 + drift, 180), n(0, 1);
    std::vector<uint16_t> mono(320 * 240);
    for (size_t i = 0; i < mono.size(); ++i)
        mono[i] = uint16_t(Clamp(i % 7 == 0 ? obj(s.rng) : bg(s.rng), 4095));
    SZxPicBuf pb;
    pb.uiWidth = 320;
    pb.uiHeight = 240;
    pb.uiRowBytes = 640;
    pb.uiBits = 12;
    pb.uiComp = 1;
    pb.ui64DataSize = mono.size() * 2;
    pb.pData = mono.data();
    SZxAEHistogram hm(12, true, false);
    ZX_ComputeHistogramAE(&hm, &pb, nullptr);
    s.mono.SetHistogram(hm, 1, nullptr);

    std::vector<uint8_t> rgb(320 * 240 * 3);
    for (size_t i = 0; i < rgb.size(); i += 3) {
        const double shade = n(s.rng);
        rgb[i] = uint8_t(Clamp(70 + drift / 20 + 22 * shade + 8 * n(s.rng), 255));       // blue
        rgb[i + 1] = uint8_t(Clamp(115 + drift / 20 + 30 * shade + 8 * n(s.rng), 255));  // green
        rgb[i + 2] = uint8_t(Clamp(160 + drift / 20 + 38 * shade + 8 * n(s.rng), 255));  // red
    }
    pb.uiBits = 8;
    pb.uiComp = 3;
    pb.uiRowBytes = 960;
    pb.ui64DataSize = rgb.size();
    pb.pData = rgb.data();
    SZxAEHistogram hc(8, false, true);
    ZX_ComputeHistogramAE(&hc, &pb, nullptr);
    s.full.SetHistogram(hc, CZxHistoDraw::PIXELKIND_RGB, nullptr);
    s.split.SetHistogram(hc, CZxHistoDraw::PIXELKIND_RGB, nullptr);
    ++s.tick;
}

// A sunken frame two pixels outside the plot, as the setup dialog draws it.
void Frame(HDC dc, const CZxRectBase<int>& plot)
{
    RECT r{plot.left - 2, plot.top - 2, plot.right + 2, plot.bottom + 2};
    DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT);
}

void Label(HDC dc, int x, int y, const wchar_t* text)
{
    TextOutW(dc, x, y, text, int(wcslen(text)));
}

// Query first, then read lo/hi: passed as arguments next to the call they could
// be read before it.
void RangeText(HDC dc, int x, int y, int rc, const uint32_t& lo, const uint32_t& hi)
{
    const CZxStringW t = rc == 0 ? CZxStringW::Formatted(L"<%d, %d>", int(lo), int(hi)) : CZxStringW(L"<none>");
    Label(dc, x, y, t.GetString());
}

void Paint(HWND w, HDC dc)
{
    RECT client;
    GetClientRect(w, &client);
    FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(dc, TRANSPARENT);
    SceneState& s = *g_scene;
    const CZxRangeMask all(CZxRangeMask::FULL_MASK);
    uint32_t lo = 0, hi = 0;

    const CZxRectBase<int> monoPlot(20, 30, 276, 30 + kPlotH);
    Label(dc, 18, 8, L"Monochrome, 12 bit");
    Frame(dc, monoPlot);
    s.mono.DrawIntoDC(uint64_t(uintptr_t(dc)), monoPlot, 1.0, CZxHistoDraw::MODE_COMBINED, all, false);
    RangeText(dc, 20, monoPlot.bottom + 6, s.mono.GetRangeOrig(&lo, &hi), lo, hi);

    const CZxRectBase<int> colPlot(310, 30, 566, 30 + kPlotH);
    Label(dc, 308, 8, L"Colour, components overlaid");
    Frame(dc, colPlot);
    s.full.DrawIntoDC(uint64_t(uintptr_t(dc)), colPlot, 1.0, CZxHistoDraw::MODE_COMPONENTS, all, false);
    RangeText(dc, 310, colPlot.bottom + 6, s.full.GetRangeOrig(&lo, &hi), lo, hi);

    // Split view: one 128-bin panel per component, red, green, blue.
    Label(dc, 18, 168, L"Colour, split (each to its own maximum)");
    for (int k = 0; k < 3; ++k) {
        const uint32_t c = 2 - uint32_t(k);
        const CZxRectBase<int> plot(20 + 136 * k, 190, 148 + 136 * k, 190 + kPlotH);
        Frame(dc, plot);
        s.split.DrawIntoDC(uint64_t(uintptr_t(dc)), plot, 1.0, CZxHistoDraw::MODE_COMPONENTS,
                           CZxRangeMask::Single(c), true);
        RangeText(dc, plot.left, plot.bottom + 6, s.split.GetRangeCompOrig(c, &lo, &hi), lo, hi);
    }

    // The same three in one call, side by side, sharing one scale, and lifted (exponent 2).
    const CZxRectBase<int> grouped(20, 340, 420, 340 + 60);
    Label(dc, 18, 318, L"Grouped, shared scale, exponent 2");
    Frame(dc, grouped);
    s.full.DrawIntoDCGrouped(uint64_t(uintptr_t(dc)), grouped, 2.0, CZxHistoDraw::MODE_COMPONENTS, all, 3, false);
}

LRESULT CALLBACK WndProc(HWND w, UINT msg, WPARAM wp, LPARAM lp)
{
    switch (msg) {
    case WM_TIMER:
        NewFrames(*g_scene);
        InvalidateRect(w, nullptr, FALSE);
        return 0;
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(w, &ps);
        Paint(w, dc);
        EndPaint(w, &ps);
        return 0;
    }
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(w, msg, wp, lp);
}

void ShowHistoDraw(HINSTANCE instance)
{
    g_scene = new SceneState;
    NewFrames(*g_scene);
    WNDCLASSW wc{};
    wc.lpfnWndProc = WndProc;
    wc.hInstance = instance;
    wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
    wc.lpszClassName = L"ZxShowHistoDraw";
    RegisterClassW(&wc);
    HWND w = CreateWindowExW(0, wc.lpszClassName, L"Histogram display", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40,
                             600, 460, nullptr, nullptr, instance, nullptr);
    SetTimer(w, 1, 200, nullptr);
}
ZXSHOW_SCENE(L"histodraw", ShowHistoDraw);

} // namespace
