// The simulated camera's region of interest, multi-view, capabilities and user parameters.
#include "camera_internal.h"
#include "zx/status.h"

// ---- Region of interest --------------------------------------------------------------

bool CZxSimCamera::ROIIsSupported_UNI_WRP()
{
    const COperation op(*this, L"ROIIsSupported_UNI_WRP");
    return m_bROISupported;
}

int CZxSimCamera::ROIGet(CZxRect& rect)
{
    const COperation op(*this, L"ROIGet");
    rect = m_rcROI;
    return m_bROISupported ? ZX_OK : ZX_E_NOTSUPPORTED;
}

int CZxSimCamera::ROISet(const CZxRect& rect)
{
    const COperation op(*this, L"ROISet",
                        Num(rect.left) + L", " + Num(rect.top) + L", " + Num(rect.right) + L", " + Num(rect.bottom));
    if (!m_bROISupported)
        return ZX_E_NOTSUPPORTED;
    m_rcROI = IntersectRect(rect, CZxRect(0, 0, kSimSensorWidth, kSimSensorHeight));
    return ZX_OK;
}

bool CZxSimCamera::ROIEnabled()
{
    const COperation op(*this, L"ROIEnabled");
    return m_bROIEnabled;
}

int CZxSimCamera::ROIEnable(bool enable)
{
    const COperation op(*this, L"ROIEnable", enable ? L"true" : L"false");
    if (!m_bROISupported)
        return ZX_E_NOTSUPPORTED;
    m_bROIEnabled = enable;
    return ZX_OK;
}

bool CZxSimCamera::MultiViewEnabled()
{
    const COperation op(*this, L"MultiViewEnabled");
    return m_bMultiView;
}

// ---- Camera, user parameters, capabilities --------------------------------------------

int CZxSimCamera::CameraGet_WRP(SZxGrabberCameraDesc& camera)
{
    const COperation op(*this, L"CameraGet_WRP");
    camera = m_camera;
    return ZX_OK;
}

bool CZxSimCamera::CameraCapabilityIsSupported(uint32_t capability)
{
    const COperation op(*this, L"CameraCapabilityIsSupported", Num(capability));
    return capability == ZX_CAMCAP_PREDEFINED_ROIS && m_bROISupported;
}

int CZxSimCamera::UserParamGet(const wchar_t* name, CZxVariant& value)
{
    COperation op(*this, L"UserParamGet", Arg(name));
    if (const auto failure = op.Planned())
        return *failure;
    const std::wstring n = name ? name : L"";
    if (n == zxsim::kParamPredefinedROIs)
        value = m_varPredefinedROIs;
    else if (n == zxsim::kParamQualityLivePossible)
        value = true;
    else
        return ZX_E_NOTSUPPORTED;
    return ZX_OK;
}

int CZxSimCamera::UserParamSet(const wchar_t* name, const CZxVariant& value)
{
    COperation op(*this, L"UserParamSet", Arg(name) + L", " + VariantText(value));
    if (const auto failure = op.Planned())
        return *failure;
    if (!name || std::wstring(name) != zxsim::kParamPredefinedROIs)
        return ZX_E_NOTSUPPORTED;
    if (!value.IsArray())
        return ZX_E_FAIL;
    m_varPredefinedROIs = value;
    return ZX_OK;
}

int CZxSimCamera::UserParamQuery(const wchar_t* name, void* record, uint32_t cbRecord)
{
    COperation op(*this, L"UserParamQuery", Arg(name));
    if (const auto failure = op.Planned())
        return *failure;
    if (!name || std::wstring(name) != zxsim::kParamDefineRoiQuery)
        return ZX_E_NOTSUPPORTED;
    if (!record || cbRecord < sizeof(SZxUserParam_DefineRoiQuery))
        return ZX_E_FAIL;
    auto* q = static_cast<SZxUserParam_DefineRoiQuery*>(record);
    q->m_bAnswer = m_bROISupported && !m_bMultiView;
    return ZX_OK;
}
