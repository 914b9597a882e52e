// The simulated grabber: units, their cameras, secondary grabbers.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "zx/status.h"
#include "zxhost/picbuf.h"
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

namespace {
// The bytes of pixel (x, y) of a packed frame.
std::string PixelAt(CZxGrabberSample01& f, uint32_t x, uint32_t y)
{
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    f.GetPicBufNumbers(&w, &h, &bits, &comp);
    const size_t px = size_t(comp) * (bits > 8 ? 2 : 1);
    const char* p = static_cast<const char*>(f.GetDataPtr()) + (size_t(y) * w + x) * px;
    return std::string(p, px);
}

// The same seed gives the same frame: an upright one to compare with.
std::unique_ptr<CZxGrabberSample01> SnapSeeded(CZxSimCamera& cam)
{
    cam.Sensor().SetSeed(7);
    return std::unique_ptr<CZxGrabberSample01>(cam.Snap());
}
} // namespace

TEST(SimGrabber, OrientationIsKeptPerCameraAndTurnsOrMirrorsTheOpenCamerasFrames)
{
    CZxSimGrabber g;
    CZxSimCamera& cam = *g.Camera(0);
    auto upright = SnapSeeded(cam);
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    upright->GetPicBufNumbers(&w, &h, &bits, &comp);
    ASSERT_GT(w, 2u);
    ASSERT_NE(w, h) << "a quarter turn must show in the shape";
    int32_t o = -1;
    EXPECT_EQ(g.CameraOrientationGet_WRP(nullptr, o), ZX_OK);
    EXPECT_EQ(o, ZX_ORIENT_NONE);

    // Where the result's corners (top-left, top-right, bottom-left) come from in the upright frame.
    const struct {
        int32_t orientation;
        bool quarter;
        uint32_t from[3][2];
    } cases[] = {
        {ZX_ORIENT_ROTATE_LEFT, true, {{w - 1, 0}, {w - 1, h - 1}, {0, 0}}},
        {ZX_ORIENT_ROTATE_RIGHT, true, {{0, h - 1}, {0, 0}, {w - 1, h - 1}}},
        {ZX_ORIENT_ROTATE_180, false, {{w - 1, h - 1}, {0, h - 1}, {w - 1, 0}}},
        {ZX_ORIENT_FLIP_H, false, {{w - 1, 0}, {0, 0}, {w - 1, h - 1}}},
        {ZX_ORIENT_FLIP_V, false, {{0, h - 1}, {w - 1, h - 1}, {0, 0}}},
        {ZX_ORIENT_NONE, false, {{0, 0}, {w - 1, 0}, {0, h - 1}}},
    };
    for (const auto& k : cases) {
        SCOPED_TRACE(k.orientation);
        ASSERT_EQ(g.CameraOrientationSet_WRP(L"SIM-M2048-0001", k.orientation), ZX_OK);
        EXPECT_EQ(cam.GetOrientation(), k.orientation);
        auto turned = SnapSeeded(cam);
        uint32_t tw = 0, th = 0;
        turned->GetPicBufNumbers(&tw, &th, &bits, &comp);
        EXPECT_EQ(tw, k.quarter ? h : w);
        EXPECT_EQ(th, k.quarter ? w : h);
        const uint32_t at[3][2] = {{0, 0}, {tw - 1, 0}, {0, th - 1}};
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(PixelAt(*turned, at[i][0], at[i][1]), PixelAt(*upright, k.from[i][0], k.from[i][1])) << i;
    }

    // Kept per camera: another camera opens upright, the first gets its own back.
    ASSERT_EQ(g.CameraOrientationSet_WRP(nullptr, ZX_ORIENT_FLIP_V), ZX_OK);
    ASSERT_EQ(g.CameraSet_WRP(L"SIM-C2048-0002"), ZX_OK);
    EXPECT_EQ(cam.GetOrientation(), ZX_ORIENT_NONE);
    ASSERT_EQ(g.CameraSet_WRP(L"SIM-M2048-0001"), ZX_OK);
    EXPECT_EQ(cam.GetOrientation(), ZX_ORIENT_FLIP_V);
    // Unknown cameras and values are refused and change nothing.
    EXPECT_EQ(g.CameraOrientationSet_WRP(L"SIM-NONE", ZX_ORIENT_FLIP_H), ZX_E_FAIL);
    EXPECT_EQ(g.CameraOrientationSet_WRP(nullptr, 6), ZX_E_FAIL);
    EXPECT_EQ(g.CameraOrientationSet_WRP(nullptr, -1), ZX_E_FAIL);
    EXPECT_EQ(g.CameraOrientationGet_WRP(L"SIM-NONE", o), ZX_E_FAIL);
    EXPECT_EQ(g.CameraOrientationGet_WRP(L"", o), ZX_OK);
    EXPECT_EQ(o, ZX_ORIENT_FLIP_V);
}
