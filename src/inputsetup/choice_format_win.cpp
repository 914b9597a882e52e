// The combos bound to the camera format: the format itself and its binning.
#include "inputsetup/choice_win.h"

#include <new>
#include <vector>
#include "zx/status.h"
#include "zxhost/system.h"

using namespace zxchoice;
using zxwin::Combo;

namespace {
// A provider that never ends its enumeration must not hang the dialog.
const int kMaxEnumeration = 4096;

ZxLParam AsLParam(const void* p) { return reinterpret_cast<ZxLParam>(p); }
} // namespace

// ---- CZxISControlComboFormat ---------------------------------------------------------

CZxISControlComboFormat::CZxISControlComboFormat(uint32_t mode, int32_t comboId, uint32_t groupMask,
                                                 bool filterByMode)
    : CZxISControl(ctComboFormat, btFormat, L"", mode, comboId, groupMask), m_bUpdating(false),
      m_bFilterByMode(filterByMode), m_pFormats(new CZxVector<SZxGrabberFormatValue>)
{
}

CZxISControlComboFormat::~CZxISControlComboFormat() { delete m_pFormats; }

int32_t CZxISControlComboFormat::GetFormatCount() const { return m_pFormats->GetSize(); }

const SZxGrabberFormatValue* CZxISControlComboFormat::GetFormat(int32_t index) const
{
    return index >= 0 && index < m_pFormats->GetSize() ? &(*m_pFormats)[index] : nullptr;
}

int32_t CZxISControlComboFormat::UpdateState() { return Enable(m_pFormats->GetSize() > 0); }

int32_t CZxISControlComboFormat::Reinit()
{
    m_pFormats->RemoveAll();
    if (m_pProvider) {
        SZxGrabberFormatValue f;   // an empty name starts the enumeration
        for (int n = 0; n < kMaxEnumeration && m_pProvider->FormatNext_WRP(f) == ZX_OK; ++n) {
            if (m_bFilterByMode && !(f.m_uiFlags & m_uiMode))
                continue;
            if (m_pFormats->GetSize() == kMaxFormats) {
                ZX_LogW(1, L"CZxISControlComboFormat warning: cannot display more than %d formats", kMaxFormats);
                break;
            }
            m_pFormats->Add(f);
        }
    }
    const Combo combo(GetItem());
    if (!combo.Handle())
        return ZX_OK;
    std::vector<CZxStringW> names;
    for (const auto& f : *m_pFormats)
        names.push_back(GetTranslation(f.m_wstrName, kSource));
    bool same = combo.Count() == static_cast<int>(names.size());
    for (size_t i = 0; same && i < names.size(); ++i)
        same = combo.ItemText(static_cast<int>(i)) == names[i];
    if (same)
        return ZX_OK;
    m_bUpdating = true;
    combo.SetRedraw(false);
    combo.Clear();
    for (const auto& n : names)
        combo.Add(n.GetString());
    combo.SetRedraw(true);
    InvalidateRect(combo.Handle(), nullptr, TRUE);
    m_bUpdating = false;
    return ZX_OK;
}

int32_t CZxISControlComboFormat::UpdateFromGeneric()
{
    if (!m_pProvider)
        return ZX_E_FAIL;
    SZxGrabberFormatValue current;
    if (m_pProvider->FormatGet_WRP(m_uiMode, current) != ZX_OK)
        return ZX_E_FAIL;
    m_bUpdating = true;
    int32_t index = 0;
    while (index < m_pFormats->GetSize() && (*m_pFormats)[index].m_wstrName != current.m_wstrName)
        ++index;
    // Not kept (filtered, or past the limit): no selection. Said as -1: an index
    // past the end clears the selection on Windows but keeps it under Wine.
    if (index >= m_pFormats->GetSize())
        index = -1;
    const Combo combo(GetItem());
    if (combo.Selection() != index)
        combo.Select(index);
    m_bUpdating = false;
    return ZX_OK;
}

void CZxISControlComboFormat::SetFormat(SZxGrabberFormatValue& format)
{
    // No state-change record here: the host reads the new format after
    // WM_IS_FORMATCHANGED anyway.
    NotifyDialog(WM_IS_FORMATCHANGING, m_uiMode, AsLParam(&format));
    if (m_pProvider)
        m_pProvider->FormatSet_WRP(m_uiMode, format, nullptr, false);
    NotifyDialog(WM_IS_FORMATCHANGED, m_uiMode, 0);
}

int32_t CZxISControlComboFormat::ResetToDefault()
{
    if ((m_uiMode != ZX_MODE_FAST && m_uiMode != ZX_MODE_QUALITY) ||
        Combo(GetItem()).Count() <= 0)
        return ZX_OK;
    const uint32_t flag = m_uiMode == ZX_MODE_FAST ? ZX_FORMAT_DEFAULT_FAST : ZX_FORMAT_DEFAULT_QUALITY;
    for (auto& f : *m_pFormats)
        if (f.m_uiFlags & flag) {
            SZxGrabberFormatValue format = f;
            SetFormat(format);
            UpdateFromGeneric();
            break;
        }
    return ZX_OK;
}

bool CZxISControlComboFormat::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam,
                                          ZxLResult* result)
{
    if (!IsCommand(message, wParam, m_iControlId, CBN_SELCHANGE) || m_bUpdating)
        return false;
    const int index = Combo(GetItem()).Selection();
    if (index >= 0 && index < m_pFormats->GetSize()) {
        SZxGrabberFormatValue format = (*m_pFormats)[index];
        SetFormat(format);
    }
    SetResult(result);
    return true;
}

// ---- CZxISControlComboBinning --------------------------------------------------------

CZxISControlComboBinning::CZxISControlComboBinning(const wchar_t* name, uint32_t mode, int32_t comboId,
                                                   uint32_t groupMask)
    : CZxISControl(ctComboFormat, btFormat, name, mode, comboId, groupMask), m_bUpdating(false), m_iGroup(-1),
      m_uiNotifyMode(0), m_pCopies(new CZxVector<SZxGrabberFormatValue*>)
{
}

CZxISControlComboBinning::~CZxISControlComboBinning()
{
    FreeCopies();
    delete m_pCopies;
}

// The entries point at the copies, so they go first; a dialog destroyed before
// the control took its entries along, and the copies are freed all the same.
void CZxISControlComboBinning::FreeCopies()
{
    const Combo combo(GetItem());
    if (combo.Handle() && IsWindow(combo.Handle()))
        combo.Clear();
    for (SZxGrabberFormatValue* copy : *m_pCopies) {
        copy->~SZxGrabberFormatValue();
        CZxAlloc::Free(copy);
    }
    m_pCopies->RemoveAll();
}

int32_t CZxISControlComboBinning::UpdateState()
{
    if (!m_wstrName.IsEmpty())
        return CZxISControl::UpdateState();
    return Enable(m_pCopies->GetSize() > 1);
}

int32_t CZxISControlComboBinning::Reinit()
{
    if (!m_pProvider)
        return ZX_E_FAIL;
    SZxGrabberFormatValue current;
    const int rc = m_pProvider->FormatGet_WRP(m_uiMode, current);
    FreeCopies();
    if (rc != ZX_OK)
        return rc;
    m_iGroup = current.m_iGroup;
    const Combo combo(GetItem());
    if (!combo.Handle())
        return ZX_OK;
    const bool wasUpdating = m_bUpdating;
    m_bUpdating = true;
    SZxGrabberFormatValue f;
    for (int n = 0; n < kMaxEnumeration && m_pProvider->FormatNext_WRP(f) == ZX_OK; ++n) {
        if (f.m_iGroup != m_iGroup)
            continue;
        const double d = f.m_dBinning;
        const int b = d >= 1.0 && d < 1e6 ? static_cast<int>(d) : 1;
        const CZxStringW text = b == 1 ? GetTranslation(L"No Binning", kSource)
                                       : CZxStringW::Formatted(GetTranslation(L"Binning %dx%d", kSource), b, b);
        void* mem = CZxAlloc::Alloc(sizeof(SZxGrabberFormatValue));
        if (!mem)
            break;
        auto* copy = new (mem) SZxGrabberFormatValue(f);
        const int at = combo.Add(text.GetString());
        if (at < 0 || !combo.SetData(at, AsLParam(copy))) {
            copy->~SZxGrabberFormatValue();
            CZxAlloc::Free(copy);
            if (at >= 0)
                combo.Delete(at);
            continue;
        }
        m_pCopies->Add(copy);
    }
    m_bUpdating = wasUpdating;
    return ZX_OK;
}

int32_t CZxISControlComboBinning::UpdateFromGeneric()
{
    if (!m_pProvider)
        return ZX_E_FAIL;
    SZxGrabberFormatValue current;
    const int rc = m_pProvider->FormatGet_WRP(m_uiMode, current);
    if (rc != ZX_OK)
        return rc;
    m_bUpdating = true;
    if (current.m_iGroup != m_iGroup)
        Reinit();
    const Combo combo(GetItem());
    const int count = combo.Count();
    int index = 0;
    for (int i = 0; i < count; ++i) {
        const LRESULT data = combo.Data(i);
        if (data != CB_ERR && data && reinterpret_cast<const SZxGrabberFormatValue*>(data)->m_wstrName ==
                                          current.m_wstrName) {
            index = i;
            break;
        }
    }
    combo.Select(index);
    m_bUpdating = false;
    return ZX_OK;
}

bool CZxISControlComboBinning::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam,
                                           ZxLResult* result)
{
    if (!IsCommand(message, wParam, m_iControlId, CBN_SELCHANGE) || m_bUpdating)
        return false;
    const Combo combo(GetItem());
    const int index = combo.Selection();
    const LRESULT data = index < 0 ? CB_ERR : combo.Data(index);
    if (data != CB_ERR && data && m_pProvider) {
        SZxGrabberFormatValue format = *reinterpret_cast<const SZxGrabberFormatValue*>(data);
        const bool announce = m_uiMode == m_uiNotifyMode;
        if (announce)
            NotifyDialog(WM_IS_FORMATCHANGING, m_uiMode, AsLParam(&format));
        m_pProvider->FormatSet_WRP(m_uiMode, format, nullptr, false);
        if (announce)
            NotifyDialog(WM_IS_FORMATCHANGED, m_uiMode, 0);
    }
    SetResult(result);
    return true;
}
