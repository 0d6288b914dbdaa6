// CPoint, CSize and CRect: the coordinate records of Windows with constructors and the
// few operations that pages use.
#pragma once

#include "afx.h"

// A position.
struct CPoint : POINT
{
    // At the origin, or at the given place.
    CPoint() : POINT{0, 0} {}
    CPoint(LONG initX, LONG initY) : POINT{initX, initY} {}
    CPoint(const POINT& point) : POINT(point) {} // NOLINT(google-explicit-constructor): it is the same record
};

// A width and a height.
struct CSize : SIZE
{
    // Empty, or of the given size.
    CSize() : SIZE{0, 0} {}
    CSize(LONG initCX, LONG initCY) : SIZE{initCX, initCY} {}
};

// A rectangle; the right and bottom edges lie outside it.
struct CRect : RECT
{
    // Empty, or with these edges.
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(LONG l, LONG t, LONG r, LONG b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {} // NOLINT(google-explicit-constructor): it is the same record

    // Measures and corners.
    [[nodiscard]] LONG Width() const { return right - left; }
    [[nodiscard]] LONG Height() const { return bottom - top; }
    [[nodiscard]] CSize Size() const { return {Width(), Height()}; }
    [[nodiscard]] CPoint TopLeft() const { return {left, top}; }
    [[nodiscard]] CPoint CenterPoint() const { return {(left + right) / 2, (top + bottom) / 2}; }
    // As the functions of Windows.
    [[nodiscard]] BOOL IsRectEmpty() const { return ::IsRectEmpty(this); }
    void OffsetRect(LONG x, LONG y) { ::OffsetRect(this, x, y); }

    // So that a CRect can be handed to functions that want a RECT's address.
    operator LPRECT() { return this; }        // NOLINT(google-explicit-constructor)
    operator LPCRECT() const { return this; } // NOLINT(google-explicit-constructor)
};

// Whether all four edges are the same.
[[nodiscard]] inline bool operator==(const CRect& left, const CRect& right)
{
    return ::EqualRect(&left, &right) != FALSE;
}
