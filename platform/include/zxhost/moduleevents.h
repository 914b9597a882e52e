// The plug-in manager's application events: named notifications any module
// may raise and any module may subscribe to.
#pragma once
#include "zxhost/export.h"

/// Raised with the finished command menu (a CZxMenu*) before it is shown, so
/// that other modules may add or change items.
#define ZX_MODULEEVENT_GUI_MENUINITPOPUP "ZX_MODULEEVENT_GUI_MENUINITPOPUP"

/// A subscriber: the event's name, its argument and the subscriber's context.
typedef void (*PFN_ZxModuleEvent)(const char* event, void* argument, void* context);

/// Subscribes `handler` (with `context`) to the event `event`; subscribing the
/// same pair twice keeps one. False for a null name or handler.
ZX_HOST_API bool ZX_SubscribeModuleEvent(const char* event, PFN_ZxModuleEvent handler, void* context);
/// Removes that subscription; false when there was none.
ZX_HOST_API bool ZX_UnsubscribeModuleEvent(const char* event, PFN_ZxModuleEvent handler, void* context);
/// Calls every subscriber of `event` in subscription order; how many were called.
ZX_HOST_API int ZX_RaiseModuleEvent(const char* event, void* argument);
