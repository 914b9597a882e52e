// Frame histograms over a probe region.
#pragma once
#include <cstdint>
#include "zx/export.h"
#include "zxhost/picbuf.h"

/// Statistics region. uiType 1 = rectangle (uiLeft, uiTop, uiWidth, uiHeight);
/// any other type = circle with centre (uiLeft, uiTop) and radius uiWidth
/// (uiHeight unused). A null probe means the whole frame.
struct SZxGrabberProbe {
    /// 1 = rectangle; any other value = circle.
    uint32_t uiType = 1;
    /// Rectangle: left column in pixels. Circle: centre column.
    uint32_t uiLeft = 0;
    /// Rectangle: top row in pixels. Circle: centre row.
    uint32_t uiTop = 0;
    /// Rectangle: width in pixels. Circle: radius in pixels.
    uint32_t uiWidth = 0;
    /// Rectangle: height in pixels. Unused for a circle.
    uint32_t uiHeight = 0;

    /// A rectangle probe; the parts outside the frame are not counted.
    static SZxGrabberProbe Rect(uint32_t left, uint32_t top, uint32_t width, uint32_t height)
    {
        return SZxGrabberProbe{1, left, top, width, height};
    }
    /// A circle probe around (cx, cy) with `radius` in pixels.
    static SZxGrabberProbe Circle(uint32_t cx, uint32_t cy, uint32_t radius)
    {
        return SZxGrabberProbe{2, cx, cy, radius, 0};
    }
    /// True for a rectangle probe (uiType 1).
    bool IsRect() const { return uiType == 1; }
    /// Centre column of a circle probe (uiLeft).
    uint32_t CenterX() const { return uiLeft; }
    /// Centre row of a circle probe (uiTop).
    uint32_t CenterY() const { return uiTop; }
    /// Radius of a circle probe in pixels (uiWidth).
    uint32_t Radius() const { return uiWidth; }
};

/// Histogram of one frame per component: buffer 0 = monochrome, 1 = red,
/// 2 = green, 3 = blue, each of 2^iMaxBits counters from CZxAlloc.
///
/// One owner: the record is movable but not copyable, so the buffers (and a
/// clip-limit array handed to it) are freed exactly once.
/// @note Filled on the acquisition thread, read by the auto exposure and the
///       display; one histogram is not used from two threads at once.
struct ZX_API SZxAEHistogram {
    bool bMono = false;                 ///< last frame had one component
    /// Count arrays: 0 = monochrome, 1 = red, 2 = green, 3 = blue; null when not
    /// allocated (see bHasMono, bHasColor).
    uint32_t* pdwHisto[4] = {nullptr, nullptr, nullptr, nullptr};
    uint32_t uiPixelCount = 0;          ///< pixels counted by the last computation
    uint32_t uiBinCount = 0;            ///< valid bins of the last computation
    /// Optional per-component upper bin limits (entry 0 for mono; 0, 1, 2 for the
    /// colour samples in memory order, blue first). Must come from CZxAlloc: the
    /// histogram frees it. Null unless a caller sets it.
    uint32_t* pdwClipLimits = nullptr;
    /// Bit depth the buffers were sized for (2^iMaxBits counters each).
    int iMaxBits = 0;
    /// The monochrome buffer (pdwHisto[0]) was allocated.
    bool bHasMono = false;
    /// The three colour buffers (pdwHisto[1..3]) were allocated.
    bool bHasColor = false;

    /// Buffers are not cleared here. A maxBits outside 0..24 allocates nothing
    /// (and reports an assertion); computations then leave the record empty.
    SZxAEHistogram(int maxBits, bool mono, bool colour);
    /// Not copyable: one owner frees the buffers.
    SZxAEHistogram(const SZxAEHistogram&) = delete;
    /// Not copyable: one owner frees the buffers.
    SZxAEHistogram& operator=(const SZxAEHistogram&) = delete;
    /// Takes over `other`'s buffers and clip limits; `other` is left empty.
    SZxAEHistogram(SZxAEHistogram&& other) noexcept;
    /// Frees this record's buffers, then takes over `other`'s; `other` is left empty.
    SZxAEHistogram& operator=(SZxAEHistogram&& other) noexcept;
    /// Frees the count buffers and the clip-limit array with CZxFree.
    virtual ~SZxAEHistogram();

    /// Counters allocated per buffer (2^iMaxBits, or 0 when nothing was allocated).
    uint32_t AllocatedBins() const;

private:
    void Release();
};

/// Fills `hist` from the frame, restricted to `probe` (null = whole frame).
///
/// Bins = 2^frame bits, or 2^iMaxBits when the frame has more bits. Only the
/// whole-frame monochrome 16-bit path scales values down (shift by bits - iMaxBits);
/// the colour and probe paths index by the raw sample. Every index is limited to
/// the last valid bin, so a sample above the frame's bit depth, or a frame deeper
/// than the histogram on a probe or colour path, lands in the top bin instead of
/// writing past the buffer. With clip limits set every sample v of component c
/// counts into min(v, limit[c]).
///
/// A null histogram or frame, a frame with no data or a uiComp other than 1 or 3,
/// or a histogram without the buffers the frame needs is reported as an assertion
/// (source "imaging") and leaves the counts empty (pixel count 0).
/// Any thread (the acquisition thread, typically); one histogram at a time.
ZX_API void ZX_ComputeHistogramAE(SZxAEHistogram* hist, SZxPicBuf* picBuf, SZxGrabberProbe* probe);
/// Same, for the frame a sample holds.
ZX_API void ZX_ComputeHistogramAE(SZxAEHistogram* hist, CZxGrabberSample01* sample, SZxGrabberProbe* probe);
