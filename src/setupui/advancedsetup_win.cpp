#include "zx/advancedsetup.h"

#include <atomic>

#include "common/langdialog_win.h"
#include "zx/dialoghelpers.h"
#include "zx/grabberuibase.h"
#include "zx/iscontrols_choice.h"
#include "zx/iscontrols_editexposure.h"
#include "zx/iscontrols_numeric.h"
#include "zx/property.h"
#include "setupui/propaccess.h"
#include "zxhost/alignwnd.h"

namespace {
// The set in use: the dialog follows the camera's fast/quality switch.
const uint32_t kModeInUse = 0;
const uint32_t kAll = 0xFFFFFFFFu;
// The message the edits send back when Enter or Escape was pressed in them.
const uint32_t kEditNotify = WM_APP + 20;
// The relative tolerance edit's scale: per mille in the driver, percent on screen.
const double kPromileToPercent = 0.1;
// Centred over the owner (the window alignment's code), kept on its monitor.
const UINT kCentred = 6;

// Whether the driver uses time-based speed-up: decided by the dialog last opened.
std::atomic<bool> g_timeBased{false};

// Defaults of the Default button (overridable through ResetToDefault): no live
// acceleration, the brightest pixels aimed at 90 % of full scale, at most 2 s
// of exposure, and one per mille (0.1 %) of the counted pixels - or 100 pixels
// - allowed to clip, counted relatively.
const int32_t kDefaultLiveSpeedUp = 1;
const int32_t kDefaultSpeedUpTime = 250;
const int32_t kDefaultQuality = 90;
const double kDefaultMaxExposure = 2000.0;
const double kDefaultPromile = 1.0;
const int32_t kDefaultPixels = 100;
const bool kDefaultRelative = true;
} // namespace

CZxGrabberAdvancedSetupUI::CZxGrabberAdvancedSetupUI(CZxGenProvider_Low* provider)
    : m_hDlg(nullptr), m_pProvider(provider), m_pSpeedUp(nullptr), m_pQuality(nullptr), m_pMaxExposure(nullptr),
      m_pPromile(nullptr), m_pPixels(nullptr), m_pReserved(nullptr)
{
}

CZxGrabberAdvancedSetupUI::~CZxGrabberAdvancedSetupUI()
{
    if (m_hDlg)
        DestroyWindow(m_hDlg);
    m_controls.DetachMany(kAll);
    m_controls.Clear();
    DeleteControls();
}

void CZxGrabberAdvancedSetupUI::DeleteControls()
{
    for (CZxISControl** c : {&m_pSpeedUp, &m_pQuality, &m_pMaxExposure, &m_pPromile, &m_pPixels, &m_pReserved}) {
        delete *c;
        *c = nullptr;
    }
}

bool CZxGrabberAdvancedSetupUI::IsTimeBasedSpeedUp() { return g_timeBased; }

int32_t CZxGrabberAdvancedSetupUI::CreateUI(ZxHWnd parent)
{
    if (m_hDlg)
        return -10;
    CZxISControlEditBase::Init();   // the edits' registry; nothing when it exists
    return int32_t(zx::ModalDialogInLanguage(ZX_ADVANCED_SETUP, reinterpret_cast<HWND>(parent), &DialogProc,
                                             LPARAM(this)));
}

INT_PTR CALLBACK CZxGrabberAdvancedSetupUI::DialogProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_INITDIALOG)
        SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
    auto* self = reinterpret_cast<CZxGrabberAdvancedSetupUI*>(GetWindowLongPtrW(hwnd, DWLP_USER));
    if (!self)
        return FALSE;
    LRESULT result = 0;
    if (!self->DlgProcVirtual(hwnd, msg, wParam, lParam, &result))
        return FALSE;
    if (msg == WM_INITDIALOG)
        return INT_PTR(result);
    SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, LONG_PTR(result));
    return TRUE;
}

void CZxGrabberAdvancedSetupUI::AttachControls(uint64_t timeBased)
{
    DeleteControls();
    if (timeBased)
        m_pSpeedUp = new CZxISControlComboTextInt32(L"SpeedUpTime", kModeInUse, IDC_ZX_AS_SPEEDUPTIME, 1, false);
    else
        m_pSpeedUp = new CZxISControlSliderListInt32(L"LiveSpeedUp", kModeInUse, IDC_ZX_AS_SPEEDUP, 1);
    m_pQuality = new CZxISControlComboTextInt32(L"CaptureQuality", kModeInUse, IDC_ZX_AS_QUALITY, 1, false);
    m_pMaxExposure = new CZxISControlEditExposure(L"CaptureMaxExposure", kModeInUse, IDC_ZX_AS_MAXEXPOSURE, 1,
                                                  kEditNotify, false);
    // "QuantilPromile" is per mille; the template labels its edit "%", so it shows percent.
    m_pPromile = new CZxISControlEditDouble(L"QuantilPromile", kModeInUse, IDC_ZX_AS_PROMILE, 1, kEditNotify, false,
                                            kPromileToPercent);
    m_pPixels = new CZxISControlEditInt32(L"QuantilPixels", kModeInUse, IDC_ZX_AS_PIXELS, 1, kEditNotify, false);
    const ZxHWnd dlg = reinterpret_cast<ZxHWnd>(m_hDlg);
    for (CZxISControl* c : {m_pSpeedUp, m_pQuality, m_pMaxExposure, m_pPromile, m_pPixels})
        c->Attach(dlg, m_pProvider, &m_controls);

    if (timeBased) {
        // The combo takes the slider's place; the slider and its ticks go.
        RECT place{9, 16, 0, 0};
        MapDialogRect(m_hDlg, &place);
        SetWindowPos(GetDlgItem(m_hDlg, IDC_ZX_AS_SPEEDUPTIME), nullptr, place.left, place.top, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        ShowWindow(GetDlgItem(m_hDlg, IDC_ZX_AS_SPEEDUP), SW_HIDE);
        for (int id = IDC_ZX_AS_TICK_FIRST; id < IDC_ZX_AS_TICK_FIRST + 7; ++id)
            ShowWindow(GetDlgItem(m_hDlg, id), SW_HIDE);
    } else {
        ShowWindow(GetDlgItem(m_hDlg, IDC_ZX_AS_SPEEDUPTIME), SW_HIDE);
    }
    m_controls.ReinitMany(kAll);
    m_controls.UpdateFromGenericMany(kAll);
    m_controls.UpdateStateMany(kAll);
}

void CZxGrabberAdvancedSetupUI::ShowRelative(bool relative)
{
    CheckRadioButton(m_hDlg, IDC_ZX_AS_RELATIVE, IDC_ZX_AS_ABSOLUTE,
                     relative ? IDC_ZX_AS_RELATIVE : IDC_ZX_AS_ABSOLUTE);
    // Only the tolerance that counts is editable; the other keeps its value for
    // when the user switches back.
    if (m_pPromile)
        m_pPromile->Enable(relative);
    if (m_pPixels)
        m_pPixels->Enable(!relative);
}

void CZxGrabberAdvancedSetupUI::ResetToOld()
{
    SetPropInt32(g_timeBased ? L"SpeedUpTime" : L"LiveSpeedUp", m_old.m_iSpeedUp);
    SetPropInt32(L"CaptureQuality", m_old.m_iCaptureQuality);
    SetPropDouble(L"CaptureMaxExposure", m_old.m_dCaptureMaxExposure);
    SetPropDouble(L"QuantilPromile", m_old.m_dQuantilPromile);
    SetPropInt32(L"QuantilPixels", m_old.m_iQuantilPixels);
    SetPropBool(L"QuantilRelative", m_old.m_bQuantilRelative);
}

void CZxGrabberAdvancedSetupUI::ResetToDefault()
{
    // A time-based driver keeps time-based speed-up: 0 would switch it off.
    if (g_timeBased)
        SetPropInt32(L"SpeedUpTime", kDefaultSpeedUpTime);
    else
        SetPropInt32(L"LiveSpeedUp", kDefaultLiveSpeedUp);
    SetPropInt32(L"CaptureQuality", kDefaultQuality);
    SetPropDouble(L"CaptureMaxExposure", kDefaultMaxExposure);
    SetPropDouble(L"QuantilPromile", kDefaultPromile);
    SetPropInt32(L"QuantilPixels", kDefaultPixels);
    SetPropBool(L"QuantilRelative", kDefaultRelative);
    m_controls.UpdateStateMany(kAll);
    m_controls.UpdateFromGenericMany(kAll);
    ShowRelative(kDefaultRelative);
}

bool CZxGrabberAdvancedSetupUI::DlgProcVirtual(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (msg) {
    case WM_INITDIALOG: {
        m_hDlg = hwnd;
        const int32_t speedUpTime = GetPropInt32(L"SpeedUpTime");
        g_timeBased = speedUpTime > 0;
        m_old.m_iSpeedUp = g_timeBased ? speedUpTime : GetPropInt32(L"LiveSpeedUp");
        m_old.m_iCaptureQuality = GetPropInt32(L"CaptureQuality");
        m_old.m_dCaptureMaxExposure = GetPropDouble(L"CaptureMaxExposure");
        m_old.m_dQuantilPromile = GetPropDouble(L"QuantilPromile");
        m_old.m_iQuantilPixels = GetPropInt32(L"QuantilPixels");
        m_old.m_bQuantilRelative = GetPropBool(L"QuantilRelative");
        m_controls.Clear();
        AttachControls(g_timeBased ? 1 : 0);
        ShowRelative(m_old.m_bQuantilRelative);
        ZX_AlignWnd(hwnd, GetWindow(hwnd, GW_OWNER), kCentred, ZX_ALIGN_KEEP_ON_SCREEN);
        *result = TRUE;
        return true;
    }
    case WM_COMMAND: {
        const int id = LOWORD(wParam), code = HIWORD(wParam);
        if (id == IDOK && code == 0) {
            EndDialog(hwnd, 1);
            return true;
        }
        if (id == IDCANCEL && code == 0) {
            ResetToOld();
            EndDialog(hwnd, 2);
            return true;
        }
        if (id == IDC_ZX_AS_DEFAULT && code == 0) {
            ResetToDefault();
            return true;
        }
        if ((id == IDC_ZX_AS_RELATIVE || id == IDC_ZX_AS_ABSOLUTE) && code == BN_CLICKED) {
            SetPropBool(L"QuantilRelative", id == IDC_ZX_AS_RELATIVE);
            ShowRelative(id == IDC_ZX_AS_RELATIVE);
            return true;
        }
        break;
    }
    case WM_ZX_ADVANCED_REREAD: {
        // The switch first, so the refresh already sees the driver's choice; the
        // enabling rule again after it, since the refresh enables both edits.
        const bool relative = GetPropBool(L"QuantilRelative");
        CheckRadioButton(hwnd, IDC_ZX_AS_RELATIVE, IDC_ZX_AS_ABSOLUTE,
                         relative ? IDC_ZX_AS_RELATIVE : IDC_ZX_AS_ABSOLUTE);
        m_controls.UpdateStateMany(kAll);
        m_controls.UpdateFromGenericMany(kAll);
        ShowRelative(relative);
        return true;
    }
    case WM_DESTROY:
        m_controls.DetachMany(kAll);
        m_controls.Clear();
        m_hDlg = nullptr;
        return false;
    default:
        break;
    }
    ZxLResult r = 0;
    const bool handled = m_controls.DlgProcHookMany(reinterpret_cast<ZxHWnd>(hwnd), msg, ZxWParam(wParam),
                                                    ZxLParam(lParam), &r, nullptr, kAll);
    *result = LRESULT(r);
    return handled;
}

// ---- Properties by name ----

bool CZxGrabberAdvancedSetupUI::GetPropBool(const wchar_t* name) { return zx::GetPropBool(m_pProvider, kModeInUse, name); }

int32_t CZxGrabberAdvancedSetupUI::GetPropInt32(const wchar_t* name)
{
    return zx::GetPropInt32(m_pProvider, kModeInUse, name);
}

double CZxGrabberAdvancedSetupUI::GetPropDouble(const wchar_t* name)
{
    return zx::GetPropDouble(m_pProvider, kModeInUse, name);
}

CZxStringW CZxGrabberAdvancedSetupUI::GetPropStringW(const wchar_t* name)
{
    return zx::GetPropStringW(m_pProvider, kModeInUse, name);
}

void CZxGrabberAdvancedSetupUI::SetPropBool(const wchar_t* name, bool value)
{
    zx::WriteProp(m_pProvider, kModeInUse, name, CZxVariant(value));
}

void CZxGrabberAdvancedSetupUI::SetPropInt32(const wchar_t* name, int32_t value)
{
    zx::WriteProp(m_pProvider, kModeInUse, name, CZxVariant(static_cast<int>(value)));
}

void CZxGrabberAdvancedSetupUI::SetPropDouble(const wchar_t* name, double value)
{
    zx::WriteProp(m_pProvider, kModeInUse, name, CZxVariant(value));
}

void CZxGrabberAdvancedSetupUI::SetPropStringW(const wchar_t* name, const CZxStringW& value)
{
    zx::WriteProp(m_pProvider, kModeInUse, name, CZxVariant(value));
}
