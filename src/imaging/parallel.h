// Splitting one frame's work over the library's worker pool (ZX_SetKernelThreads).
#pragma once
#include <cstdint>

namespace zx {

/// Samples below which a frame part is not worth waking a worker for.
constexpr uint64_t kMinSamplesPerPart = uint64_t(1) << 14;

/// Parts to split `samples` of work into: the thread setting, fewer when a part
/// would hold less than kMinSamplesPerPart samples, at least 1 and at most `limit`.
unsigned PartsFor(uint64_t samples, uint64_t limit = UINT32_MAX);

/// Calls fn(ctx, part) once for every part in [0, parts): part 0 and any part no
/// worker took on the calling thread, the others on the pool's workers. Returns
/// when every call has returned. While another frame uses the pool (a second
/// camera's thread) the parts run one after another on the caller instead, so a
/// frame never waits for another one. fn must not throw.
void RunParts(unsigned parts, void (*fn)(void* ctx, unsigned part), void* ctx);

template <typename F>
void RunParts(unsigned parts, F&& f)
{
    RunParts(parts, [](void* ctx, unsigned part) { (*static_cast<F*>(ctx))(part); }, &f);
}

/// First unit of `part` when `units` are cut into `parts` nearly equal pieces,
/// rounded down to a multiple of `align` (part 0 starts at 0, part `parts` at `units`).
inline uint64_t PartStart(uint64_t units, unsigned part, unsigned parts, uint64_t align = 1)
{
    if (part >= parts)
        return units;
    const uint64_t at = units / parts * part + units % parts * part / parts;
    return at / align * align;
}

namespace platform {
/// Starts a thread running fn(arg); null when none could be started. On Windows
/// the thread holds a reference on the library's module until it has returned
/// from fn, so the DLL cannot be unmapped under it.
void* StartThread(void (*fn)(void*), void* arg);
/// Waits for a thread from StartThread to end and releases its handle.
void JoinThread(void* thread);
} // namespace platform

} // namespace zx
