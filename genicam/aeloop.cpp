#include "zxgenicam/aeloop.h"

#include <algorithm>
#include <cmath>

#include "zx/status.h"

namespace {

double Number(CZxGenICamCamera& cam, const std::wstring& name, int& status)
{
    SZxGrabberPropertyValue v(name.c_str());
    status = cam.PropGetSingle_WRP(ZX_MODE_FAST, v);
    return v.m_varValue.GetDouble();
}

// Mean sample over the counted pixels, and the same for every sample of a frame.
double HistogramMean(const SZxAEHistogram& h)
{
    double sum = 0.0, n = 0.0;
    for (int c = h.bMono ? 0 : 1; c <= (h.bMono ? 0 : 3); ++c)
        if (const uint32_t* bins = h.pdwHisto[c])
            for (uint32_t i = 0; i < h.uiBinCount; ++i) {
                sum += double(i) * bins[i];
                n += bins[i];
            }
    return n > 0 ? sum / n : 0.0;
}

double FrameMean(const CZxGrabberSample01& f)
{
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    f.GetPicBufNumbers(&w, &h, &bits, &comp);
    const size_t n = size_t(w) * h * comp;
    double sum = 0.0;
    if (bits > 8)
        for (size_t i = 0; i < n; ++i)
            sum += static_cast<const uint16_t*>(f.GetDataPtr())[i];
    else
        for (size_t i = 0; i < n; ++i)
            sum += static_cast<const uint8_t*>(f.GetDataPtr())[i];
    return n ? sum / double(n) : 0.0;
}

} // namespace

CZxGenICamAELoop::CZxGenICamAELoop(CZxGenICamCamera& camera) : m_camera(camera), m_lut(new CZxBaseLUT(16)) {}

CZxGenICamAELoop::~CZxGenICamAELoop() = default;

double CZxGenICamAELoop::FactorOf(double g) const
{
    return m_bGainDb ? std::pow(10.0, (g - m_dGainMin) / 20.0) : 1.0 + (g - m_dGainMin);
}

double CZxGenICamAELoop::GainOf(double factor) const
{
    double g = m_bGainDb ? m_dGainMin + 20.0 * std::log10(std::max(factor, 1.0)) : m_dGainMin + (factor - 1.0);
    // Down to the device's step: the engine's factor is an upper bound, not a target to overshoot.
    if (m_dGainStep > 0.0)
        g = m_dGainMin + std::floor((g - m_dGainMin) / m_dGainStep + 1e-9) * m_dGainStep;
    return std::min(m_dGainMax, std::max(m_dGainMin, g));
}

int CZxGenICamAELoop::Configure(double maxExposureMs)
{
    const std::wstring exposure = m_camera.ExposureName(), gain = m_camera.GainName();
    if (exposure.empty())
        return ZX_E_NOTSUPPORTED;
    SZxGrabberPropertyDesc01 ed;
    if (const int s = m_camera.PropGetDesc_WRP(ZX_MODE_FAST, exposure.c_str(), ed))
        return s;
    const double emin = ed.varValDefinition[L"m_dMin"].GetDouble(), emax = ed.varValDefinition[L"m_dMax"].GetDouble();
    int status = ZX_OK;
    m_frame = SZxAEFrameDesc();
    m_frame.m_dExposure = Number(m_camera, exposure, status);
    if (status)
        return status;
    m_dGainMin = m_dGainMax = m_dGainStep = 0.0;
    m_bGainDb = false;
    SZxGrabberPropertyDesc01 gd;
    uint32_t state = 0;
    const bool hasGain = !gain.empty() && m_camera.PropGetDesc_WRP(ZX_MODE_FAST, gain.c_str(), gd) == ZX_OK &&
                         m_camera.PropState_WRP(ZX_MODE_FAST, gd, state) == ZX_OK && !(state & ZX_PROPSTATE_READONLY);
    if (hasGain) {
        const CZxVariant& d = gd.varValDefinition;
        const bool narrow = d.GetRunType() == CZxVariantRunType(L"RZxRangeInt32");
        m_dGainMin = d[narrow ? L"m_iMin" : L"m_dMin"].GetDouble();
        m_dGainMax = d[narrow ? L"m_iMax" : L"m_dMax"].GetDouble();
        m_dGainStep = d[narrow ? L"m_iStep" : L"m_dStep"].GetDouble();
        const CZxVariant* unit = d.Search(L"m_wstrUnit");
        m_bGainDb = unit && unit->GetCZxStringW().Std() == L"dB";
        m_frame.m_dFactor = FactorOf(Number(m_camera, gain, status));
        if (status)
            return status;
    }

    m_engine = CZxAutoExposure();
    m_engine.m_quantil = SZxAEQuantil{true, 1.0, 0};
    const double limit = std::min(emax, std::max(emin, maxExposureMs));
    m_engine.m_setting1 = SZxAESetting{4.0, limit, 1.0, 1.0, 0.5, 0.85, 0.9};
    m_engine.m_setting2 = m_engine.m_setting1;
    SZxAECameraDesc& c = m_engine.m_cameraDesc[0];
    c = SZxAECameraDesc{};
    c.m_dMaxComplGain = 1.0;
    c.m_dMaxWhiteBalanceGain = 1.0;
    c.m_dMaxFactor = hasGain ? FactorOf(m_dGainMax) : 1.0;
    c.m_dMaxHardWhiteGain = 1.0;
    c.m_dMinExposure = emin;
    c.m_dMaxExposure = limit;
    c.m_dExposureKnee = limit;   // gain only once the exposure is used up
    c.m_dExposureStep = ed.varValDefinition[L"m_dStep"].GetDouble();
    c.m_dMinLevel = 0.0;
    c.m_dMaxLevel = 1.0;
    c.m_dSensitivity = 1.0;
    c.m_dUpperGain = c.m_dLowerGain = 1.0;
    m_engine.m_uiCameraDescCount = 1;
    return ZX_OK;
}

int CZxGenICamAELoop::Step(uint32_t timeoutMs, SZxGenICamAEStep& step)
{
    if (m_engine.m_uiCameraDescCount == 0)
        return ZX_E_FAIL;
    CZxGrabberSample01* raw = nullptr;
    if (const int s = m_camera.NextFrame(timeoutMs, &raw))
        return s;
    std::unique_ptr<CZxGrabberSample01> frame(raw);
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    frame->GetPicBufNumbers(&w, &h, &bits, &comp);
    const bool mono = comp == 1;
    if (!m_hist || m_hist->iMaxBits != int(bits) || m_hist->bHasMono != mono)
        m_hist.reset(new SZxAEHistogram(int(bits), mono, !mono));
    ZX_ComputeHistogramAE(m_hist.get(), frame.get(), m_pProbe);

    step = SZxGenICamAEStep();
    step.m_dExposure = m_frame.m_dExposure;
    step.m_dGain = m_dGainMax > m_dGainMin ? GainOf(m_frame.m_dFactor) : 0.0;
    step.m_dMean = HistogramMean(*m_hist);
    step.m_uiPixels = m_hist->uiPixelCount;

    m_engine.ComputeAE(true, m_uiFlags, m_frame, *m_hist);
    step.m_bExposureGood = m_frame.m_bExposureGood;

    // Only what the device can take is kept: the next frame is measured against it.
    CZxVector_SZxGrabberPropertyValue values(2);
    m_frame.m_dExposure = std::max(m_engine.m_cameraDesc[0].m_dMinExposure,
                                   std::min(m_engine.m_cameraDesc[0].m_dMaxExposure, m_frame.m_dExposure));
    values.Add(SZxGrabberPropertyValue(m_camera.ExposureName().c_str(), m_frame.m_dExposure));
    if (m_dGainMax > m_dGainMin) {
        const double g = GainOf(m_frame.m_dFactor);
        m_frame.m_dFactor = FactorOf(g);
        values.Add(SZxGrabberPropertyValue(m_camera.GainName().c_str(), g));
    }
    if (const int s = m_camera.PropSet_WRP(ZX_MODE_FAST, values, nullptr, false))
        return s;

    SZxBaseProps display;
    display.dGain = m_frame.m_dDisplayGain;
    m_lut->UpdateLUT(display, mono, int(bits));
    m_lut->ApplyLUT(frame.get());
    step.m_dDisplayMean = FrameMean(*frame);
    m_last = std::move(frame);
    return ZX_OK;
}

int CZxGenICamAELoop::Run(int frames, uint32_t timeoutMs, std::vector<SZxGenICamAEStep>& steps)
{
    for (int i = 0; i < frames; ++i) {
        SZxGenICamAEStep step;
        if (const int s = Step(timeoutMs, step))
            return s;
        steps.push_back(step);
    }
    return ZX_OK;
}

int ZxGenICamFramesToGood(const std::vector<SZxGenICamAEStep>& steps)
{
    int first = -1;
    for (size_t i = steps.size(); i-- > 0 && steps[i].m_bExposureGood;)
        first = int(i);
    return first;
}
