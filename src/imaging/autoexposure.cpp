#include "zx/autoexposure.h"

#include <algorithm>
#include <cmath>

#include "imaging/channels.h"
#include "zxhost/system.h"

namespace {

const wchar_t* const kSource = L"autoexposure";

// Lower bound wins when the bounds cross, so a bad description cannot push a
// value below the minimum the camera accepts.
double Clamp(double v, double lo, double hi)
{
    if (v > hi)
        v = hi;
    if (v < lo)
        v = lo;
    return v;
}

// Bins of a channel to hand to the statistics: the histogram's bin count, or
// the clip limit plus one, never more than were counted or allocated (a record
// filled by hand may claim more). Clip limits are kept per sample in memory
// order, as the histogram applies them, so a colour channel is named by its sample.
unsigned StatBins(const SZxAEHistogram& h, unsigned clip)
{
    const uint64_t counted = std::min(h.uiBinCount, h.AllocatedBins());
    if (!h.pdwClipLimits)
        return unsigned(counted);
    return unsigned(std::min<uint64_t>(uint64_t(h.pdwClipLimits[clip]) + 1, counted));
}

} // namespace

CZxAutoExposure::CZxAutoExposure()
    : m_dDarkBoost(32.0), m_bDark(false), m_dOverflowLimit(0.0), m_dOverflowSteps{0.5, 0.5, 0.25, 0.125, 0.0625}
{
}

const SZxAECameraDesc& CZxAutoExposure::Desc(unsigned index) const
{
    const uint32_t count = std::min(m_uiCameraDescCount, kMaxCameraDescs);
    if (count == 0)
        return m_cameraDesc[0];
    return m_cameraDesc[std::min(index, count - 1)];
}

void CZxAutoExposure::ComputeAE(bool mode, unsigned flags, SZxAEFrameDesc& frame, const SZxAEHistogram& hist)
{
    if (ZX_DIAG_FAIL_IF(m_uiCameraDescCount == 0 || m_uiCameraDescCount > kMaxCameraDescs, kSource) ||
        ZX_DIAG_FAIL_IF(frame.m_uiCameraMode >= m_uiCameraDescCount, kSource))
        return;
    if (hist.bMono) {
        if (ZX_DIAG_FAIL_IF(hist.pdwHisto[0] == NULL, kSource))
            return;
    } else if (ZX_DIAG_FAIL_IF(!hist.pdwHisto[1] || !hist.pdwHisto[2] || !hist.pdwHisto[3], kSource)) {
        return;
    }
    if (hist.uiPixelCount == 0 || hist.uiBinCount < 2)
        return;
    if (hist.bMono)
        ComputeMonoAE(mode, flags, frame, hist);
    else
        ComputeColorAE(mode, flags, frame, hist);
}

void CZxAutoExposure::ConvertAE(bool mode, unsigned flags, SZxAEFrameDesc& frame, bool mono, bool clipped)
{
    if (ZX_DIAG_FAIL_IF(m_uiCameraDescCount == 0 || m_uiCameraDescCount > kMaxCameraDescs, kSource) ||
        ZX_DIAG_FAIL_IF(frame.m_uiCameraMode >= m_uiCameraDescCount, kSource))
        return;
    const SZxAECameraDesc desc = Desc(frame.m_uiCameraMode);
    const double lo = desc.m_dMinLevel, hi = desc.m_dMaxLevel;
    const SZxAESetting& dst = mode ? m_setting1 : m_setting2;
    // Deliberate: the signal was measured under the other setting, so its high
    // target says where the white was; the new values use this one.
    const SZxAESetting& src = mode ? m_setting2 : m_setting1;
    const double interpolated = (hi - lo) * src.m_dHighTarget + lo;

    if (mono) {
        const double w = frame.m_dDisplayGain < 1.0
                             ? interpolated
                             : std::min(hi / frame.m_dDisplayGain - frame.m_dOffset, hi - 1e-9);
        ComputeAutoExposure(&frame.m_uiCameraMode, &frame.m_dFactor, &frame.m_dExposure, &frame.m_dDisplayGain, flags,
                            1.0, frame.m_dOffset, frame.m_uiCameraMode, frame.m_dFactor, frame.m_dExposure, w, 0.0,
                            dst, frame.m_uiAltCameraMode, frame.m_dAltFactor, clipped);
        return;
    }
    auto channel = [&](double wb, double black) {
        return frame.m_dDisplayGain < 1.0
                   ? interpolated
                   : std::min(hi / (frame.m_dDisplayGain * wb) - (frame.m_dOffset + black), hi - 1e-9);
    };
    const SZxAEValueRGB white(channel(frame.m_dWhiteBalanceR, frame.m_dBlackOffsetR),
                              channel(frame.m_dWhiteBalanceG, frame.m_dBlackOffsetG),
                              channel(frame.m_dWhiteBalanceB, frame.m_dBlackOffsetB));
    const SZxAEValueRGB overflow(0.0, 0.0, 0.0);
    ComputeAutoExposureRGB(&frame.m_uiCameraMode, &frame.m_dFactor, &frame.m_dExposure, &frame.m_dDisplayGain, flags,
                           frame, white, overflow, dst, clipped);
}

void CZxAutoExposure::ComputeMonoAE(bool mode, unsigned flags, SZxAEFrameDesc& frame, const SZxAEHistogram& hist)
{
    const SZxAESetting& setting = mode ? m_setting1 : m_setting2;
    const SZxAECameraDesc desc = Desc(frame.m_uiCameraMode);
    const unsigned* bins = hist.pdwHisto[0];
    const unsigned pixels = hist.uiPixelCount, binCount = StatBins(hist, 0);
    const int excluded = int(frame.m_uiExcludedTopBins);

    const double white = ComputeWhiteSignal(bins, pixels, binCount, excluded);
    const double overflow = ComputeOverflow(bins, pixels, binCount, desc.m_dMaxLevel, excluded);
    frame.m_dOverflow = overflow;
    frame.m_bExposureGood = ComputeAutoDisplay(white, overflow, frame.m_dExposure, desc.m_dMinExposure,
                                               desc.m_dMaxLevel, setting.m_dHighTarget, (flags & ZX_AE_STRICT) != 0);
    if (flags & ZX_AE_OFFSET)
        frame.m_dOffset = ComputeAutoOffset(ComputeBlackSignal(bins, pixels, binCount), desc.m_dMinOffset,
                                            desc.m_dMaxOffset);
    if (flags & ZX_AE_DISPLAYGAIN)
        frame.m_dDisplayGain = ComputeAutoGain(white, frame.m_dOffset, setting.m_dMaxGain);
    if (flags & (ZX_AE_MODESEARCH | ZX_AE_FACTOR | ZX_AE_EXPOSURE))
        ComputeAutoExposure(&frame.m_uiCameraMode, &frame.m_dFactor, &frame.m_dExposure, &frame.m_dComplGain, flags,
                            1.0, frame.m_dOffset, frame.m_uiCameraMode, frame.m_dFactor, frame.m_dExposure, white,
                            overflow, setting, frame.m_uiAltCameraMode, frame.m_dAltFactor,
                            hist.pdwClipLimits != nullptr);
}

bool CZxAutoExposure::ComputeAutoDisplay(double white, double overflow, double exposure, double minExposure,
                                         double maxLevel, double highTarget, bool strict)
{
    if (white < maxLevel)
        return !strict || white > 0.9 * highTarget * maxLevel;
    // Saturated at (nearly) the shortest exposure: nothing better is reachable.
    if (!(exposure > 5.0 * minExposure))
        return !strict;
    return overflow < 0.05;
}

double CZxAutoExposure::ComputeAutoGain(double white, double offset, double maxGain)
{
    const double sum = white + offset;
    const double g = sum > 0.0 ? 1.0 / sum : maxGain;
    return std::max(1.0, std::min(g, maxGain));
}

double CZxAutoExposure::ComputeAutoOffset(double black, double minOffset, double maxOffset)
{
    return Clamp(-black, minOffset, maxOffset);
}

void CZxAutoExposure::ComputeAutoExposure(unsigned* modeOut, double* factorOut, double* exposureOut,
                                          double* gainOut, unsigned flags, double gain, double offset, unsigned mode,
                                          double factor, double exposure, double white, double overflow,
                                          const SZxAESetting& setting, unsigned altMode, double altFactor,
                                          bool clipped)
{
    const unsigned count = std::max(1u, std::min(m_uiCameraDescCount, kMaxCameraDescs));
    unsigned cur = std::min((flags & ZX_AE_ALTMODE) ? altMode : mode, count - 1);
    double g = gain, f = factor, e = exposure;

    if (!(flags & ZX_AE_MODESEARCH)) {
        ComputeBinningAE(&g, &f, &e, flags, gain, offset, mode, factor, exposure, white, overflow, setting, cur,
                         altFactor, clipped);
    } else {
        unsigned prev = cur;
        for (;;) {
            const double requested = ComputeBinningAE(&g, &f, &e, flags, gain, offset, mode, factor, exposure, white,
                                                      overflow, setting, cur, altFactor, clipped);
            const double p = g * f;
            const SZxAECameraDesc& d = Desc(cur);
            const bool up = p > d.m_dUpperGain || requested > 1.1 * setting.m_dMaxExposure;
            const bool down = p < d.m_dLowerGain && requested < 0.9 * setting.m_dMaxExposure;
            unsigned next = cur;
            if (prev < cur) {
                if (up && cur < count - 1)
                    next = cur + 1;
            } else if (cur < prev) {
                if (down && cur > 0) {
                    next = cur - 1;
                } else if (!down) {
                    // Deliberate: an overshoot downward settles on the higher mode
                    // but keeps the values evaluated for the lower one.
                    cur = prev;
                    break;
                }
            } else if (up) {
                if (cur < count - 1)
                    next = cur + 1;
            } else if (down && cur > 0) {
                next = cur - 1;
            }
            if (next == cur)
                break;
            prev = cur;
            cur = next;
        }
    }
    if (modeOut)
        *modeOut = cur;
    if (factorOut)
        *factorOut = f;
    if (exposureOut)
        *exposureOut = e;
    if (gainOut)
        *gainOut = g;
}

unsigned CZxAutoExposure::ComputeQuantilPixels(unsigned pixels)
{
    double q = m_quantil.m_uiPixels;
    if (m_quantil.m_bRelative) {
        q = m_quantil.m_dPromile / 1000.0 * pixels + 0.5;
        if (!(q > 0.0))
            q = 0.0;
    }
    unsigned n = q >= double(pixels) ? pixels : unsigned(q);
    if (n == 0)
        n = 1;
    return std::min(n, pixels);
}

double CZxAutoExposure::ComputeWhiteSignal(const unsigned* bins, unsigned pixels, unsigned binCount, int excluded)
{
    if (!bins || binCount < 2)
        return 0.0;
    // Fewer than one excluded bin would start above the top; all of them would leave nothing.
    const unsigned range = binCount - unsigned(std::min<int64_t>(std::max(excluded, 1), binCount - 1));
    const unsigned q = ComputeQuantilPixels(pixels);
    uint64_t sum = 0;
    unsigned i = range;
    for (;; --i) {
        sum += bins[i];
        if (sum >= q || i == 0)
            break;
    }
    return double(i) / range;
}

double CZxAutoExposure::ComputeBlackSignal(const unsigned* bins, unsigned pixels, unsigned binCount)
{
    if (!bins || binCount < 2)
        return 0.0;
    const unsigned q = ComputeQuantilPixels(pixels);
    uint64_t sum = 0;
    unsigned i = 0;
    for (;; ++i) {
        sum += bins[i];
        if (sum >= q || i == binCount - 1)
            break;
    }
    return double(i) / (binCount - 1);
}

double CZxAutoExposure::ComputeOverflow(const unsigned* bins, unsigned pixels, unsigned binCount, double level,
                                        int excluded)
{
    if (!bins || pixels == 0 || binCount == 0)
        return 0.0;
    const double s = std::trunc((double(binCount) - excluded) * level);
    if (!(s < binCount))
        return 0.0;
    uint64_t sum = 0;
    for (unsigned i = s > 0.0 ? unsigned(s) : 0u; i < binCount; ++i)
        sum += bins[i];
    return double(sum) / pixels;
}

double CZxAutoExposure::ComputeBinningAE(double* gainOut, double* factorOut, double* exposureOut, unsigned flags,
                                         double gain, double offset, unsigned mode, double factor, double exposure,
                                         double white, double overflow, const SZxAESetting& setting,
                                         unsigned targetMode, double altFactor, bool clipped)
{
    const SZxAECameraDesc& rb = Desc(mode);
    const SZxAECameraDesc& rt = Desc(targetMode);
    const double A = factor, E = exposure;
    m_bDark = false;
    double g = gain;
    double cf = (flags & ZX_AE_ALTFACTOR) ? altFactor : A;
    double e = E;
    double requested = E;

    if (white >= rb.m_dMaxLevel && overflow > m_dOverflowLimit) {
        double m;
        if (!clipped) {
            m = overflow < 0.01    ? m_dOverflowSteps[0]
                : overflow < 0.125 ? m_dOverflowSteps[1]
                : overflow < 0.25  ? m_dOverflowSteps[2]
                : overflow < 0.5   ? m_dOverflowSteps[3]
                                   : m_dOverflowSteps[4];
        } else {
            // Clipped frames hide how far above full scale they are: step gently.
            m = 1.0 - overflow * 4.0 * 0.05;
            if (overflow > 0.25)
                m = m_dOverflowSteps[1];
            if (overflow > 0.5)
                m = m_dOverflowSteps[2];
        }
        m *= rb.m_dSensitivity / rt.m_dSensitivity;
        g = 1.0;
        if (m < 1.0) {
            if (flags & ZX_AE_FACTOR) {
                const double c = std::max(m * A, 1.0);
                m *= A / c;
                cf = c;
            } else if (flags & ZX_AE_ALTFACTOR) {
                m *= A / cf;
            }
            if (flags & ZX_AE_EXPOSURE) {
                requested = m * E;
                e = Clamp(requested, rt.m_dMinExposure, setting.m_dMaxExposure);
            }
        }
    } else if (white <= rb.m_dMinLevel) {
        m_bDark = true;
        double m = rb.m_dSensitivity / rt.m_dSensitivity * m_dDarkBoost;
        g = 1.0;
        if (m > 1.0) {
            if (flags & ZX_AE_FACTOR) {
                cf = std::min(m * A, rt.m_dMaxFactor);
                m *= A / cf;
            } else if (flags & ZX_AE_ALTFACTOR) {
                m *= A / cf;
            }
            if (flags & ZX_AE_EXPOSURE) {
                requested = m * E;
                e = Clamp(requested, rt.m_dMinExposure, setting.m_dMaxExposure);
            }
        }
    } else {
        const double lmin = rt.m_dMinLevel;
        const double level = lmin + offset;
        const double k = (white - rb.m_dMinLevel) / (A * rb.m_dSensitivity) * rt.m_dSensitivity;
        double T[3] = {setting.m_dLowTarget, setting.m_dMiddleTarget, setting.m_dHighTarget};
        const double cap = std::max(0.01, 1.0 / gain - level);
        for (double& t : T) {
            if (offset > 0.0)
                t = (1.0 - lmin - offset) * t;
            else if (level >= 0.0)
                t = (1.0 - lmin) * t;
            else
                t = (level + 1.0 - lmin) * t - level;
            t = std::min(t, cap);
        }

        if (flags & ZX_AE_EXPOSURE) {
            const double d = (flags & ZX_AE_FACTOR) ? k : (flags & ZX_AE_ALTFACTOR) ? k * cf : k * A;
            const double e1 = T[0] / d * E, e3 = T[2] / d * E;
            double e2 = T[1] / d * E;
            // Deliberate: a clipped histogram understates the white, so only go halfway.
            if (clipped)
                e2 = (e2 + E) / 2.0;
            const double knee = rt.m_dExposureKnee;
            requested = e2;
            if (knee < e2 && !(flags & ZX_AE_NOSPLIT)) {
                // Above the knee, split the remaining step between exposure and
                // gain so that the noise a*gain + b*exposure is least.
                const double a = setting.m_dNoiseGain, b = setting.m_dNoiseExposure;
                const double q = knee / E * k;
                const double c = a * b * q;
                const double h = (a + b) * q + a * level;
                const double r = std::sqrt(h * h - 4.0 * c * (q + level - 1.0));
                const double x1 = (r - h) / (2.0 * c), x2 = (-h - r) / (2.0 * c);
                double gg, ee;
                if (x1 > 0.0) {
                    gg = x1 * a + 1.0;
                    ee = (x1 * b + 1.0) * knee;
                } else if (x2 > 0.0) {
                    gg = x2 * a + 1.0;
                    ee = (x2 * b + 1.0) * knee;
                } else {
                    gg = 1.0 / (k / E * knee + level);
                    ee = knee;
                }
                if (gg > setting.m_dMaxGain)
                    ee = (1.0 / setting.m_dMaxGain - level) / (k / E);
                requested = Clamp(ee, e1, e2);
            } else if (knee < e2) {
                requested = std::max(e3, knee);
            }
            if (requested != knee && rt.m_dExposureStep > 0.0)
                requested = std::floor(requested / rt.m_dExposureStep) * rt.m_dExposureStep;
            e = Clamp(requested, rt.m_dMinExposure, setting.m_dMaxExposure);
        }
        e = Clamp(e, rt.m_dMinExposure, rt.m_dMaxExposure);

        if (flags & ZX_AE_FACTOR) {
            const double u = e / E * k;
            const double f1 = std::max(T[0] / u, 1.0), f2 = std::max(T[1] / u, 1.0);
            // The factor that brings the white to full scale: root of u x^2 + level x - 1 = 0.
            const double disc = std::sqrt(level * level + 4.0 * u);
            double x = 1.0;
            if ((disc - level) / (2.0 * u) > 1.0)
                x = (disc - level) / (2.0 * u);
            else if ((-disc - level) / (2.0 * u) > 1.0)
                x = (-disc - level) / (2.0 * u);
            x = Clamp(x, f1, f2);
            cf = x < 1.0 ? 1.0 : std::min(x, rt.m_dMaxFactor);
        }
        const double gNew = 1.0 / (e / E * k * cf + level);
        g = gNew >= gain ? std::min(gNew, rt.m_dMaxComplGain) : gain;
    }

    if (gainOut)
        *gainOut = g;
    if (factorOut)
        *factorOut = cf;
    if (exposureOut)
        *exposureOut = e;
    return requested;
}

// ---- Colour ------------------------------------------------------------------

// Each channel in its own statement, red, green, blue: an override of a step sees
// that order, not whatever order a compiler evaluates constructor arguments in.
SZxAEValueRGB CZxAutoExposure::ComputeWhiteSignalRGB(const SZxAEHistogram& h, int excluded)
{
    const double r = ComputeWhiteSignal(h.pdwHisto[zx::kRedBuffer], h.uiPixelCount, StatBins(h, zx::kRed), excluded);
    const double g = ComputeWhiteSignal(h.pdwHisto[zx::kGreenBuffer], h.uiPixelCount,
                                        StatBins(h, zx::kGreen), excluded);
    const double b = ComputeWhiteSignal(h.pdwHisto[zx::kBlueBuffer], h.uiPixelCount, StatBins(h, zx::kBlue), excluded);
    return SZxAEValueRGB(r, g, b);
}

SZxAEValueRGB CZxAutoExposure::ComputeBlackSignalRGB(const SZxAEHistogram& h)
{
    const double r = ComputeBlackSignal(h.pdwHisto[zx::kRedBuffer], h.uiPixelCount, StatBins(h, zx::kRed));
    const double g = ComputeBlackSignal(h.pdwHisto[zx::kGreenBuffer], h.uiPixelCount, StatBins(h, zx::kGreen));
    const double b = ComputeBlackSignal(h.pdwHisto[zx::kBlueBuffer], h.uiPixelCount, StatBins(h, zx::kBlue));
    return SZxAEValueRGB(r, g, b);
}

SZxAEValueRGB CZxAutoExposure::ComputeOverflowRGB(const SZxAEHistogram& h, double level, int excluded)
{
    const double r = ComputeOverflow(h.pdwHisto[zx::kRedBuffer], h.uiPixelCount,
                                     StatBins(h, zx::kRed), level, excluded);
    const double g = ComputeOverflow(h.pdwHisto[zx::kGreenBuffer], h.uiPixelCount,
                                     StatBins(h, zx::kGreen), level, excluded);
    const double b = ComputeOverflow(h.pdwHisto[zx::kBlueBuffer], h.uiPixelCount,
                                     StatBins(h, zx::kBlue), level, excluded);
    return SZxAEValueRGB(r, g, b);
}

bool CZxAutoExposure::ComputeAutoDisplayRGB(const SZxAEValueRGB& white, const SZxAEValueRGB& overflow,
                                            double exposure, double minExposure, double maxLevel, double highTarget,
                                            bool strict)
{
    // Every channel is asked, even after one said no: an override may count calls.
    const bool r = ComputeAutoDisplay(white.m_dRed, overflow.m_dRed, exposure, minExposure, maxLevel, highTarget,
                                      strict);
    const bool g = ComputeAutoDisplay(white.m_dGreen, overflow.m_dGreen, exposure, minExposure, maxLevel,
                                      highTarget, strict);
    const bool b = ComputeAutoDisplay(white.m_dBlue, overflow.m_dBlue, exposure, minExposure, maxLevel, highTarget,
                                      strict);
    return r && g && b;
}

void CZxAutoExposure::ComputeAutoWhiteRGB(SZxAEValueRGB& gains, const SZxAEValueRGB& white, double offset,
                                          const SZxAEValueRGB& black, double maximum)
{
    const double r = ComputeAutoGain(white.m_dRed, offset + black.m_dRed, 100.0);
    const double g = ComputeAutoGain(white.m_dGreen, offset + black.m_dGreen, 100.0);
    const double b = ComputeAutoGain(white.m_dBlue, offset + black.m_dBlue, 100.0);
    const double m = std::min({r, g, b});
    gains = SZxAEValueRGB(std::min(r / m, maximum), std::min(g / m, maximum), std::min(b / m, maximum));
}

void CZxAutoExposure::ComputeAutoBlackRGB(SZxAEValueRGB& offsets, const SZxAEValueRGB& black, double low,
                                          double high)
{
    const double r = ComputeAutoOffset(black.m_dRed, -100.0, 100.0);
    const double g = ComputeAutoOffset(black.m_dGreen, -100.0, 100.0);
    const double b = ComputeAutoOffset(black.m_dBlue, -100.0, 100.0);
    const double m = std::max({r, g, b});
    offsets = SZxAEValueRGB(Clamp(r - m, low, high), Clamp(g - m, low, high), Clamp(b - m, low, high));
}

void CZxAutoExposure::ComputeAutoHardWhiteRGB(SZxAEValueRGB& gains, const SZxAEValueRGB& white, double offset,
                                              const SZxAEValueRGB& black, double maximum)
{
    const double r = ComputeAutoGain(white.m_dRed, offset + black.m_dRed, 100.0) * gains.m_dRed;
    const double g = ComputeAutoGain(white.m_dGreen, offset + black.m_dGreen, 100.0) * gains.m_dGreen;
    const double b = ComputeAutoGain(white.m_dBlue, offset + black.m_dBlue, 100.0) * gains.m_dBlue;
    const double m = std::min({r, g, b});
    gains = SZxAEValueRGB(std::min(r / m, maximum), std::min(g / m, maximum), std::min(b / m, maximum));
}

double CZxAutoExposure::ComputeAutoGainRGB(const SZxAEValueRGB& white, const SZxAEValueRGB& wb, double offset,
                                           const SZxAEValueRGB& black, double maximum)
{
    const double r = ComputeAutoGain(white.m_dRed, offset + black.m_dRed, 1000.0) / wb.m_dRed;
    const double g = ComputeAutoGain(white.m_dGreen, offset + black.m_dGreen, 1000.0) / wb.m_dGreen;
    const double b = ComputeAutoGain(white.m_dBlue, offset + black.m_dBlue, 1000.0) / wb.m_dBlue;
    return Clamp(std::min({r, g, b}), 1.0, maximum);
}

double CZxAutoExposure::ComputeAutoOffsetRGB(const SZxAEValueRGB& black, const SZxAEValueRGB& blackOffsets,
                                             double low, double high)
{
    const double r = ComputeAutoOffset(black.m_dRed, -1000.0, 1000.0) + blackOffsets.m_dRed;
    const double g = ComputeAutoOffset(black.m_dGreen, -1000.0, 1000.0) + blackOffsets.m_dGreen;
    const double b = ComputeAutoOffset(black.m_dBlue, -1000.0, 1000.0) + blackOffsets.m_dBlue;
    return Clamp(std::max({r, g, b}), low, high);
}

void CZxAutoExposure::ComputeAutoExposureRGB(unsigned* modeOut, double* factorOut, double* exposureOut,
                                             double* gainOut, unsigned flags, const SZxAEFrameDesc& frame,
                                             const SZxAEValueRGB& white, const SZxAEValueRGB& overflow,
                                             const SZxAESetting& setting, bool clipped)
{
    const double wb[3] = {frame.m_dWhiteBalanceR, frame.m_dWhiteBalanceG, frame.m_dWhiteBalanceB};
    const double black[3] = {frame.m_dBlackOffsetR, frame.m_dBlackOffsetG, frame.m_dBlackOffsetB};
    const double w[3] = {white.m_dRed, white.m_dGreen, white.m_dBlue};
    const double v[3] = {overflow.m_dRed, overflow.m_dGreen, overflow.m_dBlue};
    unsigned mode[3];
    double factor[3], exposure[3], gain[3], score[3];
    for (int c = 0; c < 3; ++c) {
        mode[c] = frame.m_uiCameraMode;
        factor[c] = frame.m_dFactor;
        exposure[c] = frame.m_dExposure;
        gain[c] = wb[c];
        ComputeAutoExposure(&mode[c], &factor[c], &exposure[c], &gain[c], flags, wb[c], black[c] + frame.m_dOffset,
                            frame.m_uiCameraMode, frame.m_dFactor, frame.m_dExposure, w[c], v[c], setting,
                            frame.m_uiAltCameraMode, frame.m_dAltFactor, clipped);
        score[c] = factor[c] * Desc(mode[c]).m_dSensitivity * exposure[c] * gain[c] / wb[c];
    }
    // The channel that needs the least signal decides; ties go to red, then green.
    int c = 2;
    if (score[0] <= score[1] && score[0] <= score[2])
        c = 0;
    else if (score[1] <= score[0] && score[1] <= score[2])
        c = 1;
    if (modeOut)
        *modeOut = mode[c];
    if (factorOut)
        *factorOut = factor[c];
    if (exposureOut)
        *exposureOut = exposure[c];
    if (gainOut)
        *gainOut = gain[c] / wb[c];
}

void CZxAutoExposure::ComputeColorAE(bool mode, unsigned flags, SZxAEFrameDesc& frame, const SZxAEHistogram& hist)
{
    const SZxAESetting& setting = mode ? m_setting1 : m_setting2;
    const SZxAECameraDesc desc = Desc(frame.m_uiCameraMode);
    const int excluded = int(frame.m_uiExcludedTopBins);

    const SZxAEValueRGB white = ComputeWhiteSignalRGB(hist, excluded);
    const SZxAEValueRGB overflow = ComputeOverflowRGB(hist, desc.m_dMaxLevel, excluded);
    frame.m_dOverflow = std::max({overflow.m_dRed, overflow.m_dGreen, overflow.m_dBlue});
    frame.m_bExposureGood = ComputeAutoDisplayRGB(white, overflow, frame.m_dExposure, desc.m_dMinExposure,
                                                  desc.m_dMaxLevel, setting.m_dHighTarget,
                                                  (flags & ZX_AE_STRICT) != 0);

    // Order matters: offsets, then white balance, then display gain, each
    // using the values just written.
    if (flags & (ZX_AE_OFFSET | ZX_AE_BLACKOFFSETS)) {
        const SZxAEValueRGB black = ComputeBlackSignalRGB(hist);
        if (flags & ZX_AE_BLACKOFFSETS) {
            SZxAEValueRGB o;
            ComputeAutoBlackRGB(o, black, desc.m_dMinBlackOffset, desc.m_dMaxBlackOffset);
            frame.m_dBlackOffsetR = o.m_dRed;
            frame.m_dBlackOffsetG = o.m_dGreen;
            frame.m_dBlackOffsetB = o.m_dBlue;
        }
        if (flags & ZX_AE_OFFSET)
            frame.m_dOffset = ComputeAutoOffsetRGB(
                black, SZxAEValueRGB(frame.m_dBlackOffsetR, frame.m_dBlackOffsetG, frame.m_dBlackOffsetB),
                desc.m_dMinOffset, desc.m_dMaxOffset);
    }
    const SZxAEValueRGB blackOffsets(frame.m_dBlackOffsetR, frame.m_dBlackOffsetG, frame.m_dBlackOffsetB);
    if (flags & ZX_AE_WHITEBALANCE) {
        SZxAEValueRGB g;
        ComputeAutoWhiteRGB(g, white, frame.m_dOffset, blackOffsets, desc.m_dMaxWhiteBalanceGain);
        frame.m_dWhiteBalanceR = g.m_dRed;
        frame.m_dWhiteBalanceG = g.m_dGreen;
        frame.m_dWhiteBalanceB = g.m_dBlue;
    }
    if (flags & ZX_AE_HARDWHITE) {
        SZxAEValueRGB g(frame.m_dHardWhiteR, frame.m_dHardWhiteG, frame.m_dHardWhiteB);
        ComputeAutoHardWhiteRGB(g, white, frame.m_dOffset, blackOffsets, desc.m_dMaxHardWhiteGain);
        frame.m_dHardWhiteR = g.m_dRed;
        frame.m_dHardWhiteG = g.m_dGreen;
        frame.m_dHardWhiteB = g.m_dBlue;
    }
    if (flags & ZX_AE_DISPLAYGAIN)
        frame.m_dDisplayGain = ComputeAutoGainRGB(
            white, SZxAEValueRGB(frame.m_dWhiteBalanceR, frame.m_dWhiteBalanceG, frame.m_dWhiteBalanceB),
            frame.m_dOffset, blackOffsets, setting.m_dMaxGain);
    if (flags & (ZX_AE_MODESEARCH | ZX_AE_FACTOR | ZX_AE_EXPOSURE))
        ComputeAutoExposureRGB(&frame.m_uiCameraMode, &frame.m_dFactor, &frame.m_dExposure, &frame.m_dComplGain,
                               flags, frame, white, overflow, setting, hist.pdwClipLimits != nullptr);
}
