// Status codes returned by the library's setup operations. Provider results
// pass through unchanged.
#pragma once

enum : int {
    ZX_OK = 0,
    ZX_E_NOTSUPPORTED = -2,   ///< not supported
    ZX_E_CANCELLED = -8,      ///< the user cancelled a selection
    ZX_E_FAIL = -9,           ///< bad arguments, missing data or general failure
    ZX_E_BUSY = -10,          ///< a control is being edited; its value is left alone
    ZX_E_WINDOW = -11,        ///< a window call failed
    ZX_E_NOSELECTION = -12,   ///< nothing selected
};
