// The host's progress window and wait cursor as the command controls use them.
#include <windows.h>

#include <commctrl.h>

#include "zx_modal.h"
#include "zx_test.h"
#include "zxhost/progressdialog.h"
#include "zxhost/waitcursor.h"

using zxtest::ItemText;

namespace {
int g_cancels = 0;
int CountCancel(void* context)
{
    ++g_cancels;
    return context ? 0 : -1;
}
} // namespace

TEST(ProgressWindow, DisablesItsOwnerMovesTheBarAndCancelsOnceThroughTheCallback)
{
    HWND owner = CreateWindowExW(0, L"STATIC", L"owner", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr,
                                 nullptr, nullptr);
    CZxProgressDialog progress;
    EXPECT_EQ(progress.SetRange(5, 5), -9);
    EXPECT_EQ(progress.SetRange(0, 200), 0);
    EXPECT_EQ(progress.SetPos(10), -9) << "off";
    int context = 1;
    progress.RegisterCancelCallback(CountCancel, &context);
    ASSERT_EQ(progress.Show(reinterpret_cast<ZxHWnd>(owner), true, L"Working",
                            CZxProgressDialog::ZX_PROGRESS_CENTER | CZxProgressDialog::ZX_PROGRESS_PERCENT),
              0);
    EXPECT_EQ(progress.Show(reinterpret_cast<ZxHWnd>(owner), true, L"Again", 0), -9);
    HWND w = reinterpret_cast<HWND>(progress.GetWindow());
    ASSERT_TRUE(IsWindow(w));
    EXPECT_EQ(ItemText(w, 0), L"Working");
    EXPECT_FALSE(IsWindowEnabled(owner));

    const struct {
        int set, shown;
    } moves[] = {{50, 50}, {-7, 0}, {999, 200}};
    for (const auto& m : moves) {
        EXPECT_EQ(progress.SetPos(m.set), 0);
        EXPECT_EQ(progress.GetPos(), m.shown);
    }
    progress.SetPos(100);
    HWND bar = FindWindowExW(w, nullptr, L"msctls_progress32", nullptr);
    EXPECT_EQ(SendMessageW(bar, PBM_GETPOS, 0, 0), 100);
    HWND percent = FindWindowExW(w, nullptr, L"STATIC", nullptr);
    EXPECT_EQ(ItemText(percent, 0), L"50 %");

    HWND cancel = GetDlgItem(w, IDCANCEL);
    ASSERT_TRUE(cancel);
    g_cancels = 0;
    SendMessageW(cancel, BM_CLICK, 0, 0);
    SendMessageW(cancel, BM_CLICK, 0, 0);
    EXPECT_EQ(g_cancels, 1);
    EXPECT_FALSE(IsWindowEnabled(cancel));
    EXPECT_TRUE(progress.IsOn()) << "cancel only asks; the job's owner closes";

    EXPECT_EQ(progress.Close(), 0);
    EXPECT_FALSE(IsWindow(w));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(progress.Close(), 0);

    // Without a callback there is no button, and a refused request keeps it asking.
    progress.RegisterCancelCallback(nullptr, nullptr);
    ASSERT_EQ(progress.Show(reinterpret_cast<ZxHWnd>(owner), false, L"Quiet", 0), 0);
    EXPECT_FALSE(GetDlgItem(reinterpret_cast<HWND>(progress.GetWindow()), IDCANCEL));
    EXPECT_EQ(progress.Cancel(), -2);
    progress.RegisterCancelCallback(CountCancel, nullptr);
    EXPECT_EQ(progress.Cancel(), -1);
    EXPECT_EQ(progress.Cancel(), -1);
    DestroyWindow(owner);
}

TEST(WaitCursor, HoldersShowTheWaitCursorAndRestoreInTurn)
{
    HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW), wait = LoadCursorW(nullptr, IDC_WAIT);
    SetCursor(arrow);
    {
        SZxWaitCursorHolder outer;
        EXPECT_EQ(GetCursor(), wait);
        {
            SZxWaitCursorHolder inner;
            EXPECT_EQ(GetCursor(), wait);
        }
        EXPECT_EQ(GetCursor(), wait);
    }
    EXPECT_EQ(GetCursor(), arrow);
}
