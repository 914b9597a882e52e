// Records of the host's picture library that the histogram display reads.
#pragma once
#include <cstdint>

/// Most components a histogram record describes.
enum : uint32_t { ZX_HISTO_MAX_COMP = 4 /**< components of SZxHisto and SZxLutParam */ };

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
    /// Lowest source level shown (normalised), for the combined histogram.
    double dMinSrc = 0.0;
    /// Highest source level shown (normalised), for the combined histogram.
    double dMaxSrc = 1.0;
    /// Display gamma of the combined histogram.
    double dGamma = 1.0;
    /// Lowest source level of each component.
    double adMinSrc[ZX_HISTO_MAX_COMP] = {0.0, 0.0, 0.0, 0.0};
    /// Highest source level of each component.
    double adMaxSrc[ZX_HISTO_MAX_COMP] = {1.0, 1.0, 1.0, 1.0};
    /// Display gamma of each component.
    double adGamma[ZX_HISTO_MAX_COMP] = {1.0, 1.0, 1.0, 1.0};
    /// Destination maximum of each component (fraction of the output range).
    double adMaxDst[ZX_HISTO_MAX_COMP] = {1.0, 1.0, 1.0, 1.0};

    /// Lowest source level shown for the combined histogram (dMinSrc).
    double GetMinSrcDbl() const { return dMinSrc; }
    /// Highest source level shown for the combined histogram (dMaxSrc).
    double GetMaxSrcDbl() const { return dMaxSrc; }
    /// Display gamma of the combined histogram (dGamma).
    double GetGammaSrc() const { return dGamma; }
    /// Lowest source level of component c (dMinSrc out of range).
    double GetMinSrcDbl(uint32_t c) const { return c < ZX_HISTO_MAX_COMP ? adMinSrc[c] : dMinSrc; }
    /// Highest source level of component c (dMaxSrc out of range).
    double GetMaxSrcDbl(uint32_t c) const { return c < ZX_HISTO_MAX_COMP ? adMaxSrc[c] : dMaxSrc; }
    /// Gamma of component c (dGamma out of range).
    double GetGammaSrc(uint32_t c) const { return c < ZX_HISTO_MAX_COMP ? adGamma[c] : dGamma; }
    /// Destination maximum of component c (1.0 out of range).
    double GetMaxDstDbl(uint32_t c) const { return c < ZX_HISTO_MAX_COMP ? adMaxDst[c] : 1.0; }
};
