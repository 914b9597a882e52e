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
    enum {
        CAMERA_CCH = 64 /**< characters of the camera name */,
        OC_CCH = 256 /**< characters of a configuration name */
    };

    /// 1 = capture, 2 = automatic capture; a value below 1 switches the button
    /// off and its magnitude keeps the chosen kind.
    int32_t m_iPerformCapture;
    bool m_bUseSpecifiedCamera;                 ///< always use the named camera, not the active one
    /// Name of the camera to capture with when m_bUseSpecifiedCamera is set.
    wchar_t m_wszSpecifiedCamera[CAMERA_CCH];
    bool m_bUseSpecifiedOC;                     ///< switch to an optical configuration first
    /// Optical configuration to switch to for camera 1 (empty: none).
    wchar_t m_wszSpecifiedOC_Camera1[OC_CCH];
    /// Optical configuration to switch to for camera 2 (empty: none).
    wchar_t m_wszSpecifiedOC_Camera2[OC_CCH];
    /// Restore the device state after the capture event was processed.
    bool m_bRestoreDeviceAfterCapture;
    /// Play a sound when the button triggered a capture.
    bool m_bConfirmationSound;

    /// Capture, no camera or configuration named, confirmation sound on.
    SZxCaptureButtonSetup_Param();
    /// A null text leaves that field as it was, so pass texts to a fresh record.
    SZxCaptureButtonSetup_Param(int32_t performCapture, bool useSpecifiedCamera, const wchar_t* camera,
                                bool useSpecifiedOC, const wchar_t* ocCamera1, const wchar_t* ocCamera2,
                                bool restoreDevice, bool confirmationSound);

    /// Writes the level "SZxCaptureButtonSetup_Param": ZX_OK, or ZX_E_FAIL when the level cannot be opened. UI thread.
    static int SaveToLiteVariant(const SZxCaptureButtonSetup_Param& record, CZxLiteVariantW& writer);
    /// Reads that level with defaults for missing keys (every switch off, capture
    /// kind 1, empty names); overlong names are cut to their field. ZX_OK, or ZX_E_FAIL without the
    /// level, and the record is then untouched.
    static int LoadFromLiteVariant(SZxCaptureButtonSetup_Param& record, CZxLiteVariantR& reader);
};

/// Input of the capture-button dialog: the record it edits, the grabber whose
/// cameras it offers (may be null) and the optical configuration names offered
/// for camera 1 (m_vecOC[0]) and camera 2 (m_vecOC[1]).
struct ZX_API SZxCaptureButtonDlgParams {
    /// Optical configuration names offered: [0] for camera 1, [1] for camera 2;
    /// the dialog reads no others. An empty list disables that choice.
    CZxVector<CZxStringW> m_vecOC[5];
    /// Grabber whose cameras the dialog offers; null offers none.
    CZxGenericProviderGrabber* m_pGrabber;
    /// The record the dialog edits; written only on OK.
    SZxCaptureButtonSetup_Param& m_rParam;

    /// Edits `param` with the cameras of `grabber`, with empty configuration lists.
    SZxCaptureButtonDlgParams(CZxGenericProviderGrabber* grabber, SZxCaptureButtonSetup_Param& param)
        : m_pGrabber(grabber), m_rParam(param) {}
    /// Copies the lists; the copy edits the same record.
    SZxCaptureButtonDlgParams(const SZxCaptureButtonDlgParams&) = default;
};

#if defined(_WIN32)
/// Shows the modal dialog "CAPTURE_BUTTON_SETUP" in the user's language and
/// writes the record on OK: ZX_OK for OK, ZX_E_FAIL otherwise (the record is then
/// unchanged). UI thread only.
ZX_API int ZX_CaptureButtonSetup(ZxHWnd parent, SZxCaptureButtonDlgParams& params);
#endif
