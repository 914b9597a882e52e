// Frames of the simulated camera, from its sensor and the settings in use.
#include <algorithm>
#include <cstring>
#include <memory>

#include "camera_internal.h"
#include "zxhost/grabber.h"

namespace {
// The frame turned or mirrored as `orientation` asks; `frame` is consumed.
CZxGrabberSample01* Oriented(CZxGrabberSample01* frame, int32_t orientation)
{
    if (!frame || orientation == ZX_ORIENT_NONE)
        return frame;
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    frame->GetPicBufNumbers(&w, &h, &bits, &comp);
    const bool quarter = orientation == ZX_ORIENT_ROTATE_LEFT || orientation == ZX_ORIENT_ROTATE_RIGHT;
    const uint32_t ow = quarter ? h : w, oh = quarter ? w : h;
    auto* out = new CZxGrabberSample01(ow, oh, bits, comp);
    const size_t px = size_t(comp) * ZX_BytesPerSample(bits);
    const auto* src = static_cast<const uint8_t*>(frame->GetDataPtr());
    auto* dst = static_cast<uint8_t*>(out->GetDataPtr());
    if (src && dst)
        for (uint32_t y = 0; y < oh; ++y)
            for (uint32_t x = 0; x < ow; ++x) {
                uint32_t sx = x, sy = y;   // where pixel (x, y) of the result comes from
                switch (orientation) {
                case ZX_ORIENT_ROTATE_LEFT: sx = w - 1 - y; sy = x; break;
                case ZX_ORIENT_ROTATE_RIGHT: sx = y; sy = h - 1 - x; break;
                case ZX_ORIENT_ROTATE_180: sx = w - 1 - x; sy = h - 1 - y; break;
                case ZX_ORIENT_FLIP_H: sx = w - 1 - x; break;
                case ZX_ORIENT_FLIP_V: sy = h - 1 - y; break;
                default: break;
                }
                std::memcpy(dst + (size_t(y) * ow + x) * px, src + (size_t(sy) * w + sx) * px, px);
            }
    delete frame;
    return out;
}
} // namespace

void CZxSimCamera::SetOrientation(int32_t orientation)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    m_iOrientation = orientation;
}

int32_t CZxSimCamera::GetOrientation() const
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    return m_iOrientation;
}

CZxGrabberSample01* CZxSimCamera::Snap()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    const int set = SetIndex(0);
    const SZxGrabberFormatValue f = CurrentFormat(set);
    const int32_t b = f.m_dBinning >= 4.0 ? 4 : (f.m_dBinning >= 2.0 ? 2 : 1);

    m_sensor.SetMode(b == 4 ? 2u : (b == 2 ? 1u : 0u));
    m_sensor.SetBits(f.m_uiBits);
    m_sensor.SetOutput(f.m_uiComp == 3 ? EZxSimOutput::ColourBGR : EZxSimOutput::Mono);
    // A sped-up live frame makes up for its shorter exposure with gain.
    const double exposure = NumberOf(zxsim::kPropExposure, set), frameExposure = FrameExposure(set);
    m_sensor.SetExposure(frameExposure);
    m_sensor.SetAnalogFactor(NumberOf(zxsim::kPropGain, set) * (frameExposure > 0.0 ? exposure / frameExposure : 1.0));
    m_sensor.SetOffset(NumberOf(zxsim::kPropOffset, set) / 4095.0);   // offset counts in 12-bit steps

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
        return Oriented(field.release(), m_iOrientation);

    auto* frame = new CZxGrabberSample01(uint32_t(area.Width()), uint32_t(area.Height()), bits, comp);
    const size_t px = size_t(comp) * ZX_BytesPerSample(bits);
    const auto* src = static_cast<const uint8_t*>(field->GetDataPtr());
    auto* dst = static_cast<uint8_t*>(frame->GetDataPtr());
    if (src && dst)
        for (int32_t y = area.top; y < area.bottom; ++y)
            std::memcpy(dst + size_t(y - area.top) * area.Width() * px,
                        src + (size_t(y) * fw + size_t(area.left)) * px, size_t(area.Width()) * px);
    return Oriented(frame, m_iOrientation);
}
