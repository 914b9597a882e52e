// Working memory of the counting kernels, kept from one frame to the next.
#pragma once
#include <cstddef>

#include "zx/export.h"

namespace zx {

/// A block of at least `bytes`, zeroed unless asked not to be (a caller that
/// clears its parts on several threads), taken from a small process-wide cache of
/// blocks that earlier calls gave back. Fresh pages fault on first touch, and in
/// a virtual machine the faults of a frame's counter tables (about a megabyte
/// per thread for 16-bit colour) cost as much as a tenth of the counting. The
/// cache keeps a few blocks (see scratch.cpp) and frees them when the library
/// is unloaded. Data() is null when no memory could be had: callers fall back.
class ZX_API ScratchBlock {
public:
    explicit ScratchBlock(size_t bytes, bool zeroed = true);
    ~ScratchBlock();
    ScratchBlock(const ScratchBlock&) = delete;
    ScratchBlock& operator=(const ScratchBlock&) = delete;

    void* Data() const { return m_p; }
    template <typename T>
    T* As() const
    {
        return static_cast<T*>(m_p);
    }

private:
    void* m_p = nullptr;
    size_t m_size = 0;
};

/// Bytes the cache holds now (at most 64 MiB), for the library's tests.
ZX_API size_t ScratchCachedBytes();

} // namespace zx
