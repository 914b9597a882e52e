// Helpers the library's and the drivers' dialogs share: templates in the
// user's language, the modal and modeless entry points, the dialog that asks
// for a new setting's name, and the base-priority test. Windows only.
#pragma once
#include <windows.h>

#include <cstdint>
#include "zx/export.h"
#include "zxhost/string.h"

/// The dialog template `name` of `module` in the application's language, else
/// the language-neutral one; null when neither exists.
/// Any thread.
ZX_API const DLGTEMPLATE* ZX_LoadDialogTemplate(const wchar_t* name, HMODULE module);
/// Runs the template modally through the GUI library's dialog service; its result.
/// UI thread (the dialog runs its own message loop).
ZX_API int32_t Dialog_Box_Param(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc, int64_t param);
/// Creates it modeless through the GUI library's dialog service; the dialog or null.
/// The dialog belongs to the calling thread, which must pump its messages.
ZX_API HWND Create_Dialog_Box_Param(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc,
                                    int64_t param);
/// Asks for the name of a new named setting ("NEW_SETTING"), starting with
/// `name`; `title` null or empty gives the translated "New Setting". 1 when the
/// user confirmed a non-empty name (then stored in `name`, at most 254
/// characters), 2 when cancelled, else the dialog service's failure result.
/// UI thread.
ZX_API int32_t NewSettingDlg(CZxStringW& name, HWND parent, const wchar_t* title);
/// Whether the process token holds "SeIncreaseBasePriorityPrivilege" (enabled
/// or not); any failure on the way counts as allowed.
/// Any thread.
ZX_API bool ZX_IsIspAllowed();
