// Dialog templates in the user's language: the one lookup every dialog of the
// library goes through.
#pragma once
#include <windows.h>

namespace zx {
/// The dialog template `name` of `module` for the language of ZX_GetLanguageId:
/// that exact language, else one of the same primary language (its default
/// sublanguage first), else the neutral one, else whichever Windows finds by
/// name. Null when the module has no template of that name (or name is null).
const DLGTEMPLATE* FindDialogTemplate(HMODULE module, const wchar_t* name);
/// Runs the library's template `name` modally; -1 when there is none, else what
/// DialogBoxIndirectParamW returns.
INT_PTR ModalDialogInLanguage(const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param);
/// Creates it modeless (a child or pop-up dialog); null when there is none.
HWND CreateDialogInLanguage(const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param);
} // namespace zx
