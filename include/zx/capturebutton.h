// The device capture button: what pressing a camera's hardware capture button
// does, the record drivers keep in their settings, and its setup dialog.
#pragma once
#include <cstdint>

#include "zx/export.h"
#include "zxhost/export.h"
#include "zxhost/string.h"
#include "zxhost/vector.h"

class CZxGenericProviderGrabber;
class CZxLiteVariantW;
class CZxLiteVariantR;

/// One device's capture-button setup. A plain record, copied whole.
struct ZX_API SZxCaptureButtonSetup_Param {
    enum { CAMERA_CCH = 64, OC_CCH = 256 };

    /// 1 = capture, 2 = automatic capture; a value below 1 switches the button
    /// off and its magnitude keeps the chosen kind.
    int32_t m_iPerformCapture;
    bool m_bUseSpecifiedCamera;                 ///< always use the named camera, not the active one
    wchar_t m_wszSpecifiedCamera[CAMERA_CCH];
    bool m_bUseSpecifiedOC;                     ///< switch to an optical configuration first
    wchar_t m_wszSpecifiedOC_Camera1[OC_CCH];
    wchar_t m_wszSpecifiedOC_Camera2[OC_CCH];
    bool m_bRestoreDeviceAfterCapture;
    bool m_bConfirmationSound;

    /// Capture, no camera or configuration named, confirmation sound on.
    SZxCaptureButtonSetup_Param();
    /// A null text leaves that field as it was, so pass texts to a fresh record.
    SZxCaptureButtonSetup_Param(int32_t performCapture, bool useSpecifiedCamera, const wchar_t* camera,
                                bool useSpecifiedOC, const wchar_t* ocCamera1, const wchar_t* ocCamera2,
                                bool restoreDevice, bool confirmationSound);

    /// Writes the level "SZxCaptureButtonSetup_Param": 0, or -9 when the level cannot be opened.
    static int SaveToLiteVariant(const SZxCaptureButtonSetup_Param& record, CZxLiteVariantW& writer);
    /// Reads that level with defaults for missing keys (every switch off, capture
    /// kind 1, empty names); overlong names are cut to their field. -9 without the
    /// level, and the record is then untouched.
    static int LoadFromLiteVariant(SZxCaptureButtonSetup_Param& record, CZxLiteVariantR& reader);
};

/// Input of the capture-button dialog: the record it edits, the grabber whose
/// cameras it offers (may be null) and the optical configuration names offered
/// for camera 1 (m_vecOC[0]) and camera 2 (m_vecOC[1]).
struct ZX_API SZxCaptureButtonDlgParams {
    CZxVector<CZxStringW> m_vecOC[5];
    CZxGenericProviderGrabber* m_pGrabber;
    SZxCaptureButtonSetup_Param& m_rParam;

    SZxCaptureButtonDlgParams(CZxGenericProviderGrabber* grabber, SZxCaptureButtonSetup_Param& param)
        : m_pGrabber(grabber), m_rParam(param) {}
    SZxCaptureButtonDlgParams(const SZxCaptureButtonDlgParams&) = default;
};

#if defined(_WIN32)
/// Shows the modal dialog "CAPTURE_BUTTON_SETUP" in the user's language and
/// writes the record on OK: 0 for OK, -9 otherwise (the record is then unchanged).
ZX_API int ZX_CaptureButtonSetup(ZxHWnd parent, SZxCaptureButtonDlgParams& params);
#endif
