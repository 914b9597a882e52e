// The GenICam provider itself: opening a device and reading its feature tree,
// formats, settings, the region of interest, commands and identity.
#include <algorithm>
#include <cstring>

#include "genicam_internal.h"
#include "zx/bayer.h"
#include "zxhost/system.h"

using zxgenicam::SFeature;

namespace zxgenicam {

bool LayoutOf(ArvPixelFormat format, SLayout& l)
{
    l = SLayout();
    switch (format) {
    case ARV_PIXEL_FORMAT_MONO_8: l = {8, 1, 0, false}; return true;
    case ARV_PIXEL_FORMAT_MONO_10: l = {10, 1, 0, false}; return true;
    case ARV_PIXEL_FORMAT_MONO_12: l = {12, 1, 0, false}; return true;
    case ARV_PIXEL_FORMAT_MONO_14: l = {14, 1, 0, false}; return true;
    case ARV_PIXEL_FORMAT_MONO_16: l = {16, 1, 0, false}; return true;
    case ARV_PIXEL_FORMAT_BAYER_RG_8: l = {8, 3, ZX_BAYER_RGGB, false}; return true;
    case ARV_PIXEL_FORMAT_BAYER_GR_8: l = {8, 3, ZX_BAYER_GRBG, false}; return true;
    case ARV_PIXEL_FORMAT_BAYER_GB_8: l = {8, 3, ZX_BAYER_GBRG, false}; return true;
    case ARV_PIXEL_FORMAT_BAYER_BG_8: l = {8, 3, ZX_BAYER_BGGR, false}; return true;
    case ARV_PIXEL_FORMAT_BAYER_RG_16: l = {16, 3, ZX_BAYER_RGGB, false}; return true;
    case ARV_PIXEL_FORMAT_BAYER_GR_16: l = {16, 3, ZX_BAYER_GRBG, false}; return true;
    case ARV_PIXEL_FORMAT_BAYER_GB_16: l = {16, 3, ZX_BAYER_GBRG, false}; return true;
    case ARV_PIXEL_FORMAT_BAYER_BG_16: l = {16, 3, ZX_BAYER_BGGR, false}; return true;
    case ARV_PIXEL_FORMAT_RGB_8_PACKED: l = {8, 3, 0, true}; return true;
    case ARV_PIXEL_FORMAT_BGR_8_PACKED: l = {8, 3, 0, false}; return true;
    default: return false;
    }
}

std::vector<int> BinningsOf(const SLayout& l)
{
    if (l.bayer)
        return {1, 2};
    return l.comp == 1 ? std::vector<int>{1, 2, 4} : std::vector<int>{1};
}

} // namespace zxgenicam

namespace {

const char* const kExposureNames[] = {"ExposureTime", "ExposureTimeAbs"};
const char* const kGainNames[] = {"Gain", "GainRaw"};

// The format's name: the pixel format, and its binning when there is one.
std::wstring FormatName(const std::wstring& pixelFormat, int binning)
{
    return binning > 1 ? pixelFormat + CZxStringW::Formatted(L" (Binning %dx%d)", binning, binning).Std()
                       : pixelFormat;
}

void OnControlLost(ArvDevice*, gpointer data) { static_cast<std::atomic<bool>*>(data)->store(true); }

} // namespace

CZxGenICamCamera::CZxGenICamCamera() : m(new SImpl) {}

CZxGenICamCamera::~CZxGenICamCamera() { Close(); }

int CZxGenICamCamera::UseOnlyInterface(const char* id)
{
    bool known = false;
    for (unsigned i = 0, n = arv_get_n_interfaces(); i < n; ++i)
        known = known || (id && std::strcmp(arv_get_interface_id(i), id) == 0);
    if (!known)
        return ZX_E_FAIL;
    for (unsigned i = 0, n = arv_get_n_interfaces(); i < n; ++i) {
        const char* other = arv_get_interface_id(i);
        if (std::strcmp(other, id) == 0)
            arv_enable_interface(other);
        else
            arv_disable_interface(other);
    }
    return ZX_OK;
}

std::vector<std::string> CZxGenICamCamera::ListDevices()
{
    arv_update_device_list();
    std::vector<std::string> ids;
    for (unsigned i = 0, n = arv_get_n_devices(); i < n; ++i)
        if (const char* id = arv_get_device_id(i))
            ids.push_back(id);
    return ids;
}

int CZxGenICamCamera::Open(const char* id)
{
    Close();
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    GError* err = nullptr;
    m->camera = arv_camera_new(id, &err);
    if (!m->camera) {
        m->error = err && err->message ? err->message : "no such device";
        if (err)
            g_error_free(err);
        return ZX_E_FAIL;
    }
    const char* opened = arv_camera_get_device_id(m->camera, &err);
    g_clear_error(&err);
    m->id = opened ? opened : (id ? id : "");
    m->device = arv_camera_get_device(m->camera);
    m->gc = arv_device_get_genicam(m->device);
    m->lost = false;
    m->lostHandler = g_signal_connect(m->device, "control-lost", G_CALLBACK(OnControlLost), &m->lost);
    m->features.clear();
    m->exposureName.clear();
    m->gainName.clear();

    auto add = [this](const char* name, const std::wstring& category) {
        ArvGcNode* n = arv_gc_get_node(m->gc, name);
        if (!n || !ARV_IS_GC_FEATURE_NODE(n) || m->Find(zxgenicam::Wide(name).c_str()))
            return;
        SFeature f;
        f.name = name;
        f.node = n;
        f.info.m_name = zxgenicam::Wide(name);
        f.info.m_category = category;
        const char* unit = nullptr;
        if (ARV_IS_GC_ENUMERATION(n)) {
            f.info.m_kind = EZxGenICamKind::Enumeration;
        } else if (ARV_IS_GC_COMMAND(n)) {
            f.info.m_kind = EZxGenICamKind::Command;
        } else if (ARV_IS_GC_BOOLEAN(n)) {
            f.info.m_kind = EZxGenICamKind::Boolean;
        } else if (ARV_IS_GC_FLOAT(n)) {
            const bool exposure = std::any_of(std::begin(kExposureNames), std::end(kExposureNames),
                                              [&](const char* e) { return f.name == e; });
            f.info.m_kind = exposure && m->exposureName.empty() ? EZxGenICamKind::Exposure : EZxGenICamKind::Float;
            unit = exposure ? nullptr : arv_gc_float_get_unit(ARV_GC_FLOAT(n));
            if (f.info.m_kind == EZxGenICamKind::Exposure) {
                m->exposureName = f.info.m_name;
                f.info.m_unit = L"ms";
            }
        } else if (ARV_IS_GC_INTEGER(n)) {
            f.info.m_kind = EZxGenICamKind::Integer;
            unit = arv_gc_integer_get_unit(ARV_GC_INTEGER(n));
        } else if (ARV_IS_GC_STRING(n)) {
            f.info.m_kind = EZxGenICamKind::String;
        } else {
            return;   // registers, ports and converters have no value a control could show
        }
        if (unit && *unit)
            f.info.m_unit = zxgenicam::Wide(unit);
        if (f.info.m_kind != EZxGenICamKind::Command && m->gainName.empty() &&
            std::any_of(std::begin(kGainNames), std::end(kGainNames), [&](const char* g) { return f.name == g; }))
            m->gainName = f.info.m_name;
        m->features.push_back(f);
    };
    // The tree under Root first, in its order; then the features a device
    // defines outside it, which many devices (the fake one too) have.
    std::vector<std::pair<std::string, std::wstring>> pending{{"Root", L""}};
    for (size_t i = 0; i < pending.size(); ++i) {
        ArvGcNode* n = arv_gc_get_node(m->gc, pending[i].first.c_str());
        if (!n)
            continue;
        if (!ARV_IS_GC_CATEGORY(n)) {
            add(pending[i].first.c_str(), pending[i].second);
            continue;
        }
        std::vector<std::pair<std::string, std::wstring>> children;
        for (const GSList* l = arv_gc_category_get_features(ARV_GC_CATEGORY(n)); l; l = l->next)
            children.emplace_back(static_cast<const char*>(l->data), zxgenicam::Wide(pending[i].first.c_str()));
        pending.insert(pending.begin() + i + 1, children.begin(), children.end());
    }
    static const char* const kFeatureElements[] = {"Integer", "Float", "Enumeration", "Boolean", "Command", "String",
                                                   "StringReg"};
    ArvDomElement* rootElement = arv_dom_document_get_document_element(ARV_DOM_DOCUMENT(m->gc));
    for (ArvDomNode* c = rootElement ? arv_dom_node_get_first_child(ARV_DOM_NODE(rootElement)) : nullptr; c;
         c = arv_dom_node_get_next_sibling(c)) {
        const char* element = arv_dom_node_get_node_name(c);
        if (!ARV_IS_GC_FEATURE_NODE(c) || !element ||
            std::none_of(std::begin(kFeatureElements), std::end(kFeatureElements),
                         [&](const char* e) { return std::strcmp(e, element) == 0; }) ||
            arv_gc_feature_node_get_visibility(ARV_GC_FEATURE_NODE(c)) == ARV_GC_VISIBILITY_INVISIBLE)
            continue;
        add(arv_gc_feature_node_get_name(ARV_GC_FEATURE_NODE(c)), L"");
    }
    m->binning = 1;
    m->roi = CZxRect();
    m->roiEnabled = false;
    m->open = true;
    m->defaults = SZxGrabberCameraSettings();
    m->FillSettings(m->defaults, ZX_SETTINGS_ALL);
    return ZX_OK;
}

void CZxGenICamCamera::Close()
{
    m->open = false;   // a waiting NextFrame sees this before it takes the lock
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (m->camera && m->live) {
        GError* err = nullptr;
        arv_camera_stop_acquisition(m->camera, &err);
        if (err)
            g_error_free(err);
    }
    m->live = false;
    g_clear_object(&m->stream);
    if (m->device && m->lostHandler)
        g_signal_handler_disconnect(m->device, m->lostHandler);
    m->lostHandler = 0;
    g_clear_object(&m->camera);
    m->device = nullptr;
    m->gc = nullptr;
    m->features.clear();
}

bool CZxGenICamCamera::IsOpen() const { return m->Usable() == ZX_OK; }

std::string CZxGenICamCamera::LastError() const
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    return m->error;
}

std::vector<SZxGenICamFeature> CZxGenICamCamera::FeatureList() const
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    std::vector<SZxGenICamFeature> list;
    for (const SFeature& f : m->features)
        list.push_back(f.info);
    return list;
}

std::wstring CZxGenICamCamera::ExposureName() const
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    return m->exposureName;
}

std::wstring CZxGenICamCamera::GainName() const
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    return m->gainName;
}

// ---- Formats ---------------------------------------------------------------------

std::wstring CZxGenICamCamera::SImpl::PixelFormat()
{
    const SFeature* f = Find(L"PixelFormat");
    return f ? Value(*f).GetCZxStringW().Std() : std::wstring();
}

std::vector<SZxGrabberFormatValue> CZxGenICamCamera::SImpl::Formats()
{
    std::vector<SZxGrabberFormatValue> formats;
    const SFeature* pf = Find(L"PixelFormat");
    if (!pf || !ARV_IS_GC_ENUMERATION(pf->node))
        return formats;
    const int64_t w = Int("Width", 0), h = Int("Height", 0);
    const std::wstring current = PixelFormat();
    GError* err = nullptr;
    int32_t group = 0;
    for (const GSList* l = arv_gc_enumeration_get_entries(ARV_GC_ENUMERATION(pf->node)); l; l = l->next, ++group) {
        ArvGcEnumEntry* e = ARV_GC_ENUM_ENTRY(l->data);
        zxgenicam::SLayout layout;
        const int64_t code = arv_gc_enum_entry_get_value(e, &err);
        if (err) {
            g_clear_error(&err);
            continue;
        }
        if (!arv_gc_feature_node_is_available(ARV_GC_FEATURE_NODE(e), &err) ||
            !zxgenicam::LayoutOf(ArvPixelFormat(code), layout)) {
            g_clear_error(&err);
            continue;   // packed, planar and YUV formats have no picture buffer layout here
        }
        const std::wstring name = zxgenicam::Wide(arv_gc_feature_node_get_name(ARV_GC_FEATURE_NODE(e)));
        for (int b : zxgenicam::BinningsOf(layout)) {
            SZxGrabberFormatValue f;
            f.m_wstrName = FormatName(name, b);
            f.m_uiFlags = ZX_FORMAT_FAST | ZX_FORMAT_QUALITY;
            if (name == current && b == 1)
                f.m_uiFlags |= ZX_FORMAT_DEFAULT_FAST | ZX_FORMAT_DEFAULT_QUALITY;
            f.m_dBinning = b;
            f.m_iGroup = group;
            f.m_rcRect = CZxRect(0, 0, int32_t(w / b), int32_t(h / b));
            f.m_uiBits = layout.bits;
            f.m_uiComp = layout.comp;
            formats.push_back(f);
        }
    }
    return formats;
}

SZxGrabberFormatValue CZxGenICamCamera::SImpl::CurrentFormat()
{
    const std::wstring name = FormatName(PixelFormat(), binning);
    for (const SZxGrabberFormatValue& f : Formats())
        if (f.m_wstrName == name)
            return f;
    SZxGrabberFormatValue none;
    none.m_wstrName = name;
    return none;
}

int CZxGenICamCamera::FormatNext_WRP(SZxGrabberFormatValue& format)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    const std::vector<SZxGrabberFormatValue> formats = m->Formats();
    size_t next = 0;
    if (!format.m_wstrName.Std().empty()) {
        while (next < formats.size() && formats[next].m_wstrName != format.m_wstrName)
            ++next;
        ++next;
    }
    if (next >= formats.size())
        return ZX_E_FAIL;
    format = formats[next];
    return ZX_OK;
}

int CZxGenICamCamera::FormatGet_WRP(uint32_t, SZxGrabberFormatValue& format)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    format = m->CurrentFormat();
    return format.m_uiBits && format.m_uiComp ? ZX_OK : ZX_E_FAIL;
}

int CZxGenICamCamera::FormatSet_WRP(uint32_t, const SZxGrabberFormatValue& format, SZxStateChangeInfo* info,
                                    bool bCheckOnly)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    const std::vector<SZxGrabberFormatValue> formats = m->Formats();
    auto it = std::find_if(formats.begin(), formats.end(),
                           [&](const SZxGrabberFormatValue& f) { return f.m_wstrName == format.m_wstrName; });
    if (it == formats.end())
        return ZX_E_FAIL;
    // The pixel format is the part of the name before the binning.
    const std::wstring pixel = it->m_wstrName.Std().substr(0, it->m_wstrName.Std().find(L" (Binning"));
    const SFeature* pf = m->Find(L"PixelFormat");
    CZxVariant checked;
    if (const int s = m->Check(*pf, CZxVariant(pixel.c_str()), checked))
        return s;
    if (m->live)
        return ZX_E_BUSY;   // the device locks its format while it streams
    if (bCheckOnly)
        return ZX_OK;
    const SZxGrabberFormatValue before = m->CurrentFormat();
    const int status = m->WriteAll({{pf, checked}}, info);
    if (status == ZX_OK)
        m->binning = int(it->m_dBinning);
    if (info && m->CurrentFormat() != before)
        info->m_bFormatChanged = true;
    return status;
}

int CZxGenICamCamera::FormatGetFromSettings_WRP(uint32_t mode, const SZxGrabberCameraSettings& settings,
                                                SZxGrabberFormatValue& format)
{
    if (!(settings.m_uiMask & ZX_SETTINGS_FORMATS))
        return FormatGet_WRP(mode, format);
    format = settings.Format(mode);
    return ZX_OK;
}

// ---- Fast/quality: one set on the device ------------------------------------------

uint32_t CZxGenICamCamera::GetModeFQ() { return ZX_MODE_FAST; }
int CZxGenICamCamera::SetModeFQ(uint32_t mode)
{
    return mode == ZX_MODE_FAST || mode == ZX_MODE_QUALITY ? ZX_OK : ZX_E_FAIL;
}
bool CZxGenICamCamera::IsModeFQSynchronized() { return true; }
int CZxGenICamCamera::ModeFQSynchronize(bool synchronize) { return synchronize ? ZX_OK : ZX_E_NOTSUPPORTED; }

// ---- Camera settings ---------------------------------------------------------------

void CZxGenICamCamera::SImpl::FillSettings(SZxGrabberCameraSettings& s, uint32_t mask)
{
    s.m_uiMask = mask & ZX_SETTINGS_ALL;
    s.m_vecPropFast.RemoveAll();
    s.m_vecPropQuality.RemoveAll();
    if (mask & ZX_SETTINGS_PROPERTIES)
        for (const SFeature& f : features) {
            const uint32_t st = State(f);
            // Only what can be written back belongs to a setting; the format and
            // the ROI registers are their own groups.
            if (f.info.m_kind == EZxGenICamKind::Command || !(st & ZX_PROPSTATE_AVAILABLE) ||
                (st & ZX_PROPSTATE_READONLY) || f.name == "PixelFormat" || f.name == "Width" ||
                f.name == "Height" || f.name == "OffsetX" || f.name == "OffsetY")
                continue;
            const CZxVariant v = Value(f);
            if (v.IsNull())
                continue;
            s.m_vecPropFast.Add(SZxGrabberPropertyValue(f.info.m_name.c_str(), v));
            s.m_vecPropQuality.Add(SZxGrabberPropertyValue(f.info.m_name.c_str(), v));
        }
    if (mask & ZX_SETTINGS_FORMATS)
        s.m_fmtFast = s.m_fmtQuality = CurrentFormat();
    if (mask & ZX_SETTINGS_ROI) {
        s.m_bROIEnabled = roiEnabled;
        s.m_rcROI = roi;
    }
    if (mask & ZX_SETTINGS_FQSYNC)
        s.m_bFQSynchronized = true;
}

int CZxGenICamCamera::SImpl::ApplySettings(const SZxGrabberCameraSettings& s, uint32_t mask)
{
    mask &= s.m_uiMask;
    int status = ZX_OK;
    if (mask & ZX_SETTINGS_PROPERTIES) {
        std::vector<std::pair<const SFeature*, CZxVariant>> taken;
        for (const auto& v : s.m_vecPropFast) {
            const SFeature* f = Find(v.m_wstrName.GetString());
            CZxVariant checked;
            // A setting stored while a feature could be written may meet it locked, or
            // streaming, now; that value is skipped.
            if (f && !(live && zxgenicam::ShapesFrames(f->name)) && Check(*f, v.m_varValue, checked) == ZX_OK)
                taken.emplace_back(f, checked);
        }
        status = WriteAll(taken, nullptr);
    }
    if (status == ZX_OK && (mask & ZX_SETTINGS_ROI)) {
        roi = s.m_rcROI;
        roiEnabled = s.m_bROIEnabled;
        status = ApplyROI();
    }
    return status;
}

int CZxGenICamCamera::CameraSettingsGet_UNI_WRP(SZxGrabberCameraSettings& settings, uint32_t mask, bool bCurrent)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    if (bCurrent) {
        m->FillSettings(settings, mask);
    } else {
        settings = m->defaults;
        settings.m_uiMask &= mask;
    }
    return ZX_OK;
}

int CZxGenICamCamera::CameraSettingsSet_UNI_WRP(const SZxGrabberCameraSettings& settings, uint32_t mask)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    int status = m->ApplySettings(settings, mask);
    if (status == ZX_OK && (mask & settings.m_uiMask & ZX_SETTINGS_FORMATS))
        status = FormatSet_WRP(ZX_MODE_FAST, settings.m_fmtFast, nullptr, false);
    return status;
}

int CZxGenICamCamera::CameraSettingsSetDefaults_UNI_WRP()
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    return CameraSettingsSet_UNI_WRP(SZxGrabberCameraSettings(m->defaults), ZX_SETTINGS_ALL);
}

SZxGrabberCameraSettings* CZxGenICamCamera::NamedSettingsNext(CZxStringW& name)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    size_t next = 0;
    if (!name.Std().empty()) {
        while (next < m->named.size() && m->named[next]->name != name)
            ++next;
        ++next;
    }
    if (next >= m->named.size())
        return nullptr;
    name = m->named[next]->name;
    return &m->named[next]->settings;
}

int CZxGenICamCamera::NamedSettingsAdd(const wchar_t* name, const SZxGrabberCameraSettings& settings)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (!name || !*name)
        return ZX_E_FAIL;
    for (auto& n : m->named)
        if (n->name.Std() == name) {
            n->settings = settings;
            return ZX_OK;
        }
    m->named.push_back(std::unique_ptr<SImpl::SNamed>(new SImpl::SNamed{name, settings}));
    return ZX_OK;
}

int CZxGenICamCamera::NamedSettingsRemove(const wchar_t* name)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    auto it = std::find_if(m->named.begin(), m->named.end(),
                           [&](const std::unique_ptr<SImpl::SNamed>& n) { return name && n->name.Std() == name; });
    if (it == m->named.end())
        return ZX_E_FAIL;
    m->named.erase(it);
    return ZX_OK;
}

// ---- Region of interest -------------------------------------------------------------

int CZxGenICamCamera::SImpl::ApplyROI()
{
    const SFeature *x = Find(L"OffsetX"), *y = Find(L"OffsetY"), *w = Find(L"Width"), *h = Find(L"Height");
    if (!x || !y || !w || !h)
        return ZX_E_NOTSUPPORTED;
    const CZxVariant dw = Describe(*w).varValDefinition, dh = Describe(*h).varValDefinition;
    CZxRect r = roi;
    if (!roiEnabled || r.IsEmpty())   // off: the whole sensor
        r = CZxRect(0, 0, dw[L"m_iMax"].GetZx_int32(), dh[L"m_iMax"].GetZx_int32());
    // Offsets and sizes have limits of their own; their sum must stay on the sensor too.
    if (r.right > dw[L"m_iMax"].GetZx_int32() || r.bottom > dh[L"m_iMax"].GetZx_int32())
        return ZX_E_FAIL;
    // Zero offsets, then sizes, then the real offsets: valid in every order of limits.
    for (const auto& o : {std::make_pair(x, 0), std::make_pair(y, 0), std::make_pair(w, r.Width()),
                          std::make_pair(h, r.Height()), std::make_pair(x, int(r.left)), std::make_pair(y, int(r.top))}) {
        CZxVariant checked;
        if (const int s = Check(*o.first, CZxVariant(o.second), checked))
            return s;
        if (const int s = Write(*o.first, checked))
            return s;
    }
    MarkWritten();
    return ZX_OK;
}

bool CZxGenICamCamera::ROIIsSupported_UNI_WRP()
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    for (const wchar_t* n : {L"OffsetX", L"OffsetY", L"Width", L"Height"}) {
        const SFeature* f = m->Find(n);
        if (!f || (m->State(*f) & ZX_PROPSTATE_READONLY))
            return false;
    }
    return true;
}

int CZxGenICamCamera::ROIGet(CZxRect& rect)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    rect = m->roi;
    return ZX_OK;
}

int CZxGenICamCamera::ROISet(const CZxRect& rect)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    if (rect.left < 0 || rect.top < 0 || (!rect.IsEmpty() && (rect.right <= rect.left || rect.bottom <= rect.top)))
        return ZX_E_FAIL;
    if (m->roiEnabled && m->live)
        return ZX_E_BUSY;
    const CZxRect old = m->roi;
    m->roi = rect;
    if (!m->roiEnabled)
        return ZX_OK;
    const int s = m->ApplyROI();
    if (s != ZX_OK) {
        m->roi = old;
        m->ApplyROI();
    }
    return s;
}

bool CZxGenICamCamera::ROIEnabled()
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    return m->roiEnabled;
}

int CZxGenICamCamera::ROIEnable(bool enable)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    if (m->live)
        return ZX_E_BUSY;
    m->roiEnabled = enable;
    const int s = m->ApplyROI();
    if (s != ZX_OK) {
        m->roiEnabled = !enable;
        m->ApplyROI();
    }
    return s;
}

bool CZxGenICamCamera::MultiViewEnabled() { return false; }

// ---- Commands ------------------------------------------------------------------------

int CZxGenICamCamera::CommandGetDesc_WRP(const wchar_t* name, SZxGrabberCommandDesc01& desc)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    const SFeature* f = m->Find(name);
    if (!f || f->info.m_kind != EZxGenICamKind::Command)
        return ZX_E_FAIL;
    const char* shown = arv_gc_feature_node_get_display_name(ARV_GC_FEATURE_NODE(f->node));
    desc = SZxGrabberCommandDesc01(name, shown && *shown ? zxgenicam::Wide(shown).c_str() : name,
                                   (m->State(*f) & ZX_PROPSTATE_AVAILABLE) != 0, true, 0);
    return ZX_OK;
}

int CZxGenICamCamera::Command_WRP(SZxGrabberCommandValue& value, bool bAsync, SZxStateChangeInfo* info,
                                  bool bCheckOnly, CZxGrabberSample01** ppSample)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    const SFeature* f = m->Find(value.m_wstrName.GetString());
    if (!f || f->info.m_kind != EZxGenICamKind::Command || !(m->State(*f) & ZX_PROPSTATE_AVAILABLE))
        return ZX_E_FAIL;
    if (bCheckOnly)
        return ZX_OK;
    GError* err = nullptr;
    arv_gc_command_execute(ARV_GC_COMMAND(f->node), &err);
    if (err)
        return m->Failed(err);
    m->lastCommand = f->info.m_name;
    m->MarkWritten();
    if (ppSample)
        *ppSample = nullptr;
    return ZX_OK;
}

int CZxGenICamCamera::Command_Status_WRP(const wchar_t*, double& progress, CZxStringW& text)
{
    // Commands run to their end inside Command_WRP: none is ever running.
    progress = -1.0;
    text = L"Done";
    return ZX_OK;
}

int CZxGenICamCamera::Command_Abort_WRP() { return ZX_OK; }

void CZxGenICamCamera::SetGeneralCallback(PFN_ZxGeneralCallback callback, void* context)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    m->callback = callback;
    m->callbackContext = context;
}

int CZxGenICamCamera::FireGeneralCallback(int code, void* data)
{
    PFN_ZxGeneralCallback cb;
    void* ctx;
    {
        const std::lock_guard<std::recursive_mutex> lock(m->lock);
        cb = m->callback;
        ctx = m->callbackContext;
    }
    return cb ? cb(ctx, code, data) : 0;
}

// ---- Camera, user parameters, identity ---------------------------------------------------

int CZxGenICamCamera::CameraGet_WRP(SZxGrabberCameraDesc& camera)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (const int s = m->Usable())
        return s;
    GError* err = nullptr;
    const std::wstring vendor = zxgenicam::Wide(arv_camera_get_vendor_name(m->camera, &err));
    g_clear_error(&err);
    const std::wstring model = zxgenicam::Wide(arv_camera_get_model_name(m->camera, &err));
    g_clear_error(&err);
    const std::wstring serial = zxgenicam::Wide(arv_camera_get_device_serial_number(m->camera, &err));
    g_clear_error(&err);
    camera = SZxGrabberCameraDesc();
    ZX_CopyBoundedW(camera.m_wszName, 64, zxgenicam::Wide(m->id.c_str()).c_str());
    ZX_CopyBoundedW(camera.m_wszDisplayName, 64, model.c_str());
    ZX_CopyBoundedW(camera.m_wszDisplayNameFull, 128, (vendor + L" " + model + L" (SN " + serial + L")").c_str());
    ZX_CopyBoundedW(camera.m_wszFamily, 64, vendor.c_str());
    camera.m_bMono = true;
    for (const SZxGrabberFormatValue& f : m->Formats())
        camera.m_bMono = camera.m_bMono && f.m_uiComp == 1;
    camera.m_bConnected = true;
    return ZX_OK;
}

bool CZxGenICamCamera::CameraCapabilityIsSupported(uint32_t) { return false; }

int CZxGenICamCamera::UserParamGet(const wchar_t* name, CZxVariant& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    auto it = name ? m->userParams.find(name) : m->userParams.end();
    if (it == m->userParams.end())
        return ZX_E_FAIL;
    value = it->second;
    return ZX_OK;
}

int CZxGenICamCamera::UserParamSet(const wchar_t* name, const CZxVariant& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m->lock);
    if (!name || !*name)
        return ZX_E_FAIL;
    m->userParams[name] = value;
    return ZX_OK;
}

int CZxGenICamCamera::UserParamQuery(const wchar_t* name, void* record, uint32_t cbRecord)
{
    if (!name || std::wcscmp(name, L"DefineRoiQuery") != 0)
        return ZX_E_NOTSUPPORTED;
    if (!record || cbRecord < sizeof(SZxUserParam_DefineRoiQuery))
        return ZX_E_FAIL;
    auto* q = static_cast<SZxUserParam_DefineRoiQuery*>(record);
    if (q->m_uiSize < sizeof(SZxUserParam_DefineRoiQuery))
        return ZX_E_FAIL;
    q->m_bAnswer = ROIIsSupported_UNI_WRP() && !IsLive();
    return ZX_OK;
}

CZxStringW CZxGenICamCamera::GrabberDriverGetClassName() { return ZXGENICAM_DRIVER_CLASS; }
CZxStringW CZxGenICamCamera::GrabberDriverGetClassNameLogical() { return ZXGENICAM_DRIVER_CLASS; }
CZxStringW CZxGenICamCamera::GrabberDriverNameLocalisedGet()
{
    return ZX_GetTranslation(L"GenICam Camera", L"inputsetupcontrols");
}
int CZxGenICamCamera::InputSetupModelessHide() { return ZX_OK; }
int CZxGenICamCamera::GetSecGrabberInstance() { return 0; }
CZxGenericProviderGrabber* CZxGenICamCamera::GetGrabber() { return nullptr; }
