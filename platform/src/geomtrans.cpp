#include "zxhost/geomtrans.h"

#include <cstddef>
#include <vector>

namespace {

bool Usable(const SZxPicBuf* pb)
{
    if (!pb || !pb->pData || pb->uiWidth == 0 || pb->uiHeight == 0 || (pb->uiComp != 1 && pb->uiComp != 3))
        return false;
    const uint64_t row = uint64_t(pb->uiWidth) * pb->uiComp * ZX_BytesPerSample(pb->uiBits);
    if (pb->uiRowBytes < row)
        return false;
    const uint64_t bytes = uint64_t(pb->uiRowBytes) * (pb->uiHeight - 1) + row;
    return pb->ui64DataSize == 0 || pb->ui64DataSize >= bytes;
}

template <typename T>
void Resample(const SZxPicBuf& d, const SZxPicBuf& s, bool area)
{
    const uint32_t comp = d.uiComp;
    std::vector<uint64_t> sum(comp);
    for (uint32_t y = 0; y < d.uiHeight; ++y) {
        const uint32_t y0 = uint32_t(uint64_t(y) * s.uiHeight / d.uiHeight);
        uint32_t y1 = uint32_t(uint64_t(y + 1) * s.uiHeight / d.uiHeight);
        if (!area || y1 <= y0)
            y1 = y0 + 1;
        T* out = reinterpret_cast<T*>(static_cast<uint8_t*>(d.pData) + size_t(y) * d.uiRowBytes);
        for (uint32_t x = 0; x < d.uiWidth; ++x) {
            const uint32_t x0 = uint32_t(uint64_t(x) * s.uiWidth / d.uiWidth);
            uint32_t x1 = uint32_t(uint64_t(x + 1) * s.uiWidth / d.uiWidth);
            if (!area || x1 <= x0)
                x1 = x0 + 1;
            std::fill(sum.begin(), sum.end(), 0);
            for (uint32_t sy = y0; sy < y1; ++sy) {
                const T* in = reinterpret_cast<const T*>(static_cast<const uint8_t*>(s.pData) + size_t(sy) * s.uiRowBytes);
                for (uint32_t sx = x0; sx < x1; ++sx)
                    for (uint32_t c = 0; c < comp; ++c)
                        sum[c] += in[size_t(sx) * comp + c];
            }
            const uint64_t n = uint64_t(y1 - y0) * (x1 - x0);
            for (uint32_t c = 0; c < comp; ++c)
                out[size_t(x) * comp + c] = T((sum[c] + n / 2) / n);
        }
    }
}

} // namespace

int CZxPicBufAPI_GeomTrans::Stretch(SZxPicBuf* dst, SZxPicBuf* src, int mode)
{
    if (!Usable(dst) || !Usable(src) || dst->uiComp != src->uiComp ||
        ZX_BytesPerSample(dst->uiBits) != ZX_BytesPerSample(src->uiBits))
        return -9;
    if (dst->uiBits > 8)
        Resample<uint16_t>(*dst, *src, mode == 3);
    else
        Resample<uint8_t>(*dst, *src, mode == 3);
    return 0;
}
