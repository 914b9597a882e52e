// Any histogram, camera descriptions, settings, frame values and flags: the
// engine must stay inside its tables and the histogram's counters, and the
// accurate auto white inside the frame, whatever the numbers (NaN included).
#include <cstring>
#include <vector>

#include "fuzz_input.h"
#include "zx/autoexposure.h"
#include "zxhost/system.h"

namespace {

template <typename Record>
void Fill(FuzzInput& in, Record& r)
{
    // The records are plain doubles (and a few integers) in a row.
    std::vector<uint8_t> bytes(sizeof(Record));
    for (uint8_t& b : bytes)
        b = in.Take<uint8_t>();
    std::memcpy(static_cast<void*>(&r), bytes.data(), sizeof(Record));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const bool quiet = (ZX_SetDiagSink([](const wchar_t*, const wchar_t*, int, const wchar_t*, int) {}), true);
    (void)quiet;
    FuzzInput in(data, size);
    const int bits = in.Take<uint8_t>() % 13;
    const bool mono = in.Take<uint8_t>() & 1;
    const unsigned flags = in.Take<uint16_t>();
    const bool setting = in.Take<uint8_t>() & 1;

    CZxAutoExposure ae;
    ae.m_uiCameraDescCount = in.Take<uint8_t>() % 36;
    ae.m_quantil.m_bRelative = in.Take<uint8_t>() & 1;
    ae.m_quantil.m_dPromile = in.Take<double>();
    ae.m_quantil.m_uiPixels = in.Take<uint32_t>();
    Fill(in, ae.m_setting1);
    Fill(in, ae.m_setting2);
    for (uint32_t i = 0; i < 3; ++i)
        Fill(in, ae.m_cameraDesc[i]);
    SZxAEFrameDesc frame;
    frame.m_dExposure = in.Take<double>();
    frame.m_dFactor = in.Take<double>();
    frame.m_dDisplayGain = in.Take<double>();
    frame.m_dOffset = in.Take<double>();
    frame.m_uiCameraMode = in.Take<uint8_t>() % 4;
    frame.m_uiAltCameraMode = in.Take<uint8_t>();
    frame.m_uiExcludedTopBins = in.Take<uint32_t>();

    SZxAEHistogram hist(bits, mono, !mono);
    hist.bMono = mono;
    hist.uiBinCount = in.Take<uint32_t>() % ((1u << bits) + 2);  // may claim a bin too many
    for (int c = 0; c < 4; ++c)
        if (hist.pdwHisto[c])
            for (uint32_t i = 0; i < (1u << bits); ++i)
                hist.pdwHisto[c][i] = in.Take<uint8_t>();
    hist.uiPixelCount = in.Take<uint32_t>();
    if (in.Take<uint8_t>() & 1) {
        hist.pdwClipLimits = static_cast<uint32_t*>(CZxAlloc::Alloc(3 * sizeof(uint32_t)));
        for (int c = 0; c < 3; ++c)
            hist.pdwClipLimits[c] = in.Take<uint32_t>();
    }
    ae.ComputeAE(setting, flags, frame, hist);
    ae.ConvertAE(!setting, flags, frame, mono, hist.pdwClipLimits != nullptr);

    const uint32_t w = in.Take<uint8_t>() % 17, h = in.Take<uint8_t>() % 17, fbits = in.Take<uint8_t>() % 18;
    CZxGrabberSample01 sample(w, h, fbits, 3);
    uint8_t* p = static_cast<uint8_t*>(sample.GetDataPtr());
    for (uint64_t i = 0; p && i < sample.GetDataSize(); ++i)
        p[i] = in.Take<uint8_t>();
    SZxGrabberProbe probe{in.Take<uint8_t>(), in.Take<uint8_t>(), in.Take<uint8_t>(), in.Take<uint8_t>(),
                          in.Take<uint8_t>()};
    double r, g, b;
    ZX_AccurateAutoWhite(&r, &g, &b, in.Take<double>(), in.Take<double>(), in.Take<double>(), &sample,
                         (flags & 1) ? &probe : nullptr);
    return 0;
}
