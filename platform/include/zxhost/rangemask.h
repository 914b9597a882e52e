// Index mask of the host's system library (components of a histogram, ranges).
#pragma once
#include <cstdint>

/// A set of indices 0..31.
class CZxRangeMask {
public:
    /// Every index set.
    enum : uint32_t { FULL_MASK = 0xFFFFFFFFu /**< every index */ };

    /// The set whose bit i holds index i.
    explicit CZxRangeMask(uint32_t bits = 0) : m_bits(bits) {}
    /// The set of one index (empty for index >= 32).
    static CZxRangeMask Single(uint32_t index) { return CZxRangeMask(index < 32 ? 1u << index : 0u); }

    /// True when `index` (< 32) is in the set.
    bool IsSet(uint32_t index) const { return index < 32 && ((m_bits >> index) & 1u); }
    /// Adds (`on`) or removes `index`; indices >= 32 are ignored.
    void Set(uint32_t index, bool on = true)
    {
        if (index < 32)
            m_bits = on ? m_bits | (1u << index) : m_bits & ~(1u << index);
    }
    /// The set as a bit mask.
    uint32_t GetMask() const { return m_bits; }

private:
    uint32_t m_bits;
};
