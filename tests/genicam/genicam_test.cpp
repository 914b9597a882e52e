// The GenICam provider on the fake camera: feature mapping, refused writes,
// formats and ROI, the closed auto-exposure loop, Bayer frames, and a device
// closed under a running loop.
#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include "zx_test.h"
#include "zx/histogram.h"
#include "zx/property.h"
#include "zx/status.h"
#include "zxgenicam/aeloop.h"

namespace {

// Frames the loop may take to settle on the fake camera, from either start.
const int kFramesToSettle = 8;

class GenICam : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(ZX_OK, CZxGenICamCamera::UseOnlyInterface("Fake"));
        ASSERT_EQ(ZX_OK, cam.Open("Fake_1")) << cam.LastError();
        // Faster frames keep the loop tests short; nothing here depends on the rate.
        ASSERT_EQ(ZX_OK, Set(L"AcquisitionFrameRate", 200.0));
    }
    int Set(const wchar_t* name, const CZxVariant& v, SZxStateChangeInfo* info = nullptr, bool checkOnly = false)
    {
        CZxVector_SZxGrabberPropertyValue values(1);
        values.Add(SZxGrabberPropertyValue(name, v));
        return cam.PropSet_WRP(ZX_MODE_FAST, values, info, checkOnly);
    }
    CZxVariant Get(const wchar_t* name)
    {
        SZxGrabberPropertyValue v(name);
        EXPECT_EQ(ZX_OK, cam.PropGetSingle_WRP(ZX_MODE_FAST, v)) << name;
        return v.m_varValue;
    }
    uint32_t State(const wchar_t* name)
    {
        uint32_t s = 0;
        EXPECT_EQ(ZX_OK, cam.PropState_WRP(ZX_MODE_FAST, SZxGrabberPropertyDesc01(name), s));
        return s;
    }
    std::unique_ptr<CZxGrabberSample01> Next()
    {
        CZxGrabberSample01* f = nullptr;
        EXPECT_EQ(ZX_OK, cam.NextFrame(2000, &f));
        return std::unique_ptr<CZxGrabberSample01>(f);
    }
    int SetFormat(const wchar_t* name)
    {
        SZxGrabberFormatValue f;
        f.m_wstrName = name;
        return cam.FormatSet_WRP(ZX_MODE_FAST, f, nullptr, false);
    }
    std::wstring FormatName()
    {
        SZxGrabberFormatValue f;
        EXPECT_EQ(ZX_OK, cam.FormatGet_WRP(ZX_MODE_FAST, f));
        return f.m_wstrName.Std();
    }
    // "width x height, bits x components" of a frame, or of one snapped when none is given.
    std::string Shape(CZxGrabberSample01* frame = nullptr)
    {
        std::unique_ptr<CZxGrabberSample01> snapped;
        if (!frame) {
            EXPECT_EQ(ZX_OK, cam.Snap(2000, &frame));
            snapped.reset(frame);
        }
        if (!frame)
            return "no frame";
        uint32_t w = 0, h = 0, bits = 0, comp = 0;
        frame->GetPicBufNumbers(&w, &h, &bits, &comp);
        return std::to_string(w) + "x" + std::to_string(h) + ", " + std::to_string(bits) + "x" + std::to_string(comp);
    }
    CZxGenICamCamera cam;
};

TEST(GenICamDevices, FakeCameraIsListedAndUnknownDevicesFailToOpen)
{
    EXPECT_EQ(ZX_E_FAIL, CZxGenICamCamera::UseOnlyInterface("Carrier pigeon"));
    ASSERT_EQ(ZX_OK, CZxGenICamCamera::UseOnlyInterface("Fake"));   // no network discovery in tests
    EXPECT_EQ(std::vector<std::string>{"Fake_1"}, CZxGenICamCamera::ListDevices());
    CZxGenICamCamera cam;
    EXPECT_EQ(ZX_E_FAIL, cam.Open("NoSuchCamera"));
    EXPECT_FALSE(cam.LastError().empty());
    SZxGrabberPropertyValue v(L"Width");
    EXPECT_EQ(ZXGENICAM_E_LOST, cam.PropGetSingle_WRP(ZX_MODE_FAST, v));
    CZxGrabberSample01* f = nullptr;
    EXPECT_EQ(ZX_E_FAIL, cam.NextFrame(10, nullptr));
    EXPECT_EQ(ZXGENICAM_E_LOST, cam.NextFrame(10, &f));
    EXPECT_EQ(nullptr, f);
}

TEST_F(GenICam, EveryFeatureGivesAValueOfItsDefinitionsTypeWithinItsLimits)
{
    int properties = 0;
    for (const SZxGenICamFeature& f : cam.FeatureList()) {
        SCOPED_TRACE(testing::Message() << f.m_name.c_str());
        SZxGrabberPropertyDesc01 desc;
        if (f.m_kind == EZxGenICamKind::Command) {
            SZxGrabberCommandDesc01 cmd;
            EXPECT_EQ(ZX_OK, cam.CommandGetDesc_WRP(f.m_name.c_str(), cmd));
            EXPECT_EQ(ZX_E_FAIL, cam.PropGetDesc_WRP(ZX_MODE_FAST, f.m_name.c_str(), desc));
            continue;
        }
        ++properties;
        ASSERT_EQ(ZX_OK, cam.PropGetDesc_WRP(ZX_MODE_FAST, f.m_name.c_str(), desc));
        const CZxVariant v = Get(f.m_name.c_str());
        const std::wstring type = desc.varValDefinition.GetRunType().GetName();
        // The library's typed values read each one without clamping it.
        if (type == L"RZxRangeInt32") {
            CZxRangeInt32PropertyValue typed;
            EXPECT_TRUE(typed.Set(desc, v));
            EXPECT_EQ(v.GetZx_int32(), typed.m_iValue);
        } else if (type == L"RZxRangeDouble" || type == L"RZxRangeDoubleExposure") {
            CZxRangeDoublePropertyValue typed;
            EXPECT_EQ(CZxVariant::EKind::Double, v.GetKind());
            EXPECT_TRUE(typed.Set(desc, v));
            EXPECT_EQ(v.GetDouble(), typed.m_dValue);
        } else if (type == L"RZxList") {
            const CZxVariant& list = desc.varValDefinition[L"m_list"];
            bool found = false;
            for (int i = 0; i < list.GetCount(); ++i)
                found |= list[i][L"m_wstrValue"] == v;
            EXPECT_TRUE(found);
        } else if (type == L"bool") {
            EXPECT_EQ(CZxVariant::EKind::Bool, v.GetKind());
        } else {
            EXPECT_EQ(L"CZxStringW", type);
            CZxStringWPropertyValue typed;
            EXPECT_TRUE(typed.Set(v));
        }
        EXPECT_STRNE(L"none", ZX_GenICamControlFamily(desc));
    }
    EXPECT_EQ(29, properties);
}

TEST_F(GenICam, FeaturesMapToTheExpectedTypesLimitsAndStates)
{
    struct SCase {
        const wchar_t* name;
        const wchar_t* type;
        double min, max, step;
        uint32_t state;
    } cases[] = {
        {L"ExposureTimeAbs", L"RZxRangeDoubleExposure", 0.01, 10000.0, 0.001, ZX_PROPSTATE_AVAILABLE},
        {L"GainRaw", L"RZxRangeInt32", 0, 10, 1, ZX_PROPSTATE_AVAILABLE},
        {L"Width", L"RZxRangeInt32", 1, 2048, 1, ZX_PROPSTATE_AVAILABLE},
        {L"AcquisitionFrameRate", L"RZxRangeDouble", 0.1, 1000.0, 0.1, ZX_PROPSTATE_AVAILABLE},
        // Beyond 32 bits: a double range, so values stay exact.
        {L"SensorWidth", L"RZxRangeDouble", 0, 4294967295.0, 1, ZX_PROPSTATE_AVAILABLE | ZX_PROPSTATE_READONLY},
        {L"PixelFormat", L"RZxList", 0, 0, 0, ZX_PROPSTATE_AVAILABLE},
        {L"TestBoolean", L"bool", 0, 0, 0, ZX_PROPSTATE_AVAILABLE},
        {L"TestStringReg", L"CZxStringW", 0, 0, 0, ZX_PROPSTATE_AVAILABLE},
        {L"DeviceVendorName", L"CZxStringW", 0, 0, 0, ZX_PROPSTATE_AVAILABLE | ZX_PROPSTATE_READONLY},
    };
    for (const SCase& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name);
        SZxGrabberPropertyDesc01 desc;
        ASSERT_EQ(ZX_OK, cam.PropGetDesc_WRP(ZX_MODE_FAST, c.name, desc));
        const CZxVariant& d = desc.varValDefinition;
        EXPECT_STREQ(c.type, d.GetRunType().GetName()) << c.name;
        EXPECT_EQ(c.state, State(c.name)) << c.name;
        if (const CZxVariant* min = d.Search(L"m_iMin")) {
            EXPECT_EQ(c.min, min->GetDouble());
            EXPECT_EQ(c.max, d[L"m_iMax"].GetDouble());
            EXPECT_EQ(c.step, d[L"m_iStep"].GetDouble());
        } else if (const CZxVariant* dmin = d.Search(L"m_dMin")) {
            EXPECT_DOUBLE_EQ(c.min, dmin->GetDouble()) << c.name;
            EXPECT_DOUBLE_EQ(c.max, d[L"m_dMax"].GetDouble()) << c.name;
            EXPECT_DOUBLE_EQ(c.step, d[L"m_dStep"].GetDouble()) << c.name;
        }
    }
    SZxGrabberPropertyDesc01 exposure;
    cam.PropGetDesc_WRP(ZX_MODE_FAST, L"ExposureTimeAbs", exposure);
    EXPECT_EQ(L"ms", exposure.varValDefinition[L"m_wstrUnit"].GetCZxStringW().Std());
    EXPECT_DOUBLE_EQ(10.0, Get(L"ExposureTimeAbs").GetDouble());   // 10000 µs as the library's milliseconds
    SZxGrabberPropertyDesc01 pf;
    cam.PropGetDesc_WRP(ZX_MODE_FAST, L"PixelFormat", pf);
    EXPECT_EQ(7, pf.varValDefinition[L"m_list"].GetCount());
    EXPECT_EQ(nullptr, pf.varValDefinition.Search(L"m_wstrUnit"));
    // Invisible nodes and registers are no properties; an automatic mode marks its feature as changing.
    EXPECT_EQ(ZX_E_FAIL, cam.PropGetDesc_WRP(ZX_MODE_FAST, L"TLParamsLocked", pf));
    EXPECT_EQ(ZX_E_FAIL, cam.PropGetDesc_WRP(ZX_MODE_FAST, L"GainRawRegister", pf));
    ASSERT_EQ(ZX_OK, Set(L"GainAuto", L"Continuous"));
    EXPECT_EQ(ZX_PROPSTATE_AVAILABLE | ZX_PROPSTATE_CHANGING, State(L"GainRaw"));
}

TEST_F(GenICam, RefusedWritesFailWholeAndChangeNothing)
{
    ASSERT_EQ(ZX_OK, Set(L"GainRaw", 2));
    // The device would take all of these itself; the provider holds it to the definition.
    const std::pair<const wchar_t*, CZxVariant> refused[] = {
        {L"Width", 5000},          {L"Width", 0},
        {L"ExposureTimeAbs", 20000.0}, {L"ExposureTimeAbs", 0.001},
        {L"GainRaw", 11},          {L"GainRaw", 2.5},
        {L"GainRaw", L"many"},     {L"PixelFormat", L"Mono12"},
        {L"PixelFormat", 1},       {L"SensorWidth", 1024},
        {L"TestBoolean", L"yes"},  {L"TestStringReg", CZxVariant(L"this text is longer than thirty-two bytes")},
        {L"AcquisitionStart", true}, {L"NoSuchFeature", 1},
    };
    for (const auto& r : refused)
        EXPECT_EQ(ZX_E_FAIL, Set(r.first, r.second)) << testing::Message() << r.first;
    CZxVector_SZxGrabberPropertyValue both(2);
    both.Add(SZxGrabberPropertyValue(L"GainRaw", 3));
    both.Add(SZxGrabberPropertyValue(L"Width", 5000));
    EXPECT_EQ(ZX_E_FAIL, cam.PropSet_WRP(ZX_MODE_FAST, both, nullptr, false));
    EXPECT_EQ(ZX_OK, Set(L"GainRaw", 4, nullptr, true));
    EXPECT_EQ(2, Get(L"GainRaw").GetZx_int32());
    EXPECT_EQ(512, Get(L"Width").GetZx_int32());
    EXPECT_EQ(L"Mono8", Get(L"PixelFormat").GetCZxStringW().Std());

    // An accepted write reports what it changed, the format included.
    SZxStateChangeInfo info;
    ASSERT_EQ(ZX_OK, Set(L"PixelFormat", L"Mono16", &info));
    EXPECT_TRUE(info.m_bFormatChanged);
    ASSERT_NE(nullptr, info.Find(L"PayloadSize"));
    EXPECT_TRUE(info.Find(L"PayloadSize")->m_bValueChanged);
    EXPECT_EQ(nullptr, info.Find(L"GainRaw"));
}

TEST_F(GenICam, FormatsBinAndTheROICutsFrames)
{
    int count = 0;
    SZxGrabberFormatValue f;
    while (cam.FormatNext_WRP(f) == ZX_OK)
        ++count;
    EXPECT_EQ(15, count);   // Mono8, Mono16: binning 1, 2, 4; four Bayer: 1, 2; RGB8: 1
    ASSERT_EQ(ZX_OK, SetFormat(L"Mono16 (Binning 4x4)"));
    ASSERT_EQ(ZX_OK, cam.FormatGet_WRP(ZX_MODE_FAST, f));
    EXPECT_EQ(L"Mono16 (Binning 4x4)", f.m_wstrName.Std());
    EXPECT_EQ(CZxRect(0, 0, 128, 128), f.m_rcRect);
    EXPECT_EQ("128x128, 16x1", Shape());

    // A pixel format without that binning falls back to none.
    ASSERT_EQ(ZX_OK, Set(L"PixelFormat", L"RGB8"));
    ASSERT_EQ(ZX_OK, cam.FormatGet_WRP(ZX_MODE_FAST, f));
    EXPECT_EQ(L"RGB8", f.m_wstrName.Std());
    EXPECT_EQ(3u, f.m_uiComp);

    EXPECT_EQ(ZX_E_FAIL, SetFormat(L"Mono8 (Binning 3x3)"));
    ASSERT_EQ(ZX_OK, SetFormat(L"Mono8"));
    ASSERT_TRUE(cam.ROIIsSupported_UNI_WRP());
    ASSERT_EQ(ZX_OK, cam.ROISet(CZxRect(10, 20, 110, 220)));
    ASSERT_EQ(ZX_OK, cam.ROIEnable(true));
    EXPECT_EQ(10, Get(L"OffsetX").GetZx_int32());
    EXPECT_EQ(200, Get(L"Height").GetZx_int32());
    EXPECT_EQ(ZX_E_FAIL, cam.ROISet(CZxRect(2000, 0, 2100, 100)));   // past the sensor: the old ROI stays
    EXPECT_EQ(110, Get(L"Width").GetZx_int32() + Get(L"OffsetX").GetZx_int32());
    EXPECT_EQ("100x200, 8x1", Shape());
    // Sizes that are no multiple of the binning lose their last column and row.
    ASSERT_EQ(ZX_OK, cam.ROISet(CZxRect(1, 1, 102, 202)));
    ASSERT_EQ(ZX_OK, SetFormat(L"Mono8 (Binning 2x2)"));
    EXPECT_EQ("50x100, 8x1", Shape());
    ASSERT_EQ(ZX_OK, cam.ROIEnable(false));
    EXPECT_EQ(2048, Get(L"Width").GetZx_int32());
    EXPECT_EQ(0, Get(L"OffsetY").GetZx_int32());
}

TEST_F(GenICam, SettingsComeBackFromDefaultsAndNamedSettings)
{
    ASSERT_EQ(ZX_OK, Set(L"GainRaw", 3));
    ASSERT_EQ(ZX_OK, Set(L"ExposureTimeAbs", 2.5));
    ASSERT_EQ(ZX_OK, SetFormat(L"Mono16 (Binning 2x2)"));
    ASSERT_EQ(ZX_OK, cam.ROISet(CZxRect(0, 0, 64, 32)));
    ASSERT_EQ(ZX_OK, cam.ROIEnable(true));
    SZxGrabberCameraSettings s;
    ASSERT_EQ(ZX_OK, cam.CameraSettingsGet_UNI_WRP(s, ZX_SETTINGS_ALL, true));
    ASSERT_EQ(ZX_OK, cam.NamedSettingsAdd(L"dim", s));

    ASSERT_EQ(ZX_OK, cam.CameraSettingsSetDefaults_UNI_WRP());
    EXPECT_EQ(0, Get(L"GainRaw").GetZx_int32());
    EXPECT_DOUBLE_EQ(10.0, Get(L"ExposureTimeAbs").GetDouble());
    EXPECT_FALSE(cam.ROIEnabled());
    EXPECT_EQ(L"Mono8", FormatName());
    SZxGrabberPropertyValue def(L"GainRaw");
    ASSERT_EQ(ZX_OK, cam.PropGetDefaultSingle_WRP(ZX_MODE_QUALITY, def));
    EXPECT_EQ(0, def.m_varValue.GetZx_int32());

    CZxStringW name;
    SZxGrabberCameraSettings* stored = cam.NamedSettingsNext(name);
    ASSERT_NE(nullptr, stored);
    EXPECT_EQ(L"dim", name.Std());
    ASSERT_EQ(ZX_OK, cam.CameraSettingsSet_UNI_WRP(*stored, ZX_SETTINGS_ALL));
    EXPECT_EQ(3, Get(L"GainRaw").GetZx_int32());
    EXPECT_DOUBLE_EQ(2.5, Get(L"ExposureTimeAbs").GetDouble());
    EXPECT_TRUE(cam.ROIEnabled());
    EXPECT_EQ(64, Get(L"Width").GetZx_int32());
    EXPECT_EQ(L"Mono16 (Binning 2x2)", FormatName());
    EXPECT_EQ(nullptr, cam.NamedSettingsNext(name));
    EXPECT_EQ(ZX_OK, cam.NamedSettingsRemove(L"dim"));
    EXPECT_EQ(ZX_E_FAIL, cam.NamedSettingsRemove(L"dim"));
}

TEST_F(GenICam, AutoExposureConvergesFromShortAndLongExposuresInMono8AndMono16)
{
    for (const wchar_t* format : {L"Mono8", L"Mono16"})
        for (double startMs : {1.0, 1000.0}) {
            SCOPED_TRACE(testing::Message() << format << " from " << startMs << " ms");
            ASSERT_EQ(ZX_OK, Set(L"PixelFormat", format));
            ASSERT_EQ(ZX_OK, Set(L"ExposureTimeAbs", startMs));
            ASSERT_EQ(ZX_OK, Set(L"GainRaw", 0));
            CZxGenICamAELoop loop(cam);
            ASSERT_EQ(ZX_OK, loop.Configure());
            // Mono16 measures the frame's middle only; the fake's gradient is the same there.
            SZxGrabberProbe middle = SZxGrabberProbe::Rect(128, 128, 256, 256);
            const bool probed = format[4] == L'1';
            loop.m_pProbe = probed ? &middle : nullptr;
            ASSERT_EQ(ZX_OK, cam.StartLive());
            std::vector<SZxGenICamAEStep> steps;
            EXPECT_EQ(ZX_OK, loop.Run(kFramesToSettle + 6, 2000, steps));
            cam.StopLive();
            const int settled = ZxGenICamFramesToGood(steps);
            EXPECT_GE(settled, 0);
            EXPECT_LE(settled, kFramesToSettle);
            EXPECT_DOUBLE_EQ(startMs, steps.front().m_dExposure);
            EXPECT_FALSE(steps.front().m_bExposureGood);
            // The fake camera's white point reaches the target window between 6 and 10 ms without gain.
            EXPECT_GT(steps.back().m_dExposure, 6.0);
            EXPECT_LT(steps.back().m_dExposure, 10.0);
            EXPECT_EQ(0.0, steps.back().m_dGain);
            EXPECT_EQ(probed ? 256u * 256u : 512u * 512u, steps.back().m_uiPixels);
            // The display LUT lifts the settled frame by the engine's display gain (at least 1).
            EXPECT_GE(steps.back().m_dDisplayMean, steps.back().m_dMean);
        }
}

TEST_F(GenICam, BayerFramesDemosaicAndTheirHistogramsCountEveryPixel)
{
    for (const wchar_t* format : {L"BayerRG8", L"BayerGR8", L"BayerGB8", L"BayerBG8 (Binning 2x2)"}) {
        ASSERT_EQ(ZX_OK, SetFormat(format));
        ASSERT_EQ(ZX_OK, cam.StartLive());
        std::unique_ptr<CZxGrabberSample01> frame = Next();
        // The frame's shape is fixed while buffers stream; other features are not.
        EXPECT_EQ(ZX_E_BUSY, SetFormat(format));
        EXPECT_EQ(ZX_E_BUSY, Set(L"Width", 256));
        EXPECT_EQ(ZX_E_BUSY, cam.ROIEnable(true));
        EXPECT_EQ(ZX_OK, Set(L"GainRaw", 1));
        cam.StopLive();
        ASSERT_NE(nullptr, frame);
        const uint32_t side = format[8] == L' ' ? 256u : 512u;
        EXPECT_EQ(Shape(frame.get()), side == 256u ? "256x256, 8x3" : "512x512, 8x3");
        SZxAEHistogram hist(8, false, true);
        ZX_ComputeHistogramAE(&hist, frame.get(), nullptr);
        EXPECT_EQ(side * side, hist.uiPixelCount);
        for (int c = 1; c <= 3; ++c) {
            uint64_t sum = 0;
            for (uint32_t i = 0; i < hist.uiBinCount; ++i)
                sum += hist.pdwHisto[c][i];
            EXPECT_EQ(uint64_t(side) * side, sum) << "component " << c;
        }
    }
}

TEST_F(GenICam, ClosingTheDeviceFromAnotherThreadEndsTheLoopWithAStatus)
{
    CZxGenICamAELoop loop(cam);
    ASSERT_EQ(ZX_OK, loop.Configure());
    ASSERT_EQ(ZX_OK, cam.StartLive());
    std::atomic<int> status{ZX_OK};
    std::atomic<int> frames{0};
    std::thread acquisition([&] {
        SZxGenICamAEStep step;
        int s;
        while ((s = loop.Step(2000, step)) == ZX_OK)
            ++frames;
        status = s;
    });
    while (frames < 3 && status == ZX_OK)
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    cam.Close();
    acquisition.join();
    EXPECT_EQ(ZXGENICAM_E_LOST, status.load());
    EXPECT_GE(frames.load(), 3);
    EXPECT_FALSE(cam.IsOpen());
    SZxGenICamAEStep step;
    EXPECT_EQ(ZXGENICAM_E_LOST, loop.Step(10, step));
    EXPECT_EQ(ZXGENICAM_E_LOST, Set(L"GainRaw", 1));
}

TEST_F(GenICam, ASlowStreamTimesOutAndCommandsRun)
{
    ASSERT_EQ(ZX_OK, Set(L"AcquisitionFrameRate", 0.5));
    ASSERT_EQ(ZX_OK, cam.StartLive());
    CZxGrabberSample01* f = nullptr;
    EXPECT_EQ(ZXGENICAM_E_TIMEOUT, cam.NextFrame(100, &f));
    EXPECT_EQ(nullptr, f);
    EXPECT_EQ(ZX_E_BUSY, cam.StartLive());
    SZxGrabberCommandValue stop(L"AcquisitionStop"), unknown(L"Calibrate");
    EXPECT_EQ(ZX_OK, cam.Command_WRP(stop, false, nullptr, false, nullptr));
    EXPECT_EQ(ZX_E_FAIL, cam.Command_WRP(unknown, false, nullptr, false, nullptr));
}

} // namespace
