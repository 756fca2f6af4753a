// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The function curve that is on or off.

#ifndef HV_FCURVE_HVBOOLEANFCURVE_H
#define HV_FCURVE_HVBOOLEANFCURVE_H

#include <hv/fcurve/HvSteppedFCurve.h>

/// A stepped curve over true and false, which are 1.0 and 0.0 at the interface. CreateKey refuses
/// other numbers; elsewhere every number but 1.0 counts as false.
///
/// Under RelativeCycleExtrapolation a cycle adds 1 when the first and the last key differ, and any
/// sum but 0 is true. ShiftValues, ScaleAndShiftValues and SmoothSequence do nothing and return 0.
class HV_API HvBooleanFCurve : public HvSteppedFCurve<bool> {
public:
    /// A curve without keys; its value is true exactly when `valueWhenNoKeys` is 1.0. The left
    /// value is false.
    explicit HvBooleanFCurve(double valueWhenNoKeys);
    /// Copies keys, fields and user data, under the lock of `other`.
    HvBooleanFCurve(HvBooleanFCurve const& other);
    /// The stretch of `source` between `from` and `to`: it ends where the keys beyond were, with
    /// keys of the values there. Locks outside do not stand in the way.
    HvBooleanFCurve(HvBooleanFCurve const& source, double from, double to);
    /// Copies keys, fields and user data; all or nothing.
    HvBooleanFCurve& operator=(HvBooleanFCurve const& other);
    using HvBaseFCurve::operator=;

    HvBaseFCurve* SnapShot(double from, double to, ExtrapolationMethod method) const override;
    int ShiftValues(double offset) override;
    int ScaleAndShiftValues(double scale, double offset) override;
    int SmoothSequence(double from, double to, double const* kernel,
                       unsigned int kernelSize) override;
    int GetConstraintByIndex(unsigned int index, KeyConstraint constraint, int& on) const override;
};

#endif
