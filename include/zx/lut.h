// Display look-up tables: gain, offset and gamma, globally and per colour channel,
// with colour weights that mix luminance into the channels.
#pragma once
#include <cstdint>
#include "zx/export.h"
#include "zxhost/picbuf.h"

/// Intensity properties. Two sets differ when any field differs by more than 0.001.
/// @note Plain records; copy them freely between threads.
struct ZX_API SZxBasePropsI {
    /// Multiplier of the level (1.0 = unchanged).
    double dGain = 1.0;
    /// Added level as a fraction of full scale (0.0 = unchanged; -0.1 darkens by 10 %).
    double dOffset = 0.0;
    /// Exponent applied to the normalised level (1.0 = linear).
    double dGamma = 1.0;

    /// True when any field differs from `o`'s by more than 0.001.
    bool operator!=(const SZxBasePropsI& o) const;
    /// True when every field is within 0.001 of `o`'s.
    bool operator==(const SZxBasePropsI& o) const { return !(*this != o); }
};

/// Per-channel properties, compared with the same 0.001 tolerance.
struct ZX_API SZxBasePropsRGB {
    /// Gain of the red, green and blue channel, applied on top of a global gain.
    ///@{
    double dGainR = 1.0, dGainG = 1.0, dGainB = 1.0;
    ///@}
    /// Offset of each channel as a fraction of full scale, added to a global offset.
    ///@{
    double dOffsetR = 0.0, dOffsetG = 0.0, dOffsetB = 0.0;
    ///@}
    /// Gamma of each channel, multiplied with a global gamma.
    ///@{
    double dGammaR = 1.0, dGammaG = 1.0, dGammaB = 1.0;
    ///@}
    /// Colour weight of each channel: 1 keeps the channel, 0 replaces it by the
    /// luminance, values above 1 strengthen the colour.
    ///@{
    double dWeightR = 1.0, dWeightG = 1.0, dWeightB = 1.0;
    ///@}

    /// True when any of the twelve fields differs from `o`'s by more than 0.001.
    bool operator!=(const SZxBasePropsRGB& o) const;
    /// True when all twelve fields are within 0.001 of `o`'s.
    bool operator==(const SZxBasePropsRGB& o) const { return !(*this != o); }
};

/// Everything a colour display table is built from.
struct SZxBaseProps {
    /// Global gain, multiplied with each channel gain.
    double dGain = 1.0;
    /// Global offset as a fraction of full scale, added to each channel offset.
    double dOffset = 0.0;
    /// Global gamma, multiplied with each channel gamma.
    double dGamma = 1.0;
    /// Per-channel gains (red, green, blue).
    ///@{
    double dGainR = 1.0, dGainG = 1.0, dGainB = 1.0;
    ///@}
    /// Per-channel offsets as fractions of full scale.
    ///@{
    double dOffsetR = 0.0, dOffsetG = 0.0, dOffsetB = 0.0;
    ///@}
    /// Per-channel gammas.
    ///@{
    double dGammaR = 1.0, dGammaG = 1.0, dGammaB = 1.0;
    ///@}
    /// Per-channel colour weights, multiplied with the saturation.
    ///@{
    double dWeightR = 1.0, dWeightG = 1.0, dWeightB = 1.0;
    ///@}
    /// Saturation: multiplies every colour weight (0 = grey, 1 = unchanged).
    double dSaturation = 1.0;
};

/// Table for monochrome frames (or every sample of a colour frame alike).
///
/// Bits passed to the updates must lie in 1..maximum bits; others are reported
/// (source "imaging") and ignored. Samples above the table are mapped through
/// its last entry instead of reading past it.
/// @note One table is not used from two threads at once; update and apply it
///       on the acquisition thread.
class ZX_API CZxBaseMonoLUT {
public:
    /// maxBits in 1..16 sizes the table (2^maxBits entries); others build nothing.
    explicit CZxBaseMonoLUT(int maxBits);
    /// Not copyable (it owns its table).
    CZxBaseMonoLUT(const CZxBaseMonoLUT&) = delete;
    /// Not copyable (it owns its table).
    CZxBaseMonoLUT& operator=(const CZxBaseMonoLUT&) = delete;
    /// Frees the table.
    virtual ~CZxBaseMonoLUT();

    /// Display mapping: x = (i + M*offset) * gain / M, entry = x^gamma * M rounded.
    /// With M = 2^bits - 1 and results limited to 0..M. Identity properties (gain
    /// 1, offset 0, gamma 1) only set m_bIdentity; equal properties (within 0.001)
    /// and bits keep the table.
    void UpdateLUT(const SZxBasePropsI& props, int bits);
    /// Quantitative mapping x = (i*gain + M*offset) / M; entries above M saturate to M.
    /// The offset is not scaled by the gain. Entries from 2^bits up are set to M,
    /// so values above the bit depth saturate.
    void UpdateQuantitativeLUT(const SZxBasePropsI& props, int bits);
    /// Maps every sample of the frame in place (nothing when the table is the identity).
    /// 8-bit frames (bits <= 8) take the low byte of each entry, deeper frames the
    /// 16-bit entry. A null sample is reported and ignored.
    void ApplyLUT(CZxGrabberSample01* sample);
    /// Same, for a picture buffer (mapped in place; a null buffer or one without
    /// data is reported and ignored).
    void ApplyLUT(SZxPicBuf* picBuf);

    /// True while the properties are the identity: ApplyLUT leaves frames alone.
    bool m_bIdentity = true;
    /// Largest bit depth the table serves (the constructor's argument).
    int m_iMaxBits;
    /// Bit depth of the current table; -1 before the first build.
    int m_iBits = -1;
    /// Gain, offset and gamma the current table was built from.
    ///@{
    double m_dGain = 1.0, m_dOffset = 0.0, m_dGamma = 1.0;
    ///@}
    /// 2^m_iMaxBits entries; null when the constructor built nothing.
    uint16_t* m_pTable = nullptr;

private:
    void Update(const SZxBasePropsI& props, int bits, bool quantitative);
    bool m_bQuantitative = false;  // a table of the other kind is rebuilt even with equal properties
};

/// Tables for colour frames (and monochrome frames through the intensity table).
/// @note One table set is not used from two threads at once; update and apply
///       it on the acquisition thread.
class ZX_API CZxBaseLUT {
public:
    /// maxBits in 1..16 sizes the seven tables (2^maxBits entries); others build nothing.
    explicit CZxBaseLUT(int maxBits);
    /// Deep copy: its own tables with `o`'s contents and state.
    CZxBaseLUT(const CZxBaseLUT& o);
    /// Deep copy, replacing this object's tables.
    CZxBaseLUT& operator=(const CZxBaseLUT& o);
    /// Frees the tables.
    virtual ~CZxBaseLUT();

    /// mono: intensity table from gain, offset, gamma. Colour: channel tables
    /// (mode 1) or, when any colour weight differs from 1, pair tables (mode 2).
    /// Effective channel values are global x channel gain, global + channel offset,
    /// global x channel gamma and saturation x channel weight. A table is rebuilt
    /// only when its bits or values changed by more than 0.001. Bits outside
    /// 1..m_iMaxBits are reported and ignored.
    void UpdateLUT(const SZxBaseProps& props, bool mono, int bits);
    /// Maps the sample's frame in place: one component through the intensity
    /// table (intensity mode 1), three through the channel or pair tables (colour
    /// mode 1 or 2), each result limited to the bit depth. Mode 0 leaves it alone.
    void ApplyLUT(CZxGrabberSample01* sample);
    /// Same, for a picture buffer.
    void ApplyLUT(SZxPicBuf* picBuf);

    /// Largest bit depth the tables serve (the constructor's argument).
    int m_iMaxBits;
    /// Intensity table for one-component frames (2^m_iMaxBits entries).
    uint16_t* m_pIntensity = nullptr;
    /// Red channel table (colour mode 1).
    uint16_t* m_pRed = nullptr;
    /// Green channel table (colour mode 1).
    uint16_t* m_pGreen = nullptr;
    /// Blue channel table (colour mode 1).
    uint16_t* m_pBlue = nullptr;
    /// Pairs (own part, share given to the other channels), two int32 per level.
    /// Red pair table (colour mode 2).
    int32_t* m_pPairRed = nullptr;
    /// Green pair table (colour mode 2).
    int32_t* m_pPairGreen = nullptr;
    /// Blue pair table (colour mode 2).
    int32_t* m_pPairBlue = nullptr;
    /// Bit depth of the intensity table; -1 until first built.
    int m_iIntensityBits = -1;
    /// Bit depth of the channel tables; -1 until first built.
    int m_iChannelBits = -1;
    /// Bit depth of the pair tables; -1 until first built.
    int m_iPairBits = -1;
    /// Properties of the current intensity table.
    SZxBasePropsI m_intensity;
    /// Effective channel values of the current channel tables.
    SZxBasePropsRGB m_channels;
    /// Effective channel values of the current pair tables.
    SZxBasePropsRGB m_pairs;
    unsigned m_uiIntensityMode = 0;  ///< 0 = identity, 1 = table
    unsigned m_uiColorMode = 0;      ///< 0 = identity, 1 = channel tables, 2 = pair tables

private:
    void Allocate();
    void Release();
};
