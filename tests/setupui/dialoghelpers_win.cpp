// Dialog helpers: the new-setting dialog driven as a user drives it, and the
// base-priority test. (The dialog service's choice of template by language is
// the loader's test, in language_win.cpp.)
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "setupui/commandmenu_win.h"
#include "zx/dialoghelpers.h"
#include "zx/grabberuibase.h"
#include "zxsim/camera.h"
#include "zx_modal.h"

using zxtest::DriveModal;
using zxtest::ItemText;

namespace {

// Opened over an owner in each place (see zxtest::OwnerWindow): centred both times.
TEST(DialogHelpers, NewSettingDialogOpensCentredOverItsOwnerAndAsksUntilANameIsGiven)
{
    zxtest::OwnerWindow middle(0), corner(1);
    CZxStringW name(L"Morning");
    EXPECT_EQ(DriveModal([&] { return NewSettingDlg(name, middle.Hwnd(), L""); }, [&](HWND dlg) {
        EXPECT_TRUE(zxtest::CentredOnOwner(dlg, middle.Hwnd()));
        EXPECT_EQ(ItemText(dlg, 0), L"New Setting");
        HWND edit = GetDlgItem(dlg, 1001);
        SendMessageW(edit, WM_KEYDOWN, VK_RETURN, 0);
        EXPECT_EQ(GetFocus(), GetDlgItem(dlg, 2001));
        EXPECT_EQ(ItemText(edit, 0), L"Morning") << "Enter neither closes nor clears";
        // Pasted text beyond the limit is cut.
        SendMessageW(edit, EM_SETSEL, 0, -1);
        SendMessageW(edit, EM_REPLACESEL, TRUE, LPARAM(std::wstring(300, L'x').c_str()));
        EXPECT_EQ(ItemText(edit, 0).size(), 254u);
        SetWindowTextW(edit, L"");
        SendMessageW(dlg, WM_COMMAND, 2001, LPARAM(GetDlgItem(dlg, 2001)));
        EXPECT_TRUE(IsWindowEnabled(dlg) && GetFocus() == edit) << "an empty name is refused";
        SetWindowTextW(edit, L"Evening");
        SendMessageW(dlg, WM_COMMAND, 2001, LPARAM(GetDlgItem(dlg, 2001)));
    }), 1);
    EXPECT_EQ(name, CZxStringW(L"Evening"));

    // Cancel, by its button or by Escape, leaves the name.
    for (int id : {2002, IDCANCEL}) {
        EXPECT_EQ(DriveModal([&] { return NewSettingDlg(name, corner.Hwnd(), L"Title"); }, [&](HWND dlg) {
            EXPECT_TRUE(zxtest::CentredOnOwner(dlg, corner.Hwnd()));
            EXPECT_EQ(ItemText(dlg, 0), L"Title");
            if (id == IDCANCEL)
                SendMessageW(dlg, WM_COMMAND, IDCANCEL, 0);
            else
                zxtest::ClickButton(dlg, id);
        }), 2) << id;
        EXPECT_EQ(name, CZxStringW(L"Evening")) << id;
    }
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
