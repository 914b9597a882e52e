// Free-entry exposure and temperature combos: presets or typed values, Enter
// and Escape caught by a thread keyboard hook per class (keyhook_win.cpp).
#include <windows.h>

#include <commctrl.h>

#include <cmath>
#include <vector>
#include "inputsetup/wincontrols.h"
#include "zx/iscontrols_freecombo.h"
#include "zx/iscontrols_numeric.h"
#include "zx/status.h"
#include "zxhost/exposure.h"
#include "zxhost/system.h"

namespace {

const WPARAM kEnter = 13, kEscape = 27;
// The exposure combo's list height in pixels, and the fewest items it shows.
const int kListHeight = 400, kMinVisible = 40;

using zxwin::Combo;
using zxwin::H;

// The focus is in the combo (the edit part of an editable combo is its child).
bool FocusIn(HWND combo)
{
    HWND focus = GetFocus();
    return focus && (focus == combo || IsChild(combo, focus));
}

// What the user typed (the longest a value's text can be).
CZxStringW ComboText(const Combo& combo) { return combo.Text(64); }

// An index for CB_SETCURSEL: within the combo's items, else -1 (no selection).
// An index past the end clears the selection on Windows but keeps it under Wine,
// so it is never sent.
int InCombo(const Combo& combo, int index)
{
    const int count = combo.Count();
    return index >= 0 && count != CB_ERR && index < count ? index : -1;
}

// Index of the value nearest to `value`: the first of equal distances wins, and
// index 0 when nothing is nearer than 1 000 000, -1 for no values.
template <class ValueAt>
int NearestIndex(int count, double value, ValueAt valueAt)
{
    double best = 1000000.0;
    int index = count > 0 ? 0 : -1;
    for (int i = 0; i < count; ++i) {
        const double d = std::fabs(valueAt(i) - value);
        if (d < best) {
            best = d;
            index = i;
        }
    }
    return index;
}

LRESULT CALLBACK ExposureComboTrampoline(HWND combo, UINT message, WPARAM wParam, LPARAM lParam)
{
    return CZxISControlComboFreeExposure::ComboProc(reinterpret_cast<ZxHWnd>(combo), message, wParam, lParam);
}

} // namespace

// What the exposure and the temperature combo do alike: Enter, Escape, typing,
// the focus leaving and a pick from the list. Each class gives its own text of
// a value, its own nearest-preset selection and what opening and closing the
// list does.
template <class C> struct ZxFreeComboOps {
    static void Commit(C& c)
    {
        const double value = c.GetComboValue(false);
        c.m_bUpdating = true;
        c.SelectNearest(value, true);
        c.m_bUpdating = false;
        SZxGrabberPropertyValue v(c.m_wstrName, CZxVariant(value));
        c._SetPropValue(v);
    }

    static void Revert(C& c)
    {
        SZxGrabberPropertyValue current(c.m_wstrName);
        c._GetPropValue(current);
        SetText(c, current.m_varValue.GetDouble());
    }

    static void SetText(C& c, double value)
    {
        const CZxStringW text = Text(c, value);
        c.m_bUpdating = true;
        SetWindowTextW(H(c.m_hCombo), text);
        c.m_bUpdating = false;
    }

    static int32_t ResetToDefault(C& c)
    {
        c.m_bUpdating = true;
        SZxGrabberPropertyValue def(c.m_wstrName);
        c._GetPropDefaultValue(def);
        c.SelectNearest(def.m_varValue.GetDouble(), true);
        c._SetPropValue(def);
        c.m_bUpdating = false;
        return ZX_OK;
    }

    static int32_t UpdateFromGeneric(C& c)
    {
        // The user's work in progress wins over the driver's value.
        if (c.m_bDroppedDown || c.m_bEditing)
            return ZX_E_BUSY;
        c.m_bUpdating = true;
        SZxGrabberPropertyValue current(c.m_wstrName);
        c._GetPropValue(current);
        c.SelectNearest(current.m_varValue.GetDouble(), true);
        c.m_bUpdating = false;
        return ZX_OK;
    }

    static int32_t GetPropValForGeneric(C& c, SZxGrabberPropertyValue& value)
    {
        value.m_varValue.SetTypeChangeAllowed(true);
        value.m_varValue = CZxVariant(c.GetComboValue(false));
        value.m_varValue.SetTypeChangeAllowed(false);
        return ZX_OK;
    }

    // Key-down and key-up both arrive (the transition bit is not looked at), so
    // the release of an Enter that committed reverts: deliberately, it shows the
    // value just written.
    static bool KeyHook(C& c, int32_t code, ZxWParam key)
    {
        HWND combo = H(c.m_hCombo);
        if (!combo || code != HC_ACTION || !FocusIn(combo))
            return false;
        if (key == kEnter && c.m_bEditing) {
            c.m_bEditing = false;
            zxwin::Dialog(c.m_hDlg).Notify(c.m_uiMessage, kEnter, c.m_iControlId);
            return true;
        }
        if (key == kEscape || key == kEnter) {
            c.m_bEditing = false;
            zxwin::Dialog(c.m_hDlg).Notify(c.m_uiMessage, kEscape, c.m_iControlId);
            return true;
        }
        return false;
    }
    static bool DlgProcHook(C& c, ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLResult* result)
    {
        if (message == c.m_uiMessage) {
            if (wParam == kEnter)
                c.Commit();
            else if (wParam == kEscape)
                c.Revert();
            if (result)
                *result = 0;
            return true;
        }
        if (message != WM_COMMAND || LOWORD(wParam) != c.m_iControlId)
            return false;
        switch (HIWORD(wParam)) {
        case CBN_EDITCHANGE:
            // The control's own writes are not the user's typing.
            if (!c.m_bUpdating)
                c.m_bEditing = true;
            return false;
        case CBN_KILLFOCUS:
            if (!c.m_bEditing)
                return false;
            c.m_bEditing = false;
            c.Commit();
            return true;
        case CBN_DROPDOWN:
            c.m_bEditing = false;
            c.m_bDroppedDown = true;
            DroppedDown(c);
            return false;
        case CBN_CLOSEUP:
            c.m_bEditing = false;
            c.m_bDroppedDown = false;
            ClosedUp(c, dialog);
            return false;
        case CBN_SELCHANGE: {
            if (c.m_bUpdating)
                return false;
            const double value = c.GetComboValue(true);
            SetText(c, value);
            SZxGrabberPropertyValue v(c.m_wstrName, CZxVariant(value));
            c._SetPropValue(v);
            if (result)
                *result = 0;
            return true;
        }
        default:
            return false;
        }
    }

    // The exposure combo centres the opened list on the value and, once it is
    // closed, has the typed text reverted through its dialog message; the
    // temperature combo selects the nearest preset and reverts at once.
    static CZxStringW Text(CZxISControlComboFreeExposure& e, double value) { return e.Format(value); }
    static void DroppedDown(CZxISControlComboFreeExposure& e) { e.SelectNearestInList(); }
    static void ClosedUp(CZxISControlComboFreeExposure& e, ZxHWnd dialog)
    {
        zxwin::Dialog(dialog ? dialog : e.m_hDlg).Notify(e.m_uiMessage, kEscape, e.m_iControlId);
    }
    static CZxStringW Text(CZxISControlComboFreeTemperature& t, double value)
    {
        CZxStringW text;
        ZX_TemperatureToText(text, value, t.m_iDecimals);
        return text;
    }
    static void DroppedDown(CZxISControlComboFreeTemperature& t) { t.SelectNearest(t.GetComboValue(false), false); }
    static void ClosedUp(CZxISControlComboFreeTemperature& t, ZxHWnd) { t.Revert(); }
};


// ==== CZxISControlComboFreeExposure ====================================================

CZxISControlComboFreeExposure::CZxISControlComboFreeExposure(const wchar_t* name, uint32_t mode, int32_t controlId,
                                                             uint32_t groupMask, uint32_t message, bool modeLocked)
    : CZxISControl(ctValueEditor, btProperty, name, mode, controlId, groupMask), m_bEnabled(false),
      m_bUpdating(false), m_dMin(0), m_dMax(0), m_dStep(0), m_dOneFrameExp(0), m_bDroppedDown(false),
      m_bEditing(false), m_hCombo(nullptr), m_uiMessage(message), m_bModeLocked(modeLocked), m_uiOwnMode(0),
      m_pfnOldProc(nullptr)
{
    // Deliberately forgets any installed hook, as every constructor of the class
    // does: hosts construct their controls before attaching the first.
    m_KeyboardHook = nullptr;
}

CZxISControlComboFreeExposure::~CZxISControlComboFreeExposure()
{
    // The hook must never walk a destroyed control.
    if (m_hCombo)
        CZxISControlComboFreeExposure::Detach();
}

int32_t CZxISControlComboFreeExposure::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    m_bEnabled = true;
    m_hDlg = dialog;
    m_pProvider = provider;
    HWND combo = GetDlgItem(H(dialog), m_iControlId);
    if (list) {
        ZxHWnd item = reinterpret_cast<ZxHWnd>(combo);
        list->Add(this, &item, 1);
        list->AddPrivateMessage(this, m_uiMessage);
    }
    m_bEditing = false;
    m_hCombo = reinterpret_cast<ZxHWnd>(combo);
    RegisterControl(this);
    if (combo && !m_pfnOldProc) {
        m_pfnOldProc = reinterpret_cast<void*>(GetWindowLongPtrW(combo, GWLP_WNDPROC));
        SetWindowLongPtrW(combo, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(combo, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ExposureComboTrampoline));
        RECT rc;
        GetWindowRect(combo, &rc);
        SetWindowPos(combo, nullptr, 0, 0, rc.right - rc.left, kListHeight,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_SHOWWINDOW);
        Combo(combo).SetMinVisible(kMinVisible);
    }
    return ZX_OK;
}

int32_t CZxISControlComboFreeExposure::Detach()
{
    if (m_hCombo && m_pfnOldProc) {
        SetWindowLongPtrW(H(m_hCombo), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnOldProc));
        SetWindowLongPtrW(H(m_hCombo), GWLP_USERDATA, 0);
    }
    m_pfnOldProc = nullptr;
    m_bEnabled = false;
    m_hDlg = nullptr;
    m_pProvider = nullptr;
    UnregisterControl(this);
    m_bEditing = false;
    m_hCombo = nullptr;
    return ZX_OK;
}

int32_t CZxISControlComboFreeExposure::Enable(bool enable)
{
    m_bEnabled = enable;
    EnableWindow(H(m_hCombo), enable);
    return ZX_OK;
}

int32_t CZxISControlComboFreeExposure::Show(bool show)
{
    ShowWindow(H(m_hCombo), show ? SW_SHOW : SW_HIDE);
    return ZX_OK;
}

int32_t CZxISControlComboFreeExposure::ChangeMode(uint32_t mode)
{
    m_uiOwnMode = mode;
    if (!m_bModeLocked)
        CZxISControl::ChangeMode(mode);
    return ZX_OK;
}

int32_t CZxISControlComboFreeExposure::Reinit()
{
    CZxVariant def;
    const int32_t rc = _GetPropDefinition(def);
    if (rc != ZX_OK)
        return rc;
    m_dMin = def[L"m_dMin"].GetDouble();
    m_dMax = def[L"m_dMax"].GetDouble();
    m_dStep = def[L"m_dStep"].GetDouble();
    m_dOneFrameExp = def[L"m_dOneFrameExp"].GetDouble();
    const Combo combo(m_hCombo);
    combo.Clear();
    const CZxVariant& presets = def[L"m_List"];
    double largest = 0.0;
    for (int i = 0; i < presets.GetCount(); ++i) {
        const double v = presets[i][L"m_dValue"].GetDouble();
        if (v < m_dMin || v > m_dMax)
            continue;
        combo.Add(presets[i][L"m_wstrText"].GetCZxStringW().GetString());
        if (v > largest)
            largest = v;
    }
    // The maximum is offered too when it lies well above the last preset.
    if (m_dMax > largest * 1.05)
        combo.Add(Format(m_dMax).GetString());
    return ZX_OK;
}

CZxStringW CZxISControlComboFreeExposure::Format(double value) const
{
    return ZX_ExposureToText(value, m_dOneFrameExp);
}

double CZxISControlComboFreeExposure::GetComboValue(bool selected)
{
    const Combo combo(m_hCombo);
    const CZxStringW text = selected ? combo.ItemText(combo.Selection()) : ComboText(combo);
    bool ok = false;
    const double v = ZX_TextToExposure(text, m_dOneFrameExp, m_dMin, m_dMax, &ok);
    if (ok)
        return v;
    // A typing error silently restores the driver's value.
    SZxGrabberPropertyValue current(m_wstrName);
    _GetPropValue(current);
    return current.m_varValue.GetDouble();
}

void CZxISControlComboFreeExposure::SelectNearest(double value, bool setText)
{
    const Combo combo(m_hCombo);
    const int index = NearestIndex(combo.Count(), value, [&](int i) {
        return ZX_TextToExposure(combo.ItemText(i), m_dOneFrameExp, m_dMin, m_dMax, nullptr);
    });
    combo.Select(InCombo(combo, index));
    // A typed value that is no preset is still shown exactly.
    if (setText)
        SetWindowTextW(combo.Handle(), Format(value));
}

void CZxISControlComboFreeExposure::SelectNearestInList()
{
    CZxVariant def;
    if (_GetPropDefinition(def) != ZX_OK)
        return;
    const double value = GetComboValue(false);
    const CZxVariant& presets = def[L"m_List"];
    // Nearest among the presets in range, by its place among them: the combo holds
    // only those, in list order, whatever the order or range of the others.
    double best = 1000000.0;
    int index = -1, place = 0;
    for (int i = 0; i < presets.GetCount(); ++i) {
        const double v = presets[i][L"m_dValue"].GetDouble();
        if (v < m_dMin || v > m_dMax)
            continue;
        if (std::fabs(v - value) < best) {
            best = std::fabs(v - value);
            index = place;
        }
        ++place;
    }
    if (index < 0 && place > 0)
        index = 0;   // nothing nearer than the limit: the first, as NearestIndex does
    const Combo combo(m_hCombo);
    combo.Select(InCombo(combo, index));
}

void CZxISControlComboFreeExposure::Commit() { ZxFreeComboOps<CZxISControlComboFreeExposure>::Commit(*this); }

void CZxISControlComboFreeExposure::Revert() { ZxFreeComboOps<CZxISControlComboFreeExposure>::Revert(*this); }

int32_t CZxISControlComboFreeExposure::ResetToDefault() { return ZxFreeComboOps<CZxISControlComboFreeExposure>::ResetToDefault(*this); }

int32_t CZxISControlComboFreeExposure::UpdateFromGeneric() { return ZxFreeComboOps<CZxISControlComboFreeExposure>::UpdateFromGeneric(*this); }

int32_t CZxISControlComboFreeExposure::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    return ZxFreeComboOps<CZxISControlComboFreeExposure>::GetPropValForGeneric(*this, value);
}

bool CZxISControlComboFreeExposure::DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam,
                                                ZxLResult* result)
{
    return ZxFreeComboOps<CZxISControlComboFreeExposure>::DlgProcHook(*this, dialog, message, wParam, result);
}

bool CZxISControlComboFreeExposure::FreeExposureHook(int32_t code, ZxWParam key, ZxLParam)
{
    return ZxFreeComboOps<CZxISControlComboFreeExposure>::KeyHook(*this, code, key);
}

ZxLResult CZxISControlComboFreeExposure::ComboProc(ZxHWnd comboZx, uint32_t message, ZxWParam wParam,
                                                   ZxLParam lParam)
{
    HWND combo = H(comboZx);
    auto* self = reinterpret_cast<CZxISControlComboFreeExposure*>(GetWindowLongPtrW(combo, GWLP_USERDATA));
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
        // A click anywhere opens the list with the current value in its middle.
        const Combo box(combo);
        box.ShowDropDown(true);
        const int itemHeight = box.ItemHeight();
        const int count = box.Count();
        int visible = itemHeight > 0 ? kListHeight / itemHeight : count;
        if (visible > count)
            visible = count;
        const int half = (visible - 1) / 2;
        const int top = box.Selection() - half;
        // Straight to the list box, which is what CB_SETTOPINDEX forwards to: not
        // every window system forwards it.
        COMBOBOXINFO info{};
        info.cbSize = sizeof(info);
        if (GetComboBoxInfo(combo, &info) && info.hwndList)
            zxwin::ListBox(info.hwndList).SetTopIndex(top < 1 ? 0 : top);
        else
            box.SetTopIndex(top < 1 ? 0 : top);
        return 1;
    }
    if (!self || !self->m_pfnOldProc)
        return 1;
    return CallWindowProcW(reinterpret_cast<WNDPROC>(self->m_pfnOldProc), combo, message, wParam, lParam);
}

// ==== CZxISControlComboFreeTemperature =================================================

CZxISControlComboFreeTemperature::CZxISControlComboFreeTemperature(const wchar_t* name, uint32_t mode,
                                                                   int32_t controlId, uint32_t groupMask,
                                                                   uint32_t message)
    : CZxISControl(ctValueEditor, btProperty, name, mode, controlId, groupMask), m_bEnabled(false),
      m_bUpdating(false), m_dMin(0), m_dMax(0), m_dStep(0), m_iDecimals(0), m_bDroppedDown(false),
      m_bEditing(false), m_hCombo(nullptr), m_uiMessage(message)
{
    // Deliberately forgets any installed hook, as the exposure class does.
    m_KeyboardHook = nullptr;
}

CZxISControlComboFreeTemperature::~CZxISControlComboFreeTemperature()
{
    if (m_hCombo)
        CZxISControlComboFreeTemperature::Detach();
}

int32_t CZxISControlComboFreeTemperature::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider,
                                                 CZxISControlList* list)
{
    m_bEnabled = true;
    m_hDlg = dialog;
    m_pProvider = provider;
    HWND combo = GetDlgItem(H(dialog), m_iControlId);
    if (list) {
        ZxHWnd item = reinterpret_cast<ZxHWnd>(combo);
        list->Add(this, &item, 1);
        list->AddPrivateMessage(this, m_uiMessage);
    }
    m_bEditing = false;
    m_hCombo = reinterpret_cast<ZxHWnd>(combo);
    RegisterControl(this);
    return ZX_OK;
}

int32_t CZxISControlComboFreeTemperature::Detach()
{
    m_bEnabled = false;
    m_hDlg = nullptr;
    m_pProvider = nullptr;
    UnregisterControl(this);
    m_bEditing = false;
    m_hCombo = nullptr;
    return ZX_OK;
}

int32_t CZxISControlComboFreeTemperature::Enable(bool enable)
{
    m_bEnabled = enable;
    EnableWindow(GetDlgItem(H(m_hDlg), m_iControlId), enable);
    return ZX_OK;
}

int32_t CZxISControlComboFreeTemperature::Show(bool show)
{
    ShowWindow(GetDlgItem(H(m_hDlg), m_iControlId), show ? SW_SHOW : SW_HIDE);
    return ZX_OK;
}

int32_t CZxISControlComboFreeTemperature::Reinit()
{
    CZxVariant def;
    const int32_t rc = _GetPropDefinition(def);
    if (rc != ZX_OK)
        return rc;
    m_dMin = def[L"m_dMin"].GetDouble();
    m_dMax = def[L"m_dMax"].GetDouble();
    m_dStep = def[L"m_dStep"].GetDouble();
    m_iDecimals = ZX_DecimalsFromStep(m_dStep);
    const Combo combo(m_hCombo);
    combo.Clear();
    const CZxVariant& presets = def[L"m_List"];
    for (int i = 0; i < presets.GetCount(); ++i)
        combo.Add(presets[i][L"m_wstrText"].GetCZxStringW().GetString());
    return ZX_OK;
}

double CZxISControlComboFreeTemperature::GetComboValue(bool selected)
{
    const Combo combo(m_hCombo);
    if (selected) {
        CZxVariant def;
        _GetPropDefinition(def);
        const int index = combo.Selection();
        const CZxVariant& presets = def[L"m_List"];
        if (index >= 0 && index < presets.GetCount())
            return presets[index][L"m_dValue"].GetDouble();
        // No selection: the text is all there is.
    }
    return ZX_TextToTemperature(ComboText(combo), m_dMin, m_dMax);
}

void CZxISControlComboFreeTemperature::SelectNearest(double value, bool setText)
{
    CZxVariant def;
    _GetPropDefinition(def);
    const CZxVariant& presets = def[L"m_List"];
    const int index =
        NearestIndex(presets.GetCount(), value, [&](int i) { return presets[i][L"m_dValue"].GetDouble(); });
    const Combo combo(m_hCombo);
    combo.Select(InCombo(combo, index));
    if (setText) {
        CZxStringW text;
        ZX_TemperatureToText(text, value, m_iDecimals);
        SetWindowTextW(combo.Handle(), text);
    }
}

void CZxISControlComboFreeTemperature::Commit() { ZxFreeComboOps<CZxISControlComboFreeTemperature>::Commit(*this); }

void CZxISControlComboFreeTemperature::Revert() { ZxFreeComboOps<CZxISControlComboFreeTemperature>::Revert(*this); }

int32_t CZxISControlComboFreeTemperature::ResetToDefault() { return ZxFreeComboOps<CZxISControlComboFreeTemperature>::ResetToDefault(*this); }

int32_t CZxISControlComboFreeTemperature::UpdateFromGeneric() { return ZxFreeComboOps<CZxISControlComboFreeTemperature>::UpdateFromGeneric(*this); }

int32_t CZxISControlComboFreeTemperature::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    return ZxFreeComboOps<CZxISControlComboFreeTemperature>::GetPropValForGeneric(*this, value);
}

bool CZxISControlComboFreeTemperature::DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam,
                                                   ZxLResult* result)
{
    return ZxFreeComboOps<CZxISControlComboFreeTemperature>::DlgProcHook(*this, dialog, message, wParam, result);
}

bool CZxISControlComboFreeTemperature::FreeTemperatureHook(int32_t code, ZxWParam key, ZxLParam)
{
    return ZxFreeComboOps<CZxISControlComboFreeTemperature>::KeyHook(*this, code, key);
}
