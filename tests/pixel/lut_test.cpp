#include <cmath>
#include <vector>

#include "pixel_test.h"
#include "zx_levels.h"
#include "zx/lut.h"

using pixtest::Samples;

namespace {

// The level mapping written out on its own: x = (i + M*offset)*gain/M, clipped at 0,
// gives x^gamma*M limited to [0, M]; a table entry is that plus 0.5, truncated.
double Level(int i, int bits, double gain, double offset, double gamma)
{
    const double M = (1 << bits) - 1;
    double x = (i + M * offset) * gain / M;
    if (x < 0) x = 0;
    return std::min(std::max(std::pow(x, gamma) * M, 0.0), M);
}

// `update(d, bits)` builds a table from properties moved by d. A marker poked into the
// table survives a change within the 0.001 tolerance; a new bit depth or a larger
// change rebuilds the table over it.
template <typename T, typename Update>
void ExpectRebuildsOnlyBeyondTolerance(Update update, T* table, T marker)
{
    update(0.0, 8);
    table[10] = marker;
    update(0.0005, 8);
    EXPECT_EQ(table[10], marker) << "a change within the tolerance rebuilt the table";
    update(0.0005, 9);
    EXPECT_NE(table[10], marker) << "a new bit depth kept the old table";
    table[10] = marker;
    update(0.002, 9);
    EXPECT_NE(table[10], marker) << "a change beyond the tolerance kept the old table";
}

} // namespace

// Quantitative: the offset is not scaled by the gain, and the tail above M saturates.
TEST(Lut, QuantitativeTable)
{
    CZxBaseMonoLUT q(12);
    q.UpdateQuantitativeLUT(SZxBasePropsI{2.0, 0.1, 1.0}, 8);
    EXPECT_EQ((std::vector<uint16_t>{q.m_pTable[10], q.m_pTable[256], q.m_pTable[4095]}),
              (std::vector<uint16_t>{46, 255, 255}));  // 20 + 25.5 rounded, then the tail
    // Same properties as a display table: a different mapping, so it is rebuilt.
    q.UpdateLUT(SZxBasePropsI{2.0, 0.1, 1.0}, 8);
    EXPECT_EQ(q.m_pTable[10], 71);  // (10 + 25.5) * 2 rounded
}

TEST(Lut, RebuildsOnlyWhenPropertiesOrBitsChange)
{
    CZxBaseMonoLUT mono(10);
    ExpectRebuildsOnlyBeyondTolerance(
        [&](double d, int bits) { mono.UpdateLUT(SZxBasePropsI{1.5 + d, d, 1.0 - d}, bits); }, mono.m_pTable,
        uint16_t(999));
    CZxBaseLUT colour(10);
    ExpectRebuildsOnlyBeyondTolerance([&](double d, int bits) {
        SZxBaseProps p;
        p.dGamma = 0.5 + d;
        colour.UpdateLUT(p, true, bits);
        ASSERT_EQ(colour.m_uiIntensityMode, 1u);
    }, colour.m_pIntensity, uint16_t(999));
    ExpectRebuildsOnlyBeyondTolerance([&](double d, int bits) {
        SZxBaseProps p;
        p.dGainG = 1.5 + d;
        colour.UpdateLUT(p, false, bits);
        ASSERT_EQ(colour.m_uiColorMode, 1u);
    }, colour.m_pGreen, uint16_t(999));
    ExpectRebuildsOnlyBeyondTolerance([&](double d, int bits) {
        SZxBaseProps p;
        p.dWeightB = 0.5 - d;  // any weight switches to pair tables
        colour.UpdateLUT(p, false, bits);
        ASSERT_EQ(colour.m_uiColorMode, 2u);
    }, colour.m_pPairBlue, int32_t(-7));

    // Back to the defaults: the identity leaves the frame as it was, not mapped by the old table.
    auto frame = zxtest::RandomFrame(9, 7, 8, 1, 3);
    const std::vector<uint32_t> before = Samples(*frame);
    mono.UpdateLUT(SZxBasePropsI{}, 8);
    mono.ApplyLUT(frame.get());
    EXPECT_EQ(Samples(*frame), before);
    EXPECT_TRUE(mono.m_bIdentity);

    CZxBaseLUT copy(colour);  // deep copy: the copy keeps its tables after the source changes
    colour.m_pPairBlue[10] += 1;
    EXPECT_EQ(copy.m_pPairBlue[10] + 1, colour.m_pPairBlue[10]);
    EXPECT_EQ(copy.m_uiColorMode, 2u);
}

TEST(Lut, ApplyMatchesPerSampleReferenceOnEveryKernelLevel)
{
    struct Case { uint32_t w, h, bits; int maxBits; };
    const Case cases[] = {{67, 5, 8, 8}, {33, 3, 8, 12}, {7, 9, 8, 6}, {65, 4, 12, 12}, {31, 2, 16, 16}, {29, 3, 16, 10}};
    SZxBaseProps p;
    p.dGain = 1.3; p.dOffset = -0.05; p.dGamma = 0.8;
    p.dGainR = 1.1; p.dOffsetB = 0.02; p.dGammaG = 1.2;
    const double lum[3] = {0.114, 0.587, 0.299};
    zxtest::ForEachKernelLevel([&](int) {
        uint32_t seed = 10;
        for (const Case& c : cases) {
            const int bits = std::min<int>(c.bits, c.maxBits), M = (1 << bits) - 1;
            const uint32_t last = (1u << c.maxBits) - 1;
            // Monochrome through CZxBaseMonoLUT; the random samples use the frame's
            // full depth, so some lie above a smaller table and must take its last entry.
            auto frame = zxtest::RandomFrame(c.w, c.h, c.bits, 1, seed++);
            std::vector<uint32_t> want = Samples(*frame);
            for (uint32_t& v : want) v = uint32_t(Level(int(std::min(v, last)), bits, p.dGain, p.dOffset, p.dGamma) + 0.5);
            CZxBaseMonoLUT mono(c.maxBits);
            mono.UpdateLUT(SZxBasePropsI{p.dGain, p.dOffset, p.dGamma}, bits);
            mono.ApplyLUT(frame.get());
            ASSERT_EQ(Samples(*frame), want) << "mono " << c.w << "x" << c.h;

            // Colour, channel tables then pair tables, on BGR frames. Without weights each
            // channel's own part is its rounded level and it shares nothing.
            for (bool weighted : {false, true}) {
                SZxBaseProps q = p;
                if (weighted) { q.dWeightR = 1.4; q.dWeightB = 0.3; q.dSaturation = 0.9; }
                const double gain[3] = {q.dGain * q.dGainB, q.dGain * q.dGainG, q.dGain * q.dGainR};
                const double off[3] = {q.dOffset + q.dOffsetB, q.dOffset + q.dOffsetG, q.dOffset + q.dOffsetR};
                const double gam[3] = {q.dGamma * q.dGammaB, q.dGamma * q.dGammaG, q.dGamma * q.dGammaR};
                const double wt[3] = {q.dSaturation * q.dWeightB, q.dSaturation * q.dWeightG, q.dSaturation * q.dWeightR};
                auto cf = zxtest::RandomFrame(c.w, c.h, c.bits, 3, seed++);
                want = Samples(*cf);
                for (size_t px = 0; px < want.size(); px += 3) {
                    int own[3], share[3];
                    for (int k = 0; k < 3; ++k) {
                        const double L = Level(int(std::min(want[px + k], last)), bits, gain[k], off[k], gam[k]);
                        own[k] = int(L * (wt[k] + (1 - wt[k]) * lum[k]) + 0.5);
                        share[k] = int(L * ((1 - wt[k]) * lum[k]) + 0.5);
                    }
                    for (int k = 0; k < 3; ++k)
                        want[px + k] = uint32_t(std::min(M, std::max(0, own[k] + share[(k + 1) % 3] + share[(k + 2) % 3])));
                }
                CZxBaseLUT lut(c.maxBits);
                lut.UpdateLUT(q, false, bits);
                lut.ApplyLUT(cf.get());
                ASSERT_EQ(Samples(*cf), want) << (weighted ? "pair tables " : "channel tables ") << c.w << "x" << c.h;
            }
        }
    });
}

TEST(Lut, BadTablesAndFramesAreReportedNotApplied)
{
    zxtest::DiagCapture diag;
    CZxBaseMonoLUT none(0);
    none.UpdateLUT(SZxBasePropsI{2.0, 0.0, 1.0}, 8);
    CZxBaseMonoLUT mono(8);
    mono.UpdateLUT(SZxBasePropsI{2.0, 0.0, 1.0}, 9);  // deeper than the table
    EXPECT_TRUE(mono.m_bIdentity);
    mono.UpdateLUT(SZxBasePropsI{2.0, 0.0, 1.0}, 8);
    uint8_t data[3] = {1, 2, 3};
    SZxPicBuf short_{4, 4, 4, 8, 1, 3, data};
    mono.ApplyLUT(&short_);
    EXPECT_EQ(data[0], 1);
    mono.ApplyLUT(static_cast<SZxPicBuf*>(nullptr));
    mono.ApplyLUT(static_cast<CZxGrabberSample01*>(nullptr));
    pixtest::ExpectReports(diag, L"imaging",
                           {L"maxBits < 1 || maxBits > kMaxTableBits", L"table == NULL", L"bits < 1 || bits > maxBits",
                            L"pb->ui64DataSize != 0 && pb->ui64DataSize < bytes", L"pb == NULL", L"sample == NULL"});
}

TEST(Lut, ColourWeightsKeepTheExactMixWhereverTablesHoldItAndSaturateBeyond)
{
    // Pixels are blue, green, red. A table entry is a level times a weight's share,
    // held in 32 bits: up to the largest weight whose entries fit (8421503 for 8 bits,
    // 32767 for 16) the result is the mix's own, rounding of each entry included;
    // beyond, the weight acts as that largest one (the mix is all or nothing there).
    // A NaN weight mixes nothing.
    const double nan = std::nan("");
    const struct {
        uint32_t bits;
        double red, green, blue;   // weights (times the saturation of 1)
        std::vector<uint32_t> in, out;
    } cases[] = {
        {8, 1e9, 1e9, 1e9, {10, 200, 30, 100, 100, 100}, {0, 255, 0, 102, 102, 102}},
        {8, 8191, 8191, 8191, {10, 200, 30, 100, 100, 100}, {0, 255, 0, 102, 102, 102}},
        {8, -1e300, -1e300, -1e300, {10, 200, 30, 100, 100, 100}, {255, 0, 255, 102, 102, 102}},
        {8, nan, nan, nan, {10, 200, 30, 100, 100, 100}, {10, 200, 30, 100, 100, 100}},
        // 16 bits: weights a fixed limit of 8191 used to change.
        {16, 10000, 10000, 10000, {1000, 1000, 1001}, {0, 0, 8012}},
        {16, -20000, -20000, -20000, {1000, 1000, 1001}, {6981, 6981, 0}},
        // The largest weight whose entries fit, and beyond it.
        {16, 32767, 32767, 32767, {1000, 1000, 1001, 30000, 30000, 30001}, {0, 0, 23972, 20205, 20205, 52972}},
        {16, 1e6, 1e6, 1e6, {1000, 1000, 1001, 30000, 30000, 30001}, {0, 0, 23972, 20205, 20205, 52972}},
        {16, -32767, -32767, -32767, {1000, 1000, 1001}, {10799, 10799, 0}},
        // Entries of opposite weights whose sum passes 32 bits.
        {16, 32767, -32767, 1, {0, 65535, 65535, 0, 65535, 1000}, {65535, 0, 65535, 65535, 0, 65535}},
    };
    zxtest::ForEachKernelLevel([&](int) {
        for (const auto& c : cases) {
            std::vector<uint16_t> px16(c.in.begin(), c.in.end());
            std::vector<uint8_t> px8(c.in.begin(), c.in.end());
            const bool wide = c.bits > 8;
            const uint32_t n = uint32_t(c.in.size() / 3), bytes = wide ? 2 : 1;
            SZxPicBuf pb{n, 1, n * 3 * bytes, c.bits, 3, n * 3 * bytes,
                         wide ? static_cast<void*>(px16.data()) : static_cast<void*>(px8.data())};
            SZxBaseProps p;
            p.dWeightR = c.red;
            p.dWeightG = c.green;
            p.dWeightB = c.blue;
            CZxBaseLUT lut(int(c.bits));
            lut.UpdateLUT(p, false, int(c.bits));
            lut.ApplyLUT(&pb);
            const std::vector<uint32_t> got = wide ? std::vector<uint32_t>(px16.begin(), px16.end())
                                                   : std::vector<uint32_t>(px8.begin(), px8.end());
            EXPECT_EQ(got, c.out) << c.bits << " bits, weights " << c.red << " " << c.green << " " << c.blue;
        }
    });
}
