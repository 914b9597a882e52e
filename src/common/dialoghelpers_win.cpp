#include "zx/dialoghelpers.h"

#include "common/langdialog_win.h"

#include <vector>

#include "zx/grabberuibase.h"
#include "zxhost/alignwnd.h"
#include "zxhost/dialogservice.h"
#include "zxhost/locale.h"
#include "zxhost/system.h"

namespace {
const wchar_t kSource[] = L"common";
const int kEdit = 1001, kOk = 2001, kCancel = 2002;
const wchar_t kOldProc[] = L"ZxNewSettingEditProc";

struct SNewSetting {
    wchar_t buffer[256];
    const wchar_t* title;
};

// Enter moves to OK instead of closing; the edit wants every key so the dialog
// manager does not take Enter first.
LRESULT CALLBACK EditProc(HWND edit, UINT msg, WPARAM wParam, LPARAM lParam)
{
    auto old = reinterpret_cast<WNDPROC>(GetPropW(edit, kOldProc));
    switch (msg) {
    case WM_KEYDOWN:
        if (wParam == VK_RETURN) {
            SetFocus(GetDlgItem(GetParent(edit), kOk));
            return 0;
        }
        break;
    case WM_GETDLGCODE:
        return DLGC_WANTALLKEYS;
    case WM_DESTROY:
        SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(old));
        RemovePropW(edit, kOldProc);
        break;
    default:
        break;
    }
    return CallWindowProcW(old, edit, msg, wParam, lParam);
}

INT_PTR CALLBACK NewSettingProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    auto* data = reinterpret_cast<SNewSetting*>(GetWindowLongPtrW(dlg, DWLP_USER));
    switch (msg) {
    case WM_INITDIALOG: {
        data = reinterpret_cast<SNewSetting*>(lParam);
        SetWindowLongPtrW(dlg, DWLP_USER, lParam);
        SetWindowTextW(dlg, data->title && *data->title ? CZxStringW(data->title)
                                                        : ZX_GetTranslation(L"New Setting", kSource));
        SetDlgItemTextW(dlg, kOk, ZX_GetTranslation(L"OK", kSource));
        SetDlgItemTextW(dlg, kCancel, ZX_GetTranslation(L"Cancel", kSource));
        RECT ok;
        GetWindowRect(GetDlgItem(dlg, kOk), &ok);
        MapWindowPoints(nullptr, dlg, reinterpret_cast<POINT*>(&ok), 2);
        SetWindowPos(GetDlgItem(dlg, kCancel), nullptr, ok.right + 15, ok.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        HWND edit = GetDlgItem(dlg, kEdit);
        SendMessageW(edit, EM_LIMITTEXT, 254, 0);
        SetWindowTextW(edit, data->buffer);
        SendMessageW(edit, EM_SETSEL, 0, -1);
        SetPropW(edit, kOldProc, reinterpret_cast<HANDLE>(GetWindowLongPtrW(edit, GWLP_WNDPROC)));
        SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&EditProc));
        ZX_AlignWnd(dlg, GetParent(dlg), 2, ZX_ALIGN_KEEP_ON_SCREEN);
        SetFocus(edit);
        return FALSE;   // the focus is set
    }
    case WM_COMMAND:
        if (LOWORD(wParam) == kOk) {
            GetDlgItemTextW(dlg, kEdit, data->buffer, 255);
            if (!data->buffer[0]) {
                SetFocus(GetDlgItem(dlg, kEdit));
                return TRUE;
            }
            EndDialog(dlg, 1);
            return TRUE;
        }
        if (LOWORD(wParam) == kCancel || LOWORD(wParam) == IDCANCEL) {
            EndDialog(dlg, 2);
            return TRUE;
        }
        break;
    default:
        break;
    }
    return FALSE;
}
} // namespace

const DLGTEMPLATE* ZX_LoadDialogTemplate(const wchar_t* name, HMODULE module)
{
    return zx::FindDialogTemplate(module, name);
}

int32_t Dialog_Box_Param(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc, int64_t param)
{
    return int32_t(ZX_DialogBoxParam(module, name, parent, proc, LPARAM(param)));
}

HWND Create_Dialog_Box_Param(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc, int64_t param)
{
    return ZX_CreateDialogBoxParam(module, name, parent, proc, LPARAM(param));
}

int32_t NewSettingDlg(CZxStringW& name, HWND parent, const wchar_t* title)
{
    SNewSetting data{};
    ZX_CopyBoundedW(data.buffer, 256, name.GetString());
    data.title = title;
    // The template in the application's language, from the library's module.
    const INT_PTR result = zx::ModalDialogInLanguage(L"NEW_SETTING", parent, &NewSettingProc, LPARAM(&data));
    if (result == 1)
        name = data.buffer;
    return int32_t(result);
}

bool ZX_IsIspAllowed()
{
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token))
        return true;
    DWORD size = 0;
    GetTokenInformation(token, TokenPrivileges, nullptr, 0, &size);
    if (size == 0) {
        CloseHandle(token);
        return true;
    }
    std::vector<BYTE> buffer(size);
    if (!GetTokenInformation(token, TokenPrivileges, buffer.data(), size, &size)) {
        CloseHandle(token);
        return true;
    }
    CloseHandle(token);
    const auto* privileges = reinterpret_cast<const TOKEN_PRIVILEGES*>(buffer.data());
    for (DWORD i = 0; i < privileges->PrivilegeCount; ++i) {
        LUID luid = privileges->Privileges[i].Luid;
        wchar_t text[128] = {};
        DWORD length = 128;
        if (LookupPrivilegeNameW(nullptr, &luid, text, &length) && wcscmp(text, L"SeIncreaseBasePriorityPrivilege") == 0)
            return true;
    }
    return false;
}
