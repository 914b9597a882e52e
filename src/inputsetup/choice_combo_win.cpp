// The value combos: a drop-down over the property's list, shown translated.
#include "inputsetup/choice_win.h"

#include <commctrl.h>

#include <vector>
#include "zx/status.h"
#include "zxhost/system.h"

using namespace zxchoice;

using zxwin::Combo;

namespace {

// The last entry whose number equals the value (integer and double values alike).
int32_t FindNumericEntry(const CZxISChoiceEntries& entries, const CZxVariant& value)
{
    const auto kind = value.GetKind();
    if (kind != CZxVariant::EKind::Int32 && kind != CZxVariant::EKind::Double)
        return -1;
    for (int i = entries.GetSize() - 1; i >= 0; --i)
        if (entries[i].m_varValue.GetDouble() == value.GetDouble())
            return i;
    return -1;
}

// The selected entry's item data as a 32-bit integer value; no selection: -12.
int32_t SelectedItemDataAsInt32(const Combo& combo, SZxGrabberPropertyValue& value)
{
    const int index = combo.Selection();
    if (index < 0)
        return ZX_E_NOSELECTION;
    value.m_varValue = static_cast<int>(combo.Data(index));
    value.m_varValue.SetTypeChangeAllowed(true);
    return ZX_OK;
}
} // namespace

// ---- CZxISControlCombo ---------------------------------------------------------------

CZxISControlCombo::CZxISControlCombo(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask,
                                     bool fixedMode)
    : CZxISControl(ctCombo, btProperty, name, mode, comboId, groupMask), m_bUpdating(false), m_bDropped(false),
      m_bFixedMode(fixedMode)
{
}

int32_t CZxISControlCombo::ChangeMode(uint32_t mode)
{
    if (!m_bFixedMode)
        m_uiMode = mode;
    return ZX_OK;
}

const wchar_t* CZxISControlCombo::_ListMember() const { return L"m_list"; }

bool CZxISControlCombo::_Entry(const CZxVariant& element, SZxISChoiceEntry& entry)
{
    // The plain combo shows texts: anything else is a list for another combo.
    if (ZX_DIAG_FAIL_IF(element.GetKind() != CZxVariant::EKind::String, kSourceW))
        return false;
    entry.m_wstrLabel = element.GetCZxStringW();
    entry.m_varValue = element;
    return true;
}

ZxLParam CZxISControlCombo::_ItemData(const SZxISChoiceEntry&) { return 0; }

int32_t CZxISControlCombo::_FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value)
{
    // Equal texts: the last one wins.
    const CZxStringW text = ValueText(value);
    for (int i = entries.GetSize() - 1; i >= 0; --i)
        if (entries[i].m_wstrLabel == text)
            return i;
    return -1;
}

void CZxISControlCombo::_SelectionShown(int32_t) {}

int32_t CZxISControlCombo::_ReadEntries(CZxISChoiceEntries& entries)
{
    entries.RemoveAll();
    CZxVariant def;
    const int32_t rc = _GetPropDefinition(def);
    if (rc != ZX_OK)
        return rc;
    const CZxVariant* list = DefinitionList(def, _ListMember());
    if (!list)
        return ZX_E_FAIL;
    for (int i = 0; i < list->GetCount(); ++i) {
        SZxISChoiceEntry e;
        if (!_Entry((*list)[i], e)) {
            entries.RemoveAll();
            return ZX_E_FAIL;
        }
        entries.Add(e);
    }
    return ZX_OK;
}

bool CZxISControlCombo::_Fill(const CZxISChoiceEntries& entries, bool onlyWhenDifferent)
{
    const Combo combo(GetItem());
    if (!combo.Handle())
        return false;
    std::vector<CZxStringW> labels;
    for (const auto& e : entries)
        labels.push_back(GetTranslation(e.m_wstrLabel, kSource));
    if (onlyWhenDifferent && combo.Count() == static_cast<int>(labels.size())) {
        bool same = true;
        for (int i = 0; same && i < static_cast<int>(labels.size()); ++i)
            same = combo.ItemText(i) == labels[size_t(i)] && combo.Data(i) == _ItemData(entries[i]);
        if (same)
            return false;   // nothing to do, and no flicker
    }
    combo.SetRedraw(false);
    combo.Clear();
    for (size_t i = 0; i < labels.size(); ++i) {
        const int at = combo.Add(labels[i].GetString());
        if (at >= 0)
            combo.SetData(at, _ItemData(entries[static_cast<int>(i)]));
    }
    combo.SetRedraw(true);
    InvalidateRect(combo.Handle(), nullptr, TRUE);
    return true;
}

int32_t CZxISControlCombo::Reinit()
{
    CZxISChoiceEntries entries;
    const int32_t rc = _ReadEntries(entries);
    const bool wasUpdating = m_bUpdating;
    m_bUpdating = true;
    // A refill empties the combo, and the old index may now name another element:
    // the driver's value is looked up in the new list (no selection when it is in none).
    if (_Fill(entries, true)) {
        SZxGrabberPropertyValue value(m_wstrName);
        const int32_t index =
            rc == ZX_OK && _GetPropValue(value) == ZX_OK ? _FindEntry(entries, value.m_varValue) : -1;
        Combo(GetItem()).Select(index);
        _SelectionShown(index);
    }
    m_bUpdating = wasUpdating;
    return rc;
}

int32_t CZxISControlCombo::_Show(const CZxVariant& value)
{
    CZxISChoiceEntries entries;
    const int32_t rc = _ReadEntries(entries);
    m_bUpdating = true;
    _Fill(entries, false);
    const int32_t index = rc == ZX_OK ? _FindEntry(entries, value) : -1;
    Combo(GetItem()).Select(index);
    _SelectionShown(index);
    m_bUpdating = false;
    return rc;
}

int32_t CZxISControlCombo::UpdateFromGeneric()
{
    if (m_bDropped)
        return ZX_E_BUSY;
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t rc = _GetPropValue(value);
    if (rc != ZX_OK) {
        _Show(CZxVariant());
        return rc;
    }
    return _Show(value.m_varValue);
}

int32_t CZxISControlCombo::ResetToDefault()
{
    if (m_bDropped)
        return ZX_E_BUSY;
    SZxGrabberPropertyValue value(m_wstrName);
    int32_t rc = ZX_OK;
    if (!_WriteDefault(value, rc))
        return rc;
    return _Show(value.m_varValue);
}

int32_t CZxISControlCombo::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    const int32_t index = Combo(GetItem()).Selection();
    if (index < 0)
        return ZX_E_NOSELECTION;
    CZxISChoiceEntries entries;
    const int32_t rc = _ReadEntries(entries);
    if (rc != ZX_OK)
        return rc;
    if (index >= entries.GetSize())
        return ZX_E_FAIL;   // the definition shrank since the combo was filled
    value.m_varValue = entries[index].m_varValue;
    value.m_varValue.SetTypeChangeAllowed(true);
    return ZX_OK;
}

bool CZxISControlCombo::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam, ZxLResult* result)
{
    if (message != WM_COMMAND || LOWORD(wParam) != static_cast<WORD>(m_iControlId))
        return false;
    switch (HIWORD(wParam)) {
    case CBN_DROPDOWN: m_bDropped = true; return false;
    case CBN_CLOSEUP: m_bDropped = false; return false;
    case CBN_SELCHANGE: {
        if (m_bUpdating)
            return false;
        SZxGrabberPropertyValue value(m_wstrName);
        if (GetPropValForGeneric(value) == ZX_OK)
            _SetPropValue(value);
        _SelectionShown(Combo(GetItem()).Selection());
        SetResult(result);
        return true;
    }
    default: return false;
    }
}

// ---- CZxISControlComboEx -------------------------------------------------------------

CZxISControlComboEx::CZxISControlComboEx(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask,
                                         bool fixedMode)
    : CZxISControlCombo(name, mode, comboId, groupMask, fixedMode), m_pInfoTexts(new CZxVector<CZxStringW>),
      m_hTooltip(nullptr)
{
}

CZxISControlComboEx::~CZxISControlComboEx()
{
    if (m_hTooltip)
        DestroyWindow(H(m_hTooltip));
    delete m_pInfoTexts;
}

int32_t CZxISControlComboEx::Detach()
{
    if (m_hTooltip)
        DestroyWindow(H(m_hTooltip));
    m_hTooltip = nullptr;
    return CZxISControlCombo::Detach();
}

int32_t CZxISControlComboEx::SetInfoText(const wchar_t* const* texts, int32_t count)
{
    if (ZX_DIAG_FAIL_IF(texts == nullptr && count > 0, kSourceW))
        return ZX_E_FAIL;
    m_pInfoTexts->RemoveAll();
    for (int32_t i = 0; i < count; ++i)
        m_pInfoTexts->Add(CZxStringW(texts[i] ? texts[i] : L""));
    _SelectionShown(Combo(GetItem()).Selection());
    return ZX_OK;
}

CZxStringW CZxISControlComboEx::GetShownInfoText() const { return m_wstrShownInfo; }

// The information text of the selected entry is the combo's tooltip: it explains
// the choice where the user looks, and needs no room in the dialog.
void CZxISControlComboEx::_SelectionShown(int32_t index)
{
    m_wstrShownInfo.Empty();
    if (index >= 0 && index < m_pInfoTexts->GetSize() && !(*m_pInfoTexts)[index].IsEmpty())
        m_wstrShownInfo = GetTranslation((*m_pInfoTexts)[index], kSource);
    HWND combo = H(GetItem());
    if (!combo)
        return;
    TOOLINFOW ti = {};
    ti.cbSize = TTTOOLINFOW_V2_SIZE;
    ti.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    ti.hwnd = H(m_hDlg);
    ti.uId = reinterpret_cast<UINT_PTR>(combo);
    ti.lpszText = const_cast<wchar_t*>(m_wstrShownInfo.GetString());
    if (!m_hTooltip) {
        if (m_wstrShownInfo.IsEmpty())
            return;
        m_hTooltip = Z(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                       CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, H(m_hDlg),
                                       nullptr, nullptr, nullptr));
        if (!m_hTooltip)
            return;
        zxwin::Tooltip(m_hTooltip).SetMaxWidth(300);
        zxwin::Tooltip(m_hTooltip).AddTool(ti);
        return;
    }
    zxwin::Tooltip(m_hTooltip).UpdateText(ti);
}

// ---- CZxISControlComboInt32 ----------------------------------------------------------

CZxISControlComboInt32::CZxISControlComboInt32(const wchar_t* name, uint32_t mode, int32_t comboId,
                                               uint32_t groupMask, bool fixedMode)
    : CZxISControlComboEx(name, mode, comboId, groupMask, fixedMode)
{
}

bool CZxISControlComboInt32::_Entry(const CZxVariant& element, SZxISChoiceEntry& entry)
{
    if (ZX_DIAG_FAIL_IF(element.GetKind() != CZxVariant::EKind::Int32, kSourceW))
        return false;
    entry.m_wstrLabel = CZxStringW::Formatted(L"%d", element.GetZx_int32());
    entry.m_varValue = element;
    return true;
}

ZxLParam CZxISControlComboInt32::_ItemData(const SZxISChoiceEntry& entry) { return entry.m_varValue.GetZx_int32(); }

int32_t CZxISControlComboInt32::_FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value)
{
    return FindNumericEntry(entries, value);
}

int32_t CZxISControlComboInt32::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    return SelectedItemDataAsInt32(Combo(GetItem()), value);
}

// ---- CZxISControlComboDouble ---------------------------------------------------------

CZxISControlComboDouble::CZxISControlComboDouble(const wchar_t* name, uint32_t mode, int32_t comboId,
                                                 uint32_t groupMask, bool fixedMode)
    : CZxISControlCombo(name, mode, comboId, groupMask, fixedMode)
{
}

bool CZxISControlComboDouble::_Entry(const CZxVariant& element, SZxISChoiceEntry& entry)
{
    const auto kind = element.GetKind();
    if (ZX_DIAG_FAIL_IF(kind != CZxVariant::EKind::Double && kind != CZxVariant::EKind::Int32, kSourceW))
        return false;
    entry.m_wstrLabel = CZxStringW::Formatted(L"%.1f", element.GetDouble());
    entry.m_varValue = element;
    return true;
}

int32_t CZxISControlComboDouble::_FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value)
{
    const auto kind = value.GetKind();
    if (kind != CZxVariant::EKind::Double && kind != CZxVariant::EKind::Int32)
        return -1;
    // By the untranslated "%.1f" text of each entry, not by the combo's items: a
    // translation may write the numbers differently (a decimal comma).
    const CZxStringW text = CZxStringW::Formatted(L"%.1f", value.GetDouble());
    for (int i = 0; i < entries.GetSize(); ++i)
        if (entries[i].m_wstrLabel == text)
            return i;
    return -1;
}

// ---- Combos over records -------------------------------------------------------------

namespace {
// A record of `valueMember` (of `kind`) and "m_wstrText"; false (reported) otherwise.
bool RecordEntry(const CZxVariant& element, const wchar_t* valueMember, CZxVariant::EKind kind,
                 SZxISChoiceEntry& entry)
{
    if (ZX_DIAG_FAIL_IF(!element.IsRecord(), kSourceW))
        return false;
    const CZxVariant* value = element.Search(valueMember);
    const CZxVariant* text = element.Search(L"m_wstrText");
    if (ZX_DIAG_FAIL_IF(value == nullptr || value->GetKind() != kind, kSourceW) ||
        ZX_DIAG_FAIL_IF(text == nullptr || text->GetKind() != CZxVariant::EKind::String, kSourceW))
        return false;
    entry.m_wstrLabel = text->GetCZxStringW();
    entry.m_varValue = *value;
    return true;
}
} // namespace

CZxISControlComboTextInt32::CZxISControlComboTextInt32(const wchar_t* name, uint32_t mode, int32_t comboId,
                                                       uint32_t groupMask, bool fixedMode)
    : CZxISControlCombo(name, mode, comboId, groupMask, fixedMode)
{
}

bool CZxISControlComboTextInt32::_Entry(const CZxVariant& element, SZxISChoiceEntry& entry)
{
    return RecordEntry(element, L"m_iValue", CZxVariant::EKind::Int32, entry);
}

ZxLParam CZxISControlComboTextInt32::_ItemData(const SZxISChoiceEntry& entry)
{
    return entry.m_varValue.GetZx_int32();
}

int32_t CZxISControlComboTextInt32::_FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value)
{
    return FindNumericEntry(entries, value);
}

int32_t CZxISControlComboTextInt32::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    return SelectedItemDataAsInt32(Combo(GetItem()), value);
}

CZxISControlComboTextDouble::CZxISControlComboTextDouble(const wchar_t* name, uint32_t mode, int32_t comboId,
                                                         uint32_t groupMask, bool fixedMode)
    : CZxISControlCombo(name, mode, comboId, groupMask, fixedMode)
{
}

const wchar_t* CZxISControlComboTextDouble::_ListMember() const { return L"m_List"; }

bool CZxISControlComboTextDouble::_Entry(const CZxVariant& element, SZxISChoiceEntry& entry)
{
    return RecordEntry(element, L"m_dValue", CZxVariant::EKind::Double, entry);
}

int32_t CZxISControlComboTextDouble::_FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value)
{
    const auto kind = value.GetKind();
    if (kind != CZxVariant::EKind::Int32 && kind != CZxVariant::EKind::Double)
        return -1;
    for (int i = entries.GetSize() - 1; i >= 0; --i)
        if (entries[i].m_varValue.GetDouble() == value.GetDouble())
            return i;
    return -1;
}

CZxISControlComboTextStringW::CZxISControlComboTextStringW(const wchar_t* name, uint32_t mode, int32_t comboId,
                                                           uint32_t groupMask, bool fixedMode)
    : CZxISControlCombo(name, mode, comboId, groupMask, fixedMode)
{
}

bool CZxISControlComboTextStringW::_Entry(const CZxVariant& element, SZxISChoiceEntry& entry)
{
    return RecordEntry(element, L"m_wstrValue", CZxVariant::EKind::String, entry);
}

int32_t CZxISControlComboTextStringW::_FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value)
{
    if (value.GetKind() != CZxVariant::EKind::String)
        return -1;
    for (int i = entries.GetSize() - 1; i >= 0; --i)
        if (entries[i].m_varValue.GetCZxStringW() == value.GetCZxStringW())
            return i;
    return -1;
}
