#include <windows.h>

#include "zxhost/waitcursor.h"

SZxWaitCursorHolder::SZxWaitCursorHolder() : m_hPrevious(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}

SZxWaitCursorHolder::~SZxWaitCursorHolder() { SetCursor(static_cast<HCURSOR>(m_hPrevious)); }
