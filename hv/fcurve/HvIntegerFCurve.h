// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The function curve over whole numbers.

#ifndef HV_FCURVE_HVINTEGERFCURVE_H
#define HV_FCURVE_HVINTEGERFCURVE_H

#include <hv/fcurve/HvSteppedFCurve.h>

/// A stepped curve over the integers of 32 bits. CreateKey refuses other numbers; elsewhere a
/// number is cut toward zero to the nearest of them, NaN to 0. All arithmetic saturates.
class HV_API HvIntegerFCurve : public HvSteppedFCurve<int> {
public:
    /// A curve without keys. The left value is 0.
    explicit HvIntegerFCurve(double valueWhenNoKeys);
    /// Copies keys, fields and user data, under the lock of `other`.
    HvIntegerFCurve(HvIntegerFCurve const& other);
    /// The stretch of `source` between `from` and `to`: it ends where the keys beyond were, with
    /// keys of the values there. Locks outside do not stand in the way.
    HvIntegerFCurve(HvIntegerFCurve const& source, double from, double to);
    /// Copies keys, fields and user data; all or nothing.
    HvIntegerFCurve& operator=(HvIntegerFCurve const& other);
    using HvBaseFCurve::operator=;

    HvBaseFCurve* SnapShot(double from, double to, ExtrapolationMethod method) const override;
    /// Adds `offset`, rounded to the next integer, halves up, to all keys and the value when no
    /// keys; the left value stays.
    int ShiftValues(double offset) override;
    /// Rounds `scale` and `offset` like ShiftValues. The value when no keys and the clamps become
    /// offset + scale * value. Each key's value becomes offset + scale * its left value, in key
    /// order, so that every key follows from the new value of the key before it, and the first from
    /// the curve's left value, which stays.
    int ScaleAndShiftValues(double scale, double offset) override;
    int SmoothSequence(double from, double to, double const* kernel,
                       unsigned int kernelSize) override;
};

#endif
