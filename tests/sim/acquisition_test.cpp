// Frames of the simulated camera follow its settings.
#include <gtest/gtest.h>

#include <memory>

#include "zx/status.h"
#include "zxsim/camera.h"

namespace {

double Mean(CZxGrabberSample01& frame)
{
    SZxPicBuf pb;
    frame.GetPicBuf(&pb);
    const uint64_t n = uint64_t(pb.uiWidth) * pb.uiHeight * pb.uiComp;
    double sum = 0;
    for (uint64_t i = 0; i < n; ++i)
        sum += pb.uiBits > 8 ? static_cast<const uint16_t*>(pb.pData)[i] : static_cast<const uint8_t*>(pb.pData)[i];
    return n ? sum / double(n) : 0.0;
}

void Write(CZxSimCamera& cam, const wchar_t* name, const CZxVariant& v)
{
    CZxVector_SZxGrabberPropertyValue values(128);
    values.Add(SZxGrabberPropertyValue(name, v));
    ASSERT_EQ(cam.PropSet_WRP(ZX_MODE_FAST, values, nullptr, false), ZX_OK);
}

} // namespace

TEST(SimCameraFrames, SignalFollowsExposureAndGain)
{
    CZxSimCamera cam;
    Write(cam, L"Exposure", 10.0);
    std::unique_ptr<CZxGrabberSample01> a(cam.Snap());
    Write(cam, L"Exposure", 20.0);
    std::unique_ptr<CZxGrabberSample01> b(cam.Snap());
    Write(cam, L"Exposure", 10.0);
    Write(cam, L"Gain", 2.0);
    std::unique_ptr<CZxGrabberSample01> c(cam.Snap());
    const double ma = Mean(*a), mb = Mean(*b), mc = Mean(*c);
    EXPECT_GT(ma, 20.0);
    EXPECT_NEAR(mb / ma, 2.0, 0.05);
    EXPECT_NEAR(mc / ma, 2.0, 0.05);

    Write(cam, L"Offset", 100);
    std::unique_ptr<CZxGrabberSample01> d(cam.Snap());
    EXPECT_NEAR(Mean(*d) - mc, 100.0, 2.0);
}

TEST(SimCameraFrames, FormatAndROICutTheField)
{
    CZxSimCamera cam;
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    ASSERT_EQ(cam.ROISet(CZxRect(100, 200, 300, 300)), ZX_OK);
    ASSERT_EQ(cam.ROIEnable(true), ZX_OK);
    std::unique_ptr<CZxGrabberSample01> roi(cam.Snap());
    roi->GetPicBufNumbers(&w, &h, &bits, &comp);
    EXPECT_EQ(w, 100u);   // the ROI is in sensor pixels, the frame binned 2x2
    EXPECT_EQ(h, 50u);

    cam.ROIEnable(false);
    SZxGrabberFormatValue center;
    center.m_wstrName = L"1024 x 768 (Center)";
    ASSERT_EQ(cam.FormatSet_WRP(ZX_MODE_FAST, center, nullptr, false), ZX_OK);
    Write(cam, L"Exposure", 40.0);   // unbinned sites need four times the light
    std::unique_ptr<CZxGrabberSample01> middle(cam.Snap());
    middle->GetPicBufNumbers(&w, &h, &bits, &comp);
    EXPECT_EQ(w, 1024u);
    EXPECT_EQ(h, 768u);
    // The middle of the field is the bright specimen: brighter than the whole field.
    SZxGrabberFormatValue full;
    full.m_wstrName = L"1024 x 768 (Binning 2x2)";
    cam.FormatSet_WRP(ZX_MODE_FAST, full, nullptr, false);
    Write(cam, L"Exposure", 10.0);
    std::unique_ptr<CZxGrabberSample01> whole(cam.Snap());
    EXPECT_GT(Mean(*middle), Mean(*whole) * 1.2);

    SZxGrabberCameraDesc colour = CZxSimCamera::DefaultCamera();
    colour.m_bMono = false;
    cam.SetCamera(colour);
    std::unique_ptr<CZxGrabberSample01> rgb(cam.Snap());
    rgb->GetPicBufNumbers(&w, &h, &bits, &comp);
    EXPECT_EQ(comp, 3u);
}
