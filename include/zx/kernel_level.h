// Instruction-set level of the pixel kernels (histogram, LUT, demosaic, binning).
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
