// Without a window system there is no cursor to change.
#include "zxhost/waitcursor.h"

SZxWaitCursorHolder::SZxWaitCursorHolder() : m_hPrevious(nullptr) {}
SZxWaitCursorHolder::~SZxWaitCursorHolder() = default;
