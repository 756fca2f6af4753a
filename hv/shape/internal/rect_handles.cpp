// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Dragging the handles of a rectangle. The stretch works in the rectangle's own frame: the point
// p0 + s u + t v, with u = p1 - p0 and v = p2 - p0, has the coordinates (s, t), and all sides lie
// at 0 or 1.

#include <hv/shape/internal/rect_handles.h>

namespace {

using Vector = HvPoint2<double>;

/// Which side, seen along one coordinate of the frame, a handle belongs to.
enum class Line {
    None,  ///< to neither: midpoints of the other two sides
    AtZero,
    AtOne
};

Line LineAlongWidth(unsigned int handle)
{
    switch (handle) {
    case 1:
    case 2:
    case 8:
        return Line::AtOne;
    case 4:
    case 5:
    case 6:
        return Line::AtZero;
    default:
        return Line::None;
    }
}

Line LineAlongHeight(unsigned int handle)
{
    switch (handle) {
    case 2:
    case 3:
    case 4:
        return Line::AtOne;
    case 6:
    case 7:
    case 8:
        return Line::AtZero;
    default:
        return Line::None;
    }
}

/// What a stretch makes of the interval from 0 to 1 of one coordinate.
struct Stretched {
    double zero = 0.0;
    double one = 1.0;
};

/// Takes `line` to `to` while `anchor` stays. An anchor on the line divides by 0: the result is not
/// finite, and the caller refuses it.
Stretched Stretch(Line line, double to, double anchor)
{
    if (line == Line::None) {
        return {};
    }
    double const factor = (to - anchor) / ((line == Line::AtOne ? 1.0 : 0.0) - anchor);
    return {anchor + (0.0 - anchor) * factor, anchor + (1.0 - anchor) * factor};
}

bool StoreUnlessDegenerate(HvParallelogram2f& rect, Vector const& p0, Vector const& p1,
                           Vector const& p2)
{
    HvParallelogram2f const result{HvPoint2<float>(p0), HvPoint2<float>(p1), HvPoint2<float>(p2)};
    if (result.IsDegenerate()) {
        return false;
    }
    rect = result;
    return true;
}

}  // namespace

unsigned int HvRectHandle_Opposite(unsigned int handle)
{
    return ((handle + 3) & 7) + 1;
}

void HvRectHandle_Skew(HvParallelogram2f& rect, unsigned int handle, HvPoint2<float> const& offset)
{
    // p3 = p1 + p2 - p0 follows: it moves with p1 or p2 alone, and stays when p0 moves with one.
    if (handle >= 5 && handle <= 8) {
        rect.p0 = rect.p0 + offset;
    }
    if (handle >= 3 && handle <= 6) {
        rect.p2 = rect.p2 + offset;
    } else if (handle >= 1 && handle <= 8) {
        rect.p1 = rect.p1 + offset;
    }
}

bool HvRectHandle_Stretch(HvParallelogram2f& rect, unsigned int handle, HvPoint2<float> const& to,
                          HvPoint2<float> const& anchor)
{
    Line const alongWidth = LineAlongWidth(handle);
    Line const alongHeight = LineAlongHeight(handle);
    if ((alongWidth == Line::None && alongHeight == Line::None) || rect.IsDegenerate()) {
        return false;
    }
    Vector const origin(rect.p0);
    Vector const u = Vector(rect.p1) - origin;
    Vector const v = Vector(rect.p2) - origin;
    double const area = HvPoint2_AdetB(u, v);
    Vector const toVector = Vector(to) - origin;
    Vector const anchorVector = Vector(anchor) - origin;

    Stretched const s = Stretch(alongWidth, HvPoint2_AdetB(toVector, v) / area,
                                HvPoint2_AdetB(anchorVector, v) / area);
    Stretched const t = Stretch(alongHeight, HvPoint2_AdetB(u, toVector) / area,
                                HvPoint2_AdetB(u, anchorVector) / area);
    auto const place = [&](double atWidth, double atHeight) {
        return origin + u * atWidth + v * atHeight;
    };
    return StoreUnlessDegenerate(rect, place(s.zero, t.zero), place(s.one, t.zero),
                                 place(s.zero, t.one));
}

bool HvRectHandle_Scale(HvParallelogram2f& rect, unsigned int handle, HvPoint2<float> const& to,
                        HvPoint2<float> const& center)
{
    if (rect.IsDegenerate()) {
        return false;
    }
    HvPoint2<float> const from = rect.Handle(handle);
    double const factor =
        HvPoint2_ABdotCD(center, to, center, from) / HvPoint2_SquaredLengthAB(center, from);
    if (!(factor > 0.0)) {
        return false;
    }
    Vector const fixed(center);
    auto const scaled = [&](HvPoint2<float> const& p) {
        return fixed + (Vector(p) - fixed) * factor;
    };
    return StoreUnlessDegenerate(rect, scaled(rect.p0), scaled(rect.p1), scaled(rect.p2));
}
