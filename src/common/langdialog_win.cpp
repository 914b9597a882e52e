#include "common/langdialog_win.h"

#include "zx/grabberuibase.h"
#include "zxhost/locale.h"

namespace {
struct SLanguages {
    WORD list[64];
    int count;
};

BOOL CALLBACK Collect(HMODULE, LPCWSTR, LPCWSTR, WORD lang, LONG_PTR param)
{
    auto* l = reinterpret_cast<SLanguages*>(param);
    if (l->count < 64)
        l->list[l->count++] = lang;
    return TRUE;
}

// The languages are compared here rather than left to FindResourceExW, whose
// own fallbacks differ between Windows versions.
HRSRC FindInLanguage(HMODULE module, const wchar_t* name, WORD lang)
{
    SLanguages have{};
    EnumResourceLanguagesW(module, RT_DIALOG, name, &Collect, reinterpret_cast<LONG_PTR>(&have));
    if (have.count == 0)
        return nullptr;
    const WORD neutral = MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL);
    const WORD wanted[] = {lang, WORD(MAKELANGID(PRIMARYLANGID(lang), SUBLANG_DEFAULT))};
    for (WORD w : wanted)
        for (int i = 0; i < have.count; ++i)
            if (have.list[i] == w)
                return FindResourceExW(module, RT_DIALOG, name, w);
    // Any other sublanguage of the family: a user in Austria gets the Swiss template.
    for (int i = 0; i < have.count; ++i)
        if (PRIMARYLANGID(have.list[i]) == PRIMARYLANGID(lang) && PRIMARYLANGID(lang) != LANG_NEUTRAL)
            return FindResourceExW(module, RT_DIALOG, name, have.list[i]);
    for (int i = 0; i < have.count; ++i)
        if (have.list[i] == neutral)
            return FindResourceExW(module, RT_DIALOG, name, neutral);
    return FindResourceW(module, name, RT_DIALOG);
}
} // namespace

namespace zx {

const DLGTEMPLATE* FindDialogTemplate(HMODULE module, const wchar_t* name)
{
    if (!name)
        return nullptr;
    HRSRC res = FindInLanguage(module, name, ZX_GetLanguageId());
    HGLOBAL mem = res ? LoadResource(module, res) : nullptr;
    return mem ? static_cast<const DLGTEMPLATE*>(LockResource(mem)) : nullptr;
}

INT_PTR ModalDialogInLanguage(const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param)
{
    const DLGTEMPLATE* t = FindDialogTemplate(ZX_GetLibraryModule(), name);
    return t ? DialogBoxIndirectParamW(ZX_GetLibraryModule(), t, parent, proc, param) : -1;
}

HWND CreateDialogInLanguage(const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param)
{
    const DLGTEMPLATE* t = FindDialogTemplate(ZX_GetLibraryModule(), name);
    return t ? CreateDialogIndirectParamW(ZX_GetLibraryModule(), t, parent, proc, param) : nullptr;
}

} // namespace zx
