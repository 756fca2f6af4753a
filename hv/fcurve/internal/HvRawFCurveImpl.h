// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The raw curve below its locks.

#ifndef HV_FCURVE_INTERNAL_HVRAWFCURVEIMPL_H
#define HV_FCURVE_INTERNAL_HVRAWFCURVEIMPL_H

#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/foundation/HvPoint2.h>

template <>
double
CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::EvalRightUsingExtrapolationMethod(
    double p) const;
template <>
double
CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::EvalLeftUsingExtrapolationMethod(
    double p) const;

/// A polyline of keys. Every span between them is linear; a key has one value, and a flag byte that
/// holds its selection. There is nothing else to lock or to derive.
class HvRawFCurveImpl : public CFCSingleValueImpl<double, CFCSingleValueKey<double>, CFCRawStore> {
public:
    using Point = HvPoint2<double>;

    explicit HvRawFCurveImpl(double whenNoKeys) : CFCSingleValueImpl(whenNoKeys) {}

    // Evaluating.

    double EvalRight(double x, int clamp) const;
    /// The value at x of the polyline, whose ends go on as lines under linear extrapolation and
    /// hold their value under any other.
    double EvalPolyline(double x) const;
    bool IsBijective() const;
    int EvalInverse(double value, double& parameter) const;
    double GetValueLowerBound(int clamp) const;
    double GetValueUpperBound(int clamp) const;
    /// 1 when parameters ascend, no number is NaN and the clamps do not cross.
    int IsValid() const;

    // Building.

    /// Adds a key, unless it would not be finite or not past the last.
    void AppendKey(double p, double value);
    /// Whether a key at P can follow the last.
    bool CanAppendAt(Point const& P) const;
    /// Moves the last key along the line through the last two keys to P.x; false, with nothing
    /// changed, when P is further than `tolerance` from the line in y.
    bool ExtendLastSegment(Point const& P, double tolerance, HvBaseFCurve& curve);
    /// Keys of a polyline within `tolerance` of the points, whose x rise; for a curve without keys.
    void SetToApproxLinearFitC0(HvPoint2dArray const& points, double tolerance);
};

#endif
