#include "zx/histogram.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "imaging/channels.h"
#include "imaging/histogram_kernels.h"
#include "imaging/parallel.h"
#include "imaging/pixel_io.h"
#include "imaging/probe_region.h"
#include "imaging/scratch.h"
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
    // Rows that continue one another in memory (a probe as wide as the frame)
    // become one run, which the kernels count without a restart per row.
    *pixels = zx::ForEachProbeSpan(pb.uiWidth, pb.uiHeight, probe, [&](uint32_t y, uint32_t x0, uint32_t n) {
        if (!spans.empty()) {
            zx::HistogramSpan& last = spans.back();
            if (uint64_t(last.y) * pb.uiWidth + last.x0 + last.n == uint64_t(y) * pb.uiWidth + x0) {
                last.n += n;
                return;
            }
        }
        spans.push_back({y, x0, n});
    });
    return spans;
}

// The spans of samples [from, to) of the region, in order. A span covers
// consecutive pixels in memory, so a cut inside it starts at pixel y * width +
// x0 + k, wherever that lies (a whole frame's one span is cut across rows).
std::vector<zx::HistogramSpan> Cut(const std::vector<zx::HistogramSpan>& spans, uint32_t width, uint64_t from,
                                   uint64_t to)
{
    std::vector<zx::HistogramSpan> out;
    uint64_t at = 0;
    for (const zx::HistogramSpan& s : spans) {
        const uint64_t lo = std::max(at, from), hi = std::min<uint64_t>(at + s.n, to);
        if (lo < hi) {
            const uint64_t pos = uint64_t(s.y) * width + s.x0 + (lo - at);
            out.push_back({uint32_t(pos / width), uint32_t(pos % width), size_t(hi - lo)});
        }
        at += s.n;
        if (at >= to)
            break;
    }
    return out;
}

template <typename T>
void CountRegion(SZxAEHistogram& h, const SZxPicBuf& pb, const SZxGrabberProbe* probe)
{
    const T* const data = static_cast<const T*>(pb.pData);
    const uint32_t last = h.uiBinCount - 1;
    const size_t rowSamples = size_t(pb.uiWidth) * pb.uiComp;
    const zx::HistogramKernels<T>& k = zx::GetHistogramKernels<T>();
    const std::vector<zx::HistogramSpan> spans = SpansOf(pb, probe, &h.uiPixelCount);

    unsigned shift = 0;
    uint32_t tops[3] = {last, last, last};
    if (pb.uiComp == 1) {
        // Only the whole-frame 16-bit path scales a deeper frame down; the probe
        // paths index by the raw sample (the top bin catches what lies above).
        if (!probe && sizeof(T) == 2 && int(pb.uiBits) > h.iMaxBits)
            shift = std::min<unsigned>(pb.uiBits - h.iMaxBits, 16);
        else if (h.pdwClipLimits)
            tops[0] = std::min(last, h.pdwClipLimits[0]);
    } else if (h.pdwClipLimits) {
        for (int c = 0; c < 3; ++c)
            tops[c] = std::min(last, h.pdwClipLimits[c]);
    }
    // Kernels count in memory order.
    uint32_t* const bins[3] = {pb.uiComp == 1 ? h.pdwHisto[zx::kMonoBuffer] : h.pdwHisto[zx::BufferOf(zx::kBlue)],
                               h.pdwHisto[zx::BufferOf(zx::kGreen)], h.pdwHisto[zx::BufferOf(zx::kRed)]};
    auto count = [&](const std::vector<zx::HistogramSpan>& part, uint32_t* const to[3]) {
        if (pb.uiComp == 1)
            k.Mono(data, rowSamples, part.data(), part.size(), to[0], shift, tops[0]);
        else
            k.Colour(data, rowSamples, part.data(), part.size(), to, tops);
    };

    uint64_t total = 0;
    for (const zx::HistogramSpan& s : spans)
        total += s.n;
    // Every part counts into bins of its own (part 0 into the caller's), which
    // are then added: integer counts, so the sums equal one thread's exactly.
    // Each further part clears and adds a set of bins, so it must count at
    // least as many samples as they hold.
    const size_t tables = pb.uiComp == 1 ? 1 : 3, binCount = h.uiBinCount;
    const unsigned parts = zx::PartsFor(total * pb.uiComp, 1 + total * pb.uiComp / (tables * binCount));
    if (parts == 1) {
        count(spans, bins);
        return;
    }
    // The further parts' bins come from the kept scratch memory; each part
    // clears its own, and the sums are split by bin ranges (whole cache lines),
    // so neither grows with the thread count on one thread.
    const size_t perPart = tables * binCount;
    zx::ScratchBlock ownBlock(size_t(parts - 1) * perPart * sizeof(uint32_t), false);
    uint32_t* const own = ownBlock.As<uint32_t>();
    if (!own) {
        count(spans, bins);
        return;
    }
    zx::RunParts(parts, [&](unsigned p) {
        uint32_t* to[3] = {bins[0], bins[1], bins[2]};
        if (p > 0) {
            std::memset(own + (p - 1) * perPart, 0, perPart * sizeof(uint32_t));
            for (size_t c = 0; c < tables; ++c)
                to[c] = own + (p - 1) * perPart + c * binCount;
        }
        count(Cut(spans, pb.uiWidth, zx::PartStart(total, p, parts), zx::PartStart(total, p + 1, parts)), to);
    });
    zx::RunParts(parts, [&](unsigned q) {
        const size_t from = zx::PartStart(binCount, q, parts, 16), to = zx::PartStart(binCount, q + 1, parts, 16);
        for (unsigned p = 1; p < parts; ++p)
            for (size_t c = 0; c < tables; ++c) {
                const uint32_t* add = own + (p - 1) * perPart + c * binCount;
                for (size_t i = from; i < to; ++i)
                    bins[c][i] += add[i];
            }
    });
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
