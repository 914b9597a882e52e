#include "zx/bayer.h"

#include "imaging/kernel_level.h"
#include "imaging/parallel.h"
#include "imaging/pixel_kernels.h"
#include "imaging/pixel_io.h"
#include "zxhost/system.h"

namespace zx {
namespace {

// Reference level: the per-pixel rule everywhere.
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
void MonoBin2Ref(const T* src, T* dst, uint32_t w, uint32_t h)
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

} // namespace

template <>
const PixelKernels<uint8_t>& GetPixelKernels<uint8_t>()
{
    const int level = KernelLevel();
    if (level >= ZX_KERNELS_AVX2)
        if (const auto* k = avx2::Kernels8())
            return *k;
    return level >= ZX_KERNELS_SSE2 ? *sse2::Kernels8() : kReference<uint8_t>;
}

template <>
const PixelKernels<uint16_t>& GetPixelKernels<uint16_t>()
{
    const int level = KernelLevel();
    if (level >= ZX_KERNELS_AVX2)
        if (const auto* k = avx2::Kernels16())
            return *k;
    return level >= ZX_KERNELS_SSE2 ? *sse2::Kernels16() : kReference<uint16_t>;
}

} // namespace zx

void ZX_BayerToRGB(SZxPicBuf* pPicBuf, const void* pSrc, EZxBayerType type)
{
    const wchar_t* const kSource = L"common";
    if (ZX_DIAG_FAIL_IF(pPicBuf == NULL, kSource) || ZX_DIAG_FAIL_IF(pSrc == NULL, kSource) ||
        ZX_DIAG_FAIL_IF(pPicBuf->uiComp != 3, kSource) || ZX_DIAG_FAIL_IF(type < 1 || type > 4, kSource) ||
        ZX_DIAG_FAIL_IF(pPicBuf->uiWidth < 2 || pPicBuf->uiHeight < 2, kSource) ||
        !zx::DestinationHolds(*pPicBuf, 3, kSource))
        return;
    const uint32_t w = pPicBuf->uiWidth, h = pPicBuf->uiHeight;
    // Bands of rows; each reads the rows beside it, so none depends on another.
    const unsigned parts = zx::PartsFor(uint64_t(w) * h, h);
    zx::RunParts(parts, [&](unsigned p) {
        const uint32_t y0 = uint32_t(zx::PartStart(h, p, parts)), y1 = uint32_t(zx::PartStart(h, p + 1, parts));
        if (pPicBuf->uiBits > 8)
            zx::GetPixelKernels<uint16_t>().Demosaic(static_cast<const uint16_t*>(pSrc),
                                                     static_cast<uint16_t*>(pPicBuf->pData), w, h, type, y0, y1);
        else
            zx::GetPixelKernels<uint8_t>().Demosaic(static_cast<const uint8_t*>(pSrc),
                                                    static_cast<uint8_t*>(pPicBuf->pData), w, h, type, y0, y1);
    });
}

void ZX_BayerToRGB(CZxGrabberSample01* pSample, const void* pSrc, EZxBayerType type)
{
    if (ZX_DIAG_FAIL_IF(pSample == NULL, L"common"))
        return;
    SZxPicBuf pb;
    pSample->GetPicBuf(&pb);
    ZX_BayerToRGB(&pb, pSrc, type);
}
