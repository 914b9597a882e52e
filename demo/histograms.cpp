// zxdemo: histogram section.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <algorithm>

#include "demo.h"
#include "zx/histogram.h"

namespace {

// A lit round specimen on a dark background, with a gentle gradient.
void FillScene(CZxGrabberSample01& frame)
{
    SZxPicBuf pb;
    frame.GetPicBuf(&pb);
    const double full = double((1u << pb.uiBits) - 1);
    const double cx = pb.uiWidth * 0.5, cy = pb.uiHeight * 0.5, r = pb.uiHeight * 0.3;
    for (uint32_t y = 0; y < pb.uiHeight; ++y) {
        for (uint32_t x = 0; x < pb.uiWidth; ++x) {
            const bool lit = std::hypot(x - cx, y - cy) < r;
            const double base = (lit ? 0.7 : 0.08) + 0.1 * x / pb.uiWidth;
            for (uint32_t c = 0; c < pb.uiComp; ++c) {
                const double v = std::fmin(full, base * full * (1.0 - 0.15 * c));
                const size_t i = (size_t(y) * pb.uiWidth + x) * pb.uiComp + c;
                if (pb.uiBits > 8)
                    static_cast<uint16_t*>(pb.pData)[i] = uint16_t(v);
                else
                    static_cast<uint8_t*>(pb.pData)[i] = uint8_t(v);
            }
        }
    }
}

void PrintChannel(const char* name, const uint32_t* bins, uint32_t binCount, uint32_t pixels)
{
    uint64_t sum = 0;
    uint32_t lo = binCount, hi = 0;
    for (uint32_t i = 0; i < binCount; ++i) {
        if (!bins[i])
            continue;
        sum += uint64_t(bins[i]) * i;
        lo = std::min(lo, i);
        hi = i;
    }
    if (pixels == 0)
        std::printf("    %-5s no pixels\n", name);
    else
        std::printf("    %-5s mean %8.1f  min %5u  max %5u\n", name, double(sum) / pixels, lo, hi);
}

void Summarise(const char* frameName, CZxGrabberSample01& frame, int maxBits)
{
    uint32_t w, h, bits, comp;
    frame.GetPicBufNumbers(&w, &h, &bits, &comp);
    std::printf("%s: %ux%u, %u bits, %s\n", frameName, w, h, bits, comp == 1 ? "mono" : "colour (BGR)");
    SZxAEHistogram hist(maxBits, comp == 1, comp == 3);
    SZxGrabberProbe rect = SZxGrabberProbe::Rect(w / 4, h / 4, w / 2, h / 2);
    SZxGrabberProbe circle = SZxGrabberProbe::Circle(w / 2, h / 2, h / 4);
    struct { const char* name; SZxGrabberProbe* probe; } regions[] = {
        {"whole frame", nullptr}, {"rectangle", &rect}, {"circle", &circle}};
    for (auto& r : regions) {
        ZX_ComputeHistogramAE(&hist, &frame, r.probe);
        std::printf("  %-12s %8u pixels, %u bins\n", r.name, hist.uiPixelCount, hist.uiBinCount);
        if (hist.bMono) {
            PrintChannel("mono", hist.pdwHisto[0], hist.uiBinCount, hist.uiPixelCount);
        } else {
            PrintChannel("red", hist.pdwHisto[1], hist.uiBinCount, hist.uiPixelCount);
            PrintChannel("green", hist.pdwHisto[2], hist.uiBinCount, hist.uiPixelCount);
            PrintChannel("blue", hist.pdwHisto[3], hist.uiBinCount, hist.uiPixelCount);
        }
    }
}

} // namespace

void DemoHistograms()
{
    std::printf("== Histograms ==\n");
    CZxGrabberSample01 mono(640, 480, 12, 1);
    FillScene(mono);
    Summarise("12-bit mono frame", mono, 12);
    CZxGrabberSample01 colour(640, 480, 8, 3);
    FillScene(colour);
    Summarise("8-bit colour frame", colour, 8);
}
