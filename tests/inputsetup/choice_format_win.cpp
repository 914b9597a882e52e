// The combos bound to the camera format: which formats they offer, what a
// choice sets and announces, and the binning combo's copies of its formats.
#include "choice_test.h"

namespace {
std::vector<std::wstring> g_log;
void KeepLog(int, const wchar_t* text) { g_log.push_back(text); }
} // namespace

TEST_F(ChoiceControls, FormatComboOffersTheModesFormatsAndAnnouncesAChoiceWithoutAStateChange)
{
    const struct {
        uint32_t mode;
        Texts shown;
        int current;
    } cases[] = {
        {ZX_MODE_FAST,
         {L"2048 x 1536", L"1024 x 768 (Binning 2x2)", L"512 x 384 (Binning 4x4)", L"1024 x 768 (Center)",
          L"512 x 384 (Center, Binning 2x2)"},
         1},
        {ZX_MODE_QUALITY, {L"2048 x 1536", L"1024 x 768 (Binning 2x2)", L"2048 x 1536 (Extended Dynamic)"}, 0},
    };
    for (const auto& k : cases) {
        CZxISControlComboFormat format(k.mode, IDC_CH_FORMAT, 1, true);
        dlg.Attach(format);
        EXPECT_EQ(format.Reinit(), 0);
        EXPECT_EQ(format.UpdateFromGeneric(), 0);
        EXPECT_EQ(ComboTexts(dlg.Item(IDC_CH_FORMAT)), k.shown) << k.mode;
        EXPECT_EQ(Selection(dlg.Item(IDC_CH_FORMAT)), k.current) << k.mode;
        dlg.List().Remove(&format);
    }

    CZxISControlComboFormat format(ZX_MODE_FAST, IDC_CH_FORMAT, 1, true);
    dlg.Attach(format);
    format.Reinit();
    EXPECT_TRUE(dlg.SelectComboItem(IDC_CH_FORMAT, 3));
    ASSERT_EQ(Messages(dlg), (std::vector<UINT>{WM_IS_FORMATCHANGING, WM_IS_FORMATCHANGED}));
    EXPECT_EQ(dlg.Notifications()[0].wParam, WPARAM(ZX_MODE_FAST));
    EXPECT_EQ(dlg.Notifications()[0].format.m_wstrName, CZxStringW(L"1024 x 768 (Center)"));
    EXPECT_EQ(LastCall(dlg.Camera(), L"FormatSet_WRP"), L"FormatSet_WRP(1, 1024 x 768 (Center))");

    EXPECT_EQ(format.ResetToDefault(), 0);
    EXPECT_EQ(LastCall(dlg.Camera(), L"FormatSet_WRP"), L"FormatSet_WRP(1, 1024 x 768 (Binning 2x2))");
    EXPECT_EQ(Selection(dlg.Item(IDC_CH_FORMAT)), 1);
    EXPECT_EQ(dlg.Notifications().size(), 4u);

    // A current format the combo does not offer (a quality-only one here) leaves no
    // selection rather than the one shown before.
    SZxGrabberFormatValue extended;
    extended.m_wstrName = L"2048 x 1536 (Extended Dynamic)";
    ASSERT_EQ(dlg.Camera().FormatSet_WRP(ZX_MODE_FAST, extended, nullptr, false), 0);
    EXPECT_EQ(format.UpdateFromGeneric(), 0);
    EXPECT_EQ(Selection(dlg.Item(IDC_CH_FORMAT)), CB_ERR);
}

TEST_F(ChoiceControls, SeventyFormatsShowSixtyFourAndTheDetailedLogSaysSo)
{
    dlg.Camera().SetExtraFormats(64);   // 70 with the camera's own six
    CZxISControlComboFormat format(ZX_MODE_FAST, IDC_CH_FORMAT, 1, false);
    dlg.Attach(format);
    PFN_ZxLogSink old = ZX_SetLogSink(&KeepLog);
    for (int detail : {0, 1}) {
        g_log.clear();
        ZX_SetLogDetail(detail);
        EXPECT_EQ(format.Reinit(), 0);
        EXPECT_EQ(SendMessageW(dlg.Item(IDC_CH_FORMAT), CB_GETCOUNT, 0, 0), 64);
        EXPECT_EQ(format.GetFormatCount(), 64);
        EXPECT_EQ(g_log.size(), size_t(detail)) << detail;
    }
    ZX_SetLogDetail(0);
    ZX_SetLogSink(old);
    EXPECT_NE(g_log.at(0).find(L"cannot display more than 64 formats"), std::wstring::npos);
}

TEST_F(ChoiceControls, BinningComboFollowsTheFormatGroupAnnouncesOnlyInItsNotifyModeAndFreesItsCopies)
{
    const long long before = CZxAlloc::Outstanding();
    {
        CZxISControlComboBinning binning(L"", ZX_MODE_FAST, IDC_CH_BINNING, 1);
        dlg.Attach(binning);
        EXPECT_EQ(binning.Reinit(), 0);
        EXPECT_EQ(binning.UpdateFromGeneric(), 0);
        EXPECT_EQ(ComboTexts(dlg.Item(IDC_CH_BINNING)), (Texts{L"Ohne Binning", L"2x2-Binning", L"4x4-Binning"}));
        EXPECT_EQ(Selection(dlg.Item(IDC_CH_BINNING)), 1);
        EXPECT_EQ(CZxAlloc::Outstanding() - before, 3);
        EnableWindow(dlg.Item(IDC_CH_BINNING), FALSE);
        binning.UpdateState();
        EXPECT_TRUE(IsWindowEnabled(dlg.Item(IDC_CH_BINNING))) << "a format has no property state";

        EXPECT_TRUE(dlg.SelectComboItem(IDC_CH_BINNING, 0));
        EXPECT_EQ(LastCall(dlg.Camera(), L"FormatSet_WRP"), L"FormatSet_WRP(1, 2048 x 1536)");
        EXPECT_TRUE(dlg.Notifications().empty()) << "mode 1 is not the notify mode 0";
        binning.SetNotifyMode(ZX_MODE_FAST);
        EXPECT_TRUE(dlg.SelectComboItem(IDC_CH_BINNING, 2));
        EXPECT_EQ(Messages(dlg), (std::vector<UINT>{WM_IS_FORMATCHANGING, WM_IS_FORMATCHANGED}));
        EXPECT_EQ(dlg.Notifications()[0].format.m_wstrName, CZxStringW(L"512 x 384 (Binning 4x4)"));

        SZxGrabberFormatValue center;
        center.m_wstrName = L"512 x 384 (Center, Binning 2x2)";
        dlg.Camera().FormatSet_WRP(ZX_MODE_FAST, center, nullptr, false);
        EXPECT_EQ(binning.UpdateFromGeneric(), 0);
        EXPECT_EQ(binning.GetGroup(), 1);
        EXPECT_EQ(ComboTexts(dlg.Item(IDC_CH_BINNING)), (Texts{L"Ohne Binning", L"2x2-Binning"}));
        EXPECT_EQ(Selection(dlg.Item(IDC_CH_BINNING)), 1);
        EXPECT_EQ(CZxAlloc::Outstanding() - before, 2) << "the first group's copies are gone";
    }
    EXPECT_EQ(CZxAlloc::Outstanding(), before);
}
