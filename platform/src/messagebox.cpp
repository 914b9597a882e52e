#include "zxhost/messagebox.h"

#include <atomic>

#include "systembox.h"

namespace {
std::atomic<PFN_ZxMessageBoxHook> g_messageBoxHook{nullptr};
} // namespace

int ZX_MessageBox(ZxHWnd parent, const wchar_t* text, const wchar_t* title, unsigned flags)
{
    if (PFN_ZxMessageBoxHook hook = g_messageBoxHook.load())
        return hook(parent, text ? text : L"", title ? title : L"", flags);
    return ZxShowSystemMessageBox(parent, text ? text : L"", title ? title : L"", flags);
}

PFN_ZxMessageBoxHook ZX_SetMessageBoxHook(PFN_ZxMessageBoxHook hook) { return g_messageBoxHook.exchange(hook); }
