#include <cmath>
#include <vector>

#include "zx/histodraw.h"
#include "zx/status.h"
#include "zx_test.h"
#include "zxhost/system.h"

namespace {

// Level counts of one frame: combined plus optional components.
struct Counts {
    std::vector<uint32_t> all;
    std::vector<uint32_t> comp[3];
    SZxHisto h;

    Counts(uint32_t bits, uint32_t comps) {
        all.assign(size_t(1) << bits, 0);
        h.uiBits = bits;
        h.uiComp = comps;
        h.pdwHisto = all.data();
        for (uint32_t c = 0; c < comps && c < 3; ++c) {
            comp[c].assign(all.size(), 0);
            h.pdwCompHisto[c] = comp[c].data();
        }
    }
};

TEST(HistoDrawBinning, EqualDepthKeepsLevelsAndDeeperFramesShareBins)
{
    CZxHistoDraw d(256, CZxHistoDraw::FLAG_COMBINED);
    Counts eight(8, 1);
    eight.all[3] = 5;
    eight.all[200] = 7;
    ASSERT_EQ(d.SetHistogram(eight.h, 1, nullptr), ZX_OK);
    uint32_t lo = 0, hi = 0;
    EXPECT_EQ(d.GetBinData(-1)[3], 5u);
    EXPECT_EQ(d.GetBinData(-1)[200], 7u);
    ASSERT_EQ(d.GetRange(&lo, &hi), ZX_OK);
    EXPECT_EQ(lo, 3u);
    EXPECT_EQ(hi, 200u);

    Counts twelve(12, 1);
    for (uint32_t i = 0; i < 16; ++i)
        twelve.all[i] = 1;
    twelve.all[4095] = 9;
    ASSERT_EQ(d.SetHistogram(twelve.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(d.GetBinData(-1)[0], 16u);
    EXPECT_EQ(d.GetBinData(-1)[1], 0u);
    EXPECT_EQ(d.GetBinData(-1)[255], 9u);
    ASSERT_EQ(d.GetRangeOrig(&lo, &hi), ZX_OK);
    EXPECT_EQ(lo, 0u);
    EXPECT_EQ(hi, 4095u);

    // 256 levels over 100 bins: divisor 2 would reach bin 127; the top level
    // stays in the last bin.
    CZxHistoDraw odd(100, CZxHistoDraw::FLAG_COMBINED);
    ASSERT_EQ(odd.SetHistogram(eight.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(odd.GetBinData(-1)[99], 7u);
    EXPECT_EQ(odd.GetBinData(-1)[1], 5u);
}

TEST(HistoDrawStats, HandComputedMeanFractionsAndEmptyCases)
{
    CZxHistoDraw d(4, CZxHistoDraw::FLAG_COMBINED);
    Counts c(2, 1);
    c.all = {1, 2, 3, 4};
    c.h.pdwHisto = c.all.data();
    ASSERT_EQ(d.SetHistogram(c.h, 1, nullptr), ZX_OK);
    double mean = 0, below = -1, within = -1, above = -1;
    ASSERT_EQ(d.GetMeanFreq(&mean), ZX_OK);
    EXPECT_DOUBLE_EQ(mean, 20.0 / 10.0 / 3.0 * 255.0);
    ASSERT_EQ(d.GetStats(1, 2, &below, &within, &above), ZX_OK);
    EXPECT_DOUBLE_EQ(below, 0.1);
    EXPECT_DOUBLE_EQ(within, 0.5);
    EXPECT_DOUBLE_EQ(above, 0.4);
    ASSERT_EQ(d.GetStats(0, 99, &below, &within, &above), ZX_OK);
    EXPECT_EQ(below, 0.0);
    EXPECT_EQ(within, 1.0);
    EXPECT_EQ(above, 0.0);
    EXPECT_EQ(d.GetStats(0, 1, nullptr, nullptr, nullptr), ZX_OK);

    c.all = {8, 0, 0, 0};   // everything in bin 0: no mean
    ASSERT_EQ(d.SetHistogram(c.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(d.GetMeanFreq(&mean), ZX_E_FAIL);

    c.all = {0, 0, 0, 0};
    ASSERT_EQ(d.SetHistogram(c.h, 1, nullptr), ZX_OK);
    uint32_t lo = 7, hi = 7;
    EXPECT_EQ(d.GetRange(&lo, &hi), ZX_E_FAIL);
    EXPECT_EQ(d.GetRangeOrig(&lo, &hi), ZX_E_FAIL);
    EXPECT_EQ(lo, 7u);
    ASSERT_EQ(d.GetStats(1, 2, &below, &within, &above), ZX_OK);
    EXPECT_EQ(below + within + above, 0.0);
}

TEST(HistoDrawLut, RebinsThroughGammaAndKeepsDestinationMaximumOnComponentsOnly)
{
    CZxHistoDraw d(4, CZxHistoDraw::FLAG_COMBINED);
    Counts c(2, 1);
    c.all = {1, 2, 3, 4};
    c.h.pdwHisto = c.all.data();
    SZxLutParam lut;
    lut.dGamma = 2.0;   // level i -> (i/3)^2: 0, 1/9, 4/9, 1 -> bins 0, 0, 1, 3
    ASSERT_EQ(d.SetHistogram(c.h, 1, &lut), ZX_OK);
    const uint32_t* b = d.GetBinData(-1);
    EXPECT_EQ(std::vector<uint32_t>(b, b + 4), (std::vector<uint32_t>{3, 3, 0, 4}));

    lut.dGamma = 2.0;
    lut.dMinSrc = 0.5;   // levels under the minimum are black, not mirrored upwards
    ASSERT_EQ(d.SetHistogram(c.h, 1, &lut), ZX_OK);
    b = d.GetBinData(-1);
    EXPECT_EQ(std::vector<uint32_t>(b, b + 4), (std::vector<uint32_t>{6, 0, 0, 4}));

    // Colour: a destination maximum of 0.5 halves the components, not the combined.
    CZxHistoDraw rgb(256, CZxHistoDraw::FLAG_COMBINED | CZxHistoDraw::FLAG_COMPONENTS);
    Counts col(8, 3);
    col.all[255] = 3;
    for (auto& comp : col.comp)
        comp[255] = 1;
    SZxLutParam half;
    for (double& m : half.adMaxDst)
        m = 0.5;
    ASSERT_EQ(rgb.SetHistogram(col.h, CZxHistoDraw::PIXELKIND_RGB, &half), ZX_OK);
    uint32_t lo = 0, hi = 0;
    ASSERT_EQ(rgb.GetRange(&lo, &hi), ZX_OK);
    EXPECT_EQ(hi, 255u);
    ASSERT_EQ(rgb.GetRangeComp(1, &lo, &hi), ZX_OK);
    EXPECT_EQ(hi, 127u);
    ASSERT_EQ(rgb.GetRangeCompOrig(2, &lo, &hi), ZX_OK);
    EXPECT_EQ(hi, 127u);
}

TEST(HistoDrawComponents, MonochromeKeepsNoComponentDataAndUnknownKindsBuildNone)
{
    CZxHistoDraw d(256, 3);
    Counts mono(8, 1);
    mono.all[10] = 1;
    ASSERT_EQ(d.SetHistogram(mono.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_OK);
    uint32_t lo, hi;
    double m;
    EXPECT_EQ(d.GetComponents(), 0u);
    EXPECT_EQ(d.GetRangeComp(0, &lo, &hi), ZX_E_FAIL);
    EXPECT_EQ(d.GetRangeCompOrig(0, &lo, &hi), ZX_E_FAIL);
    EXPECT_EQ(d.GetMeanFreqComp(0, &m), ZX_E_FAIL);
    EXPECT_EQ(d.GetBinData(0), nullptr);

    Counts col(8, 3);
    col.all[50] = 3;
    col.comp[0][40] = col.comp[1][50] = col.comp[2][60] = 1;
    ASSERT_EQ(d.SetHistogram(col.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(d.GetComponents(), 3u);
    EXPECT_EQ(d.GetRangeComp(0, &lo, &hi), ZX_E_FAIL);
    EXPECT_EQ(d.GetRangeCompOrig(0, &lo, &hi), ZX_E_FAIL);

    ASSERT_EQ(d.SetHistogram(col.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_OK);
    ASSERT_EQ(d.GetRangeCompOrig(2, &lo, &hi), ZX_OK);
    EXPECT_EQ(lo, 60u);
    EXPECT_EQ(d.GetRangeComp(3, &lo, &hi), ZX_E_FAIL);
    uint32_t red = 0;
    ASSERT_EQ(d.GetCompColor(2, &red), ZX_OK);
    EXPECT_EQ(red, 0x0000FFu);

    // The host's split model keeps components only.
    CZxHistoDraw split(128, CZxHistoDraw::FLAG_COMPONENTS);
    ASSERT_EQ(split.SetHistogram(col.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_OK);
    EXPECT_EQ(split.GetRange(&lo, &hi), ZX_E_FAIL);
    EXPECT_EQ(split.GetRangeOrig(&lo, &hi), ZX_E_FAIL);
    ASSERT_EQ(split.GetRangeComp(0, &lo, &hi), ZX_OK);
    EXPECT_EQ(lo, 20u);
}

TEST(HistoDrawInput, BadHistogramsFailAndLeaveTheLastOneIntact)
{
    const long long before = CZxAlloc::Outstanding();
    {
        CZxHistoDraw d(256, 3);
        uint32_t lo, hi;
        double v;
        EXPECT_EQ(d.GetRange(&lo, &hi), ZX_E_FAIL);
        EXPECT_EQ(d.GetRangeOrig(&lo, &hi), ZX_E_FAIL);
        EXPECT_EQ(d.GetMeanFreq(&v), ZX_E_FAIL);
        EXPECT_EQ(d.GetStats(0, 1, &v, &v, &v), ZX_E_FAIL);
        EXPECT_EQ(d.GetRangeCompOrig(0, &lo, &hi), ZX_E_FAIL);

        Counts good(8, 1);
        good.all[77] = 1;
        ASSERT_EQ(d.SetHistogram(good.h, 1, nullptr), ZX_OK);
        SZxHisto none;
        EXPECT_EQ(d.SetHistogram(none, 1, nullptr), ZX_E_FAIL);
        Counts deep(8, 1);
        deep.h.uiBits = 25;
        EXPECT_EQ(d.SetHistogram(deep.h, 1, nullptr), ZX_E_FAIL);
        Counts missing(8, 3);
        missing.h.pdwCompHisto[1] = nullptr;
        EXPECT_EQ(d.SetHistogram(missing.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_E_FAIL);
        Counts many(8, 3);
        many.h.uiComp = 5;
        EXPECT_EQ(d.SetHistogram(many.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_E_FAIL);
        ASSERT_EQ(d.GetRange(&lo, &hi), ZX_OK);
        EXPECT_EQ(lo, 77u);

        CZxHistoDraw noBins(0, 3);
        EXPECT_EQ(noBins.SetHistogram(good.h, 1, nullptr), ZX_E_FAIL);
        EXPECT_EQ(noBins.GetRange(&lo, &hi), ZX_E_FAIL);

        // A degenerate LUT (minimum = maximum) still lands inside the bins.
        SZxLutParam flat;
        flat.dMinSrc = flat.dMaxSrc = 0.3;
        flat.dGamma = 0.5;
        EXPECT_EQ(d.SetHistogram(good.h, 1, &flat), ZX_OK);

        CZxHistoDraw copy(d);
        Counts other(8, 1);
        other.all[5] = 1;
        ASSERT_EQ(d.SetHistogram(other.h, 1, nullptr), ZX_OK);
        ASSERT_EQ(copy.GetRange(&lo, &hi), ZX_OK);
        EXPECT_EQ(lo, 255u);   // 77/255 is above the flat LUT's 0.3: top bin
        copy = d;
        ASSERT_EQ(copy.GetRange(&lo, &hi), ZX_OK);
        EXPECT_EQ(lo, 5u);
    }
    EXPECT_EQ(CZxAlloc::Outstanding(), before);
}

TEST(HistoDrawInput, FrameHistogramsSumColourChannelsIntoTheCombinedCounts)
{
    // Blue, green, red of two pixels: (1, 2, 3) and (1, 5, 3).
    uint8_t px[6] = {1, 2, 3, 1, 5, 3};
    SZxPicBuf pb;
    pb.uiWidth = 2;
    pb.uiHeight = 1;
    pb.uiRowBytes = 6;
    pb.uiBits = 8;
    pb.uiComp = 3;
    pb.ui64DataSize = 6;
    pb.pData = px;
    SZxAEHistogram ae(8, true, true);
    CZxHistoDraw d(256, 3);
    EXPECT_EQ(d.SetHistogram(ae, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_E_FAIL);   // never computed
    ZX_ComputeHistogramAE(&ae, &pb, nullptr);
    ASSERT_EQ(d.SetHistogram(ae, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_OK);
    EXPECT_EQ(d.GetBinData(-1)[1], 2u);
    EXPECT_EQ(d.GetBinData(-1)[3], 2u);
    uint32_t lo, hi;
    ASSERT_EQ(d.GetRangeComp(1, &lo, &hi), ZX_OK);   // green
    EXPECT_EQ(lo, 2u);
    EXPECT_EQ(hi, 5u);
    ASSERT_EQ(d.GetRangeCompOrig(0, &lo, &hi), ZX_OK);   // blue
    EXPECT_EQ(hi, 1u);
}

TEST(HistoDrawBarHeight, RoundsAndStaysInsideThePlot)
{
    EXPECT_EQ(CZxHistoDraw::CalcHistoY(1.0, 0.5, 100), 50u);
    EXPECT_EQ(CZxHistoDraw::CalcHistoY(2.0, 0.25, 100), 50u);
    EXPECT_EQ(CZxHistoDraw::CalcHistoY(1.0, 0.004, 100), 0u);
    EXPECT_EQ(CZxHistoDraw::CalcHistoY(1.0, 0.005, 100), 1u);
    EXPECT_EQ(CZxHistoDraw::CalcHistoY(1.0, 3.0, 100), 100u);
    EXPECT_EQ(CZxHistoDraw::CalcHistoY(1.0, std::nan(""), 100), 0u);
}

} // namespace
