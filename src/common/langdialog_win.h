// Modal dialogs from the library's templates in the user's language.
#pragma once
#include <windows.h>

namespace zx {
/// Shows the template `name` of the library in the current language
/// (ZX_GetLanguageId); when that language has none, the template is taken by
/// name alone, as Windows picks it. Returns what DialogBox* returns.
INT_PTR ModalDialogInLanguage(const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param);
/// The same for a modeless child or pop-up dialog.
HWND CreateDialogInLanguage(const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param);
} // namespace zx
