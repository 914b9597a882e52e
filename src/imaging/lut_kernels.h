// In-place table kernels of the display LUTs, one set per kernel level.
#pragma once
#include <cstddef>
#include <cstdint>

#include "zx/export.h"

namespace zx {

/// Every kernel indexes its table by min(sample, last), so no sample reads past it.
/// Colour kernels take their tables in memory order (blue, green, red).
struct LutKernels {
    /// p[i] = table[p[i]] for n samples (8-bit data keep the entry's low byte).
    void (*Map8)(uint8_t* p, size_t n, const uint16_t* table, uint32_t last);
    void (*Map16)(uint16_t* p, size_t n, const uint16_t* table, uint32_t last);
    /// n pixels, sample c through tables[c].
    void (*Map8x3)(uint8_t* p, size_t n, const uint16_t* const tables[3], uint32_t last);
    void (*Map16x3)(uint16_t* p, size_t n, const uint16_t* const tables[3], uint32_t last);
    /// n pixels: out_c = pairs[c][2v_c] + the second entries of the two other
    /// samples' pairs, limited to [0, maxOut].
    void (*Pair8)(uint8_t* p, size_t n, const int32_t* const pairs[3], uint32_t last, int32_t maxOut);
    void (*Pair16)(uint16_t* p, size_t n, const int32_t* const pairs[3], uint32_t last, int32_t maxOut);
};

/// The kernels of the current level (see ZX_SetKernelLevel).
ZX_API const LutKernels& GetLutKernels();
/// The level-independent per-sample kernels.
ZX_API const LutKernels& GetReferenceLutKernels();

namespace avx2 {
/// 8-bit mono lookup with byte shuffles; null when the build cannot target AVX2.
extern void (*const Map8)(uint8_t* p, size_t n, const uint16_t* table, uint32_t last);
}
namespace avx512 {
/// 8-bit mono lookup with byte permutes (AVX-512 VBMI); null when not buildable.
extern void (*const Map8)(uint8_t* p, size_t n, const uint16_t* table, uint32_t last);
}

} // namespace zx
