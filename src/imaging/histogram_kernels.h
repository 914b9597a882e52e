// Histogram counting kernels over a list of sample runs, one set per kernel level.
#pragma once
#include <cstddef>
#include <cstdint>

#include "zx/export.h"

namespace zx {

/// n samples (mono) or pixels (colour) from column x0 of row y.
struct HistogramSpan {
    uint32_t y;
    uint32_t x0;
    size_t n;
};

/// Counting kernels for one sample type. Every index is min(value, top) (mono:
/// after the shift), so no kernel writes past bin `top`. The bins are added to,
/// not cleared.
template <typename T>
struct HistogramKernels {
    /// bins[min(p >> shift, top)]++ for every sample of the spans.
    void (*Mono)(const T* data, size_t rowSamples, const HistogramSpan* spans, size_t count, uint32_t* bins,
                 unsigned shift, uint32_t top);
    /// Interleaved 3-sample pixels: sample c goes to bins[c][min(v, tops[c])].
    void (*Colour)(const T* data, size_t rowSamples, const HistogramSpan* spans, size_t count,
                   uint32_t* const bins[3], const uint32_t tops[3]);
};

/// The kernels of the current level (see ZX_SetKernelLevel).
template <typename T>
ZX_API const HistogramKernels<T>& GetHistogramKernels();

/// The plain per-sample kernels (last fallback, and the reference for tests).
template <typename T>
ZX_API const HistogramKernels<T>& GetReferenceHistogramKernels();

} // namespace zx
