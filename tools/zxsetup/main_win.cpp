// zxsetup: the application's side of a driver's setup dialog. It creates the
// simulated camera and its driver UI, starts the acquisition, and opens the
// dialog the way the application does.
//
//   zxsetup [modal | modeless] [split] [auto] [exposure MS]
//
// split starts in the per-colour histogram view, auto turns auto exposure on,
// exposure sets the exposure time before the dialog opens.
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>
#include <cwchar>
#include <string>

#include "zxsim/setupui.h"

namespace {
bool g_startSplit = false;

// The application's event sink: it takes every event but leaves dialog
// messages to the dialog, and answers the layout question of the histogram.
int32_t OnEvent(IZxGrabberUI::EZxEvent event, ZxHWnd, int64_t, void* data)
{
    if (event == IZxGrabberUI::evMessage)
        return 1;
    if (event == IZxGrabberUI::evHistoSetup && data)
        static_cast<SZxHistoSetupEvent*>(data)->m_iStartSplit = g_startSplit ? 1 : 0;
    if (event == IZxGrabberUI::evDestroyModeless)
        PostQuitMessage(0);
    return 0;
}

void SetProperty(CZxGenProvider_Low& camera, const wchar_t* name, const CZxVariant& value)
{
    CZxVector_SZxGrabberPropertyValue values(128);
    values.Add(SZxGrabberPropertyValue(name, value));
    camera.PropSet_WRP(0, values, nullptr, false);
}
} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&icc);

    int argc = 0;
    wchar_t** argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    bool modal = false;
    CZxSimDriverCamera camera;
    for (int i = 1; i < argc; ++i) {
        const std::wstring a = argv[i];
        if (a == L"modal")
            modal = true;
        else if (a == L"split")
            g_startSplit = true;
        else if (a == L"auto")
            SetProperty(camera, L"AutoExposure", CZxVariant(true));
        else if (a == L"exposure" && i + 1 < argc)
            SetProperty(camera, L"Exposure", CZxVariant(std::wcstod(argv[++i], nullptr)));
    }
    LocalFree(argv);

    CZxSimSetupUI ui(camera);
    ui.Init(&camera, &OnEvent);
    ui.StartAcquisition();
    int result = 0;
    if (modal) {
        result = ui.InputSetup(nullptr);
    } else {
        ui.InputSetupModelessShow(nullptr);
        MSG msg;
        while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
            if (ui.GetHDlg() && IsDialogMessageW(ui.GetHDlg(), &msg))
                continue;
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    ui.StopAcquisition();
    return result;
}
