#include "zxshow.h"

#include <commctrl.h>
#include <cstdio>
#include <map>
#include <string>

namespace {
std::map<std::wstring, PFN_ZxShowScene>& Scenes()
{
    static std::map<std::wstring, PFN_ZxShowScene> s;
    return s;
}

// The scene that proves the viewer itself: an empty frame window.
void ShowProbe(HINSTANCE instance)
{
    HWND w = CreateWindowExW(0, L"STATIC", L"zxshow", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 300, 200,
                             nullptr, nullptr, instance, nullptr);
    SetWindowTextW(w, L"zxshow probe");
}
ZXSHOW_SCENE(L"probe", ShowProbe);
} // namespace

bool ZxShowRegister(const wchar_t* name, PFN_ZxShowScene scene)
{
    Scenes()[name] = scene;
    return true;
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR cmdLine, int)
{
    INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&icc);
    const std::wstring name = cmdLine && *cmdLine ? cmdLine : L"";
    auto it = Scenes().find(name);
    if (it == Scenes().end()) {
        std::wstring list = L"usage: zxshow SCENE\nscenes:";
        for (auto& s : Scenes())
            list += L" " + s.first;
        std::fwprintf(stderr, L"%ls\n", list.c_str());
        return 2;
    }
    it->second(instance);
    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    return 0;
}
