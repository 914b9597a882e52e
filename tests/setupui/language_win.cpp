// Every dialog template in every language: the loader's choice of template,
// the same controls as the English one, texts that fit their controls in the
// dialog's font with glyphs for every character, unique mnemonics, and the
// reference driver's dialog and command menu in each language.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "../../resources/lang/layout.h"
#include "setupui/commandmenu_win.h"
#include "zx/dialoghelpers.h"
#include "zx/grabberuibase.h"
#include "zx/inputform.h"
#include "zxhost/locale.h"
#include "zxsim/languages.h"
#include "zxsim/setupui.h"
#include "zx_modal.h"

namespace {

const wchar_t* const kTemplates[] = {
    L"INPUT_FORM",          L"NEW_SETTING",          L"ADVANCED_SETUP",
    L"TEMPERATURE",         L"SHOW_HWUNITS",         L"HWUNIT_SELECT_PREVIEW",
    L"HWUNIT_SELECT_PREVIEW_ADD", L"HWUNIT_AND_CAMERA_SELECT_PREVIEW", L"CAMERA_SELECT_PREVIEW",
    L"SHOW_CAMERAS",        L"CAPTURE_BUTTON_SETUP",
};

/// Sets the user's language for a scope.
struct Language {
    explicit Language(WORD id) : before(ZX_SetLanguageId(id)) {}
    ~Language() { ZX_SetLanguageId(before); }
    WORD before;
};

INT_PTR CALLBACK Inert(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

/// A hidden dialog of a template (child templates inside a hidden owner);
/// destroyed with the object.
struct Dialog {
    explicit Dialog(HMODULE module, const DLGTEMPLATE* t)
    {
        owner = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 800, 600, nullptr, nullptr, nullptr, nullptr);
        hwnd = t ? CreateDialogIndirectParamW(module, t, owner, &Inert, 0) : nullptr;
    }
    ~Dialog() { DestroyWindow(owner); }
    HWND owner, hwnd;
};

std::string Utf8(const std::wstring& s)
{
    std::string out(s.size() * 3 + 1, '\0');
    out.resize(size_t(WideCharToMultiByte(CP_UTF8, 0, s.c_str(), int(s.size()), &out[0], int(out.size()), nullptr,
                                          nullptr)));
    return out;
}

std::wstring Text(HWND w) { return zxtest::ItemText(w, 0); }

std::wstring Caption(HMODULE module, const wchar_t* name, WORD lang)
{
    Language l(lang);
    Dialog d(module, ZX_LoadDialogTemplate(name, module));
    return d.hwnd ? Text(d.hwnd) : L"(none)";
}

TEST(Languages, LoaderTakesExactThenPrimaryThenNeutralThenAnyByName)
{
    HMODULE self = GetModuleHandleW(nullptr);
    const WORD swiss = MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN_SWISS);
    const WORD austrian = MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN_AUSTRIAN);
    const WORD japanese = MAKELANGID(LANG_JAPANESE, SUBLANG_JAPANESE_JAPAN);
    EXPECT_EQ(Caption(self, L"LT_FAMILY", swiss), L"de-CH");
    EXPECT_EQ(Caption(self, L"LT_FAMILY", austrian), L"de-DE") << "the primary language's default comes first";
    EXPECT_EQ(Caption(self, L"LT_FAMILY", MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN)), L"de-DE");
    EXPECT_EQ(Caption(self, L"LT_FAMILY", japanese), L"neutral");
    EXPECT_EQ(Caption(self, L"LT_FRENCH_ONLY", austrian), L"fr-FR");
    EXPECT_EQ(Caption(self, L"LT_FRENCH_ONLY", 0), L"fr-FR");
    Language l(swiss);
    EXPECT_EQ(ZX_LoadDialogTemplate(L"NO_SUCH_TEMPLATE", self), nullptr);
    EXPECT_EQ(ZX_LoadDialogTemplate(nullptr, self), nullptr);
    EXPECT_EQ(Dialog_Box_Param(self, L"NO_SUCH_TEMPLATE", nullptr, &Inert, 0), -1);
    // The dialog service takes the same choice.
    EXPECT_EQ(zxtest::DriveModal([&] { return Dialog_Box_Param(self, L"LT_FAMILY", nullptr, &Inert, 0); },
                                 [](HWND dlg) {
                                     EXPECT_EQ(Text(dlg), L"de-CH");
                                     EndDialog(dlg, 7);
                                 }),
              7);
}

BOOL CALLBACK Collect(HMODULE, LPCWSTR, LPCWSTR, WORD lang, LONG_PTR out)
{
    reinterpret_cast<std::vector<WORD>*>(out)->push_back(lang);
    return TRUE;
}

/// The template of exactly that language, as the resource holds it.
const DLGTEMPLATE* Exact(HMODULE module, const wchar_t* name, WORD lang)
{
    std::vector<WORD> have;
    EnumResourceLanguagesW(module, RT_DIALOG, name, &Collect, reinterpret_cast<LONG_PTR>(&have));
    if (std::find(have.begin(), have.end(), lang) == have.end())
        return nullptr;
    HRSRC res = FindResourceExW(module, RT_DIALOG, name, lang);
    HGLOBAL mem = res ? LoadResource(module, res) : nullptr;
    return mem ? static_cast<const DLGTEMPLATE*>(LockResource(mem)) : nullptr;
}

/// Width and height in dialog units of an extended template.
std::pair<int, int> Size(const DLGTEMPLATE* t)
{
    const WORD* w = reinterpret_cast<const WORD*>(t);
    // dlgVer, signature, helpID (2), exStyle (2), style (2), cDlgItems, x, y, cx, cy
    return {short(w[11]), short(w[12])};
}

int WidthPercent(const wchar_t* code, const wchar_t* name)
{
    for (const SZxWidenedTemplate& t : kZxWidenedTemplates)
        if (std::wstring(t.language) == code && std::wstring(t.name) == name)
            return t.widthPercent;
    return 100;
}

std::vector<HWND> Children(HWND dlg)
{
    std::vector<HWND> out;
    for (HWND c = GetWindow(dlg, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT))
        out.push_back(c);
    return out;
}

std::wstring ClassOf(HWND w)
{
    wchar_t buf[64] = L"";
    GetClassNameW(w, buf, 64);
    return buf;
}

/// Room for the text of a static or button: its width less what the control
/// draws beside the text (box, frame); 0 when the control shows no text.
int TextRoom(HWND w, bool& multiLine, int& height)
{
    RECT r{};
    GetClientRect(w, &r);
    const LONG style = LONG(GetWindowLongPtrW(w, GWL_STYLE));
    const std::wstring cls = ClassOf(w);
    height = r.bottom;
    multiLine = false;
    if (_wcsicmp(cls.c_str(), L"Button") == 0) {
        switch (style & BS_TYPEMASK) {
        case BS_PUSHBUTTON: case BS_DEFPUSHBUTTON: return r.right - 6;
        case BS_OWNERDRAW: case BS_GROUPBOX: return r.right - 16;   // the command menu's arrow; the frame
        case BS_CHECKBOX: case BS_AUTOCHECKBOX: case BS_RADIOBUTTON: case BS_AUTORADIOBUTTON:
        case BS_3STATE: case BS_AUTO3STATE: return r.right - 18;
        default: return 0;
        }
    }
    if (_wcsicmp(cls.c_str(), L"Static") == 0 && (style & SS_TYPEMASK) <= SS_RIGHT) {
        multiLine = true;   // decided against the font's line height by the caller
        return r.right;
    }
    return 0;
}

/// What is wrong with the texts of one dialog: texts wider or taller than
/// their controls, characters the font has no glyph for, repeated mnemonics.
std::vector<std::wstring> TextFaults(HWND dlg)
{
    std::vector<std::wstring> faults;
    std::map<wchar_t, std::wstring> mnemonics;
    std::vector<std::pair<std::wstring, HWND>> texts = {{Text(dlg), dlg}};
    for (HWND c : Children(dlg))
        texts.emplace_back(Text(c), c);
    for (auto& [text, w] : texts) {
        for (size_t i = 0; i + 1 < text.size(); ++i)
            if (text[i] == L'&' && text[i + 1] != L'&') {
                const wchar_t m = wchar_t(std::towlower(text[i + 1]));
                if (mnemonics.count(m))
                    faults.push_back(L"mnemonic " + std::wstring(1, m) + L" twice: " + mnemonics[m] + L" / " + text);
                mnemonics[m] = text;
            }
        if (text.empty())
            continue;
        HDC dc = GetDC(w);
        HGDIOBJ old = SelectObject(dc, HFONT(SendMessageW(w == dlg ? dlg : w, WM_GETFONT, 0, 0)));
        std::vector<WORD> glyphs(text.size());
        GetGlyphIndicesW(dc, text.c_str(), int(text.size()), glyphs.data(), GGI_MARK_NONEXISTING_GLYPHS);
        for (size_t i = 0; i < text.size(); ++i)
            if (glyphs[i] == 0xFFFF && !std::iswspace(text[i]) && text[i] != L'&') {
                faults.push_back(L"no glyph for U+" + std::to_wstring(unsigned(text[i])) + L" in " + text);
                break;
            }
        bool multi = false;
        int height = 0;
        const int room = w == dlg ? 0 : TextRoom(w, multi, height);
        if (room > 0) {
            TEXTMETRICW tm{};
            GetTextMetricsW(dc, &tm);
            RECT one{0, 0, room, 0};
            DrawTextW(dc, text.c_str(), -1, &one, DT_CALCRECT | DT_SINGLELINE);
            if (multi && height >= 2 * tm.tmHeight) {
                RECT wrapped{0, 0, room, 0};
                DrawTextW(dc, text.c_str(), -1, &wrapped, DT_CALCRECT | DT_WORDBREAK);
                if (wrapped.bottom > height || wrapped.right > room)
                    faults.push_back(L"taller than its control (" + std::to_wstring(wrapped.bottom) + L" > " +
                                     std::to_wstring(height) + L"): " + text);
            } else if (one.right > room) {
                faults.push_back(L"wider than its control (" + std::to_wstring(one.right) + L" > " +
                                 std::to_wstring(room) + L"): " + text);
            }
        }
        SelectObject(dc, old);
        ReleaseDC(w, dc);
    }
    return faults;
}

TEST(Languages, EveryTemplateInEveryLanguageMatchesTheEnglishOneAndItsTextsFit)
{
    HMODULE lib = ZX_GetLibraryModule();
    size_t count = 0;
    const SZxSimLanguage* langs = ZxSimLanguages(count);
    int pairs = 0;
    for (size_t li = 0; li < count; ++li) {
        const SZxSimLanguage& lang = langs[li];
        for (const wchar_t* name : kTemplates) {
            SCOPED_TRACE(std::wstring(lang.code) + L" " + name);
            const DLGTEMPLATE* english = Exact(lib, name, 0x0409);
            const DLGTEMPLATE* own = Exact(lib, name, lang.langId);
            ASSERT_NE(english, nullptr);
            if (!own) {
                ADD_FAILURE() << "missing";
                continue;
            }
            ++pairs;
            const int percent = WidthPercent(lang.code, name);
            EXPECT_EQ(Size(own).first, (Size(english).first * percent + 50) / 100);
            EXPECT_EQ(Size(own).second, Size(english).second);
            Dialog e(lib, english), d(lib, own);
            ASSERT_TRUE(e.hwnd && d.hwnd);
            const std::vector<HWND> ec = Children(e.hwnd), dc = Children(d.hwnd);
            ASSERT_EQ(dc.size(), ec.size());
            for (size_t i = 0; i < ec.size(); ++i) {
                EXPECT_EQ(GetDlgCtrlID(dc[i]), GetDlgCtrlID(ec[i]));
                EXPECT_EQ(ClassOf(dc[i]), ClassOf(ec[i]));
                EXPECT_EQ(GetWindowLongPtrW(dc[i], GWL_STYLE), GetWindowLongPtrW(ec[i], GWL_STYLE));
            }
            for (const std::wstring& f : TextFaults(d.hwnd))
                ADD_FAILURE() << Utf8(f);
        }
    }
    // English also as the neutral templates.
    for (const wchar_t* name : kTemplates)
        EXPECT_NE(Exact(lib, name, MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL)), nullptr) << name;
    EXPECT_EQ(pairs, 121);
}

/// The texts a user reads first: caption, labels, buttons and the command menu.
std::vector<std::wstring> ReferenceTexts(WORD lang)
{
    Language l(lang);
    CZxSimDriverCamera camera;
    CZxSimSetupUI ui(camera);
    ui.Init(&camera, [](IZxGrabberUI::EZxEvent e, ZxHWnd, int64_t, void*) -> int32_t {
        return e == IZxGrabberUI::evMessage ? 1 : 0;
    });
    std::vector<std::wstring> out;
    if (ui.InputSetupModelessShow(nullptr) != 0)
        return out;
    HWND dlg = ui.GetHDlg();
    // The driver's texts (labels, radio choices, commands) must fit as well.
    for (const std::wstring& f : TextFaults(dlg))
        ADD_FAILURE() << Utf8(f);
    out.push_back(Text(dlg));
    for (int id : {IDC_ZX_CAMERA_GROUP, IDC_ZX_LBL_EXPOSURE, IDC_ZX_LBL_INFO, IDC_ZX_AUTO, IDC_ZX_CHOICE1,
                   IDC_ZX_COMMAND1, IDC_ZX_COMMAND2, IDC_ZX_FQSYNC, IDC_ZX_ADVANCED, IDC_ZX_COMMANDMENU, IDC_ZX_HELP,
                   IDCANCEL})
        out.push_back(Text(GetDlgItem(dlg, id)));
    CZxMenu menu;
    CZxISControlList controls;
    zxsetupui::CommandMenuCreate(
        zxsetupui::SCommandMenuHost{&camera, &menu, dlg, &controls, 1 | 2 | 4 | 8, false, L"grabberuibase", {}});
    std::set<wchar_t> keys;
    for (int i = 0; i < menu.GetItemCount(); ++i) {
        const std::wstring t = menu.GetItemText(menu.GetItemId(i)).GetString();
        if (t.empty())
            continue;
        out.push_back(t);
        const size_t amp = t.find(L'&');
        if (amp != std::wstring::npos && amp + 1 < t.size()) {
            EXPECT_TRUE(keys.insert(wchar_t(std::towlower(t[amp + 1]))).second) << "menu mnemonic twice: " << Utf8(t);
        }
    }
    EXPECT_GE(keys.size(), 2u) << "the copy commands have their mnemonics";
    ui.InputSetupModelessHide();
    return out;
}

TEST(Languages, ReferenceDialogAndMenuShowEveryLanguage)
{
    size_t count = 0;
    const SZxSimLanguage* langs = ZxSimLanguages(count);
    const std::vector<std::wstring> english = ReferenceTexts(langs[0].langId);
    ASSERT_GE(english.size(), 15u);
    for (size_t li = 1; li < count; ++li) {
        SCOPED_TRACE(std::wstring(langs[li].code));
        const std::vector<std::wstring> texts = ReferenceTexts(langs[li].langId);
        ASSERT_EQ(texts.size(), english.size());
        for (size_t i = 0; i < texts.size(); ++i)
            EXPECT_NE(texts[i], english[i]) << "untranslated: " << Utf8(english[i]);
        // The script of the language, not Latin letters that happen to differ.
        const WORD primary = PRIMARYLANGID(langs[li].langId);
        const bool cjk = primary == LANG_JAPANESE || primary == LANG_KOREAN || primary == LANG_CHINESE;
        if (cjk || primary == LANG_RUSSIAN) {
            for (size_t i : {size_t(1), size_t(2)}) {
                EXPECT_TRUE(std::any_of(texts[i].begin(), texts[i].end(), [&](wchar_t c) {
                    return cjk ? c >= 0x2E80 : (c >= 0x0400 && c < 0x0500);
                })) << "not in the language's script: " << i;
            }
        }
    }
}

} // namespace
