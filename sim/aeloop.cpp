#include "zxsim/aeloop.h"

#include <algorithm>

double CZxSimAEEngine::ComputeWhiteSignal(const unsigned* bins, unsigned pixels, unsigned binCount, int excluded)
{
    const double w = CZxAutoExposure::ComputeWhiteSignal(bins, pixels, binCount, excluded);
    m_lastWhite = SZxAEValueRGB(w, w, w);
    return w;
}

SZxAEValueRGB CZxSimAEEngine::ComputeWhiteSignalRGB(const SZxAEHistogram& hist, int excluded)
{
    const SZxAEValueRGB w = CZxAutoExposure::ComputeWhiteSignalRGB(hist, excluded);
    m_lastWhite = w;
    return w;
}

SZxSimAEStep CZxSimAELoop::Step()
{
    m_sensor.SetMode(m_frame.m_uiCameraMode);
    m_sensor.SetExposure(m_frame.m_dExposure);
    m_sensor.SetAnalogFactor(m_frame.m_dFactor);
    m_sensor.SetChannelGains(m_frame.m_dHardWhiteR, m_frame.m_dHardWhiteG, m_frame.m_dHardWhiteB);

    SZxSimAEStep step;
    step.m_uiMode = m_sensor.Mode();
    step.m_dExposure = m_frame.m_dExposure;
    step.m_dFactor = m_frame.m_dFactor;
    step.m_dComplGain = m_frame.m_dComplGain;

    m_engine.ComputeAE(m_bSetting, m_uiFlags, m_frame, *m_live.Count(m_sensor.Capture(), m_pProbe));
    const SZxAEValueRGB& w = m_engine.m_lastWhite;
    step.m_dWhite = std::max({w.m_dRed, w.m_dGreen, w.m_dBlue});
    step.m_dOverflow = m_frame.m_dOverflow;
    step.m_bExposureGood = m_frame.m_bExposureGood;
    return step;
}

std::vector<SZxSimAEStep> CZxSimAELoop::Run(int frames)
{
    std::vector<SZxSimAEStep> steps;
    for (int i = 0; i < frames; ++i)
        steps.push_back(Step());
    return steps;
}

void CZxSimAELoop::SetUpStandardCamera(bool colour, double msToTarget)
{
    const double kBlack = 0.02;
    m_sensor = CZxSimSensor(160, 120, 7);
    m_sensor.SetModes({{1, 1.0}, {2, 4.0}, {4, 16.0}});
    m_sensor.SetBits(12);
    m_sensor.SetOffset(kBlack);
    m_sensor.SetOutput(colour ? EZxSimOutput::ColourBGR : EZxSimOutput::Mono);
    m_sensor.SetResponse(1.0, 0.8, 0.55);
    m_sensor.SetSceneBrightness(0.85 / msToTarget);
    m_sensor.SetFullWell(20000.0);
    m_sensor.SetReadNoise(0.0005);

    m_engine = CZxSimAEEngine();
    m_engine.m_quantil = SZxAEQuantil{true, 1.0, 0};
    // Live and capture differ only in how long an exposure they accept.
    m_engine.m_setting1 = SZxAESetting{4.0, 1000.0, 1.0, 1.0, 0.5, 0.85, 0.9};
    m_engine.m_setting2 = SZxAESetting{4.0, 4000.0, 1.0, 1.0, 0.5, 0.85, 0.9};
    const std::vector<SZxSimSensorMode>& modes = m_sensor.Modes();
    for (size_t i = 0; i < modes.size(); ++i) {
        SZxAECameraDesc& d = m_engine.m_cameraDesc[i];
        d = SZxAECameraDesc{};
        d.m_dMaxComplGain = 2.0;
        d.m_dMaxWhiteBalanceGain = 4.0;
        d.m_dMinOffset = d.m_dMinBlackOffset = -0.1;
        d.m_dMaxOffset = d.m_dMaxBlackOffset = 0.1;
        d.m_dMaxFactor = 8.0;
        d.m_dMaxHardWhiteGain = 4.0;
        d.m_dMinExposure = 0.01;
        d.m_dMaxExposure = 4000.0;
        d.m_dExposureKnee = 4000.0;  // no split: the sensor's noise is all shot and read noise
        d.m_dExposureStep = 0.01;
        d.m_dMinLevel = kBlack;
        d.m_dMaxLevel = 1.0;
        d.m_dSensitivity = modes[i].m_dSensitivity;
        d.m_dUpperGain = 4.0;
        // The total gain never falls below 1, so the search never steps down on
        // its own. A bound above the settled gain would try the finer mode every
        // frame, and a down move that overshoots keeps the finer mode's exposure
        // in the coarser mode: the next frame is over-exposed by the sensitivity
        // ratio, and in the saturated case with little overflow the search then
        // reproduces its input (the step times the ratio is 1) and stays there.
        d.m_dLowerGain = 1.0;
    }
    m_engine.m_uiCameraDescCount = uint32_t(modes.size());

    m_frame = SZxAEFrameDesc();
    m_uiFlags = ZX_AE_EXPOSURE | ZX_AE_FACTOR | ZX_AE_STRICT;
    if (colour)
        m_uiFlags |= ZX_AE_OFFSET | ZX_AE_BLACKOFFSETS | ZX_AE_WHITEBALANCE | ZX_AE_HARDWHITE;
    m_bSetting = true;
    m_pProbe = nullptr;
    m_live.Reset();
}

int ZxSimFramesToGood(const std::vector<SZxSimAEStep>& steps)
{
    int first = -1;
    for (size_t i = steps.size(); i-- > 0 && steps[i].m_bExposureGood;)
        first = int(i);
    return first;
}
