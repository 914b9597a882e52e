// The preview pad's reading thread: it reads until stopped, never after, and
// owns nothing a tick leaves behind (the sanitised native build checks that).
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "common/framereader.h"
#include "zx_test.h"

using zxtest::WaitFor;

TEST(FrameReader, ReadsUntilStoppedAndNeverAfterEvenWhenStoppedMidTick)
{
    std::mutex lock;
    std::vector<std::unique_ptr<int>> frames;   // what the ticks handed over, as the pad's slot does
    std::atomic<int> ticks{0};
    std::atomic<bool> inTick{false};
    zxcommon::CFrameReader reader(5, [&] {
        inTick = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        const std::lock_guard<std::mutex> l(lock);
        frames.push_back(std::make_unique<int>(ticks));
        ++ticks;
        inTick = false;
    });
    EXPECT_FALSE(reader.Running());
    reader.Start();
    reader.Start();   // a second start changes nothing
    EXPECT_TRUE(reader.Running());
    ASSERT_TRUE(WaitFor([&] { return ticks >= 3; }));
    reader.Stop();
    EXPECT_FALSE(reader.Running());
    EXPECT_FALSE(inTick) << "a tick that ran when Stop came has ended";
    const int stoppedAt = ticks;
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(ticks, stoppedAt) << "no tick after Stop";
    reader.Stop();   // again: nothing
    // Restarted, it reads again; the destructor stops it.
    reader.Start();
    ASSERT_TRUE(WaitFor([&] { return ticks > stoppedAt; }));
}

TEST(FrameReader, ALongPeriodDoesNotDelayStopAndWithoutATickNothingRuns)
{
    std::atomic<int> ticks{0};
    {
        zxcommon::CFrameReader slow(60 * 60 * 1000, [&] { ++ticks; });
        slow.Start();
        ASSERT_TRUE(WaitFor([&] { return ticks == 1; })) << "the first read comes at once";
        // Destroyed while waiting an hour: Stop wakes it.
    }
    EXPECT_EQ(ticks, 1);
    zxcommon::CFrameReader none(0, nullptr);
    none.Start();
    EXPECT_FALSE(none.Running());
}
