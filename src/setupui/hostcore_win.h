// What the two setup hosts (the dialog host and the GUI-element host) share:
// the counted wait cursor, the fast/quality synchronisation box, the command
// button, and one table from the property messages to host events. Each host
// drives the table with its own raise function.
#pragma once
#include <windows.h>

#include <cstdint>
#include <functional>
#include "zxhost/menu.h"
#include "zxhost/provider.h"

struct SZxWaitCursorHolder;

namespace zxsetupui {

/// A registered item id: -1 (none) and 0 (none either) never match a command.
inline bool IsItem(int32_t registered, int id) { return registered > 0 && registered == id; }

/// One more (`on`) or one fewer wait-cursor request; the cursor shows while any
/// is open, and an unmatched "off" leaves the count at 0. Whether one was open before.
bool CountWaitCursor(uint32_t& count, SZxWaitCursorHolder*& holder, bool on);

/// Checks the synchronisation box `checkId` (-1: none) as the provider says.
void ShowFQSync(HWND dialog, int32_t checkId, CZxGenProvider_Low* provider);
/// A click on the synchronisation box (WM_COMMAND `wParam`) hands its state to
/// the provider. Never consumes the message.
void OnFQSyncClick(HWND dialog, int32_t checkId, WPARAM wParam, CZxGenProvider_Low* provider);

/// The command button was clicked: builds the menu (`create`), applies the ROI
/// rules, opens it under the button (left-aligned, or right-aligned for a host
/// docked at a window's right edge) and carries out the choice (`handle`); the
/// dialog then hears of it as WM_COMMAND, so a driver handles items of its own.
void RunCommandButton(CZxMenu& menu, CZxGenProvider_Low* provider, HWND dialog, int id, bool rightAligned,
                      const std::function<void()>& create, const std::function<void(uint32_t)>& handle);

/// The two hosts, as the property-event table tells them apart.
enum EHost { kDialogHost = 0, kElementHost = 1 };

/// What a host does with a property message.
enum class EPropertyAnswer {
    None,       ///< the table has no row for the message
    Declined,   ///< raised; the application left it to the controls
    Taken,      ///< raised; the application handled it
};

/// A host's event raiser: raises `event` with the message's wParam and (for
/// rows that pass it) lParam; true when the application took the message, with
/// the dialog result in *result where the host reports one.
using PropertyRaise = std::function<bool(int32_t event, int64_t wParam, int64_t lParam, int64_t* result)>;

/// Runs the row of `message`: the wait cursor up before the event or down
/// after it, as the row says for `host`, and the event through `raise`.
EPropertyAnswer RaisePropertyEvent(EHost host, UINT message, int64_t wParam, int64_t lParam, int64_t* result,
                                   const PropertyRaise& raise, const std::function<bool(bool)>& wait);

} // namespace zxsetupui
