// Records of the host's picture library that the histogram display reads.
#pragma once
#include <cstdint>

/// Most components a histogram record describes.
enum : uint32_t { ZX_HISTO_MAX_COMP = 4 };

/// One frame's level counts, as a driver hands them over. The record only
/// points at the arrays; whoever fills it keeps them alive while it is used.
struct SZxHisto {
    const uint32_t* pdwHisto = nullptr;   ///< combined counts, 2^uiBits entries
    uint32_t uiComp = 0;                  ///< components; below 2 means monochrome
    /// Per-component counts in memory order (blue, green, red for colour frames),
    /// 2^uiBits entries each; the first uiComp entries are read.
    const uint32_t* pdwCompHisto[ZX_HISTO_MAX_COMP] = {nullptr, nullptr, nullptr, nullptr};
    uint32_t uiBits = 0;                  ///< significant bits of the source pixels
};

/// Display LUT parameters. Source limits are normalised levels (0.0 = black,
/// 1.0 = the largest level of the bit depth); the destination maximum is a
/// fraction of the full output range. The overall values apply to the combined
/// histogram, the per-component ones to each component; a component index out
/// of range reads the overall value (destination maximum 1.0).
struct SZxLutParam {
    double dMinSrc = 0.0;
    double dMaxSrc = 1.0;
    double dGamma = 1.0;
    double adMinSrc[ZX_HISTO_MAX_COMP] = {0.0, 0.0, 0.0, 0.0};
    double adMaxSrc[ZX_HISTO_MAX_COMP] = {1.0, 1.0, 1.0, 1.0};
    double adGamma[ZX_HISTO_MAX_COMP] = {1.0, 1.0, 1.0, 1.0};
    double adMaxDst[ZX_HISTO_MAX_COMP] = {1.0, 1.0, 1.0, 1.0};

    double GetMinSrcDbl() const { return dMinSrc; }
    double GetMaxSrcDbl() const { return dMaxSrc; }
    double GetGammaSrc() const { return dGamma; }
    double GetMinSrcDbl(uint32_t c) const { return c < ZX_HISTO_MAX_COMP ? adMinSrc[c] : dMinSrc; }
    double GetMaxSrcDbl(uint32_t c) const { return c < ZX_HISTO_MAX_COMP ? adMaxSrc[c] : dMaxSrc; }
    double GetGammaSrc(uint32_t c) const { return c < ZX_HISTO_MAX_COMP ? adGamma[c] : dGamma; }
    double GetMaxDstDbl(uint32_t c) const { return c < ZX_HISTO_MAX_COMP ? adMaxDst[c] : 1.0; }
};
