// Lite-variant bytes of any shape into the capture-button record: the reader must
// refuse or accept without reading past the bytes, and a record it accepts must
// come out with terminated names of the fields' lengths. The bytes are tried as
// they are and, so that the parser behind the checksum is reached, framed with a
// valid header and checksum.
#include <cstdint>
#include <cwchar>
#include <vector>

#include "zx/capturebutton.h"
#include "zxhost/litevariant.h"

namespace {

uint32_t Crc32(const uint8_t* p, size_t n)
{
    uint32_t c = 0xFFFFFFFFu;
    for (size_t i = 0; i < n; ++i) {
        c ^= p[i];
        for (int k = 0; k < 8; ++k)
            c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
    }
    return c ^ 0xFFFFFFFFu;
}

void PutU32(std::vector<uint8_t>& out, uint32_t v)
{
    for (int k = 0; k < 4; ++k)
        out.push_back(uint8_t(v >> (8 * k)));
}

void LoadRecord(const uint8_t* data, size_t size)
{
    // An exact-size copy, so the sanitiser sees any read past the input.
    std::vector<uint8_t> copy(data, data + size);
    CZxLiteVariantR r(copy.data(), copy.size());
    SZxCaptureButtonSetup_Param p;
    if (SZxCaptureButtonSetup_Param::LoadFromLiteVariant(p, r) != 0)
        return;
    if (std::wcslen(p.m_wszSpecifiedCamera) > 63 || std::wcslen(p.m_wszSpecifiedOC_Camera1) > 255 ||
        std::wcslen(p.m_wszSpecifiedOC_Camera2) > 255)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    LoadRecord(data, size);
    std::vector<uint8_t> framed = {'Z', 'X', 'L', 'V', 1};
    PutU32(framed, uint32_t(size));
    framed.insert(framed.end(), data, data + size);
    PutU32(framed, Crc32(data, size));
    LoadRecord(framed.data(), framed.size());
    return 0;
}
