// Worker threads of the kernel pool outside Windows.
#include <thread>

#include "imaging/parallel.h"
#include "zx/kernel_level.h"

namespace {

// A shared object can be unloaded with its workers blocked in it: stop them
// first. Outside Windows no loader lock is held here, so joining is safe.
struct StopAtUnload {
    ~StopAtUnload() { ZX_SetKernelThreads(1); }
} g_stopAtUnload;

} // namespace

namespace zx::platform {

void* StartThread(void (*fn)(void*), void* arg)
{
    try {
        return new std::thread(fn, arg);
    } catch (...) {  // no thread to be had: the frame runs on fewer
        return nullptr;
    }
}

void JoinThread(void* thread)
{
    auto* t = static_cast<std::thread*>(thread);
    t->join();
    delete t;
}

} // namespace zx::platform
