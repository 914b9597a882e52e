#include <cmath>
#include <cstring>
#include <vector>

#include "zx_levels.h"
#include "zx/lut.h"
#include "zx_frames.h"
#include "zx_test.h"

namespace {

// The level mapping written out on its own: x = (i + M*offset)*gain/M, clipped at 0,
// entry = trunc(x^gamma*M + 0.5) limited to [0, M]. `unrounded` gives x^gamma*M in [0, M].
double Level(int i, int bits, double gain, double offset, double gamma, bool unrounded = false)
{
    const double M = (1 << bits) - 1;
    double x = (i + M * offset) * gain / M;
    if (x < 0) x = 0;
    const double y = std::pow(x, gamma) * M;
    if (unrounded) return std::min(std::max(y, 0.0), M);
    return std::min(M, std::max(0.0, std::trunc(y + 0.5)));
}

std::vector<uint32_t> Samples(const SZxPicBuf& pb)
{
    std::vector<uint32_t> v(size_t(pb.uiWidth) * pb.uiHeight * pb.uiComp);
    for (size_t i = 0; i < v.size(); ++i) v[i] = zxtest::SampleAt(pb, i);
    return v;
}

} // namespace

TEST(Lut, HandCasesOfTheLevelMapping)
{
    CZxBaseMonoLUT mono(8);
    mono.UpdateLUT(SZxBasePropsI{1.0, 0.0, 0.5}, 8);
    EXPECT_EQ(mono.m_pTable[64], 128);
    EXPECT_EQ(mono.m_pTable[0], 0);
    EXPECT_EQ(mono.m_pTable[255], 255);

    mono.UpdateLUT(SZxBasePropsI{1.0, -0.25, 1.0}, 8);  // negative offset clips the low levels
    EXPECT_EQ(mono.m_pTable[63], 0);
    EXPECT_EQ(mono.m_pTable[100], 36);                   // 100 - 63.75 = 36.25
    mono.UpdateLUT(SZxBasePropsI{2.0, 0.0, 1.0}, 8);     // gain saturates at M
    EXPECT_EQ(mono.m_pTable[127], 254);
    EXPECT_EQ(mono.m_pTable[200], 255);

    // Quantitative: the offset is not scaled by the gain, and the tail above M saturates.
    CZxBaseMonoLUT q(12);
    q.UpdateQuantitativeLUT(SZxBasePropsI{2.0, 0.1, 1.0}, 8);
    EXPECT_EQ(q.m_pTable[10], 46);  // (20 + 25.5) rounded; the display form would give 71
    EXPECT_EQ(q.m_pTable[256], 255);
    EXPECT_EQ(q.m_pTable[4095], 255);
    // Same properties as a display table: a different mapping, so it is rebuilt.
    q.UpdateLUT(SZxBasePropsI{2.0, 0.1, 1.0}, 8);
    EXPECT_EQ(q.m_pTable[10], 71);

    CZxBaseLUT colour(8);
    SZxBaseProps p;
    p.dGamma = 0.5;
    colour.UpdateLUT(p, true, 8);
    EXPECT_EQ(colour.m_uiIntensityMode, 1u);
    EXPECT_EQ(colour.m_pIntensity[64], 128);
}

TEST(Lut, RebuildsOnlyWhenPropertiesOrBitsChange)
{
    auto frame = zxtest::RandomFrame(9, 7, 8, 1, 3);
    SZxPicBuf pb;
    frame->GetPicBuf(&pb);
    const std::vector<uint32_t> before = Samples(pb);

    CZxBaseMonoLUT mono(10);
    mono.UpdateLUT(SZxBasePropsI{}, 8);  // defaults: identity, no table, frame untouched
    EXPECT_TRUE(mono.m_bIdentity);
    EXPECT_EQ(mono.m_iBits, -1);
    mono.ApplyLUT(frame.get());
    EXPECT_EQ(Samples(pb), before);

    // A table that was rebuilt loses the marker poked into it.
    mono.UpdateLUT(SZxBasePropsI{1.5, 0.0, 1.0}, 8);
    mono.m_pTable[5] = 999;
    mono.UpdateLUT(SZxBasePropsI{1.5005, 0.0005, 0.9995}, 8);
    EXPECT_EQ(mono.m_pTable[5], 999);
    mono.UpdateLUT(SZxBasePropsI{1.5, 0.0, 1.0}, 9);
    EXPECT_NE(mono.m_pTable[5], 999);
    mono.UpdateLUT(SZxBasePropsI{1.502, 0.0, 1.0}, 9);
    EXPECT_EQ(mono.m_iBits, 9);
    EXPECT_DOUBLE_EQ(mono.m_dGain, 1.502);

    CZxBaseLUT colour(10);
    SZxBaseProps p;
    p.dGainG = 1.5;
    colour.UpdateLUT(p, false, 8);
    EXPECT_EQ(colour.m_uiColorMode, 1u);
    colour.m_pGreen[5] = 999;
    p.dGainG = 1.5005;
    colour.UpdateLUT(p, false, 8);
    EXPECT_EQ(colour.m_pGreen[5], 999);
    colour.UpdateLUT(p, false, 10);
    EXPECT_NE(colour.m_pGreen[5], 999);

    p.dWeightB = 0.5;  // any weight switches to pair tables
    colour.UpdateLUT(p, false, 10);
    EXPECT_EQ(colour.m_uiColorMode, 2u);
    colour.m_pPairBlue[10] = -7;
    p.dSaturation = 1.0004;
    colour.UpdateLUT(p, false, 10);
    EXPECT_EQ(colour.m_pPairBlue[10], -7);
    colour.UpdateLUT(p, false, 9);
    EXPECT_NE(colour.m_pPairBlue[10], -7);

    CZxBaseLUT copy(colour);  // deep copy: the copy keeps its tables after the source changes
    colour.m_pPairBlue[10] = -7;
    EXPECT_NE(copy.m_pPairBlue[10], -7);
    EXPECT_EQ(copy.m_uiColorMode, 2u);
}

TEST(Lut, ApplyMatchesPerSampleReferenceOnEveryKernelLevel)
{
    struct Case { uint32_t w, h, bits; int maxBits; };
    const Case cases[] = {{67, 5, 8, 8}, {33, 3, 8, 12}, {7, 9, 8, 6}, {65, 4, 12, 12}, {31, 2, 16, 16}, {29, 3, 16, 10}};
    SZxBaseProps p;
    p.dGain = 1.3; p.dOffset = -0.05; p.dGamma = 0.8;
    p.dGainR = 1.1; p.dOffsetB = 0.02; p.dGammaG = 1.2;
    zxtest::ForEachKernelLevel([&](int level) {
        uint32_t seed = 10;
        for (const Case& c : cases) {
            const int bits = std::min<int>(c.bits, c.maxBits);
            const uint32_t last = (1u << c.maxBits) - 1;
            // Monochrome through CZxBaseMonoLUT; the random samples use the frame's
            // full depth, so some lie above a smaller table and must take its last entry.
            auto frame = zxtest::RandomFrame(c.w, c.h, c.bits, 1, seed++);
            SZxPicBuf pb;
            frame->GetPicBuf(&pb);
            std::vector<uint32_t> in = Samples(pb);
            CZxBaseMonoLUT mono(c.maxBits);
            mono.UpdateLUT(SZxBasePropsI{p.dGain, p.dOffset, p.dGamma}, bits);
            mono.ApplyLUT(&pb);
            for (size_t i = 0; i < in.size(); ++i) {
                const uint32_t e = uint32_t(Level(int(std::min(in[i], last)), bits, p.dGain, p.dOffset, p.dGamma));
                ASSERT_EQ(zxtest::SampleAt(pb, i), c.bits > 8 ? e : (e & 0xFF)) << "mono sample " << i;
            }

            // Colour, channel tables then pair tables, on BGR frames.
            for (bool weighted : {false, true}) {
                SZxBaseProps q = p;
                if (weighted) { q.dWeightR = 1.4; q.dWeightB = 0.3; q.dSaturation = 0.9; }
                auto cf = zxtest::RandomFrame(c.w, c.h, c.bits, 3, seed++);
                cf->GetPicBuf(&pb);
                in = Samples(pb);
                CZxBaseLUT lut(c.maxBits);
                lut.UpdateLUT(q, false, bits);
                ASSERT_EQ(lut.m_uiColorMode, weighted ? 2u : 1u);
                lut.ApplyLUT(cf.get());
                const double gain[3] = {q.dGain * q.dGainB, q.dGain * q.dGainG, q.dGain * q.dGainR};
                const double off[3] = {q.dOffset + q.dOffsetB, q.dOffset + q.dOffsetG, q.dOffset + q.dOffsetR};
                const double gam[3] = {q.dGamma * q.dGammaB, q.dGamma * q.dGammaG, q.dGamma * q.dGammaR};
                const double wt[3] = {q.dSaturation * q.dWeightB, q.dSaturation * q.dWeightG, q.dSaturation * q.dWeightR};
                const double lum[3] = {0.114, 0.587, 0.299};
                const int M = (1 << bits) - 1;
                for (size_t px = 0; px < in.size() / 3; ++px) {
                    int own[3], share[3];
                    for (int k = 0; k < 3; ++k) {
                        const int v = int(std::min(in[3 * px + k], last));
                        if (!weighted) {
                            own[k] = int(Level(v, bits, gain[k], off[k], gam[k]));
                            continue;
                        }
                        const double L = Level(v, bits, gain[k], off[k], gam[k], true);
                        own[k] = int(L * (wt[k] + (1 - wt[k]) * lum[k]) + 0.5);
                        share[k] = int(L * ((1 - wt[k]) * lum[k]) + 0.5);
                    }
                    for (int k = 0; k < 3; ++k) {
                        int e = own[k];
                        if (weighted)
                            e = std::min(M, std::max(0, own[k] + share[(k + 1) % 3] + share[(k + 2) % 3]));
                        const uint32_t want = c.bits > 8 ? uint32_t(e) : (uint32_t(e) & 0xFF);
                        ASSERT_EQ(zxtest::SampleAt(pb, 3 * px + k), want) << "pixel " << px << " sample " << k;
                    }
                }
            }
        }
    });
}

TEST(Lut, BadTablesAndFramesAreReportedNotApplied)
{
    zxtest::DiagCapture diag;
    CZxBaseMonoLUT none(0);
    none.UpdateLUT(SZxBasePropsI{2.0, 0.0, 1.0}, 8);
    none.ApplyLUT(static_cast<SZxPicBuf*>(nullptr));
    CZxBaseMonoLUT mono(8);
    mono.UpdateLUT(SZxBasePropsI{2.0, 0.0, 1.0}, 9);  // deeper than the table
    EXPECT_TRUE(mono.m_bIdentity);
    mono.UpdateLUT(SZxBasePropsI{2.0, 0.0, 1.0}, 8);
    SZxPicBuf short_{4, 4, 4, 8, 1, 3, nullptr};
    uint8_t data[3] = {1, 2, 3};
    short_.pData = data;
    mono.ApplyLUT(&short_);
    EXPECT_EQ(data[0], 1);
    mono.ApplyLUT(static_cast<CZxGrabberSample01*>(nullptr));
    EXPECT_GE(diag.Size(), 5u);
}
