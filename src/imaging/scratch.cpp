#include "imaging/scratch.h"

#include <cstdlib>
#include <cstring>
#include <mutex>

namespace zx {
namespace {

// Enough for every thread of a wide pool to hold two blocks at once (a frame's
// own bins and a kernel's counters), few enough that an idle library keeps at
// most kMaxBytes.
constexpr int kMaxBlocks = 16;
constexpr size_t kMaxBytes = size_t(64) << 20;

struct Cache {
    std::mutex lock;
    void* block[kMaxBlocks] = {};
    size_t size[kMaxBlocks] = {};
    size_t bytes = 0;

    ~Cache()
    {
        for (void* p : block)
            std::free(p);
    }

    // The smallest cached block that holds `want`, or null.
    void* Take(size_t want, size_t* got)
    {
        std::lock_guard<std::mutex> hold(lock);
        int best = -1;
        for (int i = 0; i < kMaxBlocks; ++i)
            if (block[i] && size[i] >= want && (best < 0 || size[i] < size[best]))
                best = i;
        if (best < 0)
            return nullptr;
        void* p = block[best];
        *got = size[best];
        bytes -= size[best];
        block[best] = nullptr;
        return p;
    }

    // Keeps p in a free slot; a full cache drops its smallest block for a
    // bigger one, so the blocks that frames need survive.
    void Give(void* p, size_t n)
    {
        void* drop = p;
        {
            std::lock_guard<std::mutex> hold(lock);
            int slot = -1;
            for (int i = 0; i < kMaxBlocks && slot < 0; ++i)
                if (!block[i])
                    slot = i;
            if (slot < 0) {
                int smallest = 0;
                for (int i = 1; i < kMaxBlocks; ++i)
                    if (size[i] < size[smallest])
                        smallest = i;
                if (size[smallest] < n)
                    slot = smallest;
            }
            const size_t freed = slot >= 0 && block[slot] ? size[slot] : 0;
            if (slot >= 0 && bytes - freed + n <= kMaxBytes) {
                drop = block[slot];
                block[slot] = p;
                size[slot] = n;
                bytes = bytes - freed + n;
            }
        }
        std::free(drop);
    }
};

Cache g_cache;  // freed with the library

} // namespace

ScratchBlock::ScratchBlock(size_t bytes, bool zeroed)
{
    if (bytes == 0)
        return;
    m_p = g_cache.Take(bytes, &m_size);
    if (!m_p) {
        m_p = std::malloc(bytes);
        m_size = m_p ? bytes : 0;
    }
    if (m_p && zeroed)
        std::memset(m_p, 0, bytes);
}

size_t ScratchCachedBytes()
{
    std::lock_guard<std::mutex> hold(g_cache.lock);
    return g_cache.bytes;
}

ScratchBlock::~ScratchBlock()
{
    if (m_p)
        g_cache.Give(m_p, m_size);
}

} // namespace zx
