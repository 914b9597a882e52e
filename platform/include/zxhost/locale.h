// The host's locale service: the language of the user interface, which picks
// the dialog templates to load.
#pragma once
#include <cstdint>
#include "zxhost/export.h"

/// The current user-interface language as a Windows language id (primary
/// language in the low 10 bits, sublanguage above); English (US), 0x0409, by default.
ZX_HOST_API uint16_t ZX_GetLanguageId();
/// Sets the language; returns the previous one.
ZX_HOST_API uint16_t ZX_SetLanguageId(uint16_t langId);
