#include <vector>

#include "zx/histogram.h"
#include "zx_frames.h"
#include "zx_levels.h"
#include "zx_test.h"
#include "zxhost/system.h"

using zxtest::DiagCapture;

namespace {

// Per-pixel reference: decides membership of each pixel from the region's
// definition and counts it as the histogram rules say.
struct RefHisto {
    std::vector<uint32_t> bins[4];
    uint32_t pixels = 0;
    uint32_t binCount = 0;
};

bool InCircleRow(int64_t x, int64_t y, const SZxGrabberProbe& p, int64_t w, int64_t h)
{
    const int64_t cx = p.uiLeft, cy = p.uiTop, r = p.uiWidth;
    const int64_t left = std::max<int64_t>(0, cx - r), right = std::min<int64_t>(w - 1, cx + r);
    const int64_t top = std::max<int64_t>(0, cy - r), bottom = std::min<int64_t>(h - 1, cy + r);
    if (y < top || y > bottom || left > right)
        return false;
    const int64_t half = int64_t(std::sqrt((long double)r * r - (long double)(y - cy) * (y - cy)) + 0.5);
    const int64_t x0 = std::min(std::max(cx - half, left), right);
    const int64_t x1 = std::max(std::min(cx + half, right), left);
    return x >= x0 && x <= x1;
}

RefHisto Reference(const SZxPicBuf& pb, int maxBits, const SZxGrabberProbe* probe, const uint32_t* clip)
{
    RefHisto r;
    r.binCount = 1u << std::min<int>(pb.uiBits, maxBits);
    for (auto& b : r.bins) b.assign(size_t(1) << maxBits, 0);
    for (uint32_t y = 0; y < pb.uiHeight; ++y) {
        for (uint32_t x = 0; x < pb.uiWidth; ++x) {
            bool in = true;
            if (probe && probe->uiType == 1)
                in = x >= probe->uiLeft && uint64_t(x) < uint64_t(probe->uiLeft) + probe->uiWidth &&
                     y >= probe->uiTop && uint64_t(y) < uint64_t(probe->uiTop) + probe->uiHeight;
            else if (probe)
                in = InCircleRow(x, y, *probe, pb.uiWidth, pb.uiHeight);
            if (!in)
                continue;
            ++r.pixels;
            const size_t base = (size_t(y) * pb.uiWidth + x) * pb.uiComp;
            for (uint32_t c = 0; c < pb.uiComp; ++c) {
                uint32_t v = zxtest::SampleAt(pb, base + c);
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
        for (uint32_t i = 0; i < r.binCount; ++i)
            ASSERT_EQ(h.pdwHisto[c][i], r.bins[c][i]) << "buffer " << c << " bin " << i;
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

} // namespace

TEST(Histogram, MatchesPerPixelReferenceOnRandomFrames)
{
    struct Case { uint32_t w, h, bits, comp; int maxBits; };
    const Case cases[] = {
        {37, 23, 8, 1, 8}, {64, 17, 10, 1, 10}, {41, 29, 12, 1, 12}, {33, 31, 16, 1, 16},
        {29, 19, 8, 3, 8}, {31, 13, 10, 3, 12}, {18, 27, 12, 3, 12}, {21, 22, 16, 3, 16},
        {40, 20, 12, 1, 8}, {25, 25, 16, 1, 10}, // deeper frame than histogram, mono
    };
    // Every kernel level the machine runs must count exactly as the reference.
    zxtest::ForEachKernelLevel([&](int) {
        uint32_t seed = 1;
        for (const Case& c : cases) {
            auto frame = zxtest::RandomFrame(c.w, c.h, c.bits, c.comp, seed++);
            SZxPicBuf pb;
            frame->GetPicBuf(&pb);
            SZxAEHistogram h(c.maxBits, c.comp == 1, c.comp == 3);
            ZX_ComputeHistogramAE(&h, frame.get(), nullptr);
            EXPECT_EQ(h.bMono, c.comp == 1);
            ExpectSame(h, Reference(pb, c.maxBits, nullptr, nullptr), "whole frame");
            for (SZxGrabberProbe p : ProbesFor(c.w, c.h)) {
                ZX_ComputeHistogramAE(&h, &pb, &p);
                ExpectSame(h, Reference(pb, c.maxBits, &p, nullptr), p.uiType == 1 ? "rect" : "circle");
            }
        }
        // Samples above the stated depth, and flat frames that hit one counter in a row.
        for (uint32_t comp : {1u, 3u}) {
            auto frame = zxtest::RandomFrame(45, 7, 16, comp, 91);
            SZxPicBuf pb;
            frame->GetPicBuf(&pb);
            pb.uiBits = 12;
            SZxAEHistogram h(12, comp == 1, comp == 3);
            ZX_ComputeHistogramAE(&h, &pb, nullptr);
            ExpectSame(h, Reference(pb, 12, nullptr, nullptr), "garbage above the depth");
            CZxGrabberSample01 flat(33, 5, 8, comp);
            std::fill_n(static_cast<uint8_t*>(flat.GetDataPtr()), 33 * 5 * comp, uint8_t(200));
            flat.GetPicBuf(&pb);
            ZX_ComputeHistogramAE(&h, &pb, nullptr);
            ExpectSame(h, Reference(pb, 12, nullptr, nullptr), "flat");
        }
    });
}

TEST(Histogram, ClipLimitsCapEachComponentExceptOnTheScaledWholeFramePath)
{
    zxtest::ForEachKernelLevel([&](int) {
        for (uint32_t comp : {1u, 3u}) {
            for (uint32_t bits : {8u, 12u}) {
                auto frame = zxtest::RandomFrame(30, 20, bits, comp, 77 + bits);
                SZxPicBuf pb;
                frame->GetPicBuf(&pb);
                SZxAEHistogram h(int(bits), comp == 1, comp == 3);
                h.pdwClipLimits = static_cast<uint32_t*>(CZxAlloc::Alloc(3 * sizeof(uint32_t)));
                const uint32_t clip[3] = {(1u << bits) / 2, (1u << bits) / 4, 10};
                std::copy(clip, clip + 3, h.pdwClipLimits);
                ZX_ComputeHistogramAE(&h, &pb, nullptr);
                ExpectSame(h, Reference(pb, int(bits), nullptr, clip), "clipped whole frame");
                SZxGrabberProbe circle = SZxGrabberProbe::Circle(15, 10, 8);
                ZX_ComputeHistogramAE(&h, &pb, &circle);
                ExpectSame(h, Reference(pb, int(bits), &circle, clip), "clipped circle");
            }
        }
    });
    // 16-bit mono deeper than the histogram: the shift wins over the clip.
    auto frame = zxtest::RandomFrame(16, 16, 12, 1, 5);
    SZxAEHistogram h(8, true, false);
    h.pdwClipLimits = static_cast<uint32_t*>(CZxAlloc::Alloc(sizeof(uint32_t)));
    h.pdwClipLimits[0] = 3;
    ZX_ComputeHistogramAE(&h, frame.get(), nullptr);
    uint32_t above = 0;
    for (uint32_t i = 4; i < 256; ++i) above += h.pdwHisto[0][i];
    EXPECT_GT(above, 200u);
}

TEST(Histogram, HandCases)
{
    // 12-bit mono into an 8-bit histogram: the whole-frame path shifts 4095 into bin 255,
    // the probe path indexes raw and is held at the top bin instead of writing past it.
    CZxGrabberSample01 s(4, 1, 12, 1);
    uint16_t* p = static_cast<uint16_t*>(s.GetDataPtr());
    p[0] = 4095; p[1] = 16; p[2] = 15; p[3] = 200;
    SZxAEHistogram h(8, true, false);
    ZX_ComputeHistogramAE(&h, &s, nullptr);
    EXPECT_EQ(h.uiBinCount, 256u);
    EXPECT_EQ(h.pdwHisto[0][255], 1u);
    EXPECT_EQ(h.pdwHisto[0][1], 1u);  // 16 >> 4
    EXPECT_EQ(h.pdwHisto[0][0], 1u);  // 15 >> 4
    EXPECT_EQ(h.pdwHisto[0][12], 1u); // 200 >> 4
    SZxGrabberProbe all = SZxGrabberProbe::Rect(0, 0, 4, 1);
    ZX_ComputeHistogramAE(&h, &s, &all);
    EXPECT_EQ(h.pdwHisto[0][255], 1u);
    EXPECT_EQ(h.pdwHisto[0][200], 1u);
    EXPECT_EQ(h.pdwHisto[0][16], 1u);
    EXPECT_EQ(h.pdwHisto[0][12], 0u);

    // An empty circle: no pixels, and the bins of the last frame are cleared.
    SZxGrabberProbe away = SZxGrabberProbe::Circle(100, 100, 3);
    ZX_ComputeHistogramAE(&h, &s, &away);
    EXPECT_EQ(h.uiPixelCount, 0u);
    for (uint32_t i = 0; i < 256; ++i)
        ASSERT_EQ(h.pdwHisto[0][i], 0u);

    // Circle spans: radius 2 around (2,2) in a 5x5 frame has rows of 1,3,5,3,1... with
    // round-half-up: sqrt(3)=1.73 -> 2, so rows 1 and 3 are 5 wide: 1+5+5+5+1.
    CZxGrabberSample01 five(5, 5, 8, 1);
    SZxGrabberProbe c = SZxGrabberProbe::Circle(2, 2, 2);
    ZX_ComputeHistogramAE(&h, &five, &c);
    EXPECT_EQ(h.uiPixelCount, 17u);
    EXPECT_EQ(h.pdwHisto[0][0], 17u);
}
