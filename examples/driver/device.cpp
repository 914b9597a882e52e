#include "device.h"

#include <algorithm>

const std::vector<uint16_t>& CExampleDevice::Expose()
{
    const double black = 64.0;
    const int cx = int(kWidth) / 2, cy = int(kHeight) / 2, r = int(kHeight) / 3;
    for (uint32_t y = 0; y < kHeight; ++y)
        for (uint32_t x = 0; x < kWidth; ++x) {
            const int dx = int(x) - cx, dy = int(y) - cy;
            // Counts per millisecond at gain 1: the specimen fills the range after about 100 ms.
            const double rate = dx * dx + dy * dy <= r * r ? 36.0 + 0.05 * double(x) : 3.0;
            m_noise = m_noise * 1664525u + 1013904223u;
            const double noise = double(m_noise >> 28) - 7.5;   // a little read noise
            const double value = black + rate * exposureMs * gain + noise;
            m_pixels[y * kWidth + x] = uint16_t(std::clamp(value, 0.0, double((1u << kBits) - 1)));
        }
    return m_pixels;
}
