// Track-bar controls, moved by the keyboard as a user moves them.
#include "numeric_fixture.h"
#include "zx_test.h"

using namespace numtest;
using zxtest::TestDialog;

namespace {
int TrackPos(TestDialog& dlg, int id) { return static_cast<int>(SendMessageW(dlg.Item(id), TBM_GETPOS, 0, 0)); }
} // namespace

TEST(SliderControls, TrackBarKeysWriteTheValueOrListElementOfTheNewPosition)
{
    TestDialog dlg(IDD_NUM_TEST);
    CZxISControlSliderDouble tolerance(L"QuantilPromile", 1, IDC_NUM_TRACK, IDC_NUM_TRACK_TEXT, 1);
    CZxISControlSliderListInt32 readout(L"ReadoutMode", 1, IDC_NUM_TRACK_LIST, 1);
    dlg.Attach(tolerance);
    dlg.Attach(readout);
    // 0 .. 100 in steps of 0.1, the value 1.0; the list's values 0, 1, 2, holding 2.
    dlg.List().ReinitAndUpdateMany(~0u);
    EXPECT_EQ(SendMessageW(dlg.Item(IDC_NUM_TRACK), TBM_GETRANGEMAX, 0, 0), 1000);
    EXPECT_EQ(SendMessageW(dlg.Item(IDC_NUM_TRACK), TBM_GETPAGESIZE, 0, 0), 10);
    const struct {
        UINT key;
        int pos;
        const wchar_t* text;
    } cases[] = {{VK_RIGHT, 11, L"1.1"}, {VK_NEXT, 21, L"2.1"}, {VK_LEFT, 20, L"2.0"}, {VK_HOME, 0, L"0.0"}};
    for (const auto& c : cases) {
        const size_t notes = dlg.Notifications().size();
        dlg.Key(IDC_NUM_TRACK, c.key);
        EXPECT_EQ(TrackPos(dlg, IDC_NUM_TRACK), c.pos);
        EXPECT_NEAR(Value(dlg.Camera(), L"QuantilPromile"), c.pos * 0.1, 1e-9);
        EXPECT_EQ(ItemText(dlg, IDC_NUM_TRACK_TEXT), c.text);
        EXPECT_EQ(dlg.Notifications().size() - notes, 1u) << "one write per move, none at the key's release";
    }
    EXPECT_EQ(readout.GetCount(), 3);
    EXPECT_EQ(TrackPos(dlg, IDC_NUM_TRACK_LIST), 2);
    dlg.Key(IDC_NUM_TRACK_LIST, VK_LEFT);
    EXPECT_EQ(Read(dlg.Camera(), L"ReadoutMode"), CZxVariant(1));
}

TEST(TextControls, TextDoubleFollowsTheDriverAndRepaintsItsWholeArea)
{
    TestDialog dlg(IDD_NUM_TEST);
    CZxISControlTextDouble sensor(L"FrameRate", 1, IDC_NUM_TEXT, 1, RGB(0, 0, 160));
    dlg.Attach(sensor);
    HWND item = dlg.Item(IDC_NUM_TEXT);
    EXPECT_EQ(GetWindowLongPtrW(item, GWLP_WNDPROC),
              reinterpret_cast<LONG_PTR>(&CZxISControlTextDouble::TempStaticWndProc));
    sensor.Reinit();
    EXPECT_EQ(sensor.UpdateState(), 0);
    EXPECT_EQ(ItemText(dlg, IDC_NUM_TEXT), CZxStringW::Formatted(L"%.2f", Value(dlg.Camera(), L"FrameRate")).Std())
        << "no step: two decimals";
    EXPECT_TRUE(IsWindowEnabled(item)) << "the state only refreshes the text";
    HBRUSH brush = nullptr;
    COLORREF colour = 0;
    EXPECT_TRUE(dlg.CtlColorStatic(IDC_NUM_TEXT, brush, colour));
    EXPECT_EQ(colour, RGB(0, 0, 160));
    sensor.Detach();
    EXPECT_NE(GetWindowLongPtrW(item, GWLP_WNDPROC),
              reinterpret_cast<LONG_PTR>(&CZxISControlTextDouble::TempStaticWndProc));
}
