// The capture-button record and its lite-variant form.
#include "zx/capturebutton.h"

#include "zx/status.h"
#include "zxhost/litevariant.h"
#include "zxhost/provider.h"

namespace {
const wchar_t kLevel[] = L"SZxCaptureButtonSetup_Param";

// Copies a name into its field; overlong names are cut, the last slot is always the terminator.
void CopyName(wchar_t* field, size_t cch, const wchar_t* text)
{
    ZX_CopyBoundedW(field, cch, text);
    field[cch - 1] = L'\0';
}
} // namespace

SZxCaptureButtonSetup_Param::SZxCaptureButtonSetup_Param()
    : m_iPerformCapture(1), m_bUseSpecifiedCamera(false), m_wszSpecifiedCamera{}, m_bUseSpecifiedOC(false),
      m_wszSpecifiedOC_Camera1{}, m_wszSpecifiedOC_Camera2{}, m_bRestoreDeviceAfterCapture(false),
      m_bConfirmationSound(true)
{
}

SZxCaptureButtonSetup_Param::SZxCaptureButtonSetup_Param(int32_t performCapture, bool useSpecifiedCamera,
                                                         const wchar_t* camera, bool useSpecifiedOC,
                                                         const wchar_t* ocCamera1, const wchar_t* ocCamera2,
                                                         bool restoreDevice, bool confirmationSound)
    : m_iPerformCapture(performCapture), m_bUseSpecifiedCamera(useSpecifiedCamera), m_wszSpecifiedCamera{},
      m_bUseSpecifiedOC(useSpecifiedOC), m_wszSpecifiedOC_Camera1{}, m_wszSpecifiedOC_Camera2{},
      m_bRestoreDeviceAfterCapture(restoreDevice), m_bConfirmationSound(confirmationSound)
{
    // The fields start empty, so a null text leaves an empty name rather than garbage.
    if (camera)
        CopyName(m_wszSpecifiedCamera, CAMERA_CCH, camera);
    if (ocCamera1)
        CopyName(m_wszSpecifiedOC_Camera1, OC_CCH, ocCamera1);
    if (ocCamera2)
        CopyName(m_wszSpecifiedOC_Camera2, OC_CCH, ocCamera2);
}

int SZxCaptureButtonSetup_Param::SaveToLiteVariant(const SZxCaptureButtonSetup_Param& r, CZxLiteVariantW& w)
{
    if (w.LevelBegin(kLevel) != 0)
        return ZX_E_FAIL;
    w.Set(r.m_bConfirmationSound, L"m_bConfirmationSound");
    w.Set(r.m_bRestoreDeviceAfterCapture, L"m_bRestoreDeviceAfterCapture");
    w.Set(r.m_bUseSpecifiedCamera, L"m_bUseSpecifiedCamera");
    w.Set(r.m_bUseSpecifiedOC, L"m_bUseSpecifiedOC");
    w.Set(static_cast<int>(r.m_iPerformCapture), L"m_iPerformCapture");
    w.Set(r.m_wszSpecifiedCamera, L"m_wszSpecifiedCamera");
    w.Set(r.m_wszSpecifiedOC_Camera1, L"m_wszSpecifiedOC_Camera1");
    w.Set(r.m_wszSpecifiedOC_Camera2, L"m_wszSpecifiedOC_Camera2");
    w.LevelEnd();
    return ZX_OK;
}

int SZxCaptureButtonSetup_Param::LoadFromLiteVariant(SZxCaptureButtonSetup_Param& r, CZxLiteVariantR& rd)
{
    if (rd.LevelBegin(kLevel) != 0)
        return ZX_E_FAIL;
    // A missing sound key reads as off: records written before the key existed
    // had no sound.
    r.m_bConfirmationSound = rd.Get(L"m_bConfirmationSound", false);
    r.m_bRestoreDeviceAfterCapture = rd.Get(L"m_bRestoreDeviceAfterCapture", false);
    r.m_bUseSpecifiedCamera = rd.Get(L"m_bUseSpecifiedCamera", false);
    r.m_bUseSpecifiedOC = rd.Get(L"m_bUseSpecifiedOC", false);
    r.m_iPerformCapture = rd.Get(L"m_iPerformCapture", 1);
    CopyName(r.m_wszSpecifiedCamera, CAMERA_CCH, rd.Get(L"m_wszSpecifiedCamera", L""));
    CopyName(r.m_wszSpecifiedOC_Camera1, OC_CCH, rd.Get(L"m_wszSpecifiedOC_Camera1", L""));
    CopyName(r.m_wszSpecifiedOC_Camera2, OC_CCH, rd.Get(L"m_wszSpecifiedOC_Camera2", L""));
    rd.LevelEnd();
    return ZX_OK;
}
