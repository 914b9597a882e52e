// The walk over a statistics region, shared by every per-region statistic
// (histograms, accurate auto white) so that they count exactly the same pixels.
#pragma once
#include <algorithm>
#include <cmath>
#include <cstdint>
#include "zx/histogram.h"

namespace zx {

/// Calls span(y, x0, count) for every run of pixels of the region inside a
/// width x height frame, top to bottom, and returns the pixel count the region
/// reports. Never yields a pixel outside the frame.
///
/// Rectangle: (left, top, left+width, top+height) intersected with the frame.
/// Circle: rows of the bounding square inside the frame; per row the half width
/// is round-half-up of sqrt(r^2 - dy^2) and the run is clamped into the square's
/// columns. A row whose circle run lies beside the frame still yields the one
/// border pixel at the clamp (deliberate: it is how the circle was always counted).
template <typename SpanFn>
uint32_t ForEachProbeSpan(uint32_t width, uint32_t height, const SZxGrabberProbe* probe, SpanFn&& span)
{
    if (width == 0 || height == 0)
        return 0;
    if (!probe) {
        for (uint32_t y = 0; y < height; ++y)
            span(y, 0u, width);
        return width * height;
    }
    if (probe->IsRect()) {
        const uint64_t left = probe->uiLeft, top = probe->uiTop;
        const uint64_t right = std::min<uint64_t>(left + probe->uiWidth, width);
        const uint64_t bottom = std::min<uint64_t>(top + probe->uiHeight, height);
        if (left >= right || top >= bottom)
            return 0;
        const uint32_t n = static_cast<uint32_t>(right - left);
        for (uint64_t y = top; y < bottom; ++y)
            span(static_cast<uint32_t>(y), static_cast<uint32_t>(left), n);
        return static_cast<uint32_t>((bottom - top) * (right - left));
    }

    // Circle: work in signed 64 bits so centre +- radius cannot wrap.
    const int64_t cx = probe->CenterX(), cy = probe->CenterY(), r = probe->Radius();
    const int64_t left = std::max<int64_t>(cx - r, 0);
    const int64_t top = std::max<int64_t>(cy - r, 0);
    const int64_t right = std::min<int64_t>(cx + r, int64_t(width) - 1);
    const int64_t bottom = std::min<int64_t>(cy + r, int64_t(height) - 1);
    if (top > bottom || left > right)
        return 0;
    uint32_t count = 0;
    for (int64_t y = top; y <= bottom; ++y) {
        const int64_t dy = y - cy;
        // r <= 2^32 and |dy| <= r, so the difference fits in 64 bits only when
        // computed as (r - dy)(r + dy); both factors are non-negative here.
        const double rem = double(r - dy) * double(r + dy);
        const int64_t half = static_cast<int64_t>(std::sqrt(rem) + 0.5);
        int64_t x0 = cx - half;
        if (x0 < left)
            x0 = left;
        else if (x0 > right)
            x0 = right;
        int64_t x1 = cx + half;
        if (x1 > right)
            x1 = right;
        if (x1 < left)
            x1 = left;
        const uint32_t n = static_cast<uint32_t>(x1 - x0 + 1);
        span(static_cast<uint32_t>(y), static_cast<uint32_t>(x0), n);
        count += n;
    }
    return count;
}

} // namespace zx
