// The worker pool behind ZX_SetKernelThreads: the library's own few threads,
// blocked on a condition variable when idle, started on the first frame that
// wants them and stopped by lowering the setting. See docs/architecture.md for
// why it is not a shared runtime and how it ends on unload.
#include "imaging/parallel.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <new>
#include <vector>

#include "zx/kernel_level.h"

namespace zx {
namespace {

constexpr int kMaxThreads = 64;

struct Pool;

struct Worker {
    Pool* pool;
    unsigned index;  // 0-based among the workers; the caller is not one
    void* thread = nullptr;
};

struct Pool {
    std::mutex frame;  // one frame at a time uses the workers; held while resizing

    std::mutex lock;  // guards the fields below but for the atomics
    std::condition_variable wake, idle;
    unsigned keep = 0;        // workers wanted: setting - 1; workers at or above exit
    uint64_t generation = 0;  // bumped per posted job
    bool open = false;        // a job is posted and may still be joined
    unsigned active = 0;      // workers inside the current job
    void (*fn)(void*, unsigned) = nullptr;
    void* ctx = nullptr;
    unsigned parts = 0;
    std::atomic<unsigned> next{0};
    std::vector<Worker*> workers;

    std::atomic<int> setting{1};

    void Work()
    {
        for (;;) {
            const unsigned p = next.fetch_add(1, std::memory_order_relaxed);
            if (p >= parts)
                return;
            fn(ctx, p);
        }
    }

    static void Main(void* arg)
    {
        Worker* self = static_cast<Worker*>(arg);
        Pool& pool = *self->pool;
        uint64_t seen = 0;
        std::unique_lock<std::mutex> hold(pool.lock);
        for (;;) {
            pool.wake.wait(hold, [&] { return self->index >= pool.keep || (pool.open && pool.generation != seen); });
            if (self->index >= pool.keep)
                return;
            seen = pool.generation;
            ++pool.active;
            hold.unlock();
            pool.Work();
            hold.lock();
            if (--pool.active == 0)
                pool.idle.notify_all();
        }
    }

    // Under `frame`: starts missing workers up to keep (stops at the first failure).
    void Grow()
    {
        std::unique_lock<std::mutex> hold(lock);
        while (workers.size() < keep) {
            Worker* w = new (std::nothrow) Worker{this, unsigned(workers.size())};
            if (!w)
                break;
            hold.unlock();
            w->thread = platform::StartThread(&Pool::Main, w);
            hold.lock();
            if (!w->thread) {
                delete w;
                break;
            }
            workers.push_back(w);
        }
    }

    // Under `frame`: stops and joins the workers at or above keep.
    void Shrink()
    {
        std::vector<Worker*> leaving;
        {
            std::lock_guard<std::mutex> hold(lock);
            while (workers.size() > keep) {
                leaving.push_back(workers.back());
                workers.pop_back();
            }
            wake.notify_all();
        }
        for (Worker* w : leaving) {
            platform::JoinThread(w->thread);
            delete w;
        }
    }

    void Run(unsigned n, void (*f)(void*, unsigned), void* c)
    {
        Grow();
        {
            std::lock_guard<std::mutex> hold(lock);
            fn = f;
            ctx = c;
            parts = n;
            next.store(0, std::memory_order_relaxed);
            ++generation;
            open = true;
        }
        wake.notify_all();
        Work();
        // Every part is taken; wait for the workers still running theirs, and
        // let none join late: after this no worker touches the job.
        std::unique_lock<std::mutex> hold(lock);
        open = false;
        idle.wait(hold, [&] { return active == 0; });
    }
};

// Never destroyed: at process exit Windows has ended the workers before static
// destructors run, and joining there would wait forever. Elsewhere the pool is
// stopped at unload (parallel_posix.cpp).
Pool& ThePool()
{
    static Pool* pool = new Pool;
    return *pool;
}

} // namespace

unsigned PartsFor(uint64_t samples, uint64_t limit)
{
    const uint64_t threads = uint64_t(ThePool().setting.load(std::memory_order_relaxed));
    const uint64_t bySize = samples / kMinSamplesPerPart;
    return unsigned(std::max<uint64_t>(1, std::min({threads, bySize, limit})));
}

void RunParts(unsigned parts, void (*fn)(void*, unsigned), void* ctx)
{
    Pool& pool = ThePool();
    std::unique_lock<std::mutex> frame(pool.frame, std::try_to_lock);
    if (parts <= 1 || !frame.owns_lock() || pool.keep == 0) {
        for (unsigned p = 0; p < parts; ++p)
            fn(ctx, p);
        return;
    }
    pool.Run(parts, fn, ctx);
}

} // namespace zx

int ZX_SetKernelThreads(int threads)
{
    zx::Pool& pool = zx::ThePool();
    const int n = std::clamp(threads, 1, zx::kMaxThreads);
    std::lock_guard<std::mutex> frame(pool.frame);  // waits for a frame in progress
    pool.setting.store(n, std::memory_order_relaxed);
    {
        std::lock_guard<std::mutex> hold(pool.lock);
        pool.keep = unsigned(n - 1);
    }
    pool.Shrink();  // the workers start on the next frame that wants them
    return n;
}

int ZX_GetKernelThreads()
{
    return zx::ThePool().setting.load(std::memory_order_relaxed);
}
