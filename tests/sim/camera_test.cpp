// The simulated camera's contract as a driver: values and sets, settings,
// formats, commands.
#include <functional>
#include <memory>
#include <tuple>
#include <vector>

#include "sim_camera.h"
#include "zx_props.h"

namespace {

std::vector<std::wstring> Names(CZxSimCamera& cam)
{
    std::vector<std::wstring> names;
    CZxStringW name;
    while (cam.NamedSettingsNext(name))
        names.push_back(name.Std());
    return names;
}

double Gain(const SZxGrabberCameraSettings& s) { return s.m_vecPropFast.Find(L"Gain")->m_varValue.GetDouble(); }

SZxGrabberCameraSettings Current(CZxSimCamera& cam, uint32_t mask = ZX_SETTINGS_ALL)
{
    SZxGrabberCameraSettings s;
    EXPECT_EQ(cam.CameraSettingsGet_UNI_WRP(s, mask, true), ZX_OK);
    return s;
}

// Everything a settings record carries but its mask, to compare in one line.
auto Whole(const SZxGrabberCameraSettings& s)
{
    return std::make_tuple(s.m_vecPropFast, s.m_vecPropQuality, s.m_fmtFast, s.m_fmtQuality, s.m_bROIEnabled,
                           s.m_rcROI, s.m_bFQSynchronized);
}

} // namespace

TEST(SimCameraValues, SetsAreSeparateUntilSynchronisedAndWritesAreCheckedWhole)
{
    CZxSimCamera cam;
    EXPECT_EQ(Set(cam, ZX_MODE_QUALITY, {{L"Gain", 4.0}}), ZX_OK);
    EXPECT_EQ(Get(cam, ZX_MODE_FAST, L"Gain").GetDouble(), 1.0);
    EXPECT_EQ(cam.SetModeFQ(ZX_MODE_QUALITY), ZX_OK);
    EXPECT_EQ(Get(cam, 0, L"Gain").GetDouble(), 4.0);   // any other mode means the set in use
    EXPECT_EQ(cam.ModeFQSynchronize(true), ZX_OK);
    EXPECT_EQ(Get(cam, ZX_MODE_FAST, L"Gain").GetDouble(), 4.0);   // the set in use was copied
    EXPECT_EQ(Set(cam, ZX_MODE_FAST, {{L"Offset", 9}}), ZX_OK);
    EXPECT_EQ(Get(cam, ZX_MODE_QUALITY, L"Offset").GetZx_int32(), 9);

    CZxSimCamera fresh;
    EXPECT_EQ(Set(fresh, 1, {{L"Gain", 2.0}, {L"PixelClock", 13}}), ZX_E_FAIL);   // one bad value refuses all
    EXPECT_EQ(Get(fresh, 1, L"Gain").GetDouble(), 1.0);
    EXPECT_EQ(Set(fresh, 1, {{L"Nope", 1}}), ZX_E_FAIL);
    EXPECT_EQ(Set(fresh, 1, {{L"TriggerMode", 1}}), ZX_E_FAIL);   // a string list takes strings only
    EXPECT_EQ(Set(fresh, 1, {{L"Gain", L"99"}, {L"Offset", -5}, {L"ReadoutMode", L"Low Noise"}}), ZX_OK);
    EXPECT_EQ(Get(fresh, 1, L"Gain").GetDouble(), 16.0);
    EXPECT_EQ(Get(fresh, 1, L"Offset").GetZx_int32(), 0);
    EXPECT_EQ(Get(fresh, 1, L"ReadoutMode").GetZx_int32(), 0);   // a label selects its value
    // Read-only and unavailable properties in a bulk write are skipped, not refused.
    EXPECT_EQ(Set(fresh, 1, {{L"Cooling", false}}), ZX_OK);
    EXPECT_EQ(Set(fresh, 1, {{L"FrameRate", 5.0}, {L"Temperature", 0.0}, {L"Gain", 3.0}}), ZX_OK);
    EXPECT_EQ(Get(fresh, 1, L"Temperature").GetDouble(), -10.0);
    EXPECT_EQ(Get(fresh, 1, L"Gain").GetDouble(), 3.0);
}

// Rows with a state of their own follow their switch in the set written only;
// commands are always there to be run.
TEST(SimCameraValues, StatesFollowTheirSwitchPerSet)
{
    CZxSimCamera cam;
    const uint32_t kOn = ZX_PROPSTATE_AVAILABLE, kReadOnly = ZX_PROPSTATE_READONLY, kMoves = ZX_PROPSTATE_CHANGING;
    const struct {
        const wchar_t* name;
        const wchar_t* switchName;   // written to `on` in the fast set first
        bool on;
        uint32_t fast, quality;
    } rows[] = {
        {L"Gain", nullptr, false, kOn, kOn},
        {L"Exposure", L"AutoExposure", true, kOn | kMoves, kOn},
        {L"Exposure", L"AutoExposure", false, kOn, kOn},
        {L"Temperature", L"Cooling", false, 0, kOn},
        {L"Temperature", L"Cooling", true, kOn, kOn},
        {L"SensorTemperature", nullptr, false, kOn | kReadOnly | kMoves, kOn | kReadOnly | kMoves},
        {L"FrameRate", nullptr, false, kOn | kReadOnly, kOn | kReadOnly},
        {L"Calibrate", nullptr, false, kOn, kOn},
    };
    for (const auto& r : rows) {
        if (r.switchName) {
            ASSERT_EQ(Set(cam, ZX_MODE_FAST, {{r.switchName, r.on}}), ZX_OK);
        }
        uint32_t fast = ~0u, quality = ~0u;
        EXPECT_EQ(cam.PropState_WRP(ZX_MODE_FAST, SZxGrabberPropertyDesc01(r.name), fast), ZX_OK) << r.name;
        EXPECT_EQ(cam.PropState_WRP(ZX_MODE_QUALITY, SZxGrabberPropertyDesc01(r.name), quality), ZX_OK) << r.name;
        EXPECT_EQ(fast, r.fast) << r.name << " on " << r.on;
        EXPECT_EQ(quality, r.quality) << r.name << " on " << r.on;
    }
    uint32_t state = 0;
    EXPECT_EQ(cam.PropState_WRP(ZX_MODE_FAST, SZxGrabberPropertyDesc01(L"Nope"), state), ZX_E_FAIL);
}

TEST(SimCameraValues, WritesReportTheirEffectsAndTheSensorCoolsByItself)
{
    CZxSimCamera cam;
    SZxStateChangeInfo info;
    EXPECT_EQ(Set(cam, 1, {{L"Cooling", false}}, &info), ZX_OK);
    ASSERT_NE(info.Find(L"Temperature"), nullptr);
    EXPECT_TRUE(info.Find(L"Temperature")->m_bStateChanged);
    EXPECT_TRUE(info.Find(L"Cooling")->m_bValueChanged);
    EXPECT_FALSE(info.m_bFormatChanged);

    // The pixel clock changes the exposure's one-frame time and the frame rate.
    info.Clear();
    EXPECT_EQ(Set(cam, 1, {{L"Exposure", 1.0}, {L"PixelClock", 48}}, &info), ZX_OK);
    EXPECT_TRUE(info.Find(L"Exposure")->m_bDefinitionChanged);
    EXPECT_TRUE(info.Find(L"FrameRate")->m_bValueChanged);
    EXPECT_DOUBLE_EQ(Get(cam, 1, L"FrameRate").GetDouble(), 60.0);

    // The sensor cools towards the quality set's target (-10) by itself.
    const double t0 = Get(cam, 2, L"SensorTemperature").GetDouble();
    const double t1 = Get(cam, 2, L"SensorTemperature").GetDouble();
    EXPECT_LT(t1, t0);
    EXPECT_GT(t1, -10.0);
}

TEST(SimCameraSettings, RoundTripByMaskAndDefaults)
{
    CZxSimCamera cam;
    SZxGrabberCameraSettings defaults;
    cam.CameraSettingsGet_UNI_WRP(defaults, ZX_SETTINGS_ALL, false);
    ASSERT_EQ(cam.ModeFQSynchronize(true), ZX_OK);
    SZxGrabberFormatValue binned;
    binned.m_wstrName = L"512 x 384 (Binning 4x4)";
    ASSERT_EQ(cam.FormatSet_WRP(1, binned, nullptr, false), ZX_OK);
    ASSERT_EQ(Set(cam, 2, {{L"Gain", 5.0}, {L"TriggerMode", L"Software"}}), ZX_OK);
    ASSERT_EQ(cam.ROISet(CZxRect(10, 20, 110, 220)), ZX_OK);
    ASSERT_EQ(cam.ROIEnable(true), ZX_OK);
    const SZxGrabberCameraSettings all = Current(cam), props = Current(cam, ZX_SETTINGS_PROPERTIES);
    EXPECT_EQ(props.m_vecPropFast.Find(L"FrameRate"), nullptr);   // measured values are no settings
    ASSERT_EQ(cam.CameraSettingsSet_UNI_WRP(props, ZX_SETTINGS_ALL), ZX_OK);   // holds mask 1 only
    EXPECT_EQ(Whole(Current(cam)), Whole(all));

    ASSERT_EQ(cam.CameraSettingsSetDefaults_UNI_WRP(), ZX_OK);
    EXPECT_EQ(Whole(Current(cam)), Whole(defaults));
    SZxGrabberPropertyValue exposure(L"Exposure");
    EXPECT_EQ(cam.PropGetDefaultSingle_WRP(ZX_MODE_QUALITY, exposure), ZX_OK);
    EXPECT_EQ(exposure.m_varValue, defaults.m_vecPropQuality.Find(L"Exposure")->m_varValue);

    ASSERT_EQ(cam.CameraSettingsSet_UNI_WRP(props, ZX_SETTINGS_ALL), ZX_OK);
    EXPECT_EQ(Get(cam, 2, L"TriggerMode").GetCZxStringW(), CZxStringW(L"Software"));
    EXPECT_EQ(Current(cam).m_fmtFast, defaults.m_fmtFast);
    ASSERT_EQ(cam.CameraSettingsSet_UNI_WRP(all, ZX_SETTINGS_ALL), ZX_OK);
    EXPECT_EQ(Whole(Current(cam)), Whole(all));
}

TEST(SimCameraSettings, NamedSettingsAddOverwriteRemoveEnumerate)
{
    CZxSimCamera cam;
    EXPECT_TRUE(Names(cam).empty());
    SZxGrabberCameraSettings s = Current(cam);
    EXPECT_EQ(cam.NamedSettingsAdd(L"Day", s), ZX_OK);
    EXPECT_EQ(cam.NamedSettingsAdd(L"Night", s), ZX_OK);
    EXPECT_EQ(cam.NamedSettingsAdd(L"", s), ZX_E_FAIL);
    s.m_vecPropFast.Find(L"Gain")->m_varValue = 8.0;
    EXPECT_EQ(cam.NamedSettingsAdd(L"Day", s), ZX_OK);   // replaces, keeps its place
    EXPECT_EQ(Names(cam), (std::vector<std::wstring>{L"Day", L"Night"}));

    // The record handed out is the stored one: writing it overwrites the entry.
    CZxStringW name;
    SZxGrabberCameraSettings* day = cam.NamedSettingsNext(name);
    EXPECT_EQ(Gain(*day), 8.0);
    cam.CameraSettingsGet_UNI_WRP(*day, ZX_SETTINGS_ALL, true);
    name.Empty();
    EXPECT_EQ(Gain(*cam.NamedSettingsNext(name)), 1.0);

    EXPECT_EQ(cam.NamedSettingsRemove(L"Day"), ZX_OK);
    EXPECT_EQ(cam.NamedSettingsRemove(L"Day"), ZX_E_FAIL);
    EXPECT_EQ(Names(cam), (std::vector<std::wstring>{L"Night"}));
}

TEST(SimCameraFormats, EnumerationCarriesFlagsAndAFormatChangingPropertyMovesTheSensorArea)
{
    CZxSimCamera cam;
    std::vector<SZxGrabberFormatValue> all;
    std::wstring flags;   // ZX_FORMAT_* flags / group, per format
    for (SZxGrabberFormatValue f; cam.FormatNext_WRP(f) == ZX_OK; all.push_back(f))
        flags += std::to_wstring(f.m_uiFlags) + L"/" + std::to_wstring(f.m_iGroup) + L" ";
    // Full, 2x2 and 4x4 binning of one readout share group 0, the centre window
    // and its 2x2 binning group 1; the full format is the quality default
    // (1 | 2 | 8), the 2x2 one the fast default (1 | 2 | 4).
    ASSERT_EQ(flags, L"11/0 7/0 1/0 1/1 1/1 2/2 ");
    EXPECT_EQ(CZxGrabberLib::GetSensorRect(all[2]), CZxRect(0, 0, 2048, 1536));
    SZxGrabberFormatValue unknown;
    unknown.m_wstrName = L"640 x 480";
    EXPECT_EQ(cam.FormatNext_WRP(unknown), ZX_E_FAIL);
    EXPECT_EQ(cam.FormatSet_WRP(1, unknown, nullptr, false), ZX_E_FAIL);

    SZxGrabberPropertyDesc01 desc;
    ASSERT_EQ(cam.PropGetDesc_WRP(1, L"SensorMode", desc), ZX_OK);
    EXPECT_TRUE(desc.m_uiFlags & ZX_PROPFLAG_CHANGES_FORMAT);
    const SZxGrabberCameraSettings before = Current(cam);
    SZxGrabberCameraSettings s = before;
    s.m_vecPropFast.Find(L"SensorMode")->m_varValue = 1;
    SZxGrabberFormatValue predicted;
    ASSERT_EQ(cam.FormatGetFromSettings_WRP(1, s, predicted), ZX_OK);
    EXPECT_EQ(predicted.m_wstrName, before.m_fmtFast.m_wstrName);
    EXPECT_NE(CZxGrabberLib::GetSensorRect(predicted), CZxGrabberLib::GetSensorRect(before.m_fmtFast));
    EXPECT_EQ(Whole(Current(cam)), Whole(before));   // asking changed nothing
    SZxStateChangeInfo info;
    ASSERT_EQ(Set(cam, 1, {{L"SensorMode", 1}}, &info), ZX_OK);
    EXPECT_TRUE(info.m_bFormatChanged);
    const SZxGrabberCameraSettings after = Current(cam);
    EXPECT_EQ(after.m_fmtFast, predicted);
    EXPECT_EQ(after.m_fmtQuality, before.m_fmtQuality);   // quality set untouched
}

TEST(SimCameraCommands, AsyncRunsOnItsOwnThreadUntilItsEndOrAnAbortSyncOnesReportTheirEffects)
{
    CZxSimCamera cam;
    SZxGrabberCommandDesc01 desc;
    ASSERT_EQ(cam.CommandGetDesc_WRP(L"Calibrate", desc), ZX_OK);
    EXPECT_TRUE(desc.m_uiFlags & ZX_COMMAND_ASYNC);
    CZxStringW text;
    auto waitFor = [&](double until) { return zxtest::WaitForProgress(cam, L"Calibrate", until, &text); };
    cam.SetCommandDuration(50);
    cam.HoldCommandAt(0.5);
    SZxGrabberCommandValue cmd(L"Calibrate");
    ASSERT_EQ(cam.Command_WRP(cmd, true, nullptr, false, nullptr), ZX_OK);
    EXPECT_EQ(cam.Command_WRP(cmd, true, nullptr, false, nullptr), ZX_E_BUSY);
    ASSERT_TRUE(waitFor(0.5));
    EXPECT_STREQ(text, L"Calibrating 50%");
    cam.HoldCommandAt(-1);
    ASSERT_TRUE(waitFor(-1));
    EXPECT_STREQ(text, L"Done");

    cam.SetCommandDuration(60000);
    ASSERT_EQ(cam.Command_WRP(cmd, true, nullptr, false, nullptr), ZX_OK);
    EXPECT_EQ(cam.Command_Abort_WRP(), ZX_OK);
    ASSERT_TRUE(waitFor(-1));
    EXPECT_STREQ(text, L"Aborted");
    double progress = 0;
    EXPECT_EQ(cam.Command_Status_WRP(L"Nope", progress, text), ZX_E_FAIL);
    // A camera destroyed while its command runs stops the command's thread.
    auto running = std::make_unique<CZxSimCamera>();
    running->SetCommandDuration(60000);
    ASSERT_EQ(running->Command_WRP(cmd, true, nullptr, false, nullptr), ZX_OK);
    running.reset();

    // Synchronous commands report their effects and may hand out a frame.
    SZxGrabberCommandValue preset(L"ApplyExposurePreset", CZxVariant(3));
    SZxStateChangeInfo info;
    ASSERT_EQ(cam.Command_WRP(preset, false, &info, false, nullptr), ZX_OK);
    EXPECT_EQ(Get(cam, 1, L"Exposure").GetDouble(), 100.0);
    EXPECT_TRUE(info.Find(L"Exposure")->m_bValueChanged);
    preset.m_varValue = 5;
    EXPECT_EQ(cam.Command_WRP(preset, false, nullptr, false, nullptr), ZX_E_FAIL);

    SZxGrabberCommandValue snap(L"Snap");
    CZxGrabberSample01* raw = nullptr;
    ASSERT_EQ(cam.Command_WRP(snap, false, nullptr, false, &raw), ZX_OK);
    ASSERT_TRUE(raw);
    EXPECT_EQ(Shape(*std::unique_ptr<CZxGrabberSample01>(raw)), "1024x768, 12x1");
}

TEST(SimCameraDriver, PredefinedROIsAndTheROIQuery)
{
    CZxSimCamera cam;
    CZxVariant rois;
    ASSERT_EQ(cam.UserParamGet(L"PredefinedROIArray", rois), ZX_OK);
    ASSERT_GT(rois.GetCount(), 0);
    EXPECT_EQ(rois[0][L"m_iWidth"].GetZx_int32(), 640);
    EXPECT_TRUE(cam.CameraCapabilityIsSupported(ZX_CAMCAP_PREDEFINED_ROIS));
    SZxUserParam_DefineRoiQuery q;
    EXPECT_EQ(cam.UserParamQuery(L"DefineRoiQuery", &q, sizeof q), ZX_OK);
    EXPECT_TRUE(q.m_bAnswer);
    EXPECT_EQ(cam.UserParamQuery(L"DefineRoiQuery", &q, 4), ZX_E_FAIL);
}

TEST(SimCameraFailNext, FailsTheNextCallOfItsOperationOnlyOnceAndChangesNothing)
{
    CZxSimCamera cam;
    SZxGrabberFormatValue format;
    // One call of each kind: a write, a property read and a format read.
    const struct {
        const wchar_t* op;
        std::function<int()> call;
    } ops[] = {
        {L"PropSet_WRP", [&] { return Set(cam, ZX_MODE_FAST, {{L"Gain", 3.0}}); }},
        {L"PropGetSingle_WRP", [&] { SZxGrabberPropertyValue v(L"Gain"); return cam.PropGetSingle_WRP(1, v); }},
        {L"FormatGet_WRP", [&] { return cam.FormatGet_WRP(ZX_MODE_FAST, format); }},
    };
    for (const auto& o : ops) {
        cam.FailNext(o.op, ZX_E_WINDOW);
        cam.FailNext(L"NoSuchOperation", ZX_E_FAIL);   // fails nothing that is called
        EXPECT_EQ(o.call(), ZX_E_WINDOW) << o.op;
        EXPECT_EQ(Get(cam, ZX_MODE_FAST, L"Gain").GetDouble(), 1.0) << o.op;   // a failed write left the value
        EXPECT_EQ(o.call(), ZX_OK) << o.op << ": the failure was not one-shot";
        Set(cam, ZX_MODE_FAST, {{L"Gain", 1.0}});
    }
}

// Live acceleration: the fast set's frames run shorter (by the factor, or capped
// at the speed-up time when that is on) and keep their brightness; the quality
// set's do not change.
TEST(SimCameraValues, LiveAccelerationShortensLiveFramesOnlyAndKeepsTheirBrightness)
{
    CZxSimCamera cam;
    cam.Sensor().SetReadNoise(0.0);
    cam.Sensor().SetSceneBrightness(0.3 / 400.0);   // mid-grey at 400 ms, far from clipping
    ASSERT_EQ(Set(cam, 1, {{L"Exposure", 400.0}, {L"PixelClock", 48}}), ZX_OK);   // up to 60 frames/s
    ASSERT_EQ(Set(cam, 2, {{L"Exposure", 400.0}, {L"PixelClock", 48}}), ZX_OK);
    const double plain = Mean(cam.Snap());
    ASSERT_GT(plain, 1.0);
    const struct {
        int speedUp, time;
        double fastRate;
    } cases[] = {{1, 0, 2.5}, {5, 0, 12.5}, {20, 0, 50.0}, {100, 0, 60.0}, {20, 100, 10.0}, {1, 250, 4.0}};
    for (const auto& k : cases) {
        SCOPED_TRACE(testing::Message() << k.speedUp << "x, " << k.time << " ms");
        ASSERT_EQ(Set(cam, 1, {{L"LiveSpeedUp", k.speedUp}, {L"SpeedUpTime", k.time}}), ZX_OK);
        EXPECT_DOUBLE_EQ(Get(cam, 1, L"FrameRate").GetDouble(), k.fastRate);
        EXPECT_DOUBLE_EQ(Get(cam, 2, L"FrameRate").GetDouble(), 2.5) << "the capture set keeps its exposure";
        // Within 10 %: at 100x the amplified shot noise clips at black and lifts nothing.
        EXPECT_NEAR(Mean(cam.Snap()), plain, plain * 0.1) << "gain makes up for the shorter exposure";
    }
}
