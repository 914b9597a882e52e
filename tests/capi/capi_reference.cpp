// The reference side of the C interface test: the C++ image functions on the
// same frames, with every record filled by field name.
#include "capi_reference.h"

#include <atomic>
#include <cstring>

#include "zx/autoexposure.h"
#include "zx/bayer.h"
#include "zx/binning.h"
#include "zx/histogram.h"
#include "zx/lut.h"
#include "zxhost/system.h"

namespace {

SZxPicBuf PicBuf(const ZxcFrame* f)
{
    const uint32_t row = f->width * f->components * (f->bits > 8 ? 2 : 1);
    return {f->width, f->height, row, f->bits, f->components, uint64_t(row) * f->height, f->data};
}

SZxGrabberProbe* Probe(const ZxcProbe* p, SZxGrabberProbe& out)
{
    if (!p)
        return nullptr;
    out = p->type == ZXC_PROBE_RECT ? SZxGrabberProbe::Rect(p->left, p->top, p->width, p->height)
                                    : SZxGrabberProbe::Circle(p->left, p->top, p->width);
    return &out;
}

// Records in their declared order: a field the C interface maps by name to the
// wrong member shows as a difference.
SZxAESetting Setting(const ZxcAESetting& s)
{
    return {s.max_gain, s.max_exposure, s.noise_gain, s.noise_exposure, s.low_target, s.middle_target, s.high_target};
}

std::atomic<int> g_diag{0};
void CountingSink(const wchar_t*, const wchar_t*, int, const wchar_t*, int) { ++g_diag; }

} // namespace

extern "C" {

void ref_histogram(const ZxcFrame* frame, const ZxcProbe* probe, int max_bits, const uint32_t* clip3,
                   uint32_t* bins, uint32_t* pixel_count, uint32_t* bin_count)
{
    SZxAEHistogram h(max_bits, frame->components == 1, frame->components == 3);
    if (clip3) {
        h.pdwClipLimits = static_cast<uint32_t*>(CZxAlloc::Alloc(3 * sizeof(uint32_t)));
        std::memcpy(h.pdwClipLimits, clip3, 3 * sizeof(uint32_t));
    }
    SZxPicBuf pb = PicBuf(frame);
    SZxGrabberProbe p;
    ZX_ComputeHistogramAE(&h, &pb, Probe(probe, p));
    for (int c = 0; c < 4; ++c)
        if (h.pdwHisto[c])
            std::memcpy(bins + (c << max_bits), h.pdwHisto[c], h.uiBinCount * sizeof(uint32_t));
    *pixel_count = h.uiPixelCount;
    *bin_count = h.uiBinCount;
}

int ref_ae(const ZxcAEQuantile* quantile, const ZxcAESetting settings[2], const ZxcAECameraDesc* descs,
           uint32_t count, const ZxcFrame* frame, const ZxcProbe* probe, int mode, uint32_t flags, int mono,
           int clipped, ZxcAEFrame* fd)
{
    CZxAutoExposure ae;
    ae.m_quantil.m_bRelative = quantile->relative != 0;
    ae.m_quantil.m_dPromile = quantile->per_mille;
    ae.m_quantil.m_uiPixels = quantile->pixels;
    ae.m_setting1 = Setting(settings[0]);
    ae.m_setting2 = Setting(settings[1]);
    for (uint32_t i = 0; i < count; ++i) {
        const ZxcAECameraDesc& c = descs[i];
        ae.m_cameraDesc[i] = {c.max_compl_gain, c.max_white_balance_gain, c.min_offset,   c.max_offset,
                              c.min_black_offset, c.max_black_offset,   c.max_factor,   c.max_hard_white_gain,
                              c.min_exposure,   c.max_exposure,         c.exposure_knee, c.exposure_step,
                              c.min_level,      c.max_level,            c.sensitivity,  c.upper_gain,
                              c.lower_gain};
    }
    ae.m_uiCameraDescCount = count;
    const ZxcAEFrame& c = *fd;
    SZxAEFrameDesc f{c.display_gain,   c.compl_gain,     c.white_balance_r, c.white_balance_g, c.white_balance_b,
                     c.offset,         c.black_offset_r, c.black_offset_g,  c.black_offset_b,  c.camera_mode,
                     c.alt_camera_mode, c.factor,        c.alt_factor,      c.hard_white_r,    c.hard_white_g,
                     c.hard_white_b,   c.exposure,       c.overflow,        c.exposure_good != 0, c.excluded_top_bins};
    if (frame) {
        SZxAEHistogram h(int(frame->bits), frame->components == 1, frame->components == 3);
        SZxPicBuf pb = PicBuf(frame);
        SZxGrabberProbe p;
        ZX_ComputeHistogramAE(&h, &pb, Probe(probe, p));
        ae.ComputeAE(mode != 0, flags, f, h);
    } else {
        ae.ConvertAE(mode != 0, flags, f, mono != 0, clipped != 0);
    }
    *fd = ZxcAEFrame{f.m_dDisplayGain,  f.m_dComplGain,     f.m_dWhiteBalanceR, f.m_dWhiteBalanceG,
                     f.m_dWhiteBalanceB, f.m_dOffset,       f.m_dBlackOffsetR,  f.m_dBlackOffsetG,
                     f.m_dBlackOffsetB, f.m_uiCameraMode,   f.m_uiAltCameraMode, f.m_dFactor,
                     f.m_dAltFactor,    f.m_dHardWhiteR,    f.m_dHardWhiteG,    f.m_dHardWhiteB,
                     f.m_dExposure,     f.m_dOverflow,      f.m_bExposureGood ? 1 : 0, f.m_uiExcludedTopBins};
    return ae.m_bDark ? 1 : 0;
}

void ref_lut(const ZxcLutProps* props, int kind, int bits, ZxcFrame* frame)
{
    SZxPicBuf pb = PicBuf(frame);
    if (kind >= 2) {
        CZxBaseMonoLUT lut(16);
        const SZxBasePropsI p{props->gain, props->offset, props->gamma};
        if (kind == 3)
            lut.UpdateQuantitativeLUT(p, bits);
        else
            lut.UpdateLUT(p, bits);
        lut.ApplyLUT(&pb);
        return;
    }
    CZxBaseLUT lut(16);
    const SZxBaseProps p{props->gain,     props->offset,   props->gamma,    props->gain_r,   props->gain_g,
                         props->gain_b,   props->offset_r, props->offset_g, props->offset_b, props->gamma_r,
                         props->gamma_g,  props->gamma_b,  props->weight_r, props->weight_g, props->weight_b,
                         props->saturation};
    lut.UpdateLUT(p, kind == 1, bits);
    lut.ApplyLUT(&pb);
}

void ref_raw(ZxcFrame* dst, const void* src, int type, uint32_t factor)
{
    SZxPicBuf pb = PicBuf(dst);
    if (type == 0)
        ZX_MonoBinning(&pb, src, factor);
    else if (factor == 0)
        ZX_BayerToRGB(&pb, src, EZxBayerType(type));
    else
        ZX_BayerBinning(&pb, src, EZxBayerType(type), factor);
}

int ref_accurate_white(const ZxcFrame* frame, const ZxcProbe* probe, const double offsets[3], double gains[3])
{
    CZxGrabberSample01 sample(frame->width, frame->height, frame->bits, 3);
    SZxPicBuf pb = PicBuf(frame);
    std::memcpy(sample.GetDataPtr(), frame->data, size_t(pb.ui64DataSize));
    SZxGrabberProbe p;
    return ZX_AccurateAutoWhite(&gains[0], &gains[1], &gains[2], offsets[0], offsets[1], offsets[2], &sample,
                                Probe(probe, p));
}

int ref_diag_count(void)
{
    static const bool installed = (ZX_SetDiagSink(CountingSink), true);
    (void)installed;
    return g_diag;
}

} // extern "C"
