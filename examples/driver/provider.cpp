#include "provider.h"

#include <cmath>
#include <cwchar>

#include <zxhost/exposure.h>

namespace {

const double kMinExposure = 0.1, kMaxExposure = 1000.0, kMinGain = 1.0, kMaxGain = 8.0;
const double kDefaultExposure = 10.0, kDefaultGain = 1.0;

// The exposure as the free exposure combo wants it: a range with presets.
CZxVariant ExposureDefinition()
{
    CZxVariant d = CZxVariant::MakeRecord(L"RZxRangeDoubleExposure");
    d[L"m_dMin"] = kMinExposure;
    d[L"m_dMax"] = kMaxExposure;
    d[L"m_dStep"] = 0.1;
    CZxVariant presets = CZxVariant::MakeArray();
    for (double ms : {0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 20.0, 50.0, 100.0, 200.0, 500.0, 1000.0}) {
        CZxVariant entry;
        entry[L"m_dValue"] = ms;
        entry[L"m_wstrText"] = ZX_ExposureToText(ms, -1.0);
        presets.Add(entry);
    }
    d[L"m_List"] = presets;
    d[L"m_dOneFrameExp"] = -1.0;   // no frame-time limit
    return d;
}

CZxVariant GainDefinition()
{
    CZxVariant d = CZxVariant::MakeRecord(L"RZxRangeDouble");
    d[L"m_dMin"] = kMinGain;
    d[L"m_dMax"] = kMaxGain;
    d[L"m_dStep"] = 0.1;
    return d;
}

bool Is(const CZxStringW& name, const wchar_t* what) { return std::wcscmp(name.GetString(), what) == 0; }

bool IsNumber(const CZxVariant& v)
{
    return v.GetKind() == CZxVariant::EKind::Double || v.GetKind() == CZxVariant::EKind::Int32;
}

} // namespace

void CExampleProvider::Current(double& exposureMs, double& gain, bool& autoExposure)
{
    std::lock_guard<std::mutex> lock(m_lock);
    exposureMs = m_device.exposureMs;
    gain = m_device.gain;
    autoExposure = m_autoExposure;
}

int CExampleProvider::PropGetDesc_WRP(uint32_t, const wchar_t* name, SZxGrabberPropertyDesc01& desc)
{
    const CZxStringW n(name ? name : L"");
    desc = SZxGrabberPropertyDesc01(n.GetString());
    if (Is(n, L"Exposure")) {
        desc.m_wstrText = L"Exposure Time";
        desc.varValDefinition = ExposureDefinition();
    } else if (Is(n, L"AutoExposure")) {
        desc.m_wstrText = L"Automatic";
        desc.varValDefinition = CZxVariant(false);
    } else if (Is(n, L"Gain")) {
        desc.m_wstrText = L"Gain";
        desc.varValDefinition = GainDefinition();
    } else {
        return ZX_E_FAIL;   // no such property
    }
    return ZX_OK;
}

int CExampleProvider::PropGetSingle_WRP(uint32_t, SZxGrabberPropertyValue& value)
{
    std::lock_guard<std::mutex> lock(m_lock);
    if (Is(value.m_wstrName, L"Exposure"))
        value.m_varValue = m_device.exposureMs;
    else if (Is(value.m_wstrName, L"AutoExposure"))
        value.m_varValue = m_autoExposure;
    else if (Is(value.m_wstrName, L"Gain"))
        value.m_varValue = m_device.gain;
    else
        return ZX_E_FAIL;
    return ZX_OK;
}

int CExampleProvider::PropGetDefaultSingle_WRP(uint32_t, SZxGrabberPropertyValue& value)
{
    if (Is(value.m_wstrName, L"Exposure"))
        value.m_varValue = kDefaultExposure;
    else if (Is(value.m_wstrName, L"AutoExposure"))
        value.m_varValue = false;
    else if (Is(value.m_wstrName, L"Gain"))
        value.m_varValue = kDefaultGain;
    else
        return ZX_E_FAIL;
    return ZX_OK;
}

int CExampleProvider::PropState_WRP(uint32_t, const SZxGrabberPropertyDesc01& desc, uint32_t& state)
{
    std::lock_guard<std::mutex> lock(m_lock);
    state = ZX_PROPSTATE_AVAILABLE;
    // Under auto exposure the exposure is the driver's to choose: shown, not edited.
    if (Is(desc.m_wstrName, L"Exposure") && m_autoExposure)
        state |= ZX_PROPSTATE_READONLY | ZX_PROPSTATE_CHANGING;
    return Is(desc.m_wstrName, L"Exposure") || Is(desc.m_wstrName, L"AutoExposure") || Is(desc.m_wstrName, L"Gain")
               ? ZX_OK
               : ZX_E_FAIL;
}

bool CExampleProvider::Write(const SZxGrabberPropertyValue& value, bool checkOnly)
{
    const CZxVariant& v = value.m_varValue;
    if (Is(value.m_wstrName, L"AutoExposure")) {
        if (v.GetKind() != CZxVariant::EKind::Bool)
            return false;
        if (!checkOnly)
            m_autoExposure = v.GetBool();
        return true;
    }
    const bool exposure = Is(value.m_wstrName, L"Exposure");
    if ((!exposure && !Is(value.m_wstrName, L"Gain")) || !IsNumber(v) || !std::isfinite(v.GetDouble()))
        return false;
    const double x = v.GetDouble();
    if (exposure ? (x < kMinExposure || x > kMaxExposure) : (x < kMinGain || x > kMaxGain))
        return false;
    if (!checkOnly)
        (exposure ? m_device.exposureMs : m_device.gain) = x;
    return true;
}

int CExampleProvider::PropSet_WRP(uint32_t, const CZxVector_SZxGrabberPropertyValue& values, SZxStateChangeInfo*,
                                  bool checkOnly)
{
    std::lock_guard<std::mutex> lock(m_lock);
    // All or nothing: every value is checked before the first is written.
    for (const SZxGrabberPropertyValue& v : values)
        if (!Write(v, true))
            return ZX_E_FAIL;
    if (!checkOnly)
        for (const SZxGrabberPropertyValue& v : values)
            Write(v, false);
    return ZX_OK;
}

int CExampleProvider::CameraSettingsGet_UNI_WRP(SZxGrabberCameraSettings& settings, uint32_t mask, bool current)
{
    settings = SZxGrabberCameraSettings();
    settings.m_uiMask = mask & ZX_SETTINGS_PROPERTIES;
    if (!(mask & ZX_SETTINGS_PROPERTIES))
        return ZX_OK;
    for (const wchar_t* name : {L"Exposure", L"AutoExposure", L"Gain"}) {
        SZxGrabberPropertyValue v(name);
        if (current)
            PropGetSingle_WRP(ZX_MODE_FAST, v);
        else
            PropGetDefaultSingle_WRP(ZX_MODE_FAST, v);
        settings.m_vecPropFast.Add(v);
        settings.m_vecPropQuality.Add(v);
    }
    return ZX_OK;
}

int CExampleProvider::CameraSettingsSet_UNI_WRP(const SZxGrabberCameraSettings& settings, uint32_t mask)
{
    if (!(mask & settings.m_uiMask & ZX_SETTINGS_PROPERTIES))
        return ZX_OK;
    return PropSet_WRP(ZX_MODE_FAST, settings.m_vecPropFast, nullptr, false);
}

int CExampleProvider::CameraSettingsSetDefaults_UNI_WRP()
{
    SZxGrabberCameraSettings defaults;
    CameraSettingsGet_UNI_WRP(defaults, ZX_SETTINGS_PROPERTIES, false);
    return CameraSettingsSet_UNI_WRP(defaults, ZX_SETTINGS_PROPERTIES);
}
