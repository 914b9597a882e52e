// Private notifications an input-setup control sends to its dialog around a write
// to the driver, and the message-parameter types of the control hooks.
#pragma once
#include <cstdint>

/// Message parameters as the dialog procedure receives them; on Windows these are
/// exactly WPARAM, LPARAM and LRESULT.
typedef uintptr_t ZxWParam;
typedef intptr_t ZxLParam;   ///< LPARAM
typedef intptr_t ZxLResult;  ///< LRESULT

/// First private message number of the dialog (WM_USER); portable headers cannot
/// take it from the system headers.
#define ZX_WM_USER_BASE 0x0400

/// Before a write that may change the camera format. wParam = the control's mode,
/// lParam = the new SZxGrabberFormatValue*, or 0 when the format stays.
#define WM_IS_FORMATCHANGING (ZX_WM_USER_BASE + 301)
/// After such a write. wParam = mode, lParam = 0.
#define WM_IS_FORMATCHANGED (ZX_WM_USER_BASE + 302)
/// After any property write. wParam = 0, lParam = 0.
#define WM_IS_PROPERTYCHANGED (ZX_WM_USER_BASE + 303)
/// Asks the host to refresh every control. wParam = -1.
#define WM_IS_REFRESH (ZX_WM_USER_BASE + 304)
/// After a write that reports state changes. wParam = 0, lParam = the SZxStateChangeInfo*.
#define WM_IS_STATECHANGE (ZX_WM_USER_BASE + 305)
/// A control's command has finished; the host passes wParam on with its event.
#define WM_IS_COMMANDDONE (ZX_WM_USER_BASE + 306)
