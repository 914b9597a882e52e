// Frames of the simulated camera, from its sensor and the settings in use.
#include <algorithm>
#include <cstring>
#include <memory>

#include "camera_internal.h"

CZxGrabberSample01* CZxSimCamera::Snap()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    const int set = SetIndex(0);
    const SZxGrabberFormatValue f = CurrentFormat(set);
    const int32_t b = f.m_dBinning >= 4.0 ? 4 : (f.m_dBinning >= 2.0 ? 2 : 1);

    m_sensor.SetMode(b == 4 ? 2u : (b == 2 ? 1u : 0u));
    m_sensor.SetBits(f.m_uiBits);
    m_sensor.SetOutput(f.m_uiComp == 3 ? EZxSimOutput::ColourBGR : EZxSimOutput::Mono);
    m_sensor.SetExposure(NumberOf(L"Exposure", set));
    m_sensor.SetAnalogFactor(NumberOf(L"Gain", set));
    m_sensor.SetOffset(NumberOf(L"Offset", set) / 4095.0);   // offset counts in 12-bit steps

    // The sensor sees the whole field; the format's area and the ROI cut it.
    std::unique_ptr<CZxGrabberSample01> field = m_sensor.Capture();
    uint32_t fw = 0, fh = 0, bits = 0, comp = 0;
    field->GetPicBufNumbers(&fw, &fh, &bits, &comp);
    CZxRect area = IntersectRect(f.m_rcRect, CZxRect(0, 0, int32_t(fw), int32_t(fh)));
    if (m_bROIEnabled && !m_rcROI.IsEmpty()) {
        const CZxRect cut = IntersectRect(area, CZxRect(m_rcROI.left / b, m_rcROI.top / b, m_rcROI.right / b,
                                                    m_rcROI.bottom / b));
        if (!cut.IsEmpty())
            area = cut;
    }
    if (area == CZxRect(0, 0, int32_t(fw), int32_t(fh)))
        return field.release();

    auto* frame = new CZxGrabberSample01(uint32_t(area.Width()), uint32_t(area.Height()), bits, comp);
    const size_t px = size_t(comp) * ZX_BytesPerSample(bits);
    const auto* src = static_cast<const uint8_t*>(field->GetDataPtr());
    auto* dst = static_cast<uint8_t*>(frame->GetDataPtr());
    if (src && dst)
        for (int32_t y = area.top; y < area.bottom; ++y)
            std::memcpy(dst + size_t(y - area.top) * area.Width() * px,
                        src + (size_t(y) * fw + size_t(area.left)) * px, size_t(area.Width()) * px);
    return frame;
}
