// The engine's monochrome steps on hand-computed values.
#include <cmath>
#include <vector>

#include "ae_engine.h"
#include "zx_test.h"

namespace {

// {exposure, factor, gain, requested exposure} of one binning step on setting 1.
std::vector<double> Binning(Engine& ae, unsigned flags, double exposure, double white, double overflow,
                            bool clipped = false, unsigned mode = 0, unsigned target = 0, double factor = 1.0)
{
    double gain = 0, f = 0, e = 0;
    const double requested = ae.ComputeBinningAE(&gain, &f, &e, flags, 1.0, 0.0, mode, factor, exposure, white,
                                                 overflow, ae.m_setting1, target, 1.0, clipped);
    return {e, f, gain, requested};
}

TEST(AEStatistics, QuantileWhiteBlackAndOverflowOnAHandMadeHistogram)
{
    Engine ae;
    ae.m_quantil = SZxAEQuantil{true, 2.4, 0};
    EXPECT_EQ(2u, ae.ComputeQuantilPixels(1000));  // 2.4 + 0.5 truncates to 2
    EXPECT_EQ(1u, ae.ComputeQuantilPixels(100));   // 0.74 truncates to 0, which counts as 1
    EXPECT_EQ(0u, ae.ComputeQuantilPixels(0));
    ae.m_quantil = SZxAEQuantil{false, 0.0, 500};
    EXPECT_EQ(100u, ae.ComputeQuantilPixels(100));  // cut to the pixel count

    std::vector<unsigned> bins(256, 0);
    bins[255] = 1;
    bins[200] = 5;
    bins[100] = 10;
    const unsigned* b = bins.data();
    ae.m_quantil.m_uiPixels = 3;
    auto white = [&](int excluded) { return ae.ComputeWhiteSignal(b, 16, 256, excluded); };
    // Excluded counts that would start the walk outside the bins (-5, 1000) stay inside them.
    ExpectDoubles({200.0 / 255, 100.0 / 196, 200.0 / 255, 0.0}, {white(1), white(60), white(-5), white(1000)});
    ae.m_quantil.m_uiPixels = 2;
    EXPECT_DOUBLE_EQ(200.0 / 254, white(2));  // the top bin is skipped
    EXPECT_DOUBLE_EQ(100.0 / 255, ae.ComputeBlackSignal(b, 16, 256));
    // 255 x 0.79 = 201.45 leaves only the top bin; 254 x 0.79 = 200.66 takes bin 200 too.
    EXPECT_DOUBLE_EQ(1.0 / 16, ae.ComputeOverflow(b, 16, 256, 0.79, 1));
    EXPECT_DOUBLE_EQ(6.0 / 16, ae.ComputeOverflow(b, 16, 256, 0.79, 2));
}

TEST(AEDisplayGainOffset, LimitsAndExposureGood)
{
    Engine ae;
    ExpectDoubles({4.0, 2.0, 4.0, 1.0}, {ae.ComputeAutoGain(0.2, -0.3, 4.0), ae.ComputeAutoGain(0.4, 0.1, 4.0),
                                         ae.ComputeAutoGain(0.1, 0.0, 4.0), ae.ComputeAutoGain(2.0, 0.0, 4.0)});
    ExpectDoubles({-0.05, -0.1, 0.1}, {ae.ComputeAutoOffset(0.05, -0.1, 0.1), ae.ComputeAutoOffset(0.3, -0.1, 0.1),
                                       ae.ComputeAutoOffset(-0.5, -0.1, 0.1)});
    EXPECT_FALSE(ae.ComputeAutoDisplay(0.8, 0.0, 10, 1, 1.0, 0.9, true));  // strict needs above 0.81
    EXPECT_FALSE(ae.ComputeAutoDisplay(1.0, 0.0, 5, 1, 1.0, 0.9, true));  // saturated at the shortest exposures
    EXPECT_TRUE(ae.ComputeAutoDisplay(1.0, 0.04, 6, 1, 1.0, 0.9, true));
    EXPECT_FALSE(ae.ComputeAutoDisplay(1.0, 0.06, 6, 1, 1.0, 0.9, false));
}

TEST(AEBinning, SaturatedStepsByOverflowAndClippingDarkBoostsByThirtyTwoTimesTheSensitivityRatio)
{
    Engine ae;
    const unsigned e = ZX_AE_EXPOSURE, ef = ZX_AE_EXPOSURE | ZX_AE_FACTOR;
    EXPECT_DOUBLE_EQ(6.25, Binning(ae, e, 100, 1.0, 0.6)[0]);
    EXPECT_DOUBLE_EQ(25.0, Binning(ae, e, 100, 1.0, 0.6, true)[0]);
    EXPECT_DOUBLE_EQ(98.0, Binning(ae, e, 100, 1.0, 0.1, true)[0]);  // 1 - 0.1 x 4 x 0.05
    EXPECT_DOUBLE_EQ(25.0, Binning(ae, e, 100, 1.0, 0.2)[0]);
    EXPECT_DOUBLE_EQ(25.0, Binning(ae, e, 100, 1.0, 0.6, false, 1, 0)[0]);  // mode 1 for mode 0: x 4
    // With the factor, the step lowers the factor first, down to 1.
    ExpectDoubles({25.0, 1.0}, Binning(ae, ef, 100, 1.0, 0.6, false, 0, 0, 4.0));
    EXPECT_FALSE(ae.m_bDark);

    EXPECT_DOUBLE_EQ(32.0, Binning(ae, e, 1.0, 0.0, 0.0)[0]);
    EXPECT_TRUE(ae.m_bDark);
    EXPECT_DOUBLE_EQ(8.0, Binning(ae, e, 1.0, 0.0, 0.0, false, 0, 1)[0]);  // 32 x 1/4
    EXPECT_DOUBLE_EQ(100.0, Binning(ae, e, 10.0, 0.0, 0.0)[0]);  // the setting's maximum
    EXPECT_DOUBLE_EQ(320.0, Binning(ae, e, 10.0, 0.0, 0.0)[3]);
    // The factor takes the boost first, up to its maximum of 8; exposure the rest.
    ExpectDoubles({4.0, 8.0}, Binning(ae, ef, 1.0, 0.0, 0.0));
    Binning(ae, e, 1.0, 0.5, 0.0);
    EXPECT_FALSE(ae.m_bDark);
}

TEST(AEBinning, NoiseOptimalSplitAboveTheKneeAndTheFactorAtTheLimit)
{
    Engine ae;
    ae.m_cameraDesc[0].m_dExposureKnee = 2.0;
    // white 0.2 at exposure 2 (0.1 per unit), a = b = 1, level 0: q = 0.2, c = 0.2, h = 0.4,
    // r = sqrt(0.16 + 0.64), x1 = (r - h) / 0.4 = 1.2361, ee = 2 x 2.2361 = 4.472,
    // inside [e1, e2] = [2, 8]; with a step of 0.5 rounded down to 4.0. Gain 1 / (4 x 0.1) = 2.5.
    EXPECT_NEAR(4.4721, Binning(ae, ZX_AE_EXPOSURE, 2.0, 0.2, 0.0)[0], 5e-4);
    ae.m_cameraDesc[0].m_dExposureStep = 0.5;
    ExpectDoubles({4.0, 1.0, 2.5}, Binning(ae, ZX_AE_EXPOSURE, 2.0, 0.2, 0.0));
    // Without the split the high target's exposure (0.9 / 0.1) is taken.
    EXPECT_DOUBLE_EQ(9.0, Binning(ae, ZX_AE_EXPOSURE | ZX_AE_NOSPLIT, 2.0, 0.2, 0.0)[0]);
    // A split gain of 2.236 above the maximum gain 2 sets the exposure to (1/2) / 0.1.
    ae.m_setting1.m_dMaxGain = 2.0;
    EXPECT_DOUBLE_EQ(5.0, Binning(ae, ZX_AE_EXPOSURE, 2.0, 0.2, 0.0)[0]);

    // e2 = 0.8 / 0.1 = 8 is cut to 4, so u = 0.4; the factor sqrt(1 / u) = 1.581
    // lies within [1, 0.8 / u = 2]; the gain tops the white up to full scale.
    Engine limited;
    limited.m_setting1.m_dMaxExposure = 4.0;
    ExpectDoubles({4.0, std::sqrt(2.5), std::sqrt(2.5)},
                  Binning(limited, ZX_AE_EXPOSURE | ZX_AE_FACTOR, 1.0, 0.1, 0.0));
}

// Replays scripted results per target mode and records the modes asked for.
struct ScriptedSearch : Engine {
    std::vector<double> requested, product;
    std::vector<unsigned> asked;

    double ComputeBinningAE(double* gainOut, double* factorOut, double* exposureOut, unsigned, double, double,
                            unsigned, double, double, double, double, const SZxAESetting&, unsigned target, double,
                            bool) override
    {
        asked.push_back(target);
        *gainOut = product[target];
        *factorOut = 1.0;
        *exposureOut = 10.0 + target;
        return requested[target];
    }
    // The mode the search ends in from `start`, given each mode's requested exposure and total gain.
    unsigned Search(unsigned start, std::vector<double> req, std::vector<double> prod, double* exposure = nullptr)
    {
        requested = req;
        product = prod;
        asked.clear();
        unsigned mode = 99;
        ComputeAutoExposure(&mode, nullptr, exposure, nullptr, ZX_AE_MODESEARCH, 1.0, 0.0, start, 1.0, 1.0, 0.5,
                            0.0, m_setting1, 0, 1.0, false);
        return mode;
    }
};

TEST(AEModeSearch, MovesUpDownAndBackAfterAnOvershootWithinTheModes)
{
    ScriptedSearch s;
    const std::vector<double> within{1.8, 1.8, 1.8};  // total gains between the bounds 1.5 and 2
    // More than 1.1 x the maximum exposure (100) in every mode: up to the last mode.
    EXPECT_EQ(2u, s.Search(0, {300, 150, 150}, within));
    EXPECT_EQ((std::vector<unsigned>{0, 1, 2}), s.asked);
    EXPECT_EQ(1u, s.Search(0, {300, 105, 150}, within));  // within 1.1 x maximum: mode 1 is long enough

    // Below 0.9 x maximum with a product under the lower bound: down to mode 0 and no further.
    EXPECT_EQ(0u, s.Search(2, {10, 10, 10}, {1.0, 1.0, 1.0}));
    EXPECT_EQ((std::vector<unsigned>{2, 1, 0}), s.asked);

    // Down from 2 overshoots in mode 1: mode 2 again, with the values evaluated for mode 1.
    double exposure = 0;
    EXPECT_EQ(2u, s.Search(2, {10, 200, 10}, {1.0, 1.8, 1.0}, &exposure));
    EXPECT_EQ((std::vector<unsigned>{2, 1}), s.asked);
    EXPECT_DOUBLE_EQ(11.0, exposure);

    // A total gain above the upper bound moves up too; a start past the modes starts at the last.
    EXPECT_EQ(1u, s.Search(0, {10, 10, 10}, {3.0, 1.8, 1.8}));
    EXPECT_EQ(2u, s.Search(7, {10, 10, 10}, {3.0, 1.8, 1.8}));
    EXPECT_EQ((std::vector<unsigned>{2}), s.asked);
}

// 100 pixels in bin 51 of 256: white 0.2 at exposure 1.
SZxAEHistogram MonoHisto()
{
    SZxAEHistogram h(8, true, false);
    std::fill(h.pdwHisto[0], h.pdwHisto[0] + 256, 0u);
    h.pdwHisto[0][51] = 100;
    h.bMono = true;
    h.uiBinCount = 256;
    h.uiPixelCount = 100;
    return h;
}

struct BlindWhite : Engine {
    double ComputeWhiteSignal(const unsigned*, unsigned, unsigned, int) override { return 0.0; }
};

TEST(AECompute, MonoUsesTheSelectedSettingAndOverriddenSteps)
{
    Engine ae;
    SZxAEHistogram h = MonoHisto();
    SZxAEFrameDesc f1, f2, converted, blind;
    ae.ComputeAE(true, ZX_AE_EXPOSURE | ZX_AE_DISPLAYGAIN, f1, h);
    ae.ComputeAE(false, ZX_AE_EXPOSURE | ZX_AE_STRICT, f2, h);
    // Converting to setting 1: the white sat at setting 2's high target (0.5), so 0.8 / 0.5.
    converted.m_dDisplayGain = 0.5;
    ae.ConvertAE(true, ZX_AE_EXPOSURE, converted, true, false);
    ExpectDoubles({4.0, 5.0, 2.5, 1.6}, {f1.m_dExposure, f1.m_dDisplayGain, f2.m_dExposure, converted.m_dExposure});
    EXPECT_TRUE(f1.m_bExposureGood);
    EXPECT_FALSE(f2.m_bExposureGood);

    BlindWhite b;
    b.ComputeAE(true, ZX_AE_EXPOSURE, blind, h);
    EXPECT_DOUBLE_EQ(32.0, blind.m_dExposure);   // the dark boost: the override's white of 0 was used
}

TEST(AECompute, BadInputIsReportedAndLeavesTheFrameAlone)
{
    CZxAutoExposure ae;
    SZxAEHistogram h = MonoHisto(), colourless(8, true, false);
    SZxAEFrameDesc frame;
    frame.m_dExposure = 3.0;
    {
        zxtest::DiagCapture diag;
        ae.ComputeAE(true, ZX_AE_EXPOSURE, frame, h);  // no descriptions
        ae.m_uiCameraDescCount = 3;
        frame.m_uiCameraMode = 3;
        ae.ComputeAE(true, ZX_AE_EXPOSURE, frame, h);
        ae.ConvertAE(true, ZX_AE_EXPOSURE, frame, true, false);
        frame.m_uiCameraMode = 0;
        ae.ComputeAE(true, ZX_AE_EXPOSURE, frame, colourless);
        EXPECT_EQ(1, diag.Count(L"m_uiCameraDescCount == 0 || m_uiCameraDescCount > kMaxCameraDescs"));
        EXPECT_EQ(2, diag.Count(L"frame.m_uiCameraMode >= m_uiCameraDescCount"));
        EXPECT_EQ(1, diag.Count(L"!hist.pdwHisto[1] || !hist.pdwHisto[2] || !hist.pdwHisto[3]"));
    }
    h.uiPixelCount = 0;  // nothing measured
    ae.ComputeAE(true, ZX_AE_EXPOSURE, frame, h);
    EXPECT_DOUBLE_EQ(3.0, frame.m_dExposure);
}

} // namespace
