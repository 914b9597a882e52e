// Bad frames and records: reported, never a crash or a write outside the buffers.
#include "zx/histogram.h"
#include "zx_frames.h"
#include "zx_test.h"
#include "zxhost/system.h"

using zxtest::DiagCapture;

TEST(HistogramInput, NullAndMalformedArgumentsAreReportedAndLeaveNoCounts)
{
    auto frame = zxtest::RandomFrame(8, 8, 8, 1, 3);
    SZxPicBuf pb;
    frame->GetPicBuf(&pb);
    SZxAEHistogram mono(8, true, false);
    DiagCapture diag;

    ZX_ComputeHistogramAE(nullptr, &pb, nullptr);
    ZX_ComputeHistogramAE(&mono, static_cast<SZxPicBuf*>(nullptr), nullptr);
    ZX_ComputeHistogramAE(&mono, static_cast<CZxGrabberSample01*>(nullptr), nullptr);
    EXPECT_EQ(diag.Count(L"hist == NULL"), 1);
    EXPECT_EQ(diag.Count(L"pb == NULL"), 1);
    EXPECT_EQ(diag.Count(L"sample == NULL"), 1);

    SZxPicBuf two = pb;
    two.uiComp = 2;
    ZX_ComputeHistogramAE(&mono, &two, nullptr);
    EXPECT_TRUE(diag.Has(L"pb->uiComp != 1 && pb->uiComp != 3", L"imaging"));
    EXPECT_EQ(mono.uiPixelCount, 0u);

    // A colour frame into a mono-only histogram has no buffers to count into.
    auto colour = zxtest::RandomFrame(4, 4, 8, 3, 4);
    ZX_ComputeHistogramAE(&mono, colour.get(), nullptr);
    EXPECT_EQ(diag.Count(L"!haveBuffers"), 1);

    SZxPicBuf noData = pb;
    noData.pData = nullptr;
    ZX_ComputeHistogramAE(&mono, &noData, nullptr);
    SZxPicBuf shortBuf = pb;
    shortBuf.ui64DataSize = 10;
    ZX_ComputeHistogramAE(&mono, &shortBuf, nullptr);
    EXPECT_EQ(diag.Count(L"pb->pData == NULL"), 1);
    EXPECT_EQ(diag.Count(L"pb->ui64DataSize != 0 && pb->ui64DataSize < needed"), 1);
    EXPECT_EQ(mono.uiPixelCount, 0u);
}

TEST(HistogramInput, SamplesAboveTheBitDepthLandInTheTopBin)
{
    // A "10-bit" frame whose samples carry garbage in the upper bits.
    CZxGrabberSample01 s(3, 1, 10, 1);
    uint16_t* p = static_cast<uint16_t*>(s.GetDataPtr());
    p[0] = 0xFFFF; p[1] = 1024; p[2] = 5;
    SZxAEHistogram h(16, true, false);
    SZxGrabberProbe probe = SZxGrabberProbe::Rect(0, 0, 3, 1);
    ZX_ComputeHistogramAE(&h, &s, &probe);
    EXPECT_EQ(h.uiBinCount, 1024u);
    EXPECT_EQ(h.pdwHisto[0][1023], 2u);
    EXPECT_EQ(h.pdwHisto[0][5], 1u);
}

TEST(HistogramInput, OversizedBitDepthAllocatesNothingAndOwnershipMoves)
{
    const long long before = CZxAlloc::Outstanding();
    {
        DiagCapture diag;
        SZxAEHistogram huge(40, true, true);
        EXPECT_EQ(huge.pdwHisto[0], nullptr);
        EXPECT_EQ(huge.AllocatedBins(), 0u);
        EXPECT_EQ(diag.Size(), 1u);
        auto frame = zxtest::RandomFrame(4, 4, 8, 1, 9);
        ZX_ComputeHistogramAE(&huge, frame.get(), nullptr);
        EXPECT_EQ(huge.uiPixelCount, 0u);
    }
    {
        SZxAEHistogram a(10, true, true);
        a.pdwClipLimits = static_cast<uint32_t*>(CZxAlloc::Alloc(12));
        uint32_t* buffer = a.pdwHisto[2];
        SZxAEHistogram b(std::move(a));
        EXPECT_EQ(b.pdwHisto[2], buffer);
        EXPECT_EQ(a.pdwHisto[2], nullptr);
        SZxAEHistogram c(8, true, false);
        c = std::move(b);
        EXPECT_EQ(c.pdwHisto[2], buffer);
    }
    EXPECT_EQ(CZxAlloc::Outstanding(), before);
}
