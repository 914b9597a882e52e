// Picture buffer description (picture library) and frame sample (grabber manager).
#pragma once
#include <cstdint>
#include <vector>
#include "zxhost/export.h"

/// Describes one frame in memory. Samples are 8-bit when uiBits <= 8, else 16-bit;
/// rows are packed (uiRowBytes = uiWidth * uiComp * bytes per sample); colour
/// pixels hold three samples in blue, green, red order.
struct SZxPicBuf {
    /// Pixels per row.
    uint32_t uiWidth = 0;
    /// Rows.
    uint32_t uiHeight = 0;
    /// Bytes from one row to the next.
    uint32_t uiRowBytes = 0;
    /// Significant bits per sample (8 or less: byte samples; more: 16-bit samples).
    uint32_t uiBits = 0;
    uint32_t uiComp = 0;     ///< 1 = monochrome, 3 = colour
    /// Size of the pixel data in bytes (at least uiRowBytes x uiHeight).
    uint64_t ui64DataSize = 0;
    /// The first sample; not owned by the description.
    void* pData = nullptr;
};

/// Bytes per sample of a buffer with `bits` significant bits.
inline uint32_t ZX_BytesPerSample(uint32_t bits) { return bits > 8 ? 2u : 1u; }

/// One acquired frame. Owns its pixel memory; the description it hands out
/// points into that memory and stays valid while the sample lives.
/// @note A sample is filled on the acquisition thread and then handed on; it is
///       not used from two threads at once.
class ZX_HOST_API CZxGrabberSample01 {
public:
    /// Allocates a zeroed frame; a frame whose size overflows is left empty.
    CZxGrabberSample01(uint32_t width, uint32_t height, uint32_t bits, uint32_t comp);
    /// Not copyable (it owns its pixels).
    CZxGrabberSample01(const CZxGrabberSample01&) = delete;
    /// Not copyable.
    CZxGrabberSample01& operator=(const CZxGrabberSample01&) = delete;

    /// Fills `pb` with the description of the sample's image. False when pb is null.
    bool GetPicBuf(SZxPicBuf* pb) const;
    /// The numbers of that description; any pointer may be null.
    void GetPicBufNumbers(uint32_t* width, uint32_t* height, uint32_t* bits, uint32_t* comp) const;
    /// The first sample (null for an empty frame).
    void* GetDataPtr();
    /// The first sample (null for an empty frame).
    const void* GetDataPtr() const;
    /// Size of the pixel data in bytes (0 for an empty frame).
    uint64_t GetDataSize() const { return m_data.size(); }

private:
    uint32_t m_width, m_height, m_bits, m_comp;
    std::vector<uint8_t> m_data;
};
