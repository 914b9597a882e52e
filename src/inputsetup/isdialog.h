// The few window calls of the control base, kept behind one seam so that the
// portable part of the base and the list also build where there are no windows.
#pragma once
#include "zx/inputsetupmessages.h"
#include "zxhost/export.h"

namespace zxis {

/// GetDlgItem; null for a null dialog.
ZxHWnd DlgItem(ZxHWnd dialog, int id);
/// SendMessageW; 0 for a null window.
ZxLResult Send(ZxHWnd window, unsigned message, ZxWParam wParam, ZxLParam lParam);
/// EnableWindow's result (nonzero when the window was disabled before).
int EnableItem(ZxHWnd item, bool enable);
/// ShowWindow with SW_SHOW / SW_HIDE; its result (nonzero when it was visible before).
int ShowItem(ZxHWnd item, bool show);

} // namespace zxis
