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
    /// The right-hand value at x with the end values held outside the keys, whatever the
    /// extrapolation.
    double EvalInsideKeys(double x) const;

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
    /// Writes the evaluated handles of key i, on the sides asked for, to the stored ones. A stored
    /// handle of a neighbour that would then make its segment turn back is shortened.
    void StoreEvaluatedHandles(unsigned int i, bool left, bool right);
    /// StoreEvaluatedHandles for both sides; the key's automatic bits go.
    void FreezeKey(unsigned int i);
    /// FreezeKey, and the other constraints that derive handles from the neighbours go too, so that
    /// the key keeps its handles when it gets other neighbours.
    void FixKeyHandles(unsigned int i);
    /// FreezeKey for the keys `first` to `last` inclusive that derive their handles automatically.
    void FreezeAutomaticKeys(unsigned int first, unsigned int last);
    /// Freezes the keys next to x on both sides, but not one that stands at x.
    void FreezeNeighbours(double x);
    /// Writes evaluated handles of the keys i to j to the stored ones and clears the constraints of
    /// the mask on them; with `leftSide` or `rightSide` the end key is frozen on its inner side
    /// only. i <= j; of one key between both sides the right handle comes first, and with it the
    /// constraints go.
    void FreezeTangentsInInterval(unsigned int i, unsigned int j, int leftSide, int rightSide,
                                  int constraints);
    void RegularizeLeftTgt(unsigned int i, Point const& start);
    void RegularizeRightTgt(unsigned int i, Point const& end);
    /// The point of key i on its left and right side.
    Point LeftPoint(unsigned int i) const { return Point(Parameter(i), keys[i].leftValue); }
    Point RightPoint(unsigned int i) const { return Point(Parameter(i), keys[i].rightValue); }
    Point KeyPoint(unsigned int i, KeySide side) const
    {
        return side == HvBaseFCurve::Left ? LeftPoint(i) : RightPoint(i);
    }
    Point const& StoredHandle(unsigned int i, KeySide side) const
    {
        return side == HvBaseFCurve::Left ? keys[i].leftHandle : keys[i].rightHandle;
    }
    /// The stored handles of key i as vectors from the key.
    Point LeftVector(unsigned int i) const { return keys[i].leftHandle - LeftPoint(i); }
    Point RightVector(unsigned int i) const { return keys[i].rightHandle - RightPoint(i); }
    /// The x that a handle of key i gets when it is moved to `x` with its y kept: the third of the
    /// span while the default Bezier tangent constraint is on and there is a neighbour on that
    /// side.
    double MovedHandleX(unsigned int i, KeySide side, double x) const;
    /// Whether the segment from key i to key i + 1 is a function of the parameter with the two
    /// given handles, whatever its kind.
    bool IsSegmentValidWith(unsigned int i, Point const& rightHandle,
                            Point const& nextLeftHandle) const;
    /// Finds the key within `tolerance` whose handles may be set: false on a read-only curve, or
    /// when a key at exactly x has locked tangents.
    bool FindFreeHandles(double x, double tolerance, unsigned int& i) const;
    /// Stores a handle given as a vector from the key, untested.
    void WriteVector(unsigned int i, KeySide side, Point const& vector);
    /// Stores a handle given as a vector from the key; 0 when its segment would not be a function
    /// of the parameter, or for a side that is none.
    int SetActualKeyTgtHandle(unsigned int i, KeySide side, Point const& vector);
    /// Shortens the vector until the segment on that side is a function of the parameter; 0, with
    /// the vector as it was, when that fails. Tests nothing while the default Bezier tangent
    /// constraint is on.
    int FitActualKeyTgtHandle(unsigned int i, KeySide side, Point& vector) const;
    /// Stores the handle key + length * direction of the key at exactly x, shortened as far as its
    /// segment needs; a length of 0 or less puts it on the key.
    int SetActualKeyTgtHandleDirectionAndLength(double x, KeySide side, Point const& direction,
                                                double length);
    /// Turns the left handle onto the line of the right one, with its length kept. A right handle
    /// shorter than 1e-7 gives no line: nothing changes, result 1.
    int UnifyActualLeftTangentWithActualRightTangent(unsigned int i);
    int UnifyActualRightTangentWithActualLeftTangent(unsigned int i);
    /// The same with the handle of `model` as the one that stays.
    int UnifyActualTangentWith(unsigned int i, KeySide model);
    /// Gives the handle opposite to `model` the length of that one, with y multiplied by `scale`. 0
    /// when it has no direction, or its segment would not be a function of the parameter.
    int UnifyActualTangentLengthWith(unsigned int i, KeySide model, double scale);
    /// Whether the segments beside key i, those that exist, are all cubic.
    bool AreSegmentsBesideCubic(unsigned int i) const;
    /// Whether the evaluated handles lie on one line, or, for a key with MirroredTangents, mirror
    /// each other in the vertical through the key. A handle of no length always does.
    bool ActualTangentsAreUnified(unsigned int i) const;
    /// Whether the evaluated handles lie on one line, whatever MirroredTangents says.
    bool ActualTangentsAreParallel(unsigned int i) const;
    /// Whether the stored handles have equal lengths, with y multiplied by `scale`.
    bool ActualTangentsHaveSameVisualLength(unsigned int i, double scale) const;
    /// Shortens the right handle `a` of key i and the left handle `b` of key i + 1, both vectors,
    /// until the segment between is a function of the parameter. They shrink in turns, `a` first
    /// when `turn` is 0.
    void ComputeBestMatchTangents(unsigned int i, Point& a, Point& b, int turn) const;
    /// Puts handles that make no valid segment on their keys where no cubic segment uses them, so
    /// that a later change to cubic is safe.
    void SetValidBezierTangentsOnConstantOrLinearSegments();
    /// The same for the segment after key i, when there is one.
    void LayUnusedHandlesOnKeys(unsigned int i);

    // Constraints and segment kinds (HvStdFCurve_constraints.cpp, HvStdFCurve_kinds.cpp).

    int LockTangentContinuity(unsigned int i);
    int UnlockTangentContinuity(unsigned int i);
    /// Refuses on an inner key between two cubic segments whose handles differ in visual length.
    int LockTangentLengthContinuity(unsigned int i, double scale);
    int UnlockTangentLengthContinuity(unsigned int i, double scale);
    /// Sets or clears the bits that a mask of KeyConstraint values stands for. Clearing
    /// AutomaticTangents takes its modifier UnlimitedAutoSlope along.
    void SetConstraints(unsigned int i, int constraints, bool on);
    FSKind FirstSegmentKind() const { return static_cast<FSKind>(defaultSegmentKind); }
    FSKind SegmentKind(unsigned int i) const { return static_cast<FSKind>(keys[i].segmentKind); }
    void SetKind(unsigned int i, FSKind kind)
    {
        keys[i].segmentKind = static_cast<unsigned char>(kind);
    }
    /// Sets the kind of the segment after key i. A segment that becomes cubic and whose stored
    /// handles are not valid gets handles at the thirds of its chord.
    void ModifyFSK(unsigned int i, FSKind kind);

    // Inserting and removing keys (HvStdFCurve_insert.cpp, _remove.cpp, _merge.cpp). The curve that
    // owns the implementation is an argument, because user data go and move with their keys. Kinds
    // are 1 to 3 unless a member says that 0 keeps the kind in place. Each member either completes
    // or, when memory runs out, leaves the curve as it was.

    /// The keys that stay on both sides of an interval: those below `before`, and those from
    /// `after` on. before >= after means that the interval holds no key.
    struct KeptKeys {
        unsigned int before;
        unsigned int after;

        bool RemovesAny() const { return before < after; }
    };
    KeptKeys FindKeptKeys(double from, double to, int openAtFrom, int openAtTo) const;
    /// Number of keys below x, and of keys not above x.
    unsigned int NumKeysBelow(double x) const;
    unsigned int NumKeysNotAbove(double x) const;
    /// Whether a parameter or a value is locked in the interval; also without keys.
    bool AreKeysLocked(double from, double to, int openAtFrom, int openAtTo) const;

    /// Whether any key has one of `bits` in its constraint word.
    bool IsAnyKeyLocked(unsigned short bits) const;
    /// Whether a key can stand at x: x and its distances to all keys are finite numbers.
    bool CanHoldParameter(double x) const;
    /// Gives key i the value y on both sides, which closes a jump; the handles move along. A locked
    /// value stays, its handles move all the same. Key 0 also sets the value when no keys.
    void SetValOnExistingKey(unsigned int i, double y);
    /// Kinds of 0 keep the kind of the span that holds x. 0 when x is on a key of locked value.
    int CreateKey(double x, double y, FSKind left, FSKind right, HvBaseFCurve& curve);
    /// Makes a key at x that keeps the shape, and tells its index; a key that stands there is kept
    /// as it is.
    void CreateNonModifyingKey(double x, unsigned int& index, HvBaseFCurve& curve);
    /// The keys of an interval replaced by one at x; kinds of 0 keep what is in place. 0 when x
    /// does not lie strictly between the keys that stay.
    int MergeAndCreateKey(double from, double to, double x, double y, FSKind left, FSKind right,
                          int openAtFrom, int openAtTo, int keepKeyData, HvBaseFCurve& curve);
    /// Removes the key within `tolerance`; a kind of 0 keeps that of the span before it.
    int RemoveKey(double x, FSKind kind, double tolerance, HvBaseFCurve& curve);
    void RemoveKeys(KeptKeys const& kept, FSKind kind, HvBaseFCurve& curve);
    void RemoveAllKeys(FSKind kind, HvBaseFCurve& curve);
    void RemoveAllKeysAndCreateNewKey(double x, double y, FSKind left, FSKind right,
                                      HvBaseFCurve& curve);
    /// The new first key loses its jump to the right value, and its left value becomes the value
    /// when no keys.
    void RemoveHeadBeforeExistingKey(FSKind kind, unsigned int i, HvBaseFCurve& curve);
    void RemoveHeadAndCreateKeyBeforeExistingKey(double x, double y, FSKind left, FSKind right,
                                                 unsigned int i, HvBaseFCurve& curve);
    void RemoveTailAfterExistingKey(FSKind kind, unsigned int i, HvBaseFCurve& curve);
    void RemoveTailAndCreateKeyAfterExistingKey(double x, double y, FSKind left, FSKind right,
                                                unsigned int i, HvBaseFCurve& curve);
    /// Without a key between i and j nothing happens, the kind included.
    void RemoveBodyBetweenExistingKeys(FSKind kind, unsigned int i, unsigned int j,
                                       HvBaseFCurve& curve);
    /// 0 when a key was made at i + 1, 1 when key i + 1 took the value, -1 when key i did.
    int RemoveBodyAndCreateKeyBetweenExistingKeys(double x, double y, FSKind left, FSKind right,
                                                  unsigned int i, unsigned int j,
                                                  HvBaseFCurve& curve);
    /// Prepares the handles of the keys i and j for the one cubic segment that takes the place of
    /// those between: each keeps its direction, its length grows with the span.
    void SetupBezierCubicWhenRemoving(unsigned int i, unsigned int j);
    /// The same when the last of the segments that go was cubic and the first was not: the handle
    /// of key j grows, that of key i continues its left handle over a third of the span, or is
    /// flat.
    void SetupBezierCubicWhenRemovingWithCubicLastSegment(unsigned int i, unsigned int j);
    void SetupBezierCubicWhenRemovingWithCubicFirstSegment(unsigned int i, unsigned int j);
    /// Makes the segment from key i to key j cubic and flat at both ends, handles at the thirds.
    void SetStandardCubic(unsigned int i, unsigned int j);

    // The end of the curve (HvStdFCurve_append.cpp, HvStdFCurve_cut_paste.cpp).

    /// Moves the last key along its line to P.x, as far as its locks allow, when the line passes P
    /// within `tolerance`; otherwise AppendLinearSegment. P.x is past the last key.
    void AppendOrExtendLinearSegment(Point const& P, double tolerance, HvBaseFCurve& curve);
    /// Holds the last right value up to P.x and jumps to P.y there. P.x is past the last key.
    void AppendConstantSegment(Point const& P);
    /// Whether P is finite and a new last key can stand there.
    bool CanAppendAt(Point const& P) const;
    /// Mirrors the keys about the middle of their range; false when the result is not valid, which
    /// the caller undoes.
    bool MirrorParameters();
    /// Appends `other` with its parameters moved by `shift`, which brings its first key onto the
    /// last key here: that key takes over the right value, right handle and kind. Both curves have
    /// keys.
    void Append(HvStdFCurveImpl const& other, double shift);
    /// Removes the keys from `from` to `to` and moves what is behind to `from`. 0, with the curve
    /// changed, when a locked key keeps the gap from closing.
    int CutAndClose(double from, double to, HvBaseFCurve& curve);
    /// Moves key i + 1 to `target` and each later key by `shift`, handles and user data along;
    /// locked parameters stay. 0, with nothing changed, when the keys would not stay in order; key
    /// i + 1 may come to stand on key i.
    int TranslateParamsAndTgtsAfterExistingKey(unsigned int i, double target, double shift,
                                               HvBaseFCurve& curve);

    // Reshaping (HvStdFCurve_resample.cpp, _reduce.cpp).

    /// Keys at `from`, each `step` on and at `to` that keep the shape; keys between them go unless
    /// `keepExisting`. 0 for an interval or a step that gives none, and when a value would not be
    /// finite; the keys are then as they were. Throws std::bad_alloc before it starts when there
    /// are more samples than an array holds. The arguments are those of the curve's own operation;
    /// `ignoreExtrapolation` has been heeded by then, as `from` and `to` come folded.
    int ResampleSequence(double from, double to, double step, int keepExisting,
                         int ignoreExtrapolation, HvBaseFCurve& curve);
    /// Makes keys at both ends and drops those between that add less than `tolerance` times the
    /// range of the values of their run. Returns by how much the number of keys fell.
    unsigned int ReduceNumKeys(double from, double to, double tolerance, HvBaseFCurve& curve);
    unsigned int ReduceNumKeys(double tolerance, HvBaseFCurve& curve);

private:
    unsigned int ReduceCubicRuns(unsigned int i, unsigned int j, double tolerance,
                                 HvBaseFCurve& curve);
    bool ExtendLinearSegment(Point const& P, double tolerance, HvBaseFCurve& curve);
    bool IsHandleValid(unsigned int i, KeySide side, Point const& vector) const;
    void FreezeHandles(unsigned int i, bool left, bool right, int constraints);
    void FitHandleToFacingOne(unsigned int i, KeySide side);
    void RemoveUserData(unsigned int first, unsigned int last, HvBaseFCurve& curve) const;
    void RemoveKeyRangeWithUserData(unsigned int first, unsigned int last, HvBaseFCurve& curve);
    void InsertIntoSegment(unsigned int i, CFCStdKey const& key, FSKind left, double t);
    void RestoreRemovedTangents(unsigned int i, Point const& removedLeft,
                                Point const& removedRight);
    void AimAtNewFirstKey(double third);
    void AimAtNewLastKey(double third);
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
