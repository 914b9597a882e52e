// The owner-drawn button helpers: command-menu, format and fast/quality
// buttons painted by the library, and the flat check button.
#include "zx/dialoghelpers.h"

#include <commctrl.h>

#include <string>

#include "common/buttonimages_win.h"
#include "setupui/commandmenu_win.h"
#include "zx/grabberuibase.h"
#include "zx/status.h"
#include "zxhost/guidraw.h"
#include "zxhost/guielement.h"
#include "zxhost/system.h"

namespace {
const wchar_t kSource[] = L"common";
// On a button: which kind of face the library draws, and its style before.
const wchar_t kKind[] = L"ZxOwnerDrawnKind";
const wchar_t kStyle[] = L"ZxOwnerDrawnStyle";
const wchar_t kChecked[] = L"ZxOwnerDrawnChecked";
// On the dialog: how many of its buttons the library draws.
const wchar_t kCount[] = L"ZxOwnerDrawnCount";
const UINT_PTR kDialogSubclass = 0x5A58'4F44;   // one per dialog for all kinds
const UINT_PTR kToggleSubclass = 0x5A58'5447;   // fast/quality buttons keep their check
const UINT_PTR kHandSubclass = 0x5A58'4844;     // flat checks show the pointing hand

enum Kind : INT_PTR { kNone = 0, kCommands = 1, kFormat = 2, kFast = 3, kQuality = 4 };

Kind KindOf(HWND button) { return button ? Kind(INT_PTR(GetPropW(button, kKind))) : kNone; }

// The text of `button` with the dialog font, transparent, grey when disabled.
struct TextScope {
    TextScope(HDC dc, HWND button, bool disabled)
        : dc(dc), font(SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(button, WM_GETFONT, 0, 0)))),
          mode(SetBkMode(dc, TRANSPARENT)),
          colour(SetTextColor(dc, GetSysColor(disabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT)))
    {
    }
    ~TextScope()
    {
        SetTextColor(dc, colour);
        SetBkMode(dc, mode);
        if (font)
            SelectObject(dc, font);
    }
    TextScope(const TextScope&) = delete;
    TextScope& operator=(const TextScope&) = delete;
    HDC dc;
    HGDIOBJ font;
    int mode;
    COLORREF colour;
};

std::wstring TextOf(HWND w)
{
    wchar_t text[257] = {};
    GetWindowTextW(w, text, 256);
    return text;
}

// Push-button frame (pressed when selected or `down`) and face; `r` becomes the inside.
void DrawFace(const DRAWITEMSTRUCT& dis, RECT& r, bool down)
{
    r = dis.rcItem;
    const bool disabled = (dis.itemState & ODS_DISABLED) != 0;
    ZX_DrawFrameControl(dis.hDC, r, DFC_BUTTON,
                        DFCS_BUTTONPUSH | DFCS_ADJUSTRECT | (down || (dis.itemState & ODS_SELECTED) ? DFCS_PUSHED : 0) |
                            (disabled ? DFCS_INACTIVE : 0));
    FillRect(dis.hDC, &r, GetSysColorBrush(COLOR_BTNFACE));
}

void DrawFocus(const DRAWITEMSTRUCT& dis, RECT r)
{
    if (dis.itemState & ODS_FOCUS) {
        InflateRect(&r, -1, -1);
        DrawFocusRect(dis.hDC, &r);
    }
}

void DrawFormat(const DRAWITEMSTRUCT& dis)
{
    RECT r;
    DrawFace(dis, r, false);
    const bool disabled = (dis.itemState & ODS_DISABLED) != 0;
    const int h = dis.rcItem.bottom - dis.rcItem.top;
    const int arrowLeft = dis.rcItem.right - h / 2 - 4;
    // A separator between the field and the arrow, as in a split button.
    RECT line{arrowLeft - 3, r.top + 2, arrowLeft - 1, r.bottom - 2};
    ZX_DrawEdge(dis.hDC, line, EDGE_ETCHED, BF_LEFT);
    RECT field{r.left + 3, r.top, arrowLeft - 4, r.bottom};
    {
        TextScope text(dis.hDC, dis.hwndItem, disabled);
        const std::wstring s = TextOf(dis.hwndItem);
        DrawTextW(dis.hDC, s.c_str(), -1, &field, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
    }
    ZX_DrawPickerArrow(dis.hDC, arrowLeft, dis.rcItem.top, dis.rcItem.bottom, h / 2, disabled);
    DrawFocus(dis, RECT{r.left, r.top, arrowLeft - 3, r.bottom});
}

void DrawToggle(const DRAWITEMSTRUCT& dis, bool fast)
{
    const bool checked = GetPropW(dis.hwndItem, kChecked) != nullptr;
    const bool disabled = (dis.itemState & ODS_DISABLED) != 0;
    RECT r;
    DrawFace(dis, r, checked);
    // A pressed face shows its content one pixel down and right.
    if (checked || (dis.itemState & ODS_SELECTED))
        OffsetRect(&r, 1, 1);
    int imageWidth = 0;
    if (HBITMAP image = zxcommon::LoadButtonImage(fast ? L"LIVE" : L"CAPTURE", dis.hDC, r.bottom - r.top - 2)) {
        BITMAP bm{};
        GetObjectW(image, sizeof bm, &bm);
        zxcommon::DrawButtonImage(dis.hDC, image, r.left + 3, r.top + (r.bottom - r.top - bm.bmHeight) / 2, disabled);
        DeleteObject(image);
        imageWidth = bm.bmWidth + 3;
    }
    RECT text{r.left + 3 + imageWidth, r.top, r.right - 2, r.bottom};
    {
        TextScope scope(dis.hDC, dis.hwndItem, disabled);
        const std::wstring s = TextOf(dis.hwndItem);
        DrawTextW(dis.hDC, s.c_str(), -1, &text, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
    }
    DrawFocus(dis, r);
}

bool Draw(const DRAWITEMSTRUCT& dis)
{
    switch (KindOf(dis.hwndItem)) {
    case kCommands: {
        RECT r;
        DrawFace(dis, r, false);
        zxsetupui::DrawMenuButtonFace(dis, GetParent(dis.hwndItem), r);
        DrawFocus(dis, r);
        return true;
    }
    case kFormat:
        DrawFormat(dis);
        return true;
    case kFast:
    case kQuality:
        DrawToggle(dis, KindOf(dis.hwndItem) == kFast);
        return true;
    default:
        return false;
    }
}

void SetToggle(HWND button, bool checked)
{
    if (checked)
        SetPropW(button, kChecked, reinterpret_cast<HANDLE>(1));
    else
        RemovePropW(button, kChecked);
    InvalidateRect(button, nullptr, FALSE);
}

LRESULT CALLBACK ToggleProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    switch (msg) {
    case BM_GETCHECK:
        return GetPropW(w, kChecked) ? BST_CHECKED : BST_UNCHECKED;
    case BM_SETCHECK:
        SetToggle(w, wParam == BST_CHECKED);
        return 0;
    case WM_NCDESTROY:
        RemovePropW(w, kChecked);
        RemoveWindowSubclass(w, &ToggleProc, kToggleSubclass);
        break;
    default:
        break;
    }
    return DefSubclassProc(w, msg, wParam, lParam);
}

void Release(HWND dialog, HWND button);

LRESULT CALLBACK DialogProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    switch (msg) {
    case WM_DRAWITEM: {
        const auto* dis = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (dis && dis->CtlType == ODT_BUTTON && GetParent(dis->hwndItem) == dlg && Draw(*dis))
            return TRUE;
        break;
    }
    case WM_COMMAND: {
        // The pair behaves as two radio buttons: the clicked one is the checked one.
        HWND from = reinterpret_cast<HWND>(lParam);
        const Kind kind = KindOf(from);
        if (HIWORD(wParam) == BN_CLICKED && (kind == kFast || kind == kQuality)) {
            for (HWND child = GetWindow(dlg, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
                const Kind k = KindOf(child);
                if (k == kFast || k == kQuality)
                    SetToggle(child, child == from);
            }
        }
        break;
    }
    case WM_DESTROY:
        // The buttons still exist here; Release drops the subclass with the last one.
        for (HWND child = GetWindow(dlg, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            if (KindOf(child) != kNone)
                Release(dlg, child);
        RemovePropW(dlg, kCount);
        RemoveWindowSubclass(dlg, &DialogProc, kDialogSubclass);
        break;
    default:
        break;
    }
    return DefSubclassProc(dlg, msg, wParam, lParam);
}

HWND ButtonOf(HWND dialog, int32_t id)
{
    HWND button = dialog && IsWindow(dialog) && id != 0 && id != -1 ? GetDlgItem(dialog, id) : nullptr;
    wchar_t cls[16] = {};
    if (button)
        GetClassNameW(button, cls, 16);
    return button && _wcsicmp(cls, L"Button") == 0 ? button : nullptr;
}

int32_t Take(HWND dialog, int32_t id, Kind kind)
{
    HWND button = ButtonOf(dialog, id);
    if (ZX_DIAG_FAIL_IF(button == nullptr, kSource))
        return ZX_E_FAIL;
    if (KindOf(button) == kNone) {
        const LONG_PTR style = GetWindowLongPtrW(button, GWL_STYLE);
        SetPropW(button, kStyle, reinterpret_cast<HANDLE>(style));
        SetWindowLongPtrW(button, GWL_STYLE, (style & ~LONG_PTR(BS_TYPEMASK)) | BS_OWNERDRAW);
        const INT_PTR count = INT_PTR(GetPropW(dialog, kCount));
        SetPropW(dialog, kCount, reinterpret_cast<HANDLE>(count + 1));
        if (count == 0)
            SetWindowSubclass(dialog, &DialogProc, kDialogSubclass, 0);
    }
    SetPropW(button, kKind, reinterpret_cast<HANDLE>(INT_PTR(kind)));
    InvalidateRect(button, nullptr, TRUE);
    return ZX_OK;
}

void Release(HWND dialog, HWND button)
{
    if (KindOf(button) == kFast || KindOf(button) == kQuality) {
        RemoveWindowSubclass(button, &ToggleProc, kToggleSubclass);
        RemovePropW(button, kChecked);
    }
    SetWindowLongPtrW(button, GWL_STYLE, LONG_PTR(GetPropW(button, kStyle)));
    RemovePropW(button, kStyle);
    RemovePropW(button, kKind);
    InvalidateRect(button, nullptr, TRUE);
    const INT_PTR count = INT_PTR(GetPropW(dialog, kCount)) - 1;
    if (count > 0) {
        SetPropW(dialog, kCount, reinterpret_cast<HANDLE>(count));
    } else {
        RemovePropW(dialog, kCount);
        RemoveWindowSubclass(dialog, &DialogProc, kDialogSubclass);
    }
}

int32_t Give(HWND dialog, int32_t id, Kind kind)
{
    HWND button = ButtonOf(dialog, id);
    if (ZX_DIAG_FAIL_IF(button == nullptr, kSource))
        return ZX_E_FAIL;
    if (KindOf(button) == kind)
        Release(dialog, button);
    return ZX_OK;
}

LRESULT CALLBACK HandProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (msg == WM_SETCURSOR && LOWORD(lParam) == HTCLIENT) {
        if (HCURSOR hand = LoadCursorW(ZX_GetLibraryModule(), L"IDC_POINTING_TOOL_HAND")) {
            SetCursor(hand);
            return TRUE;
        }
    }
    if (msg == WM_NCDESTROY)
        RemoveWindowSubclass(w, &HandProc, kHandSubclass);
    return DefSubclassProc(w, msg, wParam, lParam);
}
} // namespace

// ---- Images ----------------------------------------------------------------------------

bool zxcommon::UseDoubleScale(HDC dc)
{
    const int dpi = dc ? GetDeviceCaps(dc, LOGPIXELSY) : 96;
    return dpi >= 144 || ZX_GetGUIZoom() >= 1.5;
}

HBITMAP zxcommon::LoadButtonImage(const wchar_t* name, HDC dc, int height)
{
    if (!name)
        return nullptr;
    auto load = [](const std::wstring& resource) {
        return static_cast<HBITMAP>(LoadImageW(ZX_GetLibraryModule(), resource.c_str(), IMAGE_BITMAP, 0, 0,
                                               LR_LOADMAP3DCOLORS | LR_CREATEDIBSECTION));
    };
    if (UseDoubleScale(dc)) {
        HBITMAP big = load(std::wstring(name) + L"_200");
        BITMAP bm{};
        if (big && GetObjectW(big, sizeof bm, &bm) && bm.bmHeight <= height)
            return big;
        if (big)
            DeleteObject(big);
    }
    return load(name);
}

void zxcommon::DrawButtonImage(HDC dc, HBITMAP bitmap, int x, int y, bool disabled)
{
    BITMAP bm{};
    if (!bitmap || !GetObjectW(bitmap, sizeof bm, &bm))
        return;
    if (disabled) {
        DrawStateW(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(bitmap), 0, x, y, bm.bmWidth, bm.bmHeight,
                   DST_BITMAP | DSS_DISABLED);
        return;
    }
    HDC mem = CreateCompatibleDC(dc);
    HGDIOBJ old = SelectObject(mem, bitmap);
    BitBlt(dc, x, y, bm.bmWidth, bm.bmHeight, mem, 0, 0, SRCCOPY);
    SelectObject(mem, old);
    DeleteDC(mem);
}

// ---- The helpers -----------------------------------------------------------------------

int32_t ZX_InitCommandsButton(HWND dialog, int32_t id) { return Take(dialog, id, kCommands); }
int32_t ZX_DoneCommandsButton(HWND dialog, int32_t id) { return Give(dialog, id, kCommands); }
int32_t ZX_InitFormatButton(HWND dialog, int32_t id) { return Take(dialog, id, kFormat); }
int32_t ZX_DoneFormatButton(HWND dialog, int32_t id) { return Give(dialog, id, kFormat); }

int32_t ZX_InitFastQualityButtons(HWND dialog, int32_t fastId, int32_t qualityId)
{
    HWND fast = ButtonOf(dialog, fastId), quality = ButtonOf(dialog, qualityId);
    if (ZX_DIAG_FAIL_IF(fast == nullptr || quality == nullptr || fast == quality, kSource))
        return ZX_E_FAIL;
    SetWindowTextW(fast, ZX_GetTranslation(L"Live - Fast", kSource));
    SetWindowTextW(quality, ZX_GetTranslation(L"Live - Quality", kSource));
    for (HWND b : {fast, quality}) {
        Take(dialog, GetDlgCtrlID(b), b == fast ? kFast : kQuality);
        SetWindowSubclass(b, &ToggleProc, kToggleSubclass, 0);
        SetToggle(b, false);
    }
    return ZX_OK;
}

int32_t ZX_DrawCheckButtonXP(const tagDRAWITEMSTRUCT* item, bool checked, bool disabled, bool drawText)
{
    if (ZX_DIAG_FAIL_IF(item == nullptr || item->hDC == nullptr, kSource))
        return ZX_E_FAIL;
    HDC dc = item->hDC;
    const RECT rc = item->rcItem;
    FillRect(dc, &rc, GetSysColorBrush(COLOR_BTNFACE));
    int imageWidth = 0;
    if (HBITMAP image = zxcommon::LoadButtonImage(checked ? L"CHECKBOXXPON" : L"CHECKBOXXPOFF", dc, rc.bottom - rc.top)) {
        BITMAP bm{};
        GetObjectW(image, sizeof bm, &bm);
        zxcommon::DrawButtonImage(dc, image, rc.left, rc.top + (rc.bottom - rc.top - bm.bmHeight) / 2, disabled);
        DeleteObject(image);
        imageWidth = bm.bmWidth;
    }
    if (item->hwndItem) {
        // Installed once; the same subclass id only updates its data on later calls.
        SetWindowSubclass(item->hwndItem, &HandProc, kHandSubclass, 0);
    }
    if (!drawText || !item->hwndItem)
        return ZX_OK;
    TextScope scope(dc, item->hwndItem, disabled);
    const std::wstring text = TextOf(item->hwndItem);
    RECT textRect = rc;
    textRect.left += imageWidth + 4;
    RECT measured = textRect;
    DrawTextW(dc, text.c_str(), -1, &measured, DT_LEFT | DT_SINGLELINE | DT_VCENTER | DT_CALCRECT);
    DrawTextW(dc, text.c_str(), -1, &textRect, DT_LEFT | DT_SINGLELINE | DT_VCENTER);
    if ((item->itemState & ODS_FOCUS) && !text.empty()) {
        const int h = measured.bottom - measured.top;
        RECT focus = {textRect.left - 1, rc.top + (rc.bottom - rc.top - h) / 2 - 1,
                      measured.right + 1, rc.top + (rc.bottom - rc.top + h) / 2 + 1};
        DrawFocusRect(dc, &focus);
    }
    return ZX_OK;
}
