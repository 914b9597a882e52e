// zxdemo: the simulated camera driver as the setup UI sees it: units and
// cameras, formats, the property table read through the typed values, a
// format-changing write, named settings, an asynchronous command and a frame.
#include <cstdio>
#include <chrono>
#include <memory>
#include <thread>
#include <string>

#include "demo.h"
#include "zx/property.h"
#include "zxhost/exposure.h"
#include "zxsim/grabber.h"

namespace {

// Wide text as UTF-8 for the console.
std::string U8(const std::wstring& w)
{
    std::string s;
    for (wchar_t wc : w) {
        const uint32_t c = static_cast<uint32_t>(wc);
        if (c < 0x80) {
            s += char(c);
        } else if (c < 0x800) {
            s += char(0xC0 | (c >> 6));
            s += char(0x80 | (c & 0x3F));
        } else {
            s += char(0xE0 | ((c >> 12) & 0x0F));
            s += char(0x80 | ((c >> 6) & 0x3F));
            s += char(0x80 | (c & 0x3F));
        }
    }
    return s;
}

// The property's current value as the UI would show it, through the typed value
// class its definition calls for.
std::wstring Shown(const SZxGrabberPropertyDesc01& desc, const CZxVariant& value)
{
    const CZxVariantRunType type = desc.varValDefinition.GetRunType();
    if (type == CZxVariantRunType(L"RZxRangeDoubleExposure"))
        return ZX_ExposureToText(value.GetDouble(), desc.varValDefinition[L"m_dOneFrameExp"].GetDouble()).Std();
    if (type == CZxVariantRunType(L"RZxRangeDouble") || type == CZxVariantRunType(L"RZxRangeDoubleList")) {
        CZxRangeDoublePropertyValue v;
        v.Set(desc, value);
        return v.m_wstrText.Std();
    }
    if (type == CZxVariantRunType(L"RZxRangeInt32")) {
        CZxRangeInt32PropertyValue v;
        v.Set(desc, value);
        return v.m_wstrText.Std();
    }
    if (type == CZxVariantRunType(L"RZxList") && desc.varValDefinition[L"m_list"][0].Search(L"m_iValue")) {
        CZxListTextInt32PropertyValue v;
        v.Set(desc, value);
        return v.m_wstrText.Std();
    }
    if (value.GetKind() == CZxVariant::EKind::Bool) {
        CZxBoolPropertyValue v;
        v.Set(value);
        return v.m_wstrText.Std();
    }
    if (value.GetKind() == CZxVariant::EKind::Double) {
        CZxDoublePropertyValue v;
        v.Set(value);
        return v.m_wstrText.Std();
    }
    if (value.GetKind() == CZxVariant::EKind::Int32) {
        CZxInt32PropertyValue v;
        v.Set(value);
        return v.m_wstrText.Std();
    }
    return L"\"" + value.GetCZxStringW().Std() + L"\"";
}

void ShowProperties(CZxGenProvider_Low& cam)
{
    const wchar_t* names[] = {L"Exposure", L"Gain", L"Offset", L"Gamma", L"Cooling", L"Temperature",
                              L"SensorTemperature", L"FrameRate", L"PixelClock", L"TriggerMode",
                              L"ReadoutMode", L"SensorMode", L"LightSource"};
    std::printf("  %-20s %-24s %-6s %s\n", "label", "definition", "state", "fast set");
    for (const wchar_t* name : names) {
        SZxGrabberPropertyDesc01 desc;
        SZxGrabberPropertyValue value(name);
        uint32_t state = 0;
        if (cam.PropGetDesc_WRP(ZX_MODE_FAST, name, desc) || cam.PropGetSingle_WRP(ZX_MODE_FAST, value) ||
            cam.PropState_WRP(ZX_MODE_FAST, desc, state))
            continue;
        std::printf("  %-20s %-24s 0x%-4x %s\n", U8(desc.m_wstrText.Std()).c_str(),
                    U8(desc.varValDefinition.GetRunType().GetName()).c_str(), state,
                    U8(Shown(desc, value.m_varValue)).c_str());
    }
}

} // namespace

void DemoCamera()
{
    std::printf("== The simulated camera driver ==\n");
    CZxSimGrabber grabber;
    auto unit = std::make_unique<SZxGrabberHWUnit>();
    while (grabber.HWUnitNext_UNI_WRP(*unit) == 0) {
        std::printf("unit %s (%s)\n", U8(unit->m_wszName).c_str(), U8(unit->m_wszConnectionString).c_str());
        SZxGrabberCameraDesc c;
        while (grabber.DriverCameraNext_UNI_WRP(*unit, c) == 0)
            std::printf("  camera %-16s %-22s %-6s %s\n", U8(c.m_wszName).c_str(), U8(c.m_wszDisplayNameFull).c_str(),
                        c.m_bMono ? "mono" : "colour", c.m_bConnected ? "connected" : "unknown");
    }

    CZxSimCamera& cam = *grabber.Camera(0);
    std::printf("formats (F fast, Q quality, lower case = default of that set):\n");
    SZxGrabberFormatValue f;
    while (cam.FormatNext_WRP(f) == 0) {
        const CZxRect s = CZxGrabberLib::GetSensorRect(f);
        std::printf("  %-32s %c%c%c%c binning %.0f group %d, sensor %d,%d-%d,%d, %u bit\n",
                    U8(f.m_wstrName.Std()).c_str(), f.m_uiFlags & ZX_FORMAT_FAST ? 'F' : '-',
                    f.m_uiFlags & ZX_FORMAT_QUALITY ? 'Q' : '-', f.m_uiFlags & ZX_FORMAT_DEFAULT_FAST ? 'f' : '-',
                    f.m_uiFlags & ZX_FORMAT_DEFAULT_QUALITY ? 'q' : '-', f.m_dBinning, f.m_iGroup, s.left, s.top,
                    s.right, s.bottom, f.m_uiBits);
    }
    std::printf("properties (state 0x1 available, 0x2 read-only, 0x8 changing by itself):\n");
    ShowProperties(cam);

    // A user types an exposure; the text goes to the driver as milliseconds.
    SZxGrabberPropertyDesc01 exposure;
    cam.PropGetDesc_WRP(ZX_MODE_FAST, L"Exposure", exposure);
    bool ok = false;
    const double ms = ZX_TextToExposure(L"250us", -1.0, exposure.varValDefinition[L"m_dMin"].GetDouble(),
                                        exposure.varValDefinition[L"m_dMax"].GetDouble(), &ok);
    CZxVector_SZxGrabberPropertyValue values(128);
    values.Add(SZxGrabberPropertyValue(L"Exposure", ms));
    values.Add(SZxGrabberPropertyValue(L"SensorMode", 1));
    SZxStateChangeInfo info;
    cam.PropSet_WRP(ZX_MODE_FAST, values, &info, false);
    std::printf("typed \"250us\" -> %.3f ms (ok %d) and Sensor Area = Center Half: format changed %d, changed:",
                ms, ok, info.m_bFormatChanged);
    for (const auto& p : info.m_vecProps)
        std::printf(" %s%s%s%s", U8(p.m_wszName).c_str(), p.m_bValueChanged ? "[value]" : "",
                    p.m_bDefinitionChanged ? "[definition]" : "", p.m_bStateChanged ? "[state]" : "");
    std::printf("\n");

    SZxGrabberCameraSettings settings;
    cam.CameraSettingsGet_UNI_WRP(settings, ZX_SETTINGS_ALL, true);
    cam.NamedSettingsAdd(L"Short exposure", settings);
    cam.CameraSettingsSetDefaults_UNI_WRP();
    CZxStringW name;
    SZxGrabberCameraSettings* stored = cam.NamedSettingsNext(name);
    cam.CameraSettingsSet_UNI_WRP(*stored, ZX_SETTINGS_ALL);
    SZxGrabberPropertyValue back(L"Exposure");
    cam.PropGetSingle_WRP(ZX_MODE_FAST, back);
    std::printf("defaults, then named setting \"%s\" loaded: exposure %s\n", U8(name.Std()).c_str(),
                U8(ZX_ExposureToText(back.m_varValue.GetDouble(), -1.0).Std()).c_str());

    // The calibration runs on the camera's own thread; the driver polls its status.
    SZxGrabberCommandValue calibrate(L"Calibrate");
    cam.SetCommandDuration(400);
    cam.Command_WRP(calibrate, true, nullptr, false, nullptr);
    std::printf("dark calibration:");
    double progress = 0.0;
    CZxStringW status;
    do {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        cam.Command_Status_WRP(L"Calibrate", progress, status);
        std::printf(" %s", U8(status.Std()).c_str());
    } while (progress >= 0.0);
    std::printf("\n");

    std::unique_ptr<CZxGrabberSample01> frame(cam.Snap());
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    frame->GetPicBufNumbers(&w, &h, &bits, &comp);
    std::printf("frame %u x %u, %u bit, %u component(s); %zu provider calls logged, the last: %s\n\n", w, h, bits,
                comp, cam.CallLog().size(), U8(cam.CallLog().back()).c_str());
}
