// Demosaic of raw frames behind a 2 x 2 colour filter.
#pragma once
#include "zx/export.h"
#include "zxhost/picbuf.h"

/// Colours of the 2 x 2 cell at the first sample of the frame, row by row
/// (a b / c d).
enum EZxBayerType : int {
    ZX_BAYER_BGGR = 1,  ///< blue green / green red
    ZX_BAYER_GBRG = 2,  ///< green blue / red green
    ZX_BAYER_RGGB = 3,  ///< red green / green blue
    ZX_BAYER_GRBG = 4,  ///< green red / blue green
};

/// Demosaics width x height raw samples (8-bit when bits <= 8, else 16-bit) into
/// the three-component destination (blue, green, red), whose width, height and
/// bits describe both images.
///
/// Interior pixels interpolate from their eight neighbours with truncating
/// shifts; border pixels use the same rules restricted to the neighbours inside
/// the frame. A null buffer, a destination without three components, a frame
/// narrower or lower than 2, a short destination or an unknown type is reported
/// (source "common") and writes nothing.
/// Any thread; the buffers are not shared while it runs.
ZX_API void ZX_BayerToRGB(SZxPicBuf* pPicBuf, const void* pSrc, EZxBayerType type);
/// Same, into the sample's frame.
ZX_API void ZX_BayerToRGB(CZxGrabberSample01* pSample, const void* pSrc, EZxBayerType type);
