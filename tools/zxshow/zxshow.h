// Scenes of zxshow. A scene creates its window(s) and returns; zxshow then pumps
// messages until the window closes or the process is killed.
#pragma once
#include <windows.h>

typedef void (*PFN_ZxShowScene)(HINSTANCE instance);

/// Registers a scene under a name; use ZXSHOW_SCENE at file scope.
bool ZxShowRegister(const wchar_t* name, PFN_ZxShowScene scene);

#define ZXSHOW_SCENE(name, fn) static const bool s_registered_##fn = ZxShowRegister(name, fn)
