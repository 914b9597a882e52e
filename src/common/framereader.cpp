#include "common/framereader.h"

#include <chrono>
#include <utility>

zxcommon::CFrameReader::CFrameReader(int periodMs, std::function<void()> tick)
    : m_iPeriodMs(periodMs < 1 ? 1 : periodMs), m_tick(std::move(tick))
{
}

zxcommon::CFrameReader::~CFrameReader() { Stop(); }

void zxcommon::CFrameReader::Start()
{
    if (m_thread.joinable() || !m_tick)
        return;
    m_bStop = false;
    m_thread = std::thread([this] { Run(); });
}

void zxcommon::CFrameReader::Stop()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard<std::mutex> lock(m_lock);
        m_bStop = true;
    }
    m_wake.notify_all();
    m_thread.join();
}

void zxcommon::CFrameReader::Run()
{
    std::unique_lock<std::mutex> lock(m_lock);
    while (!m_bStop) {
        lock.unlock();
        m_tick();
        lock.lock();
        // Woken early by Stop; a spurious wake only shortens one period.
        m_wake.wait_for(lock, std::chrono::milliseconds(m_iPeriodMs), [this] { return m_bStop; });
    }
}
