// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The raw function curve: a polyline of samples.

#ifndef HV_FCURVE_HVRAWFCURVE_H
#define HV_FCURVE_HVRAWFCURVE_H

#include <hv/fcurve/HvSingleValueFCurve.h>
#include <hv/foundation/HvPoint2.h>

class HvRawFCurveImpl;

extern template class HV_API HvFCurveShell<HvRawFCurveImpl>;
extern template class HV_API HvSingleValueFCurve<HvRawFCurveImpl>;

/// The sampled curve, for dense data such as recorded motion or a property along a path: each key
/// is a parameter and one value, and every span between keys is linear. There are no tangents, no
/// jumps and no segment kinds; infos tell linear segments and tangents of 0.
///
/// A key takes no constraints: SetConstraint finds the key, stores its parameter back and returns 1
/// without keeping anything, and GetConstraint tells 0. All four extrapolations are accepted; the
/// linear one continues the end spans, or holds the value of a single key. A number that is not
/// finite is never stored. See HvBaseFCurve for results, arguments and locks.
class HV_API HvRawFCurve : public HvSingleValueFCurve<HvRawFCurveImpl> {
public:
    /// A curve without keys.
    explicit HvRawFCurve(double value);
    /// One key; value when no keys is y.
    HvRawFCurve(double x, double y);
    /// Two keys; value when no keys is y0. x0 < x1 is the caller's: a second key that is not past
    /// the first is left out.
    HvRawFCurve(double x0, double y0, double x1, double y1);
    /// A polyline through a subset of the points, near the others within `tolerance` in y as
    /// SetToApproxLinearFitC0 keeps it. Points that are not finite, or not past the one before, are
    /// left out. Value when no keys is the first point's y, without points 0.
    HvRawFCurve(HvPoint2dArray const& points, double tolerance);
    /// Copies keys, fields and user data, under the lock of `other`.
    HvRawFCurve(HvRawFCurve const& other);
    /// The stretch of `curve` between `from` and `to`: it ends where the keys beyond were, with
    /// keys of the values there. A read-only curve gives a read-only stretch.
    HvRawFCurve(HvRawFCurve const& curve, double from, double to);
    /// Copies keys, fields and user data; all or nothing.
    HvRawFCurve& operator=(HvRawFCurve const& other);
    using HvBaseFCurve::operator=;

    HvBaseFCurve* SnapShot(double from, double to, ExtrapolationMethod method) const override;

    // Values.

    /// The key's value on either side; 0 for a side other than Left and Right.
    int GetKeyValue(double x, KeySide side, double& value, double tolerance) const override;
    /// Sets the key's one value, whichever of the two sides is named.
    int SetKeyValue(double x, KeySide side, double value, double tolerance) override;
    /// Appends parameters and values, the values to both arrays. Without memory the three arrays
    /// are emptied and the result is 0.
    unsigned int GetKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                         HvDoubleArray& rightValues, int selectedOnly) const override;
    /// Adds `offset` to all values and to the value when no keys.
    int ShiftValues(double offset) override;
    /// Makes all values and the value when no keys value * scale + offset. Refuses |scale| < 1e-7,
    /// without a lock. The clamping values go along, but a lower one that is not above the smallest
    /// normal double stays as it is, be it zero or negative, and so does an upper one at the
    /// largest double. Clamping values that cross are swapped.
    int ScaleAndShiftValues(double scale, double offset) override;
    /// Mirrors the values, the value when no keys included, about the middle of their range; a
    /// curve without keys stays as it is.
    int MirrorValues() override;

    // Appending.

    /// Adds a key at P; refuses unless P.x lies past the last key.
    int AppendLinearSegment(HvPoint2<double> const& P);
    /// The same, but on two keys or more a P within `tolerance` in y of the line through the last
    /// two keys moves the last key there, to P.x and the line's value; its user data go along.
    int AppendOrExtendLinearSegment(HvPoint2<double> const& P, double tolerance);

    // Evaluating.

    /// The value at x, for a caller that holds the curve; takes no lock. Unlike on the other kinds
    /// a parameter just off a key is not snapped to it; folding into a cycle snaps still.
    double EvalNoLock(double x, int clamp) const override;
    unsigned int EvalSequence(double from, double to, double step, double tolerance,
                              HvDoubleArray& parameters, HvDoubleArray& values,
                              int clamp) const override;
    /// The largest value of the keys, exactly; without keys the value when no keys.
    double GetValueUpperBound(int clamp) const override;
    /// The smallest value of the keys, exactly; without keys the value when no keys.
    double GetValueLowerBound(int clamp) const override;
    int SetClampingValues(double lower, double upper) override;
    int GetClampingValues(double& lower, double& upper) const override;
    /// A value within 1e-7 of a key's, and not strictly inside a span, gives the key.
    int EvalInverse(double value, double& parameter, int flag) const override;
    /// Whether every value is larger than the one before, or every value smaller; false for fewer
    /// than two keys.
    bool IsBijective() const override;

    // Constraints. A raw key keeps none.

    int SetConstraint(double& parameter, KeyConstraint constraint, int on,
                      double tolerance) override;
    int GetConstraint(double& parameter, KeyConstraint constraint, int& on,
                      double tolerance) const override;
    int GetConstraintByIndex(unsigned int index, KeyConstraint constraint, int& on) const override;

    // Reshaping.

    int SmoothSequence(double from, double to, double const* kernel,
                       unsigned int kernelSize) override;

    // Saving.

    unsigned int GetBufferSize() const override;
    unsigned int WriteToBuffer(void* buffer) const override;
    unsigned int ReadFromBufferBody(void const* body) override;
    /// The same through a reader, which stays in its bounds and steps over what was used. 0 also,
    /// and the reader then fails, for a body that does not hold what it claims.
    unsigned int ReadArchiveBody(HvByteReader& body);
};

#endif
