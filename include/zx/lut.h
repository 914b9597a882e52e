// Display look-up tables: gain, offset and gamma, globally and per colour channel,
// with colour weights that mix luminance into the channels.
#pragma once
#include <cstdint>
#include "zx/export.h"
#include "zxhost/picbuf.h"

/// Intensity properties. Two sets differ when any field differs by more than 0.001.
struct ZX_API SZxBasePropsI {
    double dGain = 1.0;
    double dOffset = 0.0;
    double dGamma = 1.0;

    bool operator!=(const SZxBasePropsI& o) const;
    bool operator==(const SZxBasePropsI& o) const { return !(*this != o); }
};

/// Per-channel properties, compared with the same 0.001 tolerance.
struct ZX_API SZxBasePropsRGB {
    double dGainR = 1.0, dGainG = 1.0, dGainB = 1.0;
    double dOffsetR = 0.0, dOffsetG = 0.0, dOffsetB = 0.0;
    double dGammaR = 1.0, dGammaG = 1.0, dGammaB = 1.0;
    double dWeightR = 1.0, dWeightG = 1.0, dWeightB = 1.0;

    bool operator!=(const SZxBasePropsRGB& o) const;
    bool operator==(const SZxBasePropsRGB& o) const { return !(*this != o); }
};

/// Everything a colour display table is built from.
struct SZxBaseProps {
    double dGain = 1.0;
    double dOffset = 0.0;
    double dGamma = 1.0;
    double dGainR = 1.0, dGainG = 1.0, dGainB = 1.0;
    double dOffsetR = 0.0, dOffsetG = 0.0, dOffsetB = 0.0;
    double dGammaR = 1.0, dGammaG = 1.0, dGammaB = 1.0;
    double dWeightR = 1.0, dWeightG = 1.0, dWeightB = 1.0;
    double dSaturation = 1.0;
};

/// Table for monochrome frames (or every sample of a colour frame alike).
///
/// Bits passed to the updates must lie in 1..maximum bits; others are reported
/// (source "imaging") and ignored. Samples above the table are mapped through
/// its last entry instead of reading past it.
class ZX_API CZxBaseMonoLUT {
public:
    /// maxBits in 1..16 sizes the table (2^maxBits entries); others build nothing.
    explicit CZxBaseMonoLUT(int maxBits);
    CZxBaseMonoLUT(const CZxBaseMonoLUT&) = delete;
    CZxBaseMonoLUT& operator=(const CZxBaseMonoLUT&) = delete;
    virtual ~CZxBaseMonoLUT();

    /// Display mapping: x = (i + M*offset) * gain / M, entry = x^gamma * M rounded.
    void UpdateLUT(const SZxBasePropsI& props, int bits);
    /// Quantitative mapping x = (i*gain + M*offset) / M; entries above M saturate to M.
    void UpdateQuantitativeLUT(const SZxBasePropsI& props, int bits);
    /// Maps every sample of the frame in place (nothing when the table is the identity).
    void ApplyLUT(CZxGrabberSample01* sample);
    void ApplyLUT(SZxPicBuf* picBuf);

    bool m_bIdentity = true;
    int m_iMaxBits;
    int m_iBits = -1;
    double m_dGain = 1.0, m_dOffset = 0.0, m_dGamma = 1.0;
    uint16_t* m_pTable = nullptr;

private:
    void Update(const SZxBasePropsI& props, int bits, bool quantitative);
    bool m_bQuantitative = false;  // a table of the other kind is rebuilt even with equal properties
};

/// Tables for colour frames (and monochrome frames through the intensity table).
class ZX_API CZxBaseLUT {
public:
    explicit CZxBaseLUT(int maxBits);
    CZxBaseLUT(const CZxBaseLUT& o);
    CZxBaseLUT& operator=(const CZxBaseLUT& o);
    virtual ~CZxBaseLUT();

    /// mono: intensity table from gain, offset, gamma. Colour: channel tables
    /// (mode 1) or, when any colour weight differs from 1, pair tables (mode 2).
    void UpdateLUT(const SZxBaseProps& props, bool mono, int bits);
    void ApplyLUT(CZxGrabberSample01* sample);
    void ApplyLUT(SZxPicBuf* picBuf);

    int m_iMaxBits;
    uint16_t* m_pIntensity = nullptr;
    uint16_t* m_pRed = nullptr;
    uint16_t* m_pGreen = nullptr;
    uint16_t* m_pBlue = nullptr;
    /// Pairs (own part, share given to the other channels), two int32 per level.
    int32_t* m_pPairRed = nullptr;
    int32_t* m_pPairGreen = nullptr;
    int32_t* m_pPairBlue = nullptr;
    int m_iIntensityBits = -1;
    int m_iChannelBits = -1;
    int m_iPairBits = -1;
    SZxBasePropsI m_intensity;
    SZxBasePropsRGB m_channels;
    SZxBasePropsRGB m_pairs;
    unsigned m_uiIntensityMode = 0;  ///< 0 = identity, 1 = table
    unsigned m_uiColorMode = 0;      ///< 0 = identity, 1 = channel tables, 2 = pair tables

private:
    void Allocate();
    void Release();
};
