// A host application in miniature: it loads a driver plug-in with LoadLibraryW,
// calls its entry point, opens the driver's setup dialog and feeds it frames
// from a timer, as the imaging application does during live view.
//
//   examplehost [PLUGIN.dll] [FRAMES]
//
// With FRAMES (default 0: until the dialog is closed) the host closes the
// dialog itself after that many frames and checks what it saw: the dialog
// was up, auto exposure (switched on here as a user would) brought the
// specimen into range. Exit code 0 when all held.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <vector>

#include "exampledriver.h"

namespace {

IZxExampleDriver* g_driver = nullptr;
int g_framesWanted = 0, g_frames = 0;
bool g_dialogSeen = false;
SZxExampleFrame g_last;
double g_firstExposure = 0.0;

// The brightest per-mille of a frame, as a fraction of full scale.
double Brightest(const SZxExampleFrame& f)
{
    std::vector<uint16_t> v(f.pixels, f.pixels + size_t(f.width) * f.height);
    std::nth_element(v.begin(), v.begin() + v.size() * 999 / 1000, v.end());
    return v[v.size() * 999 / 1000] / double((1u << f.bits) - 1);
}

void CALLBACK OnFrameTimer(HWND, UINT, UINT_PTR timer, DWORD)
{
    HWND dlg = g_driver->SetupWindow();
    if (!dlg) {   // the user closed the dialog
        KillTimer(nullptr, timer);
        PostQuitMessage(0);
        return;
    }
    if (g_frames == 0) {
        // Auto exposure on, as a user ticks the dialog's "Automatic" box.
        g_dialogSeen = IsWindowVisible(dlg) != FALSE;
        if (HWND box = FindWindowExW(dlg, nullptr, L"Button", L"Automatic"))
            SendMessageW(box, BM_CLICK, 0, 0);
    }
    g_driver->Grab(g_last);
    if (g_frames++ == 0)
        g_firstExposure = g_last.exposureMs;
    if (g_framesWanted > 0 && g_frames >= g_framesWanted) {
        KillTimer(nullptr, timer);
        g_driver->CloseSetup();
        PostQuitMessage(0);
    }
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    const wchar_t* path = argc > 1 ? argv[1] : L"exampledriver.dll";
    g_framesWanted = argc > 2 ? std::max(0, _wtoi(argv[2])) : 0;

    HMODULE plugin = LoadLibraryW(path);
    if (!plugin) {
        std::fwprintf(stderr, L"examplehost: cannot load %ls (error %lu)\n", path, GetLastError());
        return 1;
    }
    auto open = reinterpret_cast<PFN_ZxExampleDriverOpen>(
        reinterpret_cast<void*>(GetProcAddress(plugin, ZX_EXAMPLE_DRIVER_ENTRY)));
    g_driver = open ? open(ZX_EXAMPLE_DRIVER_INTERFACE) : nullptr;
    if (!g_driver) {
        std::fwprintf(stderr, L"examplehost: %ls has no driver entry point of interface %u\n", path,
                      ZX_EXAMPLE_DRIVER_INTERFACE);
        FreeLibrary(plugin);
        return 1;
    }
    const int opened = g_driver->OpenSetup(nullptr);
    if (opened == 0) {
        SetTimer(nullptr, 0, 40, &OnFrameTimer);   // 25 frames/s
        MSG msg;
        while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
            HWND dlg = g_driver->SetupWindow();
            if (dlg && IsDialogMessageW(dlg, &msg))
                continue;
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    g_driver->Release();
    FreeLibrary(plugin);

    const double brightest = g_frames > 0 ? Brightest(g_last) : 0.0;
    std::printf("setup dialog: %s, %s; %d frames, exposure %.1f ms -> %.1f ms, brightest %.0f %% of full scale\n",
                opened == 0 ? "opened" : "failed", g_dialogSeen ? "shown" : "not shown", g_frames, g_firstExposure,
                g_last.exposureMs, brightest * 100.0);
    if (g_framesWanted == 0)
        return opened == 0 ? 0 : 1;
    // The engine aims the brightest pixels at 85 % and accepts 50 % to 90 %.
    const bool ok = opened == 0 && g_dialogSeen && g_frames == g_framesWanted && brightest > 0.5 && brightest < 0.95;
    std::printf("%s\n", ok ? "ok" : "unexpected result");
    return ok ? 0 : 1;
}
