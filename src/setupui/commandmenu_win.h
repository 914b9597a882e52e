// The setting command menu, shared by the dialog host and the GUI-element host:
// each hands over the parts of itself the menu works on.
#pragma once
#include <windows.h>

#include <cstdint>
#include "zx/inputsetupcontrols.h"
#include "zxhost/menu.h"

namespace zxsetupui {

/// Menu ids the hosts touch themselves.
enum : UINT {
    kMenuUseROI = 7000,
    kMenuDefineROI = 7001,
};

/// What a host lends the menu for one build or one command.
struct SCommandMenuHost {
    CZxGenProvider_Low* provider;   ///< may be null: the menu then offers nothing that needs it
    CZxMenu* menu;
    HWND dialog;
    CZxISControlList* controls;
    uint32_t flags;                 ///< command groups to show
    bool guiElement;                ///< the GUI-element host (ROI group, GUI commands)
};

/// Rebuilds the host's groups of the menu; items a driver added stay.
void CommandMenuCreate(const SCommandMenuHost& host);
/// Carries out one menu id (0: the menu was dismissed, nothing to do).
void CommandMenuHandle(const SCommandMenuHost& host, uint32_t id);

} // namespace zxsetupui
