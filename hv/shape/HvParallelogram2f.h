// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The three points of a rectangle or an oval, and its nine handles.

#ifndef HV_SHAPE_HVPARALLELOGRAM2F_H
#define HV_SHAPE_HVPARALLELOGRAM2F_H

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/platform/HvExport.h>

class HvTransfo4;
class HvULongArray;

/// A parallelogram, given by the origin corner p0, the end p1 of its width side and the end p2 of
/// its height side: what rotation, scale and shear make of a rectangle. A plain value, without a
/// lock; HvRect2f and HvOval2f hold one each.
///
/// Its handles run around the outline, corners even and midpoints of sides odd, with the centre in
/// front. A number above 8 counts as 0.
///
///     p2 4---3---2 p3        p3 = p1 + p2 - p0
///        |       |
///        5   0   1
///        |       |
///     p0 6---7---8 p1
struct HV_API HvParallelogram2f {
    /// The handles 0 to 8.
    static constexpr unsigned int kHandles = 9;

    HvPoint2<float> p0;  ///< the origin corner
    HvPoint2<float> p1;  ///< the end of the width side
    HvPoint2<float> p2;  ///< the end of the height side

    /// All three points at the origin.
    HvParallelogram2f() = default;
    /// The three corners as they are.
    HvParallelogram2f(HvPoint2<float> const& origin, HvPoint2<float> const& widthEnd,
                      HvPoint2<float> const& heightEnd)
        : p0(origin), p1(widthEnd), p2(heightEnd)
    {
    }
    /// Sides along the axes, about a centre.
    HvParallelogram2f(HvPoint2<float> const& center, float width, float height);
    /// Sides along the axes, from two opposite corners.
    HvParallelogram2f(HvPoint2<float> const& a, HvPoint2<float> const& b);

    // Reading.

    /// The corner p3 = p1 + p2 - p0.
    HvPoint2<float> FourthCorner() const { return p1 + p2 - p0; }
    /// The handle of that number.
    HvPoint2<float> Handle(unsigned int i) const;
    /// Stores the handles `first` to `last` inclusive; none when `first` is above `last`.
    template <class T>
    void GetHandles(unsigned int first, unsigned int last, HvPoint2<T>* handles) const;
    /// The box of the four corners.
    HvExtent2<float> Extent() const;
    /// The length from p0 to p1.
    double Width() const { return HvPoint2_LengthAB(p0, p1); }
    /// The length from p0 to p2.
    double Height() const { return HvPoint2_LengthAB(p0, p2); }
    /// Finds the first handle in the closed square of side `size` centred on `p`; otherwise returns
    /// 0 and leaves `index`.
    int FindCloseHandle(HvPoint2<float> const& p, double size, unsigned int& index) const;
    /// Appends the numbers of the handles in the closed extent, all or none; returns how many.
    unsigned int AddHandlesInExtent(HvExtent2<float> const& extent, HvULongArray& indices) const;
    /// Whether two of the sides coincide or vanish: p1 or p2 lies within 1e-7 of p0 on both axes,
    /// or the area is below 1e-7. True as well when a coordinate is not finite.
    bool IsDegenerate() const;

    // Editing.

    /// Moves p1 along its side so that the width is `width`. When p0 and p1 are equal the side
    /// becomes parallel to the x axis.
    void SetWidth(float width);
    /// The same with p2; when p0 and p2 are equal the side becomes parallel to the y axis.
    void SetHeight(float height);
    /// Moves all three points by `offset`.
    void Translate(HvPoint2<float> const& offset);
    /// Maps all three points through `transform`.
    void Transform(HvTransfo4 const& transform);
};

#endif
