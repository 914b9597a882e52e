#include "zx/histodraw.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include "imaging/channels.h"
#include "zx/status.h"
#include "zxhost/system.h"

namespace {

// Truncates toward zero and limits to [lo, hi]; NaN (from NaN parameters) gives lo.
int64_t TruncClamp(double v, int64_t lo, int64_t hi)
{
    if (!(v >= double(lo)))
        return lo;
    if (v >= double(hi))
        return hi;
    return int64_t(v);
}

const uint32_t kNoLevel = 0;

template <typename T>
bool GrowArray(T*& p, size_t oldCount, size_t newCount)
{
    if (newCount <= oldCount && p)
        return true;
    T* q = static_cast<T*>(CZxAlloc::ReAlloc(p, newCount * sizeof(T)));
    if (!q)
        return false;
    std::memset(q + oldCount, 0, (newCount - oldCount) * sizeof(T));
    p = q;
    return true;
}

template <typename T>
T* CloneArray(const T* src, size_t count)
{
    if (!src || count == 0)
        return nullptr;
    T* p = static_cast<T*>(CZxAlloc::Alloc(count * sizeof(T)));
    if (p)
        std::memcpy(p, src, count * sizeof(T));
    return p;
}

uint32_t SumRange(const uint32_t* bins, uint64_t from, uint64_t to)
{
    uint32_t s = 0;   // 32-bit on purpose: the fractions divide by a 32-bit total
    for (uint64_t i = from; i < to; ++i)
        s += bins[i];
    return s;
}

} // namespace

CZxHistoDraw::CZxHistoDraw(uint32_t bins, uint32_t flags) : m_uiFlags(flags), m_uiBins(bins) {}

CZxHistoDraw::CZxHistoDraw(const CZxHistoDraw& other) : m_uiFlags(other.m_uiFlags), m_uiBins(other.m_uiBins)
{
    *this = other;
}

CZxHistoDraw& CZxHistoDraw::operator=(const CZxHistoDraw& other)
{
    if (this == &other)
        return *this;
    Release();
    m_uiFlags = other.m_uiFlags;
    m_uiBins = other.m_uiBins;
    m_uiComponents = other.m_uiComponents;
    m_uiBitDepth = other.m_uiBitDepth;
    m_uiMaxCombined = other.m_uiMaxCombined;
    m_bHasData = other.m_bHasData;
    m_bCompBuilt = other.m_bCompBuilt;
    const size_t store = size_t(other.m_uiStoreComps + 1) * m_uiBins;
    m_pBinStore = CloneArray(other.m_pBinStore, store);
    m_uiStoreComps = m_pBinStore ? other.m_uiStoreComps : 0;
    m_pSourceRange = CloneArray(other.m_pSourceRange, size_t(other.m_uiRangeCap) * 2);
    m_uiRangeCap = m_pSourceRange ? other.m_uiRangeCap : 0;
    m_pCompMax = CloneArray(other.m_pCompMax, other.m_uiCompCap);
    m_pCompColor = CloneArray(other.m_pCompColor, other.m_uiCompCap);
    m_ppCompBins = CloneArray(other.m_ppCompBins, other.m_uiCompCap);
    m_uiCompCap = other.m_uiCompCap;
    if (!m_pBinStore != !other.m_pBinStore || !m_pSourceRange != !other.m_pSourceRange ||
        (m_uiCompCap && (!m_pCompMax || !m_pCompColor || !m_ppCompBins))) {
        Release();   // out of memory: an empty model rather than a half copy
        return *this;
    }
    for (uint32_t c = 0; c < m_uiCompCap; ++c)
        m_ppCompBins[c] = m_pBinStore && c < m_uiStoreComps ? m_pBinStore + size_t(c + 1) * m_uiBins : nullptr;
    return *this;
}

CZxHistoDraw::~CZxHistoDraw() { Release(); }

void CZxHistoDraw::Release()
{
    CZxAlloc::Free(m_pBinStore);
    CZxAlloc::Free(m_ppCompBins);
    CZxAlloc::Free(m_pCompMax);
    CZxAlloc::Free(m_pCompColor);
    CZxAlloc::Free(m_pSourceRange);
    CZxAlloc::Free(m_pSumScratch);
    m_pBinStore = nullptr;
    m_ppCompBins = nullptr;
    m_pCompMax = nullptr;
    m_pCompColor = nullptr;
    m_pSourceRange = nullptr;
    m_pSumScratch = nullptr;
    m_uiStoreComps = m_uiCompCap = m_uiRangeCap = m_uiSumCap = 0;
    m_uiComponents = m_uiBitDepth = m_uiMaxCombined = 0;
    m_bHasData = m_bCompBuilt = false;
}

bool CZxHistoDraw::CompTables()
{
    // Every per-component table holds the most components a record can name, so
    // colours set before the first colour frame are kept.
    if (m_uiCompCap)
        return true;
    if (!GrowArray(m_ppCompBins, 0, ZX_HISTO_MAX_COMP) || !GrowArray(m_pCompMax, 0, ZX_HISTO_MAX_COMP) ||
        !GrowArray(m_pCompColor, 0, ZX_HISTO_MAX_COMP))
        return false;
    m_uiCompCap = ZX_HISTO_MAX_COMP;
    return true;
}

bool CZxHistoDraw::Grow(uint32_t components, uint32_t levels)
{
    if (!m_pBinStore || components > m_uiStoreComps) {
        const size_t oldCount = m_pBinStore ? size_t(m_uiStoreComps + 1) * m_uiBins : 0;
        if (!GrowArray(m_pBinStore, oldCount, size_t(components + 1) * m_uiBins))
            return false;
        m_uiStoreComps = components;
        // Re-aim the component pointers now: a later failure keeps the old
        // histogram, which must not read the moved store.
        for (uint32_t c = 0; c < m_uiCompCap; ++c)
            m_ppCompBins[c] = c < m_uiStoreComps ? m_pBinStore + size_t(c + 1) * m_uiBins : nullptr;
    }
    if (components + 1 > m_uiRangeCap) {
        if (!GrowArray(m_pSourceRange, size_t(m_uiRangeCap) * 2, size_t(components + 1) * 2))
            return false;
        m_uiRangeCap = components + 1;
    }
    if (components > 0 && !CompTables())
        return false;
    for (uint32_t c = 0; c < m_uiCompCap; ++c)
        m_ppCompBins[c] = c < m_uiStoreComps ? m_pBinStore + size_t(c + 1) * m_uiBins : nullptr;
    for (uint32_t p = 0; p <= components; ++p) {
        m_pSourceRange[2 * p] = levels;
        m_pSourceRange[2 * p + 1] = kNoLevel;
    }
    return true;
}

void CZxHistoDraw::BinLevels(const uint32_t* counts, uint32_t levels, uint32_t divisor, const SZxLutParam* lut,
                             int c, uint32_t* bins, uint32_t* maxCount, uint32_t* range) const
{
    const int64_t lastBin = int64_t(m_uiBins) - 1, lastLevel = int64_t(levels) - 1;
    std::memset(bins, 0, size_t(m_uiBins) * sizeof(uint32_t));
    double mn = 0.0, mx = 1.0, gamma = 1.0, dst = 1.0;
    if (lut && c < 0) {
        // The combined histogram ignores the destination maximum, unlike the
        // components below; deliberate, do not align them.
        mn = lut->GetMinSrcDbl();
        mx = lut->GetMaxSrcDbl();
        gamma = lut->GetGammaSrc();
    } else if (lut) {
        mn = lut->GetMinSrcDbl(uint32_t(c));
        mx = lut->GetMaxSrcDbl(uint32_t(c));
        gamma = lut->GetGammaSrc(uint32_t(c));
        dst = lut->GetMaxDstDbl(uint32_t(c));
    }
    for (uint32_t i = 0; i < levels; ++i) {
        int64_t level, bin;
        if (lut) {
            const double x = double(i) / double(lastLevel);
            // A level at or below the source minimum (t <= 0, or NaN on the step
            // of min == max) is black whatever the gamma: the power never sees a
            // base of 0 or below, which a gamma of 0 or less would turn white.
            const double t = (x - mn) / (mx - mn);
            const double p = t > 0.0 ? std::pow(t, gamma) * dst : 0.0;
            level = TruncClamp(double(lastLevel) * p, 0, lastLevel);
            bin = TruncClamp(double(lastBin) * p, 0, lastBin);
        } else {
            level = i;
            bin = std::min<int64_t>(i / divisor, lastBin);   // bins that do not divide the levels
        }
        const uint32_t n = counts[i];
        bins[bin] += n;
        if (n) {
            range[0] = std::min<uint32_t>(range[0], uint32_t(level));
            range[1] = std::max<uint32_t>(range[1], uint32_t(level));
        }
    }
    uint32_t m = 0;
    for (uint32_t b = 0; b < m_uiBins; ++b)
        m = std::max(m, bins[b]);
    *maxCount = m;
}

int CZxHistoDraw::SetHistogram(const SZxHisto& h, uint32_t pixelKind, const SZxLutParam* lut)
{
    if (!h.pdwHisto || m_uiBins == 0 || h.uiBits > 24 || h.uiComp > ZX_HISTO_MAX_COMP)
        return ZX_E_FAIL;
    const uint32_t components = h.uiComp < 2 ? 0 : h.uiComp;
    const bool buildComps =
        components > 0 && (m_uiFlags & FLAG_COMPONENTS) && (pixelKind == PIXELKIND_RGB || pixelKind == PIXELKIND_MULTI);
    for (uint32_t c = 0; buildComps && c < components; ++c)
        if (!h.pdwCompHisto[c])
            return ZX_E_FAIL;
    const uint32_t levels = h.uiBits ? 1u << h.uiBits : 0u;
    const uint32_t divisor = std::max(levels / m_uiBins, 1u);
    if (!Grow(components, levels))
        return ZX_E_FAIL;
    m_uiBitDepth = h.uiBits;
    m_uiComponents = components;
    m_bHasData = true;
    m_bCompBuilt = false;
    m_uiMaxCombined = 0;
    if (m_uiFlags & FLAG_COMBINED)
        BinLevels(h.pdwHisto, levels, divisor, lut, -1, m_pBinStore, &m_uiMaxCombined, m_pSourceRange);
    if (!buildComps)
        return ZX_OK;
    if (pixelKind == PIXELKIND_RGB) {
        m_pCompColor[zx::kBlue] = 0xFF0000;   // COLORREF
        m_pCompColor[zx::kGreen] = 0x00FF00;
        m_pCompColor[zx::kRed] = 0x0000FF;
    }
    for (uint32_t c = 0; c < components; ++c)
        BinLevels(h.pdwCompHisto[c], levels, divisor, lut, int(c), m_ppCompBins[c], &m_pCompMax[c],
                  m_pSourceRange + 2 * (c + 1));
    m_bCompBuilt = true;
    return ZX_OK;
}

int CZxHistoDraw::SetHistogram(const SZxAEHistogram& ae, uint32_t pixelKind, const SZxLutParam* lut)
{
    const uint32_t n = ae.uiBinCount;
    if (n == 0 || (n & (n - 1)) || n > ae.AllocatedBins())
        return ZX_E_FAIL;
    SZxHisto h;
    while ((1u << h.uiBits) < n)
        ++h.uiBits;
    if (ae.bMono) {
        h.pdwHisto = ae.pdwHisto[zx::kMonoBuffer];
        h.uiComp = 1;
        return SetHistogram(h, pixelKind, lut);
    }
    const uint32_t* r = ae.pdwHisto[zx::BufferOf(zx::kRed)];
    const uint32_t* g = ae.pdwHisto[zx::BufferOf(zx::kGreen)];
    const uint32_t* b = ae.pdwHisto[zx::BufferOf(zx::kBlue)];
    if (!r || !g || !b)
        return ZX_E_FAIL;
    if (n > m_uiSumCap) {
        if (!GrowArray(m_pSumScratch, m_uiSumCap, n))
            return ZX_E_FAIL;
        m_uiSumCap = n;
    }
    for (uint32_t i = 0; i < n; ++i)
        m_pSumScratch[i] = r[i] + g[i] + b[i];
    h.pdwHisto = m_pSumScratch;
    h.uiComp = 3;
    h.pdwCompHisto[zx::kBlue] = b;
    h.pdwCompHisto[zx::kGreen] = g;
    h.pdwCompHisto[zx::kRed] = r;
    return SetHistogram(h, pixelKind, lut);
}

const uint32_t* CZxHistoDraw::Bins(int c) const
{
    if (!m_bHasData)
        return nullptr;
    if (c < 0)
        return (m_uiFlags & FLAG_COMBINED) ? m_pBinStore : nullptr;
    return m_bCompBuilt && uint32_t(c) < m_uiComponents ? m_ppCompBins[c] : nullptr;
}

const uint32_t* CZxHistoDraw::GetBinData(int c) const { return Bins(c); }

namespace {

int RangeOf(const uint32_t* bins, uint32_t n, uint32_t* lo, uint32_t* hi)
{
    if (!bins)
        return ZX_E_FAIL;
    uint32_t first = 0;
    while (first < n && bins[first] == 0)
        ++first;
    if (first == n)
        return ZX_E_FAIL;
    uint32_t last = n - 1;
    while (bins[last] == 0)
        --last;
    if (lo)
        *lo = first;
    if (hi)
        *hi = last;
    return ZX_OK;
}

int MeanOf(const uint32_t* bins, uint32_t n, double* mean)
{
    if (!bins)
        return ZX_E_FAIL;
    uint64_t weighted = 0, total = 0;
    for (uint32_t i = 0; i < n; ++i) {
        weighted += uint64_t(i) * bins[i];
        total += bins[i];
    }
    if (weighted == 0)   // also every count in bin 0
        return ZX_E_FAIL;
    if (mean)
        *mean = double(weighted) / double(total) / double(n - 1) * 255.0;
    return ZX_OK;
}

int StatsOf(const uint32_t* bins, uint32_t n, uint32_t lo, uint32_t hi, double* below, double* within,
            double* above)
{
    if (!bins)
        return ZX_E_FAIL;
    const uint64_t end = n, from = std::min<uint64_t>(lo, end), past = std::min<uint64_t>(uint64_t(hi) + 1, end);
    const uint32_t b = SumRange(bins, 0, from);
    const uint32_t w = SumRange(bins, from, std::max(from, past));
    const uint32_t a = SumRange(bins, past, end);
    const uint32_t total = b + w + a;
    const double t = total ? double(total) : 1.0;
    if (below)
        *below = total ? b / t : 0.0;
    if (within)
        *within = total ? w / t : 0.0;
    if (above)
        *above = total ? a / t : 0.0;
    return ZX_OK;
}

} // namespace

int CZxHistoDraw::GetRange(uint32_t* lo, uint32_t* hi) const { return RangeOf(Bins(-1), m_uiBins, lo, hi); }

int CZxHistoDraw::GetRangeComp(uint32_t c, uint32_t* lo, uint32_t* hi) const
{
    return c < m_uiComponents ? RangeOf(Bins(int(c)), m_uiBins, lo, hi) : ZX_E_FAIL;
}

int CZxHistoDraw::GetRangeOrig(uint32_t* lo, uint32_t* hi) const
{
    if (!m_bHasData || m_pSourceRange[0] > m_pSourceRange[1])
        return ZX_E_FAIL;
    if (lo)
        *lo = m_pSourceRange[0];
    if (hi)
        *hi = m_pSourceRange[1];
    return ZX_OK;
}

int CZxHistoDraw::GetRangeCompOrig(uint32_t c, uint32_t* lo, uint32_t* hi) const
{
    if (!m_bHasData || c >= m_uiComponents)
        return ZX_E_FAIL;
    const uint32_t* pair = m_pSourceRange + 2 * (size_t(c) + 1);
    if (pair[0] > pair[1])
        return ZX_E_FAIL;
    if (lo)
        *lo = pair[0];
    if (hi)
        *hi = pair[1];
    return ZX_OK;
}

int CZxHistoDraw::GetMeanFreq(double* mean) const { return MeanOf(Bins(-1), m_uiBins, mean); }

int CZxHistoDraw::GetMeanFreqComp(uint32_t c, double* mean) const
{
    return c < m_uiComponents ? MeanOf(Bins(int(c)), m_uiBins, mean) : ZX_E_FAIL;
}

int CZxHistoDraw::GetStats(uint32_t lo, uint32_t hi, double* below, double* within, double* above) const
{
    return StatsOf(Bins(-1), m_uiBins, lo, hi, below, within, above);
}

int CZxHistoDraw::GetStatsComp(uint32_t c, uint32_t lo, uint32_t hi, double* below, double* within,
                               double* above) const
{
    return c < m_uiComponents ? StatsOf(Bins(int(c)), m_uiBins, lo, hi, below, within, above) : ZX_E_FAIL;
}

uint32_t CZxHistoDraw::CalcHistoY(double exponent, double fraction, uint32_t height)
{
    return uint32_t(TruncClamp(std::pow(fraction, 1.0 / exponent) * height + 0.5, 0, height));
}

int CZxHistoDraw::SetCompColor(uint32_t c, uint32_t color)
{
    if (c >= ZX_HISTO_MAX_COMP)
        return ZX_E_FAIL;
    if (!CompTables())
        return ZX_E_FAIL;
    m_pCompColor[c] = color;
    return ZX_OK;
}

int CZxHistoDraw::GetCompColor(uint32_t c, uint32_t* color) const
{
    if (c >= m_uiCompCap)
        return ZX_E_FAIL;
    if (color)
        *color = m_pCompColor[c];
    return ZX_OK;
}
