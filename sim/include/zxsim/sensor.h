// Sensor model of the simulated camera: frames from the current settings.
#pragma once
#include <cstdint>
#include <memory>
#include <random>
#include <vector>
#include "zxhost/picbuf.h"

/// One readout mode: pixels are binned `m_uiBinning` x `m_uiBinning` (the frame
/// shrinks by that factor) and the mode collects `m_dSensitivity` times the
/// signal of the reference mode.
struct SZxSimSensorMode {
    uint32_t m_uiBinning = 1;
    double m_dSensitivity = 1.0;
};

enum class EZxSimOutput {
    Mono,       ///< one component, the scene's brightness
    Bayer,      ///< one component, a colour mosaic (see SetBayerOrder)
    ColourBGR,  ///< three components per pixel in blue, green, red order
};

/// Colour of the first two samples of the first two rows of the mosaic.
enum class EZxSimBayerOrder { RGGB, GRBG, GBRG, BGGR };

/// A camera sensor looking at a lit round specimen on a dark background.
///
/// A pixel collects scene x brightness x exposure x mode sensitivity x channel
/// response (fractions of full scale); shot noise follows from the full-well
/// charge; then analog factor, channel gain and complementary gain amplify it,
/// read noise and the offset (black level) are added, and the result saturates
/// at full scale and is quantised to the bit depth. Noise comes from one
/// generator seeded by SetSeed: the same seed and settings give the same frames.
///
/// Setters take any value; nonsense is limited (negative gains to 0, modes to
/// the table, bits to 1..16) so a frame is always produced.
class CZxSimSensor {
public:
    /// `width` x `height` is the frame of a mode without binning.
    CZxSimSensor(uint32_t width = 160, uint32_t height = 120, uint32_t seed = 1);

    // Exposure and amplification.
    void SetExposure(double ms) { m_dExposure = NonNegative(ms); }
    void SetAnalogFactor(double f) { m_dFactor = NonNegative(f); }
    void SetComplGain(double g) { m_dComplGain = NonNegative(g); }
    /// Per-channel gain in the camera (hard white balance), red, green, blue.
    void SetChannelGains(double r, double g, double b);
    /// Black level, a fraction of full scale.
    void SetOffset(double level) { m_dOffset = level; }
    double Exposure() const { return m_dExposure; }
    double AnalogFactor() const { return m_dFactor; }
    double ComplGain() const { return m_dComplGain; }
    double Offset() const { return m_dOffset; }

    // Readout.
    /// Replaces the mode table (an empty table means one plain mode) and selects mode 0.
    void SetModes(const std::vector<SZxSimSensorMode>& modes);
    /// Selects a mode; an index past the table selects the last mode.
    void SetMode(uint32_t index);
    uint32_t Mode() const { return m_uiMode; }
    const std::vector<SZxSimSensorMode>& Modes() const { return m_modes; }
    void SetBits(uint32_t bits);
    uint32_t Bits() const { return m_uiBits; }
    void SetOutput(EZxSimOutput output) { m_output = output; }
    EZxSimOutput Output() const { return m_output; }
    void SetBayerOrder(EZxSimBayerOrder order) { m_bayer = order; }
    /// Frame size of the current mode.
    uint32_t Width() const;
    uint32_t Height() const;

    // Colour, scene and noise.
    /// Relative response of the red, green and blue channels: the colour cast.
    void SetResponse(double r, double g, double b);
    /// Signal at the brightest point of the specimen per millisecond of exposure
    /// with factor 1 in a mode of sensitivity 1, as a fraction of full scale.
    void SetSceneBrightness(double perMs) { m_dBrightness = NonNegative(perMs); }
    double SceneBrightness() const { return m_dBrightness; }
    /// Charge at full scale (sets the shot noise); 0 turns shot noise off.
    void SetFullWell(double electrons) { m_dFullWell = NonNegative(electrons); }
    /// Read noise (standard deviation) as a fraction of full scale.
    void SetReadNoise(double sigma) { m_dReadNoise = NonNegative(sigma); }
    /// Restarts the noise generator.
    void SetSeed(uint32_t seed);

    /// Scene brightness at (u, v) in [0, 1]^2 relative to the specimen's brightest point.
    static double Scene(double u, double v);

    /// The next frame, `Width()` x `Height()` at `Bits()`.
    std::unique_ptr<CZxGrabberSample01> Capture();

private:
    static double NonNegative(double v) { return v > 0.0 ? v : 0.0; }
    double Gauss();

    uint32_t m_uiWidth, m_uiHeight;
    double m_dExposure = 1.0, m_dFactor = 1.0, m_dComplGain = 1.0, m_dOffset = 0.0;
    double m_dGain[3] = {1.0, 1.0, 1.0};      // red, green, blue
    double m_dResponse[3] = {1.0, 1.0, 1.0};  // red, green, blue
    std::vector<SZxSimSensorMode> m_modes;
    uint32_t m_uiMode = 0;
    uint32_t m_uiBits = 12;
    EZxSimOutput m_output = EZxSimOutput::Mono;
    EZxSimBayerOrder m_bayer = EZxSimBayerOrder::RGGB;
    double m_dBrightness = 0.001;
    double m_dFullWell = 20000.0;
    double m_dReadNoise = 0.0005;
    std::mt19937 m_rng;
    double m_dSpareGauss = 0.0;
    bool m_bHaveSpare = false;
};
