#include "zx/histogram.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "imaging/histogram_kernels.h"
#include "imaging/pixel_io.h"
#include "imaging/probe_region.h"
#include "zxhost/system.h"

namespace {
const wchar_t* const kSource = L"imaging";
constexpr int kMaxHistogramBits = 24;
} // namespace

SZxAEHistogram::SZxAEHistogram(int maxBits, bool mono, bool colour)
    : iMaxBits(maxBits), bHasMono(mono), bHasColor(colour)
{
    if (ZX_DIAG_FAIL_IF(maxBits < 0 || maxBits > kMaxHistogramBits, kSource))
        return;
    const size_t bytes = (size_t(1) << maxBits) * sizeof(uint32_t);
    if (mono)
        pdwHisto[0] = static_cast<uint32_t*>(CZxAlloc::Alloc(bytes));
    if (colour)
        for (int c = 1; c < 4; ++c)
            pdwHisto[c] = static_cast<uint32_t*>(CZxAlloc::Alloc(bytes));
}

SZxAEHistogram::SZxAEHistogram(SZxAEHistogram&& o) noexcept
{
    *this = std::move(o);
}

SZxAEHistogram& SZxAEHistogram::operator=(SZxAEHistogram&& o) noexcept
{
    if (this == &o)
        return *this;
    Release();
    bMono = o.bMono;
    std::copy(o.pdwHisto, o.pdwHisto + 4, pdwHisto);
    uiPixelCount = o.uiPixelCount;
    uiBinCount = o.uiBinCount;
    pdwClipLimits = o.pdwClipLimits;
    iMaxBits = o.iMaxBits;
    bHasMono = o.bHasMono;
    bHasColor = o.bHasColor;
    std::fill(o.pdwHisto, o.pdwHisto + 4, nullptr);
    o.pdwClipLimits = nullptr;
    o.uiPixelCount = o.uiBinCount = 0;
    return *this;
}

SZxAEHistogram::~SZxAEHistogram()
{
    Release();
}

void SZxAEHistogram::Release()
{
    CZxAlloc::Free(pdwClipLimits);
    pdwClipLimits = nullptr;
    for (uint32_t*& p : pdwHisto) {
        CZxAlloc::Free(p);
        p = nullptr;
    }
}

uint32_t SZxAEHistogram::AllocatedBins() const
{
    if (iMaxBits < 0 || iMaxBits > kMaxHistogramBits || (!pdwHisto[0] && !pdwHisto[1]))
        return 0;
    return uint32_t(1) << iMaxBits;
}

namespace {

// The runs of the region; a whole frame of packed rows is one run.
std::vector<zx::HistogramSpan> SpansOf(const SZxPicBuf& pb, const SZxGrabberProbe* probe, uint32_t* pixels)
{
    std::vector<zx::HistogramSpan> spans;
    if (!probe) {
        spans.push_back({0, 0, size_t(pb.uiWidth) * pb.uiHeight});
        *pixels = pb.uiWidth * pb.uiHeight;
        return spans;
    }
    *pixels = zx::ForEachProbeSpan(pb.uiWidth, pb.uiHeight, probe, [&](uint32_t y, uint32_t x0, uint32_t n) {
        spans.push_back({y, x0, n});
    });
    return spans;
}

template <typename T>
void CountRegion(SZxAEHistogram& h, const SZxPicBuf& pb, const SZxGrabberProbe* probe)
{
    const T* const data = static_cast<const T*>(pb.pData);
    const uint32_t last = h.uiBinCount - 1;
    const size_t rowSamples = size_t(pb.uiWidth) * pb.uiComp;
    const zx::HistogramKernels<T>& k = zx::GetHistogramKernels<T>();
    const std::vector<zx::HistogramSpan> spans = SpansOf(pb, probe, &h.uiPixelCount);

    if (pb.uiComp == 1) {
        // Only the whole-frame 16-bit path scales a deeper frame down; the probe
        // paths index by the raw sample (the top bin catches what lies above).
        unsigned shift = 0;
        uint32_t top = last;
        if (!probe && sizeof(T) == 2 && int(pb.uiBits) > h.iMaxBits)
            shift = std::min<unsigned>(pb.uiBits - h.iMaxBits, 16);
        else if (h.pdwClipLimits)
            top = std::min(top, h.pdwClipLimits[0]);
        k.Mono(data, rowSamples, spans.data(), spans.size(), h.pdwHisto[0], shift, top);
        return;
    }

    uint32_t tops[3] = {last, last, last};
    if (h.pdwClipLimits)
        for (int c = 0; c < 3; ++c)
            tops[c] = std::min(last, h.pdwClipLimits[c]);
    // Memory order is blue, green, red; buffers are 1 = red, 2 = green, 3 = blue.
    uint32_t* const bins[3] = {h.pdwHisto[3], h.pdwHisto[2], h.pdwHisto[1]};
    k.Colour(data, rowSamples, spans.data(), spans.size(), bins, tops);
}

} // namespace

void ZX_ComputeHistogramAE(SZxAEHistogram* hist, SZxPicBuf* pb, SZxGrabberProbe* probe)
{
    if (ZX_DIAG_FAIL_IF(hist == NULL, kSource) || ZX_DIAG_FAIL_IF(pb == NULL, kSource))
        return;
    hist->uiPixelCount = 0;
    hist->uiBinCount = 0;
    if (ZX_DIAG_FAIL_IF(pb->uiComp != 1 && pb->uiComp != 3, kSource))
        return;
    hist->bMono = pb->uiComp == 1;
    const bool haveBuffers = hist->bMono ? hist->pdwHisto[0] != nullptr
                                         : hist->pdwHisto[1] && hist->pdwHisto[2] && hist->pdwHisto[3];
    if (ZX_DIAG_FAIL_IF(!haveBuffers, kSource))
        return;

    const int frameBits = static_cast<int>(std::min<uint32_t>(pb->uiBits, 31));
    const int binBits = std::min(frameBits, hist->iMaxBits);
    hist->uiBinCount = uint32_t(1) << binBits;
    for (int c = hist->bMono ? 0 : 1; c <= (hist->bMono ? 0 : 3); ++c)
        std::memset(hist->pdwHisto[c], 0, size_t(hist->uiBinCount) * sizeof(uint32_t));

    if (pb->uiWidth == 0 || pb->uiHeight == 0)
        return;
    const uint64_t needed = zx::FrameBytes(pb->uiWidth, pb->uiHeight, pb->uiComp, pb->uiBits);
    // A data size of 0 means the describer did not fill it in; a smaller one is a short buffer.
    if (ZX_DIAG_FAIL_IF(pb->pData == NULL, kSource) ||
        ZX_DIAG_FAIL_IF(pb->ui64DataSize != 0 && pb->ui64DataSize < needed, kSource))
        return;

    if (pb->uiBits > 8)
        CountRegion<uint16_t>(*hist, *pb, probe);
    else
        CountRegion<uint8_t>(*hist, *pb, probe);
}

void ZX_ComputeHistogramAE(SZxAEHistogram* hist, CZxGrabberSample01* sample, SZxGrabberProbe* probe)
{
    if (ZX_DIAG_FAIL_IF(sample == NULL, kSource))
        return;
    SZxPicBuf pb;
    sample->GetPicBuf(&pb);
    ZX_ComputeHistogramAE(hist, &pb, probe);
}
