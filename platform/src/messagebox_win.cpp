#include <windows.h>

#include "systembox.h"

int ZxShowSystemMessageBox(ZxHWnd parent, const wchar_t* text, const wchar_t* title, unsigned flags)
{
    return MessageBoxW(reinterpret_cast<HWND>(parent), text, title, flags);
}
