// The host's wait cursor.
#pragma once
#include "zxhost/export.h"

/// Shows the wait cursor for its lifetime and then restores the cursor it
/// replaced; holders nest. UI thread only (the cursor is the thread's).
struct ZX_HOST_API SZxWaitCursorHolder {
    SZxWaitCursorHolder();
    ~SZxWaitCursorHolder();
    SZxWaitCursorHolder(const SZxWaitCursorHolder&) = delete;
    SZxWaitCursorHolder& operator=(const SZxWaitCursorHolder&) = delete;

    void* m_hPrevious; ///< the cursor to restore
};
