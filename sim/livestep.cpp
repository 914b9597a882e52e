#include "zxsim/livestep.h"

const SZxAEHistogram* CZxSimLiveStep::Count(std::unique_ptr<CZxGrabberSample01> frame, const SZxGrabberProbe* probe)
{
    if (!frame)
        return m_hist.get();
    m_frame = std::move(frame);
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    m_frame->GetPicBufNumbers(&w, &h, &bits, &comp);
    const bool colour = comp == 3;
    if (!m_hist || m_hist->iMaxBits != int(bits) || m_hist->bHasColor != colour)
        m_hist = std::make_unique<SZxAEHistogram>(int(bits), !colour, colour);
    ZX_ComputeHistogramAE(m_hist.get(), m_frame.get(), const_cast<SZxGrabberProbe*>(probe));
    return m_hist.get();
}

void CZxSimLiveStep::Reset()
{
    m_frame.reset();
    m_hist.reset();
}
