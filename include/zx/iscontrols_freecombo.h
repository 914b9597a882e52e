// Free-entry combos for the exposure time and the sensor temperature: editable
// drop-down combos where the user picks a preset from the property's list or
// types any value, which is parsed, clamped and written to the driver; and the
// two temperature text conversions. The controls are Windows only.
#pragma once
#include "zx/inputsetupcontrols.h"
#include "zxhost/vector.h"

/// The critical section guarding a class's attached controls and its hook.
struct SZxFreeComboLock;

/// The temperature as text: "%.*f" with `decimals` (no unit) when decimals >= 0,
/// else "%g °C".
ZX_API void ZX_TemperatureToText(CZxStringW& text, double value, int32_t decimals);
/// The leading number of `text` (the rest is ignored; no number, NaN or a null
/// text give 0.0) clamped into [minimum, maximum]. There is no failure result.
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
/// UpdateFromGeneric refuses with -10.
class ZX_API CZxISControlComboFreeExposure : public CZxISControl {
public:
    /// `message` is the private message (WM_USER or above) the control sends its
    /// dialog; with `modeLocked` ChangeMode leaves the base's mode alone.
    CZxISControlComboFreeExposure(const wchar_t* name, uint32_t mode, int32_t controlId, uint32_t groupMask,
                                  uint32_t message, bool modeLocked);

    /// Creates the class's lock and list (once per process; the library calls
    /// them at load and unload). Again: nothing.
    static void Init();
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
    int32_t ChangeMode(uint32_t mode) override;

    static bool RegisterControl(CZxISControlComboFreeExposure* control);
    static bool UnregisterControl(CZxISControlComboFreeExposure* control);
    /// The thread keyboard hook's procedure: asks the registered controls in turn.
    static ZxLResult FreeExposureHookProc(int32_t code, ZxWParam wParam, ZxLParam lParam);
    /// The combo's subclass procedure: a click opens the list centred on the value.
    static ZxLResult ComboProc(ZxHWnd combo, uint32_t message, ZxWParam wParam, ZxLParam lParam);

    bool IsEnabled() const { return m_bEnabled; }
    bool IsDroppedDown() const { return m_bDroppedDown; }
    bool IsEditing() const { return m_bEditing; }
    uint32_t GetOwnMode() const { return m_uiOwnMode; }
    ZxHWnd GetCombo() const { return m_hCombo; }

    static CZxVector<CZxISControlComboFreeExposure*>* m_ControlList;
    static SZxFreeComboLock* m_ControlLock;
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
    CZxISControlComboFreeTemperature(const wchar_t* name, uint32_t mode, int32_t controlId, uint32_t groupMask,
                                     uint32_t message);

    static void Init();
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
    virtual bool FreeTemperatureHook(int32_t code, ZxWParam key, ZxLParam lParam);

    static bool RegisterControl(CZxISControlComboFreeTemperature* control);
    static bool UnregisterControl(CZxISControlComboFreeTemperature* control);
    static ZxLResult FreeTemperatureHookProc(int32_t code, ZxWParam wParam, ZxLParam lParam);

    bool IsEnabled() const { return m_bEnabled; }
    bool IsDroppedDown() const { return m_bDroppedDown; }
    bool IsEditing() const { return m_bEditing; }
    int32_t GetDecimals() const { return m_iDecimals; }
    ZxHWnd GetCombo() const { return m_hCombo; }

    static CZxVector<CZxISControlComboFreeTemperature*>* m_ControlList;
    static SZxFreeComboLock* m_ControlLock;
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

