// Picture-buffer geometry of the picture library.
#pragma once
#include "zxhost/export.h"
#include "zxhost/picbuf.h"

/// Geometry operations on picture buffers. Stateless: any thread.
class ZX_HOST_API CZxPicBufAPI_GeomTrans {
public:
    /// Resamples `src` into `dst` (same components and sample width; rows
    /// addressed through each buffer's uiRowBytes). Mode 3 averages areas: each
    /// destination pixel is the rounded mean of the source pixels of its
    /// footprint [x*sw/dw, (x+1)*sw/dw) x [y*sh/dh, (y+1)*sh/dh) (at least one),
    /// which for a whole-number factor is the k x k block mean. Any other mode
    /// takes the nearest source pixel. Returns ZX_OK, or ZX_E_FAIL for buffers it cannot use.
    static int Stretch(SZxPicBuf* dst, SZxPicBuf* src, int mode);
};
