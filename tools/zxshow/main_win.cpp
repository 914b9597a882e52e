#include "zxshow.h"

#include <commctrl.h>
#include <cstdio>
#include <map>
#include <string>

#include "zxhost/locale.h"
#include "zxsim/languages.h"

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
    // "--lang CODE SCENE": the scene in that language.
    std::wstring name = cmdLine && *cmdLine ? cmdLine : L"";
    if (name.compare(0, 7, L"--lang ") == 0) {
        const size_t end = name.find(L' ', 7);
        const std::wstring code = name.substr(7, end == std::wstring::npos ? std::wstring::npos : end - 7);
        const uint16_t lang = ZxSimLanguageId(code.c_str());
        if (!lang) {
            std::fwprintf(stderr, L"zxshow: unknown language %ls\n", code.c_str());
            return 2;
        }
        ZX_SetLanguageId(lang);
        name = end == std::wstring::npos ? L"" : name.substr(end + 1);
    }
    auto it = Scenes().find(name);
    if (it == Scenes().end()) {
        std::wstring list = L"usage: zxshow [--lang CODE] SCENE\nscenes:";
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
