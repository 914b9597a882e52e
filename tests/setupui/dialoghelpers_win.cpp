// Dialog helpers: templates by language, the new-setting dialog driven as a
// user drives it, and the base-priority test.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "setupui/commandmenu_win.h"
#include "zx/dialoghelpers.h"
#include "zx/grabberuibase.h"
#include "zxhost/locale.h"
#include "zxsim/camera.h"
#include "zx_modal.h"

using zxtest::DriveModal;
using zxtest::ItemText;

namespace {

const WORD kGerman = MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN);

TEST(DialogHelpers, DialogServiceTakesTheTemplateOfTheUsersLanguage)
{
    HMODULE lib = ZX_GetLibraryModule();
    const WORD before = ZX_SetLanguageId(kGerman);
    // The German template has its own Cancel text; the procedure sets none.
    std::wstring cancel;
    const DLGPROC plain = [](HWND, UINT msg, WPARAM, LPARAM) -> INT_PTR { return msg == WM_INITDIALOG; };
    EXPECT_EQ(DriveModal([&] { return Dialog_Box_Param(lib, L"NEW_SETTING", nullptr, plain, 0); },
                         [&](HWND dlg) {
                             cancel = ItemText(dlg, 2002);
                             EndDialog(dlg, 7);
                         }),
              7);
    EXPECT_EQ(cancel, L"Abbrechen");
    ZX_SetLanguageId(before);
}

TEST(DialogHelpers, NewSettingDialogAsksUntilANameIsGiven)
{
    std::wstring caption, afterEnter, cut;
    bool focusOnOk = false, openAfterEmptyOk = false;
    CZxStringW name(L"Morning");
    EXPECT_EQ(DriveModal([&] { return NewSettingDlg(name, nullptr, L""); }, [&](HWND dlg) {
        caption = ItemText(dlg, 0);
        HWND edit = GetDlgItem(dlg, 1001);
        SendMessageW(edit, WM_KEYDOWN, VK_RETURN, 0);
        focusOnOk = GetFocus() == GetDlgItem(dlg, 2001);
        afterEnter = ItemText(edit, 0);
        // Pasted text beyond the limit is cut.
        SendMessageW(edit, EM_SETSEL, 0, -1);
        SendMessageW(edit, EM_REPLACESEL, TRUE, LPARAM(std::wstring(300, L'x').c_str()));
        cut = ItemText(edit, 0);
        SetWindowTextW(edit, L"");
        SendMessageW(dlg, WM_COMMAND, 2001, LPARAM(GetDlgItem(dlg, 2001)));
        openAfterEmptyOk = IsWindowEnabled(dlg) && GetFocus() == edit;
        SetWindowTextW(edit, L"Evening");
        SendMessageW(dlg, WM_COMMAND, 2001, LPARAM(GetDlgItem(dlg, 2001)));
    }), 1);
    EXPECT_EQ(caption, L"New Setting");
    EXPECT_TRUE(focusOnOk);
    EXPECT_EQ(afterEnter, L"Morning") << "Enter neither closes nor clears";
    EXPECT_EQ(cut.size(), 254u);
    EXPECT_TRUE(openAfterEmptyOk);
    EXPECT_EQ(name, CZxStringW(L"Evening"));

    EXPECT_EQ(DriveModal([&] { return NewSettingDlg(name, nullptr, L"Title"); },
                         [](HWND dlg) { SendMessageW(dlg, WM_COMMAND, IDCANCEL, 0); }),
              2);
    EXPECT_EQ(name, CZxStringW(L"Evening")) << "a cancelled dialog leaves the name";
}

TEST(DialogHelpers, NewSettingFromTheMenuAppearsInTheNextMenu)
{
    CZxSimCamera camera;
    CZxMenu menu;
    CZxISControlList controls;
    const zxsetupui::SCommandMenuHost host{&camera, &menu, nullptr, &controls, zxsetupui::kGroupNamedSettings,
                                           false, L"grabberuibase", {}};
    DriveModal([&] { zxsetupui::CommandMenuHandle(host, zxsetupui::kMenuNewSetting); return 0; },
               [](HWND dlg) {
                   SetDlgItemTextW(dlg, 1001, L"Night");
                   SendMessageW(dlg, WM_COMMAND, 2001, LPARAM(GetDlgItem(dlg, 2001)));
               });
    zxsetupui::CommandMenuCreate(host);
    EXPECT_EQ(menu.GetItemText(zxsetupui::kMenuSave + 1), CZxStringW(L"Night"));
    EXPECT_TRUE(menu.IsEnabled(zxsetupui::kMenuLoad));
}

TEST(DialogHelpers, BasePriorityIsAllowedOnWinesAdministratorToken)
{
    // Wine's token is an administrator's and holds the privilege (not enabled).
    EXPECT_TRUE(ZX_IsIspAllowed());
}

} // namespace

TEST(DialogHelpers, NewSettingDialogOpensCentredOverItsOwnerAndWhollyOnItsMonitor)
{
    for (int place : {0, 1}) {
        zxtest::OwnerWindow owner(place);
        CZxStringW name(L"kept");
        EXPECT_EQ(DriveModal([&] { return NewSettingDlg(name, owner.Hwnd(), L""); },
                             [&](HWND dlg) {
                                 EXPECT_TRUE(zxtest::CentredOnOwner(dlg, owner.Hwnd())) << place;
                                 zxtest::ClickButton(dlg, 2002);
                             }),
                  2);
    }
}
