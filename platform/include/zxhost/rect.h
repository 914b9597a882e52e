// Rectangles of the host's system library.
#pragma once
#include <cstdint>

/// A rectangle with exclusive right and bottom edges; empty when it has no area.
template <class T>
struct CZxRectBase {
    T left = 0, top = 0, right = 0, bottom = 0;

    CZxRectBase() = default;
    CZxRectBase(T l, T t, T r, T b) : left(l), top(t), right(r), bottom(b) {}

    T Width() const { return right - left; }
    T Height() const { return bottom - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    /// All four coordinates zero (the "no rectangle" value providers report).
    bool IsNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    bool operator==(const CZxRectBase& o) const
    {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
    bool operator!=(const CZxRectBase& o) const { return !(*this == o); }
};

typedef CZxRectBase<int32_t> CZxRect;
