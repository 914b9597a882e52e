// AVX-512 VBMI byte-table lookup: the whole 256-entry table lives in four
// registers and two two-table permutes answer 64 samples. Headers come before
// the target switch so no shared inline code is compiled for AVX-512.
#include <cstddef>
#include <cstdint>
#include <immintrin.h>

#include "imaging/lut_kernels.h"

#if defined(__GNUC__) && defined(__x86_64__)
#pragma GCC push_options
#pragma GCC target("avx512f,avx512bw,avx512vbmi")

namespace zx::avx512 {
namespace {

void Map8Impl(uint8_t* p, size_t n, const uint16_t* table, uint32_t last)
{
    alignas(64) uint8_t t[256];
    for (uint32_t v = 0; v < 256; ++v)
        t[v] = uint8_t(table[v < last ? v : last]);
    const __m512i t0 = _mm512_load_si512(t), t1 = _mm512_load_si512(t + 64);
    const __m512i t2 = _mm512_load_si512(t + 128), t3 = _mm512_load_si512(t + 192);
    size_t i = 0;
    for (; i < n; i += 64) {
        // Bits 0-6 pick among 128 entries of each half; bit 7 picks the half.
        const __mmask64 m = n - i >= 64 ? ~__mmask64(0) : (__mmask64(1) << (n - i)) - 1;
        const __m512i x = _mm512_maskz_loadu_epi8(m, p + i);
        const __m512i lo = _mm512_permutex2var_epi8(t0, x, t1);
        const __m512i hi = _mm512_permutex2var_epi8(t2, x, t3);
        _mm512_mask_storeu_epi8(p + i, m, _mm512_mask_blend_epi8(_mm512_movepi8_mask(x), lo, hi));
    }
}

} // namespace

extern void (*const Map8)(uint8_t*, size_t, const uint16_t*, uint32_t) = &Map8Impl;

} // namespace zx::avx512

#pragma GCC pop_options
#else
namespace zx::avx512 {
extern void (*const Map8)(uint8_t*, size_t, const uint16_t*, uint32_t) = nullptr;
}
#endif
