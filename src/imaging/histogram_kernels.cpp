#include "imaging/histogram_kernels.h"

#include <algorithm>
#include <vector>

#include "imaging/kernel_level.h"

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

constexpr int kMonoCopies = 4;

template <typename T, bool Clamp>
void CountMono(const T* p, size_t n, uint32_t* c, size_t stride, uint32_t rawTop)
{
    auto idx = [rawTop](uint32_t v) { return Clamp ? std::min(v, rawTop) : v; };
    uint32_t* c0 = c;
    uint32_t* c1 = c + stride;
    uint32_t* c2 = c + 2 * stride;
    uint32_t* c3 = c + 3 * stride;
    size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        ++c0[idx(p[i])];
        ++c1[idx(p[i + 1])];
        ++c2[idx(p[i + 2])];
        ++c3[idx(p[i + 3])];
    }
    for (; i < n; ++i)
        ++c0[idx(p[i])];
}

template <typename T>
void MonoFast(const T* data, size_t rowSamples, const HistogramSpan* spans, size_t count, uint32_t* bins,
              unsigned shift, uint32_t top)
{
    const uint64_t maxRaw = sizeof(T) == 1 ? 0xFF : 0xFFFF;
    const uint32_t rawTop = uint32_t(std::min<uint64_t>(((uint64_t(top) + 1) << shift) - 1, maxRaw));
    const size_t stride = size_t(rawTop) + 1;
    std::vector<uint32_t> local(kMonoCopies * stride, 0);
    const bool clamp = rawTop < maxRaw;
    for (size_t s = 0; s < count; ++s) {
        const T* p = data + spans[s].y * rowSamples + spans[s].x0;
        if (clamp)
            CountMono<T, true>(p, spans[s].n, local.data(), stride, rawTop);
        else
            CountMono<T, false>(p, spans[s].n, local.data(), stride, rawTop);
    }
    for (uint32_t v = 0; v <= rawTop; ++v) {
        uint32_t sum = 0;
        for (int k = 0; k < kMonoCopies; ++k)
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
    for (int c = 0; c < 3; ++c) {
        offset[c] = total;
        total += 2 * (size_t(t[c]) + 1);
    }
    std::vector<uint32_t> local(total, 0);
    uint32_t* copies[6];
    for (int c = 0; c < 3; ++c) {
        copies[c] = local.data() + offset[c];
        copies[c + 3] = copies[c] + t[c] + 1;
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
            bins[c][v] += copies[c][v] + copies[c + 3][v];
}

template <typename T>
const HistogramKernels<T> kReference{&MonoRef<T>, &ColourRef<T>};
// Counting is bound by the increments, not by arithmetic, so the SSE2 and AVX2
// levels share the scalar sub-histogram kernels.
template <typename T>
const HistogramKernels<T> kFast{&MonoFast<T>, &ColourFast<T>};

} // namespace

template <typename T>
const HistogramKernels<T>& GetReferenceHistogramKernels()
{
    return kReference<T>;
}

template <typename T>
const HistogramKernels<T>& GetHistogramKernels()
{
    return KernelLevel() == ZX_KERNELS_REFERENCE ? kReference<T> : kFast<T>;
}

template const HistogramKernels<uint8_t>& GetHistogramKernels<uint8_t>();
template const HistogramKernels<uint16_t>& GetHistogramKernels<uint16_t>();
template const HistogramKernels<uint8_t>& GetReferenceHistogramKernels<uint8_t>();
template const HistogramKernels<uint16_t>& GetReferenceHistogramKernels<uint16_t>();

} // namespace zx
