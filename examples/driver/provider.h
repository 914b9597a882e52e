// The driver's side of the property interface, over the example device: three
// properties (Exposure, AutoExposure, Gain), one setting set for live and
// capture, no formats, commands, ROI or named settings. The setup dialog's
// controls read and write the device only through these calls.
#pragma once
#include <mutex>

#include <zx/status.h>
#include <zxhost/provider.h>

#include "device.h"

class CExampleProvider : public CZxGenProvider_Low {
public:
    explicit CExampleProvider(CExampleDevice& device) : m_device(device) {}

    /// The camera's values as one consistent pair, for the acquisition side.
    void Current(double& exposureMs, double& gain, bool& autoExposure);

    // ---- Properties ----
    int PropGetDesc_WRP(uint32_t mode, const wchar_t* name, SZxGrabberPropertyDesc01& desc) override;
    int PropGetSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value) override;
    int PropGetDefaultSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value) override;
    int PropState_WRP(uint32_t mode, const SZxGrabberPropertyDesc01& desc, uint32_t& state) override;
    int PropSet_WRP(uint32_t mode, const CZxVector_SZxGrabberPropertyValue& values, SZxStateChangeInfo* info,
                    bool checkOnly) override;
    // ---- Camera settings: what a modal dialog's Cancel restores ----
    int CameraSettingsGet_UNI_WRP(SZxGrabberCameraSettings& settings, uint32_t mask, bool current) override;
    int CameraSettingsSet_UNI_WRP(const SZxGrabberCameraSettings& settings, uint32_t mask) override;
    int CameraSettingsSetDefaults_UNI_WRP() override;

    // ---- What this device does not have ----
    int CommandGetDesc_WRP(const wchar_t*, SZxGrabberCommandDesc01&) override { return ZX_E_NOTSUPPORTED; }
    int Command_WRP(SZxGrabberCommandValue&, bool, SZxStateChangeInfo*, bool, CZxGrabberSample01**) override
    {
        return ZX_E_NOTSUPPORTED;
    }
    int Command_Status_WRP(const wchar_t*, double&, CZxStringW&) override { return ZX_E_NOTSUPPORTED; }
    int Command_Abort_WRP() override { return ZX_E_NOTSUPPORTED; }
    void SetGeneralCallback(PFN_ZxGeneralCallback, void*) override {}
    int FireGeneralCallback(int, void*) override { return ZX_OK; }
    int FormatNext_WRP(SZxGrabberFormatValue&) override { return ZX_E_NOTSUPPORTED; }
    int FormatGet_WRP(uint32_t, SZxGrabberFormatValue&) override { return ZX_E_NOTSUPPORTED; }
    int FormatSet_WRP(uint32_t, const SZxGrabberFormatValue&, SZxStateChangeInfo*, bool) override
    {
        return ZX_E_NOTSUPPORTED;
    }
    int FormatGetFromSettings_WRP(uint32_t, const SZxGrabberCameraSettings&, SZxGrabberFormatValue&) override
    {
        return ZX_E_NOTSUPPORTED;
    }
    uint32_t GetModeFQ() override { return ZX_MODE_FAST; }
    int SetModeFQ(uint32_t) override { return ZX_OK; }
    bool IsModeFQSynchronized() override { return true; }   // one set serves live and capture
    int ModeFQSynchronize(bool) override { return ZX_OK; }
    SZxGrabberCameraSettings* NamedSettingsNext(CZxStringW&) override { return nullptr; }
    int NamedSettingsAdd(const wchar_t*, const SZxGrabberCameraSettings&) override { return ZX_E_NOTSUPPORTED; }
    int NamedSettingsRemove(const wchar_t*) override { return ZX_E_NOTSUPPORTED; }
    bool ROIIsSupported_UNI_WRP() override { return false; }
    int ROIGet(CZxRect&) override { return ZX_E_NOTSUPPORTED; }
    int ROISet(const CZxRect&) override { return ZX_E_NOTSUPPORTED; }
    bool ROIEnabled() override { return false; }
    int ROIEnable(bool) override { return ZX_E_NOTSUPPORTED; }
    bool MultiViewEnabled() override { return false; }
    int CameraGet_WRP(SZxGrabberCameraDesc&) override { return ZX_E_NOTSUPPORTED; }
    bool CameraCapabilityIsSupported(uint32_t) override { return false; }
    int UserParamGet(const wchar_t*, CZxVariant&) override { return ZX_E_NOTSUPPORTED; }
    int UserParamSet(const wchar_t*, const CZxVariant&) override { return ZX_E_NOTSUPPORTED; }
    int UserParamQuery(const wchar_t*, void*, uint32_t) override { return ZX_E_NOTSUPPORTED; }
    CZxStringW GrabberDriverGetClassName() override { return CZxStringW(L"CExampleDriver"); }
    CZxStringW GrabberDriverGetClassNameLogical() override { return CZxStringW(L"CExampleDriver"); }
    CZxStringW GrabberDriverNameLocalisedGet() override { return CZxStringW(L"Example Camera"); }
    int InputSetupModelessHide() override { return ZX_OK; }
    int GetSecGrabberInstance() override { return 0; }
    CZxGenericProviderGrabber* GetGrabber() override { return nullptr; }

private:
    /// Checks and writes one value; false when the name or the value is not the property's.
    bool Write(const SZxGrabberPropertyValue& value, bool checkOnly);

    CExampleDevice& m_device;
    bool m_autoExposure = false;
    std::mutex m_lock;   // the dialog (UI thread) and the acquisition both use the device
};
