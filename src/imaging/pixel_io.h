// Checks shared by the frame-writing functions (demosaic, binning).
#pragma once
#include "zxhost/picbuf.h"
#include "zxhost/system.h"

namespace zx {

/// The destination has data and, when its size is stated, room for width x
/// height pixels of `comp` samples. Reports and returns false otherwise.
inline bool DestinationHolds(const SZxPicBuf& pb, uint32_t comp, const wchar_t* source)
{
    const uint64_t bytes = uint64_t(pb.uiWidth) * pb.uiHeight * comp * ZX_BytesPerSample(pb.uiBits);
    return !ZX_DIAG_FAIL_IF(pb.pData == NULL, source) &&
           !ZX_DIAG_FAIL_IF(pb.ui64DataSize != 0 && pb.ui64DataSize < bytes, source);
}

} // namespace zx
