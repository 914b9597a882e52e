// Demosaic and binning on the x86-64 baseline (SSE2).
#include <cstddef>
#include <cstdint>
#include <immintrin.h>
#include <new>
#include <type_traits>

#include "imaging/pixel_kernels.h"

namespace zx::sse2 {
#include "imaging/pixel_simd.inc"
} // namespace zx::sse2
