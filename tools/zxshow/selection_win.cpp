// Scenes "units", "cameras", "unitsandcameras", "previewpad" and "capturebutton": the selection
// dialogs and the capture-button setup over the simulated grabber.
#include <windows.h>

#include "zx/capturebutton.h"
#include "zx/grabbersupport.h"
#include "zxshow.h"
#include "zxsim/grabber.h"

namespace {

CZxSimGrabber& Grabber()
{
    static CZxSimGrabber g(2);
    static const bool filled = [] {
        g.AddUnit(L"Lab bench", L"sim://lab?port=2");
        g.AddCameras(L"SimLink 0", L"Sim M2448", 4);
        g.SecGrabber_SetActive(0);
        return true;
    }();
    (void)filled;
    return g;
}

void ShowUnits(HINSTANCE)
{
    static SZxGrabberHWUnit unit(L"SimLink 1", L"sim://link1?speed=full");
    CZxGrabberSupport::HWUnitSelect(nullptr, &Grabber(), unit, true);
    PostQuitMessage(0);
}
ZXSHOW_SCENE(L"units", ShowUnits);

void ShowCameras(HINSTANCE)
{
    static CZxStringW camera;
    CZxGrabberSupport::CameraSelect(nullptr, &Grabber(), camera);
    PostQuitMessage(0);
}
ZXSHOW_SCENE(L"cameras", ShowCameras);

void ShowUnitsAndCameras(HINSTANCE)
{
    static SZxGrabberHWUnit unit(L"SimLink 0", L"sim://link0?speed=full");
    static CZxStringW camera;
    CZxGrabberSupport::HWUnitAndCameraSelect(nullptr, &Grabber(), unit, camera, true);
    PostQuitMessage(0);
}
ZXSHOW_SCENE(L"unitsandcameras", ShowUnitsAndCameras);

void ShowCaptureButton(HINSTANCE)
{
    static SZxCaptureButtonSetup_Param rec(2, true, L"SIM-C2048-0002", true, L"GFP", L"", false, true);
    static SZxCaptureButtonDlgParams params(&Grabber(), rec);
    params.m_vecOC[0].Add(L"DAPI");
    params.m_vecOC[0].Add(L"GFP");
    params.m_vecOC[1].Add(L"Brightfield");
    ZX_CaptureButtonSetup(nullptr, params);
    PostQuitMessage(0);
}
ZXSHOW_SCENE(L"capturebutton", ShowCaptureButton);

} // namespace

namespace {
void ShowPreviewPad(HINSTANCE)
{
    static CZxSimGrabber g;
    g.SetPreviewAvailable(true);
    g.AddUnit(L"Lab bench", L"sim://lab?port=2");
    static SZxGrabberHWUnit unit(L"SimLink 0", L"sim://link0?speed=full");
    CZxGrabberSupport::HWUnitSelect(nullptr, &g, unit, true);
    PostQuitMessage(0);
}
ZXSHOW_SCENE(L"previewpad", ShowPreviewPad);
} // namespace
