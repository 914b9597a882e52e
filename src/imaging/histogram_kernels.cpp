#include "imaging/histogram_kernels.h"

#include <algorithm>
#include <bitset>
#include <cstring>
#include <memory>
#include <new>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "imaging/kernel_level.h"
#include "imaging/scratch.h"

namespace zx {
namespace {

// ---- Reference -------------------------------------------------------------------

template <typename T>
void MonoRef(const T* data, size_t rowSamples, const HistogramSpan* spans, size_t count, uint32_t* bins,
             unsigned shift, uint32_t top)
{
    for (size_t s = 0; s < count; ++s) {
        const T* p = data + spans[s].y * rowSamples + spans[s].x0;
        for (size_t i = 0; i < spans[s].n; ++i)
            ++bins[std::min<uint32_t>(uint32_t(p[i]) >> shift, top)];
    }
}

template <typename T>
void ColourRef(const T* data, size_t rowSamples, const HistogramSpan* spans, size_t count,
               uint32_t* const bins[3], const uint32_t tops[3])
{
    for (size_t s = 0; s < count; ++s) {
        const T* p = data + spans[s].y * rowSamples + size_t(spans[s].x0) * 3;
        for (size_t i = 0; i < spans[s].n; ++i, p += 3)
            for (int c = 0; c < 3; ++c)
                ++bins[c][std::min<uint32_t>(p[c], tops[c])];
    }
}

// ---- Fast: private sub-histograms of raw values ------------------------------------
//
// Consecutive equal samples would chain every increment through one counter
// (store-to-load forwarding), so runs of equal values (flat frames) are counted
// round-robin into separate copies that are folded into the caller's bins at the
// end. Raw values are clamped to the largest one that still maps below the top
// bin, which makes the fold's min(v >> shift, top) equal to the per-sample rule.

// Copies: enough to hide the forwarding latency on flat frames, few enough
// that they stay in the first- or second-level cache for deep ranges. Measured
// with zxbench: more copies than these cost more in increments spread over more
// lines than they save on flat frames.
// One cache line of padding per copy keeps the copies of one value from sharing
// their low 12 address bits (4K aliasing stalls their increments).
constexpr size_t kPad = 16;

size_t MonoCopies(size_t bins)
{
    return bins <= 256 ? 2 : bins <= 4096 ? 4 : 2;
}

// FixedStride > 0 makes the copies' offsets constants, so every increment is a
// single read-modify-write with a displacement (the full 8-bit range).
template <typename T, bool Clamp, int Copies, size_t FixedStride = 0>
void CountMono(const T* p, size_t n, uint32_t* c, size_t stride, uint32_t rawTop)
{
    if (FixedStride)
        stride = FixedStride;
    auto idx = [rawTop](uint32_t v) { return Clamp ? std::min(v, rawTop) : v; };
    size_t i = 0;
    for (; i + Copies <= n; i += Copies)
        for (int k = 0; k < Copies; ++k)
            ++c[k * stride + idx(p[i + k])];
    for (; i < n; ++i)
        ++c[idx(p[i])];
}

template <typename T, bool Clamp>
void CountMonoCopies(const T* p, size_t n, uint32_t* c, size_t stride, uint32_t rawTop, size_t copies)
{
    if (copies == 2 && !Clamp && stride == 256 + kPad)
        CountMono<T, false, 2, 256 + kPad>(p, n, c, stride, rawTop);
    else if (copies == 4)
        CountMono<T, Clamp, 4>(p, n, c, stride, rawTop);
    else
        CountMono<T, Clamp, 2>(p, n, c, stride, rawTop);
}

// Whole 8-bit frames count pairs of neighbouring samples: the two bytes read
// as one 16-bit index into a 65536-entry table, one increment per two samples,
// and the table folds into 256 counts by its rows and columns. Byte order does
// not matter: both halves of an index are counted. Below this many samples
// zeroing and folding the tables costs more than it saves.
constexpr size_t kPairMinSamples = size_t(1) << 18;

// Two tables, chosen per stretch of samples. On noise, where a pair rarely
// recurs, 8-bit counters (64 KiB, mostly in the first-level cache) are fastest;
// a counter that wraps adds 256 to both of its values. Where few values occur
// (flat areas, smooth scenes, short patterns) the same counters are hit again
// and again, and each increment waits for the previous one to the same counter,
// which the core forwards quickly only for full-width counters: those stretches
// use 32-bit counters, whose touched part then sits in the first-level cache.
// The wide table (256 KiB) is only made for a frame that needs it; without
// memory for it those stretches count into the narrow table too.
struct PairTables {
    ScratchBlock narrow{size_t(1) << 16};
    std::unique_ptr<ScratchBlock> wide;

    uint32_t* Wide()
    {
        if (!wide)
            wide.reset(new (std::nothrow) ScratchBlock((size_t(1) << 16) * sizeof(uint32_t)));
        return wide ? wide->As<uint32_t>() : nullptr;
    }
};

constexpr size_t kPairStretch = size_t(1) << 16;  // samples per choice of table

inline uint64_t Load64(const uint8_t* p)
{
    uint64_t w;
    std::memcpy(&w, p, 8);
    return w;
}

// Whether n samples (the first 128 of a stretch) hold at most 64 distinct
// values (noise shows about 100): their pairs then touch at most 16 KiB of the
// wide table.
bool FewValues(const uint8_t* p, size_t n)
{
    std::bitset<256> seen;
    for (size_t i = 0; i < n; ++i)
        seen.set(p[i]);
    return seen.count() <= 64;
}

inline bool Rarely(bool c)
{
#if defined(__GNUC__)
    return __builtin_expect(c, 0);
#else
    return c;
#endif
}

// ++table[k], telling whether the counter wrapped to 0. On x86-64 the increment
// is one instruction that addresses table + k itself: compilers otherwise form
// the address in a separate instruction, which costs a fifth of the loop.
inline bool IncrementWraps(uint8_t* table, size_t k)
{
#if defined(__GNUC__) && defined(__x86_64__)
    bool wrapped;
    __asm__("addb $1, (%1,%2)" : "=@ccz"(wrapped) : "r"(table), "r"(k) : "memory");
    return wrapped;
#else
    return ++table[k] == 0;
#endif
}

// A long run is counted as two streams, its halves, interleaved: twice the
// independent increments in flight. A short one (a probe's row) is counted as
// one stream: there the second stream's start and end cost more than its
// overlap gains (13 % of a 20 MP frame counted row by row). Each pair is loaded
// as one 16-bit index, which leaves the arithmetic units to the increments. The
// wrap is laid out away from the loop, so the usual increment takes no branch.
constexpr size_t kTwoStreamsMin = size_t(1) << 15;

void CountPairsNarrow(const uint8_t* p, size_t n, uint8_t* narrow, uint32_t* single)
{
    auto count = [narrow, single](const uint8_t* at) {
        uint16_t k16;
        std::memcpy(&k16, at, 2);
        const size_t k = k16;
        if (Rarely(IncrementWraps(narrow, k))) {
            single[k & 0xFF] += 256;
            single[k >> 8] += 256;
        }
    };
    if (n < kTwoStreamsMin) {
        size_t i = 0;
        for (; i + 8 <= n; i += 8) {
            count(p + i);
            count(p + i + 2);
            count(p + i + 4);
            count(p + i + 6);
        }
        for (; i < n; ++i)
            ++single[p[i]];
        return;
    }
    const size_t half = (n / 2) & ~size_t(7);
    const uint8_t* q = p + half;
    for (size_t i = 0; i < half; i += 8) {
        count(p + i);
        count(q + i);
        count(p + i + 2);
        count(q + i + 2);
        count(p + i + 4);
        count(q + i + 4);
        count(p + i + 6);
        count(q + i + 6);
    }
    for (size_t i = 2 * half; i < n; ++i)
        ++single[p[i]];
}

void CountPairsWide(const uint8_t* p, size_t n, uint32_t* wide, uint32_t* single)
{
    size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        const uint64_t w = Load64(p + i);
        ++wide[w & 0xFFFF];
        ++wide[(w >> 16) & 0xFFFF];
        ++wide[(w >> 32) & 0xFFFF];
        ++wide[w >> 48];
    }
    for (; i < n; ++i)
        ++single[p[i]];
}

// The table is chosen again after every kPairStretch samples of the region, not
// at the start of every span: a probe's spans are rows, and a choice per row
// would cost a check per few thousand samples. A choice made on fewer samples
// than the check's 128 (a circle's first rows are a few pixels wide) holds for
// the rest of its span only.
constexpr size_t kChoiceSamples = 128;

struct PairChoice {
    size_t left = 0;  // samples still counted into the current choice
    uint32_t* wide = nullptr;
};

void CountPairs(const uint8_t* p, size_t n, PairTables& t, PairChoice& choice, uint32_t* single)
{
    for (size_t at = 0; at < n;) {
        if (choice.left == 0) {
            const size_t check = std::min(kChoiceSamples, n - at);
            choice.wide = FewValues(p + at, check) ? t.Wide() : nullptr;
            choice.left = check == kChoiceSamples ? kPairStretch : n - at;
        }
        const size_t len = std::min(choice.left, n - at);
        if (choice.wide)
            CountPairsWide(p + at, len, choice.wide, single);
        else
            CountPairsNarrow(p + at, len, t.narrow.As<uint8_t>(), single);
        choice.left -= len;
        at += len;
    }
}

// Adds pair (a, b) = pairs[a + 256 b] to counts a and b.
template <typename C>
void FoldPairs(const C* pairs, uint32_t* counts)
{
    for (uint32_t b = 0; b < 256; ++b) {
        const C* row = pairs + 256 * b;
        uint32_t rowSum = 0;
        for (uint32_t a = 0; a < 256; ++a) {
            rowSum += row[a];
            counts[a] += row[a];
        }
        counts[b] += rowSum;
    }
}

// Bitwise OR of n samples: one pass that tells whether a span can skip the clamp.
template <typename T>
uint32_t OrOf(const T* p, size_t n)
{
    size_t i = 0;
    uint32_t acc = 0;
#if defined(__SSE2__)
    __m128i v = _mm_setzero_si128();
    for (; i + 16 / sizeof(T) <= n; i += 16 / sizeof(T))
        v = _mm_or_si128(v, _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i)));
    alignas(16) T lanes[16 / sizeof(T)];
    _mm_store_si128(reinterpret_cast<__m128i*>(lanes), v);
    for (T l : lanes)
        acc |= l;
#endif
    for (; i < n; ++i)
        acc |= p[i];
    return acc;
}

// ++table[k] on 16-bit counters, telling whether the counter wrapped to 0; one
// instruction that addresses the counter itself, as IncrementWraps.
inline bool IncrementWraps16(uint16_t* table, size_t k)
{
#if defined(__GNUC__) && defined(__x86_64__)
    bool wrapped;
    __asm__("addw $1, (%1,%2,2)" : "=@ccz"(wrapped) : "r"(table), "r"(k) : "memory");
    return wrapped;
#else
    return ++table[k] == 0;
#endif
}

// Deep ranges (above 4096 bins): tables of 32-bit counters (256 KiB per channel
// for 16-bit samples) do not stay in the second-level cache beside the streamed
// frame, and each increment that misses waits for the line. 16-bit counters
// halve that footprint; a counter that wraps adds 65536 to a 32-bit table that is
// touched only then. Colour counts one channel at a time over a stretch of
// pixels, so only one channel's 128 KiB of counters is hot (and within the
// first-level TLB's reach) while the stretch stays in the second-level cache.
// Where neighbouring samples repeat (flat areas, saturation), one counter is hit
// again and again, which the core forwards quickly only at full width: such
// stretches count straight into 32-bit tables.
constexpr uint32_t kDeep = 4096;
constexpr size_t kStretch = size_t(1) << 14;  // pixels per choice of table
constexpr size_t kPad16 = 32;                 // one cache line of 16-bit counters

// Whether the first 64 pixels of a colour stretch repeat a channel's previous
// sample at least 16 times (noise at 16 bits almost never does).
template <typename T>
bool RepeatsOften(const T* p, size_t n)
{
    unsigned repeats = 0;
    for (size_t i = 3; i < std::min<size_t>(n, 64) * 3; ++i)
        repeats += p[i] == p[i - 3];
    return repeats >= 16;
}

// Whether the first 64 samples of a mono stretch spread over more than 4096
// values. Narrower stretches (dark or flat scenes, few distinct values) touch
// few enough 32-bit counters to keep them cached, and there the copies beat
// narrow counters, which chain on values that recur within a few samples.
template <typename T>
bool SpreadsWide(const T* p, size_t n)
{
    uint32_t lo = p[0], hi = p[0];
    for (size_t i = 1; i < std::min<size_t>(n, 64); ++i) {
        lo = std::min<uint32_t>(lo, p[i]);
        hi = std::max<uint32_t>(hi, p[i]);
    }
    return hi - lo > kDeep;
}

// n samples, Step apart, into 16-bit counters with their 32-bit wrap table.
template <typename T, bool Clamp, size_t Step>
void CountNarrow(const T* p, size_t n, uint16_t* narrow, uint32_t* wide, uint32_t top)
{
    auto count = [=](uint32_t v) {
        const size_t k = Clamp ? std::min(v, top) : v;
        if (Rarely(IncrementWraps16(narrow, k)))
            wide[k] += 65536;
    };
    size_t i = 0;
    for (; i + 4 <= n; i += 4, p += 4 * Step) {
        count(p[0]);
        count(p[Step]);
        count(p[2 * Step]);
        count(p[3 * Step]);
    }
    for (; i < n; ++i, p += Step)
        count(p[0]);
}

template <typename T>
void MonoFast(const T* data, size_t rowSamples, const HistogramSpan* spans, size_t count, uint32_t* bins,
              unsigned shift, uint32_t top)
{
    const uint64_t maxRaw = sizeof(T) == 1 ? 0xFF : 0xFFFF;
    const uint32_t rawTop = uint32_t(std::min<uint64_t>(((uint64_t(top) + 1) << shift) - 1, maxRaw));
    const size_t stride = size_t(rawTop) + 1 + kPad;
    const size_t copies = MonoCopies(size_t(rawTop) + 1);
    // Deep ranges: 16-bit counters, with the first 32-bit copy as their wrap table.
    const bool deep = rawTop >= kDeep;
    const size_t narrowCount = deep ? size_t(rawTop) + 1 + kPad16 : 0;
    ScratchBlock block(copies * stride * sizeof(uint32_t) + narrowCount * sizeof(uint16_t));
    if (!block.Data()) {
        MonoRef(data, rowSamples, spans, count, bins, shift, top);
        return;
    }
    uint32_t* const local = block.As<uint32_t>();
    uint16_t* const narrow = reinterpret_cast<uint16_t*>(local + copies * stride);
    size_t total = 0;
    for (size_t s = 0; s < count; ++s)
        total += spans[s].n;
    bool counted = false;
    if constexpr (sizeof(T) == 1) {
        if (rawTop == 0xFF && total >= kPairMinSamples) {
            PairTables tables;
            if (tables.narrow.Data()) {
                PairChoice choice;
                for (size_t s = 0; s < count; ++s)
                    CountPairs(data + spans[s].y * rowSamples + spans[s].x0, spans[s].n, tables, choice, local);
                FoldPairs(tables.narrow.As<uint8_t>(), local);
                if (tables.wide && tables.wide->Data())
                    FoldPairs(tables.wide->As<uint32_t>(), local);
                counted = true;
            }
        }
    }
    // A span whose samples all lie within rawTop (the usual case: nothing above
    // the frame's depth) needs no clamp; rawTop + 1 is a power of two unless a
    // clip limit set it, and then every sample is clamped.
    const bool pow2 = ((uint64_t(rawTop) + 1) & rawTop) == 0;
    for (size_t s = 0; s < count && !counted; ++s) {
        const T* p = data + spans[s].y * rowSamples + spans[s].x0;
        const bool clamp = rawTop < maxRaw && (!pow2 || (OrOf(p, spans[s].n) & ~rawTop) != 0);
        for (size_t at = 0; at < spans[s].n; at += deep ? kStretch : spans[s].n) {
            const size_t len = deep ? std::min(kStretch, spans[s].n - at) : spans[s].n;
            const T* q = p + at;
            if (deep && SpreadsWide(q, len)) {
                if (clamp)
                    CountNarrow<T, true, 1>(q, len, narrow, local, rawTop);
                else
                    CountNarrow<T, false, 1>(q, len, narrow, local, rawTop);
            } else if (clamp) {
                CountMonoCopies<T, true>(q, len, local, stride, rawTop, copies);
            } else {
                CountMonoCopies<T, false>(q, len, local, stride, rawTop, copies);
            }
        }
    }
    for (uint32_t v = 0; v <= rawTop; ++v) {
        uint32_t sum = deep ? narrow[v] : 0;
        for (size_t k = 0; k < copies; ++k)
            sum += local[k * stride + v];
        bins[std::min(v >> shift, top)] += sum;
    }
}

template <typename T, bool Clamp>
void CountColour(const T* p, size_t n, uint32_t* const c[6], const uint32_t tops[3])
{
    auto idx = [](uint32_t v, uint32_t t) { return Clamp ? std::min(v, t) : v; };
    const uint32_t t0 = tops[0], t1 = tops[1], t2 = tops[2];
    size_t i = 0;
    // Even and odd pixels count into separate copies.
    for (; i + 2 <= n; i += 2, p += 6) {
        ++c[0][idx(p[0], t0)];
        ++c[1][idx(p[1], t1)];
        ++c[2][idx(p[2], t2)];
        ++c[3][idx(p[3], t0)];
        ++c[4][idx(p[4], t1)];
        ++c[5][idx(p[5], t2)];
    }
    if (i < n) {
        ++c[0][idx(p[0], t0)];
        ++c[1][idx(p[1], t1)];
        ++c[2][idx(p[2], t2)];
    }
}

template <typename T>
void ColourDeep(const T* data, size_t rowSamples, const HistogramSpan* spans, size_t count,
                uint32_t* const bins[3], const uint32_t t[3], bool clamp)
{
    size_t offset[3], total = 0;
    for (int c = 0; c < 3; ++c) {
        offset[c] = total;
        total += size_t(t[c]) + 1 + kPad16;
    }
    ScratchBlock narrowMem(total * sizeof(uint16_t));
    if (!narrowMem.Data()) {
        ColourRef(data, rowSamples, spans, count, bins, t);
        return;
    }
    uint16_t* narrow[3];
    for (int c = 0; c < 3; ++c)
        narrow[c] = narrowMem.As<uint16_t>() + offset[c];
    // A narrow counter's wraps go straight to the caller's bins. Stretches of
    // repeats count into padded 32-bit tables, made for the first such stretch
    // (the bins themselves as a last resort: the same counts, 4K-aliased).
    std::unique_ptr<ScratchBlock> wideMem;
    uint32_t* wide[6] = {bins[0], bins[1], bins[2], bins[0], bins[1], bins[2]};
    auto repeatsTables = [&]() {
        if (!wideMem) {
            wideMem.reset(new (std::nothrow) ScratchBlock(total * sizeof(uint32_t)));
            if (wideMem && wideMem->Data())
                for (int c = 0; c < 3; ++c)
                    wide[c] = wide[c + 3] = wideMem->As<uint32_t>() + offset[c];
        }
        return wide;
    };
    for (size_t s = 0; s < count; ++s) {
        const T* p = data + spans[s].y * rowSamples + size_t(spans[s].x0) * 3;
        for (size_t at = 0; at < spans[s].n; at += kStretch) {
            const size_t len = std::min(kStretch, spans[s].n - at);
            const T* q = p + 3 * at;
            if (RepeatsOften(q, len)) {
                if (clamp)
                    CountColour<T, true>(q, len, repeatsTables(), t);
                else
                    CountColour<T, false>(q, len, repeatsTables(), t);
            } else {
                for (int c = 0; c < 3; ++c)
                    if (clamp)
                        CountNarrow<T, true, 3>(q + c, len, narrow[c], bins[c], t[c]);
                    else
                        CountNarrow<T, false, 3>(q + c, len, narrow[c], bins[c], t[c]);
            }
        }
    }
    const bool ownWide = wide[0] != bins[0];
    for (int c = 0; c < 3; ++c)
        for (uint32_t v = 0; v <= t[c]; ++v)
            bins[c][v] += narrow[c][v] + (ownWide ? wide[c][v] : 0);
}

template <typename T>
void ColourFast(const T* data, size_t rowSamples, const HistogramSpan* spans, size_t count,
                uint32_t* const bins[3], const uint32_t tops[3])
{
    const uint32_t maxRaw = sizeof(T) == 1 ? 0xFF : 0xFFFF;
    uint32_t t[3];
    size_t offset[3], total = 0;
    bool clamp = false;
    for (int c = 0; c < 3; ++c) {
        t[c] = std::min(tops[c], maxRaw);
        clamp = clamp || t[c] < maxRaw;
    }
    if (std::max({t[0], t[1], t[2]}) >= kDeep) {
        ColourDeep(data, rowSamples, spans, count, bins, t, clamp);
        return;
    }
    const size_t nCopies = 2;
    for (int c = 0; c < 3; ++c) {
        offset[c] = total;
        total += nCopies * (size_t(t[c]) + 1 + kPad);
    }
    ScratchBlock local(total * sizeof(uint32_t));
    if (!local.Data()) {
        ColourRef(data, rowSamples, spans, count, bins, t);
        return;
    }
    uint32_t* copies[6];
    for (int c = 0; c < 3; ++c) {
        copies[c] = local.As<uint32_t>() + offset[c];
        copies[c + 3] = nCopies == 2 ? copies[c] + t[c] + 1 + kPad : copies[c];
    }
    for (size_t s = 0; s < count; ++s) {
        const T* p = data + spans[s].y * rowSamples + size_t(spans[s].x0) * 3;
        if (clamp)
            CountColour<T, true>(p, spans[s].n, copies, t);
        else
            CountColour<T, false>(p, spans[s].n, copies, t);
    }
    for (int c = 0; c < 3; ++c)
        for (uint32_t v = 0; v <= t[c]; ++v)
            bins[c][v] += copies[c][v] + (nCopies == 2 ? copies[c + 3][v] : 0);
}

template <typename T>
const HistogramKernels<T> kReference{&MonoRef<T>, &ColourRef<T>};
// Counting is bound by the increments, not by arithmetic, so the SSE2 and AVX2
// levels share the scalar sub-histogram kernels.
template <typename T>
const HistogramKernels<T> kFast{&MonoFast<T>, &ColourFast<T>};

template <typename T>
const HistogramKernels<T> kByLevel[kKernelLevels] = {kReference<T>, kFast<T>, kFast<T>, kFast<T>};

} // namespace

template <typename T>
const HistogramKernels<T>& GetReferenceHistogramKernels()
{
    return kReference<T>;
}

template <typename T>
const HistogramKernels<T>& GetHistogramKernels()
{
    return PickKernels(kByLevel<T>);
}

template ZX_API const HistogramKernels<uint8_t>& GetHistogramKernels<uint8_t>();
template ZX_API const HistogramKernels<uint16_t>& GetHistogramKernels<uint16_t>();
template ZX_API const HistogramKernels<uint8_t>& GetReferenceHistogramKernels<uint8_t>();
template ZX_API const HistogramKernels<uint16_t>& GetReferenceHistogramKernels<uint16_t>();

} // namespace zx
