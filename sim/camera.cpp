// The simulated camera itself: construction, identity, the call log with its
// injected failures, and the before/after snapshot that reports state changes.
#include <algorithm>

#include "camera_internal.h"
#include "zx/status.h"
#include "zxhost/system.h"

namespace simcam {

std::wstring VariantText(const CZxVariant& v)
{
    switch (v.GetKind()) {
    case CZxVariant::EKind::Null: return L"null";
    case CZxVariant::EKind::Bool: return v.GetBool() ? L"true" : L"false";
    case CZxVariant::EKind::Int32: return CZxStringW::Formatted(L"%d", v.GetZx_int32()).Std();
    case CZxVariant::EKind::Double: return CZxStringW::Formatted(L"%f", v.GetDouble()).Std();
    case CZxVariant::EKind::String: return L"\"" + v.GetCZxStringW().Std() + L"\"";
    case CZxVariant::EKind::Array: return CZxStringW::Formatted(L"[%d]", v.GetCount()).Std();
    case CZxVariant::EKind::Record: break;
    }
    std::wstring s = L"{";
    for (int i = 0; i < v.GetMemberCount(); ++i) {
        if (i)
            s += L", ";
        s += v.GetMemberName(i);
        s += L"=" + VariantText(v[v.GetMemberName(i)]);
    }
    return s + L"}";
}

std::wstring Num(long long n) { return CZxStringW::Formatted(L"%lld", n).Std(); }

} // namespace simcam

SZxGrabberCameraDesc CZxSimCamera::DefaultCamera()
{
    SZxGrabberCameraDesc c;
    ZX_CopyBoundedW(c.m_wszName, 64, L"SIM-M2048-0001");
    ZX_CopyBoundedW(c.m_wszDisplayName, 64, L"Sim M2048");
    ZX_CopyBoundedW(c.m_wszDisplayNameFull, 128, L"Sim M2048 (SN 0001)");
    ZX_CopyBoundedW(c.m_wszFamily, 64, L"FamilySim");
    c.m_bMono = true;
    c.m_bConnected = true;
    return c;
}

CZxSimCamera::CZxSimCamera(const SZxGrabberCameraDesc& camera, int instance, CZxGenericProviderGrabber* grabber)
    : m_camera(camera), m_instance(instance), m_pGrabber(grabber),
      m_sensor(kSimSensorWidth, kSimSensorHeight, 1u + static_cast<uint32_t>(instance))
{
    // Binned pixels sum their sites: 2x2 collects four times the signal.
    m_sensor.SetModes({{1, 1.0}, {2, 4.0}, {4, 16.0}});
    m_sensor.SetSceneBrightness(0.006);   // the default live exposure fills about half the range
    m_sensor.SetResponse(1.0, 0.8, 0.55);
    BuildProperties();
    BuildFormats();
    BuildCommands();
    ResetToDefaults();

    auto roi = [](int l, int t, int w, int h, const wchar_t* caption) {
        CZxVariant r;
        r[L"m_iLeft"] = l;
        r[L"m_iTop"] = t;
        r[L"m_iWidth"] = w;
        r[L"m_iHeight"] = h;
        if (caption)
            r[L"m_wsCaption"] = caption;
        return r;
    };
    m_varPredefinedROIs = CZxVariant::MakeArray();
    m_varPredefinedROIs.Add(roi(0, 0, 640, 480, nullptr));
    m_varPredefinedROIs.Add(roi(512, 384, 1024, 768, L"Center"));
    m_varPredefinedROIs.Add(roi(0, 0, kSimSensorWidth, kSimSensorHeight, L"Full Sensor"));
}

CZxSimCamera::~CZxSimCamera() { StopCommand(); }

// ---- Bookkeeping -------------------------------------------------------------------

void CZxSimCamera::Log(const std::wstring& line) { m_log.push_back(line); }

int CZxSimCamera::CallCount(const wchar_t* operation) const
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    const std::wstring prefix = std::wstring(operation ? operation : L"") + L"(";
    return static_cast<int>(std::count_if(m_log.begin(), m_log.end(), [&](const std::wstring& l) {
        return l.compare(0, prefix.size(), prefix) == 0;
    }));
}

void CZxSimCamera::FailNext(const wchar_t* operation, int status)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    if (operation)
        m_failNext[operation] = status;
}

CZxSimCamera::COperation::COperation(CZxSimCamera& camera, const wchar_t* name, const std::wstring& arguments)
    : m_camera(camera), m_name(name), m_lock(camera.m_lock)
{
    m_camera.Log(std::wstring(name) + L"(" + arguments + L")");
}

std::optional<int> CZxSimCamera::COperation::Planned()
{
    auto it = m_camera.m_failNext.find(m_name);
    if (it == m_camera.m_failNext.end())
        return std::nullopt;
    const int status = it->second;
    m_camera.m_failNext.erase(it);
    m_camera.Log(L"  -> injected failure " + Num(status));
    return status;
}

// Mode 2 is the quality set, mode 1 the fast set; any other mode means the set in use.
int CZxSimCamera::SetIndex(uint32_t mode) const
{
    if (mode != ZX_MODE_FAST && mode != ZX_MODE_QUALITY)
        mode = m_mode;
    return mode == ZX_MODE_QUALITY ? 1 : 0;
}

CZxSimCamera::SSnapshot CZxSimCamera::Snapshot() const
{
    SSnapshot snap;
    for (int s = 0; s < kSets; ++s) {
        for (const auto& p : m_props) {
            auto& e = snap.props[s][p.desc.m_wstrName.Std()];
            e.state = State(p, s);
            e.definition = Definition(p, s);
            e.value = Value(p, s);
        }
        snap.format[s] = CurrentFormat(s);
    }
    return snap;
}

void CZxSimCamera::Diff(const SSnapshot& before, SZxStateChangeInfo& info)
{
    const SSnapshot after = Snapshot();
    for (int s = 0; s < kSets; ++s) {
        const SZxGrabberFormatValue &a = before.format[s], &b = after.format[s];
        if (a.m_wstrName != b.m_wstrName || a.m_rcRect != b.m_rcRect)
            info.m_bFormatChanged = true;
        else if (a != b)
            info.m_bFormatValuesChanged = true;
        for (const auto& p : m_props) {
            const auto& x = before.props[s].at(p.desc.m_wstrName.Std());
            const auto& y = after.props[s].at(p.desc.m_wstrName.Std());
            const bool st = x.state != y.state, def = x.definition != y.definition, val = x.value != y.value;
            if (st || def || val)
                info.Add(p.desc.m_wstrName, st, def, val);
        }
    }
}

// ---- Identity and host integration ------------------------------------------------------

CZxStringW CZxSimCamera::GrabberDriverGetClassName() { return ZXSIM_DRIVER_CLASS; }
CZxStringW CZxSimCamera::GrabberDriverGetClassNameLogical() { return ZXSIM_DRIVER_CLASS; }
CZxStringW CZxSimCamera::GrabberDriverNameLocalisedGet()
{
    return ZX_GetTranslation(L"Simulated Camera", L"inputsetupcontrols");
}

int CZxSimCamera::InputSetupModelessHide()
{
    const COperation op(*this, L"InputSetupModelessHide");
    return ZX_OK;
}

int CZxSimCamera::GetSecGrabberInstance() { return m_instance; }
CZxGenericProviderGrabber* CZxSimCamera::GetGrabber() { return m_pGrabber; }

void CZxSimCamera::SetCamera(const SZxGrabberCameraDesc& camera)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    m_camera = camera;
    BuildFormats();
}
