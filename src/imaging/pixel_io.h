// Checks shared by the frame functions (histogram, LUT, demosaic, binning).
#pragma once
#include <cstdint>
#include "zxhost/picbuf.h"
#include "zxhost/system.h"

namespace zx {

/// Bytes a frame of width x height pixels of `comp` samples needs, saturated at
/// the largest 64-bit value: a description whose product wraps must not pass a
/// size check by wrapping to a small number.
inline uint64_t FrameBytes(uint64_t width, uint64_t height, uint64_t comp, uint32_t bits)
{
    const unsigned __int128 n = static_cast<unsigned __int128>(width) * height * comp * ZX_BytesPerSample(bits);
    return n > UINT64_MAX ? UINT64_MAX : uint64_t(n);
}

/// The destination has data and, when its size is stated, room for width x
/// height pixels of `comp` samples. Reports and returns false otherwise.
inline bool DestinationHolds(const SZxPicBuf& pb, uint32_t comp, const wchar_t* source)
{
    const uint64_t bytes = FrameBytes(pb.uiWidth, pb.uiHeight, comp, pb.uiBits);
    return !ZX_DIAG_FAIL_IF(pb.pData == NULL, source) &&
           !ZX_DIAG_FAIL_IF(pb.ui64DataSize != 0 && pb.ui64DataSize < bytes, source);
}

} // namespace zx
