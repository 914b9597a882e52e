#include "imaging/histogram_kernels.h"

#include <algorithm>

namespace zx {
namespace {

template <typename T>
void MonoRef(const T* p, uint32_t n, uint32_t* bins, unsigned shift, uint32_t top)
{
    for (uint32_t i = 0; i < n; ++i)
        ++bins[std::min<uint32_t>(uint32_t(p[i]) >> shift, top)];
}

template <typename T>
void ColourRef(const T* p, uint32_t n, uint32_t* const bins[3], const uint32_t tops[3])
{
    uint32_t* const b0 = bins[0];
    uint32_t* const b1 = bins[1];
    uint32_t* const b2 = bins[2];
    const uint32_t t0 = tops[0], t1 = tops[1], t2 = tops[2];
    for (uint32_t i = 0; i < n; ++i, p += 3) {
        ++b0[std::min<uint32_t>(p[0], t0)];
        ++b1[std::min<uint32_t>(p[1], t1)];
        ++b2[std::min<uint32_t>(p[2], t2)];
    }
}

} // namespace

template <typename T>
const HistogramKernels<T>& GetReferenceHistogramKernels()
{
    static const HistogramKernels<T> k{&MonoRef<T>, &ColourRef<T>};
    return k;
}

template <typename T>
const HistogramKernels<T>& GetHistogramKernels()
{
    return GetReferenceHistogramKernels<T>();
}

template const HistogramKernels<uint8_t>& GetHistogramKernels<uint8_t>();
template const HistogramKernels<uint16_t>& GetHistogramKernels<uint16_t>();
template const HistogramKernels<uint8_t>& GetReferenceHistogramKernels<uint8_t>();
template const HistogramKernels<uint16_t>& GetReferenceHistogramKernels<uint16_t>();

} // namespace zx
