#include "imaging/lut_kernels.h"

#include <algorithm>
#include <cstring>

#include "imaging/kernel_level.h"

namespace zx {
namespace {

// ---- Reference: one sample at a time --------------------------------------

template <typename T>
void MapRef(T* p, size_t n, const uint16_t* table, uint32_t last)
{
    for (size_t i = 0; i < n; ++i)
        p[i] = T(table[std::min<uint32_t>(p[i], last)]);
}

template <typename T>
void Map3Ref(T* p, size_t n, const uint16_t* const tables[3], uint32_t last)
{
    for (size_t i = 0; i < n * 3; ++i)
        p[i] = T(tables[i % 3][std::min<uint32_t>(p[i], last)]);
}

template <typename T>
void PairRef(T* p, size_t n, const int32_t* const pairs[3], uint32_t last, int32_t maxOut)
{
    for (size_t i = 0; i < n; ++i, p += 3) {
        const int32_t* e[3];
        for (int c = 0; c < 3; ++c)
            e[c] = pairs[c] + 2 * size_t(std::min<uint32_t>(p[c], last));
        // Three entries of up to 2^31 each: the sum needs 64 bits.
        for (int c = 0; c < 3; ++c) {
            int64_t v = e[c][0];
            for (int o = 0; o < 3; ++o)
                if (o != c)
                    v += e[o][1];
            p[c] = T(std::clamp<int64_t>(v, 0, maxOut));
        }
    }
}

// ---- Fast scalar: byte tables for 8-bit data, no clamp where it cannot bite --

void Byte256(uint8_t* out, const uint16_t* table, uint32_t last)
{
    for (uint32_t v = 0; v < 256; ++v)
        out[v] = uint8_t(table[std::min(v, last)]);
}

void Map8Fast(uint8_t* p, size_t n, const uint16_t* table, uint32_t last)
{
    uint8_t t[256];
    Byte256(t, table, last);
    size_t i = 0;
    // Eight lookups per 64-bit load/store keep the load ports on the table.
    for (; i + 8 <= n; i += 8) {
        uint64_t v;
        std::memcpy(&v, p + i, 8);
        uint64_t r = 0;
        for (int k = 0; k < 8; ++k)
            r |= uint64_t(t[(v >> (8 * k)) & 0xFF]) << (8 * k);
        std::memcpy(p + i, &r, 8);
    }
    for (; i < n; ++i)
        p[i] = t[p[i]];
}

// Four samples from one 8-byte load: a lookup is a sample load, a table load and
// a store, and the load ports bound the loop.
inline void Load4(const uint16_t* p, uint32_t& a, uint32_t& b, uint32_t& c, uint32_t& d)
{
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    uint64_t w;
    std::memcpy(&w, p, 8);
    a = uint16_t(w);
    b = uint16_t(w >> 16);
    c = uint16_t(w >> 32);
    d = uint32_t(w >> 48);
#else
    a = p[0]; b = p[1]; c = p[2]; d = p[3];
#endif
}

template <bool Clamp>
void Map16Loop(uint16_t* p, size_t n, const uint16_t* table, uint32_t last)
{
    size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        uint32_t a, b, c, d;
        Load4(p + i, a, b, c, d);
        if (Clamp) {
            a = std::min(a, last); b = std::min(b, last);
            c = std::min(c, last); d = std::min(d, last);
        }
        p[i] = table[a]; p[i + 1] = table[b]; p[i + 2] = table[c]; p[i + 3] = table[d];
    }
    for (; i < n; ++i)
        p[i] = table[std::min<uint32_t>(p[i], last)];
}

void Map16Fast(uint16_t* p, size_t n, const uint16_t* table, uint32_t last)
{
    // A full 16-bit table needs no clamp at all.
    if (last >= 0xFFFF)
        Map16Loop<false>(p, n, table, last);
    else
        Map16Loop<true>(p, n, table, last);
}

void Map8x3Fast(uint8_t* p, size_t n, const uint16_t* const tables[3], uint32_t last)
{
    uint8_t t[3][256];
    for (int c = 0; c < 3; ++c)
        Byte256(t[c], tables[c], last);
    for (size_t i = 0; i < n; ++i, p += 3) {
        p[0] = t[0][p[0]];
        p[1] = t[1][p[1]];
        p[2] = t[2][p[2]];
    }
}

void Map16x3Loop(uint16_t* p, size_t n, const uint16_t* const tables[3], uint32_t last)
{
    const uint16_t *tb = tables[0], *tg = tables[1], *tr = tables[2];
    for (size_t i = 0; i < n; ++i, p += 3) {
        p[0] = tb[std::min<uint32_t>(p[0], last)];
        p[1] = tg[std::min<uint32_t>(p[1], last)];
        p[2] = tr[std::min<uint32_t>(p[2], last)];
    }
}

// Deep tables (three of up to 128 KiB) miss the first-level cache and its TLB on
// most lookups of varied data. Mapping a block of pixels one channel at a time
// keeps one table hot, while the block (96 KiB) stays in the second-level cache
// for its three passes.
constexpr uint32_t kBlockedLast = 4096;
constexpr size_t kChannelBlock = size_t(1) << 14;

// Samples q[0] and q[3] (one channel of two neighbouring pixels) from a single
// 8-byte load, which must lie within the buffer (as Load4).
inline void LoadSamples03(const uint16_t* q, uint32_t& s0, uint32_t& s3)
{
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    uint64_t w;
    std::memcpy(&w, q, 8);
    s0 = uint16_t(w);
    s3 = uint32_t(w >> 48);
#else
    s0 = q[0];
    s3 = q[3];
#endif
}

template <bool Clamp>
void Map16x3Blocked(uint16_t* p, size_t n, const uint16_t* const tables[3], uint32_t last)
{
    auto idx = [last](uint32_t v) { return Clamp ? std::min(v, last) : v; };
    for (size_t at = 0; at < n; at += kChannelBlock) {
        const size_t len = std::min(kChannelBlock, n - at);
        for (int c = 0; c < 3; ++c) {
            const uint16_t* t = tables[c];
            uint16_t* q = p + 3 * at + c;
            size_t i = 0;
            // Two samples share one load; the loads of four pixels stay within
            // their twelve samples.
            for (; i + 4 <= len; i += 4, q += 12) {
                uint32_t a, b, d, e;
                LoadSamples03(q, a, b);
                LoadSamples03(q + 6, d, e);
                a = idx(a); b = idx(b); d = idx(d); e = idx(e);
                q[0] = t[a]; q[3] = t[b]; q[6] = t[d]; q[9] = t[e];
            }
            for (; i < len; ++i, q += 3)
                q[0] = t[idx(q[0])];
        }
    }
}

void Map16x3Fast(uint16_t* p, size_t n, const uint16_t* const tables[3], uint32_t last)
{
    if (last >= 0xFFFF)
        Map16x3Blocked<false>(p, n, tables, last);
    else if (last >= kBlockedLast)
        Map16x3Blocked<true>(p, n, tables, last);
    else
        Map16x3Loop(p, n, tables, last);
}

template <typename T>
void PairFast(T* p, size_t n, const int32_t* const pairs[3], uint32_t last, int32_t maxOut)
{
    const int32_t *pb = pairs[0], *pg = pairs[1], *pr = pairs[2];
    for (size_t i = 0; i < n; ++i, p += 3) {
        const int32_t* b = pb + 2 * size_t(std::min<uint32_t>(p[0], last));
        const int32_t* g = pg + 2 * size_t(std::min<uint32_t>(p[1], last));
        const int32_t* r = pr + 2 * size_t(std::min<uint32_t>(p[2], last));
        p[0] = T(std::clamp<int64_t>(int64_t(b[0]) + g[1] + r[1], 0, maxOut));
        p[1] = T(std::clamp<int64_t>(int64_t(g[0]) + r[1] + b[1], 0, maxOut));
        p[2] = T(std::clamp<int64_t>(int64_t(r[0]) + g[1] + b[1], 0, maxOut));
    }
}

const LutKernels kReference{&MapRef<uint8_t>, &MapRef<uint16_t>, &Map3Ref<uint8_t>,
                            &Map3Ref<uint16_t>, &PairRef<uint8_t>, &PairRef<uint16_t>};
const LutKernels kFast{&Map8Fast, &Map16Fast, &Map8x3Fast, &Map16x3Fast, &PairFast<uint8_t>, &PairFast<uint16_t>};

LutKernels WithMap8(void (*map8)(uint8_t*, size_t, const uint16_t*, uint32_t))
{
    LutKernels k = kFast;
    if (map8)
        k.Map8 = map8;
    return k;
}

const LutKernels kByLevel[kKernelLevels] = {kReference, kFast, WithMap8(avx2::Map8),
                                            WithMap8(avx512::Map8 ? avx512::Map8 : avx2::Map8)};

} // namespace

const LutKernels& GetLutKernels()
{
    return PickKernels(kByLevel);
}

const LutKernels& GetReferenceLutKernels()
{
    return kReference;
}

} // namespace zx
