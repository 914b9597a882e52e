// The kernel level in effect, read once per frame call (never per pixel).
#pragma once
#include "zx/kernel_level.h"

namespace zx {

/// ZX_KERNELS_REFERENCE .. ZX_KERNELS_AVX512.
int KernelLevel();

constexpr int kKernelLevels = ZX_KERNELS_AVX512 + 1;

/// Picks entry KernelLevel() of a table of kernel sets ordered by level.
template <typename K>
const K& PickKernels(const K (&byLevel)[kKernelLevels])
{
    return byLevel[KernelLevel()];
}

} // namespace zx
