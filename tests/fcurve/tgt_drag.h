// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One key between two others, and a drag of one of its tangent handles.

#ifndef TESTS_FCURVE_TGT_DRAG_H
#define TESTS_FCURVE_TGT_DRAG_H

#include <hv/fcurve/HvStdTgtMover.h>

#include "std_edit.h"

/// Keys at 0, 3, 6; the middle one at height 1 with the handles given, the facing handles of its
/// neighbours one long.
inline StdCurve Around(Point const& left, Point const& right, unsigned short word = 0x0001)
{
    CFCStdKey key = KeyWithHandles(3, 1, left, right);
    key.constraints.word = word;
    return StdCurve(
        {KeyWithHandles(0, 0, {-1, 0}, {1, 1}), key, KeyWithHandles(6, 0, {-1, 1}, {1, 0})});
}

/// One step of a drag that ends at once.
inline int DragTo(StdCurve& curve, HvBaseFCurve::KeySide side, Point const& handle,
                  int continuity = 0, int lengthContinuity = 0, double scale = 1)
{
    HvStdTgtMover mover(curve, 3, side, 0);
    HvExtent2<double> invalid;
    return mover.Update(handle, continuity, lengthContinuity, scale, invalid);
}

inline Point LeftOf(StdCurve const& curve)
{
    return curve.Impl().LeftVector(1);
}

inline Point RightOf(StdCurve const& curve)
{
    return curve.Impl().RightVector(1);
}

#endif
