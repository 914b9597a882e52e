// The C interface: argument checks, then the C++ image side on the same data.
// Every refusal happens here, before the C++ functions would report it, so a
// caller of another language gets a status instead of a diagnostic assertion.
#include "zx/zx_c.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <new>

#include "imaging/probe_region.h"
#include "zx/autoexposure.h"
#include "zx/bayer.h"
#include "zx/binning.h"
#include "zx/histogram.h"
#include "zx/lut.h"
#include "zxhost/system.h"

struct ZxcHistogram {
    SZxAEHistogram h;
    ZxcHistogram(int bits, bool mono, bool colour) : h(bits, mono, colour) {}
};
struct ZxcAutoExposure {
    CZxAutoExposure ae;
};
struct ZxcMonoLut {
    CZxBaseMonoLUT lut;
    explicit ZxcMonoLut(int bits) : lut(bits) {}
};
struct ZxcLut {
    CZxBaseLUT lut;
    explicit ZxcLut(int bits) : lut(bits) {}
};

// The C names carry the C++ values; a change on one side must not go unnoticed.
#define ZXC_SAME(a, b) static_assert(int(a) == int(b), #a " differs from " #b)
ZXC_SAME(ZXC_AE_DISPLAYGAIN, ZX_AE_DISPLAYGAIN);
ZXC_SAME(ZXC_AE_WHITEBALANCE, ZX_AE_WHITEBALANCE);
ZXC_SAME(ZXC_AE_OFFSET, ZX_AE_OFFSET);
ZXC_SAME(ZXC_AE_BLACKOFFSETS, ZX_AE_BLACKOFFSETS);
ZXC_SAME(ZXC_AE_MODESEARCH, ZX_AE_MODESEARCH);
ZXC_SAME(ZXC_AE_FACTOR, ZX_AE_FACTOR);
ZXC_SAME(ZXC_AE_HARDWHITE, ZX_AE_HARDWHITE);
ZXC_SAME(ZXC_AE_EXPOSURE, ZX_AE_EXPOSURE);
ZXC_SAME(ZXC_AE_ALTMODE, ZX_AE_ALTMODE);
ZXC_SAME(ZXC_AE_ALTFACTOR, ZX_AE_ALTFACTOR);
ZXC_SAME(ZXC_AE_NOSPLIT, ZX_AE_NOSPLIT);
ZXC_SAME(ZXC_AE_STRICT, ZX_AE_STRICT);
ZXC_SAME(ZXC_BAYER_BGGR, ZX_BAYER_BGGR);
ZXC_SAME(ZXC_BAYER_GBRG, ZX_BAYER_GBRG);
ZXC_SAME(ZXC_BAYER_RGGB, ZX_BAYER_RGGB);
ZXC_SAME(ZXC_BAYER_GRBG, ZX_BAYER_GRBG);
ZXC_SAME(ZXC_PROBE_RECT, 1);  // SZxGrabberProbe::IsRect
#undef ZXC_SAME

namespace {

// No exception may leave a C entry (new may throw from inside the C++ objects).
template <typename F>
int Guarded(F&& f) noexcept
{
    try {
        return f();
    } catch (...) {
        return ZX_E_FAIL;
    }
}

bool Finite(const double* v, size_t n)
{
    for (size_t i = 0; i < n; ++i)
        if (!std::isfinite(v[i]))
            return false;
    return true;
}

template <typename T>
bool AllFinite(const T& record)
{
    static_assert(sizeof(T) % sizeof(double) == 0, "a record of doubles only");
    double v[sizeof(T) / sizeof(double)];
    std::memcpy(v, &record, sizeof(T));
    return Finite(v, sizeof(T) / sizeof(double));
}

uint32_t BytesPerSample(uint32_t bits) { return bits > 8 ? 2u : 1u; }

// A frame the C++ side can take as it is: packed rows, at most 2^32 - 1 pixels
// (the histogram counts in 32 bits) and a row length within 32 bits.
int ToPicBuf(const ZxcFrame* f, SZxPicBuf& pb)
{
    if (!f || !f->data || f->width == 0 || f->height == 0 || f->bits == 0 || f->components == 0)
        return ZX_E_FAIL;
    if (f->bits > 16 || (f->components != 1 && f->components != 3))
        return ZX_E_NOTSUPPORTED;
    const uint64_t pixels = uint64_t(f->width) * f->height;
    const uint64_t rowBytes = uint64_t(f->width) * f->components * BytesPerSample(f->bits);
    if (pixels > UINT32_MAX || rowBytes > UINT32_MAX)
        return ZX_E_NOTSUPPORTED;
    const uint64_t bytes = rowBytes * f->height;  // below 2^35: pixels < 2^32, six bytes each at most
    if (f->data_size < bytes)
        return ZX_E_FAIL;
    pb.uiWidth = f->width;
    pb.uiHeight = f->height;
    pb.uiRowBytes = uint32_t(rowBytes);
    pb.uiBits = f->bits;
    pb.uiComp = f->components;
    pb.ui64DataSize = bytes;  // the frame's own size: a larger buffer must not make a copy read further
    pb.pData = f->data;
    return ZX_OK;
}

// Null probe: the whole frame. Otherwise a known type with a pixel inside the frame.
int ToProbe(const ZxcProbe* p, const SZxPicBuf& pb, SZxGrabberProbe& out, SZxGrabberProbe*& use)
{
    use = nullptr;
    if (!p)
        return ZX_OK;
    if (p->type != ZXC_PROBE_RECT && p->type != ZXC_PROBE_CIRCLE)
        return ZX_E_FAIL;
    out = SZxGrabberProbe{p->type, p->left, p->top, p->width, p->height};
    use = &out;
    const uint32_t n = zx::ForEachProbeSpan(pb.uiWidth, pb.uiHeight, &out, [](uint32_t, uint32_t, uint32_t) {});
    return n ? ZX_OK : ZX_E_FAIL;
}

// Bytes of a raw source of (factor x width) by (factor x height) samples, or 0
// when factor x width samples do not fit a 32-bit row or factor x height 32 bits.
uint64_t RawBytes(const SZxPicBuf& dst, uint32_t factor)
{
    const uint64_t row = uint64_t(dst.uiWidth) * factor * BytesPerSample(dst.uiBits);
    const uint64_t rows = uint64_t(dst.uiHeight) * factor;
    if (row > UINT32_MAX || rows > UINT32_MAX)
        return 0;
    return row * rows;  // below 2^64: both factors below 2^32
}

SZxAEFrameDesc ToFrameDesc(const ZxcAEFrame& c)
{
    SZxAEFrameDesc f;
    f.m_dDisplayGain = c.display_gain;
    f.m_dComplGain = c.compl_gain;
    f.m_dWhiteBalanceR = c.white_balance_r;
    f.m_dWhiteBalanceG = c.white_balance_g;
    f.m_dWhiteBalanceB = c.white_balance_b;
    f.m_dOffset = c.offset;
    f.m_dBlackOffsetR = c.black_offset_r;
    f.m_dBlackOffsetG = c.black_offset_g;
    f.m_dBlackOffsetB = c.black_offset_b;
    f.m_uiCameraMode = c.camera_mode;
    f.m_uiAltCameraMode = c.alt_camera_mode;
    f.m_dFactor = c.factor;
    f.m_dAltFactor = c.alt_factor;
    f.m_dHardWhiteR = c.hard_white_r;
    f.m_dHardWhiteG = c.hard_white_g;
    f.m_dHardWhiteB = c.hard_white_b;
    f.m_dExposure = c.exposure;
    f.m_dOverflow = c.overflow;
    f.m_bExposureGood = c.exposure_good != 0;
    f.m_uiExcludedTopBins = c.excluded_top_bins;
    return f;
}

void FromFrameDesc(const SZxAEFrameDesc& f, ZxcAEFrame& c)
{
    c.display_gain = f.m_dDisplayGain;
    c.compl_gain = f.m_dComplGain;
    c.white_balance_r = f.m_dWhiteBalanceR;
    c.white_balance_g = f.m_dWhiteBalanceG;
    c.white_balance_b = f.m_dWhiteBalanceB;
    c.offset = f.m_dOffset;
    c.black_offset_r = f.m_dBlackOffsetR;
    c.black_offset_g = f.m_dBlackOffsetG;
    c.black_offset_b = f.m_dBlackOffsetB;
    c.camera_mode = f.m_uiCameraMode;
    c.alt_camera_mode = f.m_uiAltCameraMode;
    c.factor = f.m_dFactor;
    c.alt_factor = f.m_dAltFactor;
    c.hard_white_r = f.m_dHardWhiteR;
    c.hard_white_g = f.m_dHardWhiteG;
    c.hard_white_b = f.m_dHardWhiteB;
    c.exposure = f.m_dExposure;
    c.overflow = f.m_dOverflow;
    c.exposure_good = f.m_bExposureGood ? 1 : 0;
    c.excluded_top_bins = f.m_uiExcludedTopBins;
}

// The frame's modes exist and its numbers are finite.
bool FrameDescUsable(const CZxAutoExposure& ae, const ZxcAEFrame& f)
{
    const double v[] = {f.display_gain,   f.compl_gain,     f.white_balance_r, f.white_balance_g, f.white_balance_b,
                        f.offset,         f.black_offset_r, f.black_offset_g,  f.black_offset_b,  f.factor,
                        f.alt_factor,     f.hard_white_r,   f.hard_white_g,    f.hard_white_b,    f.exposure,
                        f.overflow};
    const uint32_t n = ae.m_uiCameraDescCount;
    return n >= 1 && n <= CZxAutoExposure::kMaxCameraDescs && f.camera_mode < n && f.alt_camera_mode < n &&
           Finite(v, sizeof v / sizeof v[0]);
}

bool LutPropsFinite(const ZxcLutProps& p) { return AllFinite(p); }

// Both LUT handles are made and applied alike; they differ in the tables a
// complete one must hold.
template <typename Handle, typename Complete>
int CreateLut(int32_t max_bits, Handle** out, Complete complete)
{
    return Guarded([&]() -> int {
        if (!out)
            return ZX_E_FAIL;
        *out = nullptr;
        if (max_bits < 1 || max_bits > 16)
            return ZX_E_FAIL;
        std::unique_ptr<Handle> lut(new (std::nothrow) Handle(max_bits));
        if (!lut || !complete(lut->lut))
            return ZX_E_FAIL;
        *out = lut.release();
        return ZX_OK;
    });
}

template <typename Handle>
int ApplyLut(Handle* lut, ZxcFrame* frame)
{
    return Guarded([&]() -> int {
        if (!lut)
            return ZX_E_FAIL;
        SZxPicBuf pb;
        if (int st = ToPicBuf(frame, pb))
            return st;
        lut->lut.ApplyLUT(&pb);
        return ZX_OK;
    });
}

} // namespace

extern "C" {

// ---- Histograms ----------------------------------------------------------------

int zxc_histogram_create(int32_t max_bits, int32_t mono, int32_t colour, ZxcHistogram** out)
{
    return Guarded([&]() -> int {
        if (!out)
            return ZX_E_FAIL;
        *out = nullptr;
        if (max_bits < 1 || max_bits > 16 || (!mono && !colour))
            return ZX_E_FAIL;
        std::unique_ptr<ZxcHistogram> h(new (std::nothrow) ZxcHistogram(max_bits, mono != 0, colour != 0));
        if (!h || (mono && !h->h.pdwHisto[0]) ||
            (colour && (!h->h.pdwHisto[1] || !h->h.pdwHisto[2] || !h->h.pdwHisto[3])))
            return ZX_E_FAIL;
        *out = h.release();
        return ZX_OK;
    });
}

void zxc_histogram_destroy(ZxcHistogram* hist) { delete hist; }

int zxc_histogram_set_clip_limits(ZxcHistogram* hist, const uint32_t* limits, uint32_t count)
{
    return Guarded([&]() -> int {
        if (!hist)
            return ZX_E_FAIL;
        SZxAEHistogram& h = hist->h;
        if (!limits) {
            if (count != 0)
                return ZX_E_FAIL;
            CZxAlloc::Free(h.pdwClipLimits);
            h.pdwClipLimits = nullptr;
            return ZX_OK;
        }
        // A colour frame reads three limits, so a histogram with colour buffers needs them all.
        if (count < (h.bHasColor ? 3u : 1u) || count > 3)
            return ZX_E_FAIL;
        auto* copy = static_cast<uint32_t*>(CZxAlloc::Alloc(3 * sizeof(uint32_t)));
        if (!copy)
            return ZX_E_FAIL;
        for (uint32_t c = 0; c < 3; ++c)
            copy[c] = limits[c < count ? c : count - 1];
        CZxAlloc::Free(h.pdwClipLimits);
        h.pdwClipLimits = copy;
        return ZX_OK;
    });
}

int zxc_histogram_compute(ZxcHistogram* hist, const ZxcFrame* frame, const ZxcProbe* probe)
{
    return Guarded([&]() -> int {
        if (!hist)
            return ZX_E_FAIL;
        SZxPicBuf pb;
        if (int st = ToPicBuf(frame, pb))
            return st;
        SZxAEHistogram& h = hist->h;
        const bool mono = pb.uiComp == 1;
        if (mono ? !h.pdwHisto[0] : !(h.pdwHisto[1] && h.pdwHisto[2] && h.pdwHisto[3]))
            return ZX_E_FAIL;
        SZxGrabberProbe region;
        SZxGrabberProbe* use = nullptr;
        const int st = ToProbe(probe, pb, region, use);
        if (st && !use)
            return st;  // an unknown probe type: nothing counted
        // A probe beside the frame still empties the histogram: a caller that
        // ignores the status then measures nothing instead of the last frame.
        ZX_ComputeHistogramAE(&h, &pb, use);
        return st;
    });
}

int zxc_histogram_get_info(const ZxcHistogram* hist, ZxcHistogramInfo* info)
{
    if (!hist || !info)
        return ZX_E_FAIL;
    const SZxAEHistogram& h = hist->h;
    info->max_bits = h.iMaxBits;
    info->has_mono = h.bHasMono ? 1 : 0;
    info->has_colour = h.bHasColor ? 1 : 0;
    info->mono = h.bMono ? 1 : 0;
    info->pixel_count = h.uiPixelCount;
    info->bin_count = h.uiBinCount;
    info->clipped = h.pdwClipLimits ? 1 : 0;
    return ZX_OK;
}

int zxc_histogram_get_bins(const ZxcHistogram* hist, uint32_t channel, uint32_t* bins, uint32_t capacity)
{
    if (!hist || !bins || channel > ZXC_CHANNEL_BLUE)
        return ZX_E_FAIL;
    const SZxAEHistogram& h = hist->h;
    const uint32_t* src = h.pdwHisto[channel];
    if (!src || capacity < h.uiBinCount || h.uiBinCount > h.AllocatedBins())
        return ZX_E_FAIL;
    std::memcpy(bins, src, size_t(h.uiBinCount) * sizeof(uint32_t));
    return ZX_OK;
}

// ---- Auto exposure ---------------------------------------------------------------

void zxc_ae_frame_init(ZxcAEFrame* frame)
{
    if (frame)
        FromFrameDesc(SZxAEFrameDesc(), *frame);
}

int zxc_ae_create(ZxcAutoExposure** out)
{
    return Guarded([&]() -> int {
        if (!out)
            return ZX_E_FAIL;
        *out = new (std::nothrow) ZxcAutoExposure();
        return *out ? ZX_OK : ZX_E_FAIL;
    });
}

void zxc_ae_destroy(ZxcAutoExposure* ae) { delete ae; }

int zxc_ae_set_quantile(ZxcAutoExposure* ae, const ZxcAEQuantile* quantile)
{
    if (!ae || !quantile || !std::isfinite(quantile->per_mille) || quantile->per_mille < 0.0 ||
        quantile->per_mille > 1000.0)
        return ZX_E_FAIL;
    ae->ae.m_quantil.m_bRelative = quantile->relative != 0;
    ae->ae.m_quantil.m_dPromile = quantile->per_mille;
    ae->ae.m_quantil.m_uiPixels = quantile->pixels;
    return ZX_OK;
}

int zxc_ae_set_setting(ZxcAutoExposure* ae, int32_t which, const ZxcAESetting* setting)
{
    if (!ae || !setting || (which != 1 && which != 2) || !AllFinite(*setting))
        return ZX_E_FAIL;
    SZxAESetting& s = which == 1 ? ae->ae.m_setting1 : ae->ae.m_setting2;
    s.m_dMaxGain = setting->max_gain;
    s.m_dMaxExposure = setting->max_exposure;
    s.m_dNoiseGain = setting->noise_gain;
    s.m_dNoiseExposure = setting->noise_exposure;
    s.m_dLowTarget = setting->low_target;
    s.m_dMiddleTarget = setting->middle_target;
    s.m_dHighTarget = setting->high_target;
    return ZX_OK;
}

int zxc_ae_set_camera_descs(ZxcAutoExposure* ae, const ZxcAECameraDesc* descs, uint32_t count)
{
    if (!ae || !descs || count < 1 || count > CZxAutoExposure::kMaxCameraDescs)
        return ZX_E_FAIL;
    for (uint32_t i = 0; i < count; ++i)
        if (!AllFinite(descs[i]))
            return ZX_E_FAIL;
    for (uint32_t i = 0; i < count; ++i) {
        const ZxcAECameraDesc& c = descs[i];
        SZxAECameraDesc& d = ae->ae.m_cameraDesc[i];
        d.m_dMaxComplGain = c.max_compl_gain;
        d.m_dMaxWhiteBalanceGain = c.max_white_balance_gain;
        d.m_dMinOffset = c.min_offset;
        d.m_dMaxOffset = c.max_offset;
        d.m_dMinBlackOffset = c.min_black_offset;
        d.m_dMaxBlackOffset = c.max_black_offset;
        d.m_dMaxFactor = c.max_factor;
        d.m_dMaxHardWhiteGain = c.max_hard_white_gain;
        d.m_dMinExposure = c.min_exposure;
        d.m_dMaxExposure = c.max_exposure;
        d.m_dExposureKnee = c.exposure_knee;
        d.m_dExposureStep = c.exposure_step;
        d.m_dMinLevel = c.min_level;
        d.m_dMaxLevel = c.max_level;
        d.m_dSensitivity = c.sensitivity;
        d.m_dUpperGain = c.upper_gain;
        d.m_dLowerGain = c.lower_gain;
    }
    ae->ae.m_uiCameraDescCount = count;
    return ZX_OK;
}

int zxc_ae_get_tuning(const ZxcAutoExposure* ae, ZxcAETuning* tuning)
{
    if (!ae || !tuning)
        return ZX_E_FAIL;
    tuning->dark_boost = ae->ae.m_dDarkBoost;
    tuning->overflow_limit = ae->ae.m_dOverflowLimit;
    for (int i = 0; i < 5; ++i)
        tuning->overflow_steps[i] = ae->ae.m_dOverflowSteps[i];
    return ZX_OK;
}

int zxc_ae_set_tuning(ZxcAutoExposure* ae, const ZxcAETuning* tuning)
{
    if (!ae || !tuning || !AllFinite(*tuning))
        return ZX_E_FAIL;
    ae->ae.m_dDarkBoost = tuning->dark_boost;
    ae->ae.m_dOverflowLimit = tuning->overflow_limit;
    for (int i = 0; i < 5; ++i)
        ae->ae.m_dOverflowSteps[i] = tuning->overflow_steps[i];
    return ZX_OK;
}

int zxc_ae_get_dark(const ZxcAutoExposure* ae, int32_t* dark)
{
    if (!ae || !dark)
        return ZX_E_FAIL;
    *dark = ae->ae.m_bDark ? 1 : 0;
    return ZX_OK;
}

int zxc_ae_compute(ZxcAutoExposure* ae, int32_t mode, uint32_t flags, ZxcAEFrame* frame, const ZxcHistogram* hist)
{
    return Guarded([&]() -> int {
        if (!ae || !frame || !hist || !FrameDescUsable(ae->ae, *frame))
            return ZX_E_FAIL;
        const SZxAEHistogram& h = hist->h;
        const bool buffers = h.bMono ? h.pdwHisto[0] != nullptr
                                     : (h.pdwHisto[1] && h.pdwHisto[2] && h.pdwHisto[3]);
        if (h.uiPixelCount == 0 || !buffers)
            return ZX_E_FAIL;
        SZxAEFrameDesc f = ToFrameDesc(*frame);
        ae->ae.ComputeAE(mode != 0, flags, f, h);
        FromFrameDesc(f, *frame);
        return ZX_OK;
    });
}

int zxc_ae_convert(ZxcAutoExposure* ae, int32_t mode, uint32_t flags, ZxcAEFrame* frame, int32_t mono,
                   int32_t clipped)
{
    return Guarded([&]() -> int {
        if (!ae || !frame || !FrameDescUsable(ae->ae, *frame))
            return ZX_E_FAIL;
        SZxAEFrameDesc f = ToFrameDesc(*frame);
        ae->ae.ConvertAE(mode != 0, flags, f, mono != 0, clipped != 0);
        FromFrameDesc(f, *frame);
        return ZX_OK;
    });
}

int zxc_accurate_auto_white(const ZxcFrame* frame, const ZxcProbe* probe, double red_offset, double green_offset,
                            double blue_offset, double* red_gain, double* green_gain, double* blue_gain,
                            uint32_t* examined)
{
    return Guarded([&]() -> int {
        SZxPicBuf pb;
        if (int st = ToPicBuf(frame, pb))
            return st;
        if (pb.uiComp != 3)
            return ZX_E_NOTSUPPORTED;
        const double offsets[] = {red_offset, green_offset, blue_offset};
        for (double o : offsets)
            if (!std::isfinite(o) || o < -1.0 || o > 1.0)
                return ZX_E_FAIL;
        SZxGrabberProbe region;
        SZxGrabberProbe* use = nullptr;
        if (int st = ToProbe(probe, pb, region, use))
            return st;
        // The C++ function reads a sample object; the frame is copied into one.
        CZxGrabberSample01 sample(pb.uiWidth, pb.uiHeight, pb.uiBits, 3);
        if (!sample.GetDataPtr() || sample.GetDataSize() < pb.ui64DataSize)
            return ZX_E_FAIL;
        std::memcpy(sample.GetDataPtr(), pb.pData, size_t(pb.ui64DataSize));
        double r = 1.0, g = 1.0, b = 1.0;
        const int n = ZX_AccurateAutoWhite(&r, &g, &b, red_offset, green_offset, blue_offset, &sample, use);
        if (red_gain)
            *red_gain = r;
        if (green_gain)
            *green_gain = g;
        if (blue_gain)
            *blue_gain = b;
        if (examined)
            *examined = uint32_t(n);
        return ZX_OK;
    });
}

// ---- Display look-up tables -------------------------------------------------------

void zxc_lut_props_init(ZxcLutProps* props)
{
    if (!props)
        return;
    const SZxBaseProps d;
    *props = ZxcLutProps{d.dGain,    d.dOffset,  d.dGamma,   d.dGainR,   d.dGainG,   d.dGainB,
                         d.dOffsetR, d.dOffsetG, d.dOffsetB, d.dGammaR,  d.dGammaG,  d.dGammaB,
                         d.dWeightR, d.dWeightG, d.dWeightB, d.dSaturation};
}

int zxc_mono_lut_create(int32_t max_bits, ZxcMonoLut** out)
{
    return CreateLut(max_bits, out, [](const CZxBaseMonoLUT& l) { return l.m_pTable != nullptr; });
}

void zxc_mono_lut_destroy(ZxcMonoLut* lut) { delete lut; }

int zxc_mono_lut_update(ZxcMonoLut* lut, const ZxcLutPropsI* props, int32_t bits, int32_t quantitative)
{
    return Guarded([&]() -> int {
        if (!lut || !props || bits < 1 || bits > lut->lut.m_iMaxBits || !AllFinite(*props))
            return ZX_E_FAIL;
        SZxBasePropsI p;
        p.dGain = props->gain;
        p.dOffset = props->offset;
        p.dGamma = props->gamma;
        if (quantitative)
            lut->lut.UpdateQuantitativeLUT(p, bits);
        else
            lut->lut.UpdateLUT(p, bits);
        return ZX_OK;
    });
}

int zxc_mono_lut_apply(ZxcMonoLut* lut, ZxcFrame* frame) { return ApplyLut(lut, frame); }

int zxc_lut_create(int32_t max_bits, ZxcLut** out)
{
    return CreateLut(max_bits, out, [](const CZxBaseLUT& l) {
        return l.m_pIntensity && l.m_pRed && l.m_pGreen && l.m_pBlue && l.m_pPairRed && l.m_pPairGreen &&
               l.m_pPairBlue;
    });
}

void zxc_lut_destroy(ZxcLut* lut) { delete lut; }

int zxc_lut_update(ZxcLut* lut, const ZxcLutProps* props, int32_t mono, int32_t bits)
{
    return Guarded([&]() -> int {
        if (!lut || !props || bits < 1 || bits > lut->lut.m_iMaxBits || !LutPropsFinite(*props))
            return ZX_E_FAIL;
        SZxBaseProps p;
        p.dGain = props->gain;
        p.dOffset = props->offset;
        p.dGamma = props->gamma;
        p.dGainR = props->gain_r;
        p.dGainG = props->gain_g;
        p.dGainB = props->gain_b;
        p.dOffsetR = props->offset_r;
        p.dOffsetG = props->offset_g;
        p.dOffsetB = props->offset_b;
        p.dGammaR = props->gamma_r;
        p.dGammaG = props->gamma_g;
        p.dGammaB = props->gamma_b;
        p.dWeightR = props->weight_r;
        p.dWeightG = props->weight_g;
        p.dWeightB = props->weight_b;
        p.dSaturation = props->saturation;
        lut->lut.UpdateLUT(p, mono != 0, bits);
        return ZX_OK;
    });
}

int zxc_lut_apply(ZxcLut* lut, ZxcFrame* frame) { return ApplyLut(lut, frame); }

// ---- Demosaic and binning -----------------------------------------------------------

int zxc_bayer_to_rgb(ZxcFrame* dst, const void* src, uint64_t src_size, int32_t type)
{
    return Guarded([&]() -> int {
        SZxPicBuf pb;
        if (int st = ToPicBuf(dst, pb))
            return st;
        if (pb.uiComp != 3 || pb.uiWidth < 2 || pb.uiHeight < 2 || !src || src_size < RawBytes(pb, 1) ||
            type < ZXC_BAYER_BGGR || type > ZXC_BAYER_GRBG)
            return ZX_E_FAIL;
        ZX_BayerToRGB(&pb, src, EZxBayerType(type));
        return ZX_OK;
    });
}

int zxc_mono_binning(ZxcFrame* dst, const void* src, uint64_t src_size, uint32_t factor)
{
    return Guarded([&]() -> int {
        SZxPicBuf pb;
        if (int st = ToPicBuf(dst, pb))
            return st;
        if (pb.uiComp != 1 || !src || factor == 0)
            return ZX_E_FAIL;
        const uint64_t need = RawBytes(pb, factor);
        if (need == 0 || src_size < need)
            return ZX_E_FAIL;
        ZX_MonoBinning(&pb, src, factor);
        return ZX_OK;
    });
}

int zxc_bayer_binning(ZxcFrame* dst, const void* src, uint64_t src_size, int32_t type, uint32_t factor)
{
    return Guarded([&]() -> int {
        SZxPicBuf pb;
        if (int st = ToPicBuf(dst, pb))
            return st;
        if (pb.uiComp != 3 || !src || type < ZXC_BAYER_BGGR || type > ZXC_BAYER_GRBG)
            return ZX_E_FAIL;
        if (factor != 1 && factor != 2)
            return ZX_E_NOTSUPPORTED;
        if (factor == 1 && (pb.uiWidth < 2 || pb.uiHeight < 2))
            return ZX_E_FAIL;
        const uint64_t need = RawBytes(pb, factor);
        if (need == 0 || src_size < need)
            return ZX_E_FAIL;
        ZX_BayerBinning(&pb, src, EZxBayerType(type), factor);
        return ZX_OK;
    });
}

} // extern "C"
