#include <vector>

#include "pixel_test.h"
#include "zx_levels.h"
#include "zx/binning.h"
#include "zxhost/geomtrans.h"

using pixtest::Samples;
using Row = std::vector<uint32_t>;

TEST(Binning, EveryLevelMatchesTheCellRulesOnRandomFrames)
{
    // Source cell (a b / c d) positions of blue, the two greens and red per type.
    const int pos[4][4] = {{0, 1, 2, 3}, {1, 0, 3, 2}, {3, 1, 2, 0}, {2, 0, 3, 1}};
    zxtest::ForEachKernelLevel([&](int) {
        uint32_t seed = 500;
        for (uint32_t bits : {8u, 12u, 16u})
            for (uint32_t w : {1u, 2u, 7u, 8u, 15u, 16u, 17u, 31u, 33u, 40u, 67u})
                for (uint32_t h : {1u, 3u}) {
                    auto raw = zxtest::RandomFrame(2 * w, 2 * h, bits, 1, seed++);
                    const Row in = Samples(*raw);
                    // The rounded mean of each 2 x 2 cell, and per type blue, the truncated green mean, red.
                    Row mean, colour[4];
                    for (uint32_t y = 0; y < h; ++y)
                        for (uint32_t x = 0; x < w; ++x) {
                            uint32_t c[4];
                            for (int k = 0; k < 4; ++k)
                                c[k] = in[size_t(2 * y + k / 2) * 2 * w + 2 * x + k % 2];
                            mean.push_back((c[0] + c[1] + c[2] + c[3] + 2) >> 2);
                            for (int t = 0; t < 4; ++t)
                                colour[t].insert(colour[t].end(), {c[pos[t][0]], (c[pos[t][1]] + c[pos[t][2]]) >> 1,
                                                                   c[pos[t][3]]});
                        }
                    CZxGrabberSample01 mono(w, h, bits, 1);
                    ZX_MonoBinning(&mono, raw->GetDataPtr(), 2);
                    ASSERT_EQ(Samples(mono), mean) << w << "x" << h << " bits " << bits;
                    for (int t = 0; t < 4; ++t) {
                        CZxGrabberSample01 bayer(w, h, bits, 3);
                        ZX_BayerBinning(&bayer, raw->GetDataPtr(), EZxBayerType(t + 1), 2);
                        ASSERT_EQ(Samples(bayer), colour[t]) << w << "x" << h << " bits " << bits << " type " << t + 1;
                    }
                }
    });
}

// Factor 2 is checked cell by cell above at every level; the others here.
TEST(Binning, OtherFactors)
{
    // Factor 1: mono copies, Bayer demosaics.
    auto raw = zxtest::RandomFrame(6, 4, 12, 1, 9);
    CZxGrabberSample01 copy(6, 4, 12, 1), binned(6, 4, 12, 3), demosaiced(6, 4, 12, 3);
    ZX_MonoBinning(&copy, raw->GetDataPtr(), 1);
    EXPECT_EQ(Samples(copy), Samples(*raw));
    ZX_BayerBinning(&binned, raw->GetDataPtr(), ZX_BAYER_GRBG, 1);
    ZX_BayerToRGB(&demosaiced, raw->GetDataPtr(), ZX_BAYER_GRBG);
    EXPECT_EQ(Samples(binned), Samples(demosaiced));

    // Factor 3: area average of each 3 x 3 block, rounded: (0+1+2+6+7+8+12+13+14)/9 = 7
    // plus 1000 on the left, (3+4+5+9+10+11+15+16+17)/9 = 10 on the right.
    std::vector<uint16_t> big(6 * 3);
    for (size_t i = 0; i < big.size(); ++i) big[i] = uint16_t(1000 * (i % 6 < 3) + i);
    CZxGrabberSample01 third(2, 1, 16, 1);
    ZX_MonoBinning(&third, big.data(), 3);
    EXPECT_EQ(Samples(third), (Row{1007, 10}));
}

TEST(Binning, StretchAveragesFootprintsOfUnevenRatios)
{
    uint8_t src[5] = {10, 20, 31, 40, 50};
    uint8_t dst[2] = {0, 0};
    SZxPicBuf s{5, 1, 5, 8, 1, 5, src}, d{2, 1, 2, 8, 1, 2, dst};
    EXPECT_EQ(CZxPicBufAPI_GeomTrans::Stretch(&d, &s, 3), 0);
    EXPECT_EQ((Row{dst[0], dst[1]}), (Row{15, 40}));  // columns 0..1, then 2..4: 121 / 3 rounded
    s.uiRowBytes = 2;                      // rows shorter than their pixels
    EXPECT_EQ(CZxPicBufAPI_GeomTrans::Stretch(&d, &s, 3), -9);
}

TEST(Binning, AssertionsFromCommon)
{
    zxtest::DiagCapture diag;
    const uint8_t raw[16] = {4, 4, 8, 8, 4, 4, 8, 8, 1, 1, 1, 1, 1, 1, 1, 1};
    // A colour destination for mono binning is reported, then binned as one component
    // into the first samples of its buffer.
    CZxGrabberSample01 colour(2, 2, 8, 3);
    ZX_MonoBinning(&colour, raw, 2);
    EXPECT_EQ(Samples(colour), (Row{4, 8, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0}));
    // Factor 1 copies one component's frame only (the sanitiser build catches an over-read).
    const std::vector<uint8_t> four{9, 8, 7, 6};
    ZX_MonoBinning(&colour, four.data(), 1);
    EXPECT_EQ(Samples(colour), (Row{9, 8, 7, 6, 0, 0, 0, 0, 0, 0, 0, 0}));
    // Factor 3 into the same buffer reads a packed 6 x 6 source, not 3 x its row length.
    const std::vector<uint8_t> six(36, 50);
    ZX_MonoBinning(&colour, six.data(), 3);
    EXPECT_EQ(Samples(colour), (Row{50, 50, 50, 50, 0, 0, 0, 0, 0, 0, 0, 0}));

    // Bayer binning into a mono destination, and by factor 3, writes nothing.
    CZxGrabberSample01 mono(2, 2, 8, 1), rgb(1, 1, 8, 3);
    ZX_BayerBinning(&mono, raw, ZX_BAYER_BGGR, 2);
    ZX_BayerBinning(&rgb, raw, ZX_BAYER_BGGR, 3);
    EXPECT_EQ(Samples(mono), Row(4, 0));
    EXPECT_EQ(Samples(rgb), Row(3, 0));
    pixtest::ExpectReports(diag, L"common",
                           {L"pPicBuf->uiComp!=1", L"pPicBuf->uiComp!=1", L"pPicBuf->uiComp!=1",
                            L"pPicBuf->uiComp!=3", L"true"});
}
