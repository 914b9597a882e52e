// Frames of the simulated camera follow its settings.
#include <memory>

#include "sim_camera.h"

TEST(SimCameraFrames, SignalFollowsExposureGainAndOffset)
{
    CZxSimCamera cam;
    ASSERT_EQ(Set(cam, ZX_MODE_FAST, {{L"Exposure", 10.0}}), ZX_OK);
    const double base = Mean(cam.Snap());
    EXPECT_GT(base, 20.0);
    ASSERT_EQ(Set(cam, ZX_MODE_FAST, {{L"Exposure", 20.0}}), ZX_OK);
    EXPECT_NEAR(Mean(cam.Snap()) / base, 2.0, 0.05);
    ASSERT_EQ(Set(cam, ZX_MODE_FAST, {{L"Exposure", 10.0}, {L"Gain", 2.0}}), ZX_OK);
    const double gained = Mean(cam.Snap());
    EXPECT_NEAR(gained / base, 2.0, 0.05);
    ASSERT_EQ(Set(cam, ZX_MODE_FAST, {{L"Offset", 100}}), ZX_OK);
    EXPECT_NEAR(Mean(cam.Snap()) - gained, 100.0, 2.0);
}

TEST(SimCameraFrames, FormatAndROICutTheField)
{
    CZxSimCamera cam;
    ASSERT_EQ(cam.ROISet(CZxRect(100, 200, 300, 300)), ZX_OK);
    ASSERT_EQ(cam.ROIEnable(true), ZX_OK);
    // The ROI is in sensor pixels, the frame binned 2x2.
    EXPECT_EQ(Shape(*std::unique_ptr<CZxGrabberSample01>(cam.Snap())), "100x50, 12x1");
    cam.ROIEnable(false);
    const double whole = Mean(cam.Snap());

    SZxGrabberFormatValue center;
    center.m_wstrName = L"1024 x 768 (Center)";
    ASSERT_EQ(cam.FormatSet_WRP(ZX_MODE_FAST, center, nullptr, false), ZX_OK);
    ASSERT_EQ(Set(cam, ZX_MODE_FAST, {{L"Exposure", 40.0}}), ZX_OK);   // unbinned sites need four times the light
    std::unique_ptr<CZxGrabberSample01> middle(cam.Snap());
    EXPECT_EQ(Shape(*middle), "1024x768, 12x1");
    // The middle of the field is the bright specimen: brighter than the whole field.
    EXPECT_GT(Mean(middle.release()), whole * 1.2);

    SZxGrabberCameraDesc colour = CZxSimCamera::DefaultCamera();
    colour.m_bMono = false;
    cam.SetCamera(colour);
    const std::string rgb = Shape(*std::unique_ptr<CZxGrabberSample01>(cam.Snap()));
    EXPECT_EQ(rgb.substr(rgb.size() - 2), "x3");
}
