// Checks, owner-drawn checks, radios and the list steppers: what a click
// writes and announces, and what the items show.
#include "choice_test.h"
#include "zx_canvas.h"

namespace {
using zxtest::Canvas;

// The library's own bitmap `name`, as pixels.
std::vector<COLORREF> LibraryBitmap(const wchar_t* name)
{
    HBITMAP bmp = static_cast<HBITMAP>(LoadImageW(GetModuleHandleW(L"zxgrabbersupport.dll"), name, IMAGE_BITMAP, 0,
                                                  0, LR_CREATEDIBSECTION));
    if (!bmp)
        return {};
    Canvas c(13, 13, 0);
    HDC mem = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(mem, bmp);
    BitBlt(c.Dc(), 0, 0, 13, 13, mem, 0, 0, SRCCOPY);
    SelectObject(mem, old);
    DeleteDC(mem);
    DeleteObject(bmp);
    return c.Square(0, 0, 13);
}
} // namespace

TEST_F(ChoiceControls, CheckBoxShowsAndWritesThePropertyInvertedOrNotAndReportsStateChangesWhenAsked)
{
    const struct {
        bool inverted, report;
        UINT shownForTrue;
        std::vector<UINT> notes;
    } cases[] = {
        {false, false, BST_CHECKED, {WM_IS_PROPERTYCHANGED}},
        {true, false, BST_UNCHECKED, {WM_IS_PROPERTYCHANGED}},
        {false, true, BST_CHECKED, {WM_IS_PROPERTYCHANGED, WM_IS_STATECHANGE}},
    };
    for (const auto& k : cases) {
        TestDialog d(IDD_CH_TEST);
        CZxISControlCheck check(L"Cooling", ZX_MODE_FAST, IDC_CH_CHECK, 1, k.inverted, k.report);
        d.Attach(check);
        EXPECT_EQ(check.UpdateFromGeneric(), 0);
        EXPECT_EQ(IsDlgButtonChecked(d.Hwnd(), IDC_CH_CHECK), k.shownForTrue);
        // A click toggles an automatic check box before the dialog hears of it.
        CheckDlgButton(d.Hwnd(), IDC_CH_CHECK, k.shownForTrue == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED);
        EXPECT_TRUE(d.Click(IDC_CH_CHECK));
        EXPECT_EQ(LastCall(d.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, Cooling=false)");
        EXPECT_EQ(Messages(d), k.notes);
    }
}

TEST_F(ChoiceControls, OwnerDrawnCheckTogglesOnClickAndDrawsTheBitmapOfEachOfItsFourStates)
{
    CZxISControlCheckOwnerDraw check(L"AutoExposure", ZX_MODE_FAST, IDC_CH_OWNER1, 1);
    dlg.Attach(check);
    EXPECT_EQ(check.UpdateFromGeneric(), 0);
    EXPECT_FALSE(check.IsChecked());
    EXPECT_TRUE(dlg.Click(IDC_CH_OWNER1));
    EXPECT_TRUE(check.IsChecked());
    EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, AutoExposure=true)");

    const struct {
        bool checked, enabled;
        const wchar_t* bitmap;
    } cases[] = {
        {true, true, L"QEN_CHECKED"},
        {false, true, L"QEN_UNCHECKED"},
        {true, false, L"QEN_DISABLED_CHECKED"},
        {false, false, L"QEN_DISABLED_UNCHECKED"},
    };
    std::vector<std::vector<COLORREF>> bitmaps;
    for (const auto& k : cases) {
        bitmaps.push_back(LibraryBitmap(k.bitmap));
        ASSERT_EQ(bitmaps.back().size(), 169u) << k.bitmap;
    }
    for (size_t i = 0; i < 4; ++i) {
        zxtest::Set(dlg.Camera(), L"AutoExposure", cases[i].checked);
        check.UpdateFromGeneric();
        EnableWindow(dlg.Item(IDC_CH_OWNER1), cases[i].enabled);
        Canvas canvas(120, 21, 0);
        DRAWITEMSTRUCT dis = {};
        dis.CtlType = ODT_BUTTON;
        dis.CtlID = IDC_CH_OWNER1;
        dis.itemState = cases[i].enabled ? 0 : ODS_DISABLED;
        dis.hwndItem = dlg.Item(IDC_CH_OWNER1);
        dis.hDC = canvas.Dc();
        dis.rcItem = RECT{0, 0, 120, 21};
        EXPECT_TRUE(check.DrawItem(&dis));
        const std::vector<COLORREF> drawn = canvas.Square(0, 4, 13);
        for (size_t j = 0; j < 4; ++j)
            EXPECT_EQ(drawn == bitmaps[j], i == j) << cases[i].bitmap << " drawn, compared with " << cases[j].bitmap;
    }
    DRAWITEMSTRUCT other = {};
    other.CtlType = ODT_BUTTON;
    other.CtlID = IDC_CH_OWNER2;
    EXPECT_FALSE(check.DrawItem(&other));
    zxtest::DiagCapture diag;
    EXPECT_EQ(ZX_DrawCheckButton(nullptr, true, false, true), ZX_E_FAIL);
    EXPECT_EQ(diag.Size(), 1u);
}

TEST_F(ChoiceControls, RadioLabelsItsButtonsAndWritesAFormatChangingPropertyFormatAware)
{
    CZxISControlRadio area(L"SensorMode", ZX_MODE_FAST, IDC_CH_RADIO1, IDC_CH_RADIO3, 1);
    dlg.Attach(area);
    EXPECT_EQ(area.Reinit(), 0);
    EXPECT_EQ(ItemText(dlg, IDC_CH_RADIO1), L"Ganzer Sensor");
    EXPECT_EQ(ItemText(dlg, IDC_CH_RADIO2), L"Mittlere H\u00e4lfte");
    EXPECT_FALSE(IsWindowVisible(dlg.Item(IDC_CH_RADIO3))) << "no third element";
    EXPECT_EQ(area.Enable(true), 0);
    EXPECT_FALSE(IsWindowEnabled(dlg.Item(IDC_CH_RADIO3)));
    EXPECT_EQ(area.UpdateFromGeneric(), 0);
    EXPECT_EQ(IsDlgButtonChecked(dlg.Hwnd(), IDC_CH_RADIO1), BST_CHECKED);

    EXPECT_TRUE(dlg.Click(IDC_CH_RADIO2));
    EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, SensorMode=1)");
    EXPECT_EQ(Messages(dlg), (std::vector<UINT>{WM_IS_FORMATCHANGING, WM_IS_FORMATCHANGED, WM_IS_PROPERTYCHANGED,
                                                WM_IS_STATECHANGE}));
    EXPECT_NE(dlg.Notifications()[0].lParam, 0) << "the sensor area changes, so the format does";
    EXPECT_EQ(IsDlgButtonChecked(dlg.Hwnd(), IDC_CH_RADIO1), BST_UNCHECKED);
    EXPECT_EQ(IsDlgButtonChecked(dlg.Hwnd(), IDC_CH_RADIO2), BST_CHECKED);
    EXPECT_TRUE(dlg.Click(IDC_CH_RADIO3)) << "a button without an element is handled";
    EXPECT_EQ(dlg.Camera().CallCount(L"PropSet_WRP"), 1);
    dlg.List().Remove(&area);

    CZxISControlRadioNT readout(L"ReadoutMode", ZX_MODE_FAST, IDC_CH_RADIO1, IDC_CH_RADIO3, 1);
    dlg.Attach(readout);
    EXPECT_EQ(readout.Reinit(), 0);
    EXPECT_EQ(ItemText(dlg, IDC_CH_RADIO2), L"Standard");
    EXPECT_TRUE(dlg.Click(IDC_CH_RADIO3));
    EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, ReadoutMode=2)");
    EXPECT_EQ(dlg.Notifications().back().message, UINT(WM_IS_PROPERTYCHANGED)) << "a plain write";
}

TEST_F(ChoiceControls, SpinListWritesTheElementAndNextPrevWritesTheIndexStoppingAtTheEnds)
{
    CZxISControlSpinList light(L"LightSource", ZX_MODE_FAST, IDC_CH_SPIN_EDIT, IDC_CH_SPIN, 1);
    dlg.Attach(light);
    EXPECT_EQ(light.Reinit(), 0);
    int low = -1, high = -1;
    SendDlgItemMessageW(dlg.Hwnd(), IDC_CH_SPIN, UDM_GETRANGE32, WPARAM(&low), LPARAM(&high));
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 2);
    EXPECT_EQ(light.UpdateFromGeneric(), 0);
    EXPECT_EQ(ItemText(dlg, IDC_CH_SPIN_EDIT), L"Leuchtdiode");
    SendDlgItemMessageW(dlg.Hwnd(), IDC_CH_SPIN, UDM_SETPOS32, 0, 2);
    EXPECT_TRUE(dlg.Scroll(IDC_CH_SPIN, SB_THUMBPOSITION, 2));
    EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, LightSource=\"daylight\")");
    EXPECT_EQ(ItemText(dlg, IDC_CH_SPIN_EDIT), L"Tageslicht");
    CZxISControlSpinListNT lightNT(L"LightSource", ZX_MODE_FAST, IDC_CH_SPIN_EDIT, IDC_CH_SPIN, 2);
    lightNT.Attach(dlg.ZxHwnd(), &dlg.Camera(), nullptr);
    lightNT.UpdateFromGeneric();
    EXPECT_EQ(ItemText(dlg, IDC_CH_SPIN_EDIT), L"Daylight");

    CZxISControlNextPrevList filter(L"FilterWheel", ZX_MODE_FAST, IDC_CH_NP_TEXT, IDC_CH_NEXT, IDC_CH_PREV, 1);
    dlg.Attach(filter);
    EXPECT_EQ(filter.UpdateFromGeneric(), 0);
    EXPECT_EQ(ItemText(dlg, IDC_CH_NP_TEXT), L"Offen");
    dlg.Camera().ClearCallLog();
    EXPECT_TRUE(dlg.Click(IDC_CH_PREV)) << "at the first element: handled, nothing written";
    EXPECT_EQ(dlg.Camera().CallCount(L"PropSet_WRP"), 0);
    for (int i = 1; i <= 5; ++i)
        EXPECT_TRUE(dlg.Click(IDC_CH_NEXT));
    EXPECT_EQ(dlg.Camera().CallCount(L"PropSet_WRP"), 4);
    EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, FilterWheel=4)");
    EXPECT_EQ(ItemText(dlg, IDC_CH_NP_TEXT), L"Geschlossen");
    EXPECT_TRUE(dlg.Click(IDC_CH_PREV));
    EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, FilterWheel=3)");
    CZxISControlNextPrevListNT filterNT(L"FilterWheel", ZX_MODE_FAST, IDC_CH_NP_TEXT, IDC_CH_NEXT, IDC_CH_PREV, 2);
    filterNT.Attach(dlg.ZxHwnd(), &dlg.Camera(), nullptr);
    filterNT.UpdateFromGeneric();
    EXPECT_EQ(ItemText(dlg, IDC_CH_NP_TEXT), L"Blue");
}
