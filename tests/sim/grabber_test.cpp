// The simulated grabber: units, their cameras, secondary grabbers.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "zx/status.h"
#include "zxsim/grabber.h"

TEST(SimGrabber, EnumeratesUnitsAndTheirCameras)
{
    CZxSimGrabber g;
    auto unit = std::make_unique<SZxGrabberHWUnit>();
    std::vector<std::wstring> units, cameras;
    while (g.HWUnitNext_UNI_WRP(*unit) == ZX_OK) {
        units.push_back(unit->m_wszName);
        SZxGrabberCameraDesc cam;
        while (g.DriverCameraNext_UNI_WRP(*unit, cam) == ZX_OK)
            cameras.push_back(std::wstring(cam.m_wszName) + (cam.m_bMono ? L" mono" : L" colour") +
                              (cam.m_bConnected ? L"" : L" offline"));
    }
    EXPECT_EQ(units, (std::vector<std::wstring>{L"SimLink 0", L"SimLink 1"}));
    EXPECT_EQ(cameras, (std::vector<std::wstring>{L"SIM-M2048-0001 mono", L"SIM-C2048-0002 colour",
                                                  L"SIM-M1024-0003 mono offline"}));
}

TEST(SimGrabber, SecondaryGrabbersHaveTheirOwnCamerasAndTheConnectionDialogAddsAUnit)
{
    CZxSimGrabber g(2);
    ASSERT_EQ(g.SecGrabber_GetCount(), 2);
    SZxGrabberCameraDesc a, b;
    ASSERT_EQ(g.CameraGet_WRP(0, a), ZX_OK);
    ASSERT_EQ(g.CameraGet_WRP(1, b), ZX_OK);
    EXPECT_STRNE(a.m_wszName, b.m_wszName);
    EXPECT_NE(g.CameraGet_WRP(2, b), ZX_OK);
    EXPECT_EQ(g.SecGrabber_SetActive(1), ZX_OK);
    EXPECT_EQ(g.GetProvider_Low(), g.Camera(1));
    EXPECT_EQ(g.SecGrabber_SetActive(5), ZX_E_FAIL);

    // Opening the colour camera gives colour formats.
    g.SecGrabber_SetActive(0);
    ASSERT_EQ(g.CameraSet_WRP(L"SIM-C2048-0002"), ZX_OK);
    SZxGrabberFormatValue f;
    g.GetProvider_Low()->FormatGet_WRP(1, f);
    EXPECT_EQ(f.m_uiComp, 3u);
    EXPECT_EQ(g.CameraSet_WRP(L"SIM-M1024-0003"), ZX_E_FAIL);   // on another unit

    // The connection dialog adds a unit.
    auto unit = std::make_unique<SZxGrabberHWUnit>();
    EXPECT_EQ(g.ShowConnectionUi_WRP(*unit, nullptr), ZX_E_CANCELLED);
    g.QueueConnection(SZxGrabberHWUnit(L"Lab", L"sim://lab"));
    ASSERT_EQ(g.ShowConnectionUi_WRP(*unit, nullptr), ZX_OK);
    ASSERT_EQ(g.HWUnitAdd_UNI_WRP(*unit), ZX_OK);
    ASSERT_EQ(g.HWUnitSet_UNI_WRP(*unit), ZX_OK);
    auto current = std::make_unique<SZxGrabberHWUnit>();
    g.HWUnitGet_UNI_WRP(*current);
    EXPECT_STREQ(current->m_wszConnectionString, L"sim://lab");
    SZxGrabberCameraDesc cam;
    EXPECT_NE(g.DriverCameraNext_UNI_WRP(*current, cam), ZX_OK);   // no cameras on it
}
