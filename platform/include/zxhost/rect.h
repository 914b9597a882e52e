// Rectangles of the host's system library.
#pragma once
#include <cstdint>

/// A rectangle with exclusive right and bottom edges; empty when it has no area.
template <class T>
struct CZxRectBase {
    /// Edges in pixels: left and top inclusive, right and bottom exclusive.
    ///@{
    T left = 0, top = 0, right = 0, bottom = 0;
    ///@}

    /// The null rectangle (0, 0, 0, 0).
    CZxRectBase() = default;
    /// The rectangle (l, t) - (r, b).
    CZxRectBase(T l, T t, T r, T b) : left(l), top(t), right(r), bottom(b) {}

    /// right - left.
    T Width() const { return right - left; }
    /// bottom - top.
    T Height() const { return bottom - top; }
    /// True when it has no area.
    bool IsEmpty() const { return right <= left || bottom <= top; }
    /// All four coordinates zero (the "no rectangle" value providers report).
    bool IsNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    /// Same four edges.
    bool operator==(const CZxRectBase& o) const
    {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
    /// Some edge differs.
    bool operator!=(const CZxRectBase& o) const { return !(*this == o); }
};

/// The integer rectangle of the host's interfaces.
typedef CZxRectBase<int32_t> CZxRect;
