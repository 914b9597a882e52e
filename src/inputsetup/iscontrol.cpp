#include "zx/iscontrolbase.h"

#include <string>
#include "inputsetup/isdialog.h"
#include "zx/status.h"
#include "zxhost/rtti.h"
#include "zxhost/system.h"

CZxISControl::CZxISControl(EControlType type, EBoundTo boundTo, const wchar_t* name, uint32_t mode,
                           int32_t controlId, uint32_t groupMask)
    : m_eType(type), m_eBoundTo(boundTo), m_wstrName(name), m_uiMode(mode), m_hDlg(nullptr),
      m_iControlId(controlId), m_uiGroupMask(groupMask), m_pProvider(nullptr), m_pList(nullptr)
{
}

CZxISControl::~CZxISControl() = default;

int32_t CZxISControl::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    m_hDlg = dialog;
    m_pProvider = provider;
    if (list) {
        ZxHWnd item = zxis::DlgItem(dialog, m_iControlId);
        list->Add(this, &item, 1);
    }
    return ZX_OK;
}

int32_t CZxISControl::Detach()
{
    m_hDlg = nullptr;
    m_pProvider = nullptr;
    return ZX_OK;
}

int32_t CZxISControl::ChangeMode(uint32_t mode)
{
    m_uiMode = mode;
    return ZX_OK;
}

int32_t CZxISControl::ChangeName(const wchar_t* name)
{
    m_wstrName = name;
    return ZX_OK;
}

int32_t CZxISControl::UpdateState()
{
    // A state that cannot be read counts as unavailable: the item is disabled.
    uint32_t state = 0;
    if (_GetPropState(state) != ZX_OK)
        state = 0;
    const bool editable = (state & ZX_PROPSTATE_AVAILABLE) && !(state & ZX_PROPSTATE_READONLY);
    return Enable(editable);
}

// The window calls return the item's previous state, not success; callers only
// pass the mapped result on, so the mapping stays as it is.
int32_t CZxISControl::Enable(bool enable)
{
    return zxis::EnableItem(GetItem(), enable) ? ZX_OK : ZX_E_WINDOW;
}

int32_t CZxISControl::Show(bool show)
{
    return zxis::ShowItem(GetItem(), show) ? ZX_OK : ZX_E_WINDOW;
}

bool CZxISControl::_WriteDefault(SZxGrabberPropertyValue& value, int32_t& status)
{
    status = _GetPropDefaultValue(value);
    if (status != ZX_OK)
        return false;
    status = _SetPropValue(value);
    return true;
}

int32_t CZxISControl::_RefreshIfEnabled(bool enabled)
{
    if (enabled)
        UpdateFromGeneric();
    return ZX_OK;
}

int32_t CZxISControl::Reinit() { return ZX_OK; }
int32_t CZxISControl::ResetToDefault() { return ZX_OK; }
int32_t CZxISControl::UpdateFromGeneric() { return ZX_OK; }
int32_t CZxISControl::GetPropValForGeneric(SZxGrabberPropertyValue&) { return ZX_E_NOTSUPPORTED; }

bool CZxISControl::DlgProcHook(ZxHWnd, uint32_t, ZxWParam, ZxLParam, ZxLResult*) { return false; }

ZxLResult CZxISControl::NotifyDialog(uint32_t message, ZxWParam wParam, ZxLParam lParam)
{
    return zxis::Send(m_hDlg, message, wParam, lParam);
}

ZxHWnd CZxISControl::GetItem() const { return zxis::DlgItem(m_hDlg, m_iControlId); }

// ---- Provider operations -------------------------------------------------------

namespace {
// A write of one value goes out as a vector, as every write to the provider does.
CZxVector_SZxGrabberPropertyValue OneValue(const SZxGrabberPropertyValue& value)
{
    CZxVector_SZxGrabberPropertyValue values(128);
    values.Add(value);
    return values;
}

ZxLParam AsLParam(const void* p) { return reinterpret_cast<ZxLParam>(p); }
} // namespace

int32_t CZxISControl::_GetPropValue(SZxGrabberPropertyValue& value)
{
    return m_pProvider ? m_pProvider->PropGetSingle_WRP(m_uiMode, value) : ZX_E_FAIL;
}

int32_t CZxISControl::_GetPropState(uint32_t& state)
{
    if (!m_pProvider)
        return ZX_E_FAIL;
    SZxGrabberPropertyDesc01 desc(m_wstrName);
    return m_pProvider->PropState_WRP(m_uiMode, desc, state);
}

int32_t CZxISControl::_SetPropValue(SZxGrabberPropertyValue& value)
{
    if (!m_pProvider)
        return ZX_E_FAIL;
    const int32_t rc = m_pProvider->PropSet_WRP(m_uiMode, OneValue(value), nullptr, false);
    NotifyDialog(WM_IS_PROPERTYCHANGED, 0, 0);
    return rc;
}

int32_t CZxISControl::_GetPropDesc(SZxGrabberPropertyDesc01& desc)
{
    return m_pProvider ? m_pProvider->PropGetDesc_WRP(m_uiMode, m_wstrName, desc) : ZX_E_FAIL;
}

int32_t CZxISControl::_GetPropDefinition(CZxVariant& def)
{
    SZxGrabberPropertyDesc01 desc(m_wstrName);
    const int32_t rc = _GetPropDesc(desc);
    if (rc != ZX_OK)
        return rc;
    def = desc.varValDefinition; // run-type name and members come along
    def.SetTypeChangeAllowed(true);
    return ZX_OK;
}

int32_t CZxISControl::_GetPropDefaultValue(SZxGrabberPropertyValue& value)
{
    return m_pProvider ? m_pProvider->PropGetDefaultSingle_WRP(m_uiMode, value) : ZX_E_FAIL;
}

int32_t CZxISControl::_GetPropertyText(CZxStringW& text)
{
    SZxGrabberPropertyDesc01 desc(m_wstrName);
    const int32_t rc = _GetPropDesc(desc);
    if (rc == ZX_OK)
        text = desc.m_wstrText;
    return rc;
}

int32_t CZxISControl::_GetCommandDesc(SZxGrabberCommandDesc01& desc)
{
    return m_pProvider ? m_pProvider->CommandGetDesc_WRP(m_wstrName, desc) : ZX_E_FAIL;
}

int32_t CZxISControl::_Command(SZxGrabberCommandValue& value)
{
    return m_pProvider ? m_pProvider->Command_WRP(value, false, nullptr, false, nullptr) : ZX_E_FAIL;
}

int32_t CZxISControl::_CommandGetStateChange(SZxGrabberCommandValue& value, SZxStateChangeInfo& info,
                                             bool announce)
{
    if (!m_pProvider)
        return ZX_E_FAIL;
    if (announce)
        NotifyDialog(WM_IS_FORMATCHANGING, m_uiMode, 0);
    const int32_t rc = m_pProvider->Command_WRP(value, false, &info, false, nullptr);
    if (announce)
        NotifyDialog(WM_IS_FORMATCHANGED, m_uiMode, 0);
    NotifyDialog(WM_IS_STATECHANGE, 0, AsLParam(&info));
    return rc;
}

int32_t CZxISControl::_SetFormatValueGetStateChange(SZxGrabberFormatValue& format, SZxStateChangeInfo& info)
{
    if (!m_pProvider)
        return ZX_E_FAIL;
    NotifyDialog(WM_IS_FORMATCHANGING, m_uiMode, AsLParam(&format));
    const int32_t rc = m_pProvider->FormatSet_WRP(m_uiMode, format, &info, false);
    NotifyDialog(WM_IS_FORMATCHANGED, m_uiMode, 0);
    NotifyDialog(WM_IS_STATECHANGE, 0, AsLParam(&info));
    return rc;
}

int32_t CZxISControl::_SetPropValueGetStateChange(SZxGrabberPropertyValue& value, SZxStateChangeInfo& info,
                                                  bool formatAware)
{
    if (!m_pProvider)
        return ZX_E_FAIL;
    const CZxVector_SZxGrabberPropertyValue values = OneValue(value);
    if (formatAware) {
        // Work out the format the settings will give after this write, so the host
        // can prepare for it. A format that keeps its name and sensor area is no
        // change; one the provider cannot tell is announced as none.
        const uint32_t fqMode = m_pProvider->GetModeFQ();
        SZxGrabberCameraSettings settings;
        SZxGrabberFormatValue format;
        bool changed = false;
        if (m_pProvider->CameraSettingsGet_UNI_WRP(settings, ZX_SETTINGS_ALL, true) == ZX_OK) {
            if (SZxGrabberPropertyValue* entry = settings.Props(fqMode).Find(value.m_wstrName))
                *entry = value;
            if (m_pProvider->FormatGetFromSettings_WRP(fqMode, settings, format) == ZX_OK) {
                const SZxGrabberFormatValue& current = settings.Format(fqMode);
                changed = format.m_wstrName != current.m_wstrName ||
                          CZxGrabberLib::GetSensorRect(format) != CZxGrabberLib::GetSensorRect(current);
            }
        }
        NotifyDialog(WM_IS_FORMATCHANGING, m_uiMode, changed ? AsLParam(&format) : 0);
    }
    const int32_t rc = m_pProvider->PropSet_WRP(m_uiMode, values, &info, false);
    if (formatAware)
        NotifyDialog(WM_IS_FORMATCHANGED, m_uiMode, 0);
    NotifyDialog(WM_IS_PROPERTYCHANGED, 0, 0);
    NotifyDialog(WM_IS_STATECHANGE, 0, AsLParam(&info));
    return rc;
}

// ---- Translation ---------------------------------------------------------------

CZxStringW CZxISControl::GetTranslation(const wchar_t* text, const char* sourceFile)
{
    // Process-wide and unguarded: labels are only translated on the UI thread.
    static CZxStringW* s_pSource = new CZxStringW;
    static CZxStringW* s_pDriverClass = new CZxStringW;
    if (m_pProvider) {
        const CZxStringW driverClass = m_pProvider->GrabberDriverGetClassName();
        if (driverClass != *s_pDriverClass) {
            *s_pDriverClass = driverClass;
            // Another driver's module context must not carry over to this one.
            s_pSource->Empty();
            const SZxRTTIClassImpl* impl = CZxRTTI::FindClassImpl(L"IZxGrabberDriver01", driverClass);
            if (impl && !impl->m_varMetadata.IsNull())
                if (const CZxVariant* ref = impl->m_varMetadata.Search(L"m_fileReference"))
                    *s_pSource = ref->GetCZxStringW();
        }
    }
    if (!s_pSource->IsEmpty())
        return ZX_GetTranslation(text ? text : L"", *s_pSource);
    std::wstring source;
    for (const char* p = sourceFile; p && *p; ++p)
        source += static_cast<wchar_t>(static_cast<unsigned char>(*p));
    return ZX_GetTranslation(text ? text : L"", source.c_str());
}
