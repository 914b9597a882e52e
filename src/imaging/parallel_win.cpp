// Worker threads of the kernel pool on Windows.
#include <windows.h>

#include <new>

#include "imaging/parallel.h"

namespace zx::platform {
namespace {

struct Start {
    void (*fn)(void*);
    void* arg;
    HMODULE module;
};

DWORD WINAPI ThreadMain(LPVOID param)
{
    const Start start = *static_cast<Start*>(param);
    delete static_cast<Start*>(param);
    start.fn(start.arg);
    // The thread's own reference keeps the DLL mapped until here; dropping it
    // and exiting in one call never returns into a module that may be gone.
    FreeLibraryAndExitThread(start.module, 0);
    return 0;
}

} // namespace

void* StartThread(void (*fn)(void*), void* arg)
{
    Start* start = new (std::nothrow) Start{fn, arg, nullptr};
    if (!start)
        return nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&ThreadMain),
                            &start->module)) {
        delete start;
        return nullptr;
    }
    HANDLE thread = CreateThread(nullptr, 0, &ThreadMain, start, 0, nullptr);
    if (!thread) {
        FreeLibrary(start->module);
        delete start;
    }
    return thread;
}

void JoinThread(void* thread)
{
    WaitForSingleObject(static_cast<HANDLE>(thread), INFINITE);
    CloseHandle(static_cast<HANDLE>(thread));
}

} // namespace zx::platform
