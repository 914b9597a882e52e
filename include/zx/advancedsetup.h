// The advanced auto-exposure setup: live acceleration, target intensity,
// maximum exposure and the overillumination tolerance, each bound to a driver
// property; changes take effect at once and Cancel writes back what was in
// force when the dialog opened. Windows only.
#pragma once
#include <windows.h>

#include <cstdint>
#include "zx/export.h"
#include "zx/inputsetupcontrols.h"
#include "zxhost/provider.h"
#include "zxhost/string.h"

/// Resource name of the advanced setup's dialog template.
#define ZX_ADVANCED_SETUP L"ADVANCED_SETUP"

/// Item ids of "ADVANCED_SETUP".
enum : int {
    IDC_ZX_AS_MAXEXPOSURE = 1001,  ///< "CaptureMaxExposure"
    IDC_ZX_AS_PROMILE = 1002,      ///< "QuantilPromile" (relative tolerance, %)
    IDC_ZX_AS_PIXELS = 1003,       ///< "QuantilPixels" (absolute tolerance)
    IDC_ZX_AS_TICK_FIRST = 1201,   ///< 1201..1207: the slider's tick labels
    /// Button "Default": writes the default values.
    IDC_ZX_AS_DEFAULT = 2001,
    IDC_ZX_AS_RELATIVE = 2401,     ///< "QuantilRelative" true
    IDC_ZX_AS_ABSOLUTE = 2402,     ///< "QuantilRelative" false
    IDC_ZX_AS_QUALITY = 2801,      ///< "CaptureQuality"
    IDC_ZX_AS_SPEEDUPTIME = 2802,  ///< "SpeedUpTime" (time-based speed-up only)
    IDC_ZX_AS_SPEEDUP = 3201,      ///< "LiveSpeedUp" slider
};

/// Private message: re-read "QuantilRelative" and refresh every control (a
/// driver posts it when it changed the settings behind the dialog's back).
const UINT WM_ZX_ADVANCED_REREAD = 1302;

/// The values Cancel writes back, read when the dialog opened.
struct SZxAdvancedSetupValues {
    int32_t m_iSpeedUp = 0;          ///< "SpeedUpTime" or "LiveSpeedUp", whichever is in use
    /// "CaptureQuality": target maximum intensity, an entry of its list.
    int32_t m_iCaptureQuality = 0;
    /// "CaptureMaxExposure": longest exposure the auto exposure may use.
    double m_dCaptureMaxExposure = 0.0;
    /// "QuantilPromile": tolerated overexposed area, per mille.
    double m_dQuantilPromile = 0.0;
    /// "QuantilPixels": tolerated overexposed area in pixels.
    int32_t m_iQuantilPixels = 0;
    /// "QuantilRelative": the tolerance is relative (per mille) rather than in pixels.
    bool m_bQuantilRelative = false;
};

/// The advanced auto-exposure setup dialog over a driver's provider: each item
/// bound to its property, changes written at once, Cancel restoring the values
/// read on opening.
/// @note UI thread only.
class ZX_API CZxGrabberAdvancedSetupUI {
public:
    /// Edits the properties of `provider` (not owned) in its current set.
    explicit CZxGrabberAdvancedSetupUI(CZxGenProvider_Low* provider);
    /// Deletes the controls it created.
    virtual ~CZxGrabberAdvancedSetupUI();
    /// Not copyable: the dialog refers to this object.
    CZxGrabberAdvancedSetupUI(const CZxGrabberAdvancedSetupUI&) = delete;
    /// Not copyable.
    CZxGrabberAdvancedSetupUI& operator=(const CZxGrabberAdvancedSetupUI&) = delete;

    /// Runs the dialog modally over `parent`: 1 for OK, 2 for Cancel, else the
    /// dialog service's failure.
    int32_t CreateUI(ZxHWnd parent);
    /// True while the dialog is open.
    bool IsCreated() const { return m_hDlg != nullptr; }
    /// The dialog procedure: finds the object (the creation parameter) and calls DlgProcVirtual.
    static INT_PTR CALLBACK DialogProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
    /// True when the message was handled, with the dialog result in *result.
    virtual bool DlgProcVirtual(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, LRESULT* result);

    // Properties by name, of the set in use.
    /// The "bool" value of `name`; false when unreadable.
    bool GetPropBool(const wchar_t* name);
    /// The "zx_int32" value of `name`; 0 when unreadable.
    int32_t GetPropInt32(const wchar_t* name);
    /// The "double" value of `name`; 0.0 when unreadable.
    double GetPropDouble(const wchar_t* name);
    /// The "CZxStringW" value of `name`; empty when unreadable.
    CZxStringW GetPropStringW(const wchar_t* name);
    /// Writes a "bool" value; the provider's result is dropped.
    void SetPropBool(const wchar_t* name, bool value);
    /// Writes a "zx_int32" value; the provider's result is dropped.
    void SetPropInt32(const wchar_t* name, int32_t value);
    /// Writes a "double" value; the provider's result is dropped.
    void SetPropDouble(const wchar_t* name, double value);
    /// Writes a "CZxStringW" value; the provider's result is dropped.
    void SetPropStringW(const wchar_t* name, const CZxStringW& value);

    /// The open dialog, or null.
    HWND GetHDlg() const { return m_hDlg; }
    /// The dialog's control list.
    CZxISControlList& GetControls() { return m_controls; }
    /// The values read when the dialog opened (what Cancel writes back).
    const SZxAdvancedSetupValues& GetOldValues() const { return m_old; }
    /// Whether the dialog last opened found a time-based speed-up ("SpeedUpTime" > 0).
    static bool IsTimeBasedSpeedUp();

protected:
    /// Creates and attaches the six controls; `timeBased` non-zero puts the
    /// "SpeedUpTime" combo where the "LiveSpeedUp" slider was.
    virtual void AttachControls(uint64_t timeBased);
    /// Writes the defaults (see docs/architecture.md) and refreshes.
    virtual void ResetToDefault();
    /// Writes the values read at start, speed-up first.
    virtual void ResetToOld();
    /// Checks the radio of "QuantilRelative" and enables the edit it chooses.
    void ShowRelative(bool relative);

    /// The open dialog, or null.
    HWND m_hDlg;
    /// The provider (not owned).
    CZxGenProvider_Low* m_pProvider;
    CZxISControl* m_pSpeedUp;        ///< slider (3201) or time combo (2802)
    /// Combo of "CaptureQuality" (2801).
    CZxISControl* m_pQuality;
    /// Exposure edit of "CaptureMaxExposure" (1001).
    CZxISControl* m_pMaxExposure;
    /// Edit of "QuantilPromile" (1002).
    CZxISControl* m_pPromile;
    /// Edit of "QuantilPixels" (1003).
    CZxISControl* m_pPixels;
    CZxISControl* m_pReserved;       ///< the slot of a driver's own sixth control; null here
    /// The values read when the dialog opened.
    SZxAdvancedSetupValues m_old;
    /// The dialog's bound controls.
    CZxISControlList m_controls;

private:
    void DeleteControls();
};
