// Painting of the dialog host: the histogram area, its range texts and the
// owner-drawn menu and view buttons.
#include <cstdio>

#include "zx/grabberuibase.h"
#include "setupui/commandmenu_win.h"
#include "imaging/channels.h"
#include "zxhost/bitmappool.h"
#include "zxhost/guicolors.h"
#include "zxhost/guidraw.h"

namespace {
// Geometry of the area (pixels): a combined plot 256 wide in a 260-wide frame,
// or three 128-wide plots in 132-wide frames 136 apart.
const int kCombinedFrame = 260;
const int kSplitFrame = 132;
const int kSplitPitch = 136;
const int kSplitPlot = 128;

void FillPlot(HDC dc, const RECT& plot) { FillRect(dc, &plot, GetSysColorBrush(COLOR_WINDOW)); }

CZxRectBase<int> Rect(const RECT& r) { return CZxRectBase<int>(r.left, r.top, r.right, r.bottom); }

// Module-wide image handles of the view button, from IS_Histo.
int MagnifierImage(bool combinedShown)
{
    return CZxBitmapPool::Add(combinedShown ? L"QEN_MAG2" : L"QEN_MAG1");
}
} // namespace

void CZxGrabberUI_Base::PaintHisto(HDC dc)
{
    if (!dc || !m_hDlg)
        return;
    RECT client;
    GetClientRect(m_hDlg, &client);
    FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
    RECT outer;
    IS_HistoGetRect(outer);
    ZX_DrawEdge(dc, outer, EDGE_ETCHED, BF_RECT);

    const int left = m_iHistoLeft, top = m_iHistoTop, height = m_iHistoHeight;
    const std::lock_guard<std::mutex> lock(m_histoLock);
    const bool colour = m_histoFull.GetComponents() != 0;
    if (m_bHistoNoSplit || m_bHistoCombined || !colour) {
        const int offset = ((outer.right - outer.left) - 264) / 2;
        const RECT frame{left + offset, top + 8, left + offset + kCombinedFrame, top + height + 12};
        ZX_DrawEdge(dc, frame, BDR_SUNKENOUTER, BF_RECT);
        const RECT plot{left + offset + 2, top + 10, left + offset + 258, top + height + 10};
        FillPlot(dc, plot);
        const uint32_t mode = m_bHistoNoSplit || !colour ? CZxHistoDraw::MODE_COMBINED : CZxHistoDraw::MODE_COMPONENTS;
        m_histoFull.DrawIntoDC(reinterpret_cast<uint64_t>(dc), Rect(plot), 1.0, mode,
                               CZxRangeMask(CZxRangeMask::FULL_MASK), false);
        return;
    }
    // Split view, left-aligned, in the order the user reads channels.
    for (int k = 0; k < 3; ++k) {
        const int x = left + 8 + k * kSplitPitch;
        const RECT frame{x, top + 8, x + kSplitFrame, top + 8 + height + 4};
        ZX_DrawEdge(dc, frame, BDR_SUNKENOUTER, BF_RECT);
        const RECT plot{x + 2, top + 10, x + 2 + kSplitPlot, top + 10 + height};
        FillPlot(dc, plot);
        m_histoGrouped.DrawIntoDC(reinterpret_cast<uint64_t>(dc), Rect(plot), 1.0, CZxHistoDraw::MODE_COMPONENTS,
                                  CZxRangeMask::Single(zx::kShownOrder[k]), true);
    }
}

void CZxGrabberUI_Base::UpdateHistoTexts()
{
    if (!m_hDlg)
        return;
    RECT outer;
    IS_HistoGetRect(outer);
    InvalidateRect(m_hDlg, &outer, TRUE);
    UpdateWindow(m_hDlg);

    wchar_t text[3][48] = {};
    bool split;
    {
        const std::lock_guard<std::mutex> lock(m_histoLock);
        split = !m_bHistoNoSplit && m_histoFull.GetComponents() != 0;
        uint32_t lo = 0, hi = 0;
        if (split) {
            for (int i = 0; i < 3; ++i)
                if (m_histoFull.GetRangeCompOrig(zx::kShownOrder[i], &lo, &hi) == 0)
                    std::swprintf(text[i], 48, L"<%d, %d>", int(lo), int(hi));
        } else if (m_histoFull.GetRangeOrig(&lo, &hi) == 0) {
            std::swprintf(text[0], 48, L"<%d, %d>", int(lo), int(hi));
        }
    }
    // Window calls after the lock: SetDlgItemText sends messages.
    if (m_iRangeTextId[0] > 0)
        SetDlgItemTextW(m_hDlg, m_iRangeTextId[0], text[0]);
    const int show = split ? SW_SHOW : SW_HIDE;
    for (int i = 1; i < 3; ++i)
        if (m_iRangeTextId[i] > 0) {
            if (split)
                SetDlgItemTextW(m_hDlg, m_iRangeTextId[i], text[i]);
            ShowWindow(GetDlgItem(m_hDlg, m_iRangeTextId[i]), show);
        }
    if (m_iMagnifierId > 0)
        ShowWindow(GetDlgItem(m_hDlg, m_iMagnifierId), show);
}

bool CZxGrabberUI_Base::DrawButton(const DRAWITEMSTRUCT& dis, bool frame)
{
    const int id = int(dis.CtlID);
    const bool menuButton = (m_iPopupButtonId > 0 && id == m_iPopupButtonId) ||
                            (m_iCommandButtonId > 0 && id == m_iCommandButtonId);
    const bool magnifier = m_iMagnifierId > 0 && id == m_iMagnifierId;
    if (!menuButton && !magnifier)
        return false;
    HDC dc = dis.hDC;
    const bool disabled = (dis.itemState & ODS_DISABLED) != 0;
    RECT r = dis.rcItem;
    if (magnifier)
        InflateRect(&r, 1, 1);
    if (frame) {
        ZX_DrawFrameControl(dc, r, DFC_BUTTON,
                            DFCS_BUTTONPUSH | DFCS_ADJUSTRECT | ((dis.itemState & ODS_SELECTED) ? DFCS_PUSHED : 0) |
                                (disabled ? DFCS_INACTIVE : 0));
        if (ZX_GetGUIColor(ZX_GUICOLOR_BUTTONBACK) == 0)
            FillRect(dc, &r, GetSysColorBrush(COLOR_BTNFACE));
    }
    const int w = dis.rcItem.right - dis.rcItem.left, h = dis.rcItem.bottom - dis.rcItem.top;
    if (magnifier) {
        const int image = MagnifierImage(m_bHistoCombined);
        SIZE size{};
        if (CZxBitmapPool::GetSize(image, &size))
            CZxBitmapPool::Draw(image, dc, dis.rcItem.left + (w - size.cx) / 2 + 1,
                                dis.rcItem.top + (h - size.cy) / 2 + 1);
        return true;
    }
    zxsetupui::DrawMenuButtonFace(dis, m_hDlg, r);
    return true;
}

void zxsetupui::DrawMenuButtonFace(const DRAWITEMSTRUCT& dis, HWND dialog, const RECT& r)
{
    HDC dc = dis.hDC;
    const bool disabled = (dis.itemState & ODS_DISABLED) != 0;
    const int h = dis.rcItem.bottom - dis.rcItem.top;
    wchar_t text[257] = {};
    GetDlgItemTextW(dialog, int(dis.CtlID), text, 256);
    // The dialog's font: it has the glyphs of the template's language.
    const HFONT own = reinterpret_cast<HFONT>(SendMessageW(dis.hwndItem, WM_GETFONT, 0, 0));
    HGDIOBJ oldFont = SelectObject(dc, own ? own : ZX_GetDefaultGUIFont());
    const int oldMode = SetBkMode(dc, TRANSPARENT);
    const COLORREF oldColour = SetTextColor(dc, GetSysColor(disabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    RECT t = r;
    InflateRect(&t, -2, -2);
    // Centred in the part left of the arrow.
    t.right = dis.rcItem.right - h / 2 - 3;
    SIZE extent{};
    GetTextExtentPoint32W(dc, text, int(wcslen(text)), &extent);
    const int x = t.left + ((t.right - t.left) - extent.cx) / 2;
    const int y = t.top + ((t.bottom - t.top) - extent.cy) / 2;
    DrawStateW(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(text), 0, x > t.left ? x : t.left, y,
               extent.cx, extent.cy, DST_PREFIXTEXT | DSS_NORMAL);
    SetTextColor(dc, oldColour);
    SetBkMode(dc, oldMode);
    SelectObject(dc, oldFont);
    ZX_DrawPickerArrow(dc, dis.rcItem.right - h / 2 - 3, dis.rcItem.top, dis.rcItem.bottom, h / 2, disabled);
}
