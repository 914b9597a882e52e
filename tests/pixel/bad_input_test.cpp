// Frame descriptions a caller can get wrong in ways the per-function tests do not reach.
#include <functional>

#include "pixel_test.h"
#include "zx/bayer.h"
#include "zx/binning.h"
#include "zx/histogram.h"
#include "zx/lut.h"

TEST(FrameSize, DescriptionsWhoseByteCountWraps64BitsAreRefusedNotWalked)
{
    // 4294901763 x 715838805 colour 16-bit pixels need 6 * w * h bytes, which is
    // 327674 modulo 2^64: exactly the buffer's stated size if the product wrapped.
    std::vector<uint8_t> buffer(327674, 0);
    const SZxPicBuf wraps{4294901763u, 715838805u, 0, 16, 3, buffer.size(), buffer.data()};
    SZxAEHistogram hist(16, false, true);
    CZxBaseLUT lut(16);
    SZxBaseProps gain;
    gain.dGainR = 2.0;
    lut.UpdateLUT(gain, false, 16);
    const struct {
        const char* name;
        std::function<void(SZxPicBuf*)> call;
        const wchar_t *source, *report;
    } cases[] = {
        {"histogram", [&](SZxPicBuf* pb) { ZX_ComputeHistogramAE(&hist, pb, nullptr); }, L"imaging",
         L"pb->ui64DataSize != 0 && pb->ui64DataSize < needed"},
        {"LUT", [&](SZxPicBuf* pb) { lut.ApplyLUT(pb); }, L"imaging", L"pb->ui64DataSize != 0 && pb->ui64DataSize < bytes"},
        {"demosaic", [&](SZxPicBuf* pb) { ZX_BayerToRGB(pb, buffer.data(), ZX_BAYER_BGGR); }, L"common",
         L"pb.ui64DataSize != 0 && pb.ui64DataSize < bytes"},
        {"Bayer binning", [&](SZxPicBuf* pb) { ZX_BayerBinning(pb, buffer.data(), ZX_BAYER_BGGR, 2); }, L"common",
         L"pb.ui64DataSize != 0 && pb.ui64DataSize < bytes"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        zxtest::DiagCapture diag;
        SZxPicBuf pb = wraps;
        c.call(&pb);
        pixtest::ExpectReports(diag, c.source, {c.report});
        EXPECT_EQ(std::count(buffer.begin(), buffer.end(), 0), std::ptrdiff_t(buffer.size()));
    }
}
