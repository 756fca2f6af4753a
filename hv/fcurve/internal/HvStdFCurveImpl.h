// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The unlocked implementation of the standard curve, which tools reach directly.

#ifndef HV_FCURVE_INTERNAL_HVSTDFCURVEIMPL_H
#define HV_FCURVE_INTERNAL_HVSTDFCURVEIMPL_H

#include <hv/fcurve/internal/CFCBaseImpl.h>

// The standard curve evaluates in its own way (HvStdFCurve_eval.cpp).
template <>
double
CFCBaseImpl<double, CFCStdKey, CFCStdStore>::EvalRightUsingExtrapolationMethod(double p) const;
template <>
double
CFCBaseImpl<double, CFCStdKey, CFCStdStore>::EvalLeftUsingExtrapolationMethod(double p) const;

/// A third of a span, as the handle rules use it.
constexpr double kThirdOfSpan = 0.3333333333333333;

class HvStdFCurveImpl : public CFCBaseImpl<double, CFCStdKey, CFCStdStore> {
public:
    using FSKind = HvBaseFCurve::FSKind;
    using KeySide = HvBaseFCurve::KeySide;
    using Point = HvPoint2<double>;

    HvStdFCurveImpl(double value, FSKind kind);

    // Evaluating (HvStdFCurve_eval.cpp, _inverse.cpp, _integral.cpp, _bounds.cpp).

    /// Evaluates with the snap to keys and the clamp.
    double EvalRight(double x, int clamp) const;
    double EvalLeft(double x, int clamp) const;
    /// `value` limited to the clamping values when `clamp` is not 0.
    double Clamp(double value, int clamp) const;
    bool IsBijective() const;
    int EvalInverse(double value, double& parameter) const;
    double EvalIntegral(double from, double to) const;
    /// The integral over the segments i to j - 1, from key i to key j.
    double WholeSegmentsIntegral(unsigned int i, unsigned int j) const;
    /// The integral over the segment after key i, from the key to x.
    double LeftPieceIntegral(unsigned int i, double x) const;
    /// The integral over the segment after key i, from x to key i + 1.
    double RightPieceIntegral(unsigned int i, double x) const;
    /// The integral over the segment after key i, from a to b.
    double PartialSegmentIntegral(unsigned int i, double a, double b) const;
    double GetValueLowerBound(int clamp) const;
    double GetValueUpperBound(int clamp) const;
    /// Bounds of the segment after key i.
    void ComputeEvaluatedValueRange(unsigned int i, double& lower, double& upper) const;
    int HasConstantValue() const;
    /// 1 when the fields, the kinds, the order of the keys and all stored handles hold.
    int IsValid() const;

    // Segment kinds (HvStdFCurve_keys.cpp). Need keys.

    /// The kind of the span on one side of key i.
    FSKind SegmentKind(unsigned int i, KeySide side) const;

    // Whole curves from points (HvStdFCurve_fit.cpp).

    /// Adds a key behind the last; one whose parameter is not finite or does not ascend is left
    /// out.
    void AppendKey(CFCStdKey const& key);
    // The four below start on a curve without keys, take at least one point, of strictly rising
    // finite x, and leave the last key with the kind of the segments.
    void SetToInterpCatmullRom(HvPoint2dArray const& points);
    void SetToInterpCubicC2(HvPoint2dArray const& points);
    void SetToApproxLinearFitC0(HvPoint2dArray const& points, double tolerance);
    void SetToApproxCubicFitG1(HvPoint2dArray const& points, double tolerance);
    // Appending does not look at P.x: that it lies past the last key is the caller's.
    /// A cubic from the last key to P3; P0 becomes the first key of a curve without keys.
    void AppendCubicSegment(Point const& P0, Point const& P1, Point const& P2, Point const& P3);
    /// A line from the last key to P; the only key on a curve without keys.
    void AppendLinearSegment(Point const& P);

    // Handles (HvStdFCurve_tangents.cpp). Every writer of a handle goes through WriteLeftHandle and
    // WriteRightHandle, which apply the slope limit rule of the default Bezier tangent constraint.

    /// What the handle of key i becomes under the slope limit rule; unchanged while the constraint
    /// is off or there is no neighbour on that side.
    Point SlopeLimitRule(unsigned int i, KeySide side, Point const& handle) const;
    void WriteLeftHandle(unsigned int i, Point const& handle);
    void WriteRightHandle(unsigned int i, Point const& handle);
    void SetDefaultBezierTangentConstraint(bool on);
    int AdjustAdjacentAutomaticKeysTangents(unsigned int i);
    /// Writes both evaluated handles of key i to the stored ones and clears its automatic bits.
    void FreezeKey(unsigned int i);
    void RegularizeLeftTgt(unsigned int i, Point const& start);
    void RegularizeRightTgt(unsigned int i, Point const& end);
    int SetActualKeyTgtHandle(unsigned int i, KeySide side, Point const& vector);
    int SetActualKeyTgtHandleDirectionAndLength(double x, KeySide side, Point const& direction,
                                                double length);
    int UnifyActualLeftTangentWithActualRightTangent(unsigned int i);
    int UnifyActualRightTangentWithActualLeftTangent(unsigned int i);
    bool ActualTangentsAreUnified(unsigned int i) const;
    bool ActualTangentsAreParallel(unsigned int i) const;
    bool ActualTangentsHaveSameVisualLength(unsigned int i, double scale) const;
    void ComputeBestMatchTangents(unsigned int i, Point& a, Point& b, int turn) const;
    void SetValidBezierTangentsOnConstantOrLinearSegments();
    int LockTangentContinuity(unsigned int i);
    int UnlockTangentContinuity(unsigned int i);
    int LockTangentLengthContinuity(unsigned int i, double scale);
    int UnlockTangentLengthContinuity(unsigned int i, double scale);

    // Inserting and removing keys (HvStdFCurve_insert.cpp, HvStdFCurve_remove.cpp). The curve that
    // owns the implementation is an argument, because user data go and move with their keys.

    int SetValOnExistingKey(unsigned int i, double y);
    int CreateKey(double x, double y, FSKind left, FSKind right, HvBaseFCurve& curve);
    void CreateNonModifyingKey(double x, unsigned int& index, HvBaseFCurve& curve);
    int RemoveKey(double x, FSKind kind, double tolerance, HvBaseFCurve& curve);
    void RemoveAllKeys(HvBaseFCurve& curve);
    void RemoveAllKeysAndCreateNewKey(double x, double y, FSKind left, FSKind right,
                                      HvBaseFCurve& curve);
    void RemoveHeadBeforeExistingKey(FSKind kind, unsigned int i, HvBaseFCurve& curve);
    void RemoveHeadAndCreateKeyBeforeExistingKey(double x, double y, FSKind left, FSKind right,
                                                 unsigned int i, HvBaseFCurve& curve);
    void RemoveTailAfterExistingKey(FSKind kind, unsigned int i, HvBaseFCurve& curve);
    void RemoveTailAndCreateKeyAfterExistingKey(double x, double y, FSKind left, FSKind right,
                                                unsigned int i, HvBaseFCurve& curve);
    void RemoveBodyBetweenExistingKeys(FSKind kind, unsigned int i, unsigned int j,
                                       HvBaseFCurve& curve);
    /// 0 when a key was made at i + 1, 1 when key i + 1 was moved, -1 when key i was.
    int RemoveBodyAndCreateKeyBetweenExistingKeys(double x, double y, FSKind left, FSKind right,
                                                  unsigned int i, unsigned int j,
                                                  HvBaseFCurve& curve);
};

/// The t in [0, 1] with x(t) = x on the cubic whose control points have these x; accurate to 1e-9.
/// Source: bracketed Newton; Press et al., Numerical Recipes, 2007, 9.4.
double FindCubicParameter(double x, double x0, double x1, double x2, double x3);

/// The Bezier polynomial of the control values c0 to c3 at t.
inline double EvalCubicAt(double t, double c0, double c1, double c2, double c3)
{
    double const e = 3 * (c2 - c1);
    double const g = 3 * (c1 - c0);
    return (((c3 - c0 - e) * t + e - g) * t + g) * t + c0;
}

/// Whether the Bezier polynomial of these control values rises strictly from a to d: its end
/// values do, its handles do not pass them, and its derivative does not change sign.
bool CubicRises(double a, double b, double c, double d);

/// Repairs four control points so that x(t) rises: shrinks the handles towards their keys.
void RegularizeBezierCubicPoints(HvPoint2<double>* P);

#endif
