#include "zxhost/guicolors.h"

#include <atomic>

namespace {
std::atomic<COLORREF> g_colours[ZX_GUICOLOR_COUNT] = {};
std::atomic<bool> g_init{false};

void InitColours()
{
    if (g_init.exchange(true))
        return;
    g_colours[ZX_GUICOLOR_WINDOW] = GetSysColor(COLOR_WINDOW);
    g_colours[ZX_GUICOLOR_TEXT] = GetSysColor(COLOR_WINDOWTEXT);
    g_colours[ZX_GUICOLOR_HIGHLIGHT] = GetSysColor(COLOR_HIGHLIGHT);
}
} // namespace

COLORREF ZX_GetGUIColor(int index)
{
    InitColours();
    return index >= 0 && index < ZX_GUICOLOR_COUNT ? g_colours[index].load() : 0;
}

void ZX_SetGUIColor(int index, COLORREF colour)
{
    InitColours();
    if (index >= 0 && index < ZX_GUICOLOR_COUNT)
        g_colours[index] = colour;
}

HFONT ZX_GetDefaultGUIFont()
{
    static const HFONT font = [] {
        NONCLIENTMETRICSW ncm{};
        ncm.cbSize = sizeof(ncm);
        HFONT f = nullptr;
        if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(ncm), &ncm, 0))
            f = CreateFontIndirectW(&ncm.lfMessageFont);
        return f ? f : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    }();
    return font;
}
