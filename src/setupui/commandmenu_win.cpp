#include "commandmenu_win.h"

namespace zxsetupui {

void CommandMenuCreate(const SCommandMenuHost& host)
{
    // The menu must exist to be tracked even when no group is selected.
    if (host.menu)
        host.menu->GetHandle();
}

void CommandMenuHandle(const SCommandMenuHost&, uint32_t) {}

} // namespace zxsetupui
