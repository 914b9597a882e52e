// GenICam features as typed properties: the feature table, definitions,
// states, values, and checked writes.
#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cwchar>

#include "genicam_internal.h"
#include "zxhost/exposure.h"

using zxgenicam::SFeature;

namespace zxgenicam {

std::wstring Wide(const char* s)
{
    std::wstring w;
    if (!s)
        return w;
    // UTF-8 decoded well enough for display names; feature names are ASCII.
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(s); *p;) {
        uint32_t c = *p++;
        int more = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
        if (more)
            c &= 0x3F >> more;
        for (; more > 0 && (*p & 0xC0) == 0x80; --more)
            c = (c << 6) | (*p++ & 0x3F);
        w += wchar_t(more ? L'?' : c);
    }
    return w;
}

bool ShapesFrames(const std::string& name)
{
    for (const char* n : {"PixelFormat", "Width", "Height", "BinningHorizontal", "BinningVertical"})
        if (name == n)
            return true;
    return false;
}

std::string Narrow(const std::wstring& s)
{
    std::string n;
    for (wchar_t c : s)
        n += c > 0 && c < 0x80 ? char(c) : '?';
    return n;
}

} // namespace zxgenicam

namespace {

const double kExposurePresetsMs[] = {0.01, 0.1, 0.5, 1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000, 10000};

CZxVariant Range(const wchar_t* runType, double min, double max, double step)
{
    CZxVariant d = CZxVariant::MakeRecord(runType);
    d[L"m_dMin"] = min;
    d[L"m_dMax"] = max;
    d[L"m_dStep"] = step;
    return d;
}

// A float without an increment still needs a step for the controls: a power of
// ten near a thousandth of the range.
double StepOf(double inc, double min, double max)
{
    if (inc > DBL_MIN * 2 && std::isfinite(inc))
        return inc;
    const double span = max - min;
    return span > 0 && std::isfinite(span) ? std::pow(10.0, std::floor(std::log10(span / 1000.0))) : 1.0;
}

bool ToNumber(const CZxVariant& v, double& out)
{
    switch (v.GetKind()) {
    case CZxVariant::EKind::Bool:
    case CZxVariant::EKind::Int32:
    case CZxVariant::EKind::Double: out = v.GetDouble(); return std::isfinite(out);
    case CZxVariant::EKind::String: {
        const std::wstring s = v.GetCZxStringW().Std();
        wchar_t* end = nullptr;
        out = std::wcstod(s.c_str(), &end);
        return end != s.c_str() && *end == L'\0' && std::isfinite(out);
    }
    default: return false;
    }
}

// The automatic-mode enumeration that drives a feature by itself: GainRaw ->
// GainAuto, ExposureTimeAbs -> ExposureAuto.
std::string AutoFeatureOf(std::string base)
{
    for (const char* suffix : {"Raw", "Abs"})
        if (base.size() > 3 && base.compare(base.size() - 3, 3, suffix) == 0)
            base.erase(base.size() - 3);
    if (base.size() > 4 && base.compare(base.size() - 4, 4, "Time") == 0)
        base.erase(base.size() - 4);
    return base + "Auto";
}

bool Fits32(int64_t v) { return v >= INT32_MIN && v <= INT32_MAX; }

// One read of a node's number; a node that cannot say gives `fallback`.
template <class T, class N>
T Read(T (*read)(N*, GError**), N* node, T fallback)
{
    GError* err = nullptr;
    const T v = read(node, &err);
    if (!err)
        return v;
    g_error_free(err);
    return fallback;
}

} // namespace

const wchar_t* ZX_GenICamControlFamily(const SZxGrabberPropertyDesc01& desc)
{
    const CZxVariantRunType t = desc.varValDefinition.GetRunType();
    if (t == CZxVariantRunType(L"RZxRangeDoubleExposure"))
        return L"exposure";
    if (t == CZxVariantRunType(L"RZxRangeInt32") || t == CZxVariantRunType(L"RZxRangeDouble") ||
        t == CZxVariantRunType(L"RZxRangeDoubleList"))
        return L"numeric";
    if (t == CZxVariantRunType(L"RZxList"))
        return L"choice";
    if (t == CZxVariantRunType(L"bool"))
        return L"check";
    if (t == CZxVariantRunType(L"CZxStringW"))
        return L"text";
    return L"none";
}

const SFeature* CZxGenICamCamera::SImpl::Find(const wchar_t* name) const
{
    if (!name)
        return nullptr;
    for (const SFeature& f : features)
        if (f.info.m_name == name)
            return &f;
    return nullptr;
}

int CZxGenICamCamera::SImpl::Failed(GError* err)
{
    if (err) {
        error = err->message ? err->message : "error";
        g_error_free(err);
    }
    return Usable() != ZX_OK ? int(ZXGENICAM_E_LOST) : int(ZX_E_FAIL);
}

int64_t CZxGenICamCamera::SImpl::Int(const char* name, int64_t fallback)
{
    ArvGcNode* n = gc ? arv_gc_get_node(gc, name) : nullptr;
    if (!n || !ARV_IS_GC_INTEGER(n))
        return fallback;
    GError* err = nullptr;
    const int64_t v = arv_gc_integer_get_value(ARV_GC_INTEGER(n), &err);
    if (err) {
        g_error_free(err);
        return fallback;
    }
    return v;
}

SZxGrabberPropertyDesc01 CZxGenICamCamera::SImpl::Describe(const SFeature& f)
{
    SZxGrabberPropertyDesc01 desc(f.info.m_name.c_str());
    const char* display = arv_gc_feature_node_get_display_name(ARV_GC_FEATURE_NODE(f.node));
    desc.m_wstrText = display && *display ? zxgenicam::Wide(display) : f.info.m_name;
    GError* err = nullptr;
    CZxVariant& d = desc.varValDefinition;
    switch (f.info.m_kind) {
    case EZxGenICamKind::Integer: {
        ArvGcInteger* i = ARV_GC_INTEGER(f.node);
        const int64_t min = Read<gint64>(arv_gc_integer_get_min, i, INT64_MIN);
        const int64_t max = Read<gint64>(arv_gc_integer_get_max, i, INT64_MAX);
        const int64_t inc = std::max<int64_t>(1, Read<gint64>(arv_gc_integer_get_inc, i, 1));
        if (Fits32(min) && Fits32(max) && Fits32(inc)) {
            d = CZxVariant::MakeRecord(L"RZxRangeInt32");
            d[L"m_iMin"] = int(min);
            d[L"m_iMax"] = int(max);
            d[L"m_iStep"] = int(inc);
        } else {
            // Beyond 32 bits the double range keeps every value up to 2^53 exact.
            d = Range(L"RZxRangeDouble", double(min), double(max), double(inc));
        }
        break;
    }
    case EZxGenICamKind::Float: {
        ArvGcFloat* x = ARV_GC_FLOAT(f.node);
        const double min = Read(arv_gc_float_get_min, x, -DBL_MAX), max = Read(arv_gc_float_get_max, x, DBL_MAX);
        d = Range(L"RZxRangeDouble", min, max, StepOf(Read(arv_gc_float_get_inc, x, 0.0), min, max));
        break;
    }
    case EZxGenICamKind::Exposure: {
        ArvGcFloat* x = ARV_GC_FLOAT(f.node);
        const double min = Read(arv_gc_float_get_min, x, 0.0) / 1000.0;
        const double max = Read(arv_gc_float_get_max, x, 0.0) / 1000.0;
        const double inc = Read(arv_gc_float_get_inc, x, 0.0);
        d = Range(L"RZxRangeDoubleExposure", min, max, inc > DBL_MIN * 2 ? inc / 1000.0 : 0.001);
        CZxVariant presets = CZxVariant::MakeArray();
        for (double ms : kExposurePresetsMs)
            if (ms >= min && ms <= max) {
                CZxVariant e;
                e[L"m_dValue"] = ms;
                e[L"m_wstrText"] = ZX_ExposureToText(ms, -1.0);
                presets.Add(e);
            }
        d[L"m_List"] = presets;
        ArvGcNode* rate = arv_gc_get_node(gc, "AcquisitionFrameRate");
        double fps = 0.0;
        if (rate && ARV_IS_GC_FLOAT(rate))
            fps = Read(arv_gc_float_get_value, ARV_GC_FLOAT(rate), 0.0);
        d[L"m_dOneFrameExp"] = fps > 0.0 ? 1000.0 / fps : -1.0;
        break;
    }
    case EZxGenICamKind::Enumeration: {
        CZxVariant list = CZxVariant::MakeArray();
        for (const GSList* l = arv_gc_enumeration_get_entries(ARV_GC_ENUMERATION(f.node)); l; l = l->next) {
            ArvGcFeatureNode* e = ARV_GC_FEATURE_NODE(l->data);
            if (!Read(arv_gc_feature_node_is_available, e, gboolean(false)) ||
                !Read(arv_gc_feature_node_is_implemented, e, gboolean(false)))
                continue;
            CZxVariant entry;
            entry[L"m_wstrValue"] = zxgenicam::Wide(arv_gc_feature_node_get_name(e)).c_str();
            const char* shown = arv_gc_feature_node_get_display_name(e);
            entry[L"m_wstrText"] = zxgenicam::Wide(shown && *shown ? shown : arv_gc_feature_node_get_name(e)).c_str();
            list.Add(entry);
        }
        d = CZxVariant::MakeRecord(L"RZxList");
        d[L"m_list"] = list;
        break;
    }
    case EZxGenICamKind::Boolean: d = CZxVariant(false); break;
    case EZxGenICamKind::String: d = CZxVariant(L""); break;
    case EZxGenICamKind::Command: break;
    }
    if (err)
        g_error_free(err);
    if (zxgenicam::ShapesFrames(f.name))
        desc.m_uiFlags |= ZX_PROPFLAG_CHANGES_FORMAT;
    if (!f.info.m_unit.empty() && d.IsRecord())
        d[L"m_wstrUnit"] = f.info.m_unit.c_str();
    return desc;
}

uint32_t CZxGenICamCamera::SImpl::State(const SFeature& f)
{
    ArvGcFeatureNode* n = ARV_GC_FEATURE_NODE(f.node);
    if (!Read(arv_gc_feature_node_is_implemented, n, gboolean(false)) ||
        !Read(arv_gc_feature_node_is_available, n, gboolean(false)))
        return 0;
    const bool locked = Read(arv_gc_feature_node_is_locked, n, gboolean(true));
    uint32_t state = ZX_PROPSTATE_AVAILABLE;
    if (locked || arv_gc_feature_node_get_actual_access_mode(n) == ARV_GC_ACCESS_MODE_RO)
        state |= ZX_PROPSTATE_READONLY;
    ArvGcNode* automatic = arv_gc_get_node(gc, AutoFeatureOf(f.name).c_str());
    if (automatic && ARV_IS_GC_ENUMERATION(automatic)) {
        const char* mode = Read<const char*>(arv_gc_enumeration_get_string_value, ARV_GC_ENUMERATION(automatic), nullptr);
        if (mode && std::string(mode) != "Off")
            state |= ZX_PROPSTATE_CHANGING;
    }
    return state;
}

CZxVariant CZxGenICamCamera::SImpl::Value(const SFeature& f)
{
    GError* err = nullptr;
    CZxVariant v;
    switch (f.info.m_kind) {
    case EZxGenICamKind::Integer: {
        const int64_t x = arv_gc_integer_get_value(ARV_GC_INTEGER(f.node), &err);
        const CZxVariant d = Describe(f).varValDefinition;
        v = d.GetRunType() == CZxVariantRunType(L"RZxRangeInt32") && Fits32(x) ? CZxVariant(int(x))
                                                                                : CZxVariant(double(x));
        break;
    }
    case EZxGenICamKind::Float: v = arv_gc_float_get_value(ARV_GC_FLOAT(f.node), &err); break;
    case EZxGenICamKind::Exposure: v = arv_gc_float_get_value(ARV_GC_FLOAT(f.node), &err) / 1000.0; break;
    case EZxGenICamKind::Enumeration:
        v = zxgenicam::Wide(arv_gc_enumeration_get_string_value(ARV_GC_ENUMERATION(f.node), &err)).c_str();
        break;
    case EZxGenICamKind::Boolean: v = bool(arv_gc_boolean_get_value(ARV_GC_BOOLEAN(f.node), &err)); break;
    case EZxGenICamKind::String: v = zxgenicam::Wide(arv_gc_string_get_value(ARV_GC_STRING(f.node), &err)).c_str(); break;
    case EZxGenICamKind::Command: break;
    }
    if (err) {
        Failed(err);
        return CZxVariant();
    }
    return v;
}

int CZxGenICamCamera::SImpl::Check(const SFeature& f, const CZxVariant& in, CZxVariant& out)
{
    const uint32_t state = State(f);
    if (!(state & ZX_PROPSTATE_AVAILABLE) || (state & ZX_PROPSTATE_READONLY) ||
        f.info.m_kind == EZxGenICamKind::Command)
        return ZX_E_FAIL;
    const CZxVariant def = Describe(f).varValDefinition;
    double x = 0.0;
    switch (f.info.m_kind) {
    case EZxGenICamKind::Integer: {
        const bool narrow = def.GetRunType() == CZxVariantRunType(L"RZxRangeInt32");
        const double min = narrow ? def[L"m_iMin"].GetDouble() : def[L"m_dMin"].GetDouble();
        const double max = narrow ? def[L"m_iMax"].GetDouble() : def[L"m_dMax"].GetDouble();
        const double step = narrow ? def[L"m_iStep"].GetDouble() : def[L"m_dStep"].GetDouble();
        if (!ToNumber(in, x) || x != std::floor(x) || x < min || x > max || std::fmod(x - min, step) != 0.0)
            return ZX_E_FAIL;
        out = narrow ? CZxVariant(int(x)) : CZxVariant(x);
        return ZX_OK;
    }
    case EZxGenICamKind::Float:
    case EZxGenICamKind::Exposure: {
        const double min = def[L"m_dMin"].GetDouble(), max = def[L"m_dMax"].GetDouble();
        // Bounds converted to ms may differ from the device's in the last bit.
        const double slack = (std::fabs(min) + std::fabs(max)) * 1e-12;
        if (!ToNumber(in, x) || x < min - slack || x > max + slack)
            return ZX_E_FAIL;
        out = std::min(max, std::max(min, x));
        return ZX_OK;
    }
    case EZxGenICamKind::Enumeration: {
        if (in.GetKind() != CZxVariant::EKind::String)
            return ZX_E_FAIL;
        const CZxStringW s = in.GetCZxStringW();
        const CZxVariant& list = def[L"m_list"];
        for (int i = 0; i < list.GetCount(); ++i)
            if (list[i][L"m_wstrValue"].GetCZxStringW() == s || list[i][L"m_wstrText"].GetCZxStringW() == s) {
                out = list[i][L"m_wstrValue"];
                return ZX_OK;
            }
        return ZX_E_FAIL;
    }
    case EZxGenICamKind::Boolean:
        if (in.GetKind() == CZxVariant::EKind::String) {
            const std::wstring s = in.GetCZxStringW().Std();
            if (s != L"true" && s != L"false" && s != L"1" && s != L"0")
                return ZX_E_FAIL;
            out = s == L"true" || s == L"1";
            return ZX_OK;
        }
        if (!ToNumber(in, x))
            return ZX_E_FAIL;
        out = x != 0.0;
        return ZX_OK;
    case EZxGenICamKind::String: {
        if (in.GetKind() != CZxVariant::EKind::String)
            return ZX_E_FAIL;
        GError* err = nullptr;
        const int64_t room = arv_gc_string_get_max_length(ARV_GC_STRING(f.node), &err);
        if (err)
            return Failed(err);
        const std::string s = zxgenicam::Narrow(in.GetCZxStringW().Std());
        if (room > 0 && int64_t(s.size()) > room)
            return ZX_E_FAIL;
        out = in;
        return ZX_OK;
    }
    case EZxGenICamKind::Command: break;
    }
    return ZX_E_FAIL;
}

int CZxGenICamCamera::SImpl::Write(const SFeature& f, const CZxVariant& v)
{
    GError* err = nullptr;
    switch (f.info.m_kind) {
    case EZxGenICamKind::Integer:
        arv_gc_integer_set_value(ARV_GC_INTEGER(f.node), int64_t(v.GetDouble()), &err);
        break;
    case EZxGenICamKind::Float: arv_gc_float_set_value(ARV_GC_FLOAT(f.node), v.GetDouble(), &err); break;
    case EZxGenICamKind::Exposure: arv_gc_float_set_value(ARV_GC_FLOAT(f.node), v.GetDouble() * 1000.0, &err); break;
    case EZxGenICamKind::Enumeration:
        arv_gc_enumeration_set_string_value(ARV_GC_ENUMERATION(f.node),
                                            zxgenicam::Narrow(v.GetCZxStringW().Std()).c_str(), &err);
        break;
    case EZxGenICamKind::Boolean: arv_gc_boolean_set_value(ARV_GC_BOOLEAN(f.node), v.GetBool(), &err); break;
    case EZxGenICamKind::String:
        arv_gc_string_set_value(ARV_GC_STRING(f.node), zxgenicam::Narrow(v.GetCZxStringW().Std()).c_str(), &err);
        break;
    case EZxGenICamKind::Command: return ZX_E_FAIL;
    }
    return err ? Failed(err) : ZX_OK;
}

void CZxGenICamCamera::SImpl::FixBinning()
{
    ArvGcNode* pf = gc ? arv_gc_get_node(gc, "PixelFormat") : nullptr;
    zxgenicam::SLayout layout;
    if (!pf || !ARV_IS_GC_ENUMERATION(pf) ||
        !zxgenicam::LayoutOf(ArvPixelFormat(Read(arv_gc_enumeration_get_int_value, ARV_GC_ENUMERATION(pf), gint64(0))),
                             layout)) {
        binning = 1;
        return;
    }
    const std::vector<int> offered = zxgenicam::BinningsOf(layout);
    if (std::find(offered.begin(), offered.end(), binning) == offered.end())
        binning = 1;
}

void CZxGenICamCamera::SImpl::MarkWritten()
{
    // A live frame counts as taken after the write only when it was delivered a
    // frame period later: the one being exposed meanwhile still has the old values.
    ArvGcNode* rate = arv_gc_get_node(gc, "AcquisitionFrameRate");
    const double fps = rate && ARV_IS_GC_FLOAT(rate) ? Read(arv_gc_float_get_value, ARV_GC_FLOAT(rate), 0.0) : 0.0;
    settleAfterNs = g_get_real_time() * 1000 + (fps > 0.0 ? gint64(1e9 / fps) : 0);
}

int CZxGenICamCamera::SImpl::WriteAll(const std::vector<std::pair<const SFeature*, CZxVariant>>& taken,
                                       SZxStateChangeInfo* info)
{
    struct SSeen {
        uint32_t state;
        CZxVariant def, value;
    };
    std::vector<SSeen> before;
    const SZxGrabberFormatValue formatBefore = CurrentFormat();
    if (info)
        for (const SFeature& f : features)
            before.push_back({State(f), Describe(f).varValDefinition, Value(f)});
    int status = ZX_OK;
    for (const auto& t : taken)
        if ((status = Write(*t.first, t.second)) != ZX_OK)
            break;
    MarkWritten();
    FixBinning();
    if (info) {
        for (size_t i = 0; i < features.size(); ++i) {
            const SFeature& f = features[i];
            if (f.info.m_kind == EZxGenICamKind::Command)
                continue;
            const bool st = State(f) != before[i].state, def = Describe(f).varValDefinition != before[i].def;
            const bool val = Value(f) != before[i].value;
            if (st || def || val)
                info->Add(f.info.m_name.c_str(), st, def, val);
        }
        const SZxGrabberFormatValue formatAfter = CurrentFormat();
        if (formatAfter.m_wstrName != formatBefore.m_wstrName || formatAfter.m_rcRect != formatBefore.m_rcRect)
            info->m_bFormatChanged = true;
        else if (formatAfter != formatBefore)
            info->m_bFormatValuesChanged = true;
    }
    return status;
}

// ---- Provider operations: properties ----------------------------------------------

int CZxGenICamCamera::PropGetDesc_WRP(uint32_t, const wchar_t* name, SZxGrabberPropertyDesc01& desc)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    const SFeature* f = m->Find(name);
    if (!f || f->info.m_kind == EZxGenICamKind::Command)
        return ZX_E_FAIL;
    desc = m->Describe(*f);
    return ZX_OK;
}

int CZxGenICamCamera::PropGetSingle_WRP(uint32_t, SZxGrabberPropertyValue& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    const SFeature* f = m->Find(value.m_wstrName.GetString());
    if (!f || f->info.m_kind == EZxGenICamKind::Command)
        return ZX_E_FAIL;
    CZxVariant v = m->Value(*f);
    if (v.IsNull())
        return m->Usable() ? int(ZXGENICAM_E_LOST) : int(ZX_E_FAIL);
    value.m_varValue = v;
    return ZX_OK;
}

int CZxGenICamCamera::PropGetDefaultSingle_WRP(uint32_t, SZxGrabberPropertyValue& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    const SZxGrabberPropertyValue* v = m->defaults.m_vecPropFast.Find(value.m_wstrName.GetString());
    if (!v)
        return ZX_E_FAIL;
    value.m_varValue = v->m_varValue;
    return ZX_OK;
}

int CZxGenICamCamera::PropState_WRP(uint32_t, const SZxGrabberPropertyDesc01& desc, uint32_t& state)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    const SFeature* f = m->Find(desc.m_wstrName.GetString());
    if (!f)
        return ZX_E_FAIL;
    state = m->State(*f);
    return ZX_OK;
}

int CZxGenICamCamera::PropSet_WRP(uint32_t, const CZxVector_SZxGrabberPropertyValue& values,
                                  SZxStateChangeInfo* info, bool bCheckOnly)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    std::vector<std::pair<const SFeature*, CZxVariant>> taken;
    for (const auto& v : values) {
        const SFeature* f = m->Find(v.m_wstrName.GetString());
        CZxVariant checked;
        if (!f)
            return ZX_E_FAIL;
        // Hosts may wrap a value in a record whose single member is "Value".
        const CZxVariant& given = v.m_varValue.IsRecord() && v.m_varValue.GetMemberCount() == 1 &&
                                          v.m_varValue.Search(L"Value")
                                      ? v.m_varValue[L"Value"]
                                      : v.m_varValue;
        if (const int s = m->Check(*f, given, checked))
            return s;
        if (m->live && zxgenicam::ShapesFrames(f->name))
            return ZX_E_BUSY;
        taken.emplace_back(f, checked);
    }
    return bCheckOnly ? ZX_OK : m->WriteAll(taken, info);
}
