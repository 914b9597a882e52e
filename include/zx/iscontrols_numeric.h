// Numeric input-setup controls: one integer or double property on a scroll bar,
// a track bar, an up-down with its buddy edit, an edit box or a static text,
// each writing every user change straight to the driver.
//
// Common to all: `Reinit` reads the property definition. A definition the
// control cannot use (a missing member, a step of 0 or below, min above max, a
// list element of the wrong kind, a value that is not finite) is reported through
// DiagAssertW (source "inputsetupcontrols", the property name as message); Reinit
// then returns ZX_E_FAIL, the control disables its items and, until a usable definition
// is read, shows nothing, writes nothing and answers ZX_E_FAIL to GetPropValForGeneric.
// Windows only; every control runs on the dialog's (UI) thread.
#pragma once
#include <cstdint>
#include <vector>
#include "zx/iscontrolbase.h"

/// Fraction digits for a step (or any shown value): with k = trunc(|x| * 1000 + 0.5),
/// 3 when k is not a multiple of 10, else 2 when not of 100, else 1 when not of
/// 1000, else 0. Not finite: 0.
/// Any thread.
ZX_API int32_t ZX_DecimalsFromStep(double step);
/// The exposure text of a time in milliseconds: "%.0f µs" below 1, "%.1f ms" below
/// 10, "%.0f ms" below 1000, else "%.2lf s".
/// Any thread.
ZX_API CZxStringW ZX_ExposureMsToText(double ms);

/// No text colour of its own: the item keeps the dialog's colours.
#define ZX_ISCOLOR_NONE 0xFF000000u

/// A double property on a horizontal scroll bar with a text item showing the
/// value; position p stands for min + p * step, at most max: a maximum off the
/// step grid (0 .. 9 in steps of 5) is the last position's value, so no position
/// writes above it. The integer scroll, the track bar and the spins do the same.
class ZX_API CZxISControlScrollDouble : public CZxISControl {
public:
    /// Binds property `name` (read in `mode`: 1 fast, 2 quality) to the scroll bar
    /// `scrollId` and the text item `textId`; `textColor` (COLORREF) colours the
    /// text, ZX_ISCOLOR_NONE keeps the dialog's. Nothing is shown before Attach and Reinit.
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

    /// Fraction digits of the shown value (ZX_DecimalsFromStep of the step).
    int32_t GetDecimals() const { return m_iDecimals; }
    /// Smallest value of the definition (position 0).
    double GetMin() const { return m_dMin; }
    /// Largest value of the definition.
    double GetMax() const { return m_dMax; }
    /// Value step of one position; 0 or below while no usable definition was read.
    double GetStep() const { return m_dStep; }

protected:
    /// A usable definition has been read (the step is positive only then).
    bool Usable() const { return m_dStep > 0; }
    /// Forgets the definition and disables the items; returns ZX_E_FAIL.
    int32_t Unusable();
    /// Reads min, max and step from the three members (reports an unusable definition).
    bool ReadLinear(const wchar_t* minKey, const wchar_t* maxKey, const wchar_t* stepKey, int32_t& status);
    /// The last scroll position: (max - min) / step, rounded.
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
    /// Answers WM_CTLCOLORSTATIC for the text item with the control's text colour;
    /// false for other senders or without a colour of its own.
    bool ColorStatic(ZxLParam sender, ZxWParam dc, ZxLResult* result);
    /// Moves the scroll bar by a WM_HSCROLL code; the new position, or -1 when it stays.
    int32_t ScrollBy(ZxWParam wParam);

    /// The state last asked for by Enable (the items stay disabled while unusable).
    bool m_bEnabled;
    /// Set while the control moves its own scroll bar, so its own notifications are ignored.
    bool m_bBusy;
    /// Dialog item that shows the value as text.
    int32_t m_iTextId;
    /// Smallest value (position 0).
    double m_dMin;
    /// Largest value.
    double m_dMax;
    /// Value of one position; 0 or below while unusable.
    double m_dStep;
    /// Fraction digits of the shown value.
    int32_t m_iDecimals;
    /// Text colour (COLORREF) or ZX_ISCOLOR_NONE.
    uint32_t m_uiTextColor;
};

/// A double property (milliseconds) whose positions are spaced by a constant
/// ratio; position 1 is one linear step above the minimum.
class ZX_API CZxISControlScrollDoubleLog : public CZxISControlScrollDouble {
public:
    /// Same items and arguments as CZxISControlScrollDouble.
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

    /// The position nearest to `value` on the logarithmic scale (0..GetMaxPos()).
    int32_t ValueToPos(double value) const;
    /// The value of a position: minimum at 0, maximum at the last position.
    double PosToValue(int32_t position) const;
    /// The last position (0 while unusable).
    int32_t GetMaxPos() const;

protected:
    /// Ratio between neighbouring positions (GetRatio, read at Reinit).
    double m_dRatio;
};

/// An integer property on a scroll bar: position = (value - min) / step.
class ZX_API CZxISControlScrollInt32 : public CZxISControlScrollDouble {
public:
    /// Same items and arguments as CZxISControlScrollDouble; the definition is an
    /// "RZxRangeInt32" ("m_iMin", "m_iMax", "m_iStep").
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
    /// Same items and arguments as CZxISControlScrollDouble; the definition is an
    /// "RZxList" of texts.
    CZxISControlScrollString(const wchar_t* name, uint32_t mode, int32_t scrollId, int32_t textId,
                             uint32_t groupMask, uint32_t textColor = ZX_ISCOLOR_NONE);
    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    int32_t _SetPositionToProp(int32_t position) override;

protected:
    /// Index of the list element equal to `value`, or -1.
    int32_t IndexOf(const CZxVariant& value) const;
    /// Shows `value`'s element: scroll position and text.
    void ShowElement(const CZxVariant& value);
    /// The "m_list" array read at Reinit.
    CZxVariant m_varList;
};

/// A double property on a horizontal track bar with a text item. The track bar
/// moves itself; the control writes when its position differs from the last one
/// it showed. Page size 10 positions, as the scroll's page.
class ZX_API CZxISControlSliderDouble : public CZxISControlScrollDouble {
public:
    /// Binds property `name` to the track bar `trackId` and the text item `textId`
    /// (arguments as CZxISControlScrollDouble).
    CZxISControlSliderDouble(const wchar_t* name, uint32_t mode, int32_t trackId, int32_t textId,
                             uint32_t groupMask, uint32_t textColor = ZX_ISCOLOR_NONE);
    int32_t UpdateFromGeneric() override;
    int32_t ResetToDefault() override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

protected:
    /// Position last shown or written; a notification at the same position writes nothing.
    int32_t m_iLastPos;
};

/// An integer property chosen from "m_list" records on a track bar: position =
/// index, writes the element's "m_iValue".
class ZX_API CZxISControlSliderListInt32 : public CZxISControl {
public:
    /// Binds the "RZxList" property `name` to the track bar `trackId`.
    CZxISControlSliderListInt32(const wchar_t* name, uint32_t mode, int32_t trackId, uint32_t groupMask);
    int32_t Enable(bool enable) override;
    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;
    /// Number of list elements (track positions).
    int32_t GetCount() const { return static_cast<int32_t>(m_vecValues.size()); }

protected:
    /// Enables the track bar by the remembered state and usability.
    void ApplyEnable();
    /// Moves the track bar to the element whose "m_iValue" equals `value`;
    /// ZX_E_FAIL when none does.
    int32_t ShowValue(const CZxVariant& value);
    /// The state last asked for by Enable.
    bool m_bEnabled;
    /// Set while the control moves its own track bar.
    bool m_bBusy;
    /// Position last shown or written.
    int32_t m_iLastPos;
    /// The "m_iValue" of each list element, by position.
    std::vector<int32_t> m_vecValues;
};

/// Up-down with its buddy edit. The control item is the edit; the up-down is the
/// sibling whose buddy it is, registered in the list too. Positions 0 .. count - 1
/// map linearly onto the range. The up-down notifies twice per click; with a
/// Control key held, one click moves ten steps, clamped to the up-down's range.
class ZX_API CZxISControlSpinBase : public CZxISControl {
public:
    /// Binds property `name` to the edit `editId` and the up-down whose buddy it
    /// is; `textColor` (COLORREF or ZX_ISCOLOR_NONE) colours the edit's text.
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
    /// Value of a position (within the range).
    virtual double PosToValue(int32_t position) = 0;
    /// Position of a value (rounded, within 0 .. count - 1).
    virtual int32_t ValueToPos(double value) = 0;
    /// The text shown for a value.
    virtual CZxStringW ValueToText(double value) = 0;
    /// The variant written to the driver for a value ("zx_int32" or "double").
    virtual CZxVariant ValueToVariant(double value) = 0;

    /// The up-down control found at Attach (null before).
    ZxHWnd GetUpDown() const { return m_hUpDown; }

protected:
    /// Sets the up-down range to 0 .. count - 1 (count 0: unusable, disabled).
    void SetPositions(int32_t count);
    /// Position and text of a driver value.
    void ShowValue(double value);
    /// The up-down's position.
    int32_t CurrentPos() const;
    /// Enables edit and up-down by the remembered state and usability.
    void ApplyEnable();
    /// Forgets the definition and disables the items; returns ZX_E_FAIL.
    int32_t Unusable();

    /// The state last asked for by Enable.
    bool m_bEnabled;
    /// Set while the control sets its own position or text.
    bool m_bBusy;
    /// Which of the up-down's two notifications of one click comes next.
    bool m_bSecondPhase;
    int32_t m_iCount;       ///< positions; 0 while no usable definition
    int32_t m_iLastPos;     ///< the position the control last showed
    int32_t m_iClickStart;  ///< the position before the click being handled
    /// Text colour (COLORREF) or ZX_ISCOLOR_NONE.
    uint32_t m_uiTextColor;
    /// The up-down whose buddy is the edit.
    ZxHWnd m_hUpDown;
};

/// An integer spin with optional denominator: the text is "%.*lf" of
/// value / denominator at the precision ("m_iPrecicion"; 2 when a denominator is
/// given without one, else 0).
class ZX_API CZxISControlSpinInt : public CZxISControlSpinBase {
public:
    /// Binds an "RZxRangeInt32" property (arguments as CZxISControlSpinBase).
    CZxISControlSpinInt(const wchar_t* name, uint32_t mode, int32_t editId, uint32_t groupMask,
                        uint32_t textColor = ZX_ISCOLOR_NONE);
    int32_t Reinit() override;
    double PosToValue(int32_t position) override;
    /// (value - min) / step, rounded and limited to the positions.
    int32_t ValueToPos(double value) override;
    CZxStringW ValueToText(double value) override;
    /// A "zx_int32" variant of the value.
    CZxVariant ValueToVariant(double value) override;

    /// The denominator ("m_iDenom"); 0 when none.
    int32_t GetDenom() const { return m_iDenom; }
    /// Fraction digits of the shown text ("m_iPrecicion").
    int32_t GetPrecision() const { return m_iPrecicion; }

protected:
    /// True when the shown text divides by the denominator.
    bool m_bUseDenom;
    /// Smallest value ("m_iMin").
    int32_t m_iMin;
    /// Largest value ("m_iMax").
    int32_t m_iMax;
    /// Value of one position ("m_iStep").
    int32_t m_iStep;
    int32_t m_iDenom;      ///< 0: none
    /// Fraction digits of the shown text.
    int32_t m_iPrecicion;
};

/// A plain integer spin: the denominator members are ignored.
class ZX_API CZxISControlSpinInt32 : public CZxISControlSpinInt {
public:
    /// Binds an "RZxRangeInt32" property; the text is the plain value.
    CZxISControlSpinInt32(const wchar_t* name, uint32_t mode, int32_t editId, uint32_t groupMask,
                          uint32_t textColor = ZX_ISCOLOR_NONE);
};

/// A double spin: "%.*f" at the step's decimals.
class ZX_API CZxISControlSpinDouble : public CZxISControlSpinBase {
public:
    /// Binds an "RZxRangeDouble" property (arguments as CZxISControlSpinBase).
    CZxISControlSpinDouble(const wchar_t* name, uint32_t mode, int32_t editId, uint32_t groupMask,
                           uint32_t textColor = ZX_ISCOLOR_NONE);
    int32_t Reinit() override;
    double PosToValue(int32_t position) override;
    /// (value - min) / step, rounded and limited to the positions.
    int32_t ValueToPos(double value) override;
    CZxStringW ValueToText(double value) override;
    /// A "double" variant of the value.
    CZxVariant ValueToVariant(double value) override;
    /// Fraction digits of the shown text.
    int32_t GetDecimals() const { return m_iDecimals; }

protected:
    /// Smallest value ("m_dMin").
    double m_dMin;
    /// Largest value ("m_dMax").
    double m_dMax;
    /// Value of one position ("m_dStep").
    double m_dStep;
    /// Fraction digits of the shown text.
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
    /// Binds property `name` to the edit `id`; `notifyMessage` is sent to the
    /// dialog on Enter and Escape (0: none); `flag`: Escape shows the driver's value again.
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
    /// then the driver's value shown. ZX_OK when nothing was pending; else the write's
    /// result, or ZX_E_FAIL for a text that is no number (the driver's value is shown again).
    int32_t Commit();
    /// Drops a pending text.
    void Cancel();
    /// True while the edit holds typed text not yet committed.
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

    /// Message sent to the dialog on Enter and Escape (0: none).
    uint32_t m_uiNotifyMessage;
    /// Escape shows the driver's value again.
    bool m_bFlag;
    /// Typed text not yet committed.
    bool m_bPending;
    /// The notification for the current text was sent.
    bool m_bNotified;
    /// Set while the control sets the text itself (its change is not typing).
    bool m_bSettingText;
    /// The subclassed edit window (null while detached).
    ZxHWnd m_hEdit;
    /// The edit's window procedure before subclassing.
    void* m_pOldProc;
};

/// An integer property typed into an edit: "%d"; a typed number is rounded half
/// away from zero and saturated to 32 bits.
class ZX_API CZxISControlEditInt32 : public CZxISControlEditBase {
public:
    /// Binds a "zx_int32" property (arguments as CZxISControlEditBase).
    CZxISControlEditInt32(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                          uint32_t notifyMessage, bool flag);
    int32_t ResetToDefault() override;
    /// Shows the driver's value; ZX_E_BUSY (text left alone) while the user is typing.
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;

    /// Shows a value and clears the pending mark.
    virtual int32_t SetEditValue(int32_t value);
    /// The typed value: the text's leading number as wcstod reads it ("12 ms" gives
    /// 12), rounded; ZX_E_FAIL when the text starts with no number (or an infinite one).
    virtual int32_t GetEditValue(int32_t& value);

};

/// A double property typed into an edit, shown as value * scale with the smaller
/// of the step's decimals and the shown value's own; the step counts as shown
/// (step * |scale|), so a per-mille property shown as percent (scale 0.1, step
/// 0.1) shows two decimals.
class ZX_API CZxISControlEditDouble : public CZxISControlEditBase {
public:
    /// Binds a double property (arguments as CZxISControlEditBase); the edit shows
    /// value x `scale` (1000 shows seconds as milliseconds).
    CZxISControlEditDouble(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                           uint32_t notifyMessage, bool flag, double scale = 1.0);
    int32_t Enable(bool enable) override;
    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    /// Shows the driver's value; ZX_E_BUSY (text left alone) while the user is
    /// typing, ZX_E_FAIL without a usable definition.
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;

    /// Shows a value and clears the pending mark.
    virtual int32_t SetEditValue(double value);
    /// The typed value divided by the scale: the text's leading number as wcstod
    /// reads it ("0.5 %" gives 0.5); ZX_E_FAIL when the text starts with no number (or an
    /// infinite or NaN one), so nothing is written for "abc".
    virtual int32_t GetEditValue(double& value);

    /// Factor between the driver's value and the shown one.
    double GetScale() const { return m_dScale; }
    /// Fraction digits of the step.
    int32_t GetStepDecimals() const { return m_iDecimals; }

protected:
    /// Factor between the driver's value and the shown one.
    double m_dScale;
    /// Step of the definition; below 0 while unusable.
    double m_dStep;
    /// Fraction digits of the step.
    int32_t m_iDecimals;
    /// The state last asked for by Enable.
    bool m_bEnabled;
};

/// A read-only double shown in a static text ("%.*f" at the step's decimals, 2
/// without a step). Its state and value updates only refresh the text; the static
/// is wrapped while attached so that a shorter text repaints its whole area.
class ZX_API CZxISControlTextDouble : public CZxISControl {
public:
    /// Binds a double property to the static text `id`; `textColor` (COLORREF or
    /// ZX_ISCOLOR_NONE) colours it.
    CZxISControlTextDouble(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                           uint32_t textColor = ZX_ISCOLOR_NONE);
    /// Restores the static's window procedure when still wrapped.
    ~CZxISControlTextDouble() override;
    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Detach() override;
    int32_t UpdateState() override;
    int32_t Reinit() override;
    int32_t UpdateFromGeneric() override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

#if defined(_WIN32)
    /// Window procedure of the wrapped static: a new text invalidates its whole area.
    static ZxLResult __stdcall TempStaticWndProc(ZxHWnd window, unsigned message, ZxWParam wParam,
                                                 ZxLParam lParam);
#endif

protected:
    /// Fraction digits of the shown value.
    int32_t m_iDecimals;
    /// Text colour (COLORREF) or ZX_ISCOLOR_NONE.
    uint32_t m_uiTextColor;
    /// The wrapped static (null while detached).
    ZxHWnd m_hStatic;
    /// The static's window procedure before wrapping.
    void* m_pOldProc;
};
