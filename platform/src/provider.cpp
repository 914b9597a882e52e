#include "zxhost/grabber.h"
#include "zxhost/provider.h"

CZxGenProvider_Low::~CZxGenProvider_Low() = default;
CZxGenericProviderGrabber::~CZxGenericProviderGrabber() = default;
int CZxGenericProviderGrabber::CameraOrientationGet_WRP(const wchar_t*, int32_t&) { return -2; }
int CZxGenericProviderGrabber::CameraOrientationSet_WRP(const wchar_t*, int32_t) { return -2; }

CZxRect CZxGrabberLib::GetSensorRect(const SZxGrabberFormatValue& format)
{
    // Binning factors are small whole numbers; anything below 1 reads unbinned.
    const int32_t b = format.m_dBinning >= 1.0 && format.m_dBinning < 64.0
                          ? static_cast<int32_t>(format.m_dBinning) : 1;
    const CZxRect& r = format.m_rcRect;
    return CZxRect(r.left * b, r.top * b, r.right * b, r.bottom * b);
}
