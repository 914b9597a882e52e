// A 32-bit top-down DIB section selected into a memory DC, for tests that read
// back what was painted.
#pragma once
#include <windows.h>

#include <cstdint>
#include <vector>

namespace zxtest {

class Canvas {
public:
    Canvas(int w, int h, COLORREF fill = RGB(255, 255, 255)) : m_w(w), m_dc(CreateCompatibleDC(nullptr))
    {
        BITMAPINFO bi{};
        bi.bmiHeader = BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER), w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        m_bmp = CreateDIBSection(m_dc, &bi, DIB_RGB_COLORS, reinterpret_cast<void**>(&m_bits), nullptr, 0);
        m_old = SelectObject(m_dc, m_bmp);
        const RECT all{0, 0, w, h};
        HBRUSH brush = CreateSolidBrush(fill);
        FillRect(m_dc, &all, brush);
        DeleteObject(brush);
    }
    ~Canvas()
    {
        DeleteObject(SelectObject(m_dc, m_old));
        DeleteDC(m_dc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Dc() const { return m_dc; }
    /// The DC as the library's handle type takes it.
    uint64_t Handle() const { return uint64_t(reinterpret_cast<uintptr_t>(m_dc)); }
    COLORREF At(int x, int y) const { return GetPixel(m_dc, x, y); }
    /// The n x n pixels from (x0, y0), row by row.
    std::vector<COLORREF> Square(int x0, int y0, int n) const
    {
        std::vector<COLORREF> p;
        for (int y = y0; y < y0 + n; ++y)
            for (int x = x0; x < x0 + n; ++x)
                p.push_back(At(x, y));
        return p;
    }
    /// Raw pixels of row y from x0 up to x1 (exclusive).
    std::vector<uint32_t> Row(int y, int x0, int x1) const
    {
        GdiFlush();
        return std::vector<uint32_t>(m_bits + y * m_w + x0, m_bits + y * m_w + x1);
    }

private:
    int m_w;
    HDC m_dc;
    HBITMAP m_bmp;
    HGDIOBJ m_old;
    uint32_t* m_bits = nullptr;
};

} // namespace zxtest
