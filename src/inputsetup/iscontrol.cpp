#include "zx/inputsetupcontrols.h"

#include "inputsetup/isdialog.h"
#include "zx/status.h"

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
