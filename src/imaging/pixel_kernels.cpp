#include "imaging/pixel_kernels.h"

#include "imaging/kernel_level.h"

namespace zx {
namespace {

// ---- Reference: the per-pixel rules everywhere --------------------------------

template <typename T>
void DemosaicRef(const T* src, T* dst, uint32_t w, uint32_t h, int type, uint32_t y0, uint32_t y1)
{
    for (uint32_t y = y0; y < y1; ++y) {
        const BayerRow row = BayerRowOf(type, y);
        for (uint32_t x = 0; x < w; ++x)
            BayerPixel(src, w, h, x, y, row, dst + (size_t(y) * w + x) * 3);
    }
}

template <typename T>
void MonoBin2Ref(const T* src, T* dst, uint32_t w, uint32_t h, uint32_t)
{
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) {
            const T* a = src + size_t(2 * y) * 2 * w + 2 * x;
            const T* c = a + size_t(2) * w;
            dst[size_t(y) * w + x] = T((uint32_t(a[0]) + a[1] + c[0] + c[1] + 2) >> 2);
        }
}

template <typename T>
void BayerBin2Ref(const T* src, T* dst, uint32_t w, uint32_t h, int type)
{
    const BayerCell cell = BayerCellOf(type);
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) {
            const T* a = src + size_t(2 * y) * 2 * w + 2 * x;
            const uint32_t v[4] = {a[0], a[1], a[2 * w], a[2 * w + 1]};
            T* o = dst + (size_t(y) * w + x) * 3;
            o[0] = T(v[cell.blue]);
            o[1] = T((v[cell.green1] + v[cell.green2]) >> 1);
            o[2] = T(v[cell.red]);
        }
}

template <typename T>
const PixelKernels<T> kReference{&DemosaicRef<T>, &MonoBin2Ref<T>, &BayerBin2Ref<T>};

// A level the build cannot target runs the level below it.
template <typename T>
PixelKernels<T> Or(const PixelKernels<T>* k, const PixelKernels<T>* below)
{
    return k ? *k : *below;
}

// AVX-512 has no pixel kernels of its own: the AVX2 ones serve it.
const PixelKernels<uint8_t> kByLevel8[kKernelLevels] = {
    kReference<uint8_t>, *sse2::Kernels8(), Or(avx2::Kernels8(), sse2::Kernels8()),
    Or(avx2::Kernels8(), sse2::Kernels8())};
const PixelKernels<uint16_t> kByLevel16[kKernelLevels] = {
    kReference<uint16_t>, *sse2::Kernels16(), Or(avx2::Kernels16(), sse2::Kernels16()),
    Or(avx2::Kernels16(), sse2::Kernels16())};

} // namespace

template <typename T>
const PixelKernels<T>& GetPixelKernels()
{
    if constexpr (sizeof(T) == 1)
        return PickKernels(kByLevel8);
    else
        return PickKernels(kByLevel16);
}

template <typename T>
const PixelKernels<T>& GetReferencePixelKernels()
{
    return kReference<T>;
}

template ZX_API const PixelKernels<uint8_t>& GetPixelKernels<uint8_t>();
template ZX_API const PixelKernels<uint16_t>& GetPixelKernels<uint16_t>();
template ZX_API const PixelKernels<uint8_t>& GetReferencePixelKernels<uint8_t>();
template ZX_API const PixelKernels<uint16_t>& GetReferencePixelKernels<uint16_t>();

} // namespace zx
