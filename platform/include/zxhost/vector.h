// Growable array of the host's system library.
#pragma once
#include <cstddef>
#include <utility>
#include <vector>

/// An ordered, growable array of values. Indexes are ints as in the host's
/// interfaces; an index outside the array is the caller's fault.
template <class T>
/// @note Not synchronised: one thread at a time.
class CZxVector {
public:
    /// An empty array.
    CZxVector() = default;
    /// An empty array with room for `reserve` values.
    explicit CZxVector(int reserve) { Reserve(reserve); }

    /// Makes room for `n` values (nothing for n <= 0).
    void Reserve(int n) { if (n > 0) m_items.reserve(static_cast<size_t>(n)); }
    /// Number of values.
    int GetSize() const { return static_cast<int>(m_items.size()); }
    /// True without values.
    bool IsEmpty() const { return m_items.empty(); }
    /// Appends a copy; returns its index.
    int Add(const T& v) { m_items.push_back(v); return GetSize() - 1; }
    /// Appends `v` by moving it; returns its index.
    int Add(T&& v) { m_items.push_back(std::move(v)); return GetSize() - 1; }
    /// Removes the value at `i`; later values move down.
    void RemoveAt(int i) { m_items.erase(m_items.begin() + i); }
    /// Removes every value.
    void RemoveAll() { m_items.clear(); }

    /// The value at `i`.
    T& operator[](int i) { return m_items[static_cast<size_t>(i)]; }
    /// The value at `i`.
    const T& operator[](int i) const { return m_items[static_cast<size_t>(i)]; }
    /// The value at `i`.
    T& GetAt(int i) { return (*this)[i]; }
    /// The value at `i`.
    const T& GetAt(int i) const { return (*this)[i]; }

    /// Iterator to the first value (range-for).
    typename std::vector<T>::iterator begin() { return m_items.begin(); }
    /// Iterator past the last value.
    typename std::vector<T>::iterator end() { return m_items.end(); }
    /// Iterator to the first value (range-for).
    typename std::vector<T>::const_iterator begin() const { return m_items.begin(); }
    /// Iterator past the last value.
    typename std::vector<T>::const_iterator end() const { return m_items.end(); }

    /// Same size and equal values in order.
    bool operator==(const CZxVector& o) const { return m_items == o.m_items; }
    /// Size or some value differs.
    bool operator!=(const CZxVector& o) const { return !(*this == o); }

private:
    std::vector<T> m_items;
};
