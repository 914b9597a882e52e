// Free-entry exposure and temperature combos on a real dialog: preset lists,
// typed values committed by a real Enter through the keyboard hook and the
// control list, the nearest preset, refusals while the user works, the hook's
// lifetime and the click that opens the list centred on the value.
#include <windows.h>

#include <numeric>
#include <string>
#include <vector>

#include "freecombo_test_resource.h"
#include "numeric_fixture.h"
#include "zx_test.h"
#include "zxhost/exposure.h"

typedef CZxISControlComboFreeExposure Exposure;
typedef CZxISControlComboFreeTemperature Temperature;

using numtest::OddCamera;
using zxtest::Calls;
using zxtest::ComboTexts;
using zxtest::ItemText;
using zxtest::Selection;
using zxtest::Set;
using zxtest::TestDialog;
using zxtest::Value;

namespace {
const UINT kPrivate = WM_USER + 500;

CZxVariant Presets(const std::vector<double>& values, bool exposure)
{
    CZxVariant list = CZxVariant::MakeArray();
    for (double v : values) {
        CZxVariant e;
        e[L"m_dValue"] = v;
        e[L"m_wstrText"] = exposure ? ZX_ExposureToText(v, -1.0) : CZxStringW::Formatted(L"%g \u00b0C", v);
        list.Add(e);
    }
    return list;
}

// Types `text` into the combo's edit part as the user would leave it: the text,
// then the notification the combo sends for typing.
void Type(TestDialog& dlg, int id, const wchar_t* text)
{
    SetWindowTextW(dlg.Item(id), text);
    dlg.Command(id, CBN_EDITCHANGE);
}
} // namespace

// Both free combos on their dialog over a camera whose definitions a test may change.
class FreeCombos : public ::testing::Test {
protected:
    FreeCombos()
    {
        e.Attach(dlg.ZxHwnd(), &cam, &dlg.List());
        t.Attach(dlg.ZxHwnd(), &cam, &dlg.List());
    }
    TestDialog dlg{IDD_FREE_TEST};
    OddCamera cam;
    Exposure e{L"Exposure", ZX_MODE_FAST, IDC_FREE_EXPOSURE, 1, kPrivate, false};
    Temperature t{L"Temperature", ZX_MODE_FAST, IDC_FREE_TEMPERATURE, 1, kPrivate};
};

TEST_F(FreeCombos, TemperatureShowsTheDecimalsOfTheStep)
{
    const struct {
        double step;
        int decimals;
        const wchar_t* shown;
    } cases[] = {{0.25, 2, L"-10.00"}, {0.5, 1, L"-10.0"}, {0.001, 3, L"-10.000"},
                 {1, 0, L"-10"},       {10, 0, L"-10"},    {0.0001, 0, L"-10"}};
    for (const auto& k : cases) {
        cam.members[L"Temperature"][L"m_dStep"] = k.step;
        EXPECT_EQ(t.Reinit(), 0);
        EXPECT_EQ(t.UpdateFromGeneric(), 0);
        EXPECT_EQ(t.GetDecimals(), k.decimals) << k.step;
        EXPECT_EQ(ItemText(dlg, IDC_FREE_TEMPERATURE), k.shown) << k.step;
    }
}

TEST(FreeTemperature, TextsKeepTheLeadingNumberAndClampIt)
{
    const struct {
        const wchar_t* text;
        double min, max, value;
    } cases[] = {{L"abc", -30, 20, 0.0}, {L"abc", 5, 20, 5.0},       {L"-15", -10, 20, -10.0},
                 {L"99", -10, 20, 20.0}, {L"12.5 \u00b0C", -30, 20, 12.5}, {L"nan", -30, 20, 0.0},
                 {nullptr, 1, 2, 1.0}};
    for (const auto& k : cases)
        EXPECT_EQ(ZX_TextToTemperature(k.text, k.min, k.max), k.value) << (k.text ? k.text : L"null");
    CZxStringW s;
    ZX_TemperatureToText(s, -7.25, 1);
    EXPECT_STREQ(s, L"-7.2");
    ZX_TemperatureToText(s, 12.5, -1);
    EXPECT_STREQ(s, L"12.5 \u00b0C");
}

TEST_F(FreeCombos, ExposureOffersThePresetsInRangeAndTheMaximumOnlyWellAboveThem)
{
    const struct {
        double max;
        std::vector<std::wstring> items;
    } cases[] = {{105.0, {L"1 ms", L"10 ms", L"100 ms"}}, {106.0, {L"1 ms", L"10 ms", L"100 ms", L"106 ms"}}};
    auto& def = cam.members[L"Exposure"];
    def[L"m_List"] = Presets({0.1, 1, 10, 100, 1000}, true);
    def[L"m_dMin"] = 0.5;
    for (const auto& k : cases) {
        def[L"m_dMax"] = k.max;
        EXPECT_EQ(e.Reinit(), 0);
        EXPECT_EQ(ComboTexts(dlg.Item(IDC_FREE_EXPOSURE)), k.items) << k.max;
    }
    // Opening the list selects the nearest preset by its combo index: 0.1 ms is
    // not in the combo, so 10 ms is item 1.
    Type(dlg, IDC_FREE_EXPOSURE, L"9 ms");
    dlg.Command(IDC_FREE_EXPOSURE, CBN_DROPDOWN);
    EXPECT_EQ(Selection(dlg.Item(IDC_FREE_EXPOSURE)), 1);
    EXPECT_EQ(ItemText(dlg, IDC_FREE_EXPOSURE), L"10 ms") << "the selection shows";
    dlg.Command(IDC_FREE_EXPOSURE, CBN_CLOSEUP);

    // Unsorted lists, presets out of range anywhere: the index is the nearest
    // preset's place among the combo's own items, never past its end.
    const struct {
        std::vector<double> presets;
        const wchar_t* typed;
        int selected;
    } lists[] = {{{1000, 10, 1, 100}, L"9 ms", 0}, {{1, 10, 100, 0.1}, L"90 ms", 2}, {{1000, 100}, L"90 ms", 0}};
    def[L"m_dMax"] = 105.0;
    for (const auto& k : lists) {
        def[L"m_List"] = Presets(k.presets, true);
        EXPECT_EQ(e.Reinit(), 0);
        Type(dlg, IDC_FREE_EXPOSURE, k.typed);
        dlg.Command(IDC_FREE_EXPOSURE, CBN_DROPDOWN);
        EXPECT_EQ(Selection(dlg.Item(IDC_FREE_EXPOSURE)), k.selected) << k.presets.size() << " " << k.typed;
        dlg.Command(IDC_FREE_EXPOSURE, CBN_CLOSEUP);
    }
}

// Enter commits what was typed into either combo (through the keyboard hook) or
// the exposure edit; a typing error writes back what the driver has, and the item
// then shows the driver's value.
TEST_F(FreeCombos, EnterCommitsTheTypedValueOrTheDriverValueForATypingErrorAndShowsTheDriverValue)
{
    CZxISControlEditBase::Init(); // the hosts' start-up does this once
    CZxISControlEditExposure edit(L"Exposure", ZX_MODE_FAST, IDC_FREE_EDIT, 1, kPrivate, false);
    edit.Attach(dlg.ZxHwnd(), &cam, &dlg.List());
    cam.members[L"Temperature"][L"m_dMin"] = -10.0;
    dlg.List().ReinitAndUpdateMany(~0u);
    EXPECT_EQ(ItemText(dlg.Item(IDC_FREE_EXPOSURE), 0), L"20 ms");
    EXPECT_EQ(ItemText(dlg.Item(IDC_FREE_EDIT), 0), L"20 ms");
    const struct {
        CZxISControl* combo;   // null for the edit
        int id;
        const wchar_t* typed;
        const wchar_t* written;
        const wchar_t* shown;
    } cases[] = {{&e, IDC_FREE_EXPOSURE, L"37.5", L"Exposure=37.500000", L"37.5 ms"},
                 {&e, IDC_FREE_EXPOSURE, L"1,5 s", L"Exposure=1500.000000", L"1.5 s"},
                 {&e, IDC_FREE_EXPOSURE, L"soon", L"Exposure=1500.000000", L"1.5 s"},
                 {&t, IDC_FREE_TEMPERATURE, L"-15", L"Temperature=-10.000000", L"-10.0"},
                 {&t, IDC_FREE_TEMPERATURE, L"frost", L"Temperature=0.000000", L"0.0"},
                 {&t, IDC_FREE_TEMPERATURE, L"7.5 degrees", L"Temperature=7.500000", L"7.5"},
                 {nullptr, IDC_FREE_EDIT, L"1,5 s", L"Exposure=1500.000000", L"1.5 s"},
                 {nullptr, IDC_FREE_EDIT, L"250 us", L"Exposure=0.250000", L"250 \u00b5s"},
                 {nullptr, IDC_FREE_EDIT, L"later", L"Exposure=0.250000", L"250 \u00b5s"}};
    for (const auto& k : cases) {
        SCOPED_TRACE(testing::Message() << k.id << " " << k.typed);
        cam.ClearCallLog();
        if (k.combo) {
            Type(dlg, k.id, k.typed);
            EXPECT_EQ(k.combo->UpdateFromGeneric(), -10) << "typing wins over the driver";
        } else {
            SetWindowTextW(dlg.Item(k.id), k.typed);
        }
        dlg.Key(k.id, VK_RETURN);
        EXPECT_EQ(Calls(cam, L"PropSet_WRP"),
                  std::vector<std::wstring>{L"PropSet_WRP(1, " + std::wstring(k.written) + L")"});
        EXPECT_EQ(ItemText(dlg.Item(k.id), 0), k.shown);
        if (k.combo) {
            EXPECT_EQ(k.combo->UpdateFromGeneric(), 0) << "no longer editing";
        }
    }
    // Escape drops what was typed.
    cam.ClearCallLog();
    Type(dlg, IDC_FREE_EXPOSURE, L"3 ms");
    dlg.Key(IDC_FREE_EXPOSURE, VK_ESCAPE);
    EXPECT_TRUE(Calls(cam, L"PropSet_WRP").empty());
    EXPECT_EQ(ItemText(dlg.Item(IDC_FREE_EXPOSURE), 0), L"250 \u00b5s") << "what the edit wrote last";
    EXPECT_EQ(e.UpdateFromGeneric(), 0);
    // A picked preset is written at once.
    EXPECT_TRUE(dlg.SelectComboItem(IDC_FREE_TEMPERATURE, 4)); // -30 -20 -10 0 10 20
    EXPECT_EQ(Value(cam, L"Temperature"), 10.0);
    EXPECT_EQ(ItemText(dlg.Item(IDC_FREE_TEMPERATURE), 0), L"10.0");
}

TEST_F(FreeCombos, EqualDistancesSelectTheLowerIndex)
{
    e.Reinit();
    t.Reinit();
    Set(cam, L"Exposure", 15.0);     // between the presets 10 (item 6) and 20 ms
    Set(cam, L"Temperature", -25.0); // between -30 (item 0) and -20
    e.UpdateFromGeneric();
    t.UpdateFromGeneric();
    EXPECT_EQ(Selection(dlg.Item(IDC_FREE_EXPOSURE)), 6);
    EXPECT_EQ(ItemText(dlg, IDC_FREE_EXPOSURE), L"15 ms") << "the value itself, not the preset";
    EXPECT_EQ(Selection(dlg.Item(IDC_FREE_TEMPERATURE)), 0);
    EXPECT_EQ(ItemText(dlg, IDC_FREE_TEMPERATURE), L"-25.0");
}

TEST_F(FreeCombos, RefreshWhileTheListIsOpenIsRefusedAndClosingShowsTheDriverValue)
{
    const struct {
        CZxISControl* control;
        int id;
        const wchar_t* name;
        double value;
        const wchar_t* shown;
    } cases[] = {{&e, IDC_FREE_EXPOSURE, L"Exposure", 5.0, L"5 ms"},
                 {&t, IDC_FREE_TEMPERATURE, L"Temperature", 15.0, L"15.0"}};
    for (const auto& k : cases) {
        k.control->Reinit();
        k.control->UpdateFromGeneric();
        dlg.Command(k.id, CBN_DROPDOWN);
        Set(cam, k.name, k.value);
        EXPECT_EQ(k.control->UpdateFromGeneric(), -10) << k.name;
        EXPECT_NE(ItemText(dlg.Item(k.id), 0), k.shown) << k.name;
        dlg.Command(k.id, CBN_CLOSEUP);
        EXPECT_EQ(ItemText(dlg.Item(k.id), 0), k.shown) << k.name;
        EXPECT_EQ(k.control->UpdateFromGeneric(), 0) << k.name;
    }
}

TEST_F(FreeCombos, ExposureClickOpensTheListWithTheCurrentValueInItsMiddle)
{
    std::vector<double> many(80);
    std::iota(many.begin(), many.end(), 1.0);   // 1 .. 80 ms
    cam.members[L"Exposure"][L"m_List"] = Presets(many, true);
    cam.members[L"Exposure"][L"m_dMax"] = 80.0;
    e.Reinit();
    Set(cam, L"Exposure", 50.0);
    e.UpdateFromGeneric();
    HWND combo = dlg.Item(IDC_FREE_EXPOSURE);
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(GetComboBoxInfo(combo, &info));

    SendMessageW(combo, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_TRUE(SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_TRUE(e.IsDroppedDown());
    EXPECT_EQ(Selection(combo), 49);
    RECT list;
    GetWindowRect(info.hwndList, &list);
    EXPECT_GT(list.bottom - list.top, 300) << "the combo was made 400 pixels high";
    const int visible = 400 / static_cast<int>(SendMessageW(combo, CB_GETITEMHEIGHT, 0, 0));
    ASSERT_LT(visible, 80);
    EXPECT_EQ(SendMessageW(combo, CB_GETTOPINDEX, 0, 0), 49 - (visible - 1) / 2);
    SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
    EXPECT_FALSE(e.IsDroppedDown());
}

TEST(FreeExposure, TheHookLivesWhileAnyIsAttachedAModeLockKeepsTheBaseModeAndDetachRestoresTheCombo)
{
    TestDialog dlg(IDD_FREE_TEST);
    Exposure locked(L"Exposure", ZX_MODE_FAST, IDC_FREE_EXPOSURE, 1, kPrivate, true),
        free(L"CaptureMaxExposure", ZX_MODE_FAST, IDC_FREE_EXPOSURE2, 1, kPrivate, false);
    HWND combo = dlg.Item(IDC_FREE_EXPOSURE);
    const LONG_PTR proc = GetWindowLongPtrW(combo, GWLP_WNDPROC);
    EXPECT_EQ(Exposure::m_KeyboardHook, nullptr);
    dlg.Attach(locked);
    void* hook = Exposure::m_KeyboardHook;
    ASSERT_NE(hook, nullptr);
    dlg.Attach(free);
    EXPECT_EQ(Exposure::m_KeyboardHook, hook);
    EXPECT_EQ(Exposure::m_ControlList->GetSize(), 2);
    EXPECT_NE(GetWindowLongPtrW(combo, GWLP_WNDPROC), proc);
    dlg.List().ChangeModeMany(ZX_MODE_QUALITY, ~0u);
    EXPECT_EQ(locked.GetMode(), uint32_t(ZX_MODE_FAST));
    EXPECT_EQ(locked.GetOwnMode(), uint32_t(ZX_MODE_QUALITY));
    EXPECT_EQ(free.GetMode(), uint32_t(ZX_MODE_QUALITY));
    locked.Detach();
    EXPECT_EQ(GetWindowLongPtrW(combo, GWLP_WNDPROC), proc);
    EXPECT_FALSE(locked.IsEnabled());
    EXPECT_EQ(Exposure::m_KeyboardHook, hook);
    free.Detach();
    EXPECT_EQ(Exposure::m_KeyboardHook, nullptr);
    EXPECT_EQ(Exposure::m_ControlList->GetSize(), 0);
    EXPECT_FALSE(UnhookWindowsHookEx(static_cast<HHOOK>(hook))) << "already removed";
}

TEST(TemperatureCaution, TheLibraryCarriesTheTemplateByNameWithItsTexts)
{
    HMODULE library = GetModuleHandleW(L"zxgrabbersupport.dll");
    ASSERT_TRUE(library);
    HWND dlg = CreateDialogParamW(library, L"TEMPERATURE", nullptr, [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    ASSERT_TRUE(dlg);
    const struct {
        int id;
        const wchar_t* text;
    } items[] = {{0, L"Caution"},
                 {1201, L"Do you want to enable -10\u00b0 camera cooling? At this setting, condensation can occur in "
                        L"areas with relative humidity greater than 60%"},
                 {2201, L"Do not show the message again"},
                 {6, L"Yes"},
                 {7, L"No"}};
    for (const auto& k : items) {
        wchar_t buf[256] = {};
        GetWindowTextW(k.id ? GetDlgItem(dlg, k.id) : dlg, buf, 256);
        EXPECT_STREQ(buf, k.text) << k.id;
    }
    EXPECT_TRUE(GetDlgItem(dlg, 1401));
    EXPECT_EQ(GetWindowLongPtrW(GetDlgItem(dlg, 6), GWL_STYLE) & 0xF, BS_DEFPUSHBUTTON);
    EXPECT_EQ(GetWindowLongPtrW(GetDlgItem(dlg, 2201), GWL_STYLE) & 0xF, BS_AUTOCHECKBOX);
    DestroyWindow(dlg);
}
