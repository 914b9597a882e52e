// Driver-like auto-exposure loop over the simulated sensor: frame, histogram,
// ComputeAE, apply to the sensor, next frame.
#pragma once
#include <cstdint>
#include <memory>
#include <vector>
#include "zx/autoexposure.h"
#include "zxsim/livestep.h"
#include "zxsim/sensor.h"

/// The engine a simulated driver owns. It also remembers the white signal of
/// the last frame for reports (per channel for colour; mono fills all three).
class CZxSimAEEngine : public CZxAutoExposure {
public:
    SZxAEValueRGB m_lastWhite{0.0, 0.0, 0.0};

protected:
    double ComputeWhiteSignal(const unsigned* bins, unsigned pixels, unsigned binCount, int excluded) override;
    SZxAEValueRGB ComputeWhiteSignalRGB(const SZxAEHistogram& hist, int excluded) override;
};

/// What one frame of the loop saw: the camera values it was taken with and what
/// the engine measured on it.
struct SZxSimAEStep {
    uint32_t m_uiMode = 0;
    double m_dExposure = 0.0;
    double m_dFactor = 0.0;
    double m_dComplGain = 0.0;
    double m_dWhite = 0.0;       ///< the largest channel's white signal
    double m_dOverflow = 0.0;
    bool m_bExposureGood = false;
};

/// One camera in a loop. The caller configures the sensor and the engine (or
/// lets SetUpStandardCamera do it), sets the starting values in m_frame and
/// calls Step per frame.
///
/// The loop writes exposure, analog factor, mode and the hard white gains to
/// the sensor. Display gain, white-balance gains, offsets and the complementary
/// gain stay in m_frame: they belong to the display path, and the engine
/// measures white as if they were not in the frame (it normalises by the
/// analog factor only), so feeding them back would count them twice.
class CZxSimAELoop {
public:
    CZxSimSensor m_sensor;
    CZxSimAEEngine m_engine;
    SZxAEFrameDesc m_frame;
    unsigned m_uiFlags = ZX_AE_EXPOSURE;
    bool m_bSetting = true;            ///< the mode bool handed to ComputeAE
    const SZxGrabberProbe* m_pProbe = nullptr;

    /// Applies m_frame to the sensor, takes a frame, runs the engine on it.
    SZxSimAEStep Step();
    /// `frames` steps.
    std::vector<SZxSimAEStep> Run(int frames);
    /// The last frame Step took (null before the first).
    CZxGrabberSample01* LastFrame() { return m_live.Frame(); }

    /// The camera of the tests and the demo: 160 x 120, 12 bits, modes binned
    /// 1, 2 and 4 (sensitivity 1, 4, 16), black level 0.02, mono or colour (BGR)
    /// with a cast of red 1.0, green 0.8, blue 0.55, and a scene whose white
    /// reaches the middle target after `msToTarget` ms in mode 0 (setting 1
    /// allows 1000 ms). The engine is described to match; flags: exposure,
    /// factor, strict test (+ offsets, white balance and hard white for
    /// colour); the caller adds the mode search and sets the start values.
    void SetUpStandardCamera(bool colour, double msToTarget);

private:
    CZxSimLiveStep m_live;
};

/// Index of the first step from which every step to the end is exposure-good,
/// or -1 when the last one is not.
int ZxSimFramesToGood(const std::vector<SZxSimAEStep>& steps);
