// What a camera driver does with every frame: count its histogram and let the
// auto-exposure engine choose the next exposure; on Windows it also shows its
// setup dialog. Exits 0 when the library answered as a driver expects (so a
// build test can run it).
#include <cstdio>
#include <cstdint>
#include <vector>

#include <zx/autoexposure.h>
#include <zx/histogram.h>
#ifdef _WIN32
#include "setup_dialog.h"
#endif

namespace {

constexpr uint32_t kWidth = 64, kHeight = 48, kBits = 12;

// A dim 12-bit frame: a ramp over the lowest fifth of the range.
std::vector<uint16_t> DimFrame()
{
    std::vector<uint16_t> pixels(kWidth * kHeight);
    for (uint32_t y = 0; y < kHeight; ++y)
        for (uint32_t x = 0; x < kWidth; ++x)
            pixels[y * kWidth + x] = uint16_t((x + y * kWidth) * 800 / (kWidth * kHeight));
    return pixels;
}

void DescribeCamera(CZxAutoExposure& engine)
{
    engine.m_quantil = SZxAEQuantil{true, 1.0, 0};  // the brightest per-mille is "white"
    engine.m_setting1 = SZxAESetting{4.0, 1000.0, 1.0, 1.0, 0.5, 0.85, 0.9};
    engine.m_setting2 = engine.m_setting1;
    SZxAECameraDesc& d = engine.m_cameraDesc[0];
    d.m_dMaxComplGain = 2.0;
    d.m_dMaxFactor = 8.0;
    d.m_dMinExposure = 0.01;
    d.m_dMaxExposure = 1000.0;
    d.m_dExposureKnee = 1000.0;
    d.m_dMaxLevel = 1.0;
    d.m_dSensitivity = 1.0;
    d.m_dUpperGain = 4.0;
    d.m_dLowerGain = 1.0;
    engine.m_uiCameraDescCount = 1;
}

}  // namespace

int main()
{
    std::vector<uint16_t> pixels = DimFrame();
    SZxPicBuf frame;
    frame.uiWidth = kWidth;
    frame.uiHeight = kHeight;
    frame.uiRowBytes = kWidth * 2;
    frame.uiBits = kBits;
    frame.uiComp = 1;
    frame.ui64DataSize = pixels.size() * 2;
    frame.pData = pixels.data();

    SZxAEHistogram hist(kBits, true, false);
    ZX_ComputeHistogramAE(&hist, &frame, nullptr);
    uint64_t counted = 0;
    for (uint32_t i = 0; i < hist.uiBinCount; ++i)
        counted += hist.pdwHisto[0][i];
    std::printf("histogram: %u bins, %u pixels\n", hist.uiBinCount, hist.uiPixelCount);

    CZxAutoExposure engine;
    DescribeCamera(engine);
    SZxAEFrameDesc camera;
    camera.m_dExposure = 10.0;  // ms
    engine.ComputeAE(true, ZX_AE_EXPOSURE | ZX_AE_FACTOR, camera, hist);
    std::printf("auto exposure: 10 ms -> %.3f ms, analog factor %.3f\n", camera.m_dExposure, camera.m_dFactor);

    bool ok = hist.uiBinCount == (1u << kBits) && hist.uiPixelCount == kWidth * kHeight &&
              counted == kWidth * kHeight && camera.m_dExposure > 10.0;
#ifdef _WIN32
    ok = RunSetupDialog() && ok;
#endif
    std::printf("%s\n", ok ? "ok" : "unexpected result");
    return ok ? 0 : 1;
}
