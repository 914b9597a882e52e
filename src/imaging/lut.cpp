#include "zx/lut.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "imaging/lut_kernels.h"
#include "imaging/parallel.h"
#include "imaging/pixel_io.h"
#include "zxhost/system.h"

namespace {

const wchar_t* const kSource = L"imaging";
constexpr double kTolerance = 0.001;
constexpr int kMaxTableBits = 16;

bool Differs(double a, double b)
{
    return std::fabs(a - b) > kTolerance;
}

// x^gamma * M before rounding, limited to [0, M] (NaN from odd gammas counts as 0).
double Shape(double x, double gamma, double M)
{
    if (x < 0 || std::isnan(x))
        x = 0;
    const double y = std::pow(x, gamma) * M;
    if (!(y > 0))
        return 0;
    return y > M ? M : y;
}

uint16_t Round(double y, double M)
{
    // y is in [0, M]; trunc(y + 0.5) is at most M + 0, as M is an integer.
    return uint16_t(std::min(M, double(int64_t(y + 0.5))));
}

double DisplayX(int i, double M, double gain, double offset)
{
    return (i + M * offset) * gain / M;
}

double QuantitativeX(int i, double M, double gain, double offset)
{
    return (i * gain + M * offset) / M;
}

void FillDisplay(uint16_t* t, int bits, double gain, double offset, double gamma)
{
    const int M = (1 << bits) - 1;
    for (int i = 0; i <= M; ++i)
        t[i] = Round(Shape(DisplayX(i, M, gain, offset), gamma, M), M);
}

// A colour weight as the pair tables of M = 2^bits - 1 use it. Entries are L * a
// and L * b with L <= M, |a| and |b| below |w| + 1, held in 32 bits: up to
// floor((2^31 - 1) / M) - 1 every entry fits (8421503 for 8 bits, 32767 for 16),
// so the mix is exactly the formula's; the kernels add three entries in 64 bits.
// A stronger weight cannot be held; it acts as that limit, where the mix is all
// or nothing but for levels within a few steps of the luminance. A NaN weight
// mixes nothing.
double PairWeight(double w, int M)
{
    const double limit = std::floor(2147483647.0 / M) - 1.0;
    if (std::isnan(w))
        return 1.0;
    return std::max(-limit, std::min(w, limit));
}

uint16_t* NewTable(int maxBits, size_t entrySize)
{
    const size_t bytes = (size_t(1) << maxBits) * entrySize;
    void* p = CZxAlloc::Alloc(bytes);
    if (p)
        std::memset(p, 0, bytes);
    return static_cast<uint16_t*>(p);
}

bool BadBits(int bits, int maxBits, const void* table)
{
    return ZX_DIAG_FAIL_IF(table == NULL, kSource) || ZX_DIAG_FAIL_IF(bits < 1 || bits > maxBits, kSource);
}

// The frame a LUT maps in place; false (reported) when it cannot be mapped.
bool Describe(SZxPicBuf* pb, size_t* samples)
{
    if (ZX_DIAG_FAIL_IF(pb == NULL, kSource) || ZX_DIAG_FAIL_IF(pb->uiComp != 1 && pb->uiComp != 3, kSource))
        return false;
    *samples = size_t(pb->uiWidth) * pb->uiHeight * pb->uiComp;
    if (*samples == 0)
        return false;
    const uint64_t bytes = zx::FrameBytes(pb->uiWidth, pb->uiHeight, pb->uiComp, pb->uiBits);
    return !ZX_DIAG_FAIL_IF(pb->pData == NULL, kSource) &&
           !ZX_DIAG_FAIL_IF(pb->ui64DataSize != 0 && pb->ui64DataSize < bytes, kSource);
}

bool FromSample(CZxGrabberSample01* sample, SZxPicBuf* pb)
{
    if (ZX_DIAG_FAIL_IF(sample == NULL, kSource))
        return false;
    sample->GetPicBufNumbers(&pb->uiWidth, &pb->uiHeight, &pb->uiBits, &pb->uiComp);
    pb->pData = sample->GetDataPtr();
    pb->ui64DataSize = sample->GetDataSize();
    pb->uiRowBytes = pb->uiWidth * pb->uiComp * ZX_BytesPerSample(pb->uiBits);
    return true;
}

// Calls fn(first, count) over `units` pixels of `samples` samples each, split
// over the kernel threads; parts start on multiples of 64 pixels, so no two
// threads write one cache line.
template <typename F>
void InParts(size_t units, uint32_t samples, F&& fn)
{
    const unsigned parts = zx::PartsFor(uint64_t(units) * samples);
    zx::RunParts(parts, [&](unsigned p) {
        const uint64_t a = zx::PartStart(units, p, parts, 64), b = zx::PartStart(units, p + 1, parts, 64);
        if (b > a)
            fn(size_t(a), size_t(b - a));
    });
}

} // namespace

// ---- Properties ----------------------------------------------------------------

bool SZxBasePropsI::operator!=(const SZxBasePropsI& o) const
{
    return Differs(dGain, o.dGain) || Differs(dOffset, o.dOffset) || Differs(dGamma, o.dGamma);
}

bool SZxBasePropsRGB::operator!=(const SZxBasePropsRGB& o) const
{
    const double* a = &dGainR;
    const double* b = &o.dGainR;
    for (int i = 0; i < 12; ++i)
        if (Differs(a[i], b[i]))
            return true;
    return false;
}

// ---- Monochrome table ------------------------------------------------------------

CZxBaseMonoLUT::CZxBaseMonoLUT(int maxBits) : m_iMaxBits(maxBits)
{
    if (!ZX_DIAG_FAIL_IF(maxBits < 1 || maxBits > kMaxTableBits, kSource))
        m_pTable = NewTable(maxBits, sizeof(uint16_t));
}

CZxBaseMonoLUT::~CZxBaseMonoLUT()
{
    CZxAlloc::Free(m_pTable);
}

void CZxBaseMonoLUT::UpdateLUT(const SZxBasePropsI& props, int bits)
{
    Update(props, bits, false);
}

void CZxBaseMonoLUT::UpdateQuantitativeLUT(const SZxBasePropsI& props, int bits)
{
    Update(props, bits, true);
}

void CZxBaseMonoLUT::Update(const SZxBasePropsI& p, int bits, bool quantitative)
{
    m_bIdentity = p.dGain == 1.0 && p.dOffset == 0.0 && p.dGamma == 1.0;
    if (m_bIdentity)
        return;
    if (BadBits(bits, m_iMaxBits, m_pTable)) {
        m_bIdentity = true;  // no valid table to apply
        return;
    }
    const SZxBasePropsI current{m_dGain, m_dOffset, m_dGamma};
    if (bits == m_iBits && quantitative == m_bQuantitative && !(p != current))
        return;
    const int M = (1 << bits) - 1;
    if (quantitative) {
        for (int i = 0; i <= M; ++i)
            m_pTable[i] = Round(Shape(QuantitativeX(i, M, p.dGain, p.dOffset), p.dGamma, M), M);
        // Values above the frame's depth saturate instead of keeping an old mapping.
        std::fill(m_pTable + M + 1, m_pTable + (size_t(1) << m_iMaxBits), uint16_t(M));
    } else {
        FillDisplay(m_pTable, bits, p.dGain, p.dOffset, p.dGamma);
    }
    m_iBits = bits;
    m_bQuantitative = quantitative;
    m_dGain = p.dGain;
    m_dOffset = p.dOffset;
    m_dGamma = p.dGamma;
}

void CZxBaseMonoLUT::ApplyLUT(CZxGrabberSample01* sample)
{
    if (m_bIdentity)
        return;
    SZxPicBuf pb;
    if (FromSample(sample, &pb))
        ApplyLUT(&pb);
}

void CZxBaseMonoLUT::ApplyLUT(SZxPicBuf* pb)
{
    size_t n = 0;
    if (m_bIdentity || m_iBits < 0 || !Describe(pb, &n))
        return;
    const uint32_t last = (uint32_t(1) << m_iMaxBits) - 1;
    const zx::LutKernels& k = zx::GetLutKernels();
    InParts(n, 1, [&](size_t at, size_t count) {
        if (pb->uiBits > 8)
            k.Map16(static_cast<uint16_t*>(pb->pData) + at, count, m_pTable, last);
        else
            k.Map8(static_cast<uint8_t*>(pb->pData) + at, count, m_pTable, last);
    });
}

// ---- Colour tables ---------------------------------------------------------------

CZxBaseLUT::CZxBaseLUT(int maxBits) : m_iMaxBits(maxBits)
{
    if (!ZX_DIAG_FAIL_IF(maxBits < 1 || maxBits > kMaxTableBits, kSource))
        Allocate();
}

void CZxBaseLUT::Allocate()
{
    m_pIntensity = NewTable(m_iMaxBits, sizeof(uint16_t));
    m_pRed = NewTable(m_iMaxBits, sizeof(uint16_t));
    m_pGreen = NewTable(m_iMaxBits, sizeof(uint16_t));
    m_pBlue = NewTable(m_iMaxBits, sizeof(uint16_t));
    m_pPairRed = reinterpret_cast<int32_t*>(NewTable(m_iMaxBits, 2 * sizeof(int32_t)));
    m_pPairGreen = reinterpret_cast<int32_t*>(NewTable(m_iMaxBits, 2 * sizeof(int32_t)));
    m_pPairBlue = reinterpret_cast<int32_t*>(NewTable(m_iMaxBits, 2 * sizeof(int32_t)));
}

void CZxBaseLUT::Release()
{
    for (void* p : {(void*)m_pIntensity, (void*)m_pRed, (void*)m_pGreen, (void*)m_pBlue, (void*)m_pPairRed,
                    (void*)m_pPairGreen, (void*)m_pPairBlue})
        CZxAlloc::Free(p);
    m_pIntensity = m_pRed = m_pGreen = m_pBlue = nullptr;
    m_pPairRed = m_pPairGreen = m_pPairBlue = nullptr;
}

CZxBaseLUT::CZxBaseLUT(const CZxBaseLUT& o) : m_iMaxBits(o.m_iMaxBits)
{
    *this = o;
}

CZxBaseLUT& CZxBaseLUT::operator=(const CZxBaseLUT& o)
{
    if (this == &o)
        return *this;
    Release();
    m_iMaxBits = o.m_iMaxBits;
    if (o.m_pIntensity) {
        Allocate();
        const size_t n = size_t(1) << m_iMaxBits;
        if (m_pIntensity) std::memcpy(m_pIntensity, o.m_pIntensity, n * sizeof(uint16_t));
        if (m_pRed) std::memcpy(m_pRed, o.m_pRed, n * sizeof(uint16_t));
        if (m_pGreen) std::memcpy(m_pGreen, o.m_pGreen, n * sizeof(uint16_t));
        if (m_pBlue) std::memcpy(m_pBlue, o.m_pBlue, n * sizeof(uint16_t));
        if (m_pPairRed) std::memcpy(m_pPairRed, o.m_pPairRed, n * 2 * sizeof(int32_t));
        if (m_pPairGreen) std::memcpy(m_pPairGreen, o.m_pPairGreen, n * 2 * sizeof(int32_t));
        if (m_pPairBlue) std::memcpy(m_pPairBlue, o.m_pPairBlue, n * 2 * sizeof(int32_t));
    }
    m_iIntensityBits = o.m_iIntensityBits;
    m_iChannelBits = o.m_iChannelBits;
    m_iPairBits = o.m_iPairBits;
    m_intensity = o.m_intensity;
    m_channels = o.m_channels;
    m_pairs = o.m_pairs;
    m_uiIntensityMode = o.m_uiIntensityMode;
    m_uiColorMode = o.m_uiColorMode;
    return *this;
}

CZxBaseLUT::~CZxBaseLUT()
{
    Release();
}

void CZxBaseLUT::UpdateLUT(const SZxBaseProps& p, bool mono, int bits)
{
    if (mono) {
        m_uiIntensityMode = (p.dGain == 1.0 && p.dOffset == 0.0 && p.dGamma == 1.0) ? 0 : 1;
        if (m_uiIntensityMode == 0)
            return;
        if (BadBits(bits, m_iMaxBits, m_pIntensity)) {
            m_uiIntensityMode = 0;
            return;
        }
        const SZxBasePropsI props{p.dGain, p.dOffset, p.dGamma};
        if (bits == m_iIntensityBits && !(props != m_intensity))
            return;
        FillDisplay(m_pIntensity, bits, p.dGain, p.dOffset, p.dGamma);
        m_iIntensityBits = bits;
        m_intensity = props;
        return;
    }

    SZxBasePropsRGB e;
    e.dGainR = p.dGain * p.dGainR;
    e.dGainG = p.dGain * p.dGainG;
    e.dGainB = p.dGain * p.dGainB;
    e.dOffsetR = p.dOffset + p.dOffsetR;
    e.dOffsetG = p.dOffset + p.dOffsetG;
    e.dOffsetB = p.dOffset + p.dOffsetB;
    e.dGammaR = p.dGamma * p.dGammaR;
    e.dGammaG = p.dGamma * p.dGammaG;
    e.dGammaB = p.dGamma * p.dGammaB;
    e.dWeightR = p.dSaturation * p.dWeightR;
    e.dWeightG = p.dSaturation * p.dWeightG;
    e.dWeightB = p.dSaturation * p.dWeightB;
    const double* g = &e.dGainR;  // gains, offsets, gammas, weights: three each
    m_uiColorMode = 0;
    for (int c = 0; c < 3; ++c)
        if (g[c] != 1.0 || g[3 + c] != 0.0 || g[6 + c] != 1.0)
            m_uiColorMode = 1;
    for (int c = 0; c < 3; ++c)
        if (g[9 + c] != 1.0)
            m_uiColorMode = 2;
    if (m_uiColorMode == 0)
        return;
    if (BadBits(bits, m_iMaxBits, m_pRed)) {
        m_uiColorMode = 0;
        return;
    }

    const int M = (1 << bits) - 1;
    if (m_uiColorMode == 1) {
        if (bits == m_iChannelBits && !(e != m_channels))
            return;
        uint16_t* tables[3] = {m_pRed, m_pGreen, m_pBlue};
        for (int c = 0; c < 3; ++c)
            FillDisplay(tables[c], bits, g[c], g[3 + c], g[6 + c]);
        m_iChannelBits = bits;
        m_channels = e;
        return;
    }

    if (bits == m_iPairBits && !(e != m_pairs))
        return;
    const double lum[3] = {0.299, 0.587, 0.114};
    int32_t* pairs[3] = {m_pPairRed, m_pPairGreen, m_pPairBlue};
    for (int c = 0; c < 3; ++c) {
        const double w = PairWeight(g[9 + c], M);
        const double a = w + (1 - w) * lum[c];
        const double b = (1 - w) * lum[c];
        for (int i = 0; i <= M; ++i) {
            const double L = Shape(DisplayX(i, M, g[c], g[3 + c]), g[6 + c], M);
            pairs[c][2 * i] = int32_t(L * a + 0.5);
            pairs[c][2 * i + 1] = int32_t(L * b + 0.5);
        }
    }
    m_iPairBits = bits;
    m_pairs = e;
}

void CZxBaseLUT::ApplyLUT(CZxGrabberSample01* sample)
{
    if (m_uiIntensityMode == 0 && m_uiColorMode == 0)
        return;
    SZxPicBuf pb;
    if (FromSample(sample, &pb))
        ApplyLUT(&pb);
}

void CZxBaseLUT::ApplyLUT(SZxPicBuf* pb)
{
    if (m_uiIntensityMode == 0 && m_uiColorMode == 0)
        return;
    size_t n = 0;
    if (!Describe(pb, &n))
        return;
    const uint32_t last = (uint32_t(1) << m_iMaxBits) - 1;
    const zx::LutKernels& k = zx::GetLutKernels();
    const bool wide = pb->uiBits > 8;
    if (pb->uiComp == 1) {
        if (m_uiIntensityMode != 1 || m_iIntensityBits < 0)
            return;
        InParts(n, 1, [&](size_t at, size_t count) {
            if (wide)
                k.Map16(static_cast<uint16_t*>(pb->pData) + at, count, m_pIntensity, last);
            else
                k.Map8(static_cast<uint8_t*>(pb->pData) + at, count, m_pIntensity, last);
        });
        return;
    }
    const size_t pixels = n / 3;
    if (m_uiColorMode == 1 && m_iChannelBits >= 0) {
        const uint16_t* const tables[3] = {m_pBlue, m_pGreen, m_pRed};
        InParts(pixels, 3, [&](size_t at, size_t count) {
            if (wide)
                k.Map16x3(static_cast<uint16_t*>(pb->pData) + 3 * at, count, tables, last);
            else
                k.Map8x3(static_cast<uint8_t*>(pb->pData) + 3 * at, count, tables, last);
        });
    } else if (m_uiColorMode == 2 && m_iPairBits >= 0) {
        const int32_t* const pairs[3] = {m_pPairBlue, m_pPairGreen, m_pPairRed};
        const int32_t M = (1 << m_iPairBits) - 1;
        InParts(pixels, 3, [&](size_t at, size_t count) {
            if (wide)
                k.Pair16(static_cast<uint16_t*>(pb->pData) + 3 * at, count, pairs, last, M);
            else
                k.Pair8(static_cast<uint8_t*>(pb->pData) + 3 * at, count, pairs, last, M);
        });
    }
}
