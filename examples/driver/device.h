// The plug-in's device: a tiny simulated 12-bit monochrome camera looking at a
// bright round specimen on a dark background. A real driver talks to its
// camera here; everything above this class stays the same.
#pragma once
#include <cstdint>
#include <vector>

class CExampleDevice {
public:
    static constexpr uint32_t kWidth = 160, kHeight = 120, kBits = 12;

    double exposureMs = 1.0;   ///< 0.1 to 1000 ms
    double gain = 1.0;         ///< analog gain, 1 to 8

    /// Exposes one frame with the current exposure and gain.
    const std::vector<uint16_t>& Expose();

private:
    std::vector<uint16_t> m_pixels = std::vector<uint16_t>(kWidth * kHeight);
    uint32_t m_noise = 12345;
};
