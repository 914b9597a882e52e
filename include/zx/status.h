// Status codes returned by the library's setup operations. Provider results
// pass through unchanged.
#pragma once

/// Status codes of the setup, selection and dialog operations (32-bit signed).
/// Image functions return nothing; a provider's own result is passed on
/// unchanged, so a driver's codes may appear as well.
enum : int {
    /// Success.
    ZX_OK = 0,
    ZX_E_NOTSUPPORTED = -2,   ///< not supported
    ZX_E_CANCELLED = -8,      ///< the user cancelled a selection
    ZX_E_FAIL = -9,           ///< bad arguments, missing data or general failure
    ZX_E_BUSY = -10,          ///< a control is being edited; its value is left alone
    ZX_E_WINDOW = -11,        ///< a window call failed
    ZX_E_NOSELECTION = -12,   ///< nothing selected
};
