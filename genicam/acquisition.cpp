// Frames from the device: live acquisition on a stream with a buffer pool,
// single frames, and each frame turned into the library's picture layout
// (colour as blue, green, red; Bayer demosaiced; software binning).
#include <algorithm>
#include <cstring>
#include <memory>

#include "genicam_internal.h"
#include "zx/bayer.h"
#include "zx/binning.h"

namespace {

// The frame a buffer holds, in the library's layout, binned by `binning`.
// ZX_E_FAIL for a broken buffer or a pixel format without a layout.
int Convert(ArvBuffer* buffer, int binning, CZxGrabberSample01** out)
{
    if (arv_buffer_get_status(buffer) != ARV_BUFFER_STATUS_SUCCESS)
        return ZX_E_FAIL;
    zxgenicam::SLayout l;
    if (!zxgenicam::LayoutOf(arv_buffer_get_image_pixel_format(buffer), l))
        return ZX_E_FAIL;
    const int w = arv_buffer_get_image_width(buffer), h = arv_buffer_get_image_height(buffer);
    size_t size = 0;
    const auto* src = static_cast<const uint8_t*>(arv_buffer_get_image_data(buffer, &size));
    const size_t bytes = ZX_BytesPerSample(l.bits);
    const size_t rawComp = l.bayer ? 1 : l.comp;
    // The stated size must hold every sample the layout claims.
    if (!src || w <= 0 || h <= 0 || size / bytes / rawComp / size_t(w) < size_t(h))
        return ZX_E_FAIL;
    const std::vector<int> allowed = zxgenicam::BinningsOf(l);
    if (binning < 1 || std::find(allowed.begin(), allowed.end(), binning) == allowed.end())
        binning = 1;
    const uint32_t ow = uint32_t(w / binning), oh = uint32_t(h / binning);
    if (ow == 0 || oh == 0 || (l.bayer && (w < 2 || h < 2)))
        return ZX_E_FAIL;
    std::unique_ptr<CZxGrabberSample01> frame(new CZxGrabberSample01(ow, oh, l.bits, l.comp));
    auto* dst = static_cast<uint8_t*>(frame->GetDataPtr());
    if (!dst)
        return ZX_E_FAIL;
    // The binning kernels read factor x the output size as packed rows: a frame
    // whose size is no multiple of the factor loses its last columns and rows first.
    std::vector<uint8_t> packed;
    if (binning > 1 && (uint32_t(w) != ow * binning || uint32_t(h) != oh * binning)) {
        const size_t row = size_t(ow) * binning * bytes * rawComp;
        packed.resize(row * oh * binning);
        for (size_t y = 0; y < size_t(oh) * binning; ++y)
            std::memcpy(packed.data() + y * row, src + y * size_t(w) * bytes * rawComp, row);
        src = packed.data();
    }
    if (l.bayer) {
        ZX_BayerBinning(frame.get(), src, EZxBayerType(l.bayer), uint32_t(binning));
    } else if (l.comp == 1) {
        if (binning == 1)
            std::memcpy(dst, src, size_t(ow) * oh * bytes);
        else
            ZX_MonoBinning(frame.get(), src, uint32_t(binning));
    } else {
        const size_t n = size_t(ow) * oh;
        for (size_t i = 0; i < n; ++i) {
            dst[3 * i + 0] = src[3 * i + (l.rgb ? 2 : 0)];
            dst[3 * i + 1] = src[3 * i + 1];
            dst[3 * i + 2] = src[3 * i + (l.rgb ? 0 : 2)];
        }
    }
    *out = frame.release();
    return ZX_OK;
}

} // namespace

int CZxGenICamCamera::StartLive(int buffers)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    if (m->live)
        return ZX_E_BUSY;
    GError* err = nullptr;
    g_clear_object(&m->stream);
    m->stream = arv_camera_create_stream(m->camera, nullptr, nullptr, &err);
    if (!m->stream)
        return m->Failed(err);
    const gint64 payload = arv_camera_get_payload(m->camera, &err);
    if (err || payload <= 0) {
        g_clear_object(&m->stream);
        return m->Failed(err);
    }
    for (int i = 0; i < std::max(2, buffers); ++i)
        arv_stream_push_buffer(m->stream, arv_buffer_new(size_t(payload), nullptr));
    arv_camera_set_acquisition_mode(m->camera, ARV_ACQUISITION_MODE_CONTINUOUS, &err);
    if (!err)
        arv_camera_start_acquisition(m->camera, &err);
    if (err) {
        g_clear_object(&m->stream);
        return m->Failed(err);
    }
    m->live = true;
    m->MarkWritten();
    return ZX_OK;
}

int CZxGenICamCamera::StopLive()
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (!m->live)
        return ZX_OK;
    m->live = false;
    GError* err = nullptr;
    if (m->camera)
        arv_camera_stop_acquisition(m->camera, &err);
    g_clear_object(&m->stream);
    return err ? m->Failed(err) : ZX_OK;
}

bool CZxGenICamCamera::IsLive() const
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    return m->live;
}

int CZxGenICamCamera::NextFrame(uint32_t timeoutMs, CZxGrabberSample01** frame)
{
    if (!frame)
        return ZX_E_FAIL;
    *frame = nullptr;
    ArvStream* stream = nullptr;
    gint64 settle = 0;
    {
        const std::lock_guard<std::recursive_mutex> lock(m->lock);
        if (const int s = m->Usable())
            return s;
        if (!m->live || !m->stream)
            return ZX_E_NOTSUPPORTED;
        // Our own reference: Close may drop the provider's while we wait.
        stream = ARV_STREAM(g_object_ref(m->stream));
        settle = m->settleAfterNs;
    }
    const gint64 deadline = g_get_monotonic_time() + gint64(timeoutMs) * 1000;
    int status = ZXGENICAM_E_TIMEOUT;
    for (;;) {
        if (m->Usable() != ZX_OK) {
            status = ZXGENICAM_E_LOST;
            break;
        }
        const gint64 left = deadline - g_get_monotonic_time();
        if (left <= 0)
            break;
        // Short waits, so a Close from another thread is seen soon.
        ArvBuffer* b = arv_stream_timeout_pop_buffer(stream, guint64(std::min<gint64>(left, 50000)));
        if (!b)
            continue;
        const std::lock_guard<std::recursive_mutex> lock(m->lock);
        if (m->Usable() != ZX_OK || m->stream != stream) {
            g_object_unref(b);
            status = ZXGENICAM_E_LOST;
            break;
        }
        if (arv_buffer_get_system_timestamp(b) < guint64(std::max<gint64>(settle, 0))) {
            arv_stream_push_buffer(stream, b);   // exposed before the last write: not what the caller set
            continue;
        }
        status = Convert(b, m->binning, frame);
        arv_stream_push_buffer(stream, b);
        break;
    }
    g_object_unref(stream);
    return status;
}

int CZxGenICamCamera::Snap(uint32_t timeoutMs, CZxGrabberSample01** frame)
{
    if (!frame)
        return ZX_E_FAIL;
    *frame = nullptr;
    if (IsLive())
        return NextFrame(timeoutMs, frame);
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    GError* err = nullptr;
    ArvBuffer* b = arv_camera_acquisition(m->camera, guint64(timeoutMs) * 1000, &err);
    if (!b)
        return err ? m->Failed(err) : ZXGENICAM_E_TIMEOUT;
    const int status = Convert(b, m->binning, frame);
    g_object_unref(b);
    return status;
}
