// Helpers shared by the choice controls, and the untranslated variants.
#include "inputsetup/choice_win.h"

#include "zx/status.h"
#include "zxhost/system.h"

namespace zxchoice {

const char kSource[] = "inputsetupcontrols";
const wchar_t kSourceW[] = L"inputsetupcontrols";

CZxStringW ValueText(const CZxVariant& v)
{
    switch (v.GetKind()) {
    case CZxVariant::EKind::String: return v.GetCZxStringW();
    case CZxVariant::EKind::Int32: return CZxStringW::Formatted(L"%d", v.GetZx_int32());
    case CZxVariant::EKind::Double: return CZxStringW::Formatted(L"%f", v.GetDouble());
    case CZxVariant::EKind::Bool: return v.GetBool() ? L"true" : L"false";
    default: return CZxStringW();
    }
}

const CZxVariant* DefinitionList(const CZxVariant& def, const wchar_t* member)
{
    const CZxVariant* list = def.Search(member);
    if (ZX_DIAG_FAIL_IF(list == nullptr || !list->IsArray(), kSourceW))
        return nullptr;
    if (ZX_DIAG_FAIL_IF(list->GetCount() == 0, kSourceW))
        return nullptr;
    return list;
}

bool AnyEntry(const CZxVariant& element, SZxISChoiceEntry& entry)
{
    switch (element.GetKind()) {
    case CZxVariant::EKind::String:
    case CZxVariant::EKind::Int32:
    case CZxVariant::EKind::Bool:
        entry.m_wstrLabel = ValueText(element);
        entry.m_varValue = element;
        return true;
    case CZxVariant::EKind::Double:
        entry.m_wstrLabel = CZxStringW::Formatted(L"%g", element.GetDouble());
        entry.m_varValue = element;
        return true;
    case CZxVariant::EKind::Record: {
        const CZxVariant* text = element.Search(L"m_wstrText");
        const CZxVariant* value = element.Search(L"m_iValue");
        if (!value)
            value = element.Search(L"m_dValue");
        if (!value)
            value = element.Search(L"m_wstrValue");
        if (ZX_DIAG_FAIL_IF(text == nullptr, kSourceW) || ZX_DIAG_FAIL_IF(value == nullptr, kSourceW))
            return false;
        entry.m_wstrLabel = text->GetCZxStringW();
        entry.m_varValue = *value;
        return true;
    }
    default: ZX_DIAG_UNEXPECTED(kSourceW); return false;
    }
}

int32_t CurrentEntry(CZxISControl& control, int32_t& status)
{
    SZxGrabberPropertyValue value(control.GetName());
    status = control._GetPropValue(value);
    CZxISChoiceEntries entries;
    if (status == ZX_OK)
        status = ReadAnyEntries(control, entries);
    return status == ZX_OK ? FindLastEntry(entries, value.m_varValue) : -1;
}

int32_t ReadAnyEntries(CZxISControl& control, CZxISChoiceEntries& entries)
{
    entries.RemoveAll();
    CZxVariant def;
    const int32_t rc = control._GetPropDefinition(def);
    if (rc != ZX_OK)
        return rc;
    const CZxVariant* list = DefinitionList(def, L"m_list");
    if (!list)
        return ZX_E_FAIL;
    for (int i = 0; i < list->GetCount(); ++i) {
        SZxISChoiceEntry e;
        if (!AnyEntry((*list)[i], e)) {
            entries.RemoveAll();
            return ZX_E_FAIL;
        }
        entries.Add(e);
    }
    return ZX_OK;
}

int32_t FindLastEntry(const CZxISChoiceEntries& entries, const CZxVariant& value)
{
    const CZxStringW text = ValueText(value);
    for (int i = entries.GetSize() - 1; i >= 0; --i)
        if (entries[i].m_varValue == value || (!text.IsEmpty() && ValueText(entries[i].m_varValue) == text))
            return i;
    return -1;
}

void EnableItems(ZxHWnd dialog, const int32_t* ids, int count, bool enable)
{
    for (int i = 0; i < count; ++i)
        EnableWindow(GetDlgItem(H(dialog), ids[i]), enable);
}

void ShowItems(ZxHWnd dialog, const int32_t* ids, int count, bool show)
{
    for (int i = 0; i < count; ++i)
        ShowWindow(GetDlgItem(H(dialog), ids[i]), show ? SW_SHOW : SW_HIDE);
}

} // namespace zxchoice

// ---- Untranslated variants ---------------------------------------------------------

#define ZX_NT_TRANSLATION(cls) \
    CZxStringW cls::GetTranslation(const wchar_t* text, const char*) { return CZxStringW(text ? text : L""); }
ZX_NT_TRANSLATION(CZxISControlComboNT)
ZX_NT_TRANSLATION(CZxISControlComboExNT)
ZX_NT_TRANSLATION(CZxISControlSpinListNT)
ZX_NT_TRANSLATION(CZxISControlNextPrevListNT)
ZX_NT_TRANSLATION(CZxISControlRadioNT)
