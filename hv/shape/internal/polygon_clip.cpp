// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polygons cut to a rectangle, side by side.

#include <hv/shape/internal/polygon_clip.h>

namespace {

using Point = HvPoint2<double>;
using Coordinate = double Point::*;

/// One side of the rectangle: where `coordinate` has reached `boundary` from inside.
struct Side {
    Coordinate coordinate;
    Coordinate other;
    double boundary;
    bool isLeast;

    bool IsInside(Point const& p) const
    {
        return isLeast ? p.*coordinate >= boundary : p.*coordinate <= boundary;
    }

    /// Where the edge from `a` to `b` crosses the boundary.
    Point Crossing(Point const& a, Point const& b) const
    {
        Point p;
        p.*coordinate = boundary;
        p.*other = a.*other + (boundary - a.*coordinate) * (b.*other - a.*other) /
                                  (b.*coordinate - a.*coordinate);
        return p;
    }
};

/// Appends what lies on the inner side, in the order of the ring; the last point comes before the
/// first.
void Cut(HvPoint2dArray const& ring, Side const& side, HvPoint2dArray& out)
{
    for (unsigned int i = 0; i < ring.Size(); ++i) {
        Point const& before = ring[i == 0 ? ring.Size() - 1 : i - 1];
        Point const& p = ring[i];
        if (side.IsInside(before) != side.IsInside(p)) {
            out.Add(side.Crossing(before, p));
        }
        if (side.IsInside(p)) {
            out.Add(p);
        }
    }
}

}  // namespace

void HvPolygon_Clip(HvPoint2dArray& polygon, HvExtent2<double> const& clip, HvPoint2dArray& spare)
{
    Side const sides[] = {{&Point::x, &Point::y, clip.min.x, true},
                          {&Point::y, &Point::x, clip.min.y, true},
                          {&Point::x, &Point::y, clip.max.x, false},
                          {&Point::y, &Point::x, clip.max.y, false}};
    for (Side const& side : sides) {
        spare.Chop(0);
        Cut(polygon, side, spare);
        polygon.Swap(spare);
    }
}
