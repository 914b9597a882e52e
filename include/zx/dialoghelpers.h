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

// ---- Owner-drawn buttons ------------------------------------------------------------
//
// Each Init helper turns one dialog button into an owner-drawn button that the
// library paints itself: it subclasses the dialog for WM_DRAWITEM of that
// button (the dialog procedure never sees it) and undoes everything in the
// matching Done helper or when the dialog is destroyed. Images come at 100 %
// or, from 144 dpi or a GUI zoom of 1.5 on, at 200 % where that fits into the
// button. All run on the dialog's
// thread. Results: ZX_OK, or ZX_E_FAIL (reported through the diagnostic
// assertion) when the dialog or the button does not exist.

/// Makes button `id` the dialog's command-menu button: its text centred left of
/// a drop-down arrow, as the setup hosts draw theirs. Clicks stay plain BN_CLICKED.
ZX_API int32_t ZX_InitCommandsButton(HWND dialog, int32_t id);
/// Gives button `id` back its own style and drawing.
ZX_API int32_t ZX_DoneCommandsButton(HWND dialog, int32_t id);
/// Makes button `id` a format button: its text (the format) left-aligned in a
/// field, a separator and a drop-down arrow, like a drop-down list that opens
/// the driver's format choice on BN_CLICKED.
ZX_API int32_t ZX_InitFormatButton(HWND dialog, int32_t id);
/// Gives button `id` back its own style and drawing.
ZX_API int32_t ZX_DoneFormatButton(HWND dialog, int32_t id);
/// Makes `fastId` and `qualityId` a pair of toggle buttons for the camera's
/// setting set: translated "Live - Fast" with the live image and "Live -
/// Quality" with the capture image. The checked one (BM_SETCHECK /
/// CheckDlgButton, BM_GETCHECK / IsDlgButtonChecked) is drawn pressed; a click
/// checks the clicked one and unchecks the other before the dialog procedure
/// gets its BN_CLICKED. Both start unchecked; undone when the dialog is destroyed.
ZX_API int32_t ZX_InitFastQualityButtons(HWND dialog, int32_t fastId, int32_t qualityId);
/// Draws an owner-drawn check in the flat style: image "CHECKBOXXPON" or
/// "CHECKBOXXPOFF" vertically centred at the item's left on the button face
/// (embossed grey when `disabled`), with `drawText` the button's text 4 pixels
/// on (framed when focused). The first call for a button gives it the cursor
/// "IDC_POINTING_TOOL_HAND". ZX_OK, or ZX_E_FAIL for a null item or DC.
ZX_API int32_t ZX_DrawCheckButtonXP(const tagDRAWITEMSTRUCT* item, bool checked, bool disabled, bool drawText);
