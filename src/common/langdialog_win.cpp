#include "langdialog_win.h"

#include "zx/grabberuibase.h"
#include "zxhost/locale.h"

namespace {
const DLGTEMPLATE* FindTemplate(const wchar_t* name)
{
    HMODULE module = ZX_GetLibraryModule();
    HRSRC res = FindResourceExW(module, MAKEINTRESOURCEW(5) /* RT_DIALOG */, name, ZX_GetLanguageId());
    HGLOBAL mem = res ? LoadResource(module, res) : nullptr;
    return mem ? static_cast<const DLGTEMPLATE*>(LockResource(mem)) : nullptr;
}
} // namespace

namespace zx {

INT_PTR ModalDialogInLanguage(const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param)
{
    if (const DLGTEMPLATE* t = FindTemplate(name))
        return DialogBoxIndirectParamW(ZX_GetLibraryModule(), t, parent, proc, param);
    return DialogBoxParamW(ZX_GetLibraryModule(), name, parent, proc, param);
}

HWND CreateDialogInLanguage(const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param)
{
    if (const DLGTEMPLATE* t = FindTemplate(name))
        return CreateDialogIndirectParamW(ZX_GetLibraryModule(), t, parent, proc, param);
    return CreateDialogParamW(ZX_GetLibraryModule(), name, parent, proc, param);
}

} // namespace zx
