// Without a window system there is no box to show: nothing was pressed.
#include "systembox.h"

int ZxShowSystemMessageBox(ZxHWnd, const wchar_t*, const wchar_t*, unsigned) { return 0; }
