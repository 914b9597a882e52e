// The engine in a closed loop with the simulated sensor, and the sensor itself.
#include <algorithm>
#include <array>
#include <cstring>

#include "zx/autoexposure.h"
#include "zx_frames.h"
#include "zx_test.h"
#include "zxsim/aeloop.h"

namespace {

// Every frame in the linear range corrects the exposure fully. From black: one
// noise-only frame (its estimate is off by orders of magnitude), one to reach
// the linear range, one to land; from saturated: factor, then exposure down
// (0.25 steps at 21% overflow), one to land. Colour adds up to two frames while
// the hard white gains settle. 8 leaves three frames of margin for noise.
const int kBound = 8;
const int kStay = 20;

std::vector<SZxSimAEStep> RunFrom(CZxSimAELoop& loop, bool colour, bool search, bool saturated, double msToTarget)
{
    loop.SetUpStandardCamera(colour, msToTarget);
    if (search)
        loop.m_uiFlags |= ZX_AE_MODESEARCH;
    loop.m_frame.m_dExposure = saturated ? 1000.0 : 0.01;
    loop.m_frame.m_dFactor = saturated ? 8.0 : 1.0;
    return loop.Run(kBound + 1 + kStay);
}

TEST(AEClosedLoop, ReachesExposureGoodFromDarkAndSaturatedAndStaysThere)
{
    // The middle target (0.85 of the range above black 0.02) takes 600 ms x 0.98
    // in mode 0; in the dim scene 3000 ms, so the search settles in mode 1 (x 4).
    // Without the search the exposure stops at its limit and the factor leaves
    // the rest to the complementary gain: the raw white stays below the strict test.
    struct { double ms; bool search; unsigned mode; double exposure; bool good; } scenes[] = {
        {600, false, 0, 588, true}, {600, true, 0, 588, true}, {3000, true, 1, 735, true},
        {3000, false, 0, 1000, false}};
    for (const auto& scene : scenes)
        for (bool colour : {false, true})
            for (bool saturated : {false, true}) {
                SCOPED_TRACE(testing::Message() << scene.ms << " ms search " << scene.search << " colour " << colour
                                                << " saturated " << saturated);
                CZxSimAELoop loop;
                const std::vector<SZxSimAEStep> steps = RunFrom(loop, colour, scene.search, saturated, scene.ms);
                const int n = ZxSimFramesToGood(steps);
                EXPECT_TRUE(scene.good ? n >= 0 && n <= kBound : n == -1) << n;
                EXPECT_EQ(scene.mode, steps.back().m_uiMode);
                // Noise moves a converged exposure a little; the limit holds exactly.
                EXPECT_NEAR(scene.exposure, steps.back().m_dExposure, scene.good ? scene.exposure * 0.03 : 0.0);
            }
}

// Means above black of red, green, blue over the specimen's core.
std::array<double, 3> CoreMeans(CZxGrabberSample01& frame)
{
    SZxPicBuf pb;
    frame.GetPicBuf(&pb);
    std::array<double, 3> sum{0, 0, 0};
    int n = 0;
    for (uint32_t y = 50; y < 70; ++y)
        for (uint32_t x = 70; x < 90; ++x, ++n)
            for (int c = 0; c < 3; ++c)
                sum[2 - c] += zxtest::SampleAt(pb, (size_t(y) * pb.uiWidth + x) * 3 + c) - 0.02 * 4095;
    for (double& s : sum) s /= n;
    return sum;
}

double Spread(const std::array<double, 3>& v)
{
    return *std::max_element(v.begin(), v.end()) / *std::min_element(v.begin(), v.end()) - 1.0;
}

TEST(AEClosedLoop, WhiteBalanceOfACastEqualisesTheChannels)
{
    // In the camera: the hard white gains balance the raw channels.
    CZxSimAELoop loop;
    RunFrom(loop, true, false, false, 600.0);
    EXPECT_LT(Spread(CoreMeans(*loop.LastFrame())), 0.02);

    // On the display side: the white-balance gains balance the raw cast.
    loop.SetUpStandardCamera(true, 600.0);
    loop.m_uiFlags &= ~ZX_AE_HARDWHITE;
    loop.Run(10);
    std::array<double, 3> m = CoreMeans(*loop.LastFrame());
    EXPECT_GT(Spread(m), 0.5);
    m[0] *= loop.m_frame.m_dWhiteBalanceR;
    m[1] *= loop.m_frame.m_dWhiteBalanceG;
    m[2] *= loop.m_frame.m_dWhiteBalanceB;
    EXPECT_LT(Spread(m), 0.02);
}

bool SameFrames(CZxGrabberSample01& a, CZxGrabberSample01& b)
{
    return a.GetDataSize() == b.GetDataSize() && !std::memcmp(a.GetDataPtr(), b.GetDataPtr(), a.GetDataSize());
}

// Sample i of a fresh noise-free frame, less the black level.
double Sample(CZxSimSensor& s, size_t i)
{
    s.SetFullWell(0);
    s.SetReadNoise(0);
    SZxPicBuf pb;
    auto f = s.Capture();
    f->GetPicBuf(&pb);
    return double(zxtest::SampleAt(pb, i)) - s.Offset() * ((1 << s.Bits()) - 1);
}

TEST(SimSensor, SameSeedSameFramesColourCastInMemoryOrderAndBayerSitesTakeTheirChannel)
{
    CZxSimSensor a(64, 48, 5), b(64, 48, 5);
    EXPECT_TRUE(SameFrames(*a.Capture(), *b.Capture()));
    EXPECT_FALSE(SameFrames(*a.Capture(), *a.Capture()));
    a.SetOffset(0.01);
    a.SetExposure(1e6);  // saturates at full scale, no wrap
    EXPECT_DOUBLE_EQ(4095 - 0.01 * 4095, Sample(a, 24 * 64 + 32));

    CZxSimSensor s(16, 12, 1);
    s.SetBits(16);
    s.SetResponse(1.0, 0.5, 0.25);
    s.SetSceneBrightness(0.4);
    s.SetOutput(EZxSimOutput::ColourBGR);
    const size_t px = 6 * 16 + 8;  // even row, even column, inside the specimen
    EXPECT_NEAR(4.0, Sample(s, px * 3 + 2) / Sample(s, px * 3), 0.01);
    // Sites (even, even), (even, odd), (odd, odd): R G B for RGGB, G B G for GBRG.
    const size_t sites[3] = {px, px + 1, px + 17};
    const int want[2][3] = {{2, 1, 0}, {1, 0, 1}};
    for (int order = 0; order < 2; ++order)
        for (int i = 0; i < 3; ++i) {
            s.SetOutput(EZxSimOutput::ColourBGR);
            const double colour = Sample(s, sites[i] * 3 + want[order][i]);
            s.SetOutput(EZxSimOutput::Bayer);
            s.SetBayerOrder(order ? EZxSimBayerOrder::GBRG : EZxSimBayerOrder::RGGB);
            EXPECT_EQ(colour, Sample(s, sites[i]));
        }
}

} // namespace
