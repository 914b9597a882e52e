// Software binning of raw frames.
#pragma once
#include <cstdint>
#include "zx/bayer.h"
#include "zx/export.h"
#include "zxhost/picbuf.h"

/// Reduces factor*width x factor*height monochrome samples into the destination
/// (width x height, one component, same sample width). Factor 2 writes the
/// rounded mean (a + b + c + d + 2) >> 2 of each 2 x 2 cell; factor 1 copies;
/// other factors resample by area averaging.
///
/// A destination with other than one component is reported ("pPicBuf->uiComp!=1",
/// source "common") and processing continues as for one component. Null
/// buffers, a zero factor or a destination data size below its frame are
/// reported and write nothing.
/// Any thread; the buffers are not shared while it runs.
ZX_API void ZX_MonoBinning(SZxPicBuf* pPicBuf, const void* pSrc, uint32_t factor);
/// Same, into the frame a sample holds.
ZX_API void ZX_MonoBinning(CZxGrabberSample01* pSample, const void* pSrc, uint32_t factor);

/// Turns a raw Bayer frame into a colour frame: factor 1 demosaics
/// (ZX_BayerToRGB), factor 2 makes one pixel of each 2 x 2 cell (green is the
/// truncated mean of the cell's two greens). Other factors are reported
/// ("true") and write nothing; so does a destination without three components
/// ("pPicBuf->uiComp!=3").
/// Any thread; the buffers are not shared while it runs.
ZX_API void ZX_BayerBinning(SZxPicBuf* pPicBuf, const void* pSrc, EZxBayerType type, uint32_t factor);
/// Same, into the frame a sample holds.
ZX_API void ZX_BayerBinning(CZxGrabberSample01* pSample, const void* pSrc, EZxBayerType type, uint32_t factor);
