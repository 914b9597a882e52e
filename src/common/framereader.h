// A thread that reads frames at a modest rate until it is stopped: the preview
// pad's live thumbnails. Portable, so it is tested natively under the sanitiser.
#pragma once
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "zx/export.h"

namespace zxcommon {

/// Calls `tick` on its own thread, first at once and then every `periodMs`
/// milliseconds (at least 1), until Stop. Stop (and the destructor) wakes the
/// thread, waits for a running tick to end and joins: once it returns, `tick`
/// is never called again. Start, Stop and the destructor belong to one thread.
/// Exported for the library's own tests only.
class ZX_API CFrameReader {
public:
    CFrameReader(int periodMs, std::function<void()> tick);
    ~CFrameReader();
    CFrameReader(const CFrameReader&) = delete;
    CFrameReader& operator=(const CFrameReader&) = delete;

    /// Starts the thread (nothing when it runs already, or without a tick).
    void Start();
    /// Stops and joins it; nothing when it does not run.
    void Stop();
    bool Running() const { return m_thread.joinable(); }

private:
    void Run();

    const int m_iPeriodMs;
    const std::function<void()> m_tick;
    std::mutex m_lock;
    std::condition_variable m_wake;
    bool m_bStop = false;
    std::thread m_thread;
};

} // namespace zxcommon
