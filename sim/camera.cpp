// The simulated camera's provider operations.
#include <algorithm>
#include <cmath>

#include "camera_internal.h"
#include "zx/status.h"
#include "zxhost/exposure.h"

namespace {

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

// The presets of the "ApplyExposurePreset" command, in milliseconds.
const double kPresets[] = {0.1, 1.0, 10.0, 100.0, 1000.0};

} // namespace

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

CZxSimCamera::~CZxSimCamera() = default;

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

bool CZxSimCamera::Failing(const wchar_t* operation, int& status)
{
    auto it = m_failNext.find(operation);
    if (it == m_failNext.end())
        return false;
    status = it->second;
    m_failNext.erase(it);
    Log(L"  -> injected failure " + Num(status));
    return true;
}

// Mode 2 is the quality set, mode 1 the fast set; any other mode means the set in use.
int CZxSimCamera::SetIndex(uint32_t mode) const
{
    if (mode != ZX_MODE_FAST && mode != ZX_MODE_QUALITY)
        mode = m_mode;
    return mode == ZX_MODE_QUALITY ? 1 : 0;
}

void CZxSimCamera::ResetToDefaults()
{
    for (const auto& p : m_props)
        if (p.bSetting) {
            Store(p, 0, p.defFast);
            Store(p, 1, p.defQuality);
        }
    for (int s = 0; s < kSets; ++s)
        m_format[s] = DefaultFormat(s).m_wstrName.Std();
    m_rcROI = CZxRect();
    m_bROIEnabled = false;
    m_bSynchronized = false;
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

// ---- Properties --------------------------------------------------------------------

int CZxSimCamera::PropGetDesc_WRP(uint32_t mode, const wchar_t* name, SZxGrabberPropertyDesc01& desc)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"PropGetDesc_WRP(" + Num(mode) + L", " + (name ? name : L"null") + L")");
    int status = 0;
    if (Failing(L"PropGetDesc_WRP", status))
        return status;
    const SProperty* p = FindProperty(name);
    if (!p)
        return ZX_E_FAIL;
    desc = p->desc;
    desc.varValDefinition = Definition(*p, SetIndex(mode));
    return ZX_OK;
}

int CZxSimCamera::PropGetSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"PropGetSingle_WRP(" + Num(mode) + L", " + value.m_wstrName.Std() + L")");
    int status = 0;
    if (Failing(L"PropGetSingle_WRP", status))
        return status;
    const SProperty* p = FindProperty(value.m_wstrName);
    if (!p)
        return ZX_E_FAIL;
    const int set = SetIndex(mode);
    if (p->desc.m_wstrName.Std() == L"SensorTemperature") {
        // The sensor settles a quarter of the way to its target on every reading.
        const double target = NumberOf(L"Cooling", set) != 0 ? NumberOf(L"Temperature", set) : 25.0;
        m_dSensorTemperature += (target - m_dSensorTemperature) * 0.25;
    }
    value.m_varValue = Value(*p, set);
    return ZX_OK;
}

int CZxSimCamera::PropGetDefaultSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"PropGetDefaultSingle_WRP(" + Num(mode) + L", " + value.m_wstrName.Std() + L")");
    int status = 0;
    if (Failing(L"PropGetDefaultSingle_WRP", status))
        return status;
    const SProperty* p = FindProperty(value.m_wstrName);
    if (!p || !p->bSetting)
        return ZX_E_FAIL;
    value.m_varValue = SetIndex(mode) == 1 ? p->defQuality : p->defFast;
    return ZX_OK;
}

int CZxSimCamera::PropState_WRP(uint32_t mode, const SZxGrabberPropertyDesc01& desc, uint32_t& state)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"PropState_WRP(" + Num(mode) + L", " + desc.m_wstrName.Std() + L")");
    int status = 0;
    if (Failing(L"PropState_WRP", status))
        return status;
    const SProperty* p = FindProperty(desc.m_wstrName);
    if (!p)
        return ZX_E_FAIL;
    state = State(*p, SetIndex(mode));
    return ZX_OK;
}

int CZxSimCamera::PropSet_WRP(uint32_t mode, const CZxVector_SZxGrabberPropertyValue& values,
                              SZxStateChangeInfo* info, bool bCheckOnly)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    std::wstring line = L"PropSet_WRP(" + Num(mode);
    for (const auto& v : values)
        line += L", " + v.m_wstrName.Std() + L"=" + VariantText(v.m_varValue);
    Log(line + (bCheckOnly ? L", check only)" : L")"));
    int status = 0;
    if (Failing(L"PropSet_WRP", status))
        return status;

    const int set = SetIndex(mode);
    // Check everything first: a write is taken whole or not at all. Values of
    // properties that are read-only or unavailable now are skipped, as a bulk
    // write of a whole dialog carries them too.
    std::vector<std::pair<const SProperty*, CZxVariant>> taken;
    for (const auto& v : values) {
        const SProperty* p = FindProperty(v.m_wstrName);
        CZxVariant coerced;
        if (!p || !Coerce(*p, set, v.m_varValue, coerced)) {
            Log(L"  -> refused " + v.m_wstrName.Std());
            return ZX_E_FAIL;
        }
        const uint32_t state = State(*p, set);
        if (!p->bSetting || !(state & ZX_PROPSTATE_AVAILABLE) || (state & ZX_PROPSTATE_READONLY)) {
            Log(L"  -> skipped " + v.m_wstrName.Std());
            continue;
        }
        taken.emplace_back(p, coerced);
    }
    if (bCheckOnly)
        return ZX_OK;

    const SSnapshot before = Snapshot();
    for (const auto& t : taken)
        for (int s = 0; s < kSets; ++s)
            if (s == set || m_bSynchronized)
                Store(*t.first, s, t.second);
    if (info) {
        Diff(before, *info);
        for (const auto& t : taken)
            info->Add(t.first->desc.m_wstrName, false, false, true);
    }
    return ZX_OK;
}

// ---- Commands ----------------------------------------------------------------------

int CZxSimCamera::CommandGetDesc_WRP(const wchar_t* name, SZxGrabberCommandDesc01& desc)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"CommandGetDesc_WRP(") + (name ? name : L"null") + L")");
    int status = 0;
    if (Failing(L"CommandGetDesc_WRP", status))
        return status;
    for (const auto& c : m_commands)
        if (name && c.name == name) {
            desc = SZxGrabberCommandDesc01(c.name.c_str(), c.text.c_str(), true, true,
                                           c.bAsync ? ZX_COMMAND_ASYNC : 0u);
            return ZX_OK;
        }
    return ZX_E_FAIL;
}

int CZxSimCamera::Command_WRP(SZxGrabberCommandValue& value, bool bAsync, SZxStateChangeInfo* info,
                              bool bCheckOnly, CZxGrabberSample01** ppSample)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"Command_WRP(" + value.m_wstrName.Std() + L", " + VariantText(value.m_varValue) +
        (bAsync ? L", async" : L"") + (bCheckOnly ? L", check only" : L"") + L")");
    if (ppSample)
        *ppSample = nullptr;
    int status = 0;
    if (Failing(L"Command_WRP", status))
        return status;
    const std::wstring& name = value.m_wstrName.Std();
    const auto cmd = std::find_if(m_commands.begin(), m_commands.end(),
                                  [&](const SCommand& c) { return c.name == name; });
    if (cmd == m_commands.end())
        return ZX_E_FAIL;
    const int preset = value.m_varValue.GetZx_int32();
    if (name == L"ApplyExposurePreset" && (preset < 0 || preset >= int(sizeof kPresets / sizeof kPresets[0])))
        return ZX_E_FAIL;
    if (cmd->bAsync && !m_running.empty())
        return ZX_E_BUSY;
    if (bCheckOnly)
        return ZX_OK;

    const SSnapshot before = Snapshot();
    if (name == L"Snap") {
        if (ppSample)
            *ppSample = Snap();
    } else if (name == L"Calibrate") {
        m_dProgress = 0.0;
        if (bAsync) {
            m_running = name;
            m_status = L"Calibrating";
        } else {
            m_status = L"Done";
        }
    } else if (name == L"ApplyExposurePreset") {
        const SProperty* p = FindProperty(L"Exposure");
        for (int s = 0; s < kSets; ++s)
            if (s == SetIndex(0) || m_bSynchronized)
                Store(*p, s, kPresets[preset]);
    } else if (name == L"RestoreFactory") {
        ResetToDefaults();
    }
    if (info)
        Diff(before, *info);
    return ZX_OK;
}

int CZxSimCamera::Command_Status_WRP(const wchar_t* name, double& progress, CZxStringW& text)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"Command_Status_WRP(") + (name ? name : L"null") + L")");
    int status = 0;
    if (Failing(L"Command_Status_WRP", status))
        return status;
    if (!name || std::none_of(m_commands.begin(), m_commands.end(),
                              [&](const SCommand& c) { return c.name == name; }))
        return ZX_E_FAIL;
    if (m_running == name) {
        // The work advances by a quarter with every poll; the poll after the
        // one that reported 1.0 finds it ended.
        if (m_dProgress >= 1.0) {
            m_running.clear();
            m_status = L"Done";
        } else {
            m_dProgress += 0.25;
            progress = m_dProgress;
            text = CZxStringW::Formatted(L"%s %d%%", m_status.c_str(), int(m_dProgress * 100 + 0.5));
            return ZX_OK;
        }
    }
    progress = -1.0;
    text = m_status.c_str();
    return ZX_OK;
}

int CZxSimCamera::Command_Abort_WRP()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"Command_Abort_WRP()");
    int status = 0;
    if (Failing(L"Command_Abort_WRP", status))
        return status;
    if (!m_running.empty()) {
        m_running.clear();
        m_status = L"Aborted";
    }
    return ZX_OK;
}

void CZxSimCamera::SetGeneralCallback(PFN_ZxGeneralCallback callback, void* context)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    m_pfnCallback = callback;
    m_pCallbackContext = context;
}

int CZxSimCamera::FireGeneralCallback(int code, void* data)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"FireGeneralCallback(" + Num(code) + L")");
    return m_pfnCallback ? m_pfnCallback(m_pCallbackContext, code, data) : 0;
}

// ---- Formats -----------------------------------------------------------------------

int CZxSimCamera::FormatNext_WRP(SZxGrabberFormatValue& format)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"FormatNext_WRP(" + format.m_wstrName.Std() + L")");
    int status = 0;
    if (Failing(L"FormatNext_WRP", status))
        return status;
    size_t next = 0;
    if (!format.m_wstrName.IsEmpty()) {
        const SZxGrabberFormatValue* f = FindFormat(format.m_wstrName);
        if (!f)
            return ZX_E_FAIL;
        next = static_cast<size_t>(f - m_formats.data()) + 1;
    }
    if (next >= m_formats.size())
        return 1;
    format = Effective(m_formats[next], static_cast<int32_t>(NumberOf(L"SensorMode", SetIndex(0))));
    return ZX_OK;
}

int CZxSimCamera::FormatGet_WRP(uint32_t mode, SZxGrabberFormatValue& format)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"FormatGet_WRP(" + Num(mode) + L")");
    int status = 0;
    if (Failing(L"FormatGet_WRP", status))
        return status;
    format = CurrentFormat(SetIndex(mode));
    return ZX_OK;
}

int CZxSimCamera::FormatSet_WRP(uint32_t mode, const SZxGrabberFormatValue& format, SZxStateChangeInfo* info,
                                bool bCheckOnly)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"FormatSet_WRP(" + Num(mode) + L", " + format.m_wstrName.Std() + (bCheckOnly ? L", check only)" : L")"));
    int status = 0;
    if (Failing(L"FormatSet_WRP", status))
        return status;
    if (!FindFormat(format.m_wstrName))
        return ZX_E_FAIL;
    if (bCheckOnly)
        return ZX_OK;
    const SSnapshot before = Snapshot();
    const int set = SetIndex(mode);
    for (int s = 0; s < kSets; ++s)
        if (s == set || m_bSynchronized)
            m_format[s] = format.m_wstrName.Std();
    if (info)
        Diff(before, *info);
    return ZX_OK;
}

int CZxSimCamera::FormatGetFromSettings_WRP(uint32_t mode, const SZxGrabberCameraSettings& settings,
                                            SZxGrabberFormatValue& format)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"FormatGetFromSettings_WRP(" + Num(mode) + L")");
    int status = 0;
    if (Failing(L"FormatGetFromSettings_WRP", status))
        return status;
    const int set = SetIndex(mode);
    const uint32_t m = set == 1 ? ZX_MODE_QUALITY : ZX_MODE_FAST;
    const SZxGrabberFormatValue* f =
        FindFormat(settings.m_uiMask & ZX_SETTINGS_FORMATS ? settings.Format(m).m_wstrName.GetString()
                                                           : m_format[set].c_str());
    if (!f)
        return ZX_E_FAIL;
    double sensorMode = NumberOf(L"SensorMode", set);
    const SZxGrabberPropertyValue* v = settings.m_uiMask & ZX_SETTINGS_PROPERTIES
                                           ? settings.Props(m).Find(L"SensorMode") : nullptr;
    CZxVariant coerced;
    if (v && Coerce(*FindProperty(L"SensorMode"), set, v->m_varValue, coerced))
        sensorMode = coerced.GetDouble();
    format = Effective(*f, static_cast<int32_t>(sensorMode));
    return ZX_OK;
}

// ---- Fast/quality sets ---------------------------------------------------------------

uint32_t CZxSimCamera::GetModeFQ()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"GetModeFQ()");
    return m_mode;
}

int CZxSimCamera::SetModeFQ(uint32_t mode)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"SetModeFQ(" + Num(mode) + L")");
    int status = 0;
    if (Failing(L"SetModeFQ", status))
        return status;
    if (mode != ZX_MODE_FAST && mode != ZX_MODE_QUALITY)
        return ZX_E_FAIL;
    m_mode = mode;
    return ZX_OK;
}

bool CZxSimCamera::IsModeFQSynchronized()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"IsModeFQSynchronized()");
    return m_bSynchronized;
}

int CZxSimCamera::ModeFQSynchronize(bool synchronize)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"ModeFQSynchronize(") + (synchronize ? L"true" : L"false") + L")");
    int status = 0;
    if (Failing(L"ModeFQSynchronize", status))
        return status;
    if (synchronize && !m_bSynchronized) {
        // Both sets start out equal: the set in use is copied to the other.
        const int from = SetIndex(0);
        m_values[1 - from] = m_values[from];
        m_format[1 - from] = m_format[from];
    }
    m_bSynchronized = synchronize;
    return ZX_OK;
}

// ---- Camera settings -----------------------------------------------------------------

void CZxSimCamera::FillSettings(SZxGrabberCameraSettings& s, uint32_t mask, bool bCurrent)
{
    s.m_uiMask = mask & ZX_SETTINGS_ALL;
    s.m_vecPropFast.RemoveAll();
    s.m_vecPropQuality.RemoveAll();
    if (mask & ZX_SETTINGS_PROPERTIES)
        for (const auto& p : m_props)
            if (p.bSetting) {
                s.m_vecPropFast.Add(SZxGrabberPropertyValue(p.desc.m_wstrName, bCurrent ? Value(p, 0) : p.defFast));
                s.m_vecPropQuality.Add(
                    SZxGrabberPropertyValue(p.desc.m_wstrName, bCurrent ? Value(p, 1) : p.defQuality));
            }
    if (mask & ZX_SETTINGS_FORMATS) {
        s.m_fmtFast = bCurrent ? CurrentFormat(0) : DefaultFormat(0);
        s.m_fmtQuality = bCurrent ? CurrentFormat(1) : DefaultFormat(1);
    }
    if (mask & ZX_SETTINGS_ROI) {
        s.m_bROIEnabled = bCurrent && m_bROIEnabled;
        s.m_rcROI = bCurrent ? m_rcROI : CZxRect();
    }
    if (mask & ZX_SETTINGS_FQSYNC)
        s.m_bFQSynchronized = bCurrent && m_bSynchronized;
}

int CZxSimCamera::CameraSettingsGet_UNI_WRP(SZxGrabberCameraSettings& settings, uint32_t mask, bool bCurrent)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"CameraSettingsGet_UNI_WRP(" + Num(mask) + (bCurrent ? L", current)" : L", defaults)"));
    int status = 0;
    if (Failing(L"CameraSettingsGet_UNI_WRP", status))
        return status;
    FillSettings(settings, mask, bCurrent);
    return ZX_OK;
}

int CZxSimCamera::CameraSettingsSet_UNI_WRP(const SZxGrabberCameraSettings& settings, uint32_t mask)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"CameraSettingsSet_UNI_WRP(" + Num(mask) + L")");
    int status = 0;
    if (Failing(L"CameraSettingsSet_UNI_WRP", status))
        return status;
    const uint32_t m = mask & settings.m_uiMask;
    if (m & ZX_SETTINGS_FORMATS)
        for (int s = 0; s < kSets; ++s) {
            const SZxGrabberFormatValue& f = settings.Format(s == 1 ? ZX_MODE_QUALITY : ZX_MODE_FAST);
            if (FindFormat(f.m_wstrName))
                m_format[s] = f.m_wstrName.Std();
        }
    if (m & ZX_SETTINGS_PROPERTIES)
        for (int s = 0; s < kSets; ++s)
            // Settings saved by another version may hold names or values this
            // camera does not know: those entries are left out, the rest is taken.
            for (const auto& v : settings.Props(s == 1 ? ZX_MODE_QUALITY : ZX_MODE_FAST)) {
                const SProperty* p = FindProperty(v.m_wstrName);
                CZxVariant coerced;
                if (p && p->bSetting && Coerce(*p, s, v.m_varValue, coerced))
                    Store(*p, s, coerced);
                else
                    Log(L"  -> skipped " + v.m_wstrName.Std());
            }
    if (m & ZX_SETTINGS_ROI) {
        m_rcROI = IntersectRect(settings.m_rcROI, CZxRect(0, 0, kSimSensorWidth, kSimSensorHeight));
        m_bROIEnabled = settings.m_bROIEnabled;
    }
    if (m & ZX_SETTINGS_FQSYNC)
        m_bSynchronized = settings.m_bFQSynchronized;
    return ZX_OK;
}

int CZxSimCamera::CameraSettingsSetDefaults_UNI_WRP()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"CameraSettingsSetDefaults_UNI_WRP()");
    int status = 0;
    if (Failing(L"CameraSettingsSetDefaults_UNI_WRP", status))
        return status;
    ResetToDefaults();
    return ZX_OK;
}

SZxGrabberCameraSettings* CZxSimCamera::NamedSettingsNext(CZxStringW& name)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"NamedSettingsNext(" + name.Std() + L")");
    size_t next = 0;
    if (!name.IsEmpty()) {
        const auto it = std::find_if(m_named.begin(), m_named.end(),
                                     [&](const std::unique_ptr<SNamedSetting>& e) { return e->name == name; });
        if (it == m_named.end())
            return nullptr;
        next = static_cast<size_t>(it - m_named.begin()) + 1;
    }
    if (next >= m_named.size())
        return nullptr;
    name = m_named[next]->name;
    return &m_named[next]->settings;
}

int CZxSimCamera::NamedSettingsAdd(const wchar_t* name, const SZxGrabberCameraSettings& settings)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"NamedSettingsAdd(") + (name ? name : L"null") + L")");
    int status = 0;
    if (Failing(L"NamedSettingsAdd", status))
        return status;
    if (!name || !*name)
        return ZX_E_FAIL;
    for (auto& e : m_named)
        if (e->name.Compare(name) == 0) {
            e->settings = settings;
            return ZX_OK;
        }
    m_named.push_back(std::unique_ptr<SNamedSetting>(new SNamedSetting{name, settings}));
    return ZX_OK;
}

int CZxSimCamera::NamedSettingsRemove(const wchar_t* name)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"NamedSettingsRemove(") + (name ? name : L"null") + L")");
    int status = 0;
    if (Failing(L"NamedSettingsRemove", status))
        return status;
    const auto it = std::find_if(m_named.begin(), m_named.end(), [&](const std::unique_ptr<SNamedSetting>& e) {
        return name && e->name.Compare(name) == 0;
    });
    if (it == m_named.end())
        return ZX_E_FAIL;
    m_named.erase(it);
    return ZX_OK;
}

// ---- Region of interest --------------------------------------------------------------

bool CZxSimCamera::ROIIsSupported_UNI_WRP()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"ROIIsSupported_UNI_WRP()");
    return m_bROISupported;
}

int CZxSimCamera::ROIGet(CZxRect& rect)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"ROIGet()");
    rect = m_rcROI;
    return m_bROISupported ? ZX_OK : ZX_E_NOTSUPPORTED;
}

int CZxSimCamera::ROISet(const CZxRect& rect)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"ROISet(" + Num(rect.left) + L", " + Num(rect.top) + L", " + Num(rect.right) + L", " + Num(rect.bottom) +
        L")");
    if (!m_bROISupported)
        return ZX_E_NOTSUPPORTED;
    m_rcROI = IntersectRect(rect, CZxRect(0, 0, kSimSensorWidth, kSimSensorHeight));
    return ZX_OK;
}

bool CZxSimCamera::ROIEnabled()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"ROIEnabled()");
    return m_bROIEnabled;
}

int CZxSimCamera::ROIEnable(bool enable)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"ROIEnable(") + (enable ? L"true" : L"false") + L")");
    if (!m_bROISupported)
        return ZX_E_NOTSUPPORTED;
    m_bROIEnabled = enable;
    return ZX_OK;
}

bool CZxSimCamera::MultiViewEnabled()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"MultiViewEnabled()");
    return m_bMultiView;
}

// ---- Camera, user parameters, capabilities --------------------------------------------

int CZxSimCamera::CameraGet_WRP(SZxGrabberCameraDesc& camera)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"CameraGet_WRP()");
    camera = m_camera;
    return ZX_OK;
}

bool CZxSimCamera::CameraCapabilityIsSupported(uint32_t capability)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"CameraCapabilityIsSupported(" + Num(capability) + L")");
    return capability == ZX_CAMCAP_PREDEFINED_ROIS && m_bROISupported;
}

int CZxSimCamera::UserParamGet(const wchar_t* name, CZxVariant& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"UserParamGet(") + (name ? name : L"null") + L")");
    int status = 0;
    if (Failing(L"UserParamGet", status))
        return status;
    const std::wstring n = name ? name : L"";
    if (n == L"PredefinedROIArray")
        value = m_varPredefinedROIs;
    else if (n == L"IsQualityLivePossible")
        value = true;
    else
        return ZX_E_NOTSUPPORTED;
    return ZX_OK;
}

int CZxSimCamera::UserParamSet(const wchar_t* name, const CZxVariant& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"UserParamSet(") + (name ? name : L"null") + L", " + VariantText(value) + L")");
    int status = 0;
    if (Failing(L"UserParamSet", status))
        return status;
    if (!name || std::wstring(name) != L"PredefinedROIArray")
        return ZX_E_NOTSUPPORTED;
    if (!value.IsArray())
        return ZX_E_FAIL;
    m_varPredefinedROIs = value;
    return ZX_OK;
}

int CZxSimCamera::UserParamQuery(const wchar_t* name, void* record, uint32_t cbRecord)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"UserParamQuery(") + (name ? name : L"null") + L")");
    int status = 0;
    if (Failing(L"UserParamQuery", status))
        return status;
    if (!name || std::wstring(name) != L"DefineRoiQuery")
        return ZX_E_NOTSUPPORTED;
    if (!record || cbRecord < sizeof(SZxUserParam_DefineRoiQuery))
        return ZX_E_FAIL;
    auto* q = static_cast<SZxUserParam_DefineRoiQuery*>(record);
    q->m_bAnswer = m_bROISupported && !m_bMultiView;
    return ZX_OK;
}

// ---- Identity and host integration ------------------------------------------------------

CZxStringW CZxSimCamera::GrabberDriverGetClassName() { return ZXSIM_DRIVER_CLASS; }
CZxStringW CZxSimCamera::GrabberDriverGetClassNameLogical() { return ZXSIM_DRIVER_CLASS; }
CZxStringW CZxSimCamera::GrabberDriverNameLocalisedGet() { return L"Simulated Camera"; }

int CZxSimCamera::InputSetupModelessHide()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"InputSetupModelessHide()");
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
