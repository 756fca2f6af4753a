// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The key of a standard curve.

#ifndef HV_FCURVE_CFCSTDKEY_H
#define HV_FCURVE_CFCSTDKEY_H

#include <hv/fcurve/CFCKeyConstraint.h>
#include <hv/foundation/HvPoint2.h>

/// A key with a value and a tangent handle on either side. Handles are absolute points (parameter,
/// value).
struct CFCStdKey {
    HvPoint2<double> leftHandle;   ///< second inner control point of a cubic to the left
    HvPoint2<double> rightHandle;  ///< first inner control point of a cubic to the right
    double parameter;              ///< where the key stands
    double leftValue;              ///< what the curve is reached with from the left
    double rightValue;             ///< what the curve is at the key and leaves with
    unsigned char segmentKind;     ///< FSKind of the segment to the next key
    CFCKeyConstraint constraints;  ///< the flags of the key
    unsigned char privateByte1;    ///< carried through copies and archives, read by nothing here
    unsigned char privateByte2;    ///< the same

    /// All zeros but the constraint word: a new key has its tangent continuity locked.
    constexpr CFCStdKey()
        : parameter(0), leftValue(0), rightValue(0),
          segmentKind(0), constraints{CFCKeyConstraint::kTangentContinuityLocked}, privateByte1(0),
          privateByte2(0)
    {
    }

    /// A key at a point, with both values and both handles on it.
    constexpr CFCStdKey(double x, double y, HvBaseFCurve::FSKind kind)
        : leftHandle(x, y), rightHandle(x, y), parameter(x), leftValue(y), rightValue(y),
          segmentKind(static_cast<unsigned char>(kind)),
          constraints{CFCKeyConstraint::kTangentContinuityLocked}, privateByte1(0), privateByte2(0)
    {
    }
};

#endif
