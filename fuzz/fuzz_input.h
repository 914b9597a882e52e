// Reads fuzzer bytes as a small structured input: numbers first, the rest as data.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>

class FuzzInput {
public:
    FuzzInput(const uint8_t* data, size_t size) : m_p(data), m_n(size) {}
    template <typename T>
    T Take()
    {
        T v{};
        const size_t k = m_n < sizeof(T) ? m_n : sizeof(T);
        std::memcpy(&v, m_p, k);
        m_p += k;
        m_n -= k;
        return v;
    }
    const uint8_t* Rest() const { return m_p; }
    size_t RestSize() const { return m_n; }

private:
    const uint8_t* m_p;
    size_t m_n;
};
