// Free-entry combos for the exposure time and the sensor temperature: editable
// drop-down combos where the user picks a preset from the property's list or
// types any value, which is parsed, clamped and written to the driver; and the
// two temperature text conversions. The controls: Windows, UI thread only.
#pragma once
#include "zx/iscontrolbase.h"
#include "zxhost/vector.h"

/// The critical section guarding a class's attached controls and its hook.
struct SZxFreeComboLock;

/// The temperature as text: "%.*f" with `decimals` (no unit) when decimals >= 0,
/// else "%g °C".
/// Any thread.
ZX_API void ZX_TemperatureToText(CZxStringW& text, double value, int32_t decimals);
/// The leading number of `text` (the rest is ignored; no number, NaN or a null
/// text give 0.0) clamped into [minimum, maximum]. There is no failure result.
/// Any thread.
ZX_API double ZX_TextToTemperature(const wchar_t* text, double minimum, double maximum);

/// Exposure time, edited in an editable drop-down combo (CBS_DROPDOWN) of the
/// property's presets within [minimum, maximum], plus the maximum itself when it
/// lies more than 5 % above the largest preset. Enter in the edit part commits
/// the typed value (an unparsable text writes back the current value), Escape
/// shows the driver's value again; a click opens the list with the current
/// value in its middle.
///
/// Enter and Escape are caught by a thread keyboard hook, installed with the
/// first attached control of the class and removed with the last, and come back
/// to the control as its private message (wParam 13 or 27, lParam the combo's
/// id) through the dialog, which hands it to the control list (registered there
/// by Attach). While the list is open or a typed value is pending,
/// UpdateFromGeneric refuses with ZX_E_BUSY.
class ZX_API CZxISControlComboFreeExposure : public CZxISControl {
public:
    /// `message` is the private message (WM_USER or above) the control sends its
    /// dialog; with `modeLocked` ChangeMode leaves the base's mode alone.
    CZxISControlComboFreeExposure(const wchar_t* name, uint32_t mode, int32_t controlId, uint32_t groupMask,
                                  uint32_t message, bool modeLocked);

    /// Creates the class's lock and list (once per process; the library calls
    /// them at load and unload). Again: nothing.
    static void Init();
    /// Destroys the class's lock and list (at unload).
    static void Done();

    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Detach() override;
    ~CZxISControlComboFreeExposure() override;
    int32_t Enable(bool enable) override;
    int32_t Show(bool show) override;
    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;
    /// The selected item's value (`selected`) or the typed text's; a text that is
    /// no exposure time gives the driver's current value.
    virtual double GetComboValue(bool selected);
    /// Enter and Escape in this control's combo (see the class); true when taken.
    virtual bool FreeExposureHook(int32_t code, ZxWParam key, ZxLParam lParam);
    /// Switches the setting set unless the control is mode-locked. ZX_OK.
    int32_t ChangeMode(uint32_t mode) override;

    /// Adds an attached control to the class list (installing the hook with the
    /// first); false when it is listed already or the list is missing.
    static bool RegisterControl(CZxISControlComboFreeExposure* control);
    /// Removes a control (removing the hook with the last); false when not listed.
    static bool UnregisterControl(CZxISControlComboFreeExposure* control);
    /// The thread keyboard hook's procedure: asks the registered controls in turn.
    static ZxLResult FreeExposureHookProc(int32_t code, ZxWParam wParam, ZxLParam lParam);
    /// The combo's subclass procedure: a click opens the list centred on the value.
    static ZxLResult ComboProc(ZxHWnd combo, uint32_t message, ZxWParam wParam, ZxLParam lParam);

    /// The state last asked for by Enable.
    bool IsEnabled() const { return m_bEnabled; }
    /// True while the list is open.
    bool IsDroppedDown() const { return m_bDroppedDown; }
    /// True while a typed value is pending.
    bool IsEditing() const { return m_bEditing; }
    /// The setting set given to the constructor.
    uint32_t GetOwnMode() const { return m_uiOwnMode; }
    /// The combo (null while detached).
    ZxHWnd GetCombo() const { return m_hCombo; }

    /// The attached controls of the class (guarded by m_ControlLock).
    static CZxVector<CZxISControlComboFreeExposure*>* m_ControlList;
    /// Guards m_ControlList and m_KeyboardHook.
    static SZxFreeComboLock* m_ControlLock;
    /// The thread keyboard hook (HHOOK) while controls are attached.
    static void* m_KeyboardHook;

private:
    // The editing behaviour both free combos share lives in one place.
    template <class> friend struct ZxFreeComboOps;

    bool m_bEnabled;
    bool m_bUpdating;
    double m_dMin;
    double m_dMax;
    double m_dStep;
    double m_dOneFrameExp;
    bool m_bDroppedDown;
    bool m_bEditing;
    ZxHWnd m_hCombo;
    uint32_t m_uiMessage;
    bool m_bModeLocked;
    uint32_t m_uiOwnMode;
    void* m_pfnOldProc;

    void SelectNearest(double value, bool setText);
    void SelectNearestInList();
    void Commit();
    void Revert();
    CZxStringW Format(double value) const;
};

/// Sensor temperature, edited in an editable drop-down combo of every preset
/// of the property's list, shown with the decimals of the property's step.
/// Enter, Escape, the hook and the refusals as for the exposure combo; the
/// combo is not subclassed and the class has no mode lock.
class ZX_API CZxISControlComboFreeTemperature : public CZxISControl {
public:
    /// Binds the temperature property `name` (degrees Celsius) to the combo
    /// `controlId`; `message` as for the exposure combo.
    CZxISControlComboFreeTemperature(const wchar_t* name, uint32_t mode, int32_t controlId, uint32_t groupMask,
                                     uint32_t message);

    /// Creates the class's lock and list (once per process). Again: nothing.
    static void Init();
    /// Destroys the class's lock and list.
    static void Done();

    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Detach() override;
    ~CZxISControlComboFreeTemperature() override;
    int32_t Enable(bool enable) override;
    int32_t Show(bool show) override;
    int32_t Reinit() override;
    int32_t ResetToDefault() override;
    int32_t UpdateFromGeneric() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;
    /// The selected preset's value (`selected`) or the typed text's, clamped.
    virtual double GetComboValue(bool selected);
    /// Enter and Escape in this control's combo; true when taken.
    virtual bool FreeTemperatureHook(int32_t code, ZxWParam key, ZxLParam lParam);

    /// Adds an attached control to the class list (installing the hook with the
    /// first); false when it is listed already or the list is missing.
    static bool RegisterControl(CZxISControlComboFreeTemperature* control);
    /// Removes a control (removing the hook with the last); false when not listed.
    static bool UnregisterControl(CZxISControlComboFreeTemperature* control);
    /// The thread keyboard hook's procedure: asks the registered controls in turn.
    static ZxLResult FreeTemperatureHookProc(int32_t code, ZxWParam wParam, ZxLParam lParam);

    /// The state last asked for by Enable.
    bool IsEnabled() const { return m_bEnabled; }
    /// True while the list is open.
    bool IsDroppedDown() const { return m_bDroppedDown; }
    /// True while a typed value is pending.
    bool IsEditing() const { return m_bEditing; }
    /// Fraction digits of the shown temperatures (from the step).
    int32_t GetDecimals() const { return m_iDecimals; }
    /// The combo (null while detached).
    ZxHWnd GetCombo() const { return m_hCombo; }

    /// The attached controls of the class (guarded by m_ControlLock).
    static CZxVector<CZxISControlComboFreeTemperature*>* m_ControlList;
    /// Guards m_ControlList and m_KeyboardHook.
    static SZxFreeComboLock* m_ControlLock;
    /// The thread keyboard hook (HHOOK) while controls are attached.
    static void* m_KeyboardHook;

private:
    // The editing behaviour both free combos share lives in one place.
    template <class> friend struct ZxFreeComboOps;

    bool m_bEnabled;
    bool m_bUpdating;
    double m_dMin;
    double m_dMax;
    double m_dStep;
    int32_t m_iDecimals;
    bool m_bDroppedDown;
    bool m_bEditing;
    ZxHWnd m_hCombo;
    uint32_t m_uiMessage;

    void SelectNearest(double value, bool setText);
    void Commit();
    void Revert();
};

