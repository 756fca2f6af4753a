// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The directions of the handles of a node.

#ifndef HV_MOTIONPATH_INTERNAL_ALIGN_HANDLES_H
#define HV_MOTIONPATH_INTERNAL_ALIGN_HANDLES_H

#include <hv/foundation/HvPoint3.h>

/// A handle shorter than this has no direction.
constexpr double kLeastHandle = 1e-7;

/// A third, to the digits that archives of all ages hold: the handle of an even cubic.
constexpr double kThird = 0.3333333333333333;
constexpr double kTwoThirds = 0.6666666666666666;

/// Makes `v` a unit vector; false, with `v` as it was, when it is shorter than kLeastHandle or not
/// finite.
bool HvHandle_Normalize(HvPoint3<double>& v);

/// Makes a node smooth: each handle keeps its length, the direction is the mean of the two.
///
///     before  <---- la ----  node  ---- lb ---->  after
///
/// Returns 1; 0, with both as they were, when a handle, or the mean of the two, has no direction.
int HvHandle_Align(HvPoint3<double>& before, HvPoint3<double> const& node, HvPoint3<double>& after);

#endif
