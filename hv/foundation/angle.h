// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The direction of a vector of the plane as an angle.

#ifndef HV_FOUNDATION_ANGLE_H
#define HV_FOUNDATION_ANGLE_H

#include <hv/platform/HvExport.h>

/// Gives the counter-clockwise angle from the first axis to the direction (x, y).
///
/// @return  radians, 0 up to but not including 6.28318530717958. 0 when the vector is zero or not
///          finite, and when the square of its length overflows or underflows.
///
/// Accuracy: about 1e-14; the full circle counts as 6.28318530717958, so angles above the quarter
/// turn are up to 6.5e-15 short. Angles stored by hosts depend on these digits.
HV_API double AngleWithFirstAxisRadian(double x, double y);

/// The same in degrees, 0 up to but not including 360. The half circle gives 180 exactly; (0, 1)
/// gives 90 to about 1e-13.
HV_API double AngleWithFirstAxisDegree(double x, double y);

#endif
