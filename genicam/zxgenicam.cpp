// zxgenicam: GenICam devices as the library sees them, and the library's auto
// exposure running on one of them.
//
//   zxgenicam [--fake | --interface NAME] [--device ID] [--list]
//   zxgenicam [--fake | --interface NAME] [--device ID] --auto-exposure [--frames N] [--start-ms MS]
//             [--format PIXELFORMAT]
// --fake is --interface Fake: the in-process fake camera, nothing sent over the network.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "zx/status.h"
#include "zxgenicam/aeloop.h"

namespace {

struct SArgs {
    bool autoExposure = false;
    std::string interface, device, format;
    long frames = 30;
    double startMs = -1.0;
};

int Usage(const char* problem)
{
    std::fprintf(stderr, "zxgenicam: %s\n", problem);
    std::fprintf(stderr,
                 "usage: zxgenicam [--fake | --interface Fake|USB3Vision|GigEVision] [--device ID] [--list]\n"
                 "       zxgenicam [--fake | --interface NAME] [--device ID] --auto-exposure [--frames N]\n"
                 "                 [--start-ms MS] [--format PIXELFORMAT]\n");
    return 2;
}

bool ParseNumber(const char* text, double& out)
{
    char* end = nullptr;
    errno = 0;
    out = std::strtod(text, &end);
    return end != text && *end == '\0' && errno == 0;
}

std::string U8(const std::wstring& w)
{
    std::string s;
    for (wchar_t c : w)
        s += c > 0 && c < 0x80 ? char(c) : '?';
    return s;
}

const char* KindName(EZxGenICamKind k)
{
    switch (k) {
    case EZxGenICamKind::Integer: return "Integer";
    case EZxGenICamKind::Float: return "Float";
    case EZxGenICamKind::Exposure: return "Float(exp)";
    case EZxGenICamKind::Enumeration: return "Enumeration";
    case EZxGenICamKind::Boolean: return "Boolean";
    case EZxGenICamKind::Command: return "Command";
    case EZxGenICamKind::String: return "String";
    }
    return "?";
}

std::string Limits(const CZxVariant& d)
{
    char buf[96] = "-";
    const std::wstring t = d.GetRunType().GetName();
    if (t == L"RZxRangeInt32")
        std::snprintf(buf, sizeof buf, "%d..%d step %d", d[L"m_iMin"].GetZx_int32(), d[L"m_iMax"].GetZx_int32(),
                      d[L"m_iStep"].GetZx_int32());
    else if (d.Search(L"m_dMin"))
        std::snprintf(buf, sizeof buf, "%g..%g step %g", d[L"m_dMin"].GetDouble(), d[L"m_dMax"].GetDouble(),
                      d[L"m_dStep"].GetDouble());
    else if (t == L"RZxList") {
        std::string s;
        for (int i = 0; i < d[L"m_list"].GetCount(); ++i)
            s += (i ? "|" : "") + U8(d[L"m_list"][i][L"m_wstrValue"].GetCZxStringW().Std());
        return s;
    }
    return buf;
}

std::string ValueText(const CZxVariant& v)
{
    char buf[64];
    switch (v.GetKind()) {
    case CZxVariant::EKind::Bool: return v.GetBool() ? "true" : "false";
    case CZxVariant::EKind::Int32: std::snprintf(buf, sizeof buf, "%d", v.GetZx_int32()); return buf;
    case CZxVariant::EKind::Double: std::snprintf(buf, sizeof buf, "%g", v.GetDouble()); return buf;
    case CZxVariant::EKind::String: return "\"" + U8(v.GetCZxStringW().Std()) + "\"";
    default: return "-";
    }
}

std::string StateText(uint32_t s)
{
    if (!(s & ZX_PROPSTATE_AVAILABLE))
        return "unavailable";
    std::string t = s & ZX_PROPSTATE_READONLY ? "read-only" : "writable";
    return s & ZX_PROPSTATE_CHANGING ? t + ",auto" : t;
}

void ListFeatures(CZxGenICamCamera& cam)
{
    std::printf("  %-24s %-11s %-22s %-30s %-5s %-16s %-9s %s\n", "feature", "type", "definition", "limits", "unit",
                "state", "family", "value");
    for (const SZxGenICamFeature& f : cam.FeatureList()) {
        SZxGrabberPropertyDesc01 desc(f.m_name.c_str());
        uint32_t state = 0;
        cam.PropState_WRP(ZX_MODE_FAST, desc, state);
        if (f.m_kind == EZxGenICamKind::Command) {
            std::printf("  %-24s %-11s %-22s %-30s %-5s %-16s %-9s %s\n", U8(f.m_name).c_str(), "Command", "-", "-",
                        "-", StateText(state).c_str(), "command", "-");
            continue;
        }
        SZxGrabberPropertyValue value(f.m_name.c_str());
        if (cam.PropGetDesc_WRP(ZX_MODE_FAST, f.m_name.c_str(), desc) != ZX_OK ||
            cam.PropGetSingle_WRP(ZX_MODE_FAST, value) != ZX_OK) {
            std::printf("  %-24s %-11s (unreadable)\n", U8(f.m_name).c_str(), KindName(f.m_kind));
            continue;
        }
        std::printf("  %-24s %-11s %-22s %-30s %-5s %-16s %-9s %s\n", U8(f.m_name).c_str(), KindName(f.m_kind),
                    U8(desc.varValDefinition.GetRunType().GetName()).c_str(), Limits(desc.varValDefinition).c_str(),
                    f.m_unit.empty() ? "-" : U8(f.m_unit).c_str(), StateText(state).c_str(),
                    U8(ZX_GenICamControlFamily(desc)).c_str(), ValueText(value.m_varValue).c_str());
    }
    std::printf("  formats:");
    SZxGrabberFormatValue fmt;
    while (cam.FormatNext_WRP(fmt) == ZX_OK)
        std::printf(" [%s %dx%d %u bit %s]", U8(fmt.m_wstrName.Std()).c_str(), fmt.m_rcRect.Width(),
                    fmt.m_rcRect.Height(), fmt.m_uiBits, fmt.m_uiComp == 3 ? "colour" : "mono");
    std::printf("\n");
}

int Write(CZxGenICamCamera& cam, const std::wstring& name, const CZxVariant& v)
{
    CZxVector_SZxGrabberPropertyValue values(1);
    values.Add(SZxGrabberPropertyValue(name.c_str(), v));
    return cam.PropSet_WRP(ZX_MODE_FAST, values, nullptr, false);
}

int AutoExposure(CZxGenICamCamera& cam, const SArgs& a)
{
    if (!a.format.empty() && Write(cam, L"PixelFormat", CZxVariant(std::wstring(a.format.begin(), a.format.end()).c_str()))) {
        std::fprintf(stderr, "zxgenicam: the device refuses pixel format %s\n", a.format.c_str());
        return 1;
    }
    if (a.startMs >= 0.0 && Write(cam, cam.ExposureName(), a.startMs)) {
        std::fprintf(stderr, "zxgenicam: the device refuses an exposure of %g ms\n", a.startMs);
        return 1;
    }
    CZxGenICamAELoop loop(cam);
    int status = loop.Configure();
    if (status == ZX_OK)
        status = cam.StartLive();
    if (status != ZX_OK) {
        std::fprintf(stderr, "zxgenicam: cannot run auto exposure (status %d) %s\n", status, cam.LastError().c_str());
        return 1;
    }
    std::printf("frame exposure/ms   gain       mean  display-mean good\n");
    std::vector<SZxGenICamAEStep> steps;
    for (long i = 0; i < a.frames; ++i) {
        SZxGenICamAEStep s;
        if ((status = loop.Step(2000, s)) != ZX_OK)
            break;
        steps.push_back(s);
        std::printf("%5ld %11.3f %6.2f %10.1f %13.1f %4s\n", i, s.m_dExposure, s.m_dGain, s.m_dMean, s.m_dDisplayMean,
                    s.m_bExposureGood ? "yes" : "no");
    }
    cam.StopLive();
    if (status != ZX_OK) {
        std::fprintf(stderr, "zxgenicam: the loop ended with status %d %s\n", status, cam.LastError().c_str());
        return 1;
    }
    const int settled = ZxGenICamFramesToGood(steps);
    if (settled < 0)
        std::printf("not settled within %ld frames\n", a.frames);
    else
        std::printf("settled from frame %d on\n", settled);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    SArgs a;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto value = [&](const char* what) -> const char* {
            if (i + 1 >= argc) {
                Usage((arg + " needs " + what).c_str());
                return nullptr;
            }
            return argv[++i];
        };
        double x = 0.0;
        if (arg == "--fake") {
            a.interface = "Fake";
        } else if (arg == "--interface") {
            const char* v = value("an interface name");
            if (!v)
                return 2;
            a.interface = v;
        } else if (arg == "--list") {
            a.autoExposure = false;
        } else if (arg == "--auto-exposure") {
            a.autoExposure = true;
        } else if (arg == "--device") {
            const char* v = value("a device id");
            if (!v)
                return 2;
            a.device = v;
        } else if (arg == "--format") {
            const char* v = value("a pixel format");
            if (!v)
                return 2;
            a.format = v;
        } else if (arg == "--frames") {
            const char* v = value("a count");
            if (!v)
                return 2;
            if (!ParseNumber(v, x) || x < 1 || x > 100000 || x != long(x))
                return Usage("--frames needs a whole number from 1 to 100000");
            a.frames = long(x);
        } else if (arg == "--start-ms") {
            const char* v = value("milliseconds");
            if (!v)
                return 2;
            if (!ParseNumber(v, x) || x <= 0)
                return Usage("--start-ms needs a positive number of milliseconds");
            a.startMs = x;
        } else {
            return Usage(("unknown argument " + arg).c_str());
        }
    }
    if (!a.interface.empty() && CZxGenICamCamera::UseOnlyInterface(a.interface.c_str()) != ZX_OK)
        return Usage(("unknown interface " + a.interface).c_str());
    const std::vector<std::string> ids = CZxGenICamCamera::ListDevices();
    // A device named by its address opens without being listed.
    if (ids.empty() && a.device.empty()) {
        std::fprintf(stderr, "zxgenicam: no GenICam device found%s\n", a.interface == "Fake" ? "" : " (--fake: the fake camera)");
        return 1;
    }
    std::vector<std::string> chosen = a.device.empty() ? ids : std::vector<std::string>{a.device};
    if (a.autoExposure)
        chosen.resize(1);
    for (const std::string& id : chosen) {
        CZxGenICamCamera cam;
        if (cam.Open(id.c_str()) != ZX_OK) {
            std::fprintf(stderr, "zxgenicam: cannot open device %s: %s\n", id.c_str(), cam.LastError().c_str());
            return 1;
        }
        SZxGrabberCameraDesc desc;
        cam.CameraGet_WRP(desc);
        std::printf("device %s: %s\n", id.c_str(), U8(desc.m_wszDisplayNameFull).c_str());
        if (a.autoExposure)
            return AutoExposure(cam, a);
        ListFeatures(cam);
    }
    return 0;
}
