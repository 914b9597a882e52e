// Growable array of the host's system library.
#pragma once
#include <cstddef>
#include <utility>
#include <vector>

/// An ordered, growable array of values. Indexes are ints as in the host's
/// interfaces; an index outside the array is the caller's fault.
template <class T>
class CZxVector {
public:
    CZxVector() = default;
    explicit CZxVector(int reserve) { Reserve(reserve); }

    void Reserve(int n) { if (n > 0) m_items.reserve(static_cast<size_t>(n)); }
    int GetSize() const { return static_cast<int>(m_items.size()); }
    bool IsEmpty() const { return m_items.empty(); }
    /// Appends a copy; returns its index.
    int Add(const T& v) { m_items.push_back(v); return GetSize() - 1; }
    int Add(T&& v) { m_items.push_back(std::move(v)); return GetSize() - 1; }
    void RemoveAt(int i) { m_items.erase(m_items.begin() + i); }
    void RemoveAll() { m_items.clear(); }

    T& operator[](int i) { return m_items[static_cast<size_t>(i)]; }
    const T& operator[](int i) const { return m_items[static_cast<size_t>(i)]; }
    T& GetAt(int i) { return (*this)[i]; }
    const T& GetAt(int i) const { return (*this)[i]; }

    typename std::vector<T>::iterator begin() { return m_items.begin(); }
    typename std::vector<T>::iterator end() { return m_items.end(); }
    typename std::vector<T>::const_iterator begin() const { return m_items.begin(); }
    typename std::vector<T>::const_iterator end() const { return m_items.end(); }

    bool operator==(const CZxVector& o) const { return m_items == o.m_items; }
    bool operator!=(const CZxVector& o) const { return !(*this == o); }

private:
    std::vector<T> m_items;
};
