// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What rounding takes from the segments of a standard curve that moves, given back.

#ifndef HV_FCURVE_INTERNAL_STD_MEND_H
#define HV_FCURVE_INTERNAL_STD_MEND_H

#include <hv/fcurve/internal/HvStdFCurveImpl.h>

/// The least share by which HvStdEdit_MendSegments shortens handles, one unit in the last place of
/// 1.
constexpr double kLeastMendShare = 0x1p-52;

/// Draws the handles of each segment that is not valid towards their keys, by the first share of
/// their length, doubled from kLeastMendShare on, that makes it so; at last they lie on the keys.
/// For a curve whose segments were valid before its parameters were mapped by a line.
///
/// The test for validity compares products of parameters, and a mapping rounds: of a segment on the
/// border of what is valid, such as one whose handles reach over all of it, every sixth mapping
/// leaves a little too much. What is taken off is of the order of that rounding, so that the shape
/// stays; without it a curve of such segments could hardly be moved, scaled, mirrored or pasted.
inline void HvStdEdit_MendSegments(HvStdFCurveImpl& curve)
{
    auto const drawn = [](HvPoint2<double> const& handle, HvPoint2<double> const& key,
                          double share) { return handle * (1 - share) + key * share; };
    for (unsigned int i = 0; i + 1 < curve.NumKeys(); ++i) {
        HvPoint2<double>& right = curve.keys[i].rightHandle;
        HvPoint2<double>& left = curve.keys[i + 1].leftHandle;
        HvPoint2<double> const mappedRight = right;
        HvPoint2<double> const mappedLeft = left;
        for (double share = kLeastMendShare;
             !curve.IsSegmentValidWith(i, right, left) && share <= 1; share *= 2) {
            right = drawn(mappedRight, curve.RightPoint(i), share);
            left = drawn(mappedLeft, curve.LeftPoint(i + 1), share);
        }
    }
}

#endif
