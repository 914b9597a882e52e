// Demosaic and binning kernels, one set per kernel level and sample type.
#pragma once
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "zx/export.h"

namespace zx {

template <typename T>
struct PixelKernels {
    /// Rows y0 .. y1 - 1 of the demosaic of w x h raw samples (w, h >= 2) into
    /// w x h BGR pixels; type 1..4. Rows outside the band are read, never written.
    void (*Demosaic)(const T* src, T* dst, uint32_t w, uint32_t h, int type, uint32_t y0, uint32_t y1);
    /// 2w x 2h samples into w x h rounded 2 x 2 means: a band of h rows of an
    /// output frame of frameRows rows, whose size decides how the band is stored.
    void (*MonoBin2)(const T* src, T* dst, uint32_t w, uint32_t h, uint32_t frameRows);
    /// 2w x 2h raw samples into w x h BGR pixels, one per cell; type 1..4.
    void (*BayerBin2)(const T* src, T* dst, uint32_t w, uint32_t h, int type);
};

/// The kernels of the current level (see ZX_SetKernelLevel); T is uint8_t or
/// uint16_t. Exported, as the other families' getters, for the library's tests.
template <typename T>
ZX_API const PixelKernels<T>& GetPixelKernels();

/// The per-pixel kernels (the reference level, and the reference for tests).
template <typename T>
ZX_API const PixelKernels<T>& GetReferencePixelKernels();

namespace sse2 {
const PixelKernels<uint8_t>* Kernels8();
const PixelKernels<uint16_t>* Kernels16();
}
namespace avx2 {
/// Null when the build cannot target AVX2.
const PixelKernels<uint8_t>* Kernels8();
const PixelKernels<uint16_t>* Kernels16();
}

// ---- Rules shared by every level --------------------------------------------

/// Row y of a Bayer frame: whether its first sample is green, and the output
/// channel (0 = blue, 2 = red) of its other colour. The four types differ only
/// in these two bits, so one kernel serves all of them.
struct BayerRow {
    unsigned greenFirst;
    unsigned own;
};

inline BayerRow BayerRowOf(int type, uint32_t y)
{
    const unsigned odd = y & 1;
    const unsigned green0 = (type == 2 || type == 4) ? 1 : 0;
    const unsigned blue0 = (type == 1 || type == 2) ? 1 : 0;
    return BayerRow{green0 ^ odd, (blue0 ^ odd) ? 0u : 2u};
}

/// One demosaiced pixel from whichever neighbours lie inside the frame: a
/// missing pair is replaced by the neighbour that exists, the diagonal mean by
/// the mean of the existing diagonals. Used for the first and last pixel of every
/// row (and, by the reference level, for all pixels).
template <typename T>
inline void BayerPixel(const T* src, uint32_t w, uint32_t h, uint32_t x, uint32_t y, const BayerRow& row, T* out)
{
    const T* c = src + size_t(y) * w;
    const T* u = y > 0 ? c - w : nullptr;
    const T* d = y + 1 < h ? c + w : nullptr;
    const bool l = x > 0, r = x + 1 < w;
    const uint32_t hm = (l && r) ? (uint32_t(c[x - 1]) + c[x + 1]) >> 1 : l ? c[x - 1] : c[x + 1];
    const uint32_t vm = (u && d) ? (uint32_t(u[x]) + d[x]) >> 1 : u ? u[x] : d[x];
    uint32_t sum = 0, n = 0;
    for (const T* row2 : {u, d}) {
        if (!row2)
            continue;
        if (l) { sum += row2[x - 1]; ++n; }
        if (r) { sum += row2[x + 1]; ++n; }
    }
    const uint32_t dm = n == 4 ? sum >> 2 : n == 2 ? sum >> 1 : sum;
    const bool green = ((x & 1) ^ row.greenFirst) == 1;
    if (green) {
        out[1] = T((c[x] + dm) >> 1);
        out[row.own] = T(hm);
        out[2 - row.own] = T(vm);
    } else {
        out[row.own] = c[x];
        out[1] = T((hm + vm) >> 1);
        out[2 - row.own] = T(dm);
    }
}

/// Positions (0 = a, 1 = b, 2 = c, 3 = d) of a cell's blue, two greens and red.
struct BayerCell {
    int blue, green1, green2, red;
};

constexpr BayerCell BayerCellOf(int type)
{
    switch (type) {
    case 1: return {0, 1, 2, 3};
    case 2: return {1, 0, 3, 2};
    case 3: return {3, 1, 2, 0};
    default: return {2, 0, 3, 1};
    }
}

} // namespace zx
