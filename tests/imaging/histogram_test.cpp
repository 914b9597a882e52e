#include <cmath>
#include <vector>

#include "zx/histogram.h"
#include "zx_frames.h"
#include "zx_levels.h"
#include "zx_test.h"
#include "zxhost/system.h"

namespace {

// Per-pixel reference: decides membership of each pixel from the region's
// definition and counts it as the histogram rules say.
struct RefHisto {
    std::vector<uint32_t> bins[4];
    uint32_t pixels = 0;
    uint32_t binCount = 0;
};

// Whether pixel (x, y) of a w x h frame lies in the probe. A circle's row y spans
// cx +- round(sqrt(r^2 - dy^2)), both ends held inside the circle's box cut to the frame.
bool InProbe(int64_t x, int64_t y, const SZxGrabberProbe& p, int64_t w, int64_t h)
{
    const int64_t cx = p.uiLeft, cy = p.uiTop, r = p.uiWidth;
    if (p.uiType == 1)
        return x >= cx && x < cx + r && y >= cy && y < cy + int64_t(p.uiHeight);
    const int64_t left = std::max<int64_t>(0, cx - r), right = std::min<int64_t>(w - 1, cx + r);
    if (y < std::max<int64_t>(0, cy - r) || y > std::min<int64_t>(h - 1, cy + r) || left > right)
        return false;
    const int64_t half = int64_t(std::sqrt((long double)r * r - (long double)(y - cy) * (y - cy)) + 0.5);
    return x >= std::min(std::max(cx - half, left), right) && x <= std::max(std::min(cx + half, right), left);
}

RefHisto Reference(const SZxPicBuf& pb, int maxBits, const SZxGrabberProbe* probe, const uint32_t* clip)
{
    RefHisto r;
    r.binCount = 1u << std::min<int>(pb.uiBits, maxBits);
    for (auto& b : r.bins) b.assign(r.binCount, 0);
    for (uint32_t y = 0; y < pb.uiHeight; ++y) {
        for (uint32_t x = 0; x < pb.uiWidth; ++x) {
            if (probe && !InProbe(x, y, *probe, pb.uiWidth, pb.uiHeight))
                continue;
            ++r.pixels;
            const size_t base = (size_t(y) * pb.uiWidth + x) * pb.uiComp;
            for (uint32_t c = 0; c < pb.uiComp; ++c) {
                uint32_t v = zxtest::SampleAt(pb, base + c);
                // Only the whole 16-bit mono frame is scaled to the histogram, and there
                // the clip limit does not apply.
                if (pb.uiComp == 1 && !probe && pb.uiBits > 8 && int(pb.uiBits) > maxBits)
                    v >>= pb.uiBits - maxBits;
                else if (clip)
                    v = std::min(v, clip[c]);
                const int buffer = pb.uiComp == 1 ? 0 : 3 - int(c);
                ++r.bins[buffer][std::min(v, r.binCount - 1)];
            }
        }
    }
    return r;
}

void ExpectSame(const SZxAEHistogram& h, const RefHisto& r, const char* what)
{
    SCOPED_TRACE(what);
    ASSERT_EQ(h.uiBinCount, r.binCount);
    EXPECT_EQ(h.uiPixelCount, r.pixels);
    for (int c = h.bMono ? 0 : 1; c <= (h.bMono ? 0 : 3); ++c)
        ASSERT_EQ(std::vector<uint32_t>(h.pdwHisto[c], h.pdwHisto[c] + r.binCount), r.bins[c]) << "buffer " << c;
}

std::vector<SZxGrabberProbe> ProbesFor(uint32_t w, uint32_t h)
{
    return {
        SZxGrabberProbe::Rect(1, 2, w / 2, h / 3),          // inside
        SZxGrabberProbe::Rect(w / 2, h / 2, w, h),          // past bottom-right
        SZxGrabberProbe::Rect(0, 0, 100000, 100000),        // larger than the frame
        SZxGrabberProbe::Rect(w + 3, 0, 5, 5),              // wholly outside
        SZxGrabberProbe::Rect(2, 2, 0, 7),                  // empty
        SZxGrabberProbe::Circle(w / 2, h / 2, std::min(w, h) / 3),
        SZxGrabberProbe::Circle(1, h - 2, w),               // mostly outside, clamped rows
        SZxGrabberProbe::Circle(w + 40, h / 2, 20),         // beside the frame
        SZxGrabberProbe::Circle(w / 3, h / 3, 0),           // one pixel
        SZxGrabberProbe::Circle(5, 5, 0xFFFFFFFFu),         // radius that would wrap
    };
}

// Counts the frame into histograms of maxBits bins without and with the clip
// limits, the whole frame and then through each probe, each against the reference.
void ExpectReferenceCounts(SZxPicBuf& pb, int maxBits, const uint32_t clip[3], const std::vector<SZxGrabberProbe>& probes)
{
    for (const uint32_t* limits : {static_cast<const uint32_t*>(nullptr), clip}) {
        SCOPED_TRACE(limits ? "clipped" : "not clipped");
        SZxAEHistogram h(maxBits, pb.uiComp == 1, pb.uiComp == 3);
        if (limits) {
            h.pdwClipLimits = static_cast<uint32_t*>(CZxAlloc::Alloc(3 * sizeof(uint32_t)));
            std::copy(limits, limits + 3, h.pdwClipLimits);
        }
        ZX_ComputeHistogramAE(&h, &pb, nullptr);
        EXPECT_EQ(h.bMono, pb.uiComp == 1);
        ExpectSame(h, Reference(pb, maxBits, nullptr, limits), "whole frame");
        for (SZxGrabberProbe p : probes) {
            ZX_ComputeHistogramAE(&h, &pb, &p);
            ExpectSame(h, Reference(pb, maxBits, &p, limits), p.uiType == 1 ? "rect" : "circle");
        }
    }
}

} // namespace

TEST(Histogram, MatchesPerPixelReferenceOnRandomFrames)
{
    // bits is the depth the frame states; its samples fill `fill` bits, so a larger fill
    // puts garbage above the depth that must land in the top bin, not past it.
    struct Case { uint32_t w, h, bits, fill, comp; int maxBits; };
    const Case cases[] = {
        {37, 23, 8, 8, 1, 8}, {64, 17, 10, 10, 1, 10}, {41, 29, 12, 12, 1, 12}, {33, 31, 16, 16, 1, 16},
        {29, 19, 8, 8, 3, 8}, {31, 13, 10, 10, 3, 12}, {18, 27, 12, 12, 3, 12}, {21, 22, 16, 16, 3, 16},
        {40, 20, 12, 12, 1, 8}, {25, 25, 16, 16, 1, 10}, {19, 9, 12, 12, 3, 8}, // deeper frame than histogram
        {45, 7, 12, 16, 1, 12}, {45, 7, 12, 16, 3, 12}, {30, 3, 10, 16, 1, 16}, // garbage above the depth
        {613, 431, 8, 8, 1, 8},  // large enough for sample pairs; odd width and an odd count
    };
    // Every kernel level the machine runs must count exactly as the reference, with and without clip limits.
    zxtest::ForEachKernelLevel([&](int) {
        uint32_t seed = 1;
        for (const Case& c : cases) {
            auto frame = zxtest::RandomFrame(c.w, c.h, c.fill, c.comp, seed++);
            SZxPicBuf pb;
            frame->GetPicBuf(&pb);
            pb.uiBits = c.bits;
            // Limits below the top bin, so that they bite wherever they apply.
            const uint32_t bins = 1u << std::min<int>(c.bits, c.maxBits), clip[3] = {bins / 2, bins / 4, 10};
            SCOPED_TRACE(::testing::Message() << c.w << "x" << c.h << "x" << c.comp << " bits " << c.bits << "/"
                                              << c.fill << " into " << c.maxBits);
            ExpectReferenceCounts(pb, c.maxBits, clip, ProbesFor(c.w, c.h));
        }
    });
}

TEST(Histogram, LargeFramesCountExactlyWhateverTheContent)
{
    // Large whole 8-bit mono frames count pairs of samples into narrow or
    // full-width tables, chosen per stretch of 2^16 samples by its content;
    // 16-bit frames count into 16-bit or 32-bit counters, chosen per stretch of
    // 2^14 pixels. Noise, a flat stretch, noise with a pair recurring every
    // eighth pair (its narrow counter wraps many times) and a two-value pattern
    // (at 16 bits: long enough for its 16-bit counters to wrap) follow each
    // other, over an odd sample count that ends inside a stretch; a probe one
    // column short of the frame gives rows that are not one run but still enough
    // samples for pairs, so the table choice carries from row to row.
    struct Case { uint32_t w, h, bits, comp; unsigned stretchBits; };
    for (const Case c : {Case{641, 419, 8, 1, 16}, Case{641, 419, 16, 1, 14}, Case{701, 403, 16, 3, 14}}) {
        auto frame = zxtest::RandomFrame(c.w, c.h, c.bits, c.comp, 77);
        SZxPicBuf pb;
        frame->GetPicBuf(&pb);
        // Far apart at 16 bits, so the pattern is counted as widely spread values.
        const uint32_t high = c.bits > 8 ? 60000 : 200;
        for (size_t i = 0; i < size_t(c.w) * c.h * c.comp; ++i) {
            const size_t pixel = i / c.comp;
            uint32_t v = zxtest::SampleAt(pb, i);
            switch ((pixel >> c.stretchBits) % 4) {
            case 1: v = 77; break;
            case 2: if (c.bits == 8 && i % 16 < 2) v = i % 2 ? 9 : 7; else if (c.bits > 8) v = pixel % 2 ? 3 : high; break;
            case 3: v = pixel % 2 ? 3 : high; break;
            default: break;
            }
            if (c.bits > 8) static_cast<uint16_t*>(pb.pData)[i] = uint16_t(v);
            else static_cast<uint8_t*>(pb.pData)[i] = uint8_t(v);
        }
        const uint32_t clip[3] = {60000, 150, 65535};
        zxtest::ForEachKernelLevel(
            [&](int) { ExpectReferenceCounts(pb, int(c.bits), clip, {SZxGrabberProbe::Rect(1, 0, c.w - 1, c.h)}); });
    }
}
