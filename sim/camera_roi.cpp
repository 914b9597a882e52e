// The simulated camera's region of interest, multi-view, capabilities and user parameters.
#include "camera_internal.h"
#include "zx/status.h"

// ---- Region of interest --------------------------------------------------------------

bool CZxSimCamera::ROIIsSupported_UNI_WRP()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"ROIIsSupported_UNI_WRP()");
    return m_bROISupported;
}

int CZxSimCamera::ROIGet(CZxRect& rect)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"ROIGet()");
    rect = m_rcROI;
    return m_bROISupported ? ZX_OK : ZX_E_NOTSUPPORTED;
}

int CZxSimCamera::ROISet(const CZxRect& rect)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"ROISet(" + Num(rect.left) + L", " + Num(rect.top) + L", " + Num(rect.right) + L", " + Num(rect.bottom) +
        L")");
    if (!m_bROISupported)
        return ZX_E_NOTSUPPORTED;
    m_rcROI = IntersectRect(rect, CZxRect(0, 0, kSimSensorWidth, kSimSensorHeight));
    return ZX_OK;
}

bool CZxSimCamera::ROIEnabled()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"ROIEnabled()");
    return m_bROIEnabled;
}

int CZxSimCamera::ROIEnable(bool enable)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"ROIEnable(") + (enable ? L"true" : L"false") + L")");
    if (!m_bROISupported)
        return ZX_E_NOTSUPPORTED;
    m_bROIEnabled = enable;
    return ZX_OK;
}

bool CZxSimCamera::MultiViewEnabled()
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"MultiViewEnabled()");
    return m_bMultiView;
}

// ---- Camera, user parameters, capabilities --------------------------------------------

int CZxSimCamera::CameraGet_WRP(SZxGrabberCameraDesc& camera)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"CameraGet_WRP()");
    camera = m_camera;
    return ZX_OK;
}

bool CZxSimCamera::CameraCapabilityIsSupported(uint32_t capability)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(L"CameraCapabilityIsSupported(" + Num(capability) + L")");
    return capability == ZX_CAMCAP_PREDEFINED_ROIS && m_bROISupported;
}

int CZxSimCamera::UserParamGet(const wchar_t* name, CZxVariant& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"UserParamGet(") + (name ? name : L"null") + L")");
    int status = 0;
    if (Failing(L"UserParamGet", status))
        return status;
    const std::wstring n = name ? name : L"";
    if (n == L"PredefinedROIArray")
        value = m_varPredefinedROIs;
    else if (n == L"IsQualityLivePossible")
        value = true;
    else
        return ZX_E_NOTSUPPORTED;
    return ZX_OK;
}

int CZxSimCamera::UserParamSet(const wchar_t* name, const CZxVariant& value)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"UserParamSet(") + (name ? name : L"null") + L", " + VariantText(value) + L")");
    int status = 0;
    if (Failing(L"UserParamSet", status))
        return status;
    if (!name || std::wstring(name) != L"PredefinedROIArray")
        return ZX_E_NOTSUPPORTED;
    if (!value.IsArray())
        return ZX_E_FAIL;
    m_varPredefinedROIs = value;
    return ZX_OK;
}

int CZxSimCamera::UserParamQuery(const wchar_t* name, void* record, uint32_t cbRecord)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    Log(std::wstring(L"UserParamQuery(") + (name ? name : L"null") + L")");
    int status = 0;
    if (Failing(L"UserParamQuery", status))
        return status;
    if (!name || std::wstring(name) != L"DefineRoiQuery")
        return ZX_E_NOTSUPPORTED;
    if (!record || cbRecord < sizeof(SZxUserParam_DefineRoiQuery))
        return ZX_E_FAIL;
    auto* q = static_cast<SZxUserParam_DefineRoiQuery*>(record);
    q->m_bAnswer = m_bROISupported && !m_bMultiView;
    return ZX_OK;
}
