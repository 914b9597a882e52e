// The simulated camera's format table and the format operations of the provider.
#include "camera_internal.h"
#include "zx/status.h"

void CZxSimCamera::BuildFormats()
{
    const uint32_t comp = m_camera.m_bMono ? 1u : 3u;
    auto add = [&](const wchar_t* name, uint32_t flags, double binning, int32_t group, CZxRect rect) {
        SZxGrabberFormatValue f;
        f.m_wstrName = name;
        f.m_uiFlags = flags;
        f.m_dBinning = binning;
        f.m_iGroup = group;
        f.m_rcRect = rect;
        f.m_uiBits = 12;
        f.m_uiComp = comp;
        m_formats.push_back(f);
    };
    m_formats.clear();
    add(L"2048 x 1536", ZX_FORMAT_FAST | ZX_FORMAT_QUALITY | ZX_FORMAT_DEFAULT_QUALITY, 1, 0,
        CZxRect(0, 0, 2048, 1536));
    add(L"1024 x 768 (Binning 2x2)", ZX_FORMAT_FAST | ZX_FORMAT_QUALITY | ZX_FORMAT_DEFAULT_FAST, 2, 0,
        CZxRect(0, 0, 1024, 768));
    add(L"512 x 384 (Binning 4x4)", ZX_FORMAT_FAST, 4, 0, CZxRect(0, 0, 512, 384));
    add(L"1024 x 768 (Center)", ZX_FORMAT_FAST, 1, 1, CZxRect(512, 384, 1536, 1152));
    add(L"512 x 384 (Center, Binning 2x2)", ZX_FORMAT_FAST, 2, 1, CZxRect(256, 192, 768, 576));
    add(L"2048 x 1536 (Extended Dynamic)", ZX_FORMAT_QUALITY, 1, 2, CZxRect(0, 0, 2048, 1536));
    m_formats.back().m_uiBits = 16;
    for (int i = 0; i < m_iExtraFormats; ++i) {
        const int32_t w = 64 + 16 * i, h = 48 + 12 * i;
        add(CZxStringW::Formatted(L"%d x %d (Window %d)", w, h, i + 1), ZX_FORMAT_FAST | ZX_FORMAT_QUALITY, 1, 100,
            CZxRect(0, 0, w, h));
    }
}

void CZxSimCamera::SetExtraFormats(int count)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    m_iExtraFormats = count > 0 ? count : 0;
    BuildFormats();
    // A set whose format went away falls back to its default.
    for (int s = 0; s < kSets; ++s)
        if (!FindFormat(m_format[s].c_str()))
            m_format[s] = DefaultFormat(s).m_wstrName.Std();
}

const SZxGrabberFormatValue* CZxSimCamera::FindFormat(const wchar_t* name) const
{
    if (!name)
        return nullptr;
    for (const auto& f : m_formats)
        if (f.m_wstrName.Compare(name) == 0)
            return &f;
    return nullptr;
}

const SZxGrabberFormatValue& CZxSimCamera::DefaultFormat(int set) const
{
    const uint32_t flag = set == 1 ? ZX_FORMAT_DEFAULT_QUALITY : ZX_FORMAT_DEFAULT_FAST;
    for (const auto& f : m_formats)
        if (f.m_uiFlags & flag)
            return f;
    return m_formats.front();
}

// "Center Half" reads the middle half of the sensor in each direction: every
// format keeps its name but covers the central quarter of its area.
SZxGrabberFormatValue CZxSimCamera::Effective(const SZxGrabberFormatValue& base, int32_t sensorMode) const
{
    SZxGrabberFormatValue f = base;
    if (sensorMode == 1) {
        const CZxRect& r = base.m_rcRect;
        const int32_t w = r.Width() / 2, h = r.Height() / 2;
        f.m_rcRect = CZxRect(r.left + w / 2, r.top + h / 2, r.left + w / 2 + w, r.top + h / 2 + h);
    }
    return f;
}

SZxGrabberFormatValue CZxSimCamera::CurrentFormat(int set) const
{
    const SZxGrabberFormatValue* f = FindFormat(m_format[set].c_str());
    return Effective(f ? *f : DefaultFormat(set), static_cast<int32_t>(NumberOf(zxsim::kPropSensorMode, set)));
}

// ---- Provider operations ----------------------------------------------------------

int CZxSimCamera::FormatNext_WRP(SZxGrabberFormatValue& format)
{
    COperation op(*this, L"FormatNext_WRP", format.m_wstrName.Std());
    if (const auto failure = op.Planned())
        return *failure;
    size_t next = 0;
    if (!format.m_wstrName.IsEmpty()) {
        const SZxGrabberFormatValue* f = FindFormat(format.m_wstrName);
        if (!f)
            return ZX_E_FAIL;
        next = static_cast<size_t>(f - m_formats.data()) + 1;
    }
    if (next >= m_formats.size())
        return 1;
    format = Effective(m_formats[next], static_cast<int32_t>(NumberOf(zxsim::kPropSensorMode, SetIndex(0))));
    return ZX_OK;
}

int CZxSimCamera::FormatGet_WRP(uint32_t mode, SZxGrabberFormatValue& format)
{
    COperation op(*this, L"FormatGet_WRP", Num(mode));
    if (const auto failure = op.Planned())
        return *failure;
    format = CurrentFormat(SetIndex(mode));
    return ZX_OK;
}

int CZxSimCamera::FormatSet_WRP(uint32_t mode, const SZxGrabberFormatValue& format, SZxStateChangeInfo* info,
                                bool bCheckOnly)
{
    COperation op(*this, L"FormatSet_WRP",
                  Num(mode) + L", " + format.m_wstrName.Std() + (bCheckOnly ? L", check only" : L""));
    if (const auto failure = op.Planned())
        return *failure;
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
    COperation op(*this, L"FormatGetFromSettings_WRP", Num(mode));
    if (const auto failure = op.Planned())
        return *failure;
    const int set = SetIndex(mode);
    const uint32_t m = set == 1 ? ZX_MODE_QUALITY : ZX_MODE_FAST;
    const SZxGrabberFormatValue* f =
        FindFormat(settings.m_uiMask & ZX_SETTINGS_FORMATS ? settings.Format(m).m_wstrName.GetString()
                                                           : m_format[set].c_str());
    if (!f)
        return ZX_E_FAIL;
    double sensorMode = NumberOf(zxsim::kPropSensorMode, set);
    const SZxGrabberPropertyValue* v = settings.m_uiMask & ZX_SETTINGS_PROPERTIES
                                           ? settings.Props(m).Find(zxsim::kPropSensorMode) : nullptr;
    CZxVariant coerced;
    if (v && Coerce(*FindProperty(zxsim::kPropSensorMode), set, v->m_varValue, coerced))
        sensorMode = coerced.GetDouble();
    format = Effective(*f, static_cast<int32_t>(sensorMode));
    return ZX_OK;
}
