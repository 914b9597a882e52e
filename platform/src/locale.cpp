#include "zxhost/locale.h"

#include <atomic>

#include "zxhost/messagebox.h"

namespace {
std::atomic<uint16_t> g_language{0x0409};
std::atomic<PFN_ZxMessageBoxHook> g_messageBoxHook{nullptr};
} // namespace

uint16_t ZX_GetLanguageId() { return g_language.load(); }
uint16_t ZX_SetLanguageId(uint16_t langId) { return g_language.exchange(langId); }

// The window system's box; only the Windows build has one.
int ZxShowSystemMessageBox(ZxHWnd parent, const wchar_t* text, const wchar_t* title, unsigned flags);
#if !defined(_WIN32)
int ZxShowSystemMessageBox(ZxHWnd, const wchar_t*, const wchar_t*, unsigned) { return 0; }
#endif

int ZX_MessageBox(ZxHWnd parent, const wchar_t* text, const wchar_t* title, unsigned flags)
{
    if (PFN_ZxMessageBoxHook hook = g_messageBoxHook.load())
        return hook(parent, text ? text : L"", title ? title : L"", flags);
    return ZxShowSystemMessageBox(parent, text ? text : L"", title ? title : L"", flags);
}

PFN_ZxMessageBoxHook ZX_SetMessageBoxHook(PFN_ZxMessageBoxHook hook) { return g_messageBoxHook.exchange(hook); }
