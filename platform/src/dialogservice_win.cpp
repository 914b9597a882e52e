#include "zxhost/dialogservice.h"

#include <initializer_list>

#include "zxhost/locale.h"

namespace {
const DLGTEMPLATE* Load(HMODULE module, HRSRC res)
{
    HGLOBAL mem = res ? LoadResource(module, res) : nullptr;
    return mem ? static_cast<const DLGTEMPLATE*>(LockResource(mem)) : nullptr;
}
} // namespace

const DLGTEMPLATE* ZX_FindDialogTemplate(HMODULE module, const wchar_t* name)
{
    if (!name)
        return nullptr;
    const WORD lang = ZX_GetLanguageId();
    for (WORD l : {lang, WORD(MAKELANGID(PRIMARYLANGID(lang), SUBLANG_DEFAULT)),
                   WORD(MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL))})
        if (const DLGTEMPLATE* t = Load(module, FindResourceExW(module, RT_DIALOG, name, l)))
            return t;
    return Load(module, FindResourceW(module, name, RT_DIALOG));
}

INT_PTR ZX_DialogBoxParam(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param)
{
    const DLGTEMPLATE* t = ZX_FindDialogTemplate(module, name);
    return t ? DialogBoxIndirectParamW(module, t, parent, proc, param) : -1;
}

HWND ZX_CreateDialogBoxParam(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param)
{
    const DLGTEMPLATE* t = ZX_FindDialogTemplate(module, name);
    return t ? CreateDialogIndirectParamW(module, t, parent, proc, param) : nullptr;
}
