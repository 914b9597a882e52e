// An engine with its steps opened to the tests, and a small camera for it.
#pragma once
#include <gtest/gtest.h>

#include <vector>

#include "zx/autoexposure.h"

struct Engine : CZxAutoExposure {
    using CZxAutoExposure::ComputeAutoDisplay;
    using CZxAutoExposure::ComputeAutoExposure;
    using CZxAutoExposure::ComputeAutoExposureRGB;
    using CZxAutoExposure::ComputeAutoGain;
    using CZxAutoExposure::ComputeAutoOffset;
    using CZxAutoExposure::ComputeBinningAE;
    using CZxAutoExposure::ComputeBlackSignal;
    using CZxAutoExposure::ComputeOverflow;
    using CZxAutoExposure::ComputeQuantilPixels;
    using CZxAutoExposure::ComputeWhiteSignal;

    /// Modes of sensitivity 1, 4, 16 (black 0, saturation 1, exposure 0.1..100,
    /// no knee, total-gain bounds 1.5..2); setting 1 targets 0.2 / 0.8 / 0.9,
    /// setting 2 targets 0.5; the quantile is 3 pixels.
    Engine()
    {
        for (int i = 0; i < 3; ++i) {
            SZxAECameraDesc& d = m_cameraDesc[i];
            d.m_dMaxComplGain = d.m_dMaxWhiteBalanceGain = 4.0;
            d.m_dMinOffset = d.m_dMinBlackOffset = -1.0;
            d.m_dMaxOffset = d.m_dMaxBlackOffset = 1.0;
            d.m_dMaxFactor = 8.0;
            d.m_dMaxHardWhiteGain = 2.0;
            d.m_dMinExposure = 0.1;
            d.m_dMaxExposure = 100.0;
            d.m_dExposureKnee = 1000.0;
            d.m_dMaxLevel = 1.0;
            d.m_dSensitivity = double(1 << (2 * i));
            d.m_dUpperGain = 2.0;
            d.m_dLowerGain = 1.5;
        }
        m_uiCameraDescCount = 3;
        m_setting1 = SZxAESetting{10.0, 100.0, 1.0, 1.0, 0.2, 0.8, 0.9};
        m_setting2 = SZxAESetting{10.0, 50.0, 1.0, 1.0, 0.5, 0.5, 0.5};
        m_quantil.m_uiPixels = 3;
    }
};

// EXPECT_DOUBLE_EQ per element of `want` against the start of `got`, so a row of
// related outputs reads as one line.
inline void ExpectDoubles(const std::vector<double>& want, const std::vector<double>& got)
{
    ASSERT_LE(want.size(), got.size());
    for (size_t i = 0; i < want.size(); ++i)
        EXPECT_DOUBLE_EQ(want[i], got[i]) << "element " << i;
}
