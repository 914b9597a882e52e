// GUI elements of the host's user-interface library: a piece of user interface
// that lives as a child window inside a host window (a dialog, a docking pane)
// and reports what happens in it to a handler the host registers.
#pragma once
#include <cstdint>

#include "zxhost/export.h"
#include "zxhost/string.h"

class IZxGUIElement;

/// One event of an element, handed to its handler: 56 bytes on 64-bit builds.
/// The first five fields are what every event carries (size, code, window,
/// 32-bit wParam, pointer-sized payload); the rest is zero unless the element
/// itself raised the event from a window message.
struct SZxGUIElementEvent {
    uint32_t m_uiSize;          ///< sizeof(SZxGUIElementEvent)
    int32_t m_iCode;            ///< ZX_GUIEVENT_*, or a host's own code (10003...)
    ZxHWnd m_hWnd;              ///< the element's window
    /// The event's 32-bit argument (for example a setting set).
    uint32_t m_wParam;
    /// Zero.
    uint32_t m_uiReserved0;
    intptr_t m_lParam;          ///< the payload (a format for 10003)
    IZxGUIElement* m_pElement;  ///< the element, when the GUI library raised the event
    uint32_t m_uiMessage;       ///< the window message behind the event, or 0
    /// Zero.
    uint32_t m_uiReserved1;
    intptr_t m_lResult;         ///< the handler's answer, where the event asks for one
};

/// Event codes.
enum : int32_t {
    ZX_GUIEVENT_SELCHANGE = 10,   ///< the selection in the element changed
    ZX_GUIEVENT_ACCEPT = 20,      ///< the user accepted the selection (e.g. a double click)
};

/// Receives an element's events; `context` is what the host registered.
typedef int (*PFN_ZxGUIElementHandler)(void* context, SZxGUIElementEvent* event);

/// A piece of user interface living as a child window of a host window. UI
/// thread only.
class IZxGUIElement {
public:
    /// Hosts call DestroyUI before deleting an element (the library's elements also
    /// destroy a window still open when they are deleted).
    virtual ~IZxGUIElement() = default;
    /// Creates the element's window as a child of `parent`; returns it, or null.
    /// `name` is the element's (class) name, `style` flags the element defines.
    virtual ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner,
                            void* reserved) = 0;
    /// Destroys the window (the element itself stays until deleted).
    virtual void DestroyUI() = 0;
    /// The element's window (null before CreateUI and after DestroyUI).
    virtual ZxHWnd GetHWnd() const = 0;
    /// Moves the window, in the parent's client coordinates.
    virtual int SetPosition(int x, int y, int width, int height) = 0;
    /// Shows (non-zero) or hides the window.
    virtual int Show(int show) = 0;
    /// Non-zero lets the element float as a window of its own; 0 keeps it docked
    /// inside its parent (what dialog hosts ask for).
    virtual int SetFloating(int floating) = 0;
    /// Registers the handler that receives the element's events (null: none).
    virtual void SetHandler(PFN_ZxGUIElementHandler handler, void* context) = 0;
};

/// The common implementation over a window handle. Derived elements create the
/// window in CreateUI and set m_hWnd.
class ZX_HOST_API CZxGUIElement : public IZxGUIElement {
public:
    /// No window, no handler, docked.
    CZxGUIElement();
    /// Destroys the window when it still exists.
    ~CZxGUIElement() override;
    void DestroyUI() override;
    ZxHWnd GetHWnd() const override { return m_hWnd; }
    int SetPosition(int x, int y, int width, int height) override;
    int Show(int show) override;
    int SetFloating(int floating) override;
    /// True after SetFloating(non-zero).
    bool IsFloating() const { return m_bFloating; }
    void SetHandler(PFN_ZxGUIElementHandler handler, void* context) override;
    /// The element's name given to CreateUI.
    const wchar_t* GetName() const { return m_wstrName.GetString(); }

    /// Hands an event to the handler; 0 when there is none.
    int FireEvent(int32_t code, uint32_t message = 0, uintptr_t wParam = 0, intptr_t lParam = 0);

protected:
    /// The element's window (set by the derived CreateUI).
    ZxHWnd m_hWnd = nullptr;
    /// The element's name.
    CZxStringW m_wstrName;

private:
    PFN_ZxGUIElementHandler m_pfnHandler = nullptr;
    void* m_pHandlerContext = nullptr;
    bool m_bFloating = false;
};

/// An element with a caption and size limits, for elements built on a dialog
/// template: the template's size is the smallest the element wants.
class ZX_HOST_API CZxGUIControlElement : public CZxGUIElement {
public:
    /// The caption a docking host shows.
    const wchar_t* GetCaption() const { return m_wstrCaption.GetString(); }
    /// Sets the caption.
    void SetCaption(const wchar_t* caption) { m_wstrCaption = caption; }
    /// The smallest size the element wants, in pixels.
    void SetMinSize(int width, int height) { m_iMinWidth = width; m_iMinHeight = height; }
    /// Smallest width in pixels.
    int GetMinWidth() const { return m_iMinWidth; }
    /// Smallest height in pixels.
    int GetMinHeight() const { return m_iMinHeight; }

protected:
    /// The caption.
    CZxStringW m_wstrCaption;
    /// Smallest width in pixels.
    int m_iMinWidth = 0;
    /// Smallest height in pixels.
    int m_iMinHeight = 0;
};

/// The application's GUI zoom (1.0 = 100 %); elements scale their sizes by it.
ZX_HOST_API double ZX_GetGUIZoom();
/// Sets the zoom (values not above 0 become 1.0); returns the previous one.
ZX_HOST_API double ZX_SetGUIZoom(double zoom);
