#include "zxhost/picbuf.h"

#include <cstddef>

CZxGrabberSample01::CZxGrabberSample01(uint32_t width, uint32_t height, uint32_t bits, uint32_t comp)
    : m_width(width), m_height(height), m_bits(bits), m_comp(comp)
{
    const uint64_t bytes = uint64_t(width) * height * comp * ZX_BytesPerSample(bits);
    // A frame larger than any camera delivers (4 GiB) is refused rather than attempted.
    if (bytes == 0 || bytes > (uint64_t(1) << 32)) {
        m_width = m_height = 0;
        return;
    }
    m_data.assign(static_cast<size_t>(bytes), 0);
}

bool CZxGrabberSample01::GetPicBuf(SZxPicBuf* pb) const
{
    if (!pb)
        return false;
    pb->uiWidth = m_width;
    pb->uiHeight = m_height;
    pb->uiBits = m_bits;
    pb->uiComp = m_comp;
    pb->uiRowBytes = m_width * m_comp * ZX_BytesPerSample(m_bits);
    pb->ui64DataSize = m_data.size();
    pb->pData = m_data.empty() ? nullptr : const_cast<uint8_t*>(m_data.data());
    return true;
}

void CZxGrabberSample01::GetPicBufNumbers(uint32_t* width, uint32_t* height, uint32_t* bits, uint32_t* comp) const
{
    if (width) *width = m_width;
    if (height) *height = m_height;
    if (bits) *bits = m_bits;
    if (comp) *comp = m_comp;
}

void* CZxGrabberSample01::GetDataPtr() { return m_data.empty() ? nullptr : m_data.data(); }
const void* CZxGrabberSample01::GetDataPtr() const { return m_data.empty() ? nullptr : m_data.data(); }
