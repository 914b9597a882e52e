#include "imaging/kernel_level.h"

#include <atomic>
#if defined(__x86_64__) || defined(_M_X64)
#include <cpuid.h>
#endif

namespace {

int DetectLevel()
{
#if defined(__x86_64__) || defined(_M_X64)
    unsigned a = 0, b = 0, c = 0, d = 0;
    if (!__get_cpuid(1, &a, &b, &c, &d))
        return ZX_KERNELS_SSE2;
    const bool osxsave = (c >> 27) & 1, avx = (c >> 28) & 1;
    if (!osxsave || !avx)
        return ZX_KERNELS_SSE2;
    // The OS must save the YMM state on context switches (XCR0 bits 1 and 2).
    unsigned lo = 0, hi = 0;
    __asm__ volatile("xgetbv" : "=a"(lo), "=d"(hi) : "c"(0));
    if ((lo & 6) != 6)
        return ZX_KERNELS_SSE2;
    if (!__get_cpuid_count(7, 0, &a, &b, &c, &d) || !((b >> 5) & 1))
        return ZX_KERNELS_SSE2;
    // AVX-512 F, BW and VBMI, with the OS saving the mask and upper ZMM state.
    const bool avx512 = ((b >> 16) & 1) && ((b >> 30) & 1) && ((c >> 1) & 1) && (lo & 0xE6) == 0xE6;
    return avx512 ? ZX_KERNELS_AVX512 : ZX_KERNELS_AVX2;
#else
    return ZX_KERNELS_REFERENCE;
#endif
}

int Supported()
{
    static const int level = DetectLevel();
    return level;
}

std::atomic<int> g_forced{-1};

} // namespace

namespace zx {

int KernelLevel()
{
    const int forced = g_forced.load(std::memory_order_relaxed);
    return forced >= 0 ? forced : Supported();
}

} // namespace zx

int ZX_GetSupportedKernelLevel()
{
    return Supported();
}

int ZX_GetKernelLevel()
{
    return zx::KernelLevel();
}

int ZX_SetKernelLevel(int level)
{
    g_forced.store(level < 0 ? -1 : (level > Supported() ? Supported() : level), std::memory_order_relaxed);
    return zx::KernelLevel();
}
