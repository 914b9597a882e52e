#include <windows.h>

#include "zxhost/guielement.h"

#include <cstddef>

CZxGUIElement::CZxGUIElement() = default;

CZxGUIElement::~CZxGUIElement() { CZxGUIElement::DestroyUI(); }

void CZxGUIElement::DestroyUI()
{
    HWND w = reinterpret_cast<HWND>(m_hWnd);
    m_hWnd = nullptr;
    if (w && IsWindow(w))
        DestroyWindow(w);
}

int CZxGUIElement::SetPosition(int x, int y, int width, int height)
{
    HWND w = reinterpret_cast<HWND>(m_hWnd);
    if (!w)
        return -9;
    return SetWindowPos(w, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE) ? 0 : -11;
}

int CZxGUIElement::Show(int show)
{
    HWND w = reinterpret_cast<HWND>(m_hWnd);
    if (!w)
        return -9;
    ShowWindow(w, show ? SW_SHOW : SW_HIDE);
    return 0;
}

int CZxGUIElement::SetFloating(int floating)
{
    m_bFloating = floating != 0;
    return 0;
}

void CZxGUIElement::SetHandler(PFN_ZxGUIElementHandler handler, void* context)
{
    m_pfnHandler = handler;
    m_pHandlerContext = context;
}

int CZxGUIElement::FireEvent(int32_t code, uint32_t message, uintptr_t wParam, intptr_t lParam)
{
    if (!m_pfnHandler)
        return 0;
    SZxGUIElementEvent e{};
    e.m_uiSize = sizeof(SZxGUIElementEvent);
    e.m_iCode = code;
    e.m_hWnd = m_hWnd;
    e.m_wParam = uint32_t(wParam);
    e.m_lParam = lParam;
    if (message != 0) {   // events a host raises itself keep the tail zero
        e.m_pElement = this;
        e.m_uiMessage = message;
    }
    return m_pfnHandler(m_pHandlerContext, &e);
}

static_assert(sizeof(void*) != 8 || sizeof(SZxGUIElementEvent) == 56, "the event record is 56 bytes");
static_assert(sizeof(void*) != 8 || (offsetof(SZxGUIElementEvent, m_hWnd) == 8 && offsetof(SZxGUIElementEvent, m_wParam) == 16 &&
                                     offsetof(SZxGUIElementEvent, m_lParam) == 24),
              "size, code, window, wParam and payload lead the event record");
