// The simulated camera's property table: how it is built, how values are
// checked, derived and stored, and the property operations of the provider.
#include <cmath>
#include <cwchar>
#include <cwctype>

#include "camera_internal.h"
#include "zx/status.h"
#include "zxhost/exposure.h"

namespace {

const double kExposureList[] = {0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000};

CZxVariant Range(const wchar_t* runType, double min, double max, double step)
{
    CZxVariant d = CZxVariant::MakeRecord(runType);
    d[L"m_dMin"] = min;
    d[L"m_dMax"] = max;
    d[L"m_dStep"] = step;
    return d;
}

CZxVariant RangeInt(int min, int max, int step)
{
    CZxVariant d = CZxVariant::MakeRecord(L"RZxRangeInt32");
    d[L"m_iMin"] = min;
    d[L"m_iMax"] = max;
    d[L"m_iStep"] = step;
    return d;
}

CZxVariant List(const CZxVariant& items)
{
    CZxVariant d = CZxVariant::MakeRecord(L"RZxList");
    d[L"m_list"] = items;
    return d;
}

CZxVariant Entry(const wchar_t* valueKey, const CZxVariant& value, const wchar_t* text)
{
    CZxVariant e;
    e[valueKey] = value;
    e[L"m_wstrText"] = text;
    return e;
}

CZxVariant ExposureRange(double min, double max)
{
    CZxVariant d = Range(L"RZxRangeDoubleExposure", min, max, 0.05);
    CZxVariant presets = CZxVariant::MakeArray();
    for (double ms : kExposureList)
        presets.Add(Entry(L"m_dValue", ms, ZX_ExposureToText(ms, -1.0)));
    d[L"m_List"] = presets;
    d[L"m_dOneFrameExp"] = -1.0;   // filled per set from the pixel clock
    return d;
}

CZxVariant TextIntList(std::initializer_list<std::pair<int, const wchar_t*>> items)
{
    CZxVariant list = CZxVariant::MakeArray();
    for (const auto& it : items)
        list.Add(Entry(L"m_iValue", it.first, it.second));
    return List(list);
}

bool IsNumber(const CZxVariant& v)
{
    const auto k = v.GetKind();
    return k == CZxVariant::EKind::Bool || k == CZxVariant::EKind::Int32 || k == CZxVariant::EKind::Double;
}

// The whole text must be one number (blanks around it allowed).
bool ParseNumber(const CZxStringW& s, double& out)
{
    const wchar_t* begin = s.GetString();
    wchar_t* end = nullptr;
    const double d = std::wcstod(begin, &end);
    if (end == begin)
        return false;
    while (*end && std::iswspace(static_cast<wint_t>(*end)))
        ++end;
    if (*end || !std::isfinite(d))
        return false;
    out = d;
    return true;
}

bool ToNumber(const CZxVariant& v, double& out)
{
    if (IsNumber(v)) {
        out = v.GetDouble();
        return std::isfinite(out);
    }
    return v.GetKind() == CZxVariant::EKind::String && ParseNumber(v.GetCZxStringW(), out);
}

bool IsRangeDouble(const CZxVariantRunType& t)
{
    return t == CZxVariantRunType(L"RZxRangeDouble") || t == CZxVariantRunType(L"RZxRangeDoubleList") ||
           t == CZxVariantRunType(L"RZxRangeDoubleExposure");
}

} // namespace

void CZxSimCamera::BuildProperties()
{
    auto add = [this](const wchar_t* name, const wchar_t* label, const CZxVariant& def, const CZxVariant& fast,
                      const CZxVariant& quality, bool setting = true, uint32_t flags = 0) -> SProperty& {
        SProperty& p = m_props.emplace_back();
        p.desc.m_wstrName = name;
        p.desc.m_wstrText = label;
        Describe(p, def);
        p.desc.m_uiFlags = flags;
        p.defFast = fast;
        p.defQuality = quality;
        p.bSetting = setting;
        return p;
    };
    CZxVariant temperatures = CZxVariant::MakeArray();
    for (int t = -30; t <= 20; t += 10)
        temperatures.Add(Entry(L"m_dValue", double(t), CZxStringW::Formatted(L"%d \u00b0C", t)));
    CZxVariant temperature = Range(L"RZxRangeDoubleList", -30.0, 20.0, 0.5);
    temperature[L"m_List"] = temperatures;

    CZxVariant clocks = CZxVariant::MakeArray();
    for (int mhz : {12, 24, 48})
        clocks.Add(CZxVariant(mhz));
    CZxVariant triggers = CZxVariant::MakeArray();
    for (const wchar_t* t : {L"Free Run", L"Software", L"Hardware"})
        triggers.Add(CZxVariant(t));
    CZxVariant sharpness = CZxVariant::MakeArray();
    for (double s : {0.0, 0.5, 1.0, 2.0})
        sharpness.Add(CZxVariant(s));
    CZxVariant lights = CZxVariant::MakeArray();
    lights.Add(Entry(L"m_wstrValue", L"led", L"LED"));
    lights.Add(Entry(L"m_wstrValue", L"halogen", L"Halogen"));
    lights.Add(Entry(L"m_wstrValue", L"daylight", L"Daylight"));
    CZxVariant gamma = RangeInt(30, 300, 5);
    gamma[L"m_iDenom"] = 100;
    gamma[L"m_iPrecicion"] = 2;

    using namespace zxsim;
    add(kPropExposure, L"Exposure Time", ExposureRange(0.05, 10000.0), 20.0, 50.0).state = [this](int set) {
        // Auto exposure moves it from frame to frame.
        return ZX_PROPSTATE_AVAILABLE | (NumberOf(kPropAutoExposure, set) != 0 ? ZX_PROPSTATE_CHANGING : 0u);
    };
    add(kPropAutoExposure, L"Auto Exposure", CZxVariant(false), false, false);
    add(kPropGain, L"Gain", Range(L"RZxRangeDouble", 1.0, 16.0, 0.1), 1.0, 1.0);
    add(kPropOffset, L"Offset", RangeInt(0, 255, 1), 0, 0);
    add(kPropGamma, L"Gamma", gamma, 100, 100);
    add(kPropCooling, L"Cooling", CZxVariant(false), true, true);
    add(kPropTemperature, L"Target Temperature", temperature, -10.0, -10.0).state = [this](int set) {
        return NumberOf(kPropCooling, set) != 0 ? ZX_PROPSTATE_AVAILABLE : 0u;   // no target without cooling
    };
    SProperty& sensor = add(kPropSensorTemperature, L"Sensor Temperature", CZxVariant(0.0), 25.0, 25.0, false);
    sensor.state = [](int) { return ZX_PROPSTATE_AVAILABLE | ZX_PROPSTATE_READONLY | ZX_PROPSTATE_CHANGING; };
    sensor.value = [this](int) { return CZxVariant(m_dSensorTemperature); };
    sensor.read = [this](int set) {
        // The sensor settles a quarter of the way to its target on every reading.
        const double target = NumberOf(kPropCooling, set) != 0 ? NumberOf(kPropTemperature, set) : 25.0;
        m_dSensorTemperature += (target - m_dSensorTemperature) * 0.25;
    };
    add(kPropFrameRate, L"Frame Rate", CZxVariant(0.0), 0.0, 0.0, false).value = [this](int set) {
        const double byExposure = 1000.0 / FrameExposure(set), byClock = MaxFrameRate(set);
        return CZxVariant(byExposure < byClock ? byExposure : byClock);
    };
    add(kPropPixelClock, L"Pixel Clock (MHz)", List(clocks), 24, 24);
    add(kPropTriggerMode, L"Trigger", List(triggers), L"Free Run", L"Free Run");
    add(kPropReadoutMode, L"Readout",
        TextIntList({{0, L"Low Noise"}, {1, L"Standard"}, {2, L"High Speed"}}), 2, 0);
    add(kPropSensorMode, L"Sensor Area", TextIntList({{0, L"Full Sensor"}, {1, L"Center Half"}}), 0, 0, true,
        ZX_PROPFLAG_CHANGES_FORMAT);
    add(kPropSharpness, L"Sharpness", List(sharpness), 0.0, 0.0);
    add(kPropLightSource, L"Light Source", List(lights), L"led", L"led");
    add(kPropCameraLabel, L"Label", CZxVariant(L""), L"Sim", L"Sim");
    add(kPropBufferCount, L"Buffers", CZxVariant(0), 4, 4);
    CZxVariant filters = CZxVariant::MakeArray();
    for (const wchar_t* f : {L"Open", L"Red", L"Green", L"Blue", L"Closed"})
        filters.Add(CZxVariant(f));
    // The wheel reports its slot, not the filter's name.
    add(kPropFilterWheel, L"Filter", List(filters), 0, 0).bIndexed = true;
    // Targets of the auto-exposure engine, edited by the advanced setup.
    add(kPropLiveSpeedUp, L"Live Acceleration",
        TextIntList({{1, L"1x"}, {2, L"2x"}, {5, L"5x"}, {10, L"10x"}, {20, L"20x"}, {50, L"50x"}, {100, L"100x"}}),
        1, 1);
    add(kPropSpeedUpTime, L"Speed-up Time",
        TextIntList({{0, L"Off"}, {100, L"100 ms"}, {250, L"250 ms"}, {500, L"500 ms"}, {1000, L"1 s"}}), 0, 0);
    add(kPropCaptureQuality, L"Target Maximum Intensity",
        TextIntList({{80, L"80 %"}, {85, L"85 %"}, {90, L"90 %"}, {95, L"95 %"}, {98, L"98 %"}}), 90, 90);
    add(kPropCaptureMaxExposure, L"Maximum Exposure", ExposureRange(0.05, 10000.0), 2000.0, 2000.0);
    add(kPropQuantilPromile, L"Overillumination Tolerance (%)", Range(L"RZxRangeDouble", 0.0, 100.0, 0.1), 1.0,
        1.0);
    add(kPropQuantilPixels, L"Overillumination Tolerance (pixels)", RangeInt(0, 1000000, 1), 100, 100);
    add(kPropQuantilRelative, L"Relative Tolerance", CZxVariant(false), true, true);
}

void CZxSimCamera::Describe(SProperty& p, const CZxVariant& definition)
{
    p.desc.varValDefinition = definition;
    p.definition = nullptr;
    // An exposure range's one-frame time follows the pixel clock and the sensor area.
    if (definition.Search(L"m_dOneFrameExp"))
        p.definition = [this](int set, CZxVariant& d) { d[L"m_dOneFrameExp"] = 1000.0 / MaxFrameRate(set); };
}

const CZxSimCamera::SProperty* CZxSimCamera::FindProperty(const wchar_t* name) const
{
    if (!name)
        return nullptr;
    for (const auto& p : m_props)
        if (p.desc.m_wstrName.Compare(name) == 0)
            return &p;
    return nullptr;
}

double CZxSimCamera::NumberOf(const wchar_t* name, int set) const
{
    auto it = m_values[set].find(name);
    return it == m_values[set].end() ? 0.0 : it->second.GetDouble();
}

double CZxSimCamera::FrameExposure(int set) const
{
    const double exposure = NumberOf(zxsim::kPropExposure, set);
    if (set != 0)
        return exposure;
    // Live view trades exposure for speed, as drivers do; the picture keeps its
    // brightness through gain (see Snap).
    const double cap = NumberOf(zxsim::kPropSpeedUpTime, set);
    if (cap > 0.0)
        return exposure < cap ? exposure : cap;
    const double factor = NumberOf(zxsim::kPropLiveSpeedUp, set);
    return factor > 1.0 ? exposure / factor : exposure;
}

// The pixel clock sets the fastest frame rate; reading half the sensor doubles it.
double CZxSimCamera::MaxFrameRate(int set) const
{
    return NumberOf(zxsim::kPropPixelClock, set) * 1.25 * (NumberOf(zxsim::kPropSensorMode, set) != 0 ? 2.0 : 1.0);
}

CZxVariant CZxSimCamera::Definition(const SProperty& p, int set) const
{
    CZxVariant d = p.desc.varValDefinition;
    if (p.definition)
        p.definition(set, d);
    return d;
}

uint32_t CZxSimCamera::State(const SProperty& p, int set) const
{
    if (p.state)
        return p.state(set);
    return p.bSetting ? ZX_PROPSTATE_AVAILABLE : ZX_PROPSTATE_AVAILABLE | ZX_PROPSTATE_READONLY;
}

CZxVariant CZxSimCamera::Value(const SProperty& p, int set) const
{
    if (p.value)
        return p.value(set);
    auto it = m_values[set].find(p.desc.m_wstrName.Std());
    return it == m_values[set].end() ? CZxVariant() : it->second;
}

bool CZxSimCamera::Coerce(const SProperty& p, int set, const CZxVariant& given, CZxVariant& out) const
{
    // Hosts may wrap a value in a record whose single member is "Value".
    const CZxVariant& in = given.IsRecord() && given.GetMemberCount() == 1 && given.Search(L"Value")
                               ? given[L"Value"] : given;
    const CZxVariant def = Definition(p, set);
    const CZxVariantRunType type = def.GetRunType();
    double x = 0.0;

    if (IsRangeDouble(type)) {
        if (!ToNumber(in, x))
            return false;
        const double min = def[L"m_dMin"].GetDouble(), max = def[L"m_dMax"].GetDouble();
        out = x < min ? min : (x > max ? max : x);
        return true;
    }
    if (type == CZxVariantRunType(L"RZxRangeInt32")) {
        if (!ToNumber(in, x))
            return false;
        const double min = def[L"m_iMin"].GetDouble(), max = def[L"m_iMax"].GetDouble();
        out = static_cast<int>(x < min ? min : (x > max ? max : x));
        return true;
    }
    if (type == CZxVariantRunType(L"RZxList") && p.bIndexed) {
        if (!ToNumber(in, x) || x < 0 || x >= def[L"m_list"].GetCount() || x != std::floor(x))
            return false;
        out = static_cast<int>(x);
        return true;
    }
    if (type == CZxVariantRunType(L"RZxList")) {
        const CZxVariant& list = def[L"m_list"];
        for (int i = 0; i < list.GetCount(); ++i) {
            const CZxVariant& e = list[i];
            if (e.IsRecord()) {
                // Entries match by value, or by their label.
                const CZxVariant* key = e.Search(L"m_iValue");
                if (!key) key = e.Search(L"m_dValue");
                if (!key) key = e.Search(L"m_wstrValue");
                if (!key)
                    continue;
                const bool byLabel = in.GetKind() == CZxVariant::EKind::String &&
                                     in.GetCZxStringW() == e[L"m_wstrText"].GetCZxStringW();
                const bool byValue = key->GetKind() == CZxVariant::EKind::String
                                         ? in.GetKind() == CZxVariant::EKind::String &&
                                               in.GetCZxStringW() == key->GetCZxStringW()
                                         : ToNumber(in, x) && x == key->GetDouble();
                if (byLabel || byValue) {
                    out = *key;
                    return true;
                }
            } else if (e.GetKind() == CZxVariant::EKind::String
                           ? in.GetKind() == CZxVariant::EKind::String && in.GetCZxStringW() == e.GetCZxStringW()
                           : ToNumber(in, x) && x == e.GetDouble()) {
                out = e;
                return true;
            }
        }
        return false;
    }
    if (type == CZxVariantRunType(L"bool")) {
        if (IsNumber(in)) {
            out = in.GetBool();
            return true;
        }
        const std::wstring s = in.GetCZxStringW().Std();
        if (in.GetKind() == CZxVariant::EKind::String && (s == L"true" || s == L"1" || s == L"false" || s == L"0")) {
            out = s == L"true" || s == L"1";
            return true;
        }
        return false;
    }
    if (type == CZxVariantRunType(L"zx_int32") || type == CZxVariantRunType(L"double")) {
        if (!ToNumber(in, x))
            return false;
        if (type == CZxVariantRunType(L"double")) {
            out = x;
            return true;
        }
        if (!(x > -2147483649.0 && x < 2147483648.0))
            return false;
        out = static_cast<int>(x);
        return true;
    }
    if (type == CZxVariantRunType(L"CZxStringW") && in.GetKind() == CZxVariant::EKind::String) {
        out = in;
        return true;
    }
    return false;
}

void CZxSimCamera::SetProperty(const wchar_t* name, const wchar_t* label, const CZxVariant& definition,
                               const CZxVariant& value, uint32_t flags)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    if (!name || !*name)
        return;
    SProperty* p = const_cast<SProperty*>(FindProperty(name));
    if (!p) {
        m_props.emplace_back();
        p = &m_props.back();
        p->desc.m_wstrName = name;
    }
    p->desc.m_wstrText = label ? label : name;
    Describe(*p, definition);
    p->desc.m_uiFlags = flags;
    p->defFast = p->defQuality = value;
    for (int s = 0; s < kSets; ++s)
        Store(*p, s, value);
}

void CZxSimCamera::Store(const SProperty& p, int set, const CZxVariant& v)
{
    m_values[set][p.desc.m_wstrName.Std()] = v;
}

// ---- Provider operations ----------------------------------------------------------

int CZxSimCamera::PropGetDesc_WRP(uint32_t mode, const wchar_t* name, SZxGrabberPropertyDesc01& desc)
{
    COperation op(*this, L"PropGetDesc_WRP", Num(mode) + L", " + Arg(name));
    if (const auto failure = op.Planned())
        return *failure;
    const SProperty* p = FindProperty(name);
    if (!p)
        return ZX_E_FAIL;
    desc = p->desc;
    desc.varValDefinition = Definition(*p, SetIndex(mode));
    return ZX_OK;
}

int CZxSimCamera::PropGetSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value)
{
    COperation op(*this, L"PropGetSingle_WRP", Num(mode) + L", " + value.m_wstrName.Std());
    if (const auto failure = op.Planned())
        return *failure;
    const SProperty* p = FindProperty(value.m_wstrName);
    if (!p)
        return ZX_E_FAIL;
    const int set = SetIndex(mode);
    if (p->read)
        p->read(set);
    value.m_varValue = Value(*p, set);
    return ZX_OK;
}

int CZxSimCamera::PropGetDefaultSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value)
{
    COperation op(*this, L"PropGetDefaultSingle_WRP", Num(mode) + L", " + value.m_wstrName.Std());
    if (const auto failure = op.Planned())
        return *failure;
    const SProperty* p = FindProperty(value.m_wstrName);
    if (!p || !p->bSetting)
        return ZX_E_FAIL;
    value.m_varValue = SetIndex(mode) == 1 ? p->defQuality : p->defFast;
    return ZX_OK;
}

int CZxSimCamera::PropState_WRP(uint32_t mode, const SZxGrabberPropertyDesc01& desc, uint32_t& state)
{
    COperation op(*this, L"PropState_WRP", Num(mode) + L", " + desc.m_wstrName.Std());
    if (const auto failure = op.Planned())
        return *failure;
    const SProperty* p = FindProperty(desc.m_wstrName);
    if (!p) {
        // Commands are always there to be run, as a real driver reports them;
        // their buttons read their state through the same call.
        if (!FindCommand(desc.m_wstrName))
            return ZX_E_FAIL;
        state = ZX_PROPSTATE_AVAILABLE;
        return ZX_OK;
    }
    state = State(*p, SetIndex(mode));
    return ZX_OK;
}

int CZxSimCamera::PropSet_WRP(uint32_t mode, const CZxVector_SZxGrabberPropertyValue& values,
                              SZxStateChangeInfo* info, bool bCheckOnly)
{
    std::wstring args = Num(mode);
    for (const auto& v : values)
        args += L", " + v.m_wstrName.Std() + L"=" + VariantText(v.m_varValue);
    COperation op(*this, L"PropSet_WRP", args + (bCheckOnly ? L", check only" : L""));
    if (const auto failure = op.Planned())
        return *failure;

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
