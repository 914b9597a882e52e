#include "zx/binning.h"

#include <cstring>

#include "imaging/parallel.h"
#include "imaging/pixel_io.h"
#include "imaging/pixel_kernels.h"
#include "zxhost/geomtrans.h"
#include "zxhost/system.h"

namespace {
const wchar_t* const kSource = L"common";

// Runs a 2 x 2 kernel over bands of output rows: band y0 .. y1 reads source
// rows 2 y0 .. 2 y1 - 1 and writes only its own rows.
template <typename T, typename Kernel>
void InBands(const void* src, void* dst, uint32_t w, uint32_t h, uint32_t comp, Kernel&& kernel)
{
    const unsigned parts = zx::PartsFor(uint64_t(w) * h * 4, h);
    zx::RunParts(parts, [&](unsigned p) {
        const uint32_t y0 = uint32_t(zx::PartStart(h, p, parts)), y1 = uint32_t(zx::PartStart(h, p + 1, parts));
        kernel(static_cast<const T*>(src) + size_t(y0) * 4 * w, static_cast<T*>(dst) + size_t(y0) * w * comp, y1 - y0);
    });
}
} // namespace

void ZX_MonoBinning(SZxPicBuf* pPicBuf, const void* pSrc, uint32_t factor)
{
    if (ZX_DIAG_FAIL_IF(pPicBuf == NULL, kSource))
        return;
    ZX_DIAG_FAIL_IF(pPicBuf->uiComp!=1, kSource);
    if (ZX_DIAG_FAIL_IF(pSrc == NULL, kSource) || ZX_DIAG_FAIL_IF(factor == 0, kSource) ||
        !zx::DestinationHolds(*pPicBuf, 1, kSource))
        return;
    const uint32_t w = pPicBuf->uiWidth, h = pPicBuf->uiHeight;
    if (w == 0 || h == 0)
        return;
    if (factor == 1) {
        // One component's frame: a destination that claims more (a colour buffer
        // passed by mistake) would otherwise read past the raw source.
        std::memcpy(pPicBuf->pData, pSrc, size_t(uint64_t(w) * h * ZX_BytesPerSample(pPicBuf->uiBits)));
        return;
    }
    if (factor == 2) {
        if (pPicBuf->uiBits > 8)
            InBands<uint16_t>(pSrc, pPicBuf->pData, w, h, 1, [&](const uint16_t* s, uint16_t* d, uint32_t rows) {
                zx::GetPixelKernels<uint16_t>().MonoBin2(s, d, w, rows, h);
            });
        else
            InBands<uint8_t>(pSrc, pPicBuf->pData, w, h, 1, [&](const uint8_t* s, uint8_t* d, uint32_t rows) {
                zx::GetPixelKernels<uint8_t>().MonoBin2(s, d, w, rows, h);
            });
        return;
    }
    // Packed one-component rows unless a proper mono destination states its own
    // (a mistaken colour row length would make the source description overrun).
    const uint64_t rowBytes = (pPicBuf->uiComp == 1 && pPicBuf->uiRowBytes)
                                  ? pPicBuf->uiRowBytes
                                  : uint64_t(w) * ZX_BytesPerSample(pPicBuf->uiBits);
    // The source description must fit the picture library's 32-bit fields.
    if (ZX_DIAG_FAIL_IF(factor * rowBytes > UINT32_MAX || uint64_t(factor) * h > UINT32_MAX, kSource))
        return;
    SZxPicBuf dst = *pPicBuf;
    dst.uiComp = 1;
    dst.uiRowBytes = uint32_t(rowBytes);
    SZxPicBuf src = dst;
    src.uiWidth = factor * w;
    src.uiHeight = factor * h;
    src.uiRowBytes = uint32_t(factor * rowBytes);
    src.ui64DataSize = uint64_t(src.uiRowBytes) * factor * h;
    src.pData = const_cast<void*>(pSrc);
    CZxPicBufAPI_GeomTrans::Stretch(&dst, &src, 3);
}

void ZX_MonoBinning(CZxGrabberSample01* pSample, const void* pSrc, uint32_t factor)
{
    if (ZX_DIAG_FAIL_IF(pSample == NULL, kSource))
        return;
    SZxPicBuf pb;
    pSample->GetPicBuf(&pb);
    ZX_MonoBinning(&pb, pSrc, factor);
}

void ZX_BayerBinning(SZxPicBuf* pPicBuf, const void* pSrc, EZxBayerType type, uint32_t factor)
{
    if (ZX_DIAG_FAIL_IF(pPicBuf == NULL, kSource) || ZX_DIAG_FAIL_IF(pPicBuf->uiComp!=3, kSource))
        return;
    if (factor == 1) {
        ZX_BayerToRGB(pPicBuf, pSrc, type);
        return;
    }
    if (factor != 2) {
        ZX_DIAG_UNEXPECTED(kSource);
        return;
    }
    if (ZX_DIAG_FAIL_IF(pSrc == NULL, kSource) || ZX_DIAG_FAIL_IF(type < 1 || type > 4, kSource) ||
        !zx::DestinationHolds(*pPicBuf, 3, kSource))
        return;
    const uint32_t w = pPicBuf->uiWidth, h = pPicBuf->uiHeight;
    if (w == 0 || h == 0)
        return;
    if (pPicBuf->uiBits > 8)
        InBands<uint16_t>(pSrc, pPicBuf->pData, w, h, 3, [&](const uint16_t* s, uint16_t* d, uint32_t rows) {
            zx::GetPixelKernels<uint16_t>().BayerBin2(s, d, w, rows, type);
        });
    else
        InBands<uint8_t>(pSrc, pPicBuf->pData, w, h, 3, [&](const uint8_t* s, uint8_t* d, uint32_t rows) {
            zx::GetPixelKernels<uint8_t>().BayerBin2(s, d, w, rows, type);
        });
}

void ZX_BayerBinning(CZxGrabberSample01* pSample, const void* pSrc, EZxBayerType type, uint32_t factor)
{
    if (ZX_DIAG_FAIL_IF(pSample == NULL, kSource))
        return;
    SZxPicBuf pb;
    pSample->GetPicBuf(&pb);
    ZX_BayerBinning(&pb, pSrc, type, factor);
}
