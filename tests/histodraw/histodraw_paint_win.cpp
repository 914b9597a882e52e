#include <windows.h>

#include <cmath>
#include <vector>

#include "zx/histodraw.h"
#include "zx/status.h"
#include "zx_test.h"

namespace {

const COLORREF kWhite = 0xFFFFFF;

// A white 32-bit DIB section selected into a memory DC.
class Canvas {
public:
    Canvas(int w, int h) : m_dc(CreateCompatibleDC(nullptr))
    {
        BITMAPINFO bi{};
        bi.bmiHeader = BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER), w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        m_bmp = CreateDIBSection(m_dc, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
        m_old = SelectObject(m_dc, m_bmp);
        PatBlt(m_dc, 0, 0, w, h, WHITENESS);
    }
    ~Canvas()
    {
        DeleteObject(SelectObject(m_dc, m_old));
        DeleteDC(m_dc);
    }
    uint64_t Dc() const { return uint64_t(reinterpret_cast<uintptr_t>(m_dc)); }
    HDC Hdc() const { return m_dc; }
    COLORREF At(int x, int y) const { return GetPixel(m_dc, x, y); }
    // Rows, counted up from `bottom` (exclusive), that each column in xs has in `color`.
    std::vector<int> Runs(std::initializer_list<int> xs, int bottom, COLORREF color) const
    {
        std::vector<int> runs;
        for (int x : xs) {
            int n = 0;
            while (bottom - 1 - n >= 0 && At(x, bottom - 1 - n) == color)
                ++n;
            runs.push_back(n);
        }
        return runs;
    }
    int Run(int x, int bottom, COLORREF color) const { return Runs({x}, bottom, color)[0]; }

private:
    HDC m_dc;
    HBITMAP m_bmp;
    HGDIOBJ m_old;
};

TEST(HistoDrawPaint, CombinedBarsAreGreyColumnsScaledToTheLargestCounter)
{
    Canvas cv(300, 120);
    CZxHistoDraw d(256, CZxHistoDraw::FLAG_COMBINED);
    std::vector<uint32_t> counts(256);
    counts[0] = 100;
    counts[1] = 50;
    counts[255] = 1;
    SZxHisto h{counts.data(), 1, {}, 8};
    ASSERT_EQ(d.SetHistogram(h, 1, nullptr), ZX_OK);
    HGDIOBJ penBefore = GetCurrentObject(cv.Hdc(), OBJ_PEN);
    const CZxRectBase<int> plot(10, 10, 266, 110);
    ASSERT_EQ(d.DrawIntoDC(cv.Dc(), plot, 1.0, CZxHistoDraw::MODE_COMBINED,
                           CZxRangeMask(CZxRangeMask::FULL_MASK), false), ZX_OK);
    EXPECT_EQ(cv.Runs({10, 11, 12, 265, 266}, 110, 0x808080), (std::vector<int>{100, 50, 0, 1, 0}));
    EXPECT_EQ(GetCurrentObject(cv.Hdc(), OBJ_PEN), penBefore);

    // Exponent 2 lifts small counts: 1/100 -> sqrt = 0.1 -> 10 pixels.
    Canvas lifted(300, 120);
    ASSERT_EQ(d.DrawIntoDC(lifted.Dc(), plot, 2.0, CZxHistoDraw::MODE_COMBINED, CZxRangeMask(), false), ZX_OK);
    EXPECT_EQ(lifted.Run(265, 110, 0x808080), 10);

    // Half as wide as the bins: each column shows the larger of its two bins.
    Canvas narrow(300, 120);
    ASSERT_EQ(d.DrawIntoDC(narrow.Dc(), CZxRectBase<int>(0, 0, 128, 100), 1.0, 1, CZxRangeMask(), false), ZX_OK);
    EXPECT_EQ(narrow.Runs({0, 127, 128}, 100, 0x808080), (std::vector<int>{100, 1, 0}));
}

TEST(HistoDrawPaint, ComponentsOverlayTallestFirstAndGroupedPanelsGoRedGreenBlue)
{
    std::vector<uint32_t> all(256), blue(256), green(256), red(256);
    all[5] = 140;
    blue[5] = 100;
    red[5] = 40;
    green[9] = 20;
    SZxHisto h{all.data(), 3, {blue.data(), green.data(), red.data()}, 8};
    CZxHistoDraw d(256, 3);
    ASSERT_EQ(d.SetHistogram(h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_OK);
    Canvas cv(300, 120);
    const CZxRectBase<int> plot(0, 0, 256, 100);
    ASSERT_EQ(d.DrawIntoDC(cv.Dc(), plot, 1.0, 2, CZxRangeMask(CZxRangeMask::FULL_MASK), false), ZX_OK);
    EXPECT_EQ(cv.Run(5, 100, RGB(255, 0, 0)), 40);
    EXPECT_EQ(cv.Run(5, 60, RGB(0, 0, 255)), 60);
    EXPECT_EQ(cv.Run(9, 100, RGB(0, 255, 0)), 20);   // shared scale: 20 of 100

    // Grouped: green against its own maximum fills its panel.
    Canvas own(300, 120);
    ASSERT_EQ(d.DrawIntoDC(own.Dc(), plot, 1.0, 2, CZxRangeMask::Single(1), true), ZX_OK);
    EXPECT_EQ(own.Run(9, 100, RGB(0, 255, 0)), 100);
    EXPECT_EQ(own.At(5, 99), kWhite);   // masked out

    // Three 84-pixel panels, 4 apart: red at 0, green at 88, blue at 176.
    Canvas panels(300, 120);
    ASSERT_EQ(d.DrawIntoDCGrouped(panels.Dc(), CZxRectBase<int>(0, 0, 260, 100), 1.0, 2,
                                  CZxRangeMask(CZxRangeMask::FULL_MASK), 3, true), ZX_OK);
    const int bin5 = 1, bin9 = 3;   // column x covers bins [x*256/84, (x+1)*256/84)
    EXPECT_EQ((std::vector<int>{panels.Run(bin5, 100, RGB(255, 0, 0)), panels.Run(88 + bin9, 100, RGB(0, 255, 0)),
                                panels.Run(176 + bin5, 100, RGB(0, 0, 255))}),
              (std::vector<int>{100, 100, 100}));
    EXPECT_EQ(panels.At(85, 99), kWhite);
}

TEST(HistoDrawPaint, MissingDataAndBadTargetsDrawNothing)
{
    Canvas cv(64, 64);
    CZxHistoDraw d(256, 3);
    const CZxRectBase<int> plot(0, 0, 64, 64);
    const CZxRangeMask all(CZxRangeMask::FULL_MASK);
    EXPECT_EQ(d.DrawIntoDC(cv.Dc(), plot, 1.0, 1, all, false), ZX_E_FAIL);   // no histogram yet
    std::vector<uint32_t> counts(256, 3);
    SZxHisto mono{counts.data(), 1, {}, 8};
    ASSERT_EQ(d.SetHistogram(mono, 1, nullptr), ZX_OK);
    // Components of a mono histogram, an unknown mode, no DC, an empty and an inverted rectangle.
    const struct { uint64_t dc; CZxRectBase<int> rect; uint32_t mode; } bad[] = {
        {cv.Dc(), plot, 2}, {cv.Dc(), plot, 7}, {0, plot, 1}, {cv.Dc(), {5, 5, 5, 40}, 1}, {cv.Dc(), {40, 40, 5, 5}, 1}};
    for (const auto& b : bad)
        EXPECT_EQ(d.DrawIntoDC(b.dc, b.rect, 1.0, b.mode, all, false), ZX_E_FAIL) << b.mode;
    EXPECT_EQ(d.DrawIntoDCGrouped(cv.Dc(), plot, 1.0, 2, all, 0, true), ZX_E_FAIL);
    for (int y = 0; y < 64; ++y)
        ASSERT_EQ(cv.At(y, y), kWhite);
    // Far larger than the DC: clipped, and a NaN scale reads as linear.
    EXPECT_EQ(d.DrawIntoDC(cv.Dc(), CZxRectBase<int>(-1000000, 0, 1000000, 64), std::nan(""), 1, all, false),
              ZX_OK);
    EXPECT_EQ(cv.Run(32, 64, 0x808080), 64);
}

} // namespace
