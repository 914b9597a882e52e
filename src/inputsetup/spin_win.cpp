// Up-down (spin) controls with their buddy edit.
#include <windows.h>

#include <commctrl.h>
#include <cmath>

#include "inputsetup/numeric_def.h"
#include "inputsetup/wincontrols.h"
#include "zx/iscontrols_numeric.h"
#include "zx/status.h"

namespace {
using zxwin::H;
using zxwin::Sender;
using zxwin::UpDown;
} // namespace

CZxISControlSpinBase::CZxISControlSpinBase(const wchar_t* name, uint32_t mode, int32_t editId, uint32_t groupMask,
                                           uint32_t textColor)
    : CZxISControl(ctSpin, btProperty, name, mode, editId, groupMask), m_bEnabled(false), m_bBusy(false),
      m_bSecondPhase(false), m_iCount(0), m_iLastPos(0), m_iClickStart(0), m_uiTextColor(textColor),
      m_hUpDown(nullptr)
{
}

int32_t CZxISControlSpinBase::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    CZxISControl::Attach(dialog, provider, list);
    m_hUpDown = nullptr;
    m_bSecondPhase = false;
    HWND edit = H(GetItem());
    // The up-down is the sibling whose buddy is the edit.
    for (HWND w = edit ? GetWindow(H(dialog), GW_CHILD) : nullptr; w; w = GetWindow(w, GW_HWNDNEXT)) {
        wchar_t cls[32] = {};
        GetClassNameW(w, cls, 32);
        if (lstrcmpiW(cls, UPDOWN_CLASSW) == 0 && UpDown(w).Buddy() == edit) {
            m_hUpDown = zxwin::Z(w);
            break;
        }
    }
    if (!m_hUpDown)
        zxis::ReportDefinition(L"no up-down has the edit as its buddy", m_wstrName, __LINE__);
    else if (list)
        list->Add(this, &m_hUpDown, 1);
    return ZX_OK;
}

int32_t CZxISControlSpinBase::Detach()
{
    m_hUpDown = nullptr;
    return CZxISControl::Detach();
}

void CZxISControlSpinBase::ApplyEnable()
{
    const bool on = m_bEnabled && m_iCount > 0;
    EnableWindow(H(GetItem()), on);
    if (m_hUpDown)
        EnableWindow(H(m_hUpDown), on);
}

int32_t CZxISControlSpinBase::Enable(bool enable)
{
    m_bEnabled = enable;
    ApplyEnable();
    return _RefreshIfEnabled(enable);
}

int32_t CZxISControlSpinBase::Unusable()
{
    m_iCount = 0;
    ApplyEnable();
    return ZX_E_FAIL;
}

void CZxISControlSpinBase::SetPositions(int32_t count)
{
    m_iCount = count;
    if (m_hUpDown)
        UpDown(m_hUpDown).SetRange(0, count - 1);
    ApplyEnable();
}

void CZxISControlSpinBase::ShowValue(double value)
{
    m_iLastPos = ValueToPos(value);
    if (m_hUpDown)
        UpDown(m_hUpDown).SetPos(m_iLastPos);
    SetWindowTextW(H(GetItem()), ValueToText(value));
}

int32_t CZxISControlSpinBase::UpdateFromGeneric()
{
    if (m_iCount <= 0)
        return ZX_E_FAIL;
    m_bBusy = true;
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t status = _GetPropValue(value);
    if (status == ZX_OK)
        ShowValue(value.m_varValue.GetDouble());
    m_bBusy = false;
    return status;
}

int32_t CZxISControlSpinBase::ResetToDefault()
{
    if (m_iCount <= 0)
        return ZX_E_FAIL;
    return _WriteDefaultAndShow([this](const SZxGrabberPropertyValue& value) {
        m_bBusy = true;
        ShowValue(value.m_varValue.GetDouble());
        m_bBusy = false;
    });
}

int32_t CZxISControlSpinBase::CurrentPos() const
{
    return m_hUpDown ? UpDown(m_hUpDown).Pos() : 0;
}

int32_t CZxISControlSpinBase::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    if (m_iCount <= 0 || !m_hUpDown)
        return ZX_E_FAIL;
    value.m_varValue = ValueToVariant(PosToValue(CurrentPos()));
    return ZX_OK;
}

int32_t CZxISControlSpinBase::_SetPositionToProp(int32_t position, bool showText)
{
    const double value = PosToValue(position);
    if (showText)
        SetWindowTextW(H(GetItem()), ValueToText(value));
    SZxGrabberPropertyValue v(m_wstrName, ValueToVariant(value));
    return _SetPropValue(v);
}

bool CZxISControlSpinBase::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                                       ZxLResult* result)
{
    if (message == WM_CTLCOLORSTATIC) {
        if (m_uiTextColor == ZX_ISCOLOR_NONE || Sender(lParam) != H(GetItem()))
            return false;
        SetTextColor(reinterpret_cast<HDC>(wParam), m_uiTextColor);
        SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
        *result = reinterpret_cast<ZxLResult>(GetSysColorBrush(COLOR_BTNFACE));
        return true;
    }
    if ((message != WM_VSCROLL && message != WM_HSCROLL) || m_bBusy || m_iCount <= 0 || !m_hUpDown ||
        Sender(lParam) != H(m_hUpDown))
        return false;
    // The up-down notifies twice per click; the phase says which one this is.
    const bool second = m_bSecondPhase;
    m_bSecondPhase = !m_bSecondPhase;
    const bool control = ((GetKeyState(VK_LCONTROL) | GetKeyState(VK_RCONTROL)) & 0x8000) != 0;
    const int32_t pos = CurrentPos();
    if (!control) {
        _SetPositionToProp(pos, true);
        m_iLastPos = pos;
    } else if (!second) {
        m_iClickStart = m_iLastPos;
        _SetPositionToProp(pos, false);
        m_iLastPos = pos;
    } else {
        // Nine positions more in the direction of the click, within the up-down's range.
        const int32_t dir = pos > m_iClickStart ? 1 : (pos < m_iClickStart ? -1 : 0);
        int low = 0, high = 0;
        UpDown(m_hUpDown).Range(low, high);
        const double wanted = double(pos) + 9.0 * dir;
        const int32_t target = static_cast<int32_t>(wanted < low ? low : (wanted > high ? high : wanted));
        UpDown(m_hUpDown).SetPos(target);
        _SetPositionToProp(target, true);
        m_iLastPos = target;
    }
    *result = 0;
    return true;
}

// ---- Integer spins ----

CZxISControlSpinInt::CZxISControlSpinInt(const wchar_t* name, uint32_t mode, int32_t editId, uint32_t groupMask,
                                         uint32_t textColor)
    : CZxISControlSpinBase(name, mode, editId, groupMask, textColor), m_bUseDenom(true), m_iMin(0), m_iMax(0),
      m_iStep(0), m_iDenom(0), m_iPrecicion(0)
{
}

int32_t CZxISControlSpinInt::Reinit()
{
    CZxVariant def;
    const int32_t status = _GetPropDefinition(def);
    if (status != ZX_OK)
        return status;
    double min = 0, max = 0, step = 0;
    if (!zxis::ReadRange(def, L"m_iMin", L"m_iMax", L"m_iStep", m_wstrName, min, max, step))
        return Unusable();
    m_iMin = zxis::RoundInt(min);
    m_iMax = zxis::RoundInt(max);
    m_iStep = zxis::RoundInt(step) > 0 ? zxis::RoundInt(step) : 1;
    m_iDenom = 0;
    double denom = 0, precision = 0;
    if (m_bUseDenom && zxis::Number(def, L"m_iDenom", denom)) {
        if (zxis::RoundInt(denom) == 0)
            zxis::ReportDefinition(L"m_iDenom==0", m_wstrName, __LINE__); // shown without a denominator
        else
            m_iDenom = zxis::RoundInt(denom);
    }
    const bool hasPrecision = m_bUseDenom && zxis::Number(def, L"m_iPrecicion", precision);
    m_iPrecicion = hasPrecision ? zxis::RoundInt(precision) : (m_iDenom ? 2 : 0);
    m_iPrecicion = m_iPrecicion < 0 ? 0 : (m_iPrecicion > 9 ? 9 : m_iPrecicion);
    SetPositions(zxis::Position((double(m_iMax) - m_iMin) / m_iStep, INT32_MAX - 1) + 1);
    return ZX_OK;
}

double CZxISControlSpinInt::PosToValue(int32_t position)
{
    return zxis::StepValue(position, m_iMin, m_iStep, m_iMax);
}

int32_t CZxISControlSpinInt::ValueToPos(double value)
{
    return m_iStep > 0 ? zxis::Position((value - m_iMin) / m_iStep, m_iCount - 1) : 0;
}

CZxStringW CZxISControlSpinInt::ValueToText(double value)
{
    return CZxStringW::Formatted(L"%.*lf", m_iPrecicion, m_iDenom ? value / m_iDenom : value);
}

CZxVariant CZxISControlSpinInt::ValueToVariant(double value) { return CZxVariant(zxis::RoundInt(value)); }

CZxISControlSpinInt32::CZxISControlSpinInt32(const wchar_t* name, uint32_t mode, int32_t editId,
                                             uint32_t groupMask, uint32_t textColor)
    : CZxISControlSpinInt(name, mode, editId, groupMask, textColor)
{
    m_bUseDenom = false;
}

// ---- CZxISControlSpinDouble ----

CZxISControlSpinDouble::CZxISControlSpinDouble(const wchar_t* name, uint32_t mode, int32_t editId,
                                               uint32_t groupMask, uint32_t textColor)
    : CZxISControlSpinBase(name, mode, editId, groupMask, textColor), m_dMin(0), m_dMax(0), m_dStep(0),
      m_iDecimals(0)
{
}

int32_t CZxISControlSpinDouble::Reinit()
{
    CZxVariant def;
    const int32_t status = _GetPropDefinition(def);
    if (status != ZX_OK)
        return status;
    if (!zxis::ReadRange(def, L"m_dMin", L"m_dMax", L"m_dStep", m_wstrName, m_dMin, m_dMax, m_dStep)) {
        m_dStep = 0;
        return Unusable();
    }
    m_iDecimals = ZX_DecimalsFromStep(m_dStep);
    SetPositions(zxis::Position((m_dMax - m_dMin) / m_dStep, INT32_MAX - 1) + 1);
    return ZX_OK;
}

double CZxISControlSpinDouble::PosToValue(int32_t position)
{
    return zxis::StepValue(position, m_dMin, m_dStep, m_dMax);
}

int32_t CZxISControlSpinDouble::ValueToPos(double value)
{
    return m_dStep > 0 ? zxis::Position((value - m_dMin) / m_dStep, m_iCount - 1) : 0;
}

CZxStringW CZxISControlSpinDouble::ValueToText(double value)
{
    return CZxStringW::Formatted(L"%.*f", m_iDecimals, value);
}

CZxVariant CZxISControlSpinDouble::ValueToVariant(double value) { return CZxVariant(value); }
