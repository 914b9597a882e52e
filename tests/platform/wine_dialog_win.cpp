// Proves that real dialogs run in the test environment: a template from the
// executable's resources, its controls driven by messages and read back.
#include <windows.h>

#include "wine_test_resource.h"
#include "zx_test.h"

namespace {
INT_PTR CALLBACK ProbeProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM)
{
    if (msg == WM_COMMAND && LOWORD(wp) == IDC_PROBE_COMBO && HIWORD(wp) == CBN_SELCHANGE) {
        SetWindowLongPtrW(hwnd, DWLP_USER, 1 + SendDlgItemMessageW(hwnd, IDC_PROBE_COMBO, CB_GETCURSEL, 0, 0));
        return TRUE;
    }
    return msg == WM_INITDIALOG;
}
} // namespace

TEST(WineDialog, TemplateControlsAnswerMessages)
{
    HWND dlg = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PLATFORM_PROBE), nullptr,
                                  ProbeProc, 0);
    ASSERT_NE(dlg, nullptr) << GetLastError();

    ASSERT_TRUE(SetDlgItemTextW(dlg, IDC_PROBE_EDIT, L"12.5 ms"));
    wchar_t text[32] = {};
    GetDlgItemTextW(dlg, IDC_PROBE_EDIT, text, 32);
    EXPECT_STREQ(text, L"12.5 ms");

    HWND combo = GetDlgItem(dlg, IDC_PROBE_COMBO);
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"fast"));
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"quality"));
    SendMessageW(combo, CB_SETCURSEL, 1, 0);
    SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDC_PROBE_COMBO, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
    EXPECT_EQ(GetWindowLongPtrW(dlg, DWLP_USER), 2);

    HWND scroll = GetDlgItem(dlg, IDC_PROBE_SCROLL);
    SCROLLINFO si{sizeof(si), SIF_RANGE | SIF_POS, 0, 100, 0, 40, 0};
    SetScrollInfo(scroll, SB_CTL, &si, FALSE);
    EXPECT_EQ(SendMessageW(scroll, SBM_GETPOS, 0, 0), 40);
    DestroyWindow(dlg);
}
