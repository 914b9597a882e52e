#include "zx/bayer.h"

#include "imaging/parallel.h"
#include "imaging/pixel_kernels.h"
#include "imaging/pixel_io.h"
#include "zxhost/system.h"

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
