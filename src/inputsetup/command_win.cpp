// Command controls: synchronous and asynchronous push commands, the multi-button
// command and the formatted static.
#include <windows.h>

#include <vector>
#include "inputsetup/wincontrols.h"
#include "zx/iscontrols_command.h"
#include "zx/status.h"
#include "zxhost/system.h"
#include "zxhost/waitcursor.h"

namespace {
const char kSource[] = "inputsetupcontrols";

using zxwin::H;

bool IsClickFrom(uint32_t message, ZxWParam wParam, ZxLParam lParam, ZxHWnd button)
{
    return message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED && lParam != 0 &&
           zxwin::Sender(lParam) == H(button);
}

void SetResult(ZxLResult* result)
{
    if (result)
        *result = 0;
}

} // namespace

// ---- CZxISControlPushCommand ------------------------------------------------------

CZxISControlPushCommand::CZxISControlPushCommand(const wchar_t* command, int32_t controlId, uint32_t groupMask)
    : CZxISControl(ctPushCommand, btCommand, command, 0, controlId, groupMask)
{
}

int32_t CZxISControlPushCommand::Reinit()
{
    SZxGrabberCommandDesc01 desc(m_wstrName, L"", true, true, 0);
    const int32_t rc = _GetCommandDesc(desc);
    if (rc != ZX_OK)
        return rc;
    // A text given by the template is the dialog designer's and stays.
    HWND button = H(GetItem());
    if (button && GetWindowTextLengthW(button) == 0)
        SetWindowTextW(button, GetTranslation(desc.m_wstrText, kSource));
    return ZX_OK;
}

bool CZxISControlPushCommand::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                                          ZxLResult* result)
{
    if (!IsClickFrom(message, wParam, lParam, GetItem()))
        return false;
    SZxGrabberCommandValue value(m_wstrName);
    {
        SZxWaitCursorHolder wait;
        _Command(value);
    }
    SetResult(result);
    return true;
}

// ---- CZxISControlPushCommandAsync -------------------------------------------------

CZxISControlPushCommandAsync::CZxISControlPushCommandAsync(const wchar_t* command, int32_t controlId,
                                                           uint32_t groupMask, PFN_ZxProgressCancel cancelCallback,
                                                           bool progressDialog)
    : CZxISControl(ctPushCommand, btCommand, command, 0, controlId, groupMask), m_bProgressDialog(progressDialog),
      m_bRunning(false), m_pfnCancel(cancelCallback), m_CommandValue(command, CZxVariant())
{
}

// Members go in reverse order: the command value, the progress window (closed if
// still on), then the saved text.
CZxISControlPushCommandAsync::~CZxISControlPushCommandAsync() = default;

int32_t CZxISControlPushCommandAsync::UpdateState()
{
    double progress = 0.0;
    CZxStringW text;
    const int rc = m_pProvider ? m_pProvider->Command_Status_WRP(m_wstrName, progress, text) : ZX_E_FAIL;
    return Enable(rc == ZX_OK);
}

int32_t CZxISControlPushCommandAsync::Reinit()
{
    HWND button = H(GetItem());
    if (m_bProgressDialog) {
        SZxGrabberCommandDesc01 desc(m_wstrName, L"", true, true, 0);
        const int32_t rc = _GetCommandDesc(desc);
        if (rc != ZX_OK)
            return rc;
        if (button)
            SetWindowTextW(button, GetTranslation(desc.m_wstrText, kSource));
    } else if (!m_bRunning) {
        // While running the button shows "Cancel"; its own text is already saved.
        m_wstrSavedText = zxwin::Window(button).Text(256);
        m_bRunning = false;
    }
    return ZX_OK;
}

void CZxISControlPushCommandAsync::Finish()
{
    SetWindowTextW(H(GetItem()), m_wstrSavedText);
    m_bRunning = false;
    if (m_pProvider)
        m_pProvider->FireGeneralCallback(1, nullptr);
}

int32_t CZxISControlPushCommandAsync::UpdateFromGeneric()
{
    const bool following = m_bProgressDialog ? m_ProgressDialog.IsOn() : m_bRunning;
    if (!following)
        return ZX_OK;
    double progress = -1.0;
    CZxStringW text;
    // A status that cannot be read ends the wait as if the command had ended.
    if (!m_pProvider || m_pProvider->Command_Status_WRP(m_wstrName, progress, text) != ZX_OK)
        progress = -1.0;
    if (progress >= 0.0) {
        if (m_bProgressDialog)
            m_ProgressDialog.SetPos(static_cast<int>(progress * 100.0 + 0.5));
        return ZX_OK;
    }
    if (m_bProgressDialog) {
        m_ProgressDialog.Close();
        if (m_pProvider)
            m_pProvider->FireGeneralCallback(1, nullptr);
    } else {
        Finish();
    }
    return ZX_OK;
}

bool CZxISControlPushCommandAsync::DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam,
                                               ZxLParam lParam, ZxLResult* result)
{
    if (!IsClickFrom(message, wParam, lParam, GetItem()))
        return false;
    if (m_bProgressDialog) {
        SZxWaitCursorHolder wait;
        if (m_pProvider) {
            m_pProvider->Command_WRP(m_CommandValue, true, nullptr, false, nullptr);
            m_ProgressDialog.SetRange(0, 100);
            // The callback asks the driver to stop; the poll then closes the window.
            if (m_pfnCancel)
                m_ProgressDialog.RegisterCancelCallback(m_pfnCancel, m_pProvider);
            // The library's own texts: looked up in its context, not in the driver's module.
            m_ProgressDialog.Show(dialog, m_pfnCancel != nullptr, ZX_GetTranslation(L"Progress", L"inputsetupcontrols"),
                                  CZxProgressDialog::ZX_PROGRESS_CENTER | CZxProgressDialog::ZX_PROGRESS_PERCENT);
        }
        NotifyDialog(WM_IS_REFRESH, 0xFFFFFFFF, 0);
    } else if (m_bRunning) {
        if (m_pProvider)
            m_pProvider->Command_Abort_WRP();
        Finish();
    } else {
        m_bRunning = true;
        SetWindowTextW(H(GetItem()), ZX_GetTranslation(L"Cancel", L"inputsetupcontrols"));
        if (m_pProvider)
            m_pProvider->Command_WRP(m_CommandValue, true, nullptr, false, nullptr);
    }
    SetResult(result);
    return true;
}

// ---- CZxISControlMultiPush ---------------------------------------------------------

CZxISControlMultiPush::CZxISControlMultiPush(const wchar_t* command, int32_t firstId, uint32_t mode,
                                             int32_t lastId, uint32_t groupMask)
    : CZxISControl(ctMultiPush, btCommand, command, mode, firstId, groupMask), m_iLastId(lastId)
{
}

int32_t CZxISControlMultiPush::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    m_hDlg = dialog;
    m_pProvider = provider;
    if (list && m_iLastId >= m_iControlId) {
        std::vector<ZxHWnd> buttons;
        for (int32_t id = m_iControlId; id <= m_iLastId; ++id)
            buttons.push_back(reinterpret_cast<ZxHWnd>(GetDlgItem(H(dialog), id)));
        list->Add(this, buttons.data(), static_cast<int32_t>(buttons.size()));
    }
    return ZX_OK;
}

int32_t CZxISControlMultiPush::Enable(bool enable)
{
    for (int32_t id = m_iControlId; id <= m_iLastId; ++id)
        EnableWindow(GetDlgItem(H(m_hDlg), id), enable);
    return ZX_OK;
}

int32_t CZxISControlMultiPush::Show(bool show)
{
    for (int32_t id = m_iControlId; id <= m_iLastId; ++id)
        ShowWindow(GetDlgItem(H(m_hDlg), id), show ? SW_SHOWNORMAL : SW_HIDE);
    return ZX_OK;
}

bool CZxISControlMultiPush::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam, ZxLResult* result)
{
    if (message != WM_COMMAND)
        return false;
    const int32_t id = LOWORD(wParam);
    // Deliberately declines only an id below the first and above the last at once,
    // which never happens: the list delivers only this control's buttons.
    if (id < m_iControlId && id > m_iLastId)
        return false;
    SZxWaitCursorHolder wait;
    SZxGrabberCommandValue value(m_wstrName, CZxVariant(static_cast<int>(id - m_iControlId)));
    _Command(value);
    SetResult(result);
    return true;
}

// ---- CZxISControlStatic -------------------------------------------------------------

CZxISControlStatic::CZxISControlStatic(const wchar_t* name, uint32_t mode, int32_t controlId, uint32_t groupMask,
                                       const wchar_t* format)
    : CZxISControl(ctStatic, btProperty, name, mode, controlId, groupMask)
{
    m_wszFormat[0] = L'\0';
    if (format) {
        (void)ZX_DIAG_FAIL_IF(wcslen(format) > 255, L"inputsetupcontrols"); // reported, then cut
        ZX_CopyBoundedW(m_wszFormat, 256, format);
    }
}

int32_t CZxISControlStatic::UpdateFromGeneric()
{
    static const CZxVariantRunType s_int32(L"zx_int32"), s_uint32(L"zx_uint32"), s_double(L"double"),
        s_string(L"CZxStringW");
    SZxGrabberPropertyValue value(m_wstrName);
    _GetPropValue(value);
    const CZxVariantRunType type = value.m_varValue.GetRunType();
    const wchar_t* own = m_wszFormat[0] ? m_wszFormat : nullptr;
    CZxStringW text;
    if (type == s_int32)
        text.Format(own ? own : L"%i", value.m_varValue.GetZx_int32());
    else if (type == s_uint32)
        text.Format(own ? own : L"%u", static_cast<uint32_t>(value.m_varValue.GetZx_int32()));
    else if (type == s_double)
        text.Format(own ? own : L"%lf", value.m_varValue.GetDouble());
    else if (type == s_string)
        text.Format(own ? own : L"%s", value.m_varValue.GetCZxStringW().GetString());
    SetDlgItemTextW(H(m_hDlg), m_iControlId, text);
    return ZX_OK;
}
