#include <vector>

#include "zx_levels.h"
#include "zx/binning.h"
#include "zx_frames.h"
#include "zx_test.h"
#include "zxhost/geomtrans.h"

namespace {

std::vector<uint32_t> Samples(const SZxPicBuf& pb)
{
    std::vector<uint32_t> v(size_t(pb.uiWidth) * pb.uiHeight * pb.uiComp);
    for (size_t i = 0; i < v.size(); ++i) v[i] = zxtest::SampleAt(pb, i);
    return v;
}

} // namespace

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
                    SZxPicBuf rb;
                    raw->GetPicBuf(&rb);
                    auto cellOf = [&](uint32_t x, uint32_t y, int k) {
                        return zxtest::SampleAt(rb, size_t(2 * y + k / 2) * 2 * w + 2 * x + k % 2);
                    };
                    CZxGrabberSample01 mono(w, h, bits, 1);
                    ZX_MonoBinning(&mono, rb.pData, 2);
                    SZxPicBuf mb;
                    mono.GetPicBuf(&mb);
                    for (uint32_t y = 0; y < h; ++y)
                        for (uint32_t x = 0; x < w; ++x)
                            ASSERT_EQ(zxtest::SampleAt(mb, size_t(y) * w + x),
                                      (cellOf(x, y, 0) + cellOf(x, y, 1) + cellOf(x, y, 2) + cellOf(x, y, 3) + 2) >> 2)
                                << w << "x" << h << " bits " << bits;
                    for (int type = 1; type <= 4; ++type) {
                        CZxGrabberSample01 colour(w, h, bits, 3);
                        ZX_BayerBinning(&colour, rb.pData, EZxBayerType(type), 2);
                        SZxPicBuf cb;
                        colour.GetPicBuf(&cb);
                        const int* p = pos[type - 1];
                        for (uint32_t y = 0; y < h; ++y)
                            for (uint32_t x = 0; x < w; ++x) {
                                const size_t o = (size_t(y) * w + x) * 3;
                                ASSERT_EQ(zxtest::SampleAt(cb, o), cellOf(x, y, p[0])) << "type " << type << " w " << w;
                                ASSERT_EQ(zxtest::SampleAt(cb, o + 1), (cellOf(x, y, p[1]) + cellOf(x, y, p[2])) >> 1);
                                ASSERT_EQ(zxtest::SampleAt(cb, o + 2), cellOf(x, y, p[3]));
                            }
                    }
                }
    });
}

TEST(Binning, HandCasesAndOtherFactors)
{
    const uint8_t cell[4] = {1, 2, 3, 4};
    CZxGrabberSample01 one(1, 1, 8, 1);
    ZX_MonoBinning(&one, cell, 2);
    EXPECT_EQ(*static_cast<uint8_t*>(one.GetDataPtr()), 3);  // (10 + 2) >> 2

    CZxGrabberSample01 px(1, 1, 8, 3);
    ZX_BayerBinning(&px, cell, ZX_BAYER_BGGR, 2);  // green of b = 2, c = 3
    const uint8_t* o = static_cast<const uint8_t*>(px.GetDataPtr());
    EXPECT_EQ(o[0], 1);
    EXPECT_EQ(o[1], 2);
    EXPECT_EQ(o[2], 4);
    const uint16_t greens[4] = {9, 1, 2, 9};
    CZxGrabberSample01 px16(1, 1, 16, 3);
    ZX_BayerBinning(&px16, greens, ZX_BAYER_BGGR, 2);  // (1 + 2) >> 1 truncates to 1
    EXPECT_EQ(static_cast<const uint16_t*>(px16.GetDataPtr())[1], 1);

    // Factor 1: mono copies, Bayer demosaics.
    auto raw = zxtest::RandomFrame(6, 4, 12, 1, 9);
    SZxPicBuf rb;
    raw->GetPicBuf(&rb);
    CZxGrabberSample01 copy(6, 4, 12, 1), binned(6, 4, 12, 3), demosaiced(6, 4, 12, 3);
    ZX_MonoBinning(&copy, rb.pData, 1);
    SZxPicBuf cb, bb, db;
    copy.GetPicBuf(&cb);
    EXPECT_EQ(Samples(cb), Samples(rb));
    ZX_BayerBinning(&binned, rb.pData, ZX_BAYER_GRBG, 1);
    ZX_BayerToRGB(&demosaiced, rb.pData, ZX_BAYER_GRBG);
    binned.GetPicBuf(&bb);
    demosaiced.GetPicBuf(&db);
    EXPECT_EQ(Samples(bb), Samples(db));

    // Factor 3: area average of each 3 x 3 block, rounded.
    std::vector<uint16_t> big(6 * 3);
    for (size_t i = 0; i < big.size(); ++i) big[i] = uint16_t(1000 * (i % 6 < 3) + i);
    CZxGrabberSample01 third(2, 1, 16, 1);
    ZX_MonoBinning(&third, big.data(), 3);
    const uint16_t* t = static_cast<const uint16_t*>(third.GetDataPtr());
    EXPECT_EQ(t[0], 1007);  // (0+1+2+6+7+8+12+13+14)/9 = 7, + 1000
    EXPECT_EQ(t[1], 10);    // (3+4+5+9+10+11+15+16+17)/9
}

TEST(Binning, StretchAveragesFootprintsOfUnevenRatios)
{
    uint8_t src[5] = {10, 20, 31, 40, 50};
    uint8_t dst[2] = {0, 0};
    SZxPicBuf s{5, 1, 5, 8, 1, 5, src}, d{2, 1, 2, 8, 1, 2, dst};
    EXPECT_EQ(CZxPicBufAPI_GeomTrans::Stretch(&d, &s, 3), 0);
    EXPECT_EQ(dst[0], 15);  // columns 0..1
    EXPECT_EQ(dst[1], 40);  // columns 2..4: 121 / 3 rounded
    s.uiRowBytes = 2;       // rows shorter than their pixels
    EXPECT_EQ(CZxPicBufAPI_GeomTrans::Stretch(&d, &s, 3), -9);
}

TEST(Binning, AssertionsFromCommon)
{
    zxtest::DiagCapture diag;
    const uint8_t raw[16] = {4, 4, 8, 8, 4, 4, 8, 8, 1, 1, 1, 1, 1, 1, 1, 1};
    // A colour destination for mono binning is reported, then binned as one component.
    CZxGrabberSample01 colour(2, 2, 8, 3);
    ZX_MonoBinning(&colour, raw, 2);
    EXPECT_TRUE(diag.Has(L"pPicBuf->uiComp!=1", L"common"));
    const uint8_t* c = static_cast<const uint8_t*>(colour.GetDataPtr());
    EXPECT_EQ(c[0], 4);
    EXPECT_EQ(c[1], 8);
    // Factor 1 copies one component's frame only (the sanitiser build catches an over-read).
    const std::vector<uint8_t> four{9, 8, 7, 6};
    ZX_MonoBinning(&colour, four.data(), 1);
    EXPECT_EQ(c[3], 6);
    EXPECT_EQ(c[4], 0);
    // Factor 3 into the same buffer reads a packed 6 x 6 source, not 3 x its row length.
    const std::vector<uint8_t> six(36, 50);
    ZX_MonoBinning(&colour, six.data(), 3);
    EXPECT_EQ(c[0] + c[1] + c[2] + c[3], 200);

    CZxGrabberSample01 mono(2, 2, 8, 1);
    ZX_BayerBinning(&mono, raw, ZX_BAYER_BGGR, 2);
    EXPECT_TRUE(diag.Has(L"pPicBuf->uiComp!=3", L"common"));
    CZxGrabberSample01 rgb(1, 1, 8, 3);
    ZX_BayerBinning(&rgb, raw, ZX_BAYER_BGGR, 3);
    EXPECT_TRUE(diag.Has(L"true", L"common"));
    const uint8_t* r = static_cast<const uint8_t*>(rgb.GetDataPtr());
    EXPECT_EQ(r[0] + r[1] + r[2], 0);
    const uint8_t* m = static_cast<const uint8_t*>(mono.GetDataPtr());
    EXPECT_EQ(m[0] + m[1] + m[2] + m[3], 0);
    EXPECT_EQ(diag.Size(), 5u);
}
