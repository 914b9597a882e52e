// Scroll bars and track bars bound to numeric properties, and the read-only
// double text.
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

bool IsTrackBar(HWND item)
{
    wchar_t cls[32] = {};
    GetClassNameW(item, cls, 32);
    return lstrcmpiW(cls, TRACKBAR_CLASSW) == 0;
}

// The scroll and track bars share the controls' logic; only the messages differ.
void SetRange(HWND item, int32_t maxPos)
{
    if (IsTrackBar(item)) {
        const zxwin::TrackBar bar(item);
        bar.SetRangeMin(0, false);
        bar.SetRangeMax(maxPos, true);
        bar.SetPageSize(10);
    } else {
        zxwin::ScrollBar(item).SetRange(maxPos);
    }
}

void SetPos(HWND item, int32_t pos)
{
    if (IsTrackBar(item))
        zxwin::TrackBar(item).SetPos(pos);
    else
        zxwin::ScrollBar(item).SetPos(pos);
}

int32_t GetPos(HWND item)
{
    return IsTrackBar(item) ? zxwin::TrackBar(item).Pos() : zxwin::ScrollBar(item).Pos();
}

bool Colour(uint32_t colour, HWND own, ZxLParam sender, ZxWParam dc, ZxLResult* result)
{
    if (colour == ZX_ISCOLOR_NONE || !own || Sender(sender) != own)
        return false;
    SetTextColor(reinterpret_cast<HDC>(dc), colour);
    SetBkMode(reinterpret_cast<HDC>(dc), TRANSPARENT);
    *result = reinterpret_cast<ZxLResult>(GetSysColorBrush(COLOR_BTNFACE));
    return true;
}
} // namespace

// ---- CZxISControlScrollDouble ----

CZxISControlScrollDouble::CZxISControlScrollDouble(const wchar_t* name, uint32_t mode, int32_t scrollId,
                                                   int32_t textId, uint32_t groupMask, uint32_t textColor)
    : CZxISControl(ctValueEditor, btProperty, name, mode, scrollId, groupMask), m_bEnabled(false), m_bBusy(false),
      m_iTextId(textId), m_dMin(0), m_dMax(0), m_dStep(0), m_iDecimals(0), m_uiTextColor(textColor)
{
}

int32_t CZxISControlScrollDouble::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    CZxISControl::Attach(dialog, provider, list);
    // The text item asks for its colours itself, so it is routed to this control too.
    ZxHWnd text = reinterpret_cast<ZxHWnd>(GetDlgItem(H(dialog), m_iTextId));
    if (list && text)
        list->Add(this, &text, 1);
    return ZX_OK;
}

int32_t CZxISControlScrollDouble::Unusable()
{
    m_dMin = m_dMax = m_dStep = 0;
    m_iDecimals = 0;
    ApplyEnable();
    return ZX_E_FAIL;
}

void CZxISControlScrollDouble::ApplyEnable() { EnableWindow(H(GetItem()), m_bEnabled && Usable()); }

int32_t CZxISControlScrollDouble::MaxPos() const { return Usable() ? zxis::Position((m_dMax - m_dMin) / m_dStep) : 0; }

int32_t CZxISControlScrollDouble::LinearPos(double value) const
{
    return Usable() ? zxis::Position((value - m_dMin) / m_dStep, MaxPos()) : 0;
}

bool CZxISControlScrollDouble::ReadLinear(const wchar_t* minKey, const wchar_t* maxKey, const wchar_t* stepKey,
                                          int32_t& status)
{
    CZxVariant def;
    status = _GetPropDefinition(def);
    if (status != ZX_OK)
        return false;
    if (!zxis::ReadRange(def, minKey, maxKey, stepKey, m_wstrName, m_dMin, m_dMax, m_dStep)) {
        status = Unusable();
        return false;
    }
    return true;
}

int32_t CZxISControlScrollDouble::Reinit()
{
    int32_t status = ZX_OK;
    if (!ReadLinear(L"m_dMin", L"m_dMax", L"m_dStep", status))
        return status;
    m_iDecimals = ZX_DecimalsFromStep(m_dStep);
    SetRange(H(GetItem()), MaxPos());
    ApplyEnable();
    return ZX_OK;
}

void CZxISControlScrollDouble::ShowValue(double value, int32_t position)
{
    // A disabled scroll bar keeps its position; the text always follows the driver.
    if (m_bEnabled)
        SetPos(H(GetItem()), position);
    SetDlgItemValueAsText(m_iDecimals, value, m_hDlg, m_iTextId);
}

int32_t CZxISControlScrollDouble::ShowDriverValue(PositionOf toPos)
{
    if (!Usable())
        return ZX_E_FAIL;
    m_bBusy = true;
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t status = _GetPropValue(value);
    if (status == ZX_OK)
        ShowValue(value.m_varValue.GetDouble(), toPos(*this, value.m_varValue.GetDouble()));
    m_bBusy = false;
    return status;
}

int32_t CZxISControlScrollDouble::ShowDefaultValue(PositionOf toPos)
{
    if (!Usable())
        return ZX_E_FAIL;
    return _WriteDefaultAndShow([&](const SZxGrabberPropertyValue& value) {
        m_bBusy = true;
        ShowValue(value.m_varValue.GetDouble(), toPos(*this, value.m_varValue.GetDouble()));
        m_bBusy = false;
    });
}

int32_t CZxISControlScrollDouble::UpdateFromGeneric()
{
    return ShowDriverValue([](const CZxISControlScrollDouble& c, double v) { return c.LinearPos(v); });
}

int32_t CZxISControlScrollDouble::ResetToDefault()
{
    return ShowDefaultValue([](const CZxISControlScrollDouble& c, double v) { return c.LinearPos(v); });
}

int32_t CZxISControlScrollDouble::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    if (!Usable())
        return ZX_E_FAIL;
    value.m_varValue = zxis::StepValue(GetPos(H(GetItem())), m_dMin, m_dStep, m_dMax);
    return ZX_OK;
}

int32_t CZxISControlScrollDouble::Enable(bool enable)
{
    m_bEnabled = enable;
    ApplyEnable();
    return _RefreshIfEnabled(enable);
}

int32_t CZxISControlScrollDouble::ScrollBy(ZxWParam wParam)
{
    HWND item = H(GetItem());
    SCROLLINFO si{};
    si.cbSize = sizeof(si);
    si.fMask = SIF_ALL;
    GetScrollInfo(item, SB_CTL, &si);
    const int old = si.nPos;
    int pos = old;
    switch (LOWORD(wParam)) {
    case SB_LINELEFT: pos = old - 1; break;
    case SB_LINERIGHT: pos = old + 1; break;
    case SB_PAGELEFT: pos = old - 10; break;
    case SB_PAGERIGHT: pos = old + 10; break;
    case SB_THUMBTRACK: pos = si.nTrackPos; break;
    default: return -1;
    }
    si.fMask = SIF_POS;
    si.nPos = pos;
    SetScrollInfo(item, SB_CTL, &si, TRUE);
    // The system clamps the position to the range; the clamped one counts.
    GetScrollInfo(item, SB_CTL, &si);
    return si.nPos != old ? si.nPos : -1;
}

bool CZxISControlScrollDouble::ColorStatic(ZxLParam sender, ZxWParam dc, ZxLResult* result)
{
    return Colour(m_uiTextColor, GetDlgItem(H(m_hDlg), m_iTextId), sender, dc, result);
}

bool CZxISControlScrollDouble::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                                           ZxLResult* result)
{
    if (message == WM_HSCROLL) {
        if (m_bBusy || !Usable() || Sender(lParam) != H(GetItem()))
            return false;
        const int32_t pos = ScrollBy(wParam);
        if (pos >= 0) {
            _SetPositionToProp(pos);
            *result = 0;
        }
        return true;
    }
    if (message == WM_CTLCOLORSTATIC)
        return ColorStatic(lParam, wParam, result);
    return false;
}

int32_t CZxISControlScrollDouble::_SetPositionToProp(int32_t position)
{
    const double value = zxis::StepValue(position, m_dMin, m_dStep, m_dMax);
    SetDlgItemValueAsText(m_iDecimals, value, m_hDlg, m_iTextId);
    SZxGrabberPropertyValue v(m_wstrName, CZxVariant(value));
    return _SetPropValue(v);
}

int32_t CZxISControlScrollDouble::SetDlgItemValueAsText(int32_t decimals, double value, ZxHWnd dialog,
                                                        int32_t itemId)
{
    return SetDlgItemTextW(H(dialog), itemId, CZxStringW::Formatted(L"%.*f", decimals, value)) ? ZX_OK
                                                                                               : ZX_E_WINDOW;
}

// ---- CZxISControlScrollDoubleLog ----

CZxISControlScrollDoubleLog::CZxISControlScrollDoubleLog(const wchar_t* name, uint32_t mode, int32_t scrollId,
                                                         int32_t textId, uint32_t groupMask, uint32_t textColor)
    : CZxISControlScrollDouble(name, mode, scrollId, textId, groupMask, textColor), m_dRatio(0)
{
}

double CZxISControlScrollDoubleLog::GetRatio() { return std::sqrt(2.0); }

CZxStringW CZxISControlScrollDoubleLog::ValueToText(double value) { return ZX_ExposureMsToText(value); }

int32_t CZxISControlScrollDoubleLog::Reinit()
{
    int32_t status = ZX_OK;
    if (!ReadLinear(L"m_dMin", L"m_dMax", L"m_dStep", status))
        return status;
    // Logarithms need a positive minimum.
    if (m_dMin <= 0)
        m_dMin = m_dStep;
    if (m_dMin > m_dMax) {
        zxis::ReportDefinition(L"m_dStep>m_dMax with m_dMin<=0", m_wstrName, __LINE__);
        return Unusable();
    }
    m_dRatio = GetRatio();
    if (!(m_dRatio > 1) || !std::isfinite(m_dRatio)) {
        zxis::ReportDefinition(L"!(ratio>1)", m_wstrName, __LINE__);
        return Unusable();
    }
    m_iDecimals = ZX_DecimalsFromStep(m_dStep);
    SetRange(H(GetItem()), GetMaxPos());
    ApplyEnable();
    return ZX_OK;
}

int32_t CZxISControlScrollDoubleLog::GetMaxPos() const
{
    return Usable() && m_dRatio > 1 ? zxis::Position(std::log(m_dMax / m_dMin) / std::log(m_dRatio)) : 0;
}

int32_t CZxISControlScrollDoubleLog::ValueToPos(double value) const
{
    if (!Usable() || !(value > m_dMin))
        return 0;
    if (value <= m_dMin + m_dStep)
        return 1;
    return zxis::Position(std::log(value / m_dMin) / std::log(m_dRatio), GetMaxPos());
}

double CZxISControlScrollDoubleLog::PosToValue(int32_t position) const
{
    if (position <= 0)
        return m_dMin;
    // The second position is one linear step above the minimum, whatever the ratio.
    if (position == 1)
        return m_dMin + m_dStep;
    const double v = m_dMin * std::pow(m_dRatio, position);
    return v < m_dMax ? v : m_dMax;
}

int32_t CZxISControlScrollDoubleLog::SetDlgItemValueAsText(int32_t, double value, ZxHWnd dialog, int32_t itemId)
{
    return SetDlgItemTextW(H(dialog), itemId, ValueToText(value)) ? ZX_OK : ZX_E_WINDOW;
}

namespace {
int32_t LogPos(const CZxISControlScrollDouble& control, double value)
{
    return static_cast<const CZxISControlScrollDoubleLog&>(control).ValueToPos(value);
}
} // namespace

int32_t CZxISControlScrollDoubleLog::UpdateFromGeneric() { return ShowDriverValue(LogPos); }
int32_t CZxISControlScrollDoubleLog::ResetToDefault() { return ShowDefaultValue(LogPos); }

int32_t CZxISControlScrollDoubleLog::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    if (!Usable())
        return ZX_E_FAIL;
    value.m_varValue = PosToValue(GetPos(H(GetItem())));
    return ZX_OK;
}

int32_t CZxISControlScrollDoubleLog::_SetPositionToProp(int32_t position)
{
    const double value = PosToValue(position);
    SetDlgItemValueAsText(m_iDecimals, value, m_hDlg, m_iTextId);
    SZxGrabberPropertyValue v(m_wstrName, CZxVariant(value));
    return _SetPropValue(v);
}

// ---- CZxISControlScrollInt32 ----

CZxISControlScrollInt32::CZxISControlScrollInt32(const wchar_t* name, uint32_t mode, int32_t scrollId,
                                                 int32_t textId, uint32_t groupMask, uint32_t textColor)
    : CZxISControlScrollDouble(name, mode, scrollId, textId, groupMask, textColor)
{
}

int32_t CZxISControlScrollInt32::Reinit()
{
    int32_t status = ZX_OK;
    if (!ReadLinear(L"m_iMin", L"m_iMax", L"m_iStep", status))
        return status;
    m_iDecimals = 0;
    SetRange(H(GetItem()), MaxPos());
    ApplyEnable();
    return ZX_OK;
}

int32_t CZxISControlScrollInt32::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    if (!Usable())
        return ZX_E_FAIL;
    value.m_varValue = zxis::RoundInt(zxis::StepValue(GetPos(H(GetItem())), m_dMin, m_dStep, m_dMax));
    return ZX_OK;
}

int32_t CZxISControlScrollInt32::_SetPositionToProp(int32_t position)
{
    const int32_t value = zxis::RoundInt(zxis::StepValue(position, m_dMin, m_dStep, m_dMax));
    SetDlgItemValueAsText(0, value, m_hDlg, m_iTextId);
    SZxGrabberPropertyValue v(m_wstrName, CZxVariant(value));
    return _SetPropValue(v);
}

// ---- CZxISControlScrollString ----

CZxISControlScrollString::CZxISControlScrollString(const wchar_t* name, uint32_t mode, int32_t scrollId,
                                                   int32_t textId, uint32_t groupMask, uint32_t textColor)
    : CZxISControlScrollDouble(name, mode, scrollId, textId, groupMask, textColor)
{
}

int32_t CZxISControlScrollString::Reinit()
{
    CZxVariant def;
    const int32_t status = _GetPropDefinition(def);
    if (status != ZX_OK)
        return status;
    const CZxVariant* list = def.IsRecord() ? def.Search(L"m_list") : nullptr;
    if (!list || !list->IsArray() || list->GetCount() == 0) {
        zxis::ReportDefinition(L"m_list missing or empty", m_wstrName, __LINE__);
        m_varList = CZxVariant();
        return Unusable();
    }
    for (int i = 0; i < list->GetCount(); ++i) {
        if ((*list)[i].GetKind() != CZxVariant::EKind::String) {
            zxis::ReportDefinition(L"m_list element is no text", m_wstrName, __LINE__);
            m_varList = CZxVariant();
            return Unusable();
        }
    }
    m_varList = *list;
    m_dMin = 0;
    m_dStep = 1;
    m_dMax = list->GetCount() - 1;
    m_iDecimals = 0;
    SetRange(H(GetItem()), MaxPos());
    ApplyEnable();
    return ZX_OK;
}

int32_t CZxISControlScrollString::IndexOf(const CZxVariant& value) const
{
    for (int i = 0; i < m_varList.GetCount(); ++i)
        if (m_varList[i].GetCZxStringW() == value.GetCZxStringW())
            return i;
    return -1;
}

void CZxISControlScrollString::ShowElement(const CZxVariant& value)
{
    const int32_t index = IndexOf(value);
    if (m_bEnabled && index >= 0)
        SetPos(H(GetItem()), index);
    SetDlgItemTextW(H(m_hDlg), m_iTextId, value.GetCZxStringW());
}

int32_t CZxISControlScrollString::UpdateFromGeneric()
{
    if (!Usable())
        return ZX_E_FAIL;
    m_bBusy = true;
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t status = _GetPropValue(value);
    if (status == ZX_OK)
        ShowElement(value.m_varValue);
    m_bBusy = false;
    return status;
}

int32_t CZxISControlScrollString::ResetToDefault()
{
    if (!Usable())
        return ZX_E_FAIL;
    return _WriteDefaultAndShow([this](const SZxGrabberPropertyValue& value) {
        m_bBusy = true;
        ShowElement(value.m_varValue);
        m_bBusy = false;
    });
}

int32_t CZxISControlScrollString::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    const int32_t pos = GetPos(H(GetItem()));
    if (!Usable() || pos < 0 || pos >= m_varList.GetCount())
        return ZX_E_FAIL;
    value.m_varValue = m_varList[pos];
    return ZX_OK;
}

int32_t CZxISControlScrollString::_SetPositionToProp(int32_t position)
{
    if (position < 0 || position >= m_varList.GetCount())
        return ZX_E_FAIL;
    SetDlgItemTextW(H(m_hDlg), m_iTextId, m_varList[position].GetCZxStringW());
    SZxGrabberPropertyValue v(m_wstrName, m_varList[position]);
    return _SetPropValue(v);
}

// ---- CZxISControlSliderDouble ----

CZxISControlSliderDouble::CZxISControlSliderDouble(const wchar_t* name, uint32_t mode, int32_t trackId,
                                                   int32_t textId, uint32_t groupMask, uint32_t textColor)
    : CZxISControlScrollDouble(name, mode, trackId, textId, groupMask, textColor), m_iLastPos(-1)
{
}

int32_t CZxISControlSliderDouble::UpdateFromGeneric()
{
    const int32_t status = CZxISControlScrollDouble::UpdateFromGeneric();
    m_iLastPos = GetPos(H(GetItem()));
    return status;
}

int32_t CZxISControlSliderDouble::ResetToDefault()
{
    const int32_t status = CZxISControlScrollDouble::ResetToDefault();
    m_iLastPos = GetPos(H(GetItem()));
    return status;
}

bool CZxISControlSliderDouble::DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                                           ZxLResult* result)
{
    if (message != WM_HSCROLL && message != WM_VSCROLL)
        return CZxISControlScrollDouble::DlgProcHook(dialog, message, wParam, lParam, result);
    if (m_bBusy || !Usable() || Sender(lParam) != H(GetItem()))
        return false;
    // The track bar has moved itself before it notifies: write when it left the
    // position the control last showed.
    const int32_t pos = GetPos(H(GetItem()));
    if (pos != m_iLastPos) {
        m_iLastPos = pos;
        _SetPositionToProp(pos);
    }
    *result = 0;
    return true;
}

// ---- CZxISControlSliderListInt32 ----

CZxISControlSliderListInt32::CZxISControlSliderListInt32(const wchar_t* name, uint32_t mode, int32_t trackId,
                                                         uint32_t groupMask)
    : CZxISControl(ctValueEditor, btProperty, name, mode, trackId, groupMask), m_bEnabled(false), m_bBusy(false),
      m_iLastPos(-1)
{
}

void CZxISControlSliderListInt32::ApplyEnable() { EnableWindow(H(GetItem()), m_bEnabled && !m_vecValues.empty()); }

int32_t CZxISControlSliderListInt32::Enable(bool enable)
{
    m_bEnabled = enable;
    ApplyEnable();
    return _RefreshIfEnabled(enable);
}

int32_t CZxISControlSliderListInt32::Reinit()
{
    CZxVariant def;
    const int32_t status = _GetPropDefinition(def);
    if (status != ZX_OK)
        return status;
    m_vecValues.clear();
    const CZxVariant* list = def.IsRecord() ? def.Search(L"m_list") : nullptr;
    const wchar_t* fault = !list || !list->IsArray() || list->GetCount() == 0 ? L"m_list missing or empty" : nullptr;
    for (int i = 0; !fault && i < list->GetCount(); ++i) {
        double v = 0;
        if (!zxis::Number((*list)[i], L"m_iValue", v))
            fault = L"m_list element without m_iValue";
        else
            m_vecValues.push_back(zxis::RoundInt(v));
    }
    if (fault) {
        zxis::ReportDefinition(fault, m_wstrName, __LINE__);
        m_vecValues.clear();
        ApplyEnable();
        return ZX_E_FAIL;
    }
    SetRange(H(GetItem()), GetCount() - 1);
    ApplyEnable();
    return ZX_OK;
}

int32_t CZxISControlSliderListInt32::ShowValue(const CZxVariant& value)
{
    const int32_t v = value.GetZx_int32();
    for (int32_t i = 0; i < GetCount(); ++i) {
        if (m_vecValues[i] == v) {
            SetPos(H(GetItem()), i);
            m_iLastPos = i;
            return ZX_OK;
        }
    }
    return ZX_OK; // a value outside the list leaves the track bar where it is
}

int32_t CZxISControlSliderListInt32::UpdateFromGeneric()
{
    if (m_vecValues.empty())
        return ZX_E_FAIL;
    m_bBusy = true;
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t status = _GetPropValue(value);
    if (status == ZX_OK)
        ShowValue(value.m_varValue);
    m_bBusy = false;
    return status;
}

int32_t CZxISControlSliderListInt32::ResetToDefault()
{
    if (m_vecValues.empty())
        return ZX_E_FAIL;
    return _WriteDefaultAndShow([this](const SZxGrabberPropertyValue& value) {
        m_bBusy = true;
        ShowValue(value.m_varValue);
        m_bBusy = false;
    });
}

int32_t CZxISControlSliderListInt32::GetPropValForGeneric(SZxGrabberPropertyValue& value)
{
    const int32_t pos = GetPos(H(GetItem()));
    if (pos < 0 || pos >= GetCount())
        return ZX_E_FAIL;
    value.m_varValue = m_vecValues[pos];
    return ZX_OK;
}

bool CZxISControlSliderListInt32::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam, ZxLParam lParam, ZxLResult* result)
{
    if ((message != WM_HSCROLL && message != WM_VSCROLL) || m_bBusy || m_vecValues.empty() ||
        Sender(lParam) != H(GetItem()))
        return false;
    const int32_t pos = GetPos(H(GetItem()));
    if (pos != m_iLastPos && pos >= 0 && pos < GetCount()) {
        m_iLastPos = pos;
        SZxGrabberPropertyValue v(m_wstrName, CZxVariant(m_vecValues[pos]));
        _SetPropValue(v);
    }
    *result = 0;
    return true;
}

// ---- CZxISControlTextDouble ----

namespace {
const wchar_t kTextDoubleProp[] = L"ZxISControlTextDouble";
}

CZxISControlTextDouble::CZxISControlTextDouble(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                                               uint32_t textColor)
    : CZxISControl(ctTextDouble, btProperty, name, mode, id, groupMask), m_iDecimals(2), m_uiTextColor(textColor),
      m_hStatic(nullptr), m_pOldProc(nullptr)
{
}

CZxISControlTextDouble::~CZxISControlTextDouble() { CZxISControlTextDouble::Detach(); }

int32_t CZxISControlTextDouble::Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list)
{
    Detach();
    CZxISControl::Attach(dialog, provider, list);
    HWND item = H(GetItem());
    if (item) {
        m_hStatic = reinterpret_cast<ZxHWnd>(item);
        SetPropW(item, kTextDoubleProp, this);
        m_pOldProc = reinterpret_cast<void*>(
            SetWindowLongPtrW(item, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&TempStaticWndProc)));
    }
    return ZX_OK;
}

int32_t CZxISControlTextDouble::Detach()
{
    HWND item = H(m_hStatic);
    if (item && IsWindow(item)) {
        if (GetWindowLongPtrW(item, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&TempStaticWndProc))
            SetWindowLongPtrW(item, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pOldProc));
        RemovePropW(item, kTextDoubleProp);
    }
    m_hStatic = nullptr;
    m_pOldProc = nullptr;
    return CZxISControl::Detach();
}

ZxLResult __stdcall CZxISControlTextDouble::TempStaticWndProc(ZxHWnd window, unsigned message, ZxWParam wParam,
                                                              ZxLParam lParam)
{
    HWND w = H(window);
    auto* self = static_cast<CZxISControlTextDouble*>(GetPropW(w, kTextDoubleProp));
    if (!self || !self->m_pOldProc)
        return DefWindowProcW(w, message, wParam, lParam);
    const WNDPROC old = reinterpret_cast<WNDPROC>(self->m_pOldProc);
    if (message == WM_NCDESTROY) {
        self->Detach();
        return CallWindowProcW(old, w, message, wParam, lParam);
    }
    const LRESULT r = CallWindowProcW(old, w, message, wParam, lParam);
    if (message == WM_SETTEXT) {
        // With a transparent background the static paints over what is below it:
        // repaint the dialog under the whole item so a shorter text leaves no rest.
        RECT rc;
        GetWindowRect(w, &rc);
        HWND parent = GetParent(w);
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rc), 2);
        InvalidateRect(parent, &rc, TRUE);
        InvalidateRect(w, nullptr, TRUE);
    }
    return r;
}

int32_t CZxISControlTextDouble::Reinit()
{
    CZxVariant def;
    const int32_t status = _GetPropDefinition(def);
    if (status != ZX_OK)
        return status;
    double step = 0;
    m_iDecimals = zxis::Number(def, L"m_dStep", step) && step > 0 ? ZX_DecimalsFromStep(step) : 2;
    return ZX_OK;
}

int32_t CZxISControlTextDouble::UpdateFromGeneric()
{
    SZxGrabberPropertyValue value(m_wstrName);
    const int32_t status = _GetPropValue(value);
    if (status == ZX_OK)
        SetWindowTextW(H(GetItem()), CZxStringW::Formatted(L"%.*f", m_iDecimals, value.m_varValue.GetDouble()));
    return status;
}

int32_t CZxISControlTextDouble::UpdateState() { return UpdateFromGeneric(); }

bool CZxISControlTextDouble::DlgProcHook(ZxHWnd, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                                         ZxLResult* result)
{
    return message == WM_CTLCOLORSTATIC && Colour(m_uiTextColor, H(GetItem()), lParam, wParam, result);
}
