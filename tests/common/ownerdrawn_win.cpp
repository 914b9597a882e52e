// The owner-drawn button helpers: what each draws (read back from the pixels),
// which button state a click leaves, what Done gives back, the flat check's
// images and cursor, and the library's images and icons at both scales.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zx/dialoghelpers.h"
#include "zx/grabberuibase.h"
#include "zx/inputform.h"
#include "zx/status.h"
#include "zx_canvas.h"
#include "zx_modal.h"
#include "zx_test.h"
#include "zxhost/guielement.h"

using zxtest::Canvas;

namespace {

// The library's INPUT_FORM, shown, with a procedure that counts the
// WM_DRAWITEM of the buttons the tests hand to the library and the BN_CLICKED
// it gets (with the check state at the click).
struct Form {
    int drawItems = 0;
    std::vector<std::pair<int, UINT>> clicks;   // id, its check state when the procedure heard of it
    HWND hwnd = nullptr;

    Form()
    {
        hwnd = CreateDialogParamW(ZX_GetLibraryModule(), ZX_INPUT_FORM, nullptr, &Proc, LPARAM(this));
        for (int id : {IDC_ZX_FAST, IDC_ZX_QUALITY})
            ShowWindow(GetDlgItem(hwnd, id), SW_SHOW);
        ShowWindow(hwnd, SW_SHOWNOACTIVATE);
    }
    ~Form() { DestroyWindow(hwnd); }
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    HWND Item(int id) const { return GetDlgItem(hwnd, id); }

    static INT_PTR CALLBACK Proc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam)
    {
        if (msg == WM_INITDIALOG)
            SetWindowLongPtrW(w, DWLP_USER, lParam);
        auto* self = reinterpret_cast<Form*>(GetWindowLongPtrW(w, DWLP_USER));
        // The template's own owner-drawn buttons (menu, histogram view) are not counted.
        if (self && msg == WM_DRAWITEM &&
            (wParam == IDC_ZX_COMMAND1 || wParam == IDC_ZX_COMMAND2 || wParam == IDC_ZX_FAST || wParam == IDC_ZX_QUALITY))
            ++self->drawItems;
        if (self && msg == WM_COMMAND && HIWORD(wParam) == BN_CLICKED)
            self->clicks.emplace_back(LOWORD(wParam), UINT(IsDlgButtonChecked(w, LOWORD(wParam))));
        return msg == WM_INITDIALOG;
    }

    // Paints button `id` into `canvas` through the dialog, as the button asks it to.
    LRESULT Paint(int id, Canvas& canvas, int w, int h, UINT state = 0) const
    {
        DRAWITEMSTRUCT dis = Draw(Item(id), canvas, w, h, state);
        return SendMessageW(hwnd, WM_DRAWITEM, WPARAM(id), LPARAM(&dis));
    }
    static DRAWITEMSTRUCT Draw(HWND item, Canvas& canvas, int w, int h, UINT state = 0)
    {
        return DRAWITEMSTRUCT{ODT_BUTTON, UINT(GetDlgCtrlID(item)), 0, ODA_DRAWENTIRE, state, item, canvas.Dc(),
                              RECT{0, 0, w, h}, 0};
    }
};

// Columns of `canvas` (w x h) holding a pixel of `colour` inside the frame
// (3 pixels in): first and last, -1 when none.
std::pair<int, int> ColumnsWith(const Canvas& canvas, int w, int h, COLORREF colour)
{
    int first = -1, last = -1;
    for (int x = 3; x < w - 3; ++x)
        for (int y = 3; y < h - 3; ++y)
            if (canvas.At(x, y) == colour) {
                if (first < 0)
                    first = x;
                last = x;
                break;
            }
    return {first, last};
}

// The library's bitmap `name` as the helpers load it (grey mapped to the face).
std::vector<COLORREF> Image(const wchar_t* name, int& size)
{
    HBITMAP bmp = static_cast<HBITMAP>(
        LoadImageW(ZX_GetLibraryModule(), name, IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS | LR_CREATEDIBSECTION));
    if (!bmp)
        return {};
    BITMAP bm{};
    GetObjectW(bmp, sizeof bm, &bm);
    size = bm.bmWidth;
    Canvas c(bm.bmWidth, bm.bmHeight, 0);
    HDC mem = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(mem, bmp);
    BitBlt(c.Dc(), 0, 0, bm.bmWidth, bm.bmHeight, mem, 0, 0, SRCCOPY);
    SelectObject(mem, old);
    DeleteDC(mem);
    DeleteObject(bmp);
    return c.Square(0, 0, bm.bmWidth);
}

// Where the n x n `image` appears in `canvas` (w x h); {-1, -1} when nowhere.
POINT Find(const Canvas& canvas, int w, int h, const std::vector<COLORREF>& image, int n)
{
    for (int y = 0; y + n <= h; ++y)
        for (int x = 0; x + n <= w; ++x)
            if (canvas.Square(x, y, n) == image)
                return POINT{x, y};
    return POINT{-1, -1};
}

struct ZoomScope {
    explicit ZoomScope(double zoom) : before(ZX_SetGUIZoom(zoom)) {}
    ~ZoomScope() { ZX_SetGUIZoom(before); }
    double before;
};

} // namespace

TEST(OwnerDrawnButtons, CommandAndFormatButtonsAreDrawnByTheLibraryUntilDoneAndOnlyRealButtonsAreTaken)
{
    Form form;
    const int w = 140, h = 24;
    const COLORREF text = GetSysColor(COLOR_BTNTEXT), grey = GetSysColor(COLOR_GRAYTEXT);
    SetDlgItemTextW(form.hwnd, IDC_ZX_COMMAND1, L"Settings");
    SetDlgItemTextW(form.hwnd, IDC_ZX_COMMAND2, L"1024 x 768");
    ASSERT_EQ(ZX_InitCommandsButton(form.hwnd, IDC_ZX_COMMAND1), ZX_OK);
    ASSERT_EQ(ZX_InitFormatButton(form.hwnd, IDC_ZX_COMMAND2), ZX_OK);
    for (int id : {IDC_ZX_COMMAND1, IDC_ZX_COMMAND2})
        EXPECT_EQ(GetWindowLongPtrW(form.Item(id), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW) << id;

    Canvas commands(w, h), format(w, h), disabled(w, h);
    EXPECT_TRUE(form.Paint(IDC_ZX_COMMAND1, commands, w, h));
    EXPECT_TRUE(form.Paint(IDC_ZX_COMMAND2, format, w, h));
    EXPECT_TRUE(form.Paint(IDC_ZX_COMMAND2, disabled, w, h, ODS_DISABLED));
    EXPECT_EQ(form.drawItems, 0) << "the library paints them; the dialog procedure never hears of it";

    // Both end in a drop-down arrow in the text colour at the right; the
    // command text is centred left of it, the format text starts at the left.
    const auto cmd = ColumnsWith(commands, w, h, text), fmt = ColumnsWith(format, w, h, text);
    EXPECT_GT(cmd.second, w - h / 2 - 6);
    EXPECT_GT(fmt.second, w - h / 2 - 6);
    EXPECT_GT(cmd.first, 20) << "centred";
    EXPECT_LT(fmt.first, 10) << "left-aligned";
    // The format button's separator: the etched line's shadow left of the arrow.
    const COLORREF shadow = GetSysColor(COLOR_BTNSHADOW);
    const int arrowLeft = w - h / 2 - 4;
    EXPECT_EQ(format.At(arrowLeft - 3, h / 2), shadow);
    EXPECT_NE(commands.At(arrowLeft - 3, h / 2), shadow);
    // Disabled: nothing in the text colour, the text grey.
    EXPECT_EQ(ColumnsWith(disabled, w, h, text).first, -1);
    EXPECT_NE(ColumnsWith(disabled, w, h, grey).first, -1);

    // Done gives the button back: its style, and its drawing to the dialog.
    EXPECT_EQ(ZX_DoneFormatButton(form.hwnd, IDC_ZX_COMMAND1), ZX_OK) << "not a format button: left alone";
    EXPECT_TRUE(form.Paint(IDC_ZX_COMMAND1, commands, w, h));
    EXPECT_EQ(ZX_DoneCommandsButton(form.hwnd, IDC_ZX_COMMAND1), ZX_OK);
    EXPECT_EQ(GetWindowLongPtrW(form.Item(IDC_ZX_COMMAND1), GWL_STYLE) & BS_TYPEMASK, BS_PUSHBUTTON);
    form.Paint(IDC_ZX_COMMAND1, commands, w, h);
    EXPECT_EQ(form.drawItems, 1);
    EXPECT_TRUE(form.Paint(IDC_ZX_COMMAND2, format, w, h)) << "the other one is still the library's";
    EXPECT_EQ(ZX_DoneFormatButton(form.hwnd, IDC_ZX_COMMAND2), ZX_OK);
    form.Paint(IDC_ZX_COMMAND2, format, w, h);
    EXPECT_EQ(form.drawItems, 2);

    zxtest::DiagCapture diag;
    EXPECT_EQ(ZX_InitCommandsButton(nullptr, IDC_ZX_COMMAND1), ZX_E_FAIL);
    EXPECT_EQ(ZX_InitFormatButton(form.hwnd, IDC_ZX_INFO), ZX_E_FAIL) << "a static, not a button";
    EXPECT_EQ(ZX_InitCommandsButton(form.hwnd, -1), ZX_E_FAIL);
    EXPECT_EQ(ZX_DoneCommandsButton(form.hwnd, 4711), ZX_E_FAIL);
    EXPECT_EQ(ZX_InitFastQualityButtons(form.hwnd, IDC_ZX_FAST, IDC_ZX_FAST), ZX_E_FAIL);
    EXPECT_EQ(ZX_InitFastQualityButtons(form.hwnd, IDC_ZX_FAST, 0), ZX_E_FAIL);
    EXPECT_EQ(diag.Size(), 6u);
    EXPECT_EQ(GetWindowLongPtrW(form.Item(IDC_ZX_FAST), GWL_STYLE) & BS_TYPEMASK, BS_PUSHBUTTON)
        << "a refused pair takes neither button";
}

TEST(OwnerDrawnButtons, FastQualityPairShowsTheClickedOnePressedWithItsImageAtEitherScale)
{
    Form form;
    ASSERT_EQ(ZX_InitFastQualityButtons(form.hwnd, IDC_ZX_FAST, IDC_ZX_QUALITY), ZX_OK);
    EXPECT_EQ(zxtest::ItemText(form.hwnd, IDC_ZX_FAST), L"Live - Fast");
    EXPECT_EQ(zxtest::ItemText(form.hwnd, IDC_ZX_QUALITY), L"Live - Quality");
    EXPECT_EQ(IsDlgButtonChecked(form.hwnd, IDC_ZX_FAST), BST_UNCHECKED);
    EXPECT_EQ(IsDlgButtonChecked(form.hwnd, IDC_ZX_QUALITY), BST_UNCHECKED);

    // A real click (button down and up on the button) checks it before the
    // dialog procedure hears of it, and unchecks the other.
    SendMessageW(form.Item(IDC_ZX_QUALITY), BM_CLICK, 0, 0);
    SendMessageW(form.Item(IDC_ZX_FAST), BM_CLICK, 0, 0);
    SendMessageW(form.Item(IDC_ZX_QUALITY), BM_CLICK, 0, 0);
    const std::vector<std::pair<int, UINT>> heard = {
        {IDC_ZX_QUALITY, BST_CHECKED}, {IDC_ZX_FAST, BST_CHECKED}, {IDC_ZX_QUALITY, BST_CHECKED}};
    EXPECT_EQ(form.clicks, heard);
    EXPECT_EQ(IsDlgButtonChecked(form.hwnd, IDC_ZX_FAST), BST_UNCHECKED);
    CheckDlgButton(form.hwnd, IDC_ZX_FAST, BST_CHECKED);
    CheckDlgButton(form.hwnd, IDC_ZX_QUALITY, BST_UNCHECKED);
    EXPECT_EQ(IsDlgButtonChecked(form.hwnd, IDC_ZX_FAST), BST_CHECKED) << "the driver sets the shown set";

    for (double zoom : {1.0, 2.0}) {
        SCOPED_TRACE(zoom);
        ZoomScope scope(zoom);
        int liveSize = 0, captureSize = 0;
        const std::vector<COLORREF> live = Image(zoom > 1 ? L"LIVE_200" : L"LIVE", liveSize);
        const std::vector<COLORREF> capture = Image(zoom > 1 ? L"CAPTURE_200" : L"CAPTURE", captureSize);
        ASSERT_EQ(liveSize, zoom > 1 ? 32 : 16);
        ASSERT_EQ(captureSize, liveSize);
        const int w = 180, h = liveSize + 10;
        Canvas fast(w, h), quality(w, h);
        EXPECT_TRUE(form.Paint(IDC_ZX_FAST, fast, w, h));
        EXPECT_TRUE(form.Paint(IDC_ZX_QUALITY, quality, w, h));
        const POINT atFast = Find(fast, w, h, live, liveSize), atQuality = Find(quality, w, h, capture, liveSize);
        EXPECT_GE(atFast.x, 0) << "the live image on the fast button";
        EXPECT_GE(atQuality.x, 0) << "the capture image on the quality button";
        EXPECT_EQ(Find(fast, w, h, capture, liveSize).x, -1);
        // The checked one is pressed: its frame's top-left is the shadow, not
        // the highlight, and its content sits a pixel lower and further right.
        EXPECT_NE(fast.At(0, 0), quality.At(0, 0));
        EXPECT_EQ(atFast.x, atQuality.x + 1);
    }
    EXPECT_EQ(form.drawItems, 0);
}

TEST(OwnerDrawnButtons, FlatCheckDrawsTheImageOfItsStateAndGivesItsButtonThePointingHand)
{
    Form form;
    HWND button = form.Item(IDC_ZX_AUTO);
    SetWindowTextW(button, L"Automatic");
    const HCURSOR hand = LoadCursorW(ZX_GetLibraryModule(), L"IDC_POINTING_TOOL_HAND");
    ASSERT_TRUE(hand);
    SendMessageW(button, WM_SETCURSOR, WPARAM(button), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_NE(GetCursor(), hand) << "not before the library draws it";

    for (double zoom : {1.0, 2.0}) {
        SCOPED_TRACE(zoom);
        ZoomScope scope(zoom);
        int n = 0, m = 0;
        const std::vector<COLORREF> on = Image(zoom > 1 ? L"CHECKBOXXPON_200" : L"CHECKBOXXPON", n);
        const std::vector<COLORREF> off = Image(zoom > 1 ? L"CHECKBOXXPOFF_200" : L"CHECKBOXXPOFF", m);
        ASSERT_EQ(n, zoom > 1 ? 26 : 13);
        ASSERT_EQ(m, n);
        ASSERT_NE(on, off);
        const struct {
            bool checked, disabled;
        } cases[] = {{true, false}, {false, false}, {true, true}};
        for (const auto& k : cases) {
            const int w = 120, h = n + 8;
            Canvas canvas(w, h, 0);
            DRAWITEMSTRUCT dis = Form::Draw(button, canvas, w, h);
            EXPECT_EQ(ZX_DrawCheckButtonXP(&dis, k.checked, k.disabled, true), ZX_OK);
            const std::vector<COLORREF> drawn = canvas.Square(0, (h - n) / 2, n);
            EXPECT_EQ(drawn == on, k.checked && !k.disabled);
            EXPECT_EQ(drawn == off, !k.checked && !k.disabled);
            EXPECT_NE(drawn, std::vector<COLORREF>(drawn.size(), GetSysColor(COLOR_BTNFACE))) << "disabled: embossed";
            if (!k.disabled) {
                EXPECT_GE(ColumnsWith(canvas, w, h, GetSysColor(COLOR_BTNTEXT)).first, n + 4) << "text after the image";
            }
        }
    }
    {
        // Zoomed, but too low a button for the large image: the small one, not a clipped large one.
        ZoomScope scope(2.0);
        int n = 0;
        const std::vector<COLORREF> small = Image(L"CHECKBOXXPON", n);
        Canvas canvas(80, 16, 0);
        DRAWITEMSTRUCT dis = Form::Draw(nullptr, canvas, 80, 16);
        EXPECT_EQ(ZX_DrawCheckButtonXP(&dis, true, false, false), ZX_OK);
        EXPECT_EQ(canvas.Square(0, (16 - n) / 2, n), small);
    }
    SendMessageW(button, WM_SETCURSOR, WPARAM(button), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), hand);
    zxtest::DiagCapture diag;
    EXPECT_EQ(ZX_DrawCheckButtonXP(nullptr, true, false, true), ZX_E_FAIL);
    DRAWITEMSTRUCT noDc{};
    EXPECT_EQ(ZX_DrawCheckButtonXP(&noDc, true, false, true), ZX_E_FAIL);
    EXPECT_EQ(diag.Size(), 2u);
}

TEST(LibraryImages, EveryButtonImageComesAtTwiceItsSizeAndTheIconsAndCursorHoldBothScales)
{
    HMODULE lib = ZX_GetLibraryModule();
    for (const wchar_t* name : {L"ROTATE_LEFT", L"ROTATE_RIGHT", L"ROTATE_180", L"FLIP_H", L"FLIP_V", L"FLIP_NONE",
                                L"LIVE", L"CAPTURE", L"CHECKBOXXPON", L"CHECKBOXXPOFF"}) {
        int normal = 0, twice = 0;
        const std::vector<COLORREF> one = Image(name, normal);
        Image((std::wstring(name) + L"_200").c_str(), twice);
        EXPECT_GT(normal, 0) << name;
        EXPECT_EQ(twice, 2 * normal) << name;
        EXPECT_NE(one, std::vector<COLORREF>(one.size(), one.empty() ? 0 : one[0])) << name << " is not blank";
    }
    for (const wchar_t* name : {L"ZX_ICON_CAUTION", L"ZX_ICON_SELECT", L"IDC_POINTING_TOOL_HAND"})
        for (int size : {16, 32, 64}) {
            const bool cursor = name[0] == L'I';
            HICON icon = static_cast<HICON>(LoadImageW(lib, name, cursor ? IMAGE_CURSOR : IMAGE_ICON, size, size, 0));
            ASSERT_TRUE(icon) << size;
            ICONINFO info{};
            ASSERT_TRUE(GetIconInfo(icon, &info));
            BITMAP bm{};
            GetObjectW(info.hbmColor, sizeof bm, &bm);
            if (!cursor)
                EXPECT_EQ(bm.bmWidth, size) << "drawn for that size, not stretched";
            else if (size > 16) {
                EXPECT_FALSE(info.fIcon);
                EXPECT_LT(info.xHotspot, DWORD(size / 2)) << "the finger tip, upper left";
                EXPECT_LT(info.yHotspot, DWORD(size / 8));
            }
            DeleteObject(info.hbmColor);
            DeleteObject(info.hbmMask);
            DestroyIcon(icon);
        }
    // The caution dialog shows its own icon.
    HWND caution = CreateDialogParamW(lib, L"TEMPERATURE", nullptr,
                                      [](HWND, UINT msg, WPARAM, LPARAM) -> INT_PTR { return msg == WM_INITDIALOG; }, 0);
    ASSERT_TRUE(caution);
    EXPECT_TRUE(SendDlgItemMessageW(caution, 1401, STM_GETICON, 0, 0));
    DestroyWindow(caution);
}
