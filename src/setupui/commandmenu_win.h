// The setting command menu, shared by the dialog host and the GUI-element host:
// each hands over the parts of itself the menu works on.
#pragma once
#include <windows.h>

#include <cstdint>
#include <functional>
#include "zx/export.h"
#include "zx/inputsetupcontrols.h"
#include "zxhost/menu.h"

namespace zxsetupui {

/// Menu ids (binding: drivers and the application know them).
enum : UINT {
    kMenuCopySeparator = 1000,
    kMenuNewSetting = 2000,
    kMenuSaveSeparator = 2001,
    kMenuSave = 2100,            ///< popup; 2101 + i overwrites named setting i
    kMenuRemove = 3100,          ///< popup; 3101 + i removes it
    kMenuLoad = 4100,            ///< popup; 4101 + i loads it
    kMenuFastToQuality = 5101,
    kMenuQualityToFast = 5102,
    kMenuDefaults = 6000,
    kMenuDefaultsSeparator = 6001,
    kMenuUseROI = 7000,
    kMenuDefineROI = 7001,
    kMenuROI = 7002,             ///< popup
    kMenuROISeparator = 7003,
    kMenuSaveROI = 7004,
    kMenuLoadROI = 7005,
    kMenuPredefinedFirst = 7006, ///< separator before the predefined ROIs
    kMenuPredefinedROI = 7007,   ///< 7007..7016
    kMenuPredefinedLast = 7017,  ///< separator after them
};

/// Command groups (IS_CommandX flags).
enum : uint32_t {
    kGroupFastQuality = 1,
    kGroupDefaults = 2,
    kGroupROI = 4,
    kGroupNamedSettings = 8,
};

/// What a host lends the menu for one build or one command.
struct SCommandMenuHost {
    CZxGenProvider_Low* provider;   ///< may be null: the menu then offers only what needs none
    CZxMenu* menu;
    HWND dialog;
    CZxISControlList* controls;
    uint32_t flags;                 ///< command groups to show
    bool guiElement;                ///< the GUI-element host (ROI group, its own ROI commands)
    const wchar_t* source;          ///< translation context of the host
    /// The ids the host carries out itself (7001, and the GUI element's ROI
    /// commands); may be empty.
    std::function<void(uint32_t id)> hostCommand;
};

/// Rebuilds the host's groups of the menu; items a driver added stay. Then
/// announces the menu (ZX_MODULEEVENT_GUI_MENUINITPOPUP).
ZX_API void CommandMenuCreate(const SCommandMenuHost& host);
/// Carries out one menu id (0: the menu was dismissed, nothing to do).
ZX_API void CommandMenuHandle(const SCommandMenuHost& host, uint32_t id);

/// The ROI rules of an opened menu, alike on both hosts: under multi-view "Use"
/// (7000) and "Define..." (7001) are disabled; otherwise "Use" is enabled
/// exactly when the ROI is not empty. "Use" is checked when the ROI is on. A
/// null provider changes nothing.
void CommandMenuApplyROIRules(CZxMenu& menu, CZxGenProvider_Low* provider);

/// The face of a menu button (text centred left of the picker arrow, grey when
/// disabled) inside `r`; frame and background are the caller's.
void DrawMenuButtonFace(const DRAWITEMSTRUCT& dis, HWND dialog, const RECT& r);

} // namespace zxsetupui
