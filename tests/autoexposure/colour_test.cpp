// Colour steps of the engine and the accurate auto white, on hand-computed values.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "ae_engine.h"
#include "zx_test.h"
#include "zxhost/system.h"

namespace {

// 100 pixels per channel: half at a black bin, half at a white bin (of 256);
// black 10, 20, 30 and white 200, 150, 100 for red, green, blue.
SZxAEHistogram ColourHisto()
{
    const unsigned black[3] = {10, 20, 30}, white[3] = {200, 150, 100};
    SZxAEHistogram h(8, false, true);
    for (int c = 0; c < 3; ++c) {
        std::memset(h.pdwHisto[c + 1], 0, 256 * sizeof(uint32_t));
        h.pdwHisto[c + 1][black[c]] = 50;
        h.pdwHisto[c + 1][white[c]] = 50;
    }
    h.uiBinCount = 256;
    h.uiPixelCount = 100;
    return h;
}

TEST(AEColour, OffsetsComeBeforeWhiteBalanceBeforeDisplayGain)
{
    Engine ae;
    SZxAEHistogram h = ColourHisto();
    SZxAEFrameDesc f;
    f.m_dHardWhiteG = 2.0;
    ae.ComputeAE(true, ZX_AE_BLACKOFFSETS | ZX_AE_OFFSET | ZX_AE_WHITEBALANCE | ZX_AE_HARDWHITE | ZX_AE_DISPLAYGAIN,
                 f, h);
    // Black offsets relative to the largest (red's -10/255); the offset is red's -10/255.
    ExpectDoubles({0.0, -10.0 / 255, -20.0 / 255, -10.0 / 255},
                  {f.m_dBlackOffsetR, f.m_dBlackOffsetG, f.m_dBlackOffsetB, f.m_dOffset});
    // Signals above black: 190, 130, 70 (of 255); red, the strongest, gets 1.
    ExpectDoubles({1.0, 190.0 / 130, 190.0 / 70}, {f.m_dWhiteBalanceR, f.m_dWhiteBalanceG, f.m_dWhiteBalanceB});
    // Hard gains scale by the current ones (green 2) and stop at the maximum 2.
    ExpectDoubles({1.0, 2.0, 2.0}, {f.m_dHardWhiteR, f.m_dHardWhiteG, f.m_dHardWhiteB});
    ExpectDoubles({255.0 / 190, 0.0}, {f.m_dDisplayGain, f.m_dOverflow});
}

// Replays a factor and exposure per channel call and records the offsets given.
// Each channel's gain comes back tripled, so the complementary gain of whichever
// channel wins shows whether that channel was given its own white balance.
struct ScriptedChannels : Engine {
    double factor[3] = {1, 2, 4}, exposure[3] = {4, 2, 1};
    std::vector<double> offsets;

    void ComputeAutoExposure(unsigned* modeOut, double* factorOut, double* exposureOut, double* gainOut, unsigned,
                             double gain, double offset, unsigned, double, double, double, double,
                             const SZxAESetting&, unsigned, double, bool) override
    {
        const size_t c = offsets.size();
        offsets.push_back(offset);
        *modeOut = 0;
        *factorOut = factor[c];
        *exposureOut = exposure[c];
        *gainOut = 3.0 * gain;
    }
    double Choose(double redExposure, double greenExposure)
    {
        offsets.clear();
        exposure[0] = redExposure;
        exposure[1] = greenExposure;
        SZxAEFrameDesc f;
        f.m_dWhiteBalanceR = 2.0;
        f.m_dBlackOffsetB = 0.25;
        f.m_dOffset = 0.5;
        const SZxAEValueRGB v(0.5, 0.5, 0.5);
        ComputeAutoExposureRGB(&f.m_uiCameraMode, &f.m_dFactor, &f.m_dExposure, &f.m_dComplGain, ZX_AE_EXPOSURE, f,
                               v, v, m_setting1, false);
        EXPECT_DOUBLE_EQ(3.0, f.m_dComplGain);  // the channel's gain over its white balance
        return f.m_dFactor;
    }
};

TEST(AEColour, LeastSignalChannelWinsWithTiesToRedThenGreen)
{
    ScriptedChannels s;
    EXPECT_DOUBLE_EQ(1.0, s.Choose(4, 2));  // scores 4, 4, 4
    EXPECT_EQ((std::vector<double>{0.5, 0.5, 0.75}), s.offsets);
    EXPECT_DOUBLE_EQ(2.0, s.Choose(5, 2));  // 5, 4, 4
    EXPECT_DOUBLE_EQ(4.0, s.Choose(5, 3));  // 5, 6, 4
}

// Records which channel each statistics step is asked for, and over how many
// bins, as a driver that overrides a step sees it.
struct RecordingChannels : Engine {
    const SZxAEHistogram* hist = nullptr;
    std::string calls;
    void Note(char step, const unsigned* bins, unsigned n)
    {
        calls += step;
        calls += bins == hist->pdwHisto[1] ? 'r' : bins == hist->pdwHisto[2] ? 'g' : bins == hist->pdwHisto[3] ? 'b' : '?';
        calls += std::to_string(n) + ' ';
    }
    double ComputeWhiteSignal(const unsigned* bins, unsigned pixels, unsigned n, int excluded) override
    {
        Note('W', bins, n);
        return Engine::ComputeWhiteSignal(bins, pixels, n, excluded);
    }
    double ComputeBlackSignal(const unsigned* bins, unsigned pixels, unsigned n) override
    {
        Note('B', bins, n);
        return Engine::ComputeBlackSignal(bins, pixels, n);
    }
    double ComputeOverflow(const unsigned* bins, unsigned pixels, unsigned n, double level, int excluded) override
    {
        Note('O', bins, n);
        return Engine::ComputeOverflow(bins, pixels, n, level, excluded);
    }
};

TEST(AEColour, ChannelStatisticsRunRedGreenBlue)
{
    RecordingChannels e;
    SZxAEHistogram h = ColourHisto();
    e.hist = &h;
    // Clip limits are per sample in memory order (blue, green, red), as the
    // histogram applies them: each channel's statistics stop at its own.
    h.pdwClipLimits = static_cast<uint32_t*>(CZxAlloc::Alloc(3 * sizeof(uint32_t)));
    const uint32_t clip[3] = {119, 159, 219};
    std::copy(clip, clip + 3, h.pdwClipLimits);
    SZxAEFrameDesc f;
    e.ComputeAE(true, ZX_AE_OFFSET | ZX_AE_WHITEBALANCE, f, h);
    EXPECT_EQ(e.calls, "Wr220 Wg160 Wb120 Or220 Og160 Ob120 Br220 Bg160 Bb120 ");
}

// A w x h colour frame (blue, green, red per pixel) from a list of pixels, repeated.
std::unique_ptr<CZxGrabberSample01> ColourFrame(uint32_t w, uint32_t h, uint32_t bits,
                                                std::vector<std::array<uint16_t, 3>> bgr)
{
    auto s = std::make_unique<CZxGrabberSample01>(w, h, bits, 3);
    for (size_t i = 0; i < size_t(w) * h * 3; ++i) {
        const uint16_t v = bgr[i / 3 % bgr.size()][i % 3];
        bits > 8 ? void(static_cast<uint16_t*>(s->GetDataPtr())[i] = v)
                 : void(static_cast<uint8_t*>(s->GetDataPtr())[i] = uint8_t(v));
    }
    return s;
}

// {pixels counted, red, green, blue gain}
std::vector<double> AutoWhite(CZxGrabberSample01* s, double ro = 0, double go = 0, double bo = 0,
                              SZxGrabberProbe* probe = nullptr)
{
    double r = 0, g = 0, b = 0;
    const int n = ZX_AccurateAutoWhite(&r, &g, &b, ro, go, bo, s, probe);
    return {double(n), r, g, b};
}

TEST(AccurateAutoWhite, BrightnessWeightedSumsOnHandMadeFramesCountTheHistogramsPixels)
{
    // Weights 70 and 140: red 40x70 + 80x140 = 14000, green 7000, blue 3500.
    ExpectDoubles({2, 1.0, 2.0, 4.0}, AutoWhite(ColourFrame(2, 1, 8, {{10, 20, 40}, {20, 40, 80}}).get()));
    // Every pixel has a channel at full scale: the saturated sums count (weights
    // 405): red 150, green 150, blue 510.
    ExpectDoubles({0, 3.4, 3.4, 1.0}, AutoWhite(ColourFrame(2, 1, 8, {{255, 100, 50}, {255, 50, 100}}).get()));
    // One saturated pixel among two that are not: the unsaturated ones count.
    ExpectDoubles({2, 1, 2, 4}, AutoWhite(ColourFrame(3, 1, 12, {{4095, 0, 0}, {10, 20, 40}, {20, 40, 80}}).get()));
    // An offset -0.1 of 255 = -25.5 rounds away from zero to -26. A 0 in that
    // channel goes negative but weighs |-26|: the other channels sum
    // 100 x 274 + 100 x 226 = 50000, the offset one 74 x 274 - 26 x 226 = 14400.
    for (int c = 0; c < 3; ++c) {  // red, green, blue
        std::vector<double> want{2, 1.0, 1.0, 1.0}, off{0, 0, 0};
        std::array<uint16_t, 3> dark{100, 100, 100};
        dark[2 - c] = 0;
        off[c] = -0.1;
        want[1 + c] = 50000.0 / 14400;
        ExpectDoubles(want, AutoWhite(ColourFrame(2, 1, 8, {{100, 100, 100}, dark}).get(), off[0], off[1], off[2]));
    }
    ExpectDoubles({12, 1.0, 1.0, 1.0}, AutoWhite(ColourFrame(4, 3, 16, {{0, 0, 0}}).get()));

    auto frame = ColourFrame(37, 23, 8, {{1, 2, 3}});
    SZxGrabberProbe probes[] = {SZxGrabberProbe::Circle(30, 5, 9), SZxGrabberProbe::Circle(18, 11, 4),
                                SZxGrabberProbe::Rect(30, 20, 50, 50), SZxGrabberProbe::Rect(40, 0, 5, 5)};
    SZxAEHistogram h(8, false, true);
    for (SZxGrabberProbe& p : probes) {
        ZX_ComputeHistogramAE(&h, frame.get(), &p);
        EXPECT_EQ(h.uiPixelCount, AutoWhite(frame.get(), 0, 0, 0, &p)[0]);
    }
}

TEST(AccurateAutoWhite, SumsOfALargeBrightFrameAreExactPast53Bits)
{
    // 1024 x 1024 bright unsaturated 16-bit pixels: each sum is about 1.3e16,
    // past 2^53, where adding in doubles drops the low bits.
    auto s = std::make_unique<CZxGrabberSample01>(1024, 1024, 16, 3);
    auto* p = static_cast<uint16_t*>(s->GetDataPtr());
    std::mt19937 rng(7);
    uint64_t sum[3] = {0, 0, 0};   // red, green, blue; positive, so exact in 64 bits
    for (size_t i = 0; i < size_t(1024) * 1024; ++i, p += 3) {
        for (int k = 0; k < 3; ++k)
            p[k] = uint16_t(60000 + rng() % 5535);
        const uint64_t w = uint64_t(p[0]) + p[1] + p[2];
        sum[0] += p[2] * w;
        sum[1] += p[1] * w;
        sum[2] += p[0] * w;
    }
    ASSERT_GT(sum[0], uint64_t(1) << 53);
    const double m = double(std::max({sum[0], sum[1], sum[2]}));
    const std::vector<double> got = AutoWhite(s.get());
    EXPECT_EQ(got[0], 1024.0 * 1024);
    for (int c = 0; c < 3; ++c)
        EXPECT_EQ(got[1 + c], m / double(sum[c])) << "channel " << c;   // exact, not within a few ULPs
}

TEST(AccurateAutoWhite, ReportsBadFramesAndGivesUnitGains)
{
    zxtest::DiagCapture diag;
    ExpectDoubles({0, 1.0, 1.0, 1.0}, AutoWhite(nullptr));
    CZxGrabberSample01 mono(4, 4, 8, 1);
    ExpectDoubles({0, 1.0, 1.0, 1.0}, AutoWhite(&mono));
    EXPECT_EQ(1, diag.Count(L"sample == NULL"));
    EXPECT_EQ(1, diag.Count(L"comp != 3"));
    EXPECT_EQ(0, ZX_AccurateAutoWhite(nullptr, nullptr, nullptr, 0, 0, 0, &mono, nullptr));

    // Odd but accepted input: {counted, red, green, blue gain}, never a report.
    auto frame = ColourFrame(2, 1, 8, {{10, 20, 40}, {20, 40, 80}});
    auto zeroBits = ColourFrame(2, 1, 0, {{0, 0, 0}});   // every pixel at its maximum 0: saturated
    SZxGrabberProbe beside = SZxGrabberProbe::Rect(5, 0, 2, 2), huge = SZxGrabberProbe::Rect(0, 0, ~0u, ~0u);
    const double nan = std::nan("");
    const struct { CZxGrabberSample01* s; double off; SZxGrabberProbe* probe; std::vector<double> want; } odd[] = {
        {frame.get(), nan, nullptr, {2, 1, 2, 4}},        // a NaN offset is no offset
        {frame.get(), 1e300, nullptr, AutoWhite(frame.get(), 1048576.0 / 255, 1048576.0 / 255, 1048576.0 / 255)},  // 2^20 levels
        {frame.get(), 0, &beside, {0, 1, 1, 1}},
        {frame.get(), 0, &huge, {2, 1, 2, 4}},
        {zeroBits.get(), 0, nullptr, {0, 1, 1, 1}},
    };
    for (const auto& c : odd)
        ExpectDoubles(c.want, AutoWhite(c.s, c.off, c.off, c.off, c.probe));
    EXPECT_EQ(diag.Size(), 3u);   // the three refusals above only
}

} // namespace
