// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline of an oval as four cubics. A quarter runs from the middle of a side to the middle of
// the next one, and its handles point at the corner between:
//
//     b---+---c      the handles lie at a + (c - a) kappa and b + (c - b) kappa
//              +
//              |
//              a

#ifndef HV_SHAPE_INTERNAL_OVAL_OUTLINE_H
#define HV_SHAPE_INTERNAL_OVAL_OUTLINE_H

#include <hv/foundation/HvPoint2.h>

class HvPath2f;

/// 4 (sqrt(2) - 1) / 3: with it a cubic meets the middle of a quarter circle, and is nowhere
/// farther from it than 0.03 percent of the radius. Saved outlines depend on its value.
constexpr double kHvQuarterCircleKappa = 0.5522847498307935;

/// The handles 1 to 8 of an oval.
using HvOvalHandles = HvPoint2<float>[8];
/// The points of four cubics in a row: the start, then two handles and the end of each.
using HvOvalOutline = HvPoint2<float>[13];

/// Stores the outline of an oval, from handle 1 around to handle 1 again.
///
/// T is the type of the arithmetic, float or double: the outline that an oval draws itself by is
/// computed in double, a path that is made of an oval in float.
template <class T>
void HvOvalOutline_Get(HvOvalHandles const& handles, HvOvalOutline& outline)
{
    auto const handleAt = [](HvPoint2<float> const& end, HvPoint2<float> const& corner) {
        HvPoint2<T> const way(corner - end);
        return HvPoint2<float>(HvPoint2<T>(end) + way * static_cast<T>(kHvQuarterCircleKappa));
    };
    HvPoint2<float>* next = outline;
    *next++ = handles[0];
    for (int i = 0; i < 8; i += 2) {
        HvPoint2<float> const& start = handles[i];
        HvPoint2<float> const& corner = handles[i + 1];
        HvPoint2<float> const& end = handles[(i + 2) % 8];
        *next++ = handleAt(start, corner);
        *next++ = handleAt(end, corner);
        *next++ = end;
    }
}

/// Appends the outline to `path` as a closed subpath.
void HvOvalOutline_AppendTo(HvPath2f& path, HvOvalOutline const& outline);

#endif
