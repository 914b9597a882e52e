#include <cmath>
#include <string>
#include <vector>

#include "zx/histodraw.h"
#include "zx/status.h"
#include "zx_test.h"
#include "zxhost/system.h"

namespace {

// Level counts of one frame: combined plus up to three components.
struct Counts {
    std::vector<uint32_t> all, comp[3];
    SZxHisto h;
    Counts(uint32_t bits, uint32_t comps, std::vector<uint32_t> init = {}) : all(size_t(1) << bits)
    {
        std::copy(init.begin(), init.end(), all.begin());
        h.uiBits = bits;
        h.uiComp = comps;
        h.pdwHisto = all.data();
        for (uint32_t c = 0; c < comps && c < 3; ++c) {
            comp[c].assign(all.size(), 0);
            h.pdwCompHisto[c] = comp[c].data();
        }
    }
};

// "lo..hi lo..hi": the display range and the source levels' range (c = -1:
// combined); a failed query shows its status instead.
std::string Ranges(const CZxHistoDraw& d, int c)
{
    auto show = [](int rc, uint32_t lo, uint32_t hi) {
        return rc ? std::to_string(rc) : std::to_string(lo) + ".." + std::to_string(hi);
    };
    uint32_t lo = 0, hi = 0, olo = 0, ohi = 0;
    const int rc = c < 0 ? d.GetRange(&lo, &hi) : d.GetRangeComp(c, &lo, &hi);
    const int orc = c < 0 ? d.GetRangeOrig(&olo, &ohi) : d.GetRangeCompOrig(c, &olo, &ohi);
    return show(rc, lo, hi) + " " + show(orc, olo, ohi);
}

std::vector<uint32_t> Bins(const CZxHistoDraw& d, int c, size_t n)
{
    const uint32_t* b = d.GetBinData(c);
    return b ? std::vector<uint32_t>(b, b + n) : std::vector<uint32_t>();
}

// {below, within, above}, or {status} when the query fails.
std::vector<double> Stats(const CZxHistoDraw& d, uint32_t lo, uint32_t hi)
{
    double below = -1, within = -1, above = -1;
    const int rc = d.GetStats(lo, hi, &below, &within, &above);
    return rc ? std::vector<double>{double(rc)} : std::vector<double>{below, within, above};
}

TEST(HistoDrawBinning, EqualDepthKeepsLevelsDeeperFramesShareBinsAndTheRestStaysInside)
{
    CZxHistoDraw d(256, CZxHistoDraw::FLAG_COMBINED);
    Counts eight(8, 1);
    eight.all[3] = 5;
    eight.all[200] = 7;
    ASSERT_EQ(d.SetHistogram(eight.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(Ranges(d, -1), "3..200 3..200");

    Counts twelve(12, 1, std::vector<uint32_t>(16, 1));
    twelve.all[4095] = 9;
    ASSERT_EQ(d.SetHistogram(twelve.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(Bins(d, -1, 2), (std::vector<uint32_t>{16, 0}));
    EXPECT_EQ(Ranges(d, -1), "0..255 0..4095");   // 4095, the only level above 15, in bin 255

    // 256 levels into 100 bins: divisor 2 would reach bin 127.
    CZxHistoDraw odd(100, CZxHistoDraw::FLAG_COMBINED);
    ASSERT_EQ(odd.SetHistogram(eight.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(Ranges(odd, -1), "1..99 3..200");
}

TEST(HistoDrawStats, HandComputedMeanAndFractions)
{
    CZxHistoDraw d(4, CZxHistoDraw::FLAG_COMBINED);
    Counts c(2, 1, {1, 2, 3, 4});
    ASSERT_EQ(d.SetHistogram(c.h, 1, nullptr), ZX_OK);
    double mean = 0;
    ASSERT_EQ(d.GetMeanFreq(&mean), ZX_OK);
    EXPECT_DOUBLE_EQ(mean, 20.0 / 10.0 / 3.0 * 255.0);
    EXPECT_EQ(Stats(d, 1, 2), (std::vector<double>{0.1, 0.5, 0.4}));
    EXPECT_EQ(Stats(d, 0, 99), (std::vector<double>{0, 1, 0}));
    // lo above hi: below and above overlap as their own sums say, nothing within.
    EXPECT_EQ(Stats(d, 2, 1), (std::vector<double>{0.3, 0, 0.7}));
    // Null out-pointers are skipped, the status is the usual one.
    EXPECT_EQ(d.GetRange(nullptr, nullptr), ZX_OK);
    EXPECT_EQ(d.GetRangeOrig(nullptr, nullptr), ZX_OK);
    EXPECT_EQ(d.GetMeanFreq(nullptr), ZX_OK);
    EXPECT_EQ(d.GetStats(1, 2, nullptr, nullptr, nullptr), ZX_OK);

    Counts zero(2, 1, {8});   // everything in bin 0: no mean
    ASSERT_EQ(d.SetHistogram(zero.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(d.GetMeanFreq(&mean), ZX_E_FAIL);
    zero.all[0] = 0;
    ASSERT_EQ(d.SetHistogram(zero.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(Ranges(d, -1), "-9 -9");
    EXPECT_EQ(Stats(d, 1, 2), (std::vector<double>{0, 0, 0}));
}

TEST(HistoDrawLut, RebinsThroughGammaAndAppliesTheDestinationMaximumToComponentsOnly)
{
    CZxHistoDraw d(4, CZxHistoDraw::FLAG_COMBINED);
    Counts c(2, 1, {1, 2, 3, 4});
    SZxLutParam lut;
    lut.dGamma = 2.0;   // level i -> (i/3)^2 = 0, 1/9, 4/9, 1 -> bins 0, 0, 1, 3
    ASSERT_EQ(d.SetHistogram(c.h, 1, &lut), ZX_OK);
    EXPECT_EQ(Bins(d, -1, 4), (std::vector<uint32_t>{3, 3, 0, 4}));
    // Levels at or below the source minimum are black whatever the gamma (not
    // mirrored upwards, nor white from 0 raised to 0 or below); above it the power decides.
    const struct { double min, max, gamma; std::vector<uint32_t> bins; } window[] = {
        {0.5, 1.0, 2.0, {6, 0, 0, 4}},        // level 2: (1/3)^2 is bin 0 too
        {0.5, 1.0, 0.0, {3, 0, 0, 7}},
        {0.5, 1.0, -1.0, {3, 0, 0, 7}},
        {2.0 / 3, 2.0 / 3, 0.0, {6, 0, 0, 4}},   // max == min: a step, level 2 on it
    };
    for (const auto& w : window) {
        lut.dMinSrc = w.min;
        lut.dMaxSrc = w.max;
        lut.dGamma = w.gamma;
        ASSERT_EQ(d.SetHistogram(c.h, 1, &lut), ZX_OK);
        EXPECT_EQ(Bins(d, -1, 4), w.bins) << w.min << ".." << w.max << " gamma " << w.gamma;
    }

    CZxHistoDraw rgb(256, 3);
    Counts col(8, 3);
    col.all[255] = 3;
    for (auto& comp : col.comp)
        comp[255] = 1;
    SZxLutParam half;
    for (double& m : half.adMaxDst)
        m = 0.5;
    ASSERT_EQ(rgb.SetHistogram(col.h, CZxHistoDraw::PIXELKIND_RGB, &half), ZX_OK);
    EXPECT_EQ(Ranges(rgb, -1), "255..255 255..255");
    EXPECT_EQ(Ranges(rgb, 1), "127..127 127..127");
}

TEST(HistoDrawComponents, MonochromeKeepsNoComponentDataAndUnknownKindsBuildNone)
{
    CZxHistoDraw d(256, 3);
    Counts mono(8, 1), col(8, 3);
    col.all[50] = 3;
    col.comp[0][40] = col.comp[1][50] = col.comp[2][60] = 1;
    ASSERT_EQ(d.SetHistogram(col.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_OK);
    EXPECT_EQ(Ranges(d, 2), "60..60 60..60");
    EXPECT_EQ(Ranges(d, 3), "-9 -9");
    uint32_t red = 0;
    ASSERT_EQ(d.GetCompColor(2, &red), ZX_OK);
    EXPECT_EQ(red, 0x0000FFu);

    // Neither a colour record of another kind nor a monochrome one keeps the
    // components of the frame before.
    ASSERT_EQ(d.SetHistogram(col.h, 1, nullptr), ZX_OK);
    EXPECT_EQ(d.GetComponents(), 3u);
    EXPECT_EQ(Ranges(d, 0), "-9 -9");
    mono.all[10] = 1;
    ASSERT_EQ(d.SetHistogram(mono.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_OK);
    double m;
    EXPECT_EQ(d.GetComponents(), 0u);
    EXPECT_EQ(Ranges(d, 0), "-9 -9");
    EXPECT_EQ(d.GetMeanFreqComp(0, &m), ZX_E_FAIL);

    CZxHistoDraw split(128, CZxHistoDraw::FLAG_COMPONENTS);   // the host's split model
    ASSERT_EQ(split.SetHistogram(col.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_OK);
    EXPECT_EQ(Ranges(split, -1), "-9 -9");
    EXPECT_EQ(Ranges(split, 0), "20..20 40..40");
}

TEST(HistoDrawInput, BadRecordsFailKeepingTheLastCopiesAreDeepFrameRecordsSumTheChannels)
{
    const long long before = CZxAlloc::Outstanding();
    {
        CZxHistoDraw d(256, 3);
        EXPECT_EQ(Ranges(d, -1), "-9 -9");
        EXPECT_EQ(Stats(d, 0, 1), std::vector<double>{ZX_E_FAIL});

        Counts good(8, 1), deep(8, 1), missing(8, 3), many(8, 3);
        good.all[77] = 1;
        ASSERT_EQ(d.SetHistogram(good.h, 1, nullptr), ZX_OK);
        deep.h.uiBits = 25;
        missing.h.pdwCompHisto[1] = nullptr;
        many.h.uiComp = 5;
        EXPECT_EQ(d.SetHistogram(SZxHisto(), 1, nullptr), ZX_E_FAIL);
        EXPECT_EQ(d.SetHistogram(deep.h, 1, nullptr), ZX_E_FAIL);
        EXPECT_EQ(d.SetHistogram(missing.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_E_FAIL);
        EXPECT_EQ(d.SetHistogram(many.h, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_E_FAIL);
        EXPECT_EQ(Ranges(d, -1), "77..77 77..77");
        EXPECT_EQ(CZxHistoDraw(0, 3).SetHistogram(good.h, 1, nullptr), ZX_E_FAIL);

        CZxHistoDraw copy(d);
        good.all[5] = 1;
        ASSERT_EQ(d.SetHistogram(good.h, 1, nullptr), ZX_OK);
        EXPECT_EQ(Ranges(copy, -1), "77..77 77..77");
        copy = d;
        EXPECT_EQ(Ranges(copy, -1), "5..77 5..77");

        // A frame's histogram record: the combined counts sum the colour channels.
        uint8_t px[6] = {1, 2, 3, 1, 5, 3};   // blue, green, red of two pixels
        SZxPicBuf pb{2, 1, 6, 8, 3, 6, px};
        SZxAEHistogram ae(8, true, true);
        EXPECT_EQ(d.SetHistogram(ae, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_E_FAIL);   // never computed
        ZX_ComputeHistogramAE(&ae, &pb, nullptr);
        ASSERT_EQ(d.SetHistogram(ae, CZxHistoDraw::PIXELKIND_RGB, nullptr), ZX_OK);
        EXPECT_EQ(Bins(d, -1, 6), (std::vector<uint32_t>{0, 2, 1, 2, 0, 1}));
        EXPECT_EQ(Ranges(d, 1), "2..5 2..5");   // green
        EXPECT_EQ(Ranges(d, 0), "1..1 1..1");   // blue
    }
    EXPECT_EQ(CZxAlloc::Outstanding(), before);
}

TEST(HistoDrawBarHeight, RoundsAndStaysInsideThePlot)
{
    const struct { double exponent, fraction; uint32_t y; } cases[] = {
        {1.0, 0.5, 50}, {2.0, 0.25, 50}, {1.0, 0.004, 0}, {1.0, 0.005, 1}, {1.0, 3.0, 100}, {1.0, std::nan(""), 0},
        {0.0, 0.5, 0}, {-1.0, 0.5, 100}, {std::nan(""), 0.5, 0}, {1.0, -0.5, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(CZxHistoDraw::CalcHistoY(c.exponent, c.fraction, 100), c.y) << c.exponent << " " << c.fraction;
}

} // namespace
