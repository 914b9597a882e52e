#include "zxsim/sensor.h"

#include <algorithm>
#include <cmath>

CZxSimSensor::CZxSimSensor(uint32_t width, uint32_t height, uint32_t seed)
    : m_uiWidth(std::max(1u, width)), m_uiHeight(std::max(1u, height)), m_modes(1), m_rng(seed)
{
}

void CZxSimSensor::SetChannelGains(double r, double g, double b)
{
    m_dGain[0] = NonNegative(r);
    m_dGain[1] = NonNegative(g);
    m_dGain[2] = NonNegative(b);
}

void CZxSimSensor::SetResponse(double r, double g, double b)
{
    m_dResponse[0] = NonNegative(r);
    m_dResponse[1] = NonNegative(g);
    m_dResponse[2] = NonNegative(b);
}

void CZxSimSensor::SetModes(const std::vector<SZxSimSensorMode>& modes)
{
    m_modes = modes.empty() ? std::vector<SZxSimSensorMode>(1) : modes;
    for (SZxSimSensorMode& m : m_modes) {
        m.m_uiBinning = std::max(1u, m.m_uiBinning);
        m.m_dSensitivity = NonNegative(m.m_dSensitivity);
    }
    m_uiMode = 0;
}

void CZxSimSensor::SetMode(uint32_t index)
{
    m_uiMode = std::min<uint32_t>(index, uint32_t(m_modes.size()) - 1);
}

void CZxSimSensor::SetBits(uint32_t bits)
{
    m_uiBits = std::min(16u, std::max(1u, bits));
}

uint32_t CZxSimSensor::Width() const
{
    return std::max(1u, m_uiWidth / m_modes[m_uiMode].m_uiBinning);
}

uint32_t CZxSimSensor::Height() const
{
    return std::max(1u, m_uiHeight / m_modes[m_uiMode].m_uiBinning);
}

void CZxSimSensor::SetSeed(uint32_t seed)
{
    m_rng.seed(seed);
    m_bHaveSpare = false;
}

double CZxSimSensor::Gauss()
{
    // Box-Muller on the generator's raw output: std::normal_distribution may
    // differ between standard libraries, this gives the same frames everywhere.
    if (m_bHaveSpare) {
        m_bHaveSpare = false;
        return m_dSpareGauss;
    }
    const double u1 = (double(m_rng()) + 0.5) / 4294967296.0;
    const double u2 = (double(m_rng()) + 0.5) / 4294967296.0;
    const double r = std::sqrt(-2.0 * std::log(u1));
    const double a = 6.283185307179586 * u2;
    m_dSpareGauss = r * std::sin(a);
    m_bHaveSpare = true;
    return r * std::cos(a);
}

double CZxSimSensor::Scene(double u, double v)
{
    // A round specimen (radius 0.3 of the height on a 4:3 field) whose
    // brightness falls off gently from the centre; a faint gradient behind it.
    const double dx = (u - 0.5) * 4.0 / 3.0, dy = v - 0.5;
    const double rr = (dx * dx + dy * dy) / (0.3 * 0.3);
    if (rr < 1.0)
        return 1.0 - 0.3 * rr;
    return 0.02 + 0.02 * u;
}

std::unique_ptr<CZxGrabberSample01> CZxSimSensor::Capture()
{
    const uint32_t w = Width(), h = Height();
    const uint32_t comp = m_output == EZxSimOutput::ColourBGR ? 3 : 1;
    auto frame = std::make_unique<CZxGrabberSample01>(w, h, m_uiBits, comp);
    void* data = frame->GetDataPtr();
    if (!data)
        return frame;

    const double full = double((1u << m_uiBits) - 1);
    const double photons = m_dBrightness * m_dExposure * m_modes[m_uiMode].m_dSensitivity;
    const double gain = m_dFactor * m_dComplGain;
    // Channel c of a mosaic site; row and column parity select it.
    static const int kMosaic[4][4] = {{0, 1, 1, 2}, {1, 0, 2, 1}, {1, 2, 0, 1}, {2, 1, 1, 0}};
    const int* mosaic = kMosaic[int(m_bayer)];

    auto sample = [&](double scene, int channel) {
        double signal = photons * scene * (channel < 0 ? 1.0 : m_dResponse[channel]);
        if (m_dFullWell > 0.0 && signal > 0.0)
            signal += std::sqrt(signal / m_dFullWell) * Gauss();
        signal *= gain * (channel < 0 ? 1.0 : m_dGain[channel]);
        double v = m_dOffset + signal + m_dReadNoise * Gauss();
        v = std::min(1.0, std::max(0.0, v));
        return std::floor(v * full + 0.5);
    };

    size_t i = 0;
    for (uint32_t y = 0; y < h; ++y) {
        const double v = (y + 0.5) / h;
        for (uint32_t x = 0; x < w; ++x) {
            const double s = Scene((x + 0.5) / w, v);
            for (uint32_t c = 0; c < comp; ++c, ++i) {
                int channel = -1;
                if (m_output == EZxSimOutput::ColourBGR)
                    channel = 2 - int(c);  // memory order blue, green, red
                else if (m_output == EZxSimOutput::Bayer)
                    channel = mosaic[(y & 1) * 2 + (x & 1)];
                const double q = sample(s, channel);
                if (m_uiBits > 8)
                    static_cast<uint16_t*>(data)[i] = uint16_t(q);
                else
                    static_cast<uint8_t*>(data)[i] = uint8_t(q);
            }
        }
    }
    return frame;
}
