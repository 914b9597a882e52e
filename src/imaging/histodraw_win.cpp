// Painting of the histogram display model into a GDI device context.
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include "zx/histodraw.h"
#include "zx/status.h"

namespace {

const COLORREF kGrey = 0x808080;
const int kPanelGap = 4;   // pixels between the panels of a grouped drawing

struct Series {
    const uint32_t* bins;
    uint32_t max;       // counter drawn at full height
    COLORREF color;
};

// Largest counter of the bins that display column x of w covers, so a narrow
// plot never hides a peak.
uint32_t ColumnValue(const uint32_t* bins, uint32_t n, int x, int w)
{
    const uint64_t b0 = uint64_t(x) * n / uint64_t(w);
    const uint64_t b1 = std::max(uint64_t(x + 1) * n / uint64_t(w), b0 + 1);
    uint32_t v = 0;
    for (uint64_t b = b0; b < b1 && b < n; ++b)
        v = std::max(v, bins[b]);
    return v;
}

// Draws up to ZX_HISTO_MAX_COMP series overlaid, one 1-pixel vertical line per
// colour band and column: at every column the tallest series owns the band from
// the next one's top to its own, so each keeps its visible top.
void DrawSeries(HDC dc, const CZxRectBase<int>& r, double scale, const Series* s, int count, uint32_t bins)
{
    HPEN pens[ZX_HISTO_MAX_COMP];
    for (int k = 0; k < count; ++k)
        pens[k] = CreatePen(PS_SOLID, 1, s[k].color);
    HGDIOBJ old = SelectObject(dc, pens[0]);
    int selected = 0;
    const uint32_t height = uint32_t(r.Height());
    // Only the columns the DC can show: a huge rectangle costs nothing off-screen.
    RECT clip{r.left, r.top, r.right, r.bottom};
    if (GetClipBox(dc, &clip) == ERROR)
        clip = RECT{r.left, r.top, r.right, r.bottom};
    const int xFrom = std::max(0, int(clip.left) - r.left), xTo = std::min(r.Width(), int(clip.right) - r.left);
    for (int x = xFrom; x < xTo; ++x) {
        int order[ZX_HISTO_MAX_COMP];
        uint32_t h[ZX_HISTO_MAX_COMP];
        for (int k = 0; k < count; ++k) {
            const uint32_t v = ColumnValue(s[k].bins, bins, x, r.Width());
            h[k] = s[k].max ? CZxHistoDraw::CalcHistoY(scale, double(v) / double(s[k].max), height) : 0;
            order[k] = k;
        }
        std::stable_sort(order, order + count, [&](int a, int b) { return h[a] > h[b]; });
        const int px = r.left + x;
        for (int j = 0; j < count; ++j) {
            const int k = order[j];
            const uint32_t below = j + 1 < count ? h[order[j + 1]] : 0;
            if (h[k] <= below)
                continue;
            if (k != selected) {
                SelectObject(dc, pens[k]);
                selected = k;
            }
            // LineTo leaves out its end point: rows bottom-1-below up to bottom-h.
            MoveToEx(dc, px, r.bottom - 1 - int(below), nullptr);
            LineTo(dc, px, r.bottom - 1 - int(h[k]));
        }
    }
    SelectObject(dc, old);
    for (int k = 0; k < count; ++k)
        DeleteObject(pens[k]);
}

HDC ToDC(uint64_t dc) { return reinterpret_cast<HDC>(static_cast<uintptr_t>(dc)); }

// Empty, inverted, or so wide that its size overflows an int.
bool BadRect(const CZxRectBase<int>& r)
{
    return r.IsEmpty() || int64_t(r.right) - r.left > INT32_MAX || int64_t(r.bottom) - r.top > INT32_MAX;
}

} // namespace

int CZxHistoDraw::DrawIntoDC(uint64_t dc, const CZxRectBase<int>& rect, double scale, uint32_t mode,
                             const CZxRangeMask& mask, bool grouped) const
{
    if (!dc || BadRect(rect))
        return ZX_E_FAIL;
    if (!(scale > 0.0))
        scale = 1.0;
    Series s[ZX_HISTO_MAX_COMP];
    int count = 0;
    if (mode == MODE_COMBINED) {
        if (!Bins(-1))
            return ZX_E_FAIL;
        s[count++] = Series{Bins(-1), m_uiMaxCombined, kGrey};
    } else if (mode == MODE_COMPONENTS) {
        uint32_t common = 0;
        for (uint32_t c = 0; c < m_uiComponents; ++c) {
            if (!mask.IsSet(c) || !Bins(int(c)))
                continue;
            s[count++] = Series{Bins(int(c)), m_pCompMax[c], m_pCompColor[c]};
            common = std::max(common, m_pCompMax[c]);
        }
        for (int k = 0; !grouped && k < count; ++k)
            s[k].max = common;
    }
    if (count == 0)
        return ZX_E_FAIL;
    DrawSeries(ToDC(dc), rect, scale, s, count, m_uiBins);
    return ZX_OK;
}

int CZxHistoDraw::DrawIntoDCGrouped(uint64_t dc, const CZxRectBase<int>& rect, double scale, uint32_t mode,
                                    const CZxRangeMask& mask, uint32_t groups, bool grouped) const
{
    if (mode != MODE_COMPONENTS)
        return DrawIntoDC(dc, rect, scale, mode, mask, grouped);
    if (!dc || BadRect(rect) || groups == 0 || groups > uint32_t(rect.Width()))
        return ZX_E_FAIL;
    if (!(scale > 0.0))
        scale = 1.0;
    const int panel = (rect.Width() - kPanelGap * int(groups - 1)) / int(groups);
    if (panel <= 0)
        return ZX_E_FAIL;
    uint32_t common = 0;
    for (uint32_t c = 0; c < m_uiComponents; ++c)
        if (mask.IsSet(c) && Bins(int(c)))
            common = std::max(common, m_pCompMax[c]);
    uint32_t slot = 0;
    for (uint32_t c = m_uiComponents; c-- > 0 && slot < groups;) {
        if (!mask.IsSet(c) || !Bins(int(c)))
            continue;
        const int left = rect.left + int(slot++) * (panel + kPanelGap);
        const Series s{Bins(int(c)), grouped ? m_pCompMax[c] : common, m_pCompColor[c]};
        DrawSeries(ToDC(dc), CZxRectBase<int>(left, rect.top, left + panel, rect.bottom), scale, &s, 1, m_uiBins);
    }
    return slot ? ZX_OK : ZX_E_FAIL;
}
