// The library's auto exposure closing the loop on a GenICam device: each live
// frame is counted into a histogram over the probe, the engine computes the
// next exposure and gain, and they are written to the device's features before
// the next frame. The display copy of each frame goes through the display LUT.
#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "zx/autoexposure.h"
#include "zx/histogram.h"
#include "zx/lut.h"
#include "zxgenicam/camera.h"

/// What one frame of the loop saw and what the engine made of it.
struct SZxGenICamAEStep {
    double m_dExposure = 0.0;      ///< exposure the frame was taken with, in ms
    double m_dGain = 0.0;          ///< gain feature value the frame was taken with (device units)
    double m_dMean = 0.0;          ///< mean sample value over the probe, in counts of the frame's depth
    double m_dDisplayMean = 0.0;   ///< mean sample value of the display copy (after the display LUT)
    uint32_t m_uiPixels = 0;       ///< pixels the histogram counted (the probe's area on the frame)
    bool m_bExposureGood = false;  ///< the engine's verdict on this frame
};

/// The loop. Configure reads the device's exposure and gain limits into the
/// engine; Step takes one live frame (StartLive first) and applies the result.
/// One thread at a time; the camera's Close may come from any thread and ends
/// the loop with ZXGENICAM_E_LOST.
class CZxGenICamAELoop {
public:
    /// `camera` is not owned and must outlive the loop.
    explicit CZxGenICamAELoop(CZxGenICamCamera& camera);
    /// Frees the histogram, the LUT and the last frame; the camera is left as it is.
    ~CZxGenICamAELoop();

    /// Reads the exposure (and, when there is one, the gain) feature's limits
    /// and sets the engine up: quantile of 1 per mille, targets 0.5 / 0.85 / 0.9,
    /// live exposures up to `maxExposureMs` (clamped to the device's range).
    /// ZX_OK; ZX_E_NOTSUPPORTED without an exposure feature; a provider status otherwise.
    int Configure(double maxExposureMs = 1000.0);
    /// One frame: wait for it, count it, compute, write exposure and gain, map
    /// the display copy. Provider status (ZXGENICAM_E_TIMEOUT, ZXGENICAM_E_LOST, ...);
    /// `step` is filled on ZX_OK.
    int Step(uint32_t timeoutMs, SZxGenICamAEStep& step);
    /// Steps until `frames` frames or a failure; returns the failing status or ZX_OK.
    int Run(int frames, uint32_t timeoutMs, std::vector<SZxGenICamAEStep>& steps);
    /// The last frame after the display LUT (null before the first Step).
    CZxGrabberSample01* LastDisplayFrame() { return m_last.get(); }

    /// The engine, for callers that tune it after Configure.
    CZxAutoExposure m_engine;
    /// Flags of ComputeAE (exposure, factor, display gain, strict test).
    unsigned m_uiFlags = ZX_AE_EXPOSURE | ZX_AE_FACTOR | ZX_AE_DISPLAYGAIN | ZX_AE_STRICT;
    /// Statistics region (null: the whole frame); not owned.
    SZxGrabberProbe* m_pProbe = nullptr;

private:
    /// The analog factor of gain value `g`, and back (dB gains: 20 log10; raw gains: one step per unit).
    double FactorOf(double g) const;
    double GainOf(double factor) const;

    CZxGenICamCamera& m_camera;
    SZxAEFrameDesc m_frame;
    double m_dGainMin = 0.0, m_dGainMax = 0.0, m_dGainStep = 0.0;
    bool m_bGainDb = false;
    std::unique_ptr<SZxAEHistogram> m_hist;
    std::unique_ptr<CZxBaseLUT> m_lut;
    std::unique_ptr<CZxGrabberSample01> m_last;
};

/// Index of the first step from which every step to the end is exposure-good,
/// or -1 when the last one is not.
int ZxGenICamFramesToGood(const std::vector<SZxGenICamAEStep>& steps);
