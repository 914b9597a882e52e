// Any frame size, sample depth, Bayer order and binning factor: demosaic and
// binning must stay inside the source and the destination, and every kernel
// level, on any number of kernel threads, must write exactly what the
// reference level writes on one.
#include <cstdlib>
#include <vector>

#include "fuzz_input.h"
#include "zx/binning.h"
#include "zx/kernel_level.h"
#include "zxhost/system.h"

namespace {

enum Op { kDemosaic, kMonoBinning, kBayerBinning };

// Runs one operation at one kernel level into a fresh destination of exactly
// the bytes it describes, so ASan sees any write past it.
std::vector<uint8_t> Run(int level, Op op, const std::vector<uint8_t>& src, uint32_t w, uint32_t h, uint32_t bits,
                         uint32_t comp, int type, uint32_t factor)
{
    ZX_SetKernelLevel(level);
    const uint32_t bytes = bits > 8 ? 2 : 1;
    std::vector<uint8_t> out(size_t(w) * h * comp * bytes, 0xA5);
    SZxPicBuf pb;
    pb.uiWidth = w;
    pb.uiHeight = h;
    pb.uiBits = bits;
    pb.uiComp = comp;
    pb.uiRowBytes = w * comp * bytes;
    pb.ui64DataSize = out.size();
    pb.pData = out.empty() ? nullptr : out.data();
    const void* s = src.empty() ? nullptr : src.data();
    switch (op) {
    case kDemosaic: ZX_BayerToRGB(&pb, s, EZxBayerType(type)); break;
    case kMonoBinning: ZX_MonoBinning(&pb, s, factor); break;
    case kBayerBinning: ZX_BayerBinning(&pb, s, EZxBayerType(type), factor); break;
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const bool quiet = (ZX_SetDiagSink([](const wchar_t*, const wchar_t*, int, const wchar_t*, int) {}), true);
    (void)quiet;
    FuzzInput in(data, size);
    const Op op = Op(in.Take<uint8_t>() % 3);
    const uint32_t w = in.Take<uint8_t>() % 160;
    const uint32_t h = in.Take<uint8_t>() % 160;
    const uint32_t bits = 1 + in.Take<uint8_t>() % 16;
    const uint32_t comp = (in.Take<uint8_t>() & 1) ? 3 : 1;
    const int type = in.Take<uint8_t>() % 6;  // 1..4 are the orders; 0 and 5 are refused
    const uint32_t factor = in.Take<uint8_t>() % 4;

    // The source holds exactly the samples the operation reads.
    const uint32_t f = op == kDemosaic ? 1 : factor;
    const size_t samples = size_t(w) * f * h * f;
    std::vector<uint8_t> src(samples * (bits > 8 ? 2 : 1));
    for (size_t i = 0; i < src.size(); ++i)
        src[i] = i < in.RestSize() ? in.Rest()[i] : uint8_t(i * 131);
    const std::vector<uint8_t> want = Run(ZX_KERNELS_REFERENCE, op, src, w, h, bits, comp, type, factor);
    // The fastest level on 1 to 4 kernel threads: large binnings split into bands.
    ZX_SetKernelThreads(1 + (src.empty() ? 0 : src[0] % 4));
    const std::vector<uint8_t> got = Run(-1, op, src, w, h, bits, comp, type, factor);
    ZX_SetKernelThreads(1);
    if (got != want)
        std::abort();
    return 0;
}
