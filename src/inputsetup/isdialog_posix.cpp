// Without a window system there are no dialog items: lookups find nothing,
// messages go nowhere and window calls report failure (zero), as Win32 does for
// a missing window.
#include "inputsetup/isdialog.h"

namespace zxis {

ZxHWnd DlgItem(ZxHWnd, int) { return nullptr; }
ZxLResult Send(ZxHWnd, unsigned, ZxWParam, ZxLParam) { return 0; }
int EnableItem(ZxHWnd, bool) { return 0; }
int ShowItem(ZxHWnd, bool) { return 0; }

} // namespace zxis
