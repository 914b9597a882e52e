// The reference driver's setup dialog. A driver writer starts here: derive from
// CZxGrabberUI_Base, create the dialog in DoInputSetup, hand every message to
// IS_Message first, bind one control per property in WM_INITDIALOG, and feed
// the live histogram from the acquisition thread with OnNewFrameHisto.
#include "zxsim/setupui.h"

#include "zx/advancedsetup.h"
#include "zx/dialoghelpers.h"
#include "zx/inputform.h"
#include "zx/iscontrols_choice.h"
#include "zx/iscontrols_command.h"
#include "zx/iscontrols_freecombo.h"
#include "zx/iscontrols_numeric.h"
#include "zxhost/system.h"
#include "zx/status.h"

namespace {
const UINT_PTR kPollTimer = 1;
// Group masks: controls the user edits (their enabled state follows the
// property's), controls the dialog's timer polls (an asynchronous command's
// progress, a value that follows others), and command buttons.
const uint32_t kGroupValues = 1;
const uint32_t kGroupPolled = 2;
const uint32_t kGroupCommands = 4;
const uint32_t kAll = 0xFFFFFFFFu;
// The set in use: controls follow the camera's fast/quality switch.
const uint32_t kModeInUse = 0;
// The private message the exposure combo's Enter and Escape come back with.
const uint32_t kExposureMessage = WM_APP + 10;
} // namespace

// ---- The camera as the driver presents it --------------------------------------------

CZxSimDriverCamera::CZxSimDriverCamera()
{
    SZxGrabberCameraDesc colour = DefaultCamera();
    colour.m_bMono = false;
    ZX_CopyBoundedW(colour.m_wszName, 64, L"SIM-C2048-0001");
    ZX_CopyBoundedW(colour.m_wszDisplayName, 64, L"Sim C2048");
    SetCamera(colour);
    // A specimen that fills the histogram at the default 20 ms, with a colour cast.
    Sensor().SetSceneBrightness(0.15 / 20.0);   // live view bins 2 x 2: four sites per pixel
    Sensor().SetResponse(1.0, 0.8, 0.55);
}

int CZxSimDriverCamera::InputSetupModelessHide()
{
    CZxSimCamera::InputSetupModelessHide();
    return m_pUI ? m_pUI->InputSetupModelessHide() : 0;
}

// ---- Opening the dialog -------------------------------------------------------------------

CZxSimSetupUI::CZxSimSetupUI(CZxSimDriverCamera& camera) : m_camera(camera), m_wrapper(this)
{
    m_page.wrapper = &m_wrapper;
    m_camera.m_pUI = this;
    // Auto exposure: one camera mode, exposure only, aiming the brightest
    // pixels at 85 % of full scale.
    m_ae.m_quantil = SZxAEQuantil{true, 1.0, 0};
    m_ae.m_setting1 = SZxAESetting{4.0, 1000.0, 1.0, 1.0, 0.5, 0.85, 0.9};
    m_ae.m_setting2 = SZxAESetting{4.0, 4000.0, 1.0, 1.0, 0.5, 0.85, 0.9};
    // Exposure from 0.05 ms to 10 s in 0.05 ms steps, black at 0, no gains of its own.
    SZxAECameraDesc& d = m_ae.m_cameraDesc[0];
    d.m_dMaxComplGain = d.m_dMaxWhiteBalanceGain = d.m_dMaxHardWhiteGain = d.m_dLowerGain = 1.0;
    d.m_dMaxLevel = d.m_dSensitivity = 1.0;
    d.m_dMaxFactor = d.m_dUpperGain = 16.0;
    d.m_dMinExposure = d.m_dExposureStep = 0.05;
    d.m_dMaxExposure = d.m_dExposureKnee = 10000.0;
    m_ae.m_uiCameraDescCount = 1;
}

CZxSimSetupUI::~CZxSimSetupUI()
{
    StopAcquisition();
    if (m_hDlg)
        DestroyWindow(m_hDlg);
    m_camera.m_pUI = nullptr;
}

// ---- The page, written once for both hosts -------------------------------------------

namespace {

void ShowFastQuality(HWND hwnd, CZxGenProvider_Low* provider)
{
    const bool quality = provider && provider->GetModeFQ() == ZX_MODE_QUALITY;
    CheckDlgButton(hwnd, IDC_ZX_FAST, quality ? BST_UNCHECKED : BST_CHECKED);
    CheckDlgButton(hwnd, IDC_ZX_QUALITY, quality ? BST_CHECKED : BST_UNCHECKED);
}

void OnPageInit(SZxSimSetupPage& page, HWND hwnd)
{
    IZxGrabberUI_Wrapper& host = *page.wrapper;
    CZxGenProvider_Low* provider = host.GetGeneric();
    // The host's own items first: IS_InitDialog checks the fast/quality box.
    host.IS_CheckFQSync(IDC_ZX_FQSYNC);
    host.IS_Help(IDC_ZX_HELP, L"Simulated camera setup");
    host.IS_InitDialog(reinterpret_cast<ZxHWnd>(hwnd), nullptr, nullptr);
    RECT area;
    GetWindowRect(GetDlgItem(hwnd, IDC_ZX_HISTO_AREA), &area);
    MapWindowPoints(nullptr, hwnd, reinterpret_cast<POINT*>(&area), 2);
    // The element has no histogram: the call does nothing there.
    host.IS_Histo(area.left, area.top, area.bottom - area.top - 20, IDC_ZX_HISTO_VIEW, IDC_ZX_RANGE_RED,
                  IDC_ZX_RANGE_GREEN, IDC_ZX_RANGE_BLUE);
    // Fast/quality copy, defaults, ROI (the element offers it), named settings.
    host.IS_CommandX(IDC_ZX_COMMANDMENU, 1 | 2 | 4 | 8);

    // One control per camera item, each bound by name. All are constructed
    // before any is attached (a class-wide keyboard hook starts with the first).
    struct Item {
        CZxISControl* control;
        int labelId;   // its label in the template, filled with the property's text
    };
    const Item items[] = {
        {new CZxISControlComboFreeExposure(zxsim::kPropExposure, kModeInUse, IDC_ZX_EXPOSURE, kGroupValues,
                                           kExposureMessage, false),
         IDC_ZX_LBL_EXPOSURE},
        {new CZxISControlCheck(zxsim::kPropAutoExposure, kModeInUse, IDC_ZX_AUTO, kGroupValues, false, true), 0},
        {new CZxISControlScrollDouble(zxsim::kPropGain, kModeInUse, IDC_ZX_GAIN, IDC_ZX_GAIN_TEXT, kGroupValues),
         IDC_ZX_LBL_GAIN},
        {new CZxISControlSpinInt32(zxsim::kPropOffset, kModeInUse, IDC_ZX_OFFSET_EDIT, kGroupValues), IDC_ZX_LBL_OFFSET},
        {new CZxISControlComboFormat(kModeInUse, IDC_ZX_FORMAT, kGroupValues, false), 0},
        {new CZxISControlComboBinning(L"", kModeInUse, IDC_ZX_BINNING, kGroupValues), 0},
        {new CZxISControlRadio(zxsim::kPropReadoutMode, kModeInUse, IDC_ZX_CHOICE1, IDC_ZX_CHOICE3, kGroupValues),
         IDC_ZX_LBL_CHOICE},
        {new CZxISControlStatic(zxsim::kPropFrameRate, kModeInUse, IDC_ZX_INFO, kGroupPolled,
                                ZX_GetTranslation(L"%.1lf frames/s", L"inputsetupcontrols")),
         IDC_ZX_LBL_INFO},
        {new CZxISControlPushCommand(zxsim::kCmdSnap, IDC_ZX_COMMAND1, kGroupCommands), 0},
        // The asynchronous command's button turns into "Cancel" while it runs.
        {new CZxISControlPushCommandAsync(zxsim::kCmdCalibrate, IDC_ZX_COMMAND2, kGroupCommands | kGroupPolled,
                                          nullptr, false),
         0},
    };
    SZxGrabberCommandDesc01 calibrate;
    if (provider && provider->CommandGetDesc_WRP(zxsim::kCmdCalibrate, calibrate) == 0)
        SetDlgItemTextW(hwnd, IDC_ZX_COMMAND2, ZX_GetTranslation(calibrate.m_wstrText, L"inputsetupcontrols"));
    CZxISControlList& controls = host.GetControls();
    for (const Item& item : items) {
        page.items.emplace_back(item.control);
        item.control->Attach(reinterpret_cast<ZxHWnd>(hwnd), provider, &controls);
        CZxStringW label;
        // Labels in the user's language, looked up as the controls look up driver texts.
        if (item.labelId && item.control->_GetPropertyText(label) == 0)
            SetDlgItemTextW(hwnd, item.labelId,
                            (ZX_GetTranslation(label, L"inputsetupcontrols").Std() + L":").c_str());
    }

    // Rows of the template this driver does not bind: label and items go.
    const std::vector<std::vector<int>> rows = {
        {IDC_ZX_AUTO},
        {IDC_ZX_GAIN, IDC_ZX_LBL_GAIN, IDC_ZX_GAIN_TEXT},
        {IDC_ZX_OFFSET_EDIT, IDC_ZX_LBL_OFFSET, IDC_ZX_OFFSET_SPIN},
        {IDC_ZX_FORMAT, IDC_ZX_LBL_FORMAT},
        {IDC_ZX_BINNING, IDC_ZX_LBL_BINNING},
        {IDC_ZX_CHOICE1, IDC_ZX_LBL_CHOICE, IDC_ZX_CHOICE2, IDC_ZX_CHOICE3},
        {IDC_ZX_COMMAND_STATUS},
    };
    for (const std::vector<int>& row : rows)
        if (!controls._FindControl(reinterpret_cast<ZxHWnd>(GetDlgItem(hwnd, row[0])), kAll))
            for (int id : row)
                ShowWindow(GetDlgItem(hwnd, id), SW_HIDE);
    ShowWindow(GetDlgItem(hwnd, IDC_ZX_ADVANCED), SW_SHOW);
    // The set in use as a pair of toggles drawn by the library.
    ZX_InitFastQualityButtons(hwnd, IDC_ZX_FAST, IDC_ZX_QUALITY);
    ShowFastQuality(hwnd, provider);
    for (int id : {IDC_ZX_FAST, IDC_ZX_QUALITY})
        ShowWindow(GetDlgItem(hwnd, id), SW_SHOW);
    if (page.element) {
        // Docked, the element has no OK and Cancel (every change is live) and no
        // histogram: the camera items move up into the histogram's place.
        for (int id : {IDOK, IDCANCEL, IDC_ZX_HISTO_AREA, IDC_ZX_HISTO_VIEW, IDC_ZX_RANGE_RED, IDC_ZX_RANGE_GREEN,
                       IDC_ZX_RANGE_BLUE})
            ShowWindow(GetDlgItem(hwnd, id), SW_HIDE);
        RECT histo{}, group{};
        GetWindowRect(GetDlgItem(hwnd, IDC_ZX_HISTO_AREA), &histo);
        GetWindowRect(GetDlgItem(hwnd, IDC_ZX_CAMERA_GROUP), &group);
        const int dy = group.top - histo.top;
        if (dy > 0) {
            for (HWND child = GetWindow(hwnd, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
                RECT r{};
                GetWindowRect(child, &r);
                MapWindowPoints(nullptr, hwnd, reinterpret_cast<POINT*>(&r), 2);
                SetWindowPos(child, nullptr, r.left, r.top - dy, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            }
            RECT w{};
            GetWindowRect(hwnd, &w);
            SetWindowPos(hwnd, nullptr, 0, 0, w.right - w.left, w.bottom - w.top - dy,
                         SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
    }

    controls.ReinitMany(kAll);
    controls.UpdateFromGenericMany(kAll);
    controls.UpdateStateMany(kGroupValues);
    // The caption: the driver's name before the template's own (translated) title.
    wchar_t title[128] = L"";
    GetWindowTextW(hwnd, title, 128);
    if (provider)
        SetWindowTextW(hwnd, (provider->GrabberDriverNameLocalisedGet().Std() + L" - " + title).c_str());
    SetTimer(hwnd, kPollTimer, 200, nullptr);
}

} // namespace

INT_PTR CALLBACK ZxSimSetupPageProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_INITDIALOG) {
        SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
        OnPageInit(*reinterpret_cast<SZxSimSetupPage*>(lParam), hwnd);
        return TRUE;
    }
    auto* page = reinterpret_cast<SZxSimSetupPage*>(GetWindowLongPtrW(hwnd, DWLP_USER));
    if (!page)
        return FALSE;
    IZxGrabberUI_Wrapper& host = *page->wrapper;

    // Keep the controls in step with the camera before the host passes the
    // change on (it may report the message handled).
    CZxISControlList& controls = host.GetControls();
    switch (msg) {
    case WM_IS_FORMATCHANGED:   // a format change, or Cancel's restore: everything may differ
        controls.ReinitMany(kAll);
        controls.UpdateFromGenericMany(kAll);
        controls.UpdateStateMany(kGroupValues);
        break;
    case WM_IS_STATECHANGE:
        if (lParam)
            controls.UpdateWithStateChangeInfo(*reinterpret_cast<const SZxStateChangeInfo*>(lParam));
        break;
    case WM_IS_PROPERTYCHANGED:   // states follow switches such as auto exposure
        controls.UpdateStateMany(kGroupValues);
        controls.UpdateFromGenericMany(kGroupPolled);
        break;
    case WM_IS_REFRESH:
        controls.UpdateFromGenericMany(kAll);
        controls.UpdateStateMany(kGroupValues);
        break;
    case WM_TIMER:
        if (wParam == kPollTimer) {
            controls.UpdateChangingPropsOnTimer();
            controls.UpdateFromGenericMany(kGroupPolled);
        }
        break;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_ZX_ADVANCED && HIWORD(wParam) == BN_CLICKED) {
            // The advanced setup writes the auto-exposure targets the acquisition reads.
            CZxGrabberAdvancedSetupUI advanced(host.GetGeneric());
            advanced.CreateUI(reinterpret_cast<ZxHWnd>(hwnd));
            return TRUE;
        }
        if ((LOWORD(wParam) == IDC_ZX_FAST || LOWORD(wParam) == IDC_ZX_QUALITY) && HIWORD(wParam) == BN_CLICKED) {
            // The application may refuse the switch (e.g. while it records).
            CZxGenProvider_Low* provider = host.GetGeneric();
            const uint32_t mode = LOWORD(wParam) == IDC_ZX_FAST ? ZX_MODE_FAST : ZX_MODE_QUALITY;
            if (provider && host.IS_FQModeChangeAllowed() && provider->SetModeFQ(mode) == 0) {
                controls.ReinitMany(kAll);
                controls.UpdateFromGenericMany(kAll);
                controls.UpdateStateMany(kGroupValues);
            }
            ShowFastQuality(hwnd, provider);
            return TRUE;
        }
        break;
    case WM_DESTROY:
        KillTimer(hwnd, kPollTimer);
        controls.DetachMany(kAll);
        controls.Clear();
        page->items.clear();
        break;
    default:
        break;
    }

    int64_t result = 0;
    if (host.IS_Message(reinterpret_cast<ZxHWnd>(hwnd), msg, int64_t(wParam), int64_t(lParam), &result, nullptr)) {
        // Colour messages answer with the brush itself; the rest through DWLP_MSGRESULT.
        if (msg == WM_CTLCOLORSTATIC)
            return INT_PTR(result);
        SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, LONG_PTR(result));
        return TRUE;
    }
    if (msg == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) && page->close) {
        page->close(LOWORD(wParam));
        return TRUE;
    }
    return FALSE;
}

int32_t CZxSimSetupUI::DoInputSetup(bool modal, ZxHWnd parent)
{
    HWND owner = reinterpret_cast<HWND>(parent);
    m_page.items.clear();
    m_page.close = [this](int id) {
        // The host has restored the settings of a cancelled modal dialog already.
        if (IS_IsModal())
            EndDialog(m_hDlg, id);
        else
            InputSetupModelessHide();
    };
    // The library's generic form in the application's language.
    HMODULE module = ZX_GetLibraryModule();
    const DLGTEMPLATE* form = ZX_LoadDialogTemplate(ZX_INPUT_FORM, module);
    if (!form)
        return ZX_E_WINDOW;
    if (modal)
        return int32_t(DialogBoxIndirectParamW(module, form, owner, &ZxSimSetupPageProc, LPARAM(&m_page)));
    HWND dlg = CreateDialogIndirectParamW(module, form, owner, &ZxSimSetupPageProc, LPARAM(&m_page));
    if (!dlg)
        return ZX_E_WINDOW;
    ShowWindow(dlg, SW_SHOW);
    return ZX_OK;
}

// ---- The GUI-element presentation ------------------------------------------------------

CZxSimSetupElement::CZxSimSetupElement(CZxSimDriverCamera& camera) : m_wrapper(this)
{
    Init(&camera);
    m_page.wrapper = &m_wrapper;
    m_page.element = true;
}

CZxSimSetupElement::~CZxSimSetupElement() { DestroyUI(); }

HWND CZxSimSetupElement::CreateElementWindow(HWND parent)
{
    m_page.items.clear();
    return CreateChildDialog(ZX_GetLibraryModule(), ZX_INPUT_FORM, parent, &ZxSimSetupPageProc, LPARAM(&m_page));
}

// ---- Acquisition ---------------------------------------------------------------------------

void CZxSimSetupUI::StartAcquisition(int periodMs)
{
    if (m_thread.joinable())
        return;
    m_stop = false;
    m_thread = std::thread([this, periodMs] {
        for (; !m_stop; Sleep(DWORD(periodMs)))
            AcquireFrame();
    });
}

void CZxSimSetupUI::StopAcquisition()
{
    m_stop = true;
    if (m_thread.joinable())
        m_thread.join();
}

void CZxSimSetupUI::AcquireFrame()
{
    std::unique_ptr<CZxGrabberSample01> frame(m_camera.Snap());
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    frame->GetPicBufNumbers(&w, &h, &bits, &comp);
    // Statistics over the specimen, whose brightness the user adjusts for.
    const SZxGrabberProbe probe = SZxGrabberProbe::Circle(w / 2, h / 2, h * 27 / 100);
    const SZxAEHistogram& hist = *m_live.Count(std::move(frame), &probe);
    OnNewFrameHisto(hist);
    ++m_frames;
    AutoExpose(hist);
}

void CZxSimSetupUI::AutoExpose(const SZxAEHistogram& hist)
{
    SZxGrabberPropertyValue on(zxsim::kPropAutoExposure), exposure(zxsim::kPropExposure), gain(zxsim::kPropGain);
    if (m_camera.PropGetSingle_WRP(kModeInUse, on) != 0 || !on.m_varValue.GetBool())
        return;
    if (m_camera.PropGetSingle_WRP(kModeInUse, exposure) != 0 || m_camera.PropGetSingle_WRP(kModeInUse, gain) != 0)
        return;
    // The advanced setup's targets: maximum exposure, target intensity and the
    // overillumination tolerance, read per frame so a change acts at once.
    SZxGrabberPropertyValue maxExposure(zxsim::kPropCaptureMaxExposure), quality(zxsim::kPropCaptureQuality),
        promile(zxsim::kPropQuantilPromile), pixels(zxsim::kPropQuantilPixels), relative(zxsim::kPropQuantilRelative);
    if (m_camera.PropGetSingle_WRP(kModeInUse, maxExposure) == 0 && maxExposure.m_varValue.GetDouble() > 0.0)
        m_ae.m_setting1.m_dMaxExposure = maxExposure.m_varValue.GetDouble();
    if (m_camera.PropGetSingle_WRP(kModeInUse, quality) == 0 && quality.m_varValue.GetDouble() > 10.0) {
        m_ae.m_setting1.m_dHighTarget = quality.m_varValue.GetDouble() / 100.0;
        m_ae.m_setting1.m_dMiddleTarget = m_ae.m_setting1.m_dHighTarget - 0.05;
    }
    if (m_camera.PropGetSingle_WRP(kModeInUse, promile) == 0 && m_camera.PropGetSingle_WRP(kModeInUse, pixels) == 0 &&
        m_camera.PropGetSingle_WRP(kModeInUse, relative) == 0)
        m_ae.m_quantil = SZxAEQuantil{relative.m_varValue.GetBool(), promile.m_varValue.GetDouble(),
                                      uint32_t(pixels.m_varValue.GetDouble())};
    SZxAEFrameDesc frame;
    frame.m_dExposure = exposure.m_varValue.GetDouble();
    frame.m_dFactor = gain.m_varValue.GetDouble();
    m_ae.ComputeAE(true, ZX_AE_EXPOSURE, frame, hist);
    // Small corrections are noise; writing them would only flicker the control.
    const double old = exposure.m_varValue.GetDouble();
    if (frame.m_dExposure > 0.0 && (frame.m_dExposure > old * 1.02 || frame.m_dExposure < old * 0.98)) {
        CZxVector_SZxGrabberPropertyValue values(128);
        values.Add(SZxGrabberPropertyValue(zxsim::kPropExposure, CZxVariant(frame.m_dExposure)));
        m_camera.PropSet_WRP(kModeInUse, values, nullptr, false);
    }
}
