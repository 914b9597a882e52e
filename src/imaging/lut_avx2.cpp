// AVX2 byte-table lookup. Only this file's own functions are compiled for AVX2;
// every library header is included before the target switch so no shared inline
// code is emitted with AVX2 instructions.
#include <cstddef>
#include <cstdint>
#include <immintrin.h>

#include "imaging/lut_kernels.h"

#if defined(__GNUC__) && defined(__x86_64__)
#pragma GCC push_options
#pragma GCC target("avx2")

namespace zx::avx2 {
namespace {

// A 256-entry byte table as sixteen 16-entry shuffles: chunk k answers the bytes
// whose high nibble is k. y = x - 16k; saturating y + 0x70 keeps bit 7 clear
// only for y in 0..15, and the shuffle writes zero wherever bit 7 is set.
void Map8Impl(uint8_t* p, size_t n, const uint16_t* table, uint32_t last)
{
    alignas(32) uint8_t t[256];
    for (uint32_t v = 0; v < 256; ++v)
        t[v] = uint8_t(table[v < last ? v : last]);
    const __m256i bias = _mm256_set1_epi8(0x70);
    const __m256i sixteen = _mm256_set1_epi8(16);
    size_t i = 0;
    for (; i + 32 <= n; i += 32) {
        __m256i y = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + i));
        __m256i r = _mm256_setzero_si256();
        for (int k = 0; k < 16; ++k) {
            const __m256i chunk = _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(t + 16 * k)));
            r = _mm256_or_si256(r, _mm256_shuffle_epi8(chunk, _mm256_adds_epu8(y, bias)));
            y = _mm256_sub_epi8(y, sixteen);
        }
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(p + i), r);
    }
    for (; i < n; ++i)
        p[i] = t[p[i]];
}

} // namespace

extern void (*const Map8)(uint8_t*, size_t, const uint16_t*, uint32_t) = &Map8Impl;

} // namespace zx::avx2

#pragma GCC pop_options
#else
namespace zx::avx2 {
extern void (*const Map8)(uint8_t*, size_t, const uint16_t*, uint32_t) = nullptr;
}
#endif
