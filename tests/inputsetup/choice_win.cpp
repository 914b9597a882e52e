// Choice controls on a real dialog over the simulated camera, with its German
// translation table installed: what the combos, format combos, checks, radios
// and list steppers show, and what a user's choice writes and announces.
#include <functional>
#include <memory>

#include "choice_test.h"

TEST_F(ChoiceControls, ComboShowsTheTranslatedListWritesTheElementAndRefillsOnlyAChangedList)
{
    CZxISControlCombo combo(L"TriggerMode", ZX_MODE_FAST, IDC_CH_COMBO, 1, true);
    dlg.Attach(combo);
    ComboSpy spy(dlg.Item(IDC_CH_COMBO));
    EXPECT_EQ(combo.UpdateFromGeneric(), 0);
    EXPECT_EQ(ComboTexts(dlg.Item(IDC_CH_COMBO)), (Texts{L"Freilauf", L"Softwaretrigger", L"Hardwaretrigger"}));
    EXPECT_EQ(Selection(dlg.Item(IDC_CH_COMBO)), 0);

    EXPECT_TRUE(dlg.SelectComboItem(IDC_CH_COMBO, 2));
    EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, TriggerMode=\"Hardware\")");
    EXPECT_EQ(Messages(dlg), std::vector<UINT>{WM_IS_PROPERTYCHANGED});

    spy.resets = 0;
    EXPECT_EQ(combo.Reinit(), 0);
    EXPECT_EQ(spy.resets, 0) << "an unchanged list is left alone";
    // A refill selects the driver's value, wherever the new list has it, or nothing;
    // a bulk write then carries that value, never the element now at the old index.
    dlg.Camera().SetProperty(L"TriggerMode", L"Trigger", ListOf({L"Line 2", L"Free Run", L"Software", L"Hardware"}),
                             L"Hardware");
    EXPECT_EQ(combo.Reinit(), 0);
    EXPECT_EQ(spy.resets, 1);
    EXPECT_EQ(ComboTexts(dlg.Item(IDC_CH_COMBO)).size(), 4u);
    EXPECT_EQ(Selection(dlg.Item(IDC_CH_COMBO)), 3);
    EXPECT_EQ(dlg.List().SetToGenericMany(&dlg.Camera(), ZX_MODE_FAST, ~0u), 0);
    EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, TriggerMode=\"Hardware\")");
    dlg.Camera().SetProperty(L"TriggerMode", L"Trigger", ListOf({L"Free Run", L"Software"}), L"Hardware");
    EXPECT_EQ(combo.Reinit(), 0);
    EXPECT_EQ(Selection(dlg.Item(IDC_CH_COMBO)), CB_ERR) << "the driver's value is in no entry";

    EXPECT_EQ(combo.ChangeMode(ZX_MODE_QUALITY), 0);
    EXPECT_EQ(combo.GetMode(), ZX_MODE_FAST) << "fixed mode";
}

TEST_F(ChoiceControls, EqualTextsSelectTheLaterAndAnUnknownValueLeavesNoSelectionForTheBulkWrite)
{
    CZxISControlCombo dup(L"Dup", ZX_MODE_FAST, IDC_CH_COMBO, 1, false);
    CZxISControlCombo trigger(L"TriggerMode", ZX_MODE_FAST, IDC_CH_COMBO2, 1, false);
    dlg.Attach(dup);
    dlg.Attach(trigger);
    dlg.Camera().SetProperty(L"Dup", L"Dup", ListOf({L"A", L"B", L"A"}), L"A");
    EXPECT_EQ(dup.UpdateFromGeneric(), 0);
    EXPECT_EQ(Selection(dlg.Item(IDC_CH_COMBO)), 2);

    dlg.Camera().SetProperty(L"Dup", L"Dup", ListOf({L"A", L"B", L"A"}), L"Z");
    trigger.UpdateFromGeneric();
    EXPECT_EQ(dup.UpdateFromGeneric(), 0);
    EXPECT_EQ(Selection(dlg.Item(IDC_CH_COMBO)), CB_ERR);
    SZxGrabberPropertyValue v(L"Dup");
    EXPECT_EQ(dup.GetPropValForGeneric(v), ZX_E_NOSELECTION);
    EXPECT_EQ(dlg.List().SetToGenericMany(&dlg.Camera(), ZX_MODE_FAST, ~0u), 0);
    EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), L"PropSet_WRP(1, TriggerMode=\"Free Run\")");
}

TEST_F(ChoiceControls, OwnFillingIsNotWrittenBackAndARefreshWhileDroppedIsRefused)
{
    CZxISControlCombo combo(L"TriggerMode", ZX_MODE_FAST, IDC_CH_COMBO, 1, false);
    dlg.Attach(combo);
    ComboSpy spy(dlg.Item(IDC_CH_COMBO));
    spy.echoSelection = true;
    EXPECT_EQ(combo.UpdateFromGeneric(), 0);
    EXPECT_EQ(combo.ResetToDefault(), 0);
    EXPECT_EQ(dlg.Camera().CallCount(L"PropSet_WRP"), 1) << "only the default itself is written";
    spy.echoSelection = false;

    EXPECT_FALSE(dlg.Command(IDC_CH_COMBO, CBN_DROPDOWN));
    EXPECT_TRUE(combo.IsDropped());
    spy.resets = 0;
    EXPECT_EQ(combo.UpdateFromGeneric(), ZX_E_BUSY);
    EXPECT_EQ(combo.ResetToDefault(), ZX_E_BUSY);
    EXPECT_EQ(spy.resets, 0);
    EXPECT_FALSE(dlg.Command(IDC_CH_COMBO, CBN_CLOSEUP));
    EXPECT_EQ(combo.UpdateFromGeneric(), 0);
}

namespace {
// Makes a value combo of class C over property `name` on the test dialog's first combo.
template <class C>
std::function<CZxISControlCombo*()> Combo(const wchar_t* name)
{
    return [name] { return new C(name, 1, IDC_CH_COMBO, 1, false); };
}
} // namespace

TEST_F(ChoiceControls, EachValueComboShowsItsLabelsSelectsTheValueAndWritesItsKindOfValue)
{
    const struct {
        std::function<CZxISControlCombo*()> control;
        Texts shown;
        int selected;
        int choose;
        const wchar_t* written;
    } cases[] = {
        {Combo<CZxISControlComboInt32>(L"PixelClock"), {L"12", L"24", L"48"}, 1, 2, L"PixelClock=48"},
        {Combo<CZxISControlComboDouble>(L"Sharpness"), {L"0,0", L"0,5", L"1,0", L"2,0"}, 0, 3, L"Sharpness=2.000000"},
        {Combo<CZxISControlComboTextInt32>(L"ReadoutMode"), {L"Rauscharm", L"Normal", L"Schnell"}, 2, 0, L"ReadoutMode=0"},
        {Combo<CZxISControlComboTextDouble>(L"Temperature"),
         {L"-30 \u00b0C", L"-20 \u00b0C", L"-10 \u00b0C", L"0 \u00b0C", L"10 \u00b0C", L"20 \u00b0C"}, 2, 5,
         L"Temperature=20.000000"},
        {Combo<CZxISControlComboTextStringW>(L"LightSource"), {L"Leuchtdiode", L"Halogenlampe", L"Tageslicht"}, 0, 2,
         L"LightSource=\"daylight\""},
        {Combo<CZxISControlComboNT>(L"TriggerMode"), {L"Free Run", L"Software", L"Hardware"}, 0, 1,
         L"TriggerMode=\"Software\""},
        {Combo<CZxISControlComboExNT>(L"TriggerMode"), {L"Free Run", L"Software", L"Hardware"}, 1, 2,
         L"TriggerMode=\"Hardware\""},
    };
    for (const auto& k : cases) {
        SCOPED_TRACE(k.written);
        std::unique_ptr<CZxISControlCombo> c(k.control());
        dlg.Attach(*c);
        EXPECT_EQ(c->UpdateFromGeneric(), 0);
        EXPECT_EQ(ComboTexts(dlg.Item(IDC_CH_COMBO)), k.shown);
        EXPECT_EQ(Selection(dlg.Item(IDC_CH_COMBO)), k.selected);
        EXPECT_TRUE(dlg.SelectComboItem(IDC_CH_COMBO, k.choose));
        EXPECT_EQ(LastCall(dlg.Camera(), L"PropSet_WRP"), std::wstring(L"PropSet_WRP(1, ") + k.written + L")");
        EXPECT_EQ(c->UpdateFromGeneric(), 0);
        EXPECT_EQ(Selection(dlg.Item(IDC_CH_COMBO)), k.choose) << "the camera took the value";
        dlg.List().Remove(c.get());
    }
}

TEST_F(ChoiceControls, BadListsAreReportedAndLeaveAnEmptyCombo)
{
    CZxVariant noList = CZxVariant::MakeRecord(L"RZxList");
    noList[L"m_items"] = CZxVariant::MakeArray();
    CZxVariant noText = CZxVariant::MakeRecord(L"");
    noText[L"m_iValue"] = 1;
    const struct {
        const wchar_t* what;
        CZxVariant def;
        bool records;
        const wchar_t* condition;
    } cases[] = {
        {L"no m_list", noList, false, L"list == nullptr || !list->IsArray()"},
        {L"empty list", ListOf({}), false, L"list->GetCount() == 0"},
        {L"numbers in a text list", ListOf({1, 2}), false, L"element.GetKind() != CZxVariant::EKind::String"},
        {L"record without text", ListOf({noText}), true,
         L"text == nullptr || text->GetKind() != CZxVariant::EKind::String"},
        {L"text in a record list", ListOf({L"A"}), true, L"!element.IsRecord()"},
    };
    for (const auto& k : cases) {
        zxtest::DiagCapture diag;
        dlg.Camera().SetProperty(L"Bad", L"Bad", k.def, 1);
        std::unique_ptr<CZxISControlCombo> c(
            k.records ? new CZxISControlComboTextInt32(L"Bad", 1, IDC_CH_COMBO, 1, false)
                      : new CZxISControlCombo(L"Bad", 1, IDC_CH_COMBO, 1, false));
        dlg.Attach(*c);
        SendMessageW(dlg.Item(IDC_CH_COMBO), CB_ADDSTRING, 0, LPARAM(L"stale"));
        EXPECT_EQ(c->Reinit(), ZX_E_FAIL) << k.what;
        EXPECT_EQ(c->UpdateFromGeneric(), ZX_E_FAIL) << k.what;
        EXPECT_EQ(SendMessageW(dlg.Item(IDC_CH_COMBO), CB_GETCOUNT, 0, 0), 0) << k.what;
        SZxGrabberPropertyValue v(L"Bad");
        EXPECT_EQ(c->GetPropValForGeneric(v), ZX_E_NOSELECTION) << k.what;
        EXPECT_EQ(diag.Count(k.condition), 2) << k.what;
        dlg.List().Remove(c.get());
    }
}

TEST_F(ChoiceControls, InformationTextOfTheSelectedEntryIsTheCombosTooltip)
{
    CZxISControlComboInt32 clock(L"PixelClock", 1, IDC_CH_COMBO, 1, false);
    dlg.Attach(clock);
    const wchar_t* info[] = {L"Low Noise", nullptr, L"Fastest"};
    EXPECT_EQ(clock.SetInfoText(info, 3), 0);
    EXPECT_EQ(clock.UpdateFromGeneric(), 0);
    EXPECT_EQ(clock.GetShownInfoText(), CZxStringW(L"")) << "24 MHz has no text";
    dlg.SelectComboItem(IDC_CH_COMBO, 0);
    EXPECT_EQ(clock.GetShownInfoText(), CZxStringW(L"Rauscharm")) << "translated like the labels";

    HWND tip = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), [](HWND w, LPARAM out) {
        wchar_t cls[64] = {};
        GetClassNameW(w, cls, 64);
        if (lstrcmpiW(cls, TOOLTIPS_CLASSW) != 0)
            return TRUE;
        *reinterpret_cast<HWND*>(out) = w;
        return FALSE;
    }, LPARAM(&tip));
    ASSERT_NE(tip, nullptr);
    wchar_t buf[80] = {};
    TOOLINFOW ti = {};
    ti.cbSize = TTTOOLINFOW_V2_SIZE;
    ti.hwnd = dlg.Hwnd();
    ti.uId = UINT_PTR(dlg.Item(IDC_CH_COMBO));
    ti.lpszText = buf;
    SendMessageW(tip, TTM_GETTEXTW, 80, LPARAM(&ti));
    EXPECT_STREQ(buf, L"Rauscharm");
    zxtest::DiagCapture diag;
    EXPECT_EQ(clock.SetInfoText(nullptr, 2), ZX_E_FAIL);
    EXPECT_EQ(diag.Size(), 1u);
}
