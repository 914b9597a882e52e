// Test frames: random, constant and gradient pictures in sample objects.
#pragma once
#include <cstdint>
#include <memory>
#include <random>
#include "zxhost/picbuf.h"

namespace zxtest {

/// A frame of random samples in [0, 2^bits) (bits 1..16) from a seeded generator.
inline std::unique_ptr<CZxGrabberSample01> RandomFrame(uint32_t w, uint32_t h, uint32_t bits, uint32_t comp,
                                                       uint32_t seed)
{
    auto s = std::make_unique<CZxGrabberSample01>(w, h, bits, comp);
    std::mt19937 rng(seed);
    const uint32_t mask = (bits >= 16) ? 0xFFFFu : ((1u << bits) - 1u);
    const size_t n = size_t(w) * h * comp;
    if (bits > 8) {
        auto* p = static_cast<uint16_t*>(s->GetDataPtr());
        for (size_t i = 0; i < n; ++i) p[i] = uint16_t(rng() & mask);
    } else {
        auto* p = static_cast<uint8_t*>(s->GetDataPtr());
        for (size_t i = 0; i < n; ++i) p[i] = uint8_t(rng() & mask);
    }
    return s;
}

/// Sample i (in memory order) of a frame, whatever its sample width.
inline uint32_t SampleAt(const SZxPicBuf& pb, size_t i)
{
    return pb.uiBits > 8 ? static_cast<const uint16_t*>(pb.pData)[i] : static_cast<const uint8_t*>(pb.pData)[i];
}

} // namespace zxtest
