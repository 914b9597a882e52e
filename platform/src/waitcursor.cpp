#include "zxhost/waitcursor.h"

#if !defined(_WIN32)
// Without a window system there is no cursor to change.
SZxWaitCursorHolder::SZxWaitCursorHolder() : m_hPrevious(nullptr) {}
SZxWaitCursorHolder::~SZxWaitCursorHolder() = default;
#endif
