// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Axis-aligned rectangles.

#ifndef HV_FOUNDATION_HVEXTENT2_H
#define HV_FOUNDATION_HVEXTENT2_H

#include <hv/foundation/HvPoint2.h>

/// An axis-aligned rectangle with a state; T is float or double.
///
/// Operations of the library give min <= max on both axes. In the states Empty and WholePlane the
/// four numbers mean nothing.
template <class T>
struct HV_API_TYPE HvExtent2 {
    /// What the four numbers stand for. Stored as an int.
    enum State {
        Ordinary = 0,   ///< the rectangle from min to max, closed on all sides
        Empty = 1,      ///< no point
        WholePlane = 2  ///< every point
    };

    HvPoint2<T> min;  ///< the least coordinates
    HvPoint2<T> max;  ///< the greatest coordinates
    int state;        ///< a State; the coordinates count in an ordinary extent alone

    /// The empty extent, ready to be augmented.
    constexpr HvExtent2() : state(Empty) {}
    /// The rectangle with these corners; the caller gives minima that are not above the maxima.
    constexpr HvExtent2(T minX, T minY, T maxX, T maxY)
        : min(minX, minY), max(maxX, maxY), state(Ordinary)
    {
    }

    /// 1 when the extent holds the point, otherwise 0. A NaN coordinate is outside an ordinary
    /// extent.
    int Contains(HvPoint2<T> const& p) const
    {
        if (state != Ordinary) {
            return state == WholePlane ? 1 : 0;
        }
        return p.x >= min.x && p.y >= min.y && max.x >= p.x && max.y >= p.y ? 1 : 0;
    }

    /// Grows the extent so that it holds the point. The empty extent becomes the point itself; in
    /// an ordinary one a NaN coordinate changes nothing.
    void Augment(HvPoint2<T> const& p)
    {
        if (state == WholePlane) {
            return;
        }
        if (state == Empty) {
            min = max = p;
            state = Ordinary;
            return;
        }
        if (p.x < min.x) {
            min.x = p.x;
        }
        if (p.y < min.y) {
            min.y = p.y;
        }
        if (p.x > max.x) {
            max.x = p.x;
        }
        if (p.y > max.y) {
            max.y = p.y;
        }
    }
};

#endif
