// Check boxes (plain and owner-drawn), radio buttons and the list steppers.
#include "inputsetup/choice_win.h"

#include <commctrl.h>

#include <vector>
#include "zx/status.h"
#include "zxhost/system.h"

using namespace zxchoice;

// ---- ZX_DrawCheckButton --------------------------------------------------------------

namespace {
HMODULE ThisModule()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ThisModule), &module);
    return module;
}
} // namespace

int32_t ZX_DrawCheckButton(const tagDRAWITEMSTRUCT* item, bool checked, bool disabled, bool drawText)
{
    if (ZX_DIAG_FAIL_IF(item == nullptr || item->hDC == nullptr, L"common"))
        return ZX_E_FAIL;
    const wchar_t* name = disabled ? (checked ? L"QEN_DISABLED_CHECKED" : L"QEN_DISABLED_UNCHECKED")
                                   : (checked ? L"QEN_CHECKED" : L"QEN_UNCHECKED");
    HDC dc = item->hDC;
    const RECT rc = item->rcItem;
    FillRect(dc, &rc, GetSysColorBrush(COLOR_BTNFACE));

    int bitmapWidth = 0;
    if (HBITMAP bitmap = static_cast<HBITMAP>(LoadImageW(ThisModule(), name, IMAGE_BITMAP, 0, 0, 0))) {
        BITMAP bm = {};
        GetObjectW(bitmap, sizeof bm, &bm);
        HDC mem = CreateCompatibleDC(dc);
        HGDIOBJ old = SelectObject(mem, bitmap);
        const int y = rc.top + (rc.bottom - rc.top - bm.bmHeight) / 2;
        BitBlt(dc, rc.left, y, bm.bmWidth, bm.bmHeight, mem, 0, 0, SRCCOPY);
        SelectObject(mem, old);
        DeleteDC(mem);
        DeleteObject(bitmap);
        bitmapWidth = bm.bmWidth;
    }
    if (!drawText || !item->hwndItem)
        return ZX_OK;
    const zxwin::Window window(item->hwndItem);
    const CZxStringW text = window.Text(255);
    RECT textRect = rc;
    textRect.left += bitmapWidth + 4;
    HGDIOBJ oldFont = nullptr;
    if (HFONT font = window.Font())
        oldFont = SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(disabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    RECT measured = textRect;
    DrawTextW(dc, text.GetString(), -1, &measured, DT_LEFT | DT_SINGLELINE | DT_VCENTER | DT_CALCRECT);
    DrawTextW(dc, text.GetString(), -1, &textRect, DT_LEFT | DT_SINGLELINE | DT_VCENTER);
    if ((item->itemState & ODS_FOCUS) && !text.IsEmpty()) {
        const int h = measured.bottom - measured.top;
        RECT focus = {textRect.left - 1, rc.top + (rc.bottom - rc.top - h) / 2 - 1,
                      textRect.left + (measured.right - measured.left) + 1, rc.top + (rc.bottom - rc.top + h) / 2 + 1};
        DrawFocusRect(dc, &focus);
    }
    if (oldFont)
        SelectObject(dc, oldFont);
    return ZX_OK;
}

// ---- CZxISControlCheck ---------------------------------------------------------------

CZxISControlCheck::CZxISControlCheck(const wchar_t* name, uint32_t mode, int32_t checkId, uint32_t groupMask,
                                     bool inverted, bool reportStateChange)
    : CZxISControl(ctCheck, btProperty, name, mode, checkId, groupMask), m_bUpdating(false), m_bInverted(inverted),
      m_bReportStateChange(reportStateChange)
{
}

void CZxISControlCheck::ShowValue(const CZxVariant& value)
{
    m_bUpdating = true;
    CheckDlgButton(H(m_hDlg), m_iControlId, value.GetBool() != m_bInverted ? BST_CHECKED : BST_UNCHECKED);
    m_bUpdating = false;
}

int32_t CZxISControlCheck::UpdateFromGeneric()
{
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t rc = _GetPropValue(value);
    if (rc == ZX_OK)
        ShowValue(value.m_varValue);
    return rc;
}

int32_t CZxISControlCheck::ResetToDefault()
{
    SZxGrabberPropertyValue value(m_wstrName);
    int32_t rc = ZX_OK;
    if (!_WriteDefault(value, rc))
        return rc;
    ShowValue(value.m_varValue);
    return ZX_OK;
}

int32_t CZxISControlCheck::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    const bool checked = IsDlgButtonChecked(H(m_hDlg), m_iControlId) == BST_CHECKED;
    value.m_varValue = checked != m_bInverted;
    value.m_varValue.SetTypeChangeAllowed(true);
    return ZX_OK;
}

bool CZxISControlCheck::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam, ZxLResult* result)
{
    if (!IsCommand(message, wParam, m_iControlId, BN_CLICKED) || m_bUpdating)
        return false;
    SZxGrabberPropertyValue value(m_wstrName);
    GetPropValForGeneric(value);
    if (m_bReportStateChange) {
        SZxStateChangeInfo info;
        _SetPropValueGetStateChange(value, info, false);
    } else {
        _SetPropValue(value);
    }
    SetResult(result);
    return true;
}

// ---- CZxISControlCheckOwnerDraw ------------------------------------------------------

CZxISControlCheckOwnerDraw::CZxISControlCheckOwnerDraw(const wchar_t* name, uint32_t mode, int32_t buttonId,
                                                       uint32_t groupMask)
    : CZxISControl(ctCheck, btProperty, name, mode, buttonId, groupMask), m_bUpdating(false), m_bChecked(false)
{
}

void CZxISControlCheckOwnerDraw::Repaint()
{
    HWND button = H(GetItem());
    if (!button)
        return;
    InvalidateRect(button, nullptr, TRUE);
    UpdateWindow(button);
}

int32_t CZxISControlCheckOwnerDraw::UpdateFromGeneric()
{
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t rc = _GetPropValue(value);
    if (rc != ZX_OK)
        return rc;
    m_bUpdating = true;
    m_bChecked = value.m_varValue.GetBool();
    Repaint();
    m_bUpdating = false;
    return ZX_OK;
}

int32_t CZxISControlCheckOwnerDraw::ResetToDefault()
{
    SZxGrabberPropertyValue value(m_wstrName);
    int32_t rc = ZX_OK;
    if (!_WriteDefault(value, rc))
        return rc;
    m_bChecked = value.m_varValue.GetBool();
    Repaint();
    return ZX_OK;
}

int32_t CZxISControlCheckOwnerDraw::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    value.m_varValue = m_bChecked;
    value.m_varValue.SetTypeChangeAllowed(true);
    return ZX_OK;
}

bool CZxISControlCheckOwnerDraw::DrawItem(const tagDRAWITEMSTRUCT* item)
{
    if (!item || item->CtlType != ODT_BUTTON || item->CtlID != static_cast<UINT>(m_iControlId))
        return false;
    ZX_DrawCheckButton(item, m_bChecked, (item->itemState & ODS_DISABLED) != 0, true);
    return true;
}

bool CZxISControlCheckOwnerDraw::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                                             ZxLResult* result)
{
    if (message == WM_DRAWITEM && wParam == static_cast<ZxWParam>(m_iControlId)) {
        if (!DrawItem(reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)))
            return false;
        if (result)
            *result = TRUE;
        return true;
    }
    // An owner-drawn button reports a quick second click as a double click.
    if ((!IsCommand(message, wParam, m_iControlId, BN_CLICKED) &&
         !IsCommand(message, wParam, m_iControlId, BN_DOUBLECLICKED)) ||
        m_bUpdating)
        return false;
    m_bChecked = !m_bChecked;
    Repaint();
    SZxGrabberPropertyValue value(m_wstrName);
    GetPropValForGeneric(value);
    _SetPropValue(value);
    SetResult(result);
    return true;
}

// ---- CZxISControlRadio ---------------------------------------------------------------

CZxISControlRadio::CZxISControlRadio(const wchar_t* name, uint32_t mode, int32_t firstId, int32_t lastId,
                                     uint32_t groupMask)
    : CZxISControl(ctRadio, btProperty, name, mode, firstId, groupMask), m_iLastId(lastId), m_iCount(-1)
{
}

int32_t CZxISControlRadio::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    m_hDlg = dialog;
    m_pProvider = provider;
    if (list && m_iLastId >= m_iControlId) {
        std::vector<ZxHWnd> buttons;
        for (int32_t id = m_iControlId; id <= m_iLastId; ++id)
            buttons.push_back(Z(GetDlgItem(H(dialog), id)));
        list->Add(this, buttons.data(), static_cast<int32_t>(buttons.size()));
    }
    return ZX_OK;
}

int32_t CZxISControlRadio::Enable(bool enable)
{
    // Buttons without an element stay disabled.
    for (int32_t id = m_iControlId; id <= m_iLastId; ++id)
        EnableWindow(GetDlgItem(H(m_hDlg), id), enable && (m_iCount < 0 || id - m_iControlId < m_iCount));
    return ZX_OK;
}

int32_t CZxISControlRadio::Show(bool show)
{
    for (int32_t id = m_iControlId; id <= m_iLastId; ++id)
        ShowWindow(GetDlgItem(H(m_hDlg), id),
                   show && (m_iCount < 0 || id - m_iControlId < m_iCount) ? SW_SHOW : SW_HIDE);
    return ZX_OK;
}

int32_t CZxISControlRadio::Reinit()
{
    CZxISChoiceEntries entries;
    const int32_t rc = ReadAnyEntries(*this, entries);
    m_iCount = entries.GetSize();
    for (int32_t id = m_iControlId; id <= m_iLastId; ++id) {
        const int32_t i = id - m_iControlId;
        HWND button = GetDlgItem(H(m_hDlg), id);
        if (i < m_iCount) {
            SetWindowTextW(button, GetTranslation(entries[i].m_wstrLabel, kSource));
        } else {
            EnableWindow(button, FALSE);
            ShowWindow(button, SW_HIDE);
        }
    }
    return rc;
}

void CZxISControlRadio::Check(int32_t index)
{
    for (int32_t id = m_iControlId; id <= m_iLastId; ++id)
        zxwin::Button(zxwin::Item(m_hDlg, id)).SetCheck(id - m_iControlId == index);
}

int32_t CZxISControlRadio::UpdateFromGeneric()
{
    int32_t rc = ZX_OK;
    Check(CurrentEntry(*this, rc));
    return rc;
}

int32_t CZxISControlRadio::ResetToDefault()
{
    SZxGrabberPropertyValue value(m_wstrName);
    int32_t rc = ZX_OK;
    return _WriteDefault(value, rc) ? UpdateFromGeneric() : rc;
}

int32_t CZxISControlRadio::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    int32_t index = -1;
    for (int32_t id = m_iControlId; id <= m_iLastId && index < 0; ++id)
        if (IsDlgButtonChecked(H(m_hDlg), id) == BST_CHECKED)
            index = id - m_iControlId;
    if (index < 0)
        return ZX_E_NOSELECTION;
    CZxISChoiceEntries entries;
    const int32_t rc = ReadAnyEntries(*this, entries);
    if (rc != ZX_OK)
        return rc;
    if (index >= entries.GetSize())
        return ZX_E_NOSELECTION;
    value.m_varValue = entries[index].m_varValue;
    value.m_varValue.SetTypeChangeAllowed(true);
    return ZX_OK;
}

bool CZxISControlRadio::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam, ZxLResult* result)
{
    const int32_t id = LOWORD(wParam);
    if (message != WM_COMMAND || HIWORD(wParam) != BN_CLICKED || id < m_iControlId || id > m_iLastId)
        return false;
    CZxISChoiceEntries entries;
    const int32_t index = id - m_iControlId;
    if (ReadAnyEntries(*this, entries) == ZX_OK && index < entries.GetSize()) {
        SZxGrabberPropertyValue value(m_wstrName, entries[index].m_varValue);
        SZxGrabberPropertyDesc01 desc(m_wstrName);
        if (_GetPropDesc(desc) == ZX_OK && (desc.m_uiFlags & ZX_PROPFLAG_CHANGES_FORMAT)) {
            SZxStateChangeInfo info;
            _SetPropValueGetStateChange(value, info, true);
        } else {
            _SetPropValue(value);
        }
        Check(index);
    }
    SetResult(result);
    return true;
}

// ---- CZxISControlSpinList ------------------------------------------------------------

CZxISControlSpinList::CZxISControlSpinList(const wchar_t* name, uint32_t mode, int32_t editId, int32_t spinId,
                                           uint32_t groupMask)
    : CZxISControl(ctListStepper, btProperty, name, mode, editId, groupMask), m_iSpinId(spinId), m_bUpdating(false),
      m_iIndex(-1)
{
}

int32_t CZxISControlSpinList::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    m_hDlg = dialog;
    m_pProvider = provider;
    if (list) {
        ZxHWnd items[2] = {Z(GetDlgItem(H(dialog), m_iControlId)), Z(GetDlgItem(H(dialog), m_iSpinId))};
        list->Add(this, items, 2);
    }
    return ZX_OK;
}

int32_t CZxISControlSpinList::Enable(bool enable)
{
    const int32_t ids[] = {m_iControlId, m_iSpinId};
    EnableItems(m_hDlg, ids, 2, enable);
    return ZX_OK;
}

int32_t CZxISControlSpinList::Show(bool show)
{
    const int32_t ids[] = {m_iControlId, m_iSpinId};
    ShowItems(m_hDlg, ids, 2, show);
    return ZX_OK;
}

int32_t CZxISControlSpinList::Reinit()
{
    CZxISChoiceEntries entries;
    const int32_t rc = ReadAnyEntries(*this, entries);
    const int32_t top = entries.GetSize() > 0 ? entries.GetSize() - 1 : 0;
    zxwin::UpDown(zxwin::Item(m_hDlg, m_iSpinId)).SetRange(0, top);
    return rc;
}

void CZxISControlSpinList::ShowIndex(int32_t index)
{
    CZxISChoiceEntries entries;
    const bool valid = ReadAnyEntries(*this, entries) == ZX_OK && index >= 0 && index < entries.GetSize();
    m_iIndex = valid ? index : -1;
    m_bUpdating = true;
    if (valid)
        zxwin::UpDown(zxwin::Item(m_hDlg, m_iSpinId)).SetPos(index);
    SetDlgItemTextW(H(m_hDlg), m_iControlId, valid ? GetTranslation(entries[index].m_wstrLabel, kSource).GetString()
                                                   : L"");
    m_bUpdating = false;
}

int32_t CZxISControlSpinList::UpdateFromGeneric()
{
    int32_t rc = ZX_OK;
    ShowIndex(CurrentEntry(*this, rc));
    return rc;
}

int32_t CZxISControlSpinList::ResetToDefault()
{
    SZxGrabberPropertyValue value(m_wstrName);
    int32_t rc = ZX_OK;
    return _WriteDefault(value, rc) ? UpdateFromGeneric() : rc;
}

int32_t CZxISControlSpinList::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    if (m_iIndex < 0)
        return ZX_E_NOSELECTION;
    CZxISChoiceEntries entries;
    const int32_t rc = ReadAnyEntries(*this, entries);
    if (rc != ZX_OK)
        return rc;
    if (m_iIndex >= entries.GetSize())
        return ZX_E_NOSELECTION;
    value.m_varValue = entries[m_iIndex].m_varValue;
    value.m_varValue.SetTypeChangeAllowed(true);
    return ZX_OK;
}

bool CZxISControlSpinList::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                                       ZxLResult* result)
{
    if ((message != WM_VSCROLL && message != WM_HSCROLL) ||
        zxwin::Sender(lParam) != zxwin::Item(m_hDlg, m_iSpinId) || m_bUpdating)
        return false;
    // The up-down reports its new position with SB_THUMBPOSITION; its
    // end-of-scroll report brings nothing new.
    if (LOWORD(wParam) != SB_THUMBPOSITION)
        return false;
    const int32_t previous = m_iIndex;
    ShowIndex(static_cast<short>(HIWORD(wParam)));
    SZxGrabberPropertyValue value(m_wstrName);
    if (m_iIndex != previous && GetPropValForGeneric(value) == ZX_OK)
        _SetPropValue(value);
    SetResult(result);
    return true;
}

// ---- CZxISControlNextPrevList --------------------------------------------------------

CZxISControlNextPrevList::CZxISControlNextPrevList(const wchar_t* name, uint32_t mode, int32_t textId,
                                                   int32_t nextId, int32_t previousId, uint32_t groupMask)
    : CZxISControl(ctListStepper, btProperty, name, mode, textId, groupMask), m_iNextId(nextId),
      m_iPreviousId(previousId), m_iIndex(-1), m_iCount(0)
{
}

int32_t CZxISControlNextPrevList::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    m_hDlg = dialog;
    m_pProvider = provider;
    if (list) {
        ZxHWnd buttons[2] = {Z(GetDlgItem(H(dialog), m_iNextId)), Z(GetDlgItem(H(dialog), m_iPreviousId))};
        list->Add(this, buttons, 2);
    }
    return ZX_OK;
}

int32_t CZxISControlNextPrevList::Enable(bool enable)
{
    const int32_t ids[] = {m_iControlId, m_iNextId, m_iPreviousId};
    EnableItems(m_hDlg, ids, 3, enable);
    return ZX_OK;
}

int32_t CZxISControlNextPrevList::Show(bool show)
{
    const int32_t ids[] = {m_iControlId, m_iNextId, m_iPreviousId};
    ShowItems(m_hDlg, ids, 3, show);
    return ZX_OK;
}

void CZxISControlNextPrevList::ShowIndex(const CZxVariant& list, int32_t index)
{
    SZxISChoiceEntry entry;
    const bool valid = index >= 0 && index < list.GetCount() && AnyEntry(list[index], entry);
    m_iIndex = valid ? index : -1;
    SetDlgItemTextW(H(m_hDlg), m_iControlId, valid ? GetTranslation(entry.m_wstrLabel, kSource).GetString() : L"");
}

int32_t CZxISControlNextPrevList::UpdateFromGeneric()
{
    SZxGrabberPropertyValue value(m_wstrName);
    CZxVariant def;
    int32_t rc = _GetPropValue(value);
    if (rc == ZX_OK)
        rc = _GetPropDefinition(def);
    const CZxVariant* list = rc == ZX_OK ? DefinitionList(def, L"m_list") : nullptr;
    m_iCount = list ? list->GetCount() : 0;
    const bool isIndex = value.m_varValue.GetKind() == CZxVariant::EKind::Int32;
    ShowIndex(list ? *list : CZxVariant(), list && isIndex ? value.m_varValue.GetZx_int32() : -1);
    return rc != ZX_OK ? rc : (list ? ZX_OK : ZX_E_FAIL);
}

int32_t CZxISControlNextPrevList::ResetToDefault()
{
    SZxGrabberPropertyValue value(m_wstrName);
    int32_t rc = ZX_OK;
    return _WriteDefault(value, rc) ? UpdateFromGeneric() : rc;
}

int32_t CZxISControlNextPrevList::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    if (m_iIndex < 0)
        return ZX_E_NOSELECTION;
    value.m_varValue = m_iIndex;
    value.m_varValue.SetTypeChangeAllowed(true);
    return ZX_OK;
}

bool CZxISControlNextPrevList::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam,
                                           ZxLResult* result)
{
    const bool next = IsCommand(message, wParam, m_iNextId, BN_CLICKED);
    if (!next && !IsCommand(message, wParam, m_iPreviousId, BN_CLICKED))
        return false;
    SetResult(result);
    CZxVariant def;
    const CZxVariant* list = _GetPropDefinition(def) == ZX_OK ? DefinitionList(def, L"m_list") : nullptr;
    if (!list)
        return true;
    m_iCount = list->GetCount();
    const int32_t index = next ? (m_iIndex < m_iCount - 1 ? m_iIndex + 1 : m_iIndex)
                               : (m_iIndex > 0 ? m_iIndex - 1 : m_iIndex);
    if (index == m_iIndex || index < 0)
        return true;   // at an end
    SZxGrabberPropertyValue value(m_wstrName, CZxVariant(index));
    _SetPropValue(value);
    ShowIndex(*list, index);
    return true;
}
