// The simulated camera's fast and quality sets, camera settings by mask, the
// defaults and named settings.
#include <algorithm>

#include "camera_internal.h"
#include "zx/status.h"

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

// ---- Fast/quality sets ---------------------------------------------------------------

uint32_t CZxSimCamera::GetModeFQ()
{
    const COperation op(*this, L"GetModeFQ");
    return m_mode;
}

int CZxSimCamera::SetModeFQ(uint32_t mode)
{
    COperation op(*this, L"SetModeFQ", Num(mode));
    if (const auto failure = op.Planned())
        return *failure;
    if (mode != ZX_MODE_FAST && mode != ZX_MODE_QUALITY)
        return ZX_E_FAIL;
    m_mode = mode;
    return ZX_OK;
}

bool CZxSimCamera::IsModeFQSynchronized()
{
    const COperation op(*this, L"IsModeFQSynchronized");
    return m_bSynchronized;
}

int CZxSimCamera::ModeFQSynchronize(bool synchronize)
{
    COperation op(*this, L"ModeFQSynchronize", synchronize ? L"true" : L"false");
    if (const auto failure = op.Planned())
        return *failure;
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
    COperation op(*this, L"CameraSettingsGet_UNI_WRP", Num(mask) + (bCurrent ? L", current" : L", defaults"));
    if (const auto failure = op.Planned())
        return *failure;
    FillSettings(settings, mask, bCurrent);
    return ZX_OK;
}

int CZxSimCamera::CameraSettingsSet_UNI_WRP(const SZxGrabberCameraSettings& settings, uint32_t mask)
{
    COperation op(*this, L"CameraSettingsSet_UNI_WRP", Num(mask));
    if (const auto failure = op.Planned())
        return *failure;
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
    COperation op(*this, L"CameraSettingsSetDefaults_UNI_WRP");
    if (const auto failure = op.Planned())
        return *failure;
    ResetToDefaults();
    return ZX_OK;
}

SZxGrabberCameraSettings* CZxSimCamera::NamedSettingsNext(CZxStringW& name)
{
    const COperation op(*this, L"NamedSettingsNext", name.Std());
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
    COperation op(*this, L"NamedSettingsAdd", Arg(name));
    if (const auto failure = op.Planned())
        return *failure;
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
    COperation op(*this, L"NamedSettingsRemove", Arg(name));
    if (const auto failure = op.Planned())
        return *failure;
    const auto it = std::find_if(m_named.begin(), m_named.end(), [&](const std::unique_ptr<SNamedSetting>& e) {
        return name && e->name.Compare(name) == 0;
    });
    if (it == m_named.end())
        return ZX_E_FAIL;
    m_named.erase(it);
    return ZX_OK;
}
