// Bad frames and records: reported, never a crash or a write outside the buffers.
#include <iterator>

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
    // A colour frame into a mono-only histogram has no buffers to count into.
    auto colour = zxtest::RandomFrame(4, 4, 8, 3, 4);
    ZX_ComputeHistogramAE(&mono, colour.get(), nullptr);

    // Each bad description follows a good count, whose pixels it must not leave behind.
    SZxPicBuf two = pb, noData = pb, shortBuf = pb;
    two.uiComp = 2;
    noData.pData = nullptr;
    shortBuf.ui64DataSize = 10;
    for (SZxPicBuf* bad : {&two, &noData, &shortBuf}) {
        ZX_ComputeHistogramAE(&mono, &pb, nullptr);
        ZX_ComputeHistogramAE(&mono, bad, nullptr);
        EXPECT_EQ(mono.uiPixelCount, 0u);
    }
    // Each bad argument is reported once, for its own reason.
    const wchar_t* reasons[] = {L"hist == NULL", L"pb == NULL", L"sample == NULL", L"!haveBuffers",
                                L"pb->uiComp != 1 && pb->uiComp != 3", L"pb->pData == NULL",
                                L"pb->ui64DataSize != 0 && pb->ui64DataSize < needed"};
    for (const wchar_t* r : reasons) EXPECT_TRUE(diag.Has(r, L"imaging") && diag.Count(r) == 1) << r;
    EXPECT_EQ(diag.Size(), std::size(reasons));
}

TEST(HistogramInput, OversizedBitDepthAllocatesNothingAndOwnershipMoves)
{
    const long long before = CZxAlloc::Outstanding();
    {
        DiagCapture diag;
        SZxAEHistogram huge(40, true, true);
        EXPECT_EQ(huge.pdwHisto[0], nullptr);
        EXPECT_EQ(diag.Size(), 1u);
    }
    {
        // The destination frees what it held and the source lets go: a leak shows in
        // the count below, a double free there or as an abort.
        SZxAEHistogram a(10, true, true);
        a.pdwClipLimits = static_cast<uint32_t*>(CZxAlloc::Alloc(12));
        uint32_t* buffer = a.pdwHisto[2];
        SZxAEHistogram b(std::move(a));
        SZxAEHistogram c(8, true, false);
        c = std::move(b);
        EXPECT_EQ(c.pdwHisto[2], buffer);
    }
    EXPECT_EQ(CZxAlloc::Outstanding(), before);
}
