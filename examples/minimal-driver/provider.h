// The driver's side of the property interface. A real driver answers from its
// camera; this one has no properties, formats or commands, keeps one record of
// camera settings and counts how often the setup UI reads and writes it.
#pragma once
#include <zx/status.h>
#include <zxhost/provider.h>

class CMinimalProvider : public CZxGenProvider_Low {
public:
    int settingsReads = 0;
    int settingsWrites = 0;

    int PropGetDesc_WRP(uint32_t, const wchar_t*, SZxGrabberPropertyDesc01&) override { return kNotSupported; }
    int PropGetSingle_WRP(uint32_t, SZxGrabberPropertyValue&) override { return kNotSupported; }
    int PropGetDefaultSingle_WRP(uint32_t, SZxGrabberPropertyValue&) override { return kNotSupported; }
    int PropState_WRP(uint32_t, const SZxGrabberPropertyDesc01&, uint32_t& state) override
    {
        state = 0;
        return kNotSupported;
    }
    int PropSet_WRP(uint32_t, const CZxVector_SZxGrabberPropertyValue&, SZxStateChangeInfo*, bool) override
    {
        return kNotSupported;
    }
    int CommandGetDesc_WRP(const wchar_t*, SZxGrabberCommandDesc01&) override { return kNotSupported; }
    int Command_WRP(SZxGrabberCommandValue&, bool, SZxStateChangeInfo*, bool, CZxGrabberSample01**) override
    {
        return kNotSupported;
    }
    int Command_Status_WRP(const wchar_t*, double&, CZxStringW&) override { return kNotSupported; }
    int Command_Abort_WRP() override { return kNotSupported; }
    void SetGeneralCallback(PFN_ZxGeneralCallback, void*) override {}
    int FireGeneralCallback(int, void*) override { return ZX_OK; }
    int FormatNext_WRP(SZxGrabberFormatValue&) override { return kNotSupported; }
    int FormatGet_WRP(uint32_t, SZxGrabberFormatValue&) override { return kNotSupported; }
    int FormatSet_WRP(uint32_t, const SZxGrabberFormatValue&, SZxStateChangeInfo*, bool) override
    {
        return kNotSupported;
    }
    int FormatGetFromSettings_WRP(uint32_t, const SZxGrabberCameraSettings&, SZxGrabberFormatValue&) override
    {
        return kNotSupported;
    }
    uint32_t GetModeFQ() override { return 1; }  // fast (live)
    int SetModeFQ(uint32_t) override { return ZX_OK; }
    bool IsModeFQSynchronized() override { return true; }
    int ModeFQSynchronize(bool) override { return ZX_OK; }
    int CameraSettingsGet_UNI_WRP(SZxGrabberCameraSettings& settings, uint32_t, bool) override
    {
        ++settingsReads;
        settings = m_settings;
        return ZX_OK;
    }
    int CameraSettingsSet_UNI_WRP(const SZxGrabberCameraSettings& settings, uint32_t) override
    {
        ++settingsWrites;
        m_settings = settings;
        return ZX_OK;
    }
    int CameraSettingsSetDefaults_UNI_WRP() override { return kNotSupported; }
    SZxGrabberCameraSettings* NamedSettingsNext(CZxStringW&) override { return nullptr; }
    int NamedSettingsAdd(const wchar_t*, const SZxGrabberCameraSettings&) override { return kNotSupported; }
    int NamedSettingsRemove(const wchar_t*) override { return kNotSupported; }
    bool ROIIsSupported_UNI_WRP() override { return false; }
    int ROIGet(CZxRect&) override { return kNotSupported; }
    int ROISet(const CZxRect&) override { return kNotSupported; }
    bool ROIEnabled() override { return false; }
    int ROIEnable(bool) override { return kNotSupported; }
    bool MultiViewEnabled() override { return false; }
    int CameraGet_WRP(SZxGrabberCameraDesc&) override { return kNotSupported; }
    bool CameraCapabilityIsSupported(uint32_t) override { return false; }
    int UserParamGet(const wchar_t*, CZxVariant&) override { return kNotSupported; }
    int UserParamSet(const wchar_t*, const CZxVariant&) override { return kNotSupported; }
    int UserParamQuery(const wchar_t*, void*, uint32_t) override { return kNotSupported; }
    CZxStringW GrabberDriverGetClassName() override { return CZxStringW(L"CMinimalDriver"); }
    CZxStringW GrabberDriverGetClassNameLogical() override { return CZxStringW(L"CMinimalDriver"); }
    CZxStringW GrabberDriverNameLocalisedGet() override { return CZxStringW(L"Minimal driver"); }
    int InputSetupModelessHide() override { return ZX_OK; }
    int GetSecGrabberInstance() override { return ZX_OK; }
    CZxGenericProviderGrabber* GetGrabber() override { return nullptr; }

private:
    static constexpr int kNotSupported = ZX_E_NOTSUPPORTED;
    SZxGrabberCameraSettings m_settings;
};
