// Demosaic and binning with AVX2. Every header is included before the target
// switch, so only this file's own functions carry AVX2 instructions and no
// shared inline code can be merged with an AVX2 copy.
#include <cstddef>
#include <cstdint>
#include <immintrin.h>
#include <new>
#include <type_traits>

#include "imaging/pixel_kernels.h"

#if defined(__GNUC__) && defined(__x86_64__)
#pragma GCC push_options
#pragma GCC target("avx2")
#define ZX_SIMD_AVX2 1
namespace zx::avx2 {
#include "imaging/pixel_simd.inc"
} // namespace zx::avx2
#pragma GCC pop_options
#else
namespace zx::avx2 {
const PixelKernels<uint8_t>* Kernels8() { return nullptr; }
const PixelKernels<uint16_t>* Kernels16() { return nullptr; }
} // namespace zx::avx2
#endif
