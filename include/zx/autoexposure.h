// Auto exposure, gain, offset and white balance from one histogram per frame.
#pragma once
#include <cstdint>
#include "zx/export.h"
#include "zx/histogram.h"

/// Control flags of CZxAutoExposure::ComputeAE. Any of MODESEARCH, FACTOR and
/// EXPOSURE runs the exposure computation.
enum : unsigned {
    ZX_AE_DISPLAYGAIN = 0x1,    ///< compute the display gain
    ZX_AE_WHITEBALANCE = 0x2,   ///< compute the white-balance gains (colour)
    ZX_AE_OFFSET = 0x4,         ///< compute the offset
    ZX_AE_BLACKOFFSETS = 0x8,   ///< compute the per-channel black offsets (colour)
    ZX_AE_MODESEARCH = 0x10,    ///< search the camera-mode index
    ZX_AE_FACTOR = 0x20,        ///< compute the analog gain factor
    ZX_AE_HARDWHITE = 0x40,     ///< compute the hard white gains (colour)
    ZX_AE_EXPOSURE = 0x80,      ///< compute the exposure
    ZX_AE_ALTMODE = 0x100,      ///< start the mode search at the alternative index
    ZX_AE_ALTFACTOR = 0x200,    ///< the current analog factor is the alternative factor
    ZX_AE_NOSPLIT = 0x400,      ///< skip the noise-optimal split of exposure and gain
    ZX_AE_STRICT = 0x1000,      ///< strict exposure-good test
};

/// How many of the brightest (or darkest) pixels define the white (black) signal.
struct SZxAEQuantil {
    bool m_bRelative = false;   ///< true: per-mille of the counted pixels; false: a pixel count
    double m_dPromile = 0.0;    ///< "QuantilPromile"
    uint32_t m_uiPixels = 0;    ///< "QuantilPixels"
};

/// One of the two setting sets of an engine (which is live and which capture is
/// the driver's choice). Targets are fractions of the usable signal range.
struct SZxAESetting {
    double m_dMaxGain = 0.0;        ///< display gain limit; complementary gain limit of the split
    double m_dMaxExposure = 0.0;    ///< exposure clamp; reference of the mode search
    double m_dNoiseGain = 0.0;      ///< noise coefficient of gain (a)
    double m_dNoiseExposure = 0.0;  ///< noise coefficient of exposure (b)
    /// Low target white level, as a fraction of the usable signal range.
    double m_dLowTarget = 0.0;
    /// Middle target white level, as a fraction of the usable signal range.
    double m_dMiddleTarget = 0.0;
    double m_dHighTarget = 0.0;     ///< also the reference of the display and strict-good tests
};

/// One camera mode (binning modes are modes). Levels are fractions of full scale.
struct SZxAECameraDesc {
    /// Largest complementary (camera-side) gain of this mode.
    double m_dMaxComplGain = 0.0;
    /// Largest white-balance gain of one colour channel.
    double m_dMaxWhiteBalanceGain = 0.0;
    /// Smallest offset, as a fraction of full scale.
    double m_dMinOffset = 0.0;
    /// Largest offset, as a fraction of full scale.
    double m_dMaxOffset = 0.0;
    /// Smallest per-channel black offset, as a fraction of full scale (colour).
    double m_dMinBlackOffset = 0.0;
    /// Largest per-channel black offset, as a fraction of full scale (colour).
    double m_dMaxBlackOffset = 0.0;
    double m_dMaxFactor = 0.0;          ///< maximum analog gain factor
    /// Largest hard (camera-side) white gain of one colour channel.
    double m_dMaxHardWhiteGain = 0.0;
    /// Shortest exposure of the mode, in the unit the driver uses for exposures.
    double m_dMinExposure = 0.0;
    /// Longest exposure of the mode, in the same unit.
    double m_dMaxExposure = 0.0;
    double m_dExposureKnee = 0.0;       ///< above it exposure and gain are split for least noise
    double m_dExposureStep = 0.0;       ///< exposures are rounded down to a multiple (0 = no rounding)
    double m_dMinLevel = 0.0;           ///< black level
    double m_dMaxLevel = 0.0;           ///< saturation level
    double m_dSensitivity = 0.0;        ///< relative sensitivity of the mode
    double m_dUpperGain = 0.0;          ///< total gain above which the search moves up a mode
    double m_dLowerGain = 0.0;          ///< total gain below which the search moves down a mode
};

/// The current camera values going into ComputeAE and the new ones coming out.
struct SZxAEFrameDesc {
    /// Display gain (digital, applied after the camera).
    double m_dDisplayGain = 1.0;
    /// Complementary gain the camera applies besides the analog factor.
    double m_dComplGain = 1.0;
    /// White-balance gains of red, green and blue (colour).
    ///@{
    double m_dWhiteBalanceR = 1.0, m_dWhiteBalanceG = 1.0, m_dWhiteBalanceB = 1.0;
    ///@}
    /// Offset as a fraction of full scale.
    double m_dOffset = 0.0;
    /// Per-channel black offsets of red, green and blue, fractions of full scale (colour).
    ///@{
    double m_dBlackOffsetR = 0.0, m_dBlackOffsetG = 0.0, m_dBlackOffsetB = 0.0;
    ///@}
    /// Index of the camera mode (into CZxAutoExposure::m_cameraDesc) the frame was taken in.
    uint32_t m_uiCameraMode = 0;
    /// Alternative mode index where the mode search starts with ZX_AE_ALTMODE.
    uint32_t m_uiAltCameraMode = 0;
    double m_dFactor = 1.0;             ///< analog gain factor
    /// Alternative analog gain factor, the current one with ZX_AE_ALTFACTOR.
    double m_dAltFactor = 1.0;
    /// Hard (camera-side) white gains of red, green and blue (colour).
    ///@{
    double m_dHardWhiteR = 1.0, m_dHardWhiteG = 1.0, m_dHardWhiteB = 1.0;
    ///@}
    /// Exposure time, in the unit of the camera descriptions' exposure limits.
    double m_dExposure = 1.0;
    double m_dOverflow = 0.0;           ///< out: share of pixels at or above the saturation level
    bool m_bExposureGood = true;        ///< out
    uint32_t m_uiExcludedTopBins = 1;   ///< 1 = the white walk starts at the top bin

    /// Every field at its neutral value (gains 1.0, offsets 0.0, mode 0).
    SZxAEFrameDesc() = default;
};

/// Red, green, blue: white and black signals, overflows, gains, offsets.
struct SZxAEValueRGB {
    /// The red, green and blue value.
    ///@{
    double m_dRed, m_dGreen, m_dBlue;
    ///@}

    /// Leaves the three values unset.
    SZxAEValueRGB() {}  // left unset on purpose: every user writes all three
    /// The values r, g and b for red, green and blue.
    SZxAEValueRGB(double r, double g, double b) : m_dRed(r), m_dGreen(g), m_dBlue(b) {}
};

/// The auto-exposure engine. The owner fills the quantile, both settings, the
/// camera descriptions and their count, then calls ComputeAE once per frame and
/// applies the result to the camera before the next frame; only the dark flag
/// survives between calls. Every step is virtual and every step calls the
/// others through the virtual table, so a driver may replace any one of them.
///
/// Not for two threads at once. The class has no virtual destructor: drivers
/// own their engine by its most derived type.
class ZX_API CZxAutoExposure {
public:
    /// Room for camera descriptions (modes).
    static constexpr uint32_t kMaxCameraDescs = 32;

    /// Which brightest and darkest pixels define the white and black signal.
    SZxAEQuantil m_quantil;
    SZxAESetting m_setting1;      ///< used when the mode bool is true
    SZxAESetting m_setting2;      ///< used when the mode bool is false
    /// One description per camera mode; the first m_uiCameraDescCount are valid.
    SZxAECameraDesc m_cameraDesc[kMaxCameraDescs];
    /// Number of valid camera descriptions (1..kMaxCameraDescs).
    uint32_t m_uiCameraDescCount = 0;
    /// Exposure multiplier for a frame too dark to measure (32.0).
    double m_dDarkBoost;
    bool m_bDark;                 ///< whether the last exposure computation saw a too dark frame
    /// Overflow share above which a saturated frame shortens the exposure (0.0).
    double m_dOverflowLimit;
    /// Exposure multipliers of a saturated frame by growing overflow
    /// (0.5, 0.5, 0.25, 0.125, 0.0625).
    double m_dOverflowSteps[5];

    /// Sets dark boost, dark flag, overflow limit and steps; the owner fills the
    /// quantile, both settings and the camera descriptions before the first call.
    CZxAutoExposure();

    /// New camera values for `frame` from its histogram: the monochrome path for
    /// a mono histogram, else the colour path. `mode` picks setting 1 (true) or 2.
    ///
    /// A histogram without the buffers of its kind, a description count of 0 or
    /// above 32, or a frame mode index not below the count is reported (source
    /// "autoexposure") and leaves the frame as it was. An empty histogram (no
    /// pixel counted, e.g. a probe beside the frame) measures nothing and leaves
    /// the frame as it was, without a report.
    virtual void ComputeAE(bool mode, unsigned flags, SZxAEFrameDesc& frame, const SZxAEHistogram& hist);
    /// Recomputes the exposure values of a frame measured under the other
    /// setting, without a histogram: writes with the selected setting and reads
    /// the other one's high target. Reports and leaves the frame alone like ComputeAE.
    virtual void ConvertAE(bool mode, unsigned flags, SZxAEFrameDesc& frame, bool mono, bool clipped);

protected:
    /// The monochrome path of ComputeAE: white, black and overflow from buffer 0,
    /// then exposure good, offset, display gain and exposure as the flags ask.
    virtual void ComputeMonoAE(bool mode, unsigned flags, SZxAEFrameDesc& frame, const SZxAEHistogram& hist);
    /// The colour path of ComputeAE: per-channel statistics of buffers 1..3, then
    /// black offsets, offset, white balance, hard white, display gain and exposure.
    virtual void ComputeColorAE(bool mode, unsigned flags, SZxAEFrameDesc& frame, const SZxAEHistogram& hist);
    /// Exposure good: see the strict flag.
    /// Not strict: true while white is below maxLevel; strict: also white above
    /// 0.9 x highTarget x maxLevel. A saturated frame counts as good only near the
    /// minimum exposure (not strict) or with an overflow below 0.05.
    virtual bool ComputeAutoDisplay(double white, double overflow, double exposure, double minExposure,
                                    double maxLevel, double highTarget, bool strict);
    /// 1 / (white + offset) within [1, maxGain]; maxGain when white + offset <= 0.
    virtual double ComputeAutoGain(double white, double offset, double maxGain);
    /// -black within [minOffset, maxOffset].
    virtual double ComputeAutoOffset(double black, double minOffset, double maxOffset);
    /// Mode search (flag MODESEARCH) over ComputeBinningAE; null outputs are skipped.
    virtual void ComputeAutoExposure(unsigned* modeOut, double* factorOut, double* exposureOut, double* gainOut,
                                     unsigned flags, double gain, double offset, unsigned mode, double factor,
                                     double exposure, double white, double overflow, const SZxAESetting& setting,
                                     unsigned altMode, double altFactor, bool clipped);
    /// Quantile pixel count for `pixels` counted pixels: at least 1, at most `pixels`.
    virtual unsigned ComputeQuantilPixels(unsigned pixels);
    /// White signal (fraction of full scale): walks down from bin binCount - excluded.
    virtual double ComputeWhiteSignal(const unsigned* bins, unsigned pixels, unsigned binCount, int excluded);
    /// Black signal (fraction of full scale): walks up from bin 0 until the
    /// quantile's pixels are collected.
    virtual double ComputeBlackSignal(const unsigned* bins, unsigned pixels, unsigned binCount);
    /// Share of pixels at or above `level` of the range below the excluded bins.
    virtual double ComputeOverflow(const unsigned* bins, unsigned pixels, unsigned binCount, double level,
                                   int excluded);
    /// Exposure, factor and complementary gain for measuring mode `mode` and
    /// target mode `targetMode`; returns the requested exposure before clamping.
    virtual double ComputeBinningAE(double* gainOut, double* factorOut, double* exposureOut, unsigned flags,
                                    double gain, double offset, unsigned mode, double factor, double exposure,
                                    double white, double overflow, const SZxAESetting& setting,
                                    unsigned targetMode, double altFactor, bool clipped);
    /// ComputeWhiteSignal of the red, green and blue buffers.
    virtual SZxAEValueRGB ComputeWhiteSignalRGB(const SZxAEHistogram& hist, int excluded);
    /// ComputeBlackSignal of the red, green and blue buffers.
    virtual SZxAEValueRGB ComputeBlackSignalRGB(const SZxAEHistogram& hist);
    /// ComputeOverflow of the red, green and blue buffers.
    virtual SZxAEValueRGB ComputeOverflowRGB(const SZxAEHistogram& hist, double level, int excluded);
    /// True only when ComputeAutoDisplay holds for each of the three channels.
    virtual bool ComputeAutoDisplayRGB(const SZxAEValueRGB& white, const SZxAEValueRGB& overflow, double exposure,
                                       double minExposure, double maxLevel, double highTarget, bool strict);
    /// White-balance gains: the strongest channel 1.0, each capped at `maximum`.
    virtual void ComputeAutoWhiteRGB(SZxAEValueRGB& gains, const SZxAEValueRGB& white, double offset,
                                     const SZxAEValueRGB& blackOffsets, double maximum);
    /// Black offsets relative to the largest channel offset, within [low, high].
    virtual void ComputeAutoBlackRGB(SZxAEValueRGB& offsets, const SZxAEValueRGB& black, double low, double high);
    /// Hard white gains: as the white balance, scaled by the current gains first.
    virtual void ComputeAutoHardWhiteRGB(SZxAEValueRGB& gains, const SZxAEValueRGB& white, double offset,
                                         const SZxAEValueRGB& blackOffsets, double maximum);
    /// Display gain of a colour frame: the smallest per-channel gain (after the
    /// white balance), limited to [1.0, maximum].
    virtual double ComputeAutoGainRGB(const SZxAEValueRGB& white, const SZxAEValueRGB& whiteBalance, double offset,
                                      const SZxAEValueRGB& blackOffsets, double maximum);
    /// Offset of a colour frame: the largest per-channel offset (after the black
    /// offsets), limited to [low, high].
    virtual double ComputeAutoOffsetRGB(const SZxAEValueRGB& black, const SZxAEValueRGB& blackOffsets, double low,
                                        double high);
    /// Exposure per channel; keeps the channel that needs the least signal.
    virtual void ComputeAutoExposureRGB(unsigned* modeOut, double* factorOut, double* exposureOut, double* gainOut,
                                        unsigned flags, const SZxAEFrameDesc& frame, const SZxAEValueRGB& white,
                                        const SZxAEValueRGB& overflow, const SZxAESetting& setting, bool clipped);

    /// The description of mode `index`, limited to the valid entries (helpers
    /// called by a subclass with a stray index read a valid one, never past the array).
    const SZxAECameraDesc& Desc(unsigned index) const;
};

/// White-balance gains of a colour frame from its pixels, each channel weighted
/// by pixel brightness after the per-channel black offsets (fractions of full
/// scale). The strongest channel gets 1.0. Saturated pixels (a sample at full
/// scale) are summed apart and used only when they are not fewer than the
/// others. The region is the whole frame, or the probe's rectangle or circle as
/// the histogram counts it. Returns the number of unsaturated pixels examined.
///
/// Gains are written through the non-null pointers. A null sample, or a frame
/// that is not three-component, is reported (source "autoexposure"): gains 1.0, result 0.
/// Any thread.
ZX_API int ZX_AccurateAutoWhite(double* redGain, double* greenGain, double* blueGain, double redOffset,
                                double greenOffset, double blueOffset, CZxGrabberSample01* sample,
                                SZxGrabberProbe* probe);
