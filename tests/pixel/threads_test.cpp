#include <cstring>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "pixel_test.h"
#include "zx_levels.h"
#include "zx/bayer.h"
#include "zx/binning.h"
#include "zx/histogram.h"
#include "zx/kernel_level.h"
#include "zx/lut.h"
#include "imaging/scratch.h"

using pixtest::Samples;

namespace {

// Everything a frame function produced, flattened: output samples, or the bins
// and the pixel count of a histogram.
using Result = std::vector<uint32_t>;

Result HistogramOf(const CZxGrabberSample01& frame, int maxBits, const SZxGrabberProbe* probe)
{
    SZxPicBuf pb;
    frame.GetPicBuf(&pb);
    SZxAEHistogram h(maxBits, pb.uiComp == 1, pb.uiComp == 3);
    ZX_ComputeHistogramAE(&h, &pb, const_cast<SZxGrabberProbe*>(probe));
    Result r{h.uiPixelCount, h.uiBinCount};
    for (const uint32_t* bins : h.pdwHisto)
        if (bins)
            r.insert(r.end(), bins, bins + h.uiBinCount);
    return r;
}

template <typename Lut>
Result Mapped(const CZxGrabberSample01& frame, Lut& lut)
{
    SZxPicBuf pb;
    frame.GetPicBuf(&pb);
    CZxGrabberSample01 copy(pb.uiWidth, pb.uiHeight, pb.uiBits, pb.uiComp);
    std::memcpy(copy.GetDataPtr(), pb.pData, copy.GetDataSize());
    lut.ApplyLUT(&copy);
    return Samples(copy);
}

struct Kernel {
    const char* name;
    uint32_t comp;  // of the input frame
    std::function<Result(const CZxGrabberSample01& in, uint32_t bits)> run;
};

// Every frame function that splits its frame, with the variants that take
// other paths through it (probes, scaled-down bins, pair tables).
std::vector<Kernel> Kernels()
{
    auto histogram = [](int binDrop, const SZxGrabberProbe* probe) {
        return [=](const CZxGrabberSample01& in, uint32_t bits) { return HistogramOf(in, int(bits) - binDrop, probe); };
    };
    static const SZxGrabberProbe rect = SZxGrabberProbe::Rect(1, 2, 900, 100);  // cut by the frame's right edge
    static const SZxGrabberProbe circle = SZxGrabberProbe::Circle(150, 60, 140);
    // type: a Bayer pattern to demosaic; -1 mono binning, -2 Bayer binning.
    auto bayer = [](int type) {
        return [=](const CZxGrabberSample01& in, uint32_t bits) {
            uint32_t w = 0, h = 0, b = 0, c = 0;
            in.GetPicBufNumbers(&w, &h, &b, &c);
            const uint32_t div = type < 0 ? 2 : 1;
            CZxGrabberSample01 out(w / div, h / div, bits, type == -1 ? 1 : 3);
            if (type >= 0)
                ZX_BayerToRGB(&out, in.GetDataPtr(), EZxBayerType(type));
            else if (type == -2)
                ZX_BayerBinning(&out, in.GetDataPtr(), ZX_BAYER_GRBG, 2);
            else
                ZX_MonoBinning(&out, in.GetDataPtr(), 2);
            return Samples(out);
        };
    };
    auto monoLut = [](const CZxGrabberSample01& in, uint32_t bits) {
        CZxBaseMonoLUT lut{int(bits)};
        lut.UpdateLUT(SZxBasePropsI{1.7, -0.05, 0.6}, int(bits));
        return Mapped(in, lut);
    };
    auto colourLut = [](double weight) {  // weight 1: channel tables; otherwise pair tables
        return [=](const CZxGrabberSample01& in, uint32_t bits) {
            CZxBaseLUT lut{int(bits)};
            SZxBaseProps p;
            p.dGainR = 1.4, p.dGammaB = 0.7, p.dWeightG = weight;
            lut.UpdateLUT(p, false, int(bits));
            return Mapped(in, lut);
        };
    };
    return {
        {"mono histogram", 1, histogram(0, nullptr)},
        {"mono histogram, bins scaled down", 1, histogram(2, nullptr)},
        {"mono histogram, rectangle", 1, histogram(0, &rect)},
        {"mono histogram, circle", 1, histogram(0, &circle)},
        {"colour histogram", 3, histogram(0, nullptr)},
        {"colour histogram, circle", 3, histogram(0, &circle)},
        {"demosaic BGGR", 1, bayer(1)},
        {"demosaic GBRG", 1, bayer(2)},
        {"mono binning", 1, bayer(-1)},
        {"Bayer binning", 1, bayer(-2)},
        {"mono LUT", 1, monoLut},
        {"colour LUT, channel tables", 3, colourLut(1.0)},
        {"colour LUT, pair tables", 3, colourLut(1.6)},
    };
}

} // namespace

// Splitting a frame over threads must not change one bit of any result: every
// kernel, level, depth and size against its one-thread result, from frames too
// small to split up to ones cut into seven parts at odd places.
TEST(KernelThreads, EveryThreadCountGivesTheOneThreadResult)
{
    const uint32_t sizes[][2] = {{2, 2}, {3, 5}, {67, 9}, {333, 257}, {1001, 131}};
    const std::vector<Kernel> kernels = Kernels();
    zxtest::ForEachKernelLevel([&](int) {
        uint32_t seed = 7;
        for (uint32_t bits : {8u, 12u, 16u})
            for (const auto& s : sizes)
                for (const Kernel& k : kernels) {
                    auto in = zxtest::RandomFrame(s[0], s[1], bits, k.comp, seed++);
                    ZX_SetKernelThreads(1);
                    const Result one = k.run(*in, bits);
                    for (int threads : {2, 3, 7}) {
                        ASSERT_EQ(ZX_SetKernelThreads(threads), threads);
                        ASSERT_EQ(k.run(*in, bits), one)
                            << k.name << ", " << s[0] << "x" << s[1] << ", " << bits << " bits, " << threads << " threads";
                    }
                }
    });
    ZX_SetKernelThreads(1);
}

// The setting is clamped, and two threads that process frames at once (two
// cameras) both get their exact results while the pool is taken.
TEST(KernelThreads, ClampsTheSettingAndServesTwoCallersAtOnce)
{
    EXPECT_EQ(ZX_SetKernelThreads(0), 1);
    EXPECT_EQ(ZX_SetKernelThreads(-3), 1);
    EXPECT_EQ(ZX_SetKernelThreads(1000), 64);
    EXPECT_EQ(ZX_GetKernelThreads(), 64);

    ZX_SetKernelThreads(1);
    auto a = zxtest::RandomFrame(1001, 300, 16, 3, 1), b = zxtest::RandomFrame(999, 301, 12, 1, 2);
    const Result wantA = HistogramOf(*a, 16, nullptr), wantB = HistogramOf(*b, 12, nullptr);
    ZX_SetKernelThreads(3);
    std::vector<Result> gotA(20), gotB(20);
    std::thread other([&] {
        for (Result& r : gotB)
            r = HistogramOf(*b, 12, nullptr);
    });
    for (Result& r : gotA)
        r = HistogramOf(*a, 16, nullptr);
    other.join();
    ZX_SetKernelThreads(1);
    EXPECT_EQ(ZX_GetKernelThreads(), 1);
    EXPECT_EQ(gotA, std::vector<Result>(20, wantA));
    EXPECT_EQ(gotB, std::vector<Result>(20, wantB));
}

// The counters' working memory outlives a frame: a block given back comes out
// again for the next frame, zeroed, and the cache stays within its bound however
// many blocks were held at once.
TEST(KernelThreads, ScratchBlocksAreReusedZeroedAndBounded)
{
    void* first = nullptr;
    {
        zx::ScratchBlock a(1001);
        ASSERT_NE(a.Data(), nullptr);
        std::memset(a.Data(), 0xA5, 1001);
        first = a.Data();
    }
    {
        zx::ScratchBlock b(999);
        EXPECT_EQ(b.Data(), first);
        EXPECT_EQ(std::vector<uint8_t>(b.As<uint8_t>(), b.As<uint8_t>() + 999), std::vector<uint8_t>(999, 0));
    }
    {
        std::vector<std::unique_ptr<zx::ScratchBlock>> held;
        for (int i = 0; i < 24; ++i)
            held.emplace_back(new zx::ScratchBlock(size_t(8) << 20));
    }
    EXPECT_GT(zx::ScratchCachedBytes(), size_t(32) << 20);
    EXPECT_LE(zx::ScratchCachedBytes(), size_t(64) << 20);
    EXPECT_EQ(zx::ScratchBlock(0).Data(), nullptr);
}
