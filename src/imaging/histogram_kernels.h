// Per-span histogram counting kernels, chosen once per process.
#pragma once
#include <cstdint>

namespace zx {

/// Counting kernels for one sample type. Every index is min(value, top) (mono:
/// after the shift), so no kernel writes past bin `top`.
template <typename T>
struct HistogramKernels {
    /// Counts n mono samples: bins[min(p[i] >> shift, top)]++.
    void (*Mono)(const T* p, uint32_t n, uint32_t* bins, unsigned shift, uint32_t top);
    /// Counts n interleaved 3-sample pixels: sample c goes to bins[c][min(v, tops[c])].
    void (*Colour)(const T* p, uint32_t n, uint32_t* const bins[3], const uint32_t tops[3]);
};

/// The kernels for this CPU (resolved on first use).
template <typename T>
const HistogramKernels<T>& GetHistogramKernels();

/// The plain per-sample kernels (last fallback, and the reference for tests).
template <typename T>
const HistogramKernels<T>& GetReferenceHistogramKernels();

} // namespace zx
