#include "setupui/hostcore_win.h"

#include "setupui/commandmenu_win.h"

#include "zx/grabberguielementbase.h"
#include "zx/grabberuibase.h"
#include "zxhost/waitcursor.h"

namespace zxsetupui {

bool CountWaitCursor(uint32_t& count, SZxWaitCursorHolder*& holder, bool on)
{
    const bool wasUp = count != 0;
    if (on) {
        if (count++ == 0)
            holder = new SZxWaitCursorHolder;
    } else if (count > 0 && --count == 0) {
        delete holder;
        holder = nullptr;
    }
    return wasUp;
}

void ShowFQSync(HWND dialog, int32_t checkId, CZxGenProvider_Low* provider)
{
    if (checkId != -1 && provider)
        CheckDlgButton(dialog, checkId, provider->IsModeFQSynchronized() ? BST_CHECKED : BST_UNCHECKED);
}

void OnFQSyncClick(HWND dialog, int32_t checkId, WPARAM wParam, CZxGenProvider_Low* provider)
{
    const int id = LOWORD(wParam);
    if (IsItem(checkId, id) && HIWORD(wParam) == 0 && provider)
        provider->ModeFQSynchronize(IsDlgButtonChecked(dialog, id) != 0);
}

void RunCommandButton(CZxMenu& menu, CZxGenProvider_Low* provider, HWND dialog, int id, bool rightAligned,
                      const std::function<void()>& create, const std::function<void(uint32_t)>& handle)
{
    create();
    CommandMenuApplyROIRules(menu, provider);
    RECT r{};
    GetWindowRect(GetDlgItem(dialog, id), &r);
    UINT selected = 0;
    const uint32_t flags = (rightAligned ? CZxMenu::TRACK_RIGHT : CZxMenu::TRACK_LEFT) | CZxMenu::TRACK_TOP;
    if (menu.Track(flags, rightAligned ? r.right : r.left, r.bottom, dialog, &selected) != 0)
        return;
    handle(selected);
    SendMessageW(dialog, WM_COMMAND, WPARAM(selected & 0xFFFF), 0);
}

namespace {

// The wait cursor's step around a row's event.
enum EWait : int8_t { kNoWait = 0, kWaitUp = 1, kWaitDown = -1 };

struct SPropertyRow {
    UINT message;
    int32_t event[2];   // per host (EHost): the event raised, -1 for none
    EWait wait[2];      // per host: up before the event, down after it
    bool lParam;        // the message's lParam goes with the event
};

// A format change puts the wait cursor up until it is done; a command's end
// takes it down. The GUI element also takes it down on a refresh.
const SPropertyRow kRows[] = {
    {WM_IS_FORMATCHANGING, {IZxGrabberUI::evPropChanging, ZX_GUIEVENT_FORMATCHANGING}, {kWaitUp, kWaitUp}, true},
    {WM_IS_FORMATCHANGED, {IZxGrabberUI::evPropChanged, ZX_GUIEVENT_FORMATCHANGED}, {kWaitDown, kWaitDown}, false},
    {WM_IS_PROPERTYCHANGED, {IZxGrabberUI::evPropSet, -1}, {kNoWait, kNoWait}, false},
    {WM_IS_REFRESH, {IZxGrabberUI::evPropRefresh, ZX_GUIEVENT_REFRESH}, {kNoWait, kWaitDown}, false},
    {WM_IS_COMMANDDONE, {IZxGrabberUI::evCommandDone, ZX_GUIEVENT_COMMANDDONE}, {kWaitDown, kWaitDown}, false},
};

} // namespace

EPropertyAnswer RaisePropertyEvent(EHost host, UINT message, int64_t wParam, int64_t lParam, int64_t* result,
                                   const PropertyRaise& raise, const std::function<bool(bool)>& wait)
{
    for (const SPropertyRow& row : kRows) {
        if (row.message != message || row.event[host] < 0)
            continue;
        if (row.wait[host] == kWaitUp)
            wait(true);
        const bool taken = raise(row.event[host], wParam, row.lParam ? lParam : 0, result);
        if (row.wait[host] == kWaitDown)
            wait(false);
        return taken ? EPropertyAnswer::Taken : EPropertyAnswer::Declined;
    }
    return EPropertyAnswer::None;
}

} // namespace zxsetupui
