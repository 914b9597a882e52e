#include <windows.h>

#include <cmath>
#include <vector>

#include "zx/histodraw.h"
#include "zx/status.h"
#include "zx_canvas.h"
#include "zx_test.h"

namespace {

const COLORREF kWhite = 0xFFFFFF;

using zxtest::Canvas;

// Rows, counted up from `bottom` (exclusive), that each column in xs has in `color`.
std::vector<int> Columns(const Canvas& c, std::initializer_list<int> xs, int bottom, COLORREF color)
{
    std::vector<int> runs;
    for (int x : xs) {
        int n = 0;
        while (bottom - 1 - n >= 0 && c.At(x, bottom - 1 - n) == color)
            ++n;
        runs.push_back(n);
    }
    return runs;
}
int Column(const Canvas& c, int x, int bottom, COLORREF color) { return Columns(c, {x}, bottom, color)[0]; }

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
    HGDIOBJ penBefore = GetCurrentObject(cv.Dc(), OBJ_PEN);
    const CZxRectBase<int> plot(10, 10, 266, 110);
    ASSERT_EQ(d.DrawIntoDC(cv.Handle(), plot, 1.0, CZxHistoDraw::MODE_COMBINED,
                           CZxRangeMask(CZxRangeMask::FULL_MASK), false), ZX_OK);
    EXPECT_EQ(Columns(cv, {10, 11, 12, 265, 266}, 110, 0x808080), (std::vector<int>{100, 50, 0, 1, 0}));
    EXPECT_EQ(GetCurrentObject(cv.Dc(), OBJ_PEN), penBefore);

    // Exponent 2 lifts small counts: 1/100 -> sqrt = 0.1 -> 10 pixels.
    Canvas lifted(300, 120);
    ASSERT_EQ(d.DrawIntoDC(lifted.Handle(), plot, 2.0, CZxHistoDraw::MODE_COMBINED, CZxRangeMask(), false), ZX_OK);
    EXPECT_EQ(Column(lifted, 265, 110, 0x808080), 10);

    // Half as wide as the bins: each column shows the larger of its two bins.
    Canvas narrow(300, 120);
    ASSERT_EQ(d.DrawIntoDC(narrow.Handle(), CZxRectBase<int>(0, 0, 128, 100), 1.0, 1, CZxRangeMask(), false), ZX_OK);
    EXPECT_EQ(Columns(narrow, {0, 127, 128}, 100, 0x808080), (std::vector<int>{100, 1, 0}));
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
    ASSERT_EQ(d.DrawIntoDC(cv.Handle(), plot, 1.0, 2, CZxRangeMask(CZxRangeMask::FULL_MASK), false), ZX_OK);
    EXPECT_EQ(Column(cv, 5, 100, RGB(255, 0, 0)), 40);
    EXPECT_EQ(Column(cv, 5, 60, RGB(0, 0, 255)), 60);
    EXPECT_EQ(Column(cv, 9, 100, RGB(0, 255, 0)), 20);   // shared scale: 20 of 100

    // Grouped: green against its own maximum fills its panel.
    Canvas own(300, 120);
    ASSERT_EQ(d.DrawIntoDC(own.Handle(), plot, 1.0, 2, CZxRangeMask::Single(1), true), ZX_OK);
    EXPECT_EQ(Column(own, 9, 100, RGB(0, 255, 0)), 100);
    EXPECT_EQ(own.At(5, 99), kWhite);   // masked out

    // Three 84-pixel panels, 4 apart: red at 0, green at 88, blue at 176.
    Canvas panels(300, 120);
    ASSERT_EQ(d.DrawIntoDCGrouped(panels.Handle(), CZxRectBase<int>(0, 0, 260, 100), 1.0, 2,
                                  CZxRangeMask(CZxRangeMask::FULL_MASK), 3, true), ZX_OK);
    const int bin5 = 1, bin9 = 3;   // column x covers bins [x*256/84, (x+1)*256/84)
    EXPECT_EQ((std::vector<int>{Column(panels, bin5, 100, RGB(255, 0, 0)), Column(panels, 88 + bin9, 100, RGB(0, 255, 0)),
                                Column(panels, 176 + bin5, 100, RGB(0, 0, 255))}),
              (std::vector<int>{100, 100, 100}));
    EXPECT_EQ(panels.At(85, 99), kWhite);
}

TEST(HistoDrawPaint, MissingDataAndBadTargetsDrawNothing)
{
    Canvas cv(64, 64);
    CZxHistoDraw d(256, 3);
    const CZxRectBase<int> plot(0, 0, 64, 64);
    const CZxRangeMask all(CZxRangeMask::FULL_MASK);
    EXPECT_EQ(d.DrawIntoDC(cv.Handle(), plot, 1.0, 1, all, false), ZX_E_FAIL);   // no histogram yet
    std::vector<uint32_t> counts(256, 3);
    SZxHisto mono{counts.data(), 1, {}, 8};
    ASSERT_EQ(d.SetHistogram(mono, 1, nullptr), ZX_OK);
    // Components of a mono histogram, an unknown mode, no DC, an empty and an inverted rectangle.
    const struct { uint64_t dc; CZxRectBase<int> rect; uint32_t mode; } bad[] = {
        {cv.Handle(), plot, 2}, {cv.Handle(), plot, 7}, {0, plot, 1}, {cv.Handle(), {5, 5, 5, 40}, 1}, {cv.Handle(), {40, 40, 5, 5}, 1}};
    for (const auto& b : bad)
        EXPECT_EQ(d.DrawIntoDC(b.dc, b.rect, 1.0, b.mode, all, false), ZX_E_FAIL) << b.mode;
    EXPECT_EQ(d.DrawIntoDCGrouped(cv.Handle(), plot, 1.0, 2, all, 0, true), ZX_E_FAIL);
    for (int y = 0; y < 64; ++y)
        ASSERT_EQ(cv.At(y, y), kWhite);
    // Far larger than the DC: clipped, and a NaN scale reads as linear.
    EXPECT_EQ(d.DrawIntoDC(cv.Handle(), CZxRectBase<int>(-1000000, 0, 1000000, 64), std::nan(""), 1, all, false),
              ZX_OK);
    EXPECT_EQ(Column(cv, 32, 64, 0x808080), 64);
}

} // namespace
