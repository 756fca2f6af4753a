// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The two speed rules of a node.

#ifndef HV_MOTIONPATH_HVTWOSIDEDTANGENT_H
#define HV_MOTIONPATH_HVTWOSIDEDTANGENT_H

#include <hv/motionpath/HvMotionPath3d.h>

/// How the speed along a motion path behaves before and behind a node; smooth on both sides at
/// first.
struct HvTwoSidedTangent {
    HvMotionPath3d::TangentInfo left = HvMotionPath3d::TangentSmooth;   ///< before the node
    HvMotionPath3d::TangentInfo right = HvMotionPath3d::TangentSmooth;  ///< behind the node

    HvTwoSidedTangent() = default;
    /// The two rules.
    HvTwoSidedTangent(HvMotionPath3d::TangentInfo before, HvMotionPath3d::TangentInfo behind)
        : left(before), right(behind)
    {
    }

    /// 1 for the values of the enumeration, otherwise 0: a number of another origin may be none.
    static int IsValid(HvMotionPath3d::TangentInfo info)
    {
        return info >= HvMotionPath3d::TangentFree && info <= HvMotionPath3d::TangentStop ? 1 : 0;
    }
};

#endif
