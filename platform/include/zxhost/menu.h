// The GUI library's popup menu: a real HMENU with its items addressed by id.
// Windows only.
#pragma once
#include <windows.h>

#include <memory>
#include <vector>
#include "zxhost/export.h"
#include "zxhost/string.h"

/// A popup menu whose items (commands, separators and sub-menus) all carry an
/// id, so that a caller deletes, enables or checks an item by id wherever it
/// sits. Sub-menus belong to the menu that appended them. The handle is created
/// on the first append and destroyed with the object.
/// @note UI thread only.
class ZX_HOST_API CZxMenu {
public:
    /// Flags of Track.
    enum : UINT {
        TRACK_LEFT = 0x01,     ///< the menu's left edge at x
        TRACK_RIGHT = 0x04,    ///< the menu's right edge at x
        TRACK_TOP = 0x40,      ///< the menu's top edge at y
    };

    /// An empty menu; no handle yet.
    CZxMenu();
    /// Destroys the handle and the sub-menus.
    ~CZxMenu();
    /// Not copyable (it owns its handle).
    CZxMenu(const CZxMenu&) = delete;
    /// Not copyable.
    CZxMenu& operator=(const CZxMenu&) = delete;

    /// The popup menu handle (created when missing; null only when Windows refuses).
    HMENU GetHandle();
    /// Appends a command; false when the menu cannot take it.
    bool Append(UINT id, const wchar_t* text, bool enabled = true);
    /// Appends a separator under `id`; false when the menu cannot take it.
    bool AppendSeparator(UINT id);
    /// Appends a sub-menu under `id`; the sub-menu, or null.
    CZxMenu* AppendPopup(UINT id, const wchar_t* text);
    /// The sub-menu appended under `id` here or in a sub-menu, or null.
    CZxMenu* FindPopup(UINT id);
    /// Whether an item of that id exists here or in a sub-menu.
    bool HasItem(UINT id) const;
    /// Enables or greys the item; false for an unknown id.
    bool Enable(UINT id, bool enable);
    /// Checks or unchecks the item; false for an unknown id.
    bool Check(UINT id, bool check);
    /// True when the item exists and is enabled.
    bool IsEnabled(UINT id) const;
    /// True when the item exists and is checked.
    bool IsChecked(UINT id) const;
    /// Text of the item (empty for separators and unknown ids).
    CZxStringW GetItemText(UINT id) const;
    /// Deletes the item of that id (a sub-menu with its contents) wherever it sits;
    /// false when there is none.
    bool Delete(UINT id);
    /// Deletes every item.
    void RemoveAll();
    /// Items at the top level.
    int GetItemCount() const;
    /// Id of the item at `pos` of the top level (0 past the end).
    UINT GetItemId(int pos) const;

    /// Shows the menu at (x, y) in screen coordinates for `owner` and waits for
    /// the user. The chosen id goes to *selected (0 when the menu was dismissed);
    /// no WM_COMMAND is sent. Returns ZX_OK, or ZX_E_WINDOW when the menu could not be shown.
    int Track(UINT flags, int x, int y, HWND owner, UINT* selected);

private:
    bool Insert(UINT id, const wchar_t* text, UINT type, HMENU sub);
    HMENU m_hMenu = nullptr;
    std::vector<std::pair<UINT, std::unique_ptr<CZxMenu>>> m_popups;
};
