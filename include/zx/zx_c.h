// C interface of the image side: histograms over probe regions, auto exposure
// and white balance, display look-up tables, demosaic, binning and accurate
// auto white, for drivers built with a compiler of another C++ ABI (MSVC above
// all) and for other languages (Python through ctypes). Plain C99: opaque
// handles, plain records of fixed-width fields, status codes.
#pragma once

#include <stdint.h>

#include "zx/export.h"

#ifdef __cplusplus
#include "zx/status.h"
extern "C" {
#else
/// Status codes of the C interface; the same names and values as zx/status.h.
enum {
    ZX_OK = 0,                ///< success
    ZX_E_NOTSUPPORTED = -2,   ///< a well-formed request the library does not handle
    ZX_E_CANCELLED = -8,      ///< the user cancelled a selection (not returned here)
    ZX_E_FAIL = -9,           ///< bad arguments, missing data or general failure
    ZX_E_BUSY = -10,          ///< a control is being edited (not returned here)
    ZX_E_WINDOW = -11,        ///< a window call failed (not returned here)
    ZX_E_NOSELECTION = -12,   ///< nothing selected (not returned here)
};
#endif

/// \name Conventions of every function below
/// Results are ZX_OK or a negative status code: ZX_E_FAIL for bad arguments
/// (a null handle or pointer, a zero size, a buffer shorter than its frame, a
/// value out of its documented range, a non-finite number, a probe that holds
/// no pixel of the frame) and ZX_E_NOTSUPPORTED for a well-formed request the
/// library does not handle (components other than 1 and 3, more than 16 bits,
/// more than 2^32 - 1 pixels, a Bayer-binning factor other than 1 and 2). On a
/// failure the outputs are left as they were unless a function says otherwise.
/// No function raises a diagnostic assertion for an argument it refuses.
///
/// Threading: a handle is not used from two threads at once; different handles,
/// and the functions without a handle, may run on any number of threads.
/// @{

/// A frame in memory, read or written in place. Rows are packed (width x
/// components samples each); samples are 8-bit when bits <= 8, else 16-bit in
/// the machine's byte order; colour pixels hold blue, green, red in that order.
typedef struct ZxcFrame {
    uint32_t width;       ///< pixels per row, at least 1
    uint32_t height;      ///< rows, at least 1
    uint32_t bits;        ///< significant bits per sample, 1..16
    uint32_t components;  ///< 1 = monochrome, 3 = colour (blue, green, red)
    uint64_t data_size;   ///< bytes available at data: at least width x height x components x bytes per sample
    void* data;           ///< first sample of the first row
} ZxcFrame;

/// Probe types of ZxcProbe.
enum {
    ZXC_PROBE_RECT = 1,    ///< rectangle left, top, width, height
    ZXC_PROBE_CIRCLE = 2,  ///< circle around (left, top) with radius width
};

/// A statistics region in frame pixels. The part inside the frame is used; a
/// region with no pixel inside the frame is refused with ZX_E_FAIL.
typedef struct ZxcProbe {
    uint32_t type;    ///< ZXC_PROBE_RECT or ZXC_PROBE_CIRCLE
    uint32_t left;    ///< rectangle: left column; circle: centre column
    uint32_t top;     ///< rectangle: top row; circle: centre row
    uint32_t width;   ///< rectangle: columns; circle: radius in pixels
    uint32_t height;  ///< rectangle: rows; circle: unused
} ZxcProbe;

/// @}

/// \name Histograms
/// @{

/// Channels of a histogram (the index of its counter buffer).
enum {
    ZXC_CHANNEL_MONO = 0,   ///< monochrome frames
    ZXC_CHANNEL_RED = 1,    ///< red samples of colour frames
    ZXC_CHANNEL_GREEN = 2,  ///< green samples of colour frames
    ZXC_CHANNEL_BLUE = 3,   ///< blue samples of colour frames
};

/// A histogram of one frame per channel (opaque).
typedef struct ZxcHistogram ZxcHistogram;

/// What the last computation of a histogram counted.
typedef struct ZxcHistogramInfo {
    int32_t max_bits;      ///< bits the buffers were sized for (2^max_bits counters each)
    int32_t has_mono;      ///< 1 when the monochrome buffer exists
    int32_t has_colour;    ///< 1 when the red, green and blue buffers exist
    int32_t mono;          ///< 1 when the last frame was monochrome
    uint32_t pixel_count;  ///< pixels counted by the last computation
    uint32_t bin_count;    ///< valid bins of the last computation
    int32_t clipped;       ///< 1 when clip limits are set
} ZxcHistogramInfo;

/// Creates a histogram with 2^max_bits counters per channel: one monochrome
/// buffer when mono is non-zero, red, green and blue buffers when colour is
/// non-zero. Size it to at least the bits of the frames it counts: probe and
/// colour counts of deeper samples land in the top bin.
/// @param max_bits 1..16
/// @param mono non-zero: allocate the monochrome buffer
/// @param colour non-zero: allocate the red, green and blue buffers
/// @param out receives the handle (null on failure); release it with zxc_histogram_destroy
/// @return ZX_OK; ZX_E_FAIL for a null out, max_bits outside 1..16, neither
///         mono nor colour, or no memory
ZX_API int zxc_histogram_create(int32_t max_bits, int32_t mono, int32_t colour, ZxcHistogram** out);

/// Releases a histogram. A null handle is ignored.
ZX_API void zxc_histogram_destroy(ZxcHistogram* hist);

/// Sets per-channel upper bins: every sample v of channel c then counts into
/// bin min(v, limits[c]), c in memory order (0 for monochrome; 0 = blue,
/// 1 = green, 2 = red for colour). The limits are copied.
/// @param hist the histogram
/// @param limits count entries, or null to remove the limits
/// @param count 1..3, and 3 for a histogram with colour buffers (0 with null
///        limits); a missing entry repeats the last one
/// @return ZX_OK; ZX_E_FAIL for a null handle, a count that does not fit the
///         histogram's buffers, or no memory
ZX_API int zxc_histogram_set_clip_limits(ZxcHistogram* hist, const uint32_t* limits, uint32_t count);

/// Counts the frame's samples inside the probe into the histogram.
/// Bins = 2^frame bits, at most 2^max_bits; a whole-frame monochrome frame
/// deeper than the histogram is shifted down to fit.
/// @param hist the histogram
/// @param frame the frame to count
/// @param probe the region, or null for the whole frame
/// @return ZX_OK; ZX_E_FAIL for a null handle or frame, a bad frame, a frame
///         whose kind (mono or colour) has no buffer in the histogram, a probe of
///         an unknown type; ZX_E_FAIL also for a probe with no pixel inside the
///         frame, after which the histogram is empty (pixel count 0), so that an
///         auto-exposure step refuses it; ZX_E_NOTSUPPORTED for an unsupported frame
ZX_API int zxc_histogram_compute(ZxcHistogram* hist, const ZxcFrame* frame, const ZxcProbe* probe);

/// Reads the histogram's sizes and what its last computation counted.
/// @return ZX_OK; ZX_E_FAIL for a null handle or info
ZX_API int zxc_histogram_get_info(const ZxcHistogram* hist, ZxcHistogramInfo* info);

/// Copies the bin_count counters of the last computation for one channel.
/// @param hist the histogram
/// @param channel ZXC_CHANNEL_MONO, _RED, _GREEN or _BLUE
/// @param bins receives the counters
/// @param capacity entries at bins, at least the histogram's bin count
/// @return ZX_OK; ZX_E_FAIL for a null handle or bins, a channel the histogram
///         has no buffer for, or a capacity below the bin count
ZX_API int zxc_histogram_get_bins(const ZxcHistogram* hist, uint32_t channel, uint32_t* bins, uint32_t capacity);

/// @}

/// \name Auto exposure and white balance
/// @{

/// Control flags of zxc_ae_compute and zxc_ae_convert. Any of MODESEARCH,
/// FACTOR and EXPOSURE runs the exposure computation.
enum {
    ZXC_AE_DISPLAYGAIN = 0x1,    ///< compute the display gain
    ZXC_AE_WHITEBALANCE = 0x2,   ///< compute the white-balance gains (colour)
    ZXC_AE_OFFSET = 0x4,         ///< compute the offset
    ZXC_AE_BLACKOFFSETS = 0x8,   ///< compute the per-channel black offsets (colour)
    ZXC_AE_MODESEARCH = 0x10,    ///< search the camera-mode index
    ZXC_AE_FACTOR = 0x20,        ///< compute the analog gain factor
    ZXC_AE_HARDWHITE = 0x40,     ///< compute the hard white gains (colour)
    ZXC_AE_EXPOSURE = 0x80,      ///< compute the exposure
    ZXC_AE_ALTMODE = 0x100,      ///< start the mode search at the alternative index
    ZXC_AE_ALTFACTOR = 0x200,    ///< the current analog factor is the alternative factor
    ZXC_AE_NOSPLIT = 0x400,      ///< skip the noise-optimal split of exposure and gain
    ZXC_AE_STRICT = 0x1000,      ///< strict exposure-good test
};

/// An auto-exposure engine (opaque): settings, camera modes and the dark flag.
typedef struct ZxcAutoExposure ZxcAutoExposure;

/// How many of the brightest (or darkest) pixels define the white (black) signal.
typedef struct ZxcAEQuantile {
    int32_t relative;  ///< non-zero: per_mille of the counted pixels; zero: a pixel count
    double per_mille;  ///< share of the counted pixels in 1/1000, used when relative
    uint32_t pixels;   ///< pixel count, used when not relative (0 counts as 1)
} ZxcAEQuantile;

/// One of the engine's two setting sets. Targets are fractions of the usable signal range.
typedef struct ZxcAESetting {
    double max_gain;        ///< display gain limit; complementary gain limit of the split
    double max_exposure;    ///< exposure clamp (camera units); reference of the mode search
    double noise_gain;      ///< noise coefficient of gain
    double noise_exposure;  ///< noise coefficient of exposure
    double low_target;      ///< lowest target white level
    double middle_target;   ///< target white level
    double high_target;     ///< highest target white level; reference of the exposure-good test
} ZxcAESetting;

/// One camera mode (binning modes are modes). Levels are fractions of full scale.
typedef struct ZxcAECameraDesc {
    double max_compl_gain;         ///< maximum complementary gain
    double max_white_balance_gain; ///< maximum white-balance gain
    double min_offset;             ///< minimum offset
    double max_offset;             ///< maximum offset
    double min_black_offset;       ///< minimum per-channel black offset
    double max_black_offset;       ///< maximum per-channel black offset
    double max_factor;             ///< maximum analog gain factor
    double max_hard_white_gain;    ///< maximum hard white gain
    double min_exposure;           ///< shortest exposure (camera units)
    double max_exposure;           ///< longest exposure (camera units)
    double exposure_knee;          ///< above it exposure and gain are split for least noise
    double exposure_step;          ///< exposures are rounded down to a multiple (0 = no rounding)
    double min_level;              ///< black level
    double max_level;              ///< saturation level
    double sensitivity;            ///< relative sensitivity of the mode
    double upper_gain;             ///< total gain above which the search moves up a mode
    double lower_gain;             ///< total gain below which the search moves down a mode
} ZxcAECameraDesc;

/// The current camera values going into an auto-exposure step and the new ones
/// coming out. Start from zxc_ae_frame_init.
typedef struct ZxcAEFrame {
    double display_gain;         ///< display gain [1]
    double compl_gain;           ///< complementary gain [1]
    double white_balance_r;      ///< white-balance gain red [1]
    double white_balance_g;      ///< white-balance gain green [1]
    double white_balance_b;      ///< white-balance gain blue [1]
    double offset;               ///< offset, fraction of full scale [0]
    double black_offset_r;       ///< black offset red [0]
    double black_offset_g;       ///< black offset green [0]
    double black_offset_b;       ///< black offset blue [0]
    uint32_t camera_mode;        ///< index into the camera descriptions [0]
    uint32_t alt_camera_mode;    ///< alternative mode index [0]
    double factor;               ///< analog gain factor [1]
    double alt_factor;           ///< alternative analog gain factor [1]
    double hard_white_r;         ///< hard white gain red [1]
    double hard_white_g;         ///< hard white gain green [1]
    double hard_white_b;         ///< hard white gain blue [1]
    double exposure;             ///< exposure (camera units) [1]
    double overflow;             ///< out: share of pixels at or above the saturation level [0]
    int32_t exposure_good;       ///< out: 1 when the exposure is good [1]
    uint32_t excluded_top_bins;  ///< 1 = the white walk starts at the top bin [1]
} ZxcAEFrame;

/// Engine constants that a driver rarely changes.
typedef struct ZxcAETuning {
    double dark_boost;          ///< exposure multiplier for a black frame [32]
    double overflow_limit;      ///< overflow share below which a frame counts as unsaturated [0]
    double overflow_steps[5];   ///< exposure scale per overflow band [0.5, 0.5, 0.25, 0.125, 0.0625]
} ZxcAETuning;

/// Sets a frame description to its defaults (the values in brackets). A null frame is ignored.
ZX_API void zxc_ae_frame_init(ZxcAEFrame* frame);

/// Creates an engine with default tuning, zeroed settings and no camera modes:
/// set the quantile, both settings and at least one camera mode before the first step.
/// @param out receives the handle (null on failure); release it with zxc_ae_destroy
/// @return ZX_OK; ZX_E_FAIL for a null out or no memory
ZX_API int zxc_ae_create(ZxcAutoExposure** out);

/// Releases an engine. A null handle is ignored.
ZX_API void zxc_ae_destroy(ZxcAutoExposure* ae);

/// Sets the quantile. @return ZX_OK; ZX_E_FAIL for a null argument or a
/// per_mille that is not finite or outside 0..1000
ZX_API int zxc_ae_set_quantile(ZxcAutoExposure* ae, const ZxcAEQuantile* quantile);

/// Sets setting set 1 (used when the step's mode is non-zero) or 2 (mode zero).
/// @return ZX_OK; ZX_E_FAIL for a null argument, which not 1 or 2, or a non-finite value
ZX_API int zxc_ae_set_setting(ZxcAutoExposure* ae, int32_t which, const ZxcAESetting* setting);

/// Replaces the camera modes by descs[0 .. count-1].
/// @param ae the engine
/// @param descs count camera modes, index 0 first
/// @param count 1..32
/// @return ZX_OK; ZX_E_FAIL for a null argument, a count outside 1..32 or a non-finite value
ZX_API int zxc_ae_set_camera_descs(ZxcAutoExposure* ae, const ZxcAECameraDesc* descs, uint32_t count);

/// Reads the tuning. @return ZX_OK; ZX_E_FAIL for a null argument
ZX_API int zxc_ae_get_tuning(const ZxcAutoExposure* ae, ZxcAETuning* tuning);

/// Sets the tuning. @return ZX_OK; ZX_E_FAIL for a null argument or a non-finite value
ZX_API int zxc_ae_set_tuning(ZxcAutoExposure* ae, const ZxcAETuning* tuning);

/// Whether the last exposure computation saw a too dark frame.
/// @return ZX_OK; ZX_E_FAIL for a null argument
ZX_API int zxc_ae_get_dark(const ZxcAutoExposure* ae, int32_t* dark);

/// One auto-exposure and white-balance step: new camera values for `frame` from
/// its histogram (the monochrome computation for a monochrome histogram, the
/// colour one otherwise), as selected by `flags`. Apply them to the camera
/// before the next frame's step.
/// @param ae the engine
/// @param mode non-zero: setting set 1; zero: set 2
/// @param flags ZXC_AE_ flags
/// @param frame current values in, new values out
/// @param hist the histogram of the frame, computed with a pixel counted
/// @return ZX_OK; ZX_E_FAIL, with the frame unchanged, for a null argument, an
///         engine without camera modes, a frame mode or alternative mode index not
///         below their count, a non-finite frame value, or a histogram that counted
///         no pixel or lacks the buffers of its last frame's kind
ZX_API int zxc_ae_compute(ZxcAutoExposure* ae, int32_t mode, uint32_t flags, ZxcAEFrame* frame,
                          const ZxcHistogram* hist);

/// Recomputes the exposure values of a frame measured under the other setting
/// set, without a histogram.
/// @param ae the engine
/// @param mode non-zero: setting set 1; zero: set 2
/// @param flags ZXC_AE_ flags
/// @param frame current values in, new values out
/// @param mono non-zero for a monochrome camera
/// @param clipped non-zero when the histograms are clipped
/// @return ZX_OK; ZX_E_FAIL as for zxc_ae_compute (without the histogram cases)
ZX_API int zxc_ae_convert(ZxcAutoExposure* ae, int32_t mode, uint32_t flags, ZxcAEFrame* frame, int32_t mono,
                          int32_t clipped);

/// Accurate white balance of a colour frame from its pixels: each channel
/// weighted by pixel brightness after the per-channel black offsets; the
/// strongest channel gets 1.0, the others at least 1.0. Saturated pixels (a
/// sample at full scale) are summed apart and used only when they are not
/// fewer than the others. The frame is copied once.
/// @param frame a colour frame
/// @param red_offset, green_offset, blue_offset black offsets, fractions of full scale in -1..1
/// @param probe the region (as the histogram counts it), or null for the whole frame
/// @param red_gain, green_gain, blue_gain receive the gains; each may be null
/// @param examined receives the number of unsaturated pixels examined; may be null
/// @return ZX_OK; ZX_E_FAIL for a null or bad frame, an offset outside -1..1 or
///         not finite, a bad probe or one with no pixel inside the frame, or no
///         memory; ZX_E_NOTSUPPORTED for a frame without three components
ZX_API int zxc_accurate_auto_white(const ZxcFrame* frame, const ZxcProbe* probe, double red_offset,
                                   double green_offset, double blue_offset, double* red_gain, double* green_gain,
                                   double* blue_gain, uint32_t* examined);

/// @}

/// \name Display look-up tables
/// @{

/// Gain, offset and gamma of a monochrome table.
typedef struct ZxcLutPropsI {
    double gain;    ///< [1]
    double offset;  ///< fraction of full scale [0]
    double gamma;   ///< [1]
} ZxcLutPropsI;

/// Everything a colour table is built from; per-channel values combine with the
/// global ones (gains and gammas multiply, offsets add, weights scale by saturation).
typedef struct ZxcLutProps {
    double gain;        ///< global gain [1]
    double offset;      ///< global offset, fraction of full scale [0]
    double gamma;       ///< global gamma [1]
    double gain_r;      ///< red gain [1]
    double gain_g;      ///< green gain [1]
    double gain_b;      ///< blue gain [1]
    double offset_r;    ///< red offset [0]
    double offset_g;    ///< green offset [0]
    double offset_b;    ///< blue offset [0]
    double gamma_r;     ///< red gamma [1]
    double gamma_g;     ///< green gamma [1]
    double gamma_b;     ///< blue gamma [1]
    double weight_r;    ///< red colour weight; below 1 mixes luminance in [1]
    double weight_g;    ///< green colour weight [1]
    double weight_b;    ///< blue colour weight [1]
    double saturation;  ///< scales the three weights [1]
} ZxcLutProps;

/// A table for monochrome frames (opaque).
typedef struct ZxcMonoLut ZxcMonoLut;
/// Tables for colour frames, and for monochrome frames through the intensity table (opaque).
typedef struct ZxcLut ZxcLut;

/// Sets colour-table properties to their defaults (the values in brackets). A null argument is ignored.
ZX_API void zxc_lut_props_init(ZxcLutProps* props);

/// Creates a monochrome table of 2^max_bits entries; it starts as the identity.
/// @param max_bits 1..16
/// @param out receives the handle (null on failure); release it with zxc_mono_lut_destroy
/// @return ZX_OK; ZX_E_FAIL for a null out, max_bits outside 1..16 or no memory
ZX_API int zxc_mono_lut_create(int32_t max_bits, ZxcMonoLut** out);

/// Releases a monochrome table. A null handle is ignored.
ZX_API void zxc_mono_lut_destroy(ZxcMonoLut* lut);

/// Rebuilds the table for `bits`-bit frames when the properties (beyond 0.001)
/// or the bits changed. Display mapping: x = (i + M offset) gain / M, entry =
/// x^gamma M rounded; quantitative: x = (i gain + M offset) / M, saturating at M.
/// @param lut the table
/// @param props gain, offset and gamma
/// @param bits 1..max_bits
/// @param quantitative non-zero for the quantitative mapping
/// @return ZX_OK; ZX_E_FAIL for a null argument, bits outside 1..max_bits or a non-finite property
ZX_API int zxc_mono_lut_update(ZxcMonoLut* lut, const ZxcLutPropsI* props, int32_t bits, int32_t quantitative);

/// Maps every sample of the frame in place (nothing when the table is the identity).
/// @return ZX_OK; ZX_E_FAIL for a null or bad frame; ZX_E_NOTSUPPORTED for an unsupported frame
ZX_API int zxc_mono_lut_apply(ZxcMonoLut* lut, ZxcFrame* frame);

/// Creates colour tables of 2^max_bits entries; they start as the identity.
/// @param max_bits 1..16
/// @param out receives the handle (null on failure); release it with zxc_lut_destroy
/// @return ZX_OK; ZX_E_FAIL for a null out, max_bits outside 1..16 or no memory
ZX_API int zxc_lut_create(int32_t max_bits, ZxcLut** out);

/// Releases colour tables. A null handle is ignored.
ZX_API void zxc_lut_destroy(ZxcLut* lut);

/// Rebuilds the intensity table (mono non-zero: global gain, offset, gamma) or
/// the colour tables (per-channel tables, or mixing tables when a weight
/// differs from 1) for `bits`-bit frames when the properties or bits changed.
/// @param lut the tables
/// @param props the properties
/// @param mono non-zero: the intensity table; zero: the colour tables
/// @param bits 1..max_bits
/// @return ZX_OK; ZX_E_FAIL for a null argument, bits outside 1..max_bits or a non-finite property
ZX_API int zxc_lut_update(ZxcLut* lut, const ZxcLutProps* props, int32_t mono, int32_t bits);

/// Maps the frame in place: a monochrome frame through the intensity table, a
/// colour frame through the colour tables.
/// @return ZX_OK; ZX_E_FAIL for a null or bad frame; ZX_E_NOTSUPPORTED for an unsupported frame
ZX_API int zxc_lut_apply(ZxcLut* lut, ZxcFrame* frame);

/// @}

/// \name Demosaic and binning
/// @{

/// Colours of the 2 x 2 cell at the first sample of a raw frame, row by row.
enum {
    ZXC_BAYER_BGGR = 1,  ///< blue green / green red
    ZXC_BAYER_GBRG = 2,  ///< green blue / red green
    ZXC_BAYER_RGGB = 3,  ///< red green / green blue
    ZXC_BAYER_GRBG = 4,  ///< green red / blue green
};

/// Demosaics dst->width x dst->height raw samples (the sample width of
/// dst->bits) into the three-component destination.
/// @param dst the colour destination; its width, height and bits describe both frames
/// @param src raw samples, packed rows
/// @param src_size bytes at src
/// @param type ZXC_BAYER_BGGR .. ZXC_BAYER_GRBG
/// @return ZX_OK; ZX_E_FAIL for a null or bad destination, one without three
///         components or narrower or lower than 2, a null or short source or an
///         unknown type; ZX_E_NOTSUPPORTED for an unsupported destination
ZX_API int zxc_bayer_to_rgb(ZxcFrame* dst, const void* src, uint64_t src_size, int32_t type);

/// Reduces factor x width by factor x height monochrome samples into the
/// one-component destination: factor 1 copies, factor 2 writes the rounded mean
/// (a + b + c + d + 2) >> 2 of each 2 x 2 cell, larger factors resample by area.
/// @param dst the destination; its bits describe both frames
/// @param src raw samples, packed rows of factor x dst->width samples
/// @param src_size bytes at src
/// @param factor at least 1, with factor x the destination's row and height within 32 bits
/// @return ZX_OK; ZX_E_FAIL for a null or bad destination, one without one
///         component, a null or short source, or a factor of 0 or too large;
///         ZX_E_NOTSUPPORTED for an unsupported destination
ZX_API int zxc_mono_binning(ZxcFrame* dst, const void* src, uint64_t src_size, uint32_t factor);

/// Turns a raw Bayer frame into the three-component destination: factor 1
/// demosaics (zxc_bayer_to_rgb), factor 2 makes one pixel of each 2 x 2 cell
/// (green is the truncated mean of the cell's two greens).
/// @param dst the destination; its bits describe both frames
/// @param src raw samples, packed rows of factor x dst->width samples
/// @param src_size bytes at src
/// @param type ZXC_BAYER_BGGR .. ZXC_BAYER_GRBG
/// @param factor 1 or 2
/// @return ZX_OK; ZX_E_FAIL for a null or bad destination, one without three
///         components, a null or short source or an unknown type (and, for factor
///         1, the cases of zxc_bayer_to_rgb); ZX_E_NOTSUPPORTED for another factor
///         or an unsupported destination
ZX_API int zxc_bayer_binning(ZxcFrame* dst, const void* src, uint64_t src_size, int32_t type, uint32_t factor);

/// @}

#ifdef __cplusplus
}
#endif
