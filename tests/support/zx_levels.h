// Runs a check once per kernel level this machine supports.
#pragma once
#include <gtest/gtest.h>
#include "zx/kernel_level.h"

namespace zxtest {

template <typename Fn>
void ForEachKernelLevel(Fn&& fn)
{
    const int top = ZX_GetSupportedKernelLevel();
    for (int level = ZX_KERNELS_REFERENCE; level <= top; ++level) {
        ASSERT_EQ(ZX_SetKernelLevel(level), level);
        SCOPED_TRACE(::testing::Message() << "kernel level " << level);
        fn(level);
    }
    ZX_SetKernelLevel(-1);
}

} // namespace zxtest
