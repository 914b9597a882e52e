#include "zx/version.h"

uint32_t ZX_GetVersion(void) { return ZX_VERSION; }

const char* ZX_GetVersionString(void) { return ZX_VERSION_STRING; }
