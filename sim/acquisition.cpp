// Frames of the simulated camera.
#include <algorithm>
#include <cstring>

#include "camera_internal.h"

CZxGrabberSample01* CZxSimCamera::Snap()
{
    const int set = SetIndex(0);
    const SZxGrabberFormatValue f = CurrentFormat(set);
    CZxRect area = f.m_rcRect;
    if (m_bROIEnabled && !m_rcROI.IsEmpty()) {
        // The ROI is in sensor pixels; the frame is in the format's binned pixels.
        const int32_t b = f.m_dBinning >= 1.0 ? static_cast<int32_t>(f.m_dBinning) : 1;
        const CZxRect roi(m_rcROI.left / b, m_rcROI.top / b, m_rcROI.right / b, m_rcROI.bottom / b);
        const CZxRect cut(std::max(area.left, roi.left), std::max(area.top, roi.top),
                          std::min(area.right, roi.right), std::min(area.bottom, roi.bottom));
        if (!cut.IsEmpty())
            area = cut;
    }
    auto* sample = new CZxGrabberSample01(static_cast<uint32_t>(area.Width()), static_cast<uint32_t>(area.Height()),
                                          f.m_uiBits, f.m_uiComp);
    // A flat field whose level follows exposure, gain and offset.
    const double full = double((1u << f.m_uiBits) - 1);
    double level = NumberOf(L"Exposure", set) / 100.0 * NumberOf(L"Gain", set) * f.m_dBinning * f.m_dBinning * full +
                   NumberOf(L"Offset", set) * full / 4095.0;
    level = level > full ? full : (level < 0 ? 0 : level);
    const uint32_t v = static_cast<uint32_t>(level);
    SZxPicBuf pb;
    sample->GetPicBuf(&pb);
    const uint64_t n = pb.ui64DataSize / ZX_BytesPerSample(pb.uiBits);
    if (pb.uiBits > 8)
        for (uint64_t i = 0; i < n; ++i)
            static_cast<uint16_t*>(pb.pData)[i] = static_cast<uint16_t>(v);
    else if (pb.pData)
        std::memset(pb.pData, static_cast<int>(v), n);
    ++m_uiFrameCounter;
    return sample;
}
