// Edit boxes bound to numeric properties, and the process-wide registry of the
// subclassed edit windows their window procedure looks controls up in.
#include <windows.h>

#include <cmath>
#include <cwchar>
#include <map>

#include "inputsetup/numeric_def.h"
#include "inputsetup/wincontrols.h"
#include "zx/iscontrols_numeric.h"
#include "zx/status.h"
#include "zxhost/system.h"

namespace {
using zxwin::H;

// Edit window -> control. Window procedures look controls up here, so every
// access holds the lock.
struct Registry {
    CRITICAL_SECTION lock;
    std::map<HWND, CZxISControlEditBase*> edits;
    Registry() { InitializeCriticalSection(&lock); }
    ~Registry() { DeleteCriticalSection(&lock); }
};
Registry* g_registry = nullptr;

struct Locked {
    Registry* r;
    explicit Locked(Registry* reg) : r(reg)
    {
        if (r)
            EnterCriticalSection(&r->lock);
    }
    ~Locked()
    {
        if (r)
            LeaveCriticalSection(&r->lock);
    }
};

LRESULT CALLBACK EditHook(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);

// The typed text as a number: its leading number, as wcstod reads it ("12 ms" is
// 12). A text without one, or an infinite or NaN one, is refused: writing 0 for
// "abc" would change the driver's value behind the user's back.
bool ParseNumber(HWND edit, double& value)
{
    const CZxStringW text = zxwin::Window(edit).Text(64);
    wchar_t* end = nullptr;
    value = std::wcstod(text.GetString(), &end);
    return end != text.GetString() && std::isfinite(value);
}
} // namespace

// ---- CZxISControlEditBase ----

CZxISControlEditBase::CZxISControlEditBase(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                                           uint32_t notifyMessage, bool flag)
    : CZxISControl(ctValueEditor, btProperty, name, mode, id, groupMask), m_uiNotifyMessage(notifyMessage),
      m_bFlag(flag), m_bPending(false), m_bNotified(true), m_bSettingText(false), m_hEdit(nullptr),
      m_pOldProc(nullptr)
{
}

CZxISControlEditBase::~CZxISControlEditBase() { CZxISControlEditBase::Detach(); }

void CZxISControlEditBase::Init()
{
    if (!g_registry)
        g_registry = new Registry;
}

void CZxISControlEditBase::Done()
{
    if (!g_registry)
        return;
    // Edits still attached get their own procedure back: without the registry
    // the subclass procedure could not find it any more.
    for (auto& e : g_registry->edits) {
        CZxISControlEditBase* c = e.second;
        if (IsWindow(e.first) && GetWindowLongPtrW(e.first, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&EditHook))
            SetWindowLongPtrW(e.first, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(c->m_pOldProc));
        c->m_hEdit = nullptr;
        c->m_pOldProc = nullptr;
    }
    delete g_registry;
    g_registry = nullptr;
}

CZxISControlEditBase* CZxISControlEditBase::FromWindow(ZxHWnd edit)
{
    Locked l(g_registry);
    if (!g_registry)
        return nullptr;
    auto it = g_registry->edits.find(H(edit));
    return it == g_registry->edits.end() ? nullptr : it->second;
}

int32_t CZxISControlEditBase::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    CZxISControlEditBase::Detach();
    CZxISControl::Attach(dialog, provider, list);
    HWND edit = H(GetItem());
    if (!edit)
        return ZX_OK;
    if (!g_registry) {
        // Without the registry Enter and Escape stay the edit's own; focus loss still commits.
        DiagAssertW(L"edit registry not created (Init)", m_wstrName, 0, L"inputsetupcontrols", __LINE__);
        return ZX_OK;
    }
    m_hEdit = reinterpret_cast<ZxHWnd>(edit);
    {
        Locked l(g_registry);
        g_registry->edits[edit] = this;
    }
    m_pOldProc = reinterpret_cast<void*>(SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&EditHook)));
    return ZX_OK;
}

int32_t CZxISControlEditBase::Detach()
{
    HWND edit = H(m_hEdit);
    if (edit) {
        {
            Locked l(g_registry);
            if (g_registry) {
                auto it = g_registry->edits.find(edit);
                if (it != g_registry->edits.end() && it->second == this)
                    g_registry->edits.erase(it);
            }
        }
        if (IsWindow(edit) && GetWindowLongPtrW(edit, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&EditHook))
            SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pOldProc));
    }
    m_hEdit = nullptr;
    m_pOldProc = nullptr;
    m_bPending = false;
    m_bNotified = true;
    return CZxISControl::Detach();
}

void CZxISControlEditBase::SetText(const CZxStringW& text)
{
    m_bSettingText = true;
    SetWindowTextW(H(GetItem()), text);
    m_bSettingText = false;
    m_bPending = false;
}

int32_t CZxISControlEditBase::Commit()
{
    if (!m_bPending)
        return ZX_OK;
    SZxGrabberPropertyValue value(m_wstrName);
    int32_t status = GetPropValForGeneric(value);
    if (status == ZX_OK)
        status = _SetPropValue(value);
    m_bPending = false;
    // The driver answers: show what it kept (also after a text that is no number).
    UpdateFromGeneric();
    return status;
}

void CZxISControlEditBase::Cancel()
{
    m_bPending = false;
    if (m_bFlag)
        UpdateFromGeneric();
}

bool CZxISControlEditBase::OnKey(unsigned key)
{
    if (key != VK_RETURN && key != VK_ESCAPE)
        return false;
    if (key == VK_RETURN)
        Commit();
    else if (!m_bNotified)
        Cancel();
    // One notification per change: a second Enter or Escape without typing sends nothing.
    if (!m_bNotified) {
        m_bNotified = true;
        if (m_uiNotifyMessage)
            NotifyDialog(m_uiNotifyMessage, key, m_iControlId);
    }
    return true;
}

bool CZxISControlEditBase::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                                       ZxLResult* result)
{
    if (message != WM_COMMAND || zxwin::Sender(lParam) != H(GetItem()))
        return false;
    switch (HIWORD(wParam)) {
    case EN_CHANGE:
        if (m_bSettingText)
            return false;
        m_bPending = true;
        m_bNotified = false;
        break;
    case EN_KILLFOCUS: Commit(); break;
    default: return false;
    }
    *result = 0;
    return true;
}

namespace {
LRESULT CALLBACK EditHook(HWND edit, UINT message, WPARAM wParam, LPARAM lParam)
{
    CZxISControlEditBase* control = CZxISControlEditBase::FromWindow(reinterpret_cast<ZxHWnd>(edit));
    // The original procedure, read before the control may detach itself below.
    const WNDPROC old = control ? reinterpret_cast<WNDPROC>(control->OldProc()) : nullptr;
    if (!old)
        return DefWindowProcW(edit, message, wParam, lParam);
    const bool keys = wParam == VK_RETURN || wParam == VK_ESCAPE;
    switch (message) {
    case WM_GETDLGCODE:
        // Keep Enter and Escape from the dialog's default and cancel buttons.
        if (keys && lParam && reinterpret_cast<const MSG*>(lParam)->message == WM_KEYDOWN)
            return CallWindowProcW(old, edit, message, wParam, lParam) | DLGC_WANTALLKEYS;
        break;
    case WM_KEYDOWN:
        if (keys && (GetFocus() == edit || GetFocus() == GetParent(edit))) {
            control->OnKey(static_cast<unsigned>(wParam));
            return 0;
        }
        break;
    case WM_CHAR:
        if (wParam == L'\r' || wParam == 27)
            return 0; // taken with the key itself; the edit would only beep
        break;
    case WM_NCDESTROY:
        control->Detach();
        break;
    default: break;
    }
    return CallWindowProcW(old, edit, message, wParam, lParam);
}
} // namespace

// ---- CZxISControlEditInt32 ----

CZxISControlEditInt32::CZxISControlEditInt32(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                                             uint32_t notifyMessage, bool flag)
    : CZxISControlEditBase(name, mode, id, groupMask, notifyMessage, flag)
{
}

int32_t CZxISControlEditInt32::SetEditValue(int32_t value)
{
    SetText(CZxStringW::Formatted(L"%d", value));
    return ZX_OK;
}

int32_t CZxISControlEditInt32::GetEditValue(int32_t& value)
{
    double typed = 0;
    if (!ParseNumber(H(GetItem()), typed))
        return ZX_E_FAIL;
    value = zxis::RoundInt(typed);
    return ZX_OK;
}

int32_t CZxISControlEditInt32::UpdateFromGeneric()
{
    if (m_bPending)
        return ZX_E_BUSY; // the user is typing: the text is left alone
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t status = _GetPropValue(value);
    if (status == ZX_OK)
        SetEditValue(value.m_varValue.GetZx_int32());
    return status;
}

int32_t CZxISControlEditInt32::ResetToDefault()
{
    return _WriteDefaultAndShow([this](const SZxGrabberPropertyValue&) {
        m_bPending = false;
        UpdateFromGeneric();
    });
}

int32_t CZxISControlEditInt32::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    int32_t typed = 0;
    const int32_t status = GetEditValue(typed);
    if (status == ZX_OK)
        value.m_varValue = typed;
    return status;
}

// ---- CZxISControlEditDouble ----

CZxISControlEditDouble::CZxISControlEditDouble(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                                               uint32_t notifyMessage, bool flag, double scale)
    : CZxISControlEditBase(name, mode, id, groupMask, notifyMessage, flag), m_dScale(scale), m_dStep(0),
      m_iDecimals(3), m_bEnabled(false)
{
    if (!(scale != 0) || !std::isfinite(scale)) {
        DiagAssertW(L"scale==0 or not finite", m_wstrName, 0, L"inputsetupcontrols", __LINE__);
        m_dScale = 1.0;
    }
}

int32_t CZxISControlEditDouble::Enable(bool enable)
{
    m_bEnabled = enable;
    EnableWindow(H(GetItem()), enable && m_dStep >= 0);
    return ZX_OK;
}

int32_t CZxISControlEditDouble::Reinit()
{
    CZxVariant def;
    const int32_t status = _GetPropDefinition(def);
    if (status != ZX_OK)
        return status;
    // A plain double has no step: three decimals. A range needs a positive step.
    m_dStep = 0;
    m_iDecimals = 3;
    if (def.IsRecord()) {
        double step = 0;
        if (!zxis::Number(def, L"m_dStep", step) || step <= 0) {
            zxis::ReportDefinition(L"m_dStep missing or <=0", m_wstrName, __LINE__);
            m_dStep = -1;
            EnableWindow(H(GetItem()), FALSE);
            return ZX_E_FAIL;
        }
        m_dStep = step;
        // The step as the edit shows it: a scale of 0.1 turns 0.1 per mille into 0.01 %.
        m_iDecimals = ZX_DecimalsFromStep(step * std::fabs(m_dScale));
    }
    EnableWindow(H(GetItem()), m_bEnabled);
    return ZX_OK;
}

int32_t CZxISControlEditDouble::SetEditValue(double value)
{
    const double shown = value * m_dScale;
    const int32_t own = ZX_DecimalsFromStep(shown);
    SetText(CZxStringW::Formatted(L"%.*f", own < m_iDecimals ? own : m_iDecimals, shown));
    return ZX_OK;
}

int32_t CZxISControlEditDouble::GetEditValue(double& value)
{
    double typed = 0;
    if (!ParseNumber(H(GetItem()), typed))
        return ZX_E_FAIL;
    value = typed / m_dScale;
    return ZX_OK;
}

int32_t CZxISControlEditDouble::UpdateFromGeneric()
{
    if (m_dStep < 0)
        return ZX_E_FAIL;
    if (m_bPending)
        return ZX_E_BUSY; // the user is typing: the text is left alone
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t status = _GetPropValue(value);
    if (status == ZX_OK)
        SetEditValue(value.m_varValue.GetDouble());
    return status;
}

int32_t CZxISControlEditDouble::ResetToDefault()
{
    if (m_dStep < 0)
        return ZX_E_FAIL;
    return _WriteDefaultAndShow([this](const SZxGrabberPropertyValue&) {
        m_bPending = false;
        UpdateFromGeneric();
    });
}

int32_t CZxISControlEditDouble::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    double typed = 0;
    if (m_dStep < 0)
        return ZX_E_FAIL;
    const int32_t status = GetEditValue(typed);
    if (status == ZX_OK)
        value.m_varValue = typed;
    return status;
}
