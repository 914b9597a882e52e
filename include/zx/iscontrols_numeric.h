// Numeric input-setup controls: one integer or double property on a scroll bar,
// a track bar, an up-down with its buddy edit, an edit box or a static text,
// each writing every user change straight to the driver.
//
// Common to all: `Reinit` reads the property definition. A definition the
// control cannot use (a missing member, a step of 0 or below, min above max, a
// list element of the wrong kind, a value that is not finite) is reported through
// DiagAssertW (source "inputsetupcontrols", the property name as message); Reinit
// then returns -9, the control disables its items and, until a usable definition
// is read, shows nothing, writes nothing and answers -9 to GetPropValForGeneric.
// The Windows implementations are built for Windows only.
#pragma once
#include <cstdint>
#include <vector>
#include "zx/inputsetupcontrols.h"

/// Fraction digits for a step (or any shown value): with k = trunc(|x| * 1000 + 0.5),
/// 3 when k is not a multiple of 10, else 2 when not of 100, else 1 when not of
/// 1000, else 0. Not finite: 0.
ZX_API int32_t ZX_DecimalsFromStep(double step);
/// The exposure text of a time in milliseconds: "%.0f µs" below 1, "%.1f ms" below
/// 10, "%.0f ms" below 1000, else "%.2lf s".
ZX_API CZxStringW ZX_ExposureMsToText(double ms);

/// No text colour of its own: the item keeps the dialog's colours.
#define ZX_ISCOLOR_NONE 0xFF000000u

/// A double property on a horizontal scroll bar with a text item showing the
/// value; position p stands for min + p * step, at most max: a maximum off the
/// step grid (0 .. 9 in steps of 5) is the last position's value, so no position
/// writes above it. The integer scroll, the track bar and the spins do the same.
class ZX_API CZxISControlScrollDouble : public CZxISControl {
public:
    CZxISControlScrollDouble(const wchar_t* name, uint32_t mode, int32_t scrollId, int32_t textId,
                             uint32_t groupMask, uint32_t textColor = ZX_ISCOLOR_NONE);

    /// Also routes the text item (its colour queries) to this control.
    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Enable(bool enable) override;
    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// Shows and writes the value of position `position`.
    virtual int32_t _SetPositionToProp(int32_t position);
    /// Puts "%.*f" of `value` into item `itemId` of `dialog`.
    virtual int32_t SetDlgItemValueAsText(int32_t decimals, double value, ZxHWnd dialog, int32_t itemId);

    int32_t GetDecimals() const { return m_iDecimals; }
    double GetMin() const { return m_dMin; }
    double GetMax() const { return m_dMax; }
    double GetStep() const { return m_dStep; }

protected:
    /// A usable definition has been read (the step is positive only then).
    bool Usable() const { return m_dStep > 0; }
    /// Forgets the definition and disables the items; -9.
    int32_t Unusable();
    /// Reads min, max and step from the three members (reports an unusable definition).
    bool ReadLinear(const wchar_t* minKey, const wchar_t* maxKey, const wchar_t* stepKey, int32_t& status);
    int32_t MaxPos() const;
    /// The linear position of a value, within the range.
    int32_t LinearPos(double value) const;
    /// Enables the scroll bar and the text item by the remembered state and usability.
    void ApplyEnable();
    /// Sets the scroll position (not while disabled) and the text of `value`.
    void ShowValue(double value, int32_t position);
    /// How a value maps to a scroll position (linear here, logarithmic in a derived class).
    typedef int32_t (*PositionOf)(const CZxISControlScrollDouble& control, double value);
    /// Reads the driver's value and shows it at the position `toPos` gives it.
    int32_t ShowDriverValue(PositionOf toPos);
    /// Writes the driver's default value and shows it at the position `toPos` gives it.
    int32_t ShowDefaultValue(PositionOf toPos);
    bool ColorStatic(ZxLParam sender, ZxWParam dc, ZxLResult* result);
    /// Moves the scroll bar by a WM_HSCROLL code; the new position, or -1 when it stays.
    int32_t ScrollBy(ZxWParam wParam);

    bool m_bEnabled;
    bool m_bBusy;
    int32_t m_iTextId;
    double m_dMin;
    double m_dMax;
    double m_dStep;
    int32_t m_iDecimals;
    uint32_t m_uiTextColor;
};

/// A double property (milliseconds) whose positions are spaced by a constant
/// ratio; position 1 is one linear step above the minimum.
class ZX_API CZxISControlScrollDoubleLog : public CZxISControlScrollDouble {
public:
    CZxISControlScrollDoubleLog(const wchar_t* name, uint32_t mode, int32_t scrollId, int32_t textId,
                                uint32_t groupMask, uint32_t textColor = ZX_ISCOLOR_NONE);

    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    int32_t _SetPositionToProp(int32_t position) override;
    /// Puts the text of slot ValueToText into the item (the decimals are not used).
    int32_t SetDlgItemValueAsText(int32_t decimals, double value, ZxHWnd dialog, int32_t itemId) override;

    /// The text shown for a value (exposure time forms).
    virtual CZxStringW ValueToText(double value);
    /// Ratio between the values of neighbouring positions: the square root of 2.
    virtual double GetRatio();

    int32_t ValueToPos(double value) const;
    double PosToValue(int32_t position) const;
    int32_t GetMaxPos() const;

protected:
    double m_dRatio;
};

/// An integer property on a scroll bar: position = (value - min) / step.
class ZX_API CZxISControlScrollInt32 : public CZxISControlScrollDouble {
public:
    CZxISControlScrollInt32(const wchar_t* name, uint32_t mode, int32_t scrollId, int32_t textId,
                            uint32_t groupMask, uint32_t textColor = ZX_ISCOLOR_NONE);
    int32_t Reinit() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    int32_t _SetPositionToProp(int32_t position) override;
};

/// A list property ("m_list" of texts) on a scroll bar: position = index, the text
/// item shows the element.
class ZX_API CZxISControlScrollString : public CZxISControlScrollDouble {
public:
    CZxISControlScrollString(const wchar_t* name, uint32_t mode, int32_t scrollId, int32_t textId,
                             uint32_t groupMask, uint32_t textColor = ZX_ISCOLOR_NONE);
    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    int32_t _SetPositionToProp(int32_t position) override;

protected:
    int32_t IndexOf(const CZxVariant& value) const;
    void ShowElement(const CZxVariant& value);
    CZxVariant m_varList;
};

/// A double property on a horizontal track bar with a text item. The track bar
/// moves itself; the control writes when its position differs from the last one
/// it showed. Page size 10 positions, as the scroll's page.
class ZX_API CZxISControlSliderDouble : public CZxISControlScrollDouble {
public:
    CZxISControlSliderDouble(const wchar_t* name, uint32_t mode, int32_t trackId, int32_t textId,
                             uint32_t groupMask, uint32_t textColor = ZX_ISCOLOR_NONE);
    int32_t UpdateFromGeneric() override;
    int32_t ResetToDefault() override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

protected:
    int32_t m_iLastPos;
};

/// An integer property chosen from "m_list" records on a track bar: position =
/// index, writes the element's "m_iValue".
class ZX_API CZxISControlSliderListInt32 : public CZxISControl {
public:
    CZxISControlSliderListInt32(const wchar_t* name, uint32_t mode, int32_t trackId, uint32_t groupMask);
    int32_t Enable(bool enable) override;
    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;
    int32_t GetCount() const { return static_cast<int32_t>(m_vecValues.size()); }

protected:
    void ApplyEnable();
    int32_t ShowValue(const CZxVariant& value);
    bool m_bEnabled;
    bool m_bBusy;
    int32_t m_iLastPos;
    std::vector<int32_t> m_vecValues;
};

/// Up-down with its buddy edit. The control item is the edit; the up-down is the
/// sibling whose buddy it is, registered in the list too. Positions 0 .. count - 1
/// map linearly onto the range. The up-down notifies twice per click; with a
/// Control key held, one click moves ten steps, clamped to the up-down's range.
class ZX_API CZxISControlSpinBase : public CZxISControl {
public:
    CZxISControlSpinBase(const wchar_t* name, uint32_t mode, int32_t editId, uint32_t groupMask, uint32_t textColor);
    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Detach() override;
    int32_t Enable(bool enable) override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// Writes the value of position `position`, showing its text when asked.
    virtual int32_t _SetPositionToProp(int32_t position, bool showText);
    /// Value of a position and position of a value (within the range).
    virtual double PosToValue(int32_t position) = 0;
    virtual int32_t ValueToPos(double value) = 0;
    /// The text shown for a value, and the variant written.
    virtual CZxStringW ValueToText(double value) = 0;
    virtual CZxVariant ValueToVariant(double value) = 0;

    ZxHWnd GetUpDown() const { return m_hUpDown; }

protected:
    /// Sets the up-down range to 0 .. count - 1 (count 0: unusable, disabled).
    void SetPositions(int32_t count);
    /// Position and text of a driver value.
    void ShowValue(double value);
    int32_t CurrentPos() const;
    void ApplyEnable();
    int32_t Unusable();

    bool m_bEnabled;
    bool m_bBusy;
    bool m_bSecondPhase;
    int32_t m_iCount;       ///< positions; 0 while no usable definition
    int32_t m_iLastPos;     ///< the position the control last showed
    int32_t m_iClickStart;  ///< the position before the click being handled
    uint32_t m_uiTextColor;
    ZxHWnd m_hUpDown;
};

/// An integer spin with optional denominator: the text is "%.*lf" of
/// value / denominator at the precision ("m_iPrecicion"; 2 when a denominator is
/// given without one, else 0).
class ZX_API CZxISControlSpinInt : public CZxISControlSpinBase {
public:
    CZxISControlSpinInt(const wchar_t* name, uint32_t mode, int32_t editId, uint32_t groupMask,
                        uint32_t textColor = ZX_ISCOLOR_NONE);
    int32_t Reinit() override;
    double PosToValue(int32_t position) override;
    int32_t ValueToPos(double value) override;
    CZxStringW ValueToText(double value) override;
    CZxVariant ValueToVariant(double value) override;

    int32_t GetDenom() const { return m_iDenom; }
    int32_t GetPrecision() const { return m_iPrecicion; }

protected:
    bool m_bUseDenom;
    int32_t m_iMin;
    int32_t m_iMax;
    int32_t m_iStep;
    int32_t m_iDenom;      ///< 0: none
    int32_t m_iPrecicion;
};

/// A plain integer spin: the denominator members are ignored.
class ZX_API CZxISControlSpinInt32 : public CZxISControlSpinInt {
public:
    CZxISControlSpinInt32(const wchar_t* name, uint32_t mode, int32_t editId, uint32_t groupMask,
                          uint32_t textColor = ZX_ISCOLOR_NONE);
};

/// A double spin: "%.*f" at the step's decimals.
class ZX_API CZxISControlSpinDouble : public CZxISControlSpinBase {
public:
    CZxISControlSpinDouble(const wchar_t* name, uint32_t mode, int32_t editId, uint32_t groupMask,
                           uint32_t textColor = ZX_ISCOLOR_NONE);
    int32_t Reinit() override;
    double PosToValue(int32_t position) override;
    int32_t ValueToPos(double value) override;
    CZxStringW ValueToText(double value) override;
    CZxVariant ValueToVariant(double value) override;
    int32_t GetDecimals() const { return m_iDecimals; }

protected:
    double m_dMin;
    double m_dMax;
    double m_dStep;
    int32_t m_iDecimals;
};

/// Edit controls (base of the two typed edits; it adds no virtual operations, so
/// SetEditValue and GetEditValue are the first of each edit's own): the edit is subclassed while attached. Enter commits a pending
/// text and Escape drops it; each sends the dialog `notifyMessage` (wParam 13 or
/// 27, lParam the control id) once until the text changes again. Losing the focus
/// commits a pending text too. A commit writes the typed value unclamped and then
/// shows the value the driver kept. With `flag` set, Escape also shows the
/// driver's value again instead of leaving the typed text. Hosts call the static
/// `Init` once before the first edit attaches and `Done` after the last detaches.
class ZX_API CZxISControlEditBase : public CZxISControl {
public:
    CZxISControlEditBase(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                         uint32_t notifyMessage, bool flag);
    ~CZxISControlEditBase() override;
    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Detach() override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// Creates the process-wide registry of subclassed edits (again: nothing).
    static void Init();
    /// Destroys it; edits still attached get their own window procedure back.
    static void Done();
    /// The control attached to an edit window, or null.
    static CZxISControlEditBase* FromWindow(ZxHWnd edit);

    /// Commits a pending text: the typed value (GetPropValForGeneric) is written,
    /// then the driver's value shown. 0 when nothing was pending; else the write's
    /// result, or -9 for a text that is no number (the driver's value is shown again).
    int32_t Commit();
    /// Drops a pending text.
    void Cancel();
    bool IsPending() const { return m_bPending; }

    /// Key handling of the subclassed edit (Enter, Escape); true when the key was taken.
    bool OnKey(unsigned key);

protected:
    /// Shows a text as the control's own (no pending mark).
    void SetText(const CZxStringW& text);

public:
    /// The edit's window procedure before subclassing (for the subclass procedure).
    void* OldProc() const { return m_pOldProc; }

protected:

    uint32_t m_uiNotifyMessage;
    bool m_bFlag;
    bool m_bPending;
    bool m_bNotified;
    bool m_bSettingText;
    ZxHWnd m_hEdit;
    void* m_pOldProc;
};

/// An integer property typed into an edit: "%d"; a typed number is rounded half
/// away from zero and saturated to 32 bits.
class ZX_API CZxISControlEditInt32 : public CZxISControlEditBase {
public:
    CZxISControlEditInt32(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                          uint32_t notifyMessage, bool flag);
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;

    /// Shows a value and clears the pending mark.
    virtual int32_t SetEditValue(int32_t value);
    /// The typed value: the text's leading number as wcstod reads it ("12 ms" gives
    /// 12), rounded; -9 when the text starts with no number (or an infinite one).
    virtual int32_t GetEditValue(int32_t& value);

};

/// A double property typed into an edit, shown as value * scale with the smaller
/// of the step's decimals and the shown value's own; the step counts as shown
/// (step * |scale|), so a per-mille property shown as percent (scale 0.1, step
/// 0.1) shows two decimals.
class ZX_API CZxISControlEditDouble : public CZxISControlEditBase {
public:
    CZxISControlEditDouble(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                           uint32_t notifyMessage, bool flag, double scale = 1.0);
    int32_t Enable(bool enable) override;
    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;

    /// Shows a value and clears the pending mark.
    virtual int32_t SetEditValue(double value);
    /// The typed value divided by the scale: the text's leading number as wcstod
    /// reads it ("0.5 %" gives 0.5); -9 when the text starts with no number (or an
    /// infinite or NaN one), so nothing is written for "abc".
    virtual int32_t GetEditValue(double& value);

    double GetScale() const { return m_dScale; }
    int32_t GetStepDecimals() const { return m_iDecimals; }

protected:
    double m_dScale;
    double m_dStep;
    int32_t m_iDecimals;
    bool m_bEnabled;
};

/// A read-only double shown in a static text ("%.*f" at the step's decimals, 2
/// without a step). Its state and value updates only refresh the text; the static
/// is wrapped while attached so that a shorter text repaints its whole area.
class ZX_API CZxISControlTextDouble : public CZxISControl {
public:
    CZxISControlTextDouble(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                           uint32_t textColor = ZX_ISCOLOR_NONE);
    ~CZxISControlTextDouble() override;
    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Detach() override;
    int32_t UpdateState() override;
    int32_t Reinit() override;
    int32_t UpdateFromGeneric() override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

#if defined(_WIN32)
    static ZxLResult __stdcall TempStaticWndProc(ZxHWnd window, unsigned message, ZxWParam wParam,
                                                 ZxLParam lParam);
#endif

protected:
    int32_t m_iDecimals;
    uint32_t m_uiTextColor;
    ZxHWnd m_hStatic;
    void* m_pOldProc;
};

// The exposure edit builds on the double edit above.
#include "zx/iscontrols_editexposure.h"
