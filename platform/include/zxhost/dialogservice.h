// The GUI library's dialog services: dialogs from a module's templates in the
// user's language. Windows only.
#pragma once
#include <windows.h>

#include "zxhost/export.h"

/// The template `name` of `module` in the current language (ZX_GetLanguageId),
/// else in its primary language's default one, else the neutral one, else whichever Windows finds by name; null when none.
ZX_HOST_API const DLGTEMPLATE* ZX_FindDialogTemplate(HMODULE module, const wchar_t* name);
/// Runs that template modally; what DialogBoxIndirectParamW returns (-1 without a template).
ZX_HOST_API INT_PTR ZX_DialogBoxParam(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param);
/// Creates it modeless; null without a template.
ZX_HOST_API HWND ZX_CreateDialogBoxParam(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc,
                                         LPARAM param);
