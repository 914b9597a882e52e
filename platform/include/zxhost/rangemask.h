// Index mask of the host's system library (components of a histogram, ranges).
#pragma once
#include <cstdint>

/// A set of indices 0..31.
class CZxRangeMask {
public:
    enum : uint32_t { FULL_MASK = 0xFFFFFFFFu };

    explicit CZxRangeMask(uint32_t bits = 0) : m_bits(bits) {}
    static CZxRangeMask Single(uint32_t index) { return CZxRangeMask(index < 32 ? 1u << index : 0u); }

    bool IsSet(uint32_t index) const { return index < 32 && ((m_bits >> index) & 1u); }
    void Set(uint32_t index, bool on = true)
    {
        if (index < 32)
            m_bits = on ? m_bits | (1u << index) : m_bits & ~(1u << index);
    }
    uint32_t GetMask() const { return m_bits; }

private:
    uint32_t m_bits;
};
