// The plug-in itself: the setup dialog on the library's INPUT_FORM template,
// the acquisition step (histogram, live display, auto exposure) and the entry
// point the host application calls.
#include <windows.h>

#include <memory>
#include <vector>

#include <zx/autoexposure.h>
#include <zx/grabberuibase.h>
#include <zx/histogram.h>
#include <zx/inputform.h>
#include <zx/iscontrols_choice.h>
#include <zx/iscontrols_freecombo.h>
#include <zx/iscontrols_numeric.h>
#include <zx/status.h>
#include <zx/version.h>

#include "device.h"
#include "exampledriver.h"
#include "provider.h"

namespace {

const uint32_t kAll = 0xFFFFFFFFu;
const uint32_t kModeInUse = 0;                  // controls follow the camera's live/capture switch
const uint32_t kExposureMessage = WM_APP + 10;  // the exposure combo's Enter and Escape come back as this

// ---- The setup dialog -------------------------------------------------------------------

class CExampleSetupUI : public CZxGrabberUI_Base {
public:
    int32_t DoInputSetup(bool modal, ZxHWnd parent) override
    {
        HWND owner = reinterpret_cast<HWND>(parent);
        if (modal)
            return int32_t(DialogBoxParamW(ZX_GetLibraryModule(), ZX_INPUT_FORM, owner, &Proc, LPARAM(this)));
        HWND dlg = CreateDialogParamW(ZX_GetLibraryModule(), ZX_INPUT_FORM, owner, &Proc, LPARAM(this));
        if (!dlg)
            return ZX_E_WINDOW;
        ShowWindow(dlg, SW_SHOW);
        return ZX_OK;
    }

private:
    void OnInit(HWND hwnd)
    {
        IS_InitDialog(reinterpret_cast<ZxHWnd>(hwnd), nullptr, nullptr);
        RECT area;
        GetWindowRect(GetDlgItem(hwnd, IDC_ZX_HISTO_AREA), &area);
        MapWindowPoints(nullptr, hwnd, reinterpret_cast<POINT*>(&area), 2);
        IS_Histo(area.left, area.top, area.bottom - area.top - 20, IDC_ZX_HISTO_VIEW, IDC_ZX_RANGE_RED,
                 IDC_ZX_RANGE_GREEN, IDC_ZX_RANGE_BLUE);
        // One control per property, bound by name; all constructed before the first is attached.
        m_controls.emplace_back(new CZxISControlComboFreeExposure(L"Exposure", kModeInUse, IDC_ZX_EXPOSURE, 1,
                                                                  kExposureMessage, false));
        m_controls.emplace_back(new CZxISControlCheck(L"AutoExposure", kModeInUse, IDC_ZX_AUTO, 1, false, true));
        m_controls.emplace_back(
            new CZxISControlScrollDouble(L"Gain", kModeInUse, IDC_ZX_GAIN, IDC_ZX_GAIN_TEXT, 1));
        for (auto& control : m_controls)
            control->Attach(reinterpret_cast<ZxHWnd>(hwnd), GetProvider(), &GetControls());
        // The template's other items are for cameras with more to set.
        for (int id : {IDC_ZX_LBL_OFFSET, IDC_ZX_OFFSET_EDIT, IDC_ZX_OFFSET_SPIN, IDC_ZX_LBL_FORMAT, IDC_ZX_FORMAT,
                       IDC_ZX_LBL_BINNING, IDC_ZX_BINNING, IDC_ZX_LBL_CHOICE, IDC_ZX_CHOICE1, IDC_ZX_CHOICE2,
                       IDC_ZX_CHOICE3, IDC_ZX_LBL_INFO, IDC_ZX_INFO, IDC_ZX_COMMAND1, IDC_ZX_COMMAND2,
                       IDC_ZX_COMMAND_STATUS, IDC_ZX_FQSYNC, IDC_ZX_COMMANDMENU, IDC_ZX_HELP})
            ShowWindow(GetDlgItem(hwnd, id), SW_HIDE);
        SetDlgItemTextW(hwnd, IDC_ZX_LBL_EXPOSURE, L"Exposure Time:");
        SetWindowTextW(hwnd, L"Example Camera - Input Setup");
        Refresh();
    }

    void Refresh()
    {
        GetControls().UpdateFromGenericMany(kAll);
        GetControls().UpdateStateMany(kAll);
    }

    static INT_PTR CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
    {
        if (msg == WM_INITDIALOG) {
            SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
            reinterpret_cast<CExampleSetupUI*>(lParam)->OnInit(hwnd);
            return TRUE;
        }
        auto* self = reinterpret_cast<CExampleSetupUI*>(GetWindowLongPtrW(hwnd, DWLP_USER));
        if (!self)
            return FALSE;
        if (msg == WM_IS_REFRESH || msg == WM_IS_PROPERTYCHANGED)
            self->Refresh();   // the driver or another control changed values
        if (msg == WM_DESTROY) {
            self->GetControls().DetachMany(kAll);
            self->GetControls().Clear();
            self->m_controls.clear();
        }
        // Every message goes to the library first.
        INT_PTR result = 0;
        if (self->IS_Message(hwnd, msg, wParam, lParam, &result, nullptr)) {
            if (msg == WM_CTLCOLORSTATIC)
                return result;
            SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, LONG_PTR(result));
            return TRUE;
        }
        if (msg == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
            if (self->IS_IsModal())
                EndDialog(hwnd, LOWORD(wParam));
            else
                self->InputSetupModelessHide();
            return TRUE;
        }
        return FALSE;
    }

    std::vector<std::unique_ptr<CZxISControl>> m_controls;
};

// The application's event sink. This plug-in has no application above it that
// wants the dialog's events: -1 leaves every one of them to the library.
int32_t OnEvent(IZxGrabberUI::EZxEvent, ZxHWnd, int64_t, void*) { return -1; }

// ---- The driver ------------------------------------------------------------------------------

class CExampleDriver final : public IZxExampleDriver {
public:
    CExampleDriver() : m_provider(m_device), m_hist(int(CExampleDevice::kBits), true, false)
    {
        m_ui.Init(&m_provider, &OnEvent);
        // Auto exposure: exposure only, the brightest per-mille of the pixels aimed at 85 % of full scale.
        m_ae.m_quantil = SZxAEQuantil{true, 1.0, 0};
        m_ae.m_setting1 = SZxAESetting{4.0, 1000.0, 1.0, 1.0, 0.5, 0.85, 0.9};
        m_ae.m_setting2 = m_ae.m_setting1;
        SZxAECameraDesc& d = m_ae.m_cameraDesc[0];
        d.m_dMaxComplGain = 1.0;
        d.m_dMaxFactor = 8.0;
        d.m_dMinExposure = 0.1;
        d.m_dMaxExposure = 1000.0;
        d.m_dExposureKnee = 1000.0;
        d.m_dExposureStep = 0.1;
        d.m_dMaxLevel = 1.0;
        d.m_dSensitivity = 1.0;
        d.m_dUpperGain = 8.0;
        d.m_dLowerGain = 1.0;
        m_ae.m_uiCameraDescCount = 1;
    }

    int OpenSetup(HWND parent) override { return m_ui.InputSetupModelessShow(reinterpret_cast<ZxHWnd>(parent)); }
    HWND SetupWindow() override { return m_ui.GetHDlg(); }
    void CloseSetup() override { m_ui.InputSetupModelessHide(); }
    void Release() override { delete this; }

    int Grab(SZxExampleFrame& out) override
    {
        double exposure = 0.0, gain = 0.0;
        bool autoExposure = false;
        m_provider.Current(exposure, gain, autoExposure);
        m_device.exposureMs = exposure;
        m_device.gain = gain;
        const std::vector<uint16_t>& pixels = m_device.Expose();

        SZxPicBuf frame;
        frame.uiWidth = CExampleDevice::kWidth;
        frame.uiHeight = CExampleDevice::kHeight;
        frame.uiRowBytes = CExampleDevice::kWidth * 2;
        frame.uiBits = CExampleDevice::kBits;
        frame.uiComp = 1;
        frame.ui64DataSize = pixels.size() * 2;
        frame.pData = const_cast<uint16_t*>(pixels.data());
        ZX_ComputeHistogramAE(&m_hist, &frame, nullptr);

        // The live histogram of the open dialog (any thread may call this).
        m_ui.OnNewFrameHisto(m_hist);

        if (autoExposure) {
            SZxAEFrameDesc next;
            next.m_dExposure = exposure;
            next.m_dFactor = gain;
            m_ae.ComputeAE(true, ZX_AE_EXPOSURE, next, m_hist);
            CZxVector_SZxGrabberPropertyValue values(1);
            values.Add(SZxGrabberPropertyValue(L"Exposure", CZxVariant(next.m_dExposure)));
            if (m_provider.PropSet_WRP(kModeInUse, values, nullptr, false) == ZX_OK && m_ui.GetHDlg())
                PostMessageW(m_ui.GetHDlg(), WM_IS_REFRESH, WPARAM(-1), 0);
        }
        out.pixels = pixels.data();
        out.width = CExampleDevice::kWidth;
        out.height = CExampleDevice::kHeight;
        out.bits = CExampleDevice::kBits;
        out.exposureMs = exposure;
        out.gain = gain;
        return ZX_OK;
    }

private:
    CExampleDevice m_device;
    CExampleProvider m_provider;
    CExampleSetupUI m_ui;
    CZxAutoExposure m_ae;
    SZxAEHistogram m_hist;
};

} // namespace

extern "C" __declspec(dllexport) IZxExampleDriver* ZxExampleDriverOpen(uint32_t interfaceVersion)
{
    if (interfaceVersion != ZX_EXAMPLE_DRIVER_INTERFACE)
        return nullptr;
    // The library found at run time must have the interface these headers
    // describe: the same major version (before 1.0, the same minor).
    if (ZX_GetVersion() / 100 != ZX_VERSION / 100)
        return nullptr;
    return new CExampleDriver();
}
