// zxsetup: the application's side of a driver's setup dialog. It creates the
// simulated camera and its driver UI, starts the acquisition, and opens the
// dialog the way the application does.
//
// Arguments: see kUsage. Unknown ones are refused with the usage text, so a
// mistyped screenshot command fails instead of showing the default dialog.
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>
#include <cstdio>
#include <cwchar>
#include <string>

#include "zx/dialoghelpers.h"
#include "zx/inputform.h"
#include "zxhost/locale.h"
#include "zxsim/languages.h"
#include "zxsim/setupui.h"

namespace {
const wchar_t kUsage[] =
    L"usage: zxsetup [--lang CODE] [modal | modeless] [split] [auto] [exposure MS] [named] [menu | newsetting]\n"
    L"               [element] [advanced] [speeduptime N] [--help]\n"
    L"  --lang CODE  show the dialogs in that language: en de fr es it pt ru pl ja ko zh\n"
    L"  modal        open the setup dialog modal (default: modeless)\n"
    L"  split        start with the red, green and blue histograms side by side\n"
    L"  auto         turn auto exposure on\n"
    L"  exposure MS  exposure time in ms before the dialog opens\n"
    L"  named        store two named settings\n"
    L"  menu         open the command menu at \"Load Settings\" once the dialog is up\n"
    L"  newsetting   open the new-setting dialog once the dialog is up\n"
    L"  element      show the setup docked in a pane, as a GUI element\n"
    L"  advanced     press the page's \"Advanced...\" button once it is up\n"
    L"  speeduptime N  set the \"SpeedUpTime\" property (time-based live acceleration)\n";

// A GUI program started from a console writes there; without one (started
// from Explorer) the text goes to a message box.
void PrintUsage(FILE* stream)
{
    HANDLE h = GetStdHandle(stream == stdout ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    if (h && h != INVALID_HANDLE_VALUE) {
        std::fwprintf(stream, L"%ls", kUsage);
        std::fflush(stream);
    } else {
        MessageBoxW(nullptr, kUsage, L"zxsetup", MB_OK | (stream == stdout ? MB_ICONINFORMATION : MB_ICONERROR));
    }
}

bool g_startSplit = false;
CZxSimSetupUI* g_ui = nullptr;

void Key(WORD vk)
{
    INPUT in[2] = {};
    in[0].type = in[1].type = INPUT_KEYBOARD;
    in[0].ki.wVk = in[1].ki.wVk = vk;
    in[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, in, sizeof(INPUT));
}

// Opens the command menu, then walks to its last entry ("Load Settings") and into it.
void CALLBACK OpenMenu(HWND, UINT, UINT_PTR id, DWORD)
{
    KillTimer(nullptr, id);
    SetTimer(nullptr, 0, 1000, [](HWND, UINT, UINT_PTR inner, DWORD) {
        KillTimer(nullptr, inner);
        Key(VK_UP);
        Key(VK_RIGHT);
    });
    HWND dlg = g_ui->GetHDlg();
    SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDC_ZX_COMMANDMENU, BN_CLICKED),
                 LPARAM(GetDlgItem(dlg, IDC_ZX_COMMANDMENU)));
}

void CALLBACK OpenNewSetting(HWND, UINT, UINT_PTR id, DWORD)
{
    KillTimer(nullptr, id);
    CZxStringW name(L"Evening");
    NewSettingDlg(name, g_ui->GetHDlg(), nullptr);
}

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

// Presses the page's Advanced button (the advanced setup runs modal from there).
HWND g_page = nullptr;
void CALLBACK OpenAdvanced(HWND, UINT, UINT_PTR id, DWORD)
{
    KillTimer(nullptr, id);
    HWND page = g_page ? g_page : (g_ui ? g_ui->GetHDlg() : nullptr);
    if (page)
        SendMessageW(page, WM_COMMAND, MAKEWPARAM(IDC_ZX_ADVANCED, BN_CLICKED), LPARAM(GetDlgItem(page, IDC_ZX_ADVANCED)));
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
    bool docked = false;
    TIMERPROC later = nullptr;
    CZxSimDriverCamera camera;
    for (int i = 1; i < argc; ++i) {
        const std::wstring a = argv[i];
        if (a == L"--help" || a == L"-h" || a == L"/?") {
            PrintUsage(stdout);
            return 0;
        }
        if (a == L"--lang" && i + 1 < argc) {
            const uint16_t lang = ZxSimLanguageId(argv[++i]);
            if (!lang) {
                std::fwprintf(stderr, L"zxsetup: unknown language %ls\n", argv[i]);
                PrintUsage(stderr);
                return 2;
            }
            ZX_SetLanguageId(lang);
        } else if (a == L"modal")
            modal = true;
        else if (a == L"modeless")
            modal = false;
        else if (a == L"split")
            g_startSplit = true;
        else if (a == L"auto")
            SetProperty(camera, L"AutoExposure", CZxVariant(true));
        else if (a == L"exposure" && i + 1 < argc)
            SetProperty(camera, L"Exposure", CZxVariant(std::wcstod(argv[++i], nullptr)));
        else if (a == L"named")
            for (const wchar_t* name : {L"Bright field", L"Dark field"}) {
                SZxGrabberCameraSettings s;
                camera.CameraSettingsGet_UNI_WRP(s, ZX_SETTINGS_ALL, true);
                camera.NamedSettingsAdd(name, s);
            }
        else if (a == L"menu")
            later = &OpenMenu;
        else if (a == L"newsetting")
            later = &OpenNewSetting;
        else if (a == L"element")
            docked = true;
        else if (a == L"advanced")
            later = &OpenAdvanced;
        else if (a == L"speeduptime" && i + 1 < argc)
            SetProperty(camera, L"SpeedUpTime", CZxVariant(int(std::wcstol(argv[++i], nullptr, 10))));
        else {
            std::fwprintf(stderr, L"zxsetup: unknown argument \"%ls\"\n", a.c_str());
            PrintUsage(stderr);
            return 2;
        }
    }
    LocalFree(argv);

    CZxSimSetupUI ui(camera);
    ui.Init(&camera, &OnEvent);
    ui.StartAcquisition();
    g_ui = &ui;
    if (later)
        SetTimer(nullptr, 0, 1500, later);
    int result = 0;
    if (docked) {
        // The setup docked in a pane of the application, as a GUI element.
        CZxSimSetupElement element(camera);
        element.SetHandler([](void*, SZxGUIElementEvent*) { return 0; }, nullptr);   // the application's pane
        HWND pane = CreateWindowExW(0, L"STATIC", L"Simulated Camera - Setup Pane", WS_OVERLAPPEDWINDOW, 20, 20,
                                    200, 200, nullptr, nullptr, nullptr, nullptr);
        HWND page = reinterpret_cast<HWND>(
            element.CreateUI(L"setup", 0, reinterpret_cast<ZxHWnd>(pane), nullptr, nullptr));
        g_page = page;
        RECT r{0, 0, element.GetMinWidth(), element.GetMinHeight()};
        AdjustWindowRect(&r, WS_OVERLAPPEDWINDOW, FALSE);
        SetWindowPos(pane, nullptr, 0, 0, r.right - r.left, r.bottom - r.top, SWP_NOMOVE | SWP_NOZORDER);
        ShowWindow(page, SW_SHOW);
        ShowWindow(pane, SW_SHOW);
        MSG msg;
        while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
            if (page && IsDialogMessageW(page, &msg))
                continue;
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
        ui.StopAcquisition();
        return 0;
    }
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
