// Any frame description, probe and histogram depth: counts must stay inside the
// buffers and never read past the frame, and be the same on any number of
// kernel threads.
#include <cstdlib>
#include <vector>

#include "fuzz_input.h"
#include "zx/histogram.h"
#include "zx/kernel_level.h"
#include "zxhost/system.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const bool quiet = (ZX_SetDiagSink([](const wchar_t*, const wchar_t*, int, const wchar_t*, int) {}), true);
    (void)quiet;
    FuzzInput in(data, size);
    // Tall frames (up to 255 x 4095) reach the whole-frame kernels that only
    // large frames take, whose tables are chosen per stretch of samples.
    const bool tall = in.Take<uint8_t>() & 1;
    const uint32_t w = in.Take<uint8_t>();
    const uint32_t h = tall ? in.Take<uint16_t>() % 4096 : in.Take<uint8_t>();
    const uint32_t bits = in.Take<uint8_t>();
    const uint32_t comp = in.Take<uint8_t>() % 4;
    const int maxBits = in.Take<uint8_t>() % 30;
    SZxGrabberProbe probe;
    probe.uiType = in.Take<uint8_t>() % 3;
    probe.uiLeft = in.Take<uint32_t>();
    probe.uiTop = in.Take<uint32_t>();
    probe.uiWidth = in.Take<uint32_t>();
    probe.uiHeight = in.Take<uint32_t>();
    const uint8_t flags = in.Take<uint8_t>();

    // The frame's memory is exactly what its description needs, so ASan sees any overread.
    const size_t bytes = size_t(w) * h * comp * (bits > 8 ? 2 : 1);
    std::vector<uint8_t> pixels(bytes);
    for (size_t i = 0; i < bytes && i < in.RestSize(); ++i)
        pixels[i] = in.Rest()[i];
    SZxPicBuf pb;
    pb.uiWidth = w;
    pb.uiHeight = h;
    pb.uiBits = bits;
    pb.uiComp = comp;
    pb.uiRowBytes = uint32_t(w * comp * (bits > 8 ? 2 : 1));
    pb.ui64DataSize = (flags & 2) ? bytes : 0;
    pb.pData = pixels.empty() ? nullptr : pixels.data();

    SZxAEHistogram hist(maxBits > 20 ? 20 : maxBits, flags & 4, flags & 8);
    if ((flags & 16) && (hist.pdwHisto[0] || hist.pdwHisto[1])) {
        hist.pdwClipLimits = static_cast<uint32_t*>(CZxAlloc::Alloc(3 * sizeof(uint32_t)));
        for (int c = 0; c < 3; ++c)
            hist.pdwClipLimits[c] = in.Take<uint32_t>();
    }
    ZX_ComputeHistogramAE(&hist, &pb, (flags & 1) ? &probe : nullptr);

    // Split over 2 to 4 kernel threads, the counts must be the one-thread ones.
    const int threads = 1 + ((flags >> 5) & 3);
    if (threads > 1 && hist.uiBinCount > 0) {
        const uint32_t pixels = hist.uiPixelCount, binCount = hist.uiBinCount;
        std::vector<uint32_t> one;
        for (const uint32_t* b : hist.pdwHisto)
            if (b)
                one.insert(one.end(), b, b + binCount);
        ZX_SetKernelThreads(threads);
        ZX_ComputeHistogramAE(&hist, &pb, (flags & 1) ? &probe : nullptr);
        ZX_SetKernelThreads(1);
        std::vector<uint32_t> split;
        for (const uint32_t* b : hist.pdwHisto)
            if (b)
                split.insert(split.end(), b, b + binCount);
        if (hist.uiPixelCount != pixels || hist.uiBinCount != binCount || split != one)
            std::abort();
    }
    return 0;
}
