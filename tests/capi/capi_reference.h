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
/* One step of a fresh engine on the frame's histogram of frame->bits bits, or
   with a null frame ConvertAE (mono, clipped); returns the dark flag. */
int ref_ae(const ZxcAEQuantile* quantile, const ZxcAESetting settings[2], const ZxcAECameraDesc* descs,
           uint32_t count, const ZxcFrame* frame, const ZxcProbe* probe, int mode, uint32_t flags, int mono,
           int clipped, ZxcAEFrame* frame_desc);
/* kind 0: the colour tables, 1: the intensity table, 2: a mono table, 3: a quantitative mono table. */
void ref_lut(const ZxcLutProps* props, int kind, int bits, ZxcFrame* frame);
/* type 0: mono binning; otherwise factor 0 demosaics, 1 and 2 are Bayer binning. */
void ref_raw(ZxcFrame* dst, const void* src, int type, uint32_t factor);
/* Returns the unsaturated count; gains receives red, green, blue. */
int ref_accurate_white(const ZxcFrame* frame, const ZxcProbe* probe, const double offsets[3], double gains[3]);
/* Diagnostic assertions raised since the first call (which installs a counting sink). */
int ref_diag_count(void);

#ifdef __cplusplus
}
#endif
#endif
