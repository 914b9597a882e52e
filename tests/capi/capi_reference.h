/* The same work done through the C++ interface, for the C test to compare with.
   Declared in C; implemented in C++ with the C++ records filled field by field. */
#ifndef CAPI_REFERENCE_H
#define CAPI_REFERENCE_H
#include "zx/zx_c.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Histogram of 2^max_bits bins per channel; bins receives 4 x 2^max_bits counters. */
void ref_histogram(const ZxcFrame* frame, const ZxcProbe* probe, int max_bits, const uint32_t* clip3,
                   uint32_t* bins, uint32_t* pixel_count, uint32_t* bin_count);
/* One auto-exposure step of a fresh engine on the frame's histogram (probe may be null). */
void ref_ae_step(const ZxcAEQuantile* quantile, const ZxcAESetting settings[2], const ZxcAECameraDesc* descs,
                 uint32_t count, const ZxcFrame* frame, const ZxcProbe* probe, int max_bits, int mode,
                 uint32_t flags, ZxcAEFrame* frame_desc, int32_t* dark);
/* ConvertAE of a fresh engine. */
void ref_ae_convert(const ZxcAESetting settings[2], const ZxcAECameraDesc* descs, uint32_t count, int mode,
                    uint32_t flags, int mono, int clipped, ZxcAEFrame* frame_desc);
void ref_mono_lut(int max_bits, const ZxcLutPropsI* props, int bits, int quantitative, ZxcFrame* frame);
void ref_lut(int max_bits, const ZxcLutProps* props, int mono, int bits, ZxcFrame* frame);
void ref_bayer_to_rgb(ZxcFrame* dst, const void* src, int type);
void ref_mono_binning(ZxcFrame* dst, const void* src, uint32_t factor);
void ref_bayer_binning(ZxcFrame* dst, const void* src, int type, uint32_t factor);
/* Returns the unsaturated count; gains receives red, green, blue. */
int ref_accurate_white(const ZxcFrame* frame, const ZxcProbe* probe, const double offsets[3], double gains[3]);
/* Diagnostic assertions raised since the first call (which installs a counting sink). */
int ref_diag_count(void);

#ifdef __cplusplus
}
#endif
#endif
