// Instruction-set level and threads of the pixel kernels (histogram, LUT, demosaic, binning).
#pragma once
#include "zx/export.h"

/// Kernel levels, lowest first. Every level computes exactly the same results;
/// the reference level is the plain per-sample code the others are checked against.
enum EZxKernelLevel : int {
    /// Plain per-sample code: the results every other level must match.
    ZX_KERNELS_REFERENCE = 0,
    ZX_KERNELS_SSE2 = 1,  ///< the x86-64 baseline
    ZX_KERNELS_AVX2 = 2,  ///< chosen when the CPU and the OS support AVX2
    /// AVX-512 with byte permutes (BW + VBMI): the 8-bit LUT; every other
    /// kernel runs its AVX2 form at this level.
    ZX_KERNELS_AVX512 = 3,
};

/// The highest level this CPU and OS support (detected once).
/// Any thread.
ZX_API int ZX_GetSupportedKernelLevel();
/// The level in use: the supported one unless a test or benchmark forced another.
/// Any thread.
ZX_API int ZX_GetKernelLevel();
/// Forces the kernel level, so tests can check every level the machine can run
/// and benchmarks can compare them. A level above the supported one is lowered
/// to it, a negative one means "back to the supported level". Returns the level
/// now in use. Not meant to be called while frames are processed on other threads.
ZX_API int ZX_SetKernelLevel(int level);

/// Threads the frame kernels may use: histograms, display LUTs, demosaic and
/// 2 x 2 binning split one frame over this many threads, the calling one and
/// up to threads - 1 workers of a small pool that belongs to the library. The
/// default is 1: the host application owns its threads, and nothing runs
/// beside the caller unless a driver asks for it. Results are identical for
/// every setting; a frame too small to be worth splitting runs on the caller.
///
/// The workers start on the first frame that wants them and wait blocked (no
/// spinning) between frames. Lowering the setting stops and joins the surplus
/// workers before returning, and waits for a frame in progress first. A driver
/// that raised it sets it back to 1 when it closes the camera: on Windows each
/// worker keeps the DLL loaded until then, so unloading never pulls the code
/// out from under a worker. Never call it from DllMain or a static destructor
/// (joining a thread there waits for the loader lock the caller holds).
///
/// `threads` is clamped to 1..64 (0 and negative values mean 1). While two
/// threads process frames at once, the second runs its frame alone on its own
/// thread. Returns the setting now in effect. Thread-safe.
ZX_API int ZX_SetKernelThreads(int threads);
/// The setting made by ZX_SetKernelThreads (1 unless raised). Thread-safe.
ZX_API int ZX_GetKernelThreads();
