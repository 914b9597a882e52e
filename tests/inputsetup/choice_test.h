// Helpers of the choice-control tests: the dialog with the simulated camera's
// translations installed, and readers of what the items show.
#pragma once
#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "choice_test_resource.h"
#include "zx/status.h"
#include "zx_dialog.h"
#include "zx_test.h"
#include "zxhost/system.h"

using zxtest::TestDialog;
using Texts = std::vector<std::wstring>;

namespace choicetest {

using zxtest::ComboTexts;
using zxtest::ItemText;
using zxtest::LastCall;
using zxtest::Messages;
using zxtest::Selection;

inline CZxVariant ListOf(std::initializer_list<CZxVariant> items, const wchar_t* member = L"m_list")
{
    CZxVariant def = CZxVariant::MakeRecord(L"RZxList");
    def[member] = CZxVariant::MakeArray();
    for (const auto& i : items)
        def[member].Add(i);
    return def;
}

// Counts CB_RESETCONTENT on a combo and, when asked, reports every CB_SETCURSEL
// to the dialog as a selection change, as some owner-drawn combos do.
struct ComboSpy {
    int resets = 0;
    bool echoSelection = false;
    explicit ComboSpy(HWND combo) : m_combo(combo) { SetWindowSubclass(combo, &Proc, 1, reinterpret_cast<DWORD_PTR>(this)); }
    ~ComboSpy() { RemoveWindowSubclass(m_combo, &Proc, 1); }
    static LRESULT CALLBACK Proc(HWND w, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR self)
    {
        auto* spy = reinterpret_cast<ComboSpy*>(self);
        const LRESULT r = DefSubclassProc(w, msg, wp, lp);
        if (msg == CB_RESETCONTENT)
            ++spy->resets;
        if (msg == CB_SETCURSEL && spy->echoSelection)
            SendMessageW(GetParent(w), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(w), CBN_SELCHANGE), LPARAM(w));
        return r;
    }
    HWND m_combo;
};

class ChoiceControls : public ::testing::Test {
protected:
    void SetUp() override { m_old = ZX_SetTranslationHook(&CZxSimCamera::Translate); }
    void TearDown() override { ZX_SetTranslationHook(m_old); }
    PFN_ZxTranslate m_old = nullptr;
    TestDialog dlg{IDD_CH_TEST};
};
} // namespace choicetest
using namespace choicetest;
