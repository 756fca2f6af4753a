// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The standard function curve: constant, linear and cubic Bezier segments.

#ifndef HV_FCURVE_HVSTDFCURVE_H
#define HV_FCURVE_HVSTDFCURVE_H

#include <hv/fcurve/HvFCurveShell.h>
#include <hv/foundation/HvPoint2.h>

class HvStdFCurveImpl;
class HvStdTgtMoverImpl;

extern template class HV_API HvFCurveShell<HvStdFCurveImpl>;

/// The general scalar curve: each key has a left and a right value, a kind for the segment to its
/// right and two tangent handles; per-key constraints may derive the tangents that the curve really
/// uses (the evaluated ones) from those stored (the actual ones).
///
/// n keys give n + 1 spans: a key's kind is the kind of the span to its right, the span before the
/// first key has the curve's first segment kind. Handles are given and returned as vectors from the
/// key. An FSKind of 0 as an argument keeps the kind in place. See HvBaseFCurve for results,
/// arguments and locks.
class HV_API HvStdFCurve : public HvFCurveShell<HvStdFCurveImpl> {
public:
    /// How data points become a curve.
    enum DPMethod : int {
        InterpCatmullRom = 1,   ///< cubic segments through all points
        InterpCubicC2 = 2,      ///< cubic segments of the C2 interpolating spline
        ApproxLinearFitC0 = 3,  ///< a polyline through a subset of the points
        ApproxCubicFitG1 = 4    ///< fitted cubic segments, tangent continuity locked
    };

    /// A curve without keys.
    HvStdFCurve(double value, FSKind kind);
    /// One key at x, with both handles on its sides; value when no keys is leftValue.
    HvStdFCurve(double x, double leftValue, double rightValue, FSKind first, FSKind last);
    /// Two keys joined by a line; value when no keys is y0. x0 < x1 is the caller's.
    HvStdFCurve(double x0, double y0, double x1, double y1, FSKind first, FSKind last);
    /// Two keys joined by the cubic P0..P3; value when no keys is P0.y.
    HvStdFCurve(HvPoint2<double> const& P0, HvPoint2<double> const& P1, HvPoint2<double> const& P2,
                HvPoint2<double> const& P3, FSKind first, FSKind last);
    /// A curve through or near points of strictly rising x. `tolerance` serves the approximations,
    /// in the unit of the values. Value when no keys is the first point's y.
    HvStdFCurve(HvPoint2dArray const& points, DPMethod method, double tolerance, FSKind first,
                FSKind last);
    /// Copies keys, fields and user data, under the lock of `other`.
    HvStdFCurve(HvStdFCurve const& other);
    /// The stretch of `curve` from `from` to `to`, with its shape kept.
    HvStdFCurve(HvStdFCurve const& curve, double from, double to);
    /// Copies keys, fields and user data; all or nothing.
    HvStdFCurve& operator=(HvStdFCurve const& other);
    using HvBaseFCurve::operator=;

    HvBaseFCurve const* QueryFCurveKind(Kind kind) const override;
    Kind GetKind() const override;
    HvBaseFCurve* Clone() const override;
    HvBaseFCurve* SnapShot(double from, double to, ExtrapolationMethod method) const override;
    int Set(HvBaseFCurve const& other) override;

    // Reading keys.

    int GetFCurveInfo(FCurveInfo* info) const override;
    int GetKeyInfoFromIndex(unsigned int index, KeyInfo* info) const override;
    int GetKeyInfoFromParameter(double parameter, KeyInfo* info) const override;
    int GetKeyValue(double x, KeySide side, double& value, double tolerance) const override;
    unsigned int GetKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                         HvDoubleArray& rightValues, int selectedOnly) const override;
    /// GetNearestKeyParameterInCenteredInterval for a caller that holds the curve's lock.
    int GetNearestKeyParameterInCenteredIntervalNoLock(double& parameter, double tolerance) const;

    /// The kind of the span on one side of the key.
    int GetSegmentKind(double x, KeySide side, FSKind& kind, double tolerance) const;
    /// The kinds of the spans on both sides of the key.
    int GetSegmentKinds(double x, FSKind& left, FSKind& right, double tolerance) const;
    /// The same for key `i`; 0 beyond the last.
    int GetSegmentKindsByIndex(unsigned int i, FSKind& left, FSKind& right) const;
    /// GetSegmentKind of key `i`; 0 beyond the last.
    int GetSegmentKindByIndex(unsigned int i, KeySide side, FSKind& kind) const;
    /// The kind of the span that holds x; at a key, of the span to its right.
    FSKind GetSegmentKindAtParameter(double x) const;
    /// The kind of the span before the first key.
    FSKind GetFirstSegmentKind() const;
    /// 1 when the first segment kind and all keys' kinds agree; `kind` gets it.
    int HasUniformSegmentKind(FSKind& kind) const;
    /// 1 when all values, and the evaluated handles of cubic segments, equal the first key's left
    /// value; 1 without keys.
    int HasConstantValue() const;

    /// The stored handle of one side, as a vector from the key.
    int GetActualKeyTgtHandle(double x, KeySide side, HvPoint2<double>& handle,
                              double tolerance) const;
    /// The stored handles of both sides, as vectors from the key.
    int GetActualKeyTgtHandles(double x, HvPoint2<double>& left, HvPoint2<double>& right,
                               double tolerance) const;
    /// The handle of one side that the segment really uses, as a vector from the key.
    int GetEvaluatedKeyTgtHandle(double x, KeySide side, HvPoint2<double>& handle,
                                 double tolerance) const;
    /// The handles of both sides that the segments really use, as vectors from the key.
    int GetEvaluatedKeyTgtHandles(double x, HvPoint2<double>& left, HvPoint2<double>& right,
                                  double tolerance) const;
    /// The same for key `i`; 0 beyond the last.
    int GetEvaluatedKeyTgtHandlesByIndex(unsigned int i, HvPoint2<double>& left,
                                         HvPoint2<double>& right) const;

    int GetConstraint(double& parameter, KeyConstraint constraint, int& on,
                      double tolerance) const override;
    int GetConstraintByIndex(unsigned int i, KeyConstraint constraint, int& on) const override;
    int IsConstraintSupported(KeyConstraint constraint) const override;
    /// 1 when the key within `tolerance` keeps its handles on one line.
    int IsTangentContinuityLocked(double x, double tolerance) const;
    /// The same for key `i`; 0 beyond the last.
    int IsTangentContinuityLockedByIndex(unsigned int i) const;
    /// 1 when the key within `tolerance` keeps its handles of one length.
    int IsTangentLengthContinuityLocked(double x, double tolerance) const;
    /// The same for key `i`; 0 beyond the last.
    int IsTangentLengthContinuityLockedByIndex(unsigned int i) const;
    /// 1 when the directions of the tangents of a key of the interval are locked.
    int AreAnyTgtDirectionsLockedInInterval(double from, double to, int openAtFrom,
                                            int openAtTo) const;
    /// 1 when the lengths of the tangents of a key of the interval are locked.
    int AreAnyTgtLengthsLockedInInterval(double from, double to, int openAtFrom,
                                         int openAtTo) const;

    // Evaluating.

    double EvalNoLock(double x, int clamp) const override;
    /// Eval with the left-hand value at a key.
    double EvalLeft(double x, int clamp) const;
    unsigned int EvalSequence(double from, double to, double step, double tolerance,
                              HvDoubleArray& parameters, HvDoubleArray& values,
                              int clamp) const override;
    int EvalInverse(double value, double& parameter, int flag) const override;
    bool IsBijective() const override;
    /// The signed area under the curve from `from` to `to`; beyond the keys it counts as constant,
    /// whatever the extrapolation. The negative of the swapped integral when from > to.
    double EvalIntegral(double from, double to) const;
    int GetClampingValues(double& lower, double& upper) const override;
    double GetValueUpperBound(int clamp) const override;
    double GetValueLowerBound(int clamp) const override;
    /// Bounds of the segment on one side of the key.
    int GetValueRange(double x, KeySide side, double& lower, double& upper, double tolerance,
                      int clamp) const;

    // Settings.

    int SetValueWhenNoKeys(double value) override;
    int SetClampingValues(double lower, double upper) override;
    int SetExtrapolationMethod(ExtrapolationMethod method) override;
    int SetDefaultBezierTangentConstraint(bool on) override;
    /// Does nothing and returns 1.
    int AdjustAdjacentAutomaticKeysTangents(double x, double tolerance);

    // Inserting and removing keys. An insertion into a cubic segment splits it, so that a key made
    // on the curve keeps the shape where x(t) is linear (handles at the thirds) and nearly so
    // elsewhere; a removal rescales the handles beside it. Whatever the edit, every segment stays a
    // function of the parameter. Kinds are 1 to 3, or 0 where they are said to be kept; anything
    // else, and a number that is not finite, is refused. Cost of one key: O(log n) to find it and
    // one block move; constant, amortised, behind the last key.

    int CreateKey(double x, double y) override;
    /// `left` and `right` are the kinds of the spans on both sides of the new key, 0 to keep the
    /// kind of the span that it divides; an existing key ignores them, and refuses when its value
    /// is locked.
    int CreateKey(double x, double y, FSKind left, FSKind right);
    /// The neighbours of the new key are frozen: their derived tangents become stored ones. On an
    /// existing key the jump closes to its right value.
    int CreateNonModifyingKey(double x, int ignoreExtrapolation) override;
    int MergeAndCreateKey(double from, double to, double x, double y, int openAtFrom, int openAtTo,
                          int keepKeyData) override;
    /// `left` and `right` as in CreateKey. The outermost handles of the keys that go live on at the
    /// new key, shortened as far as its segments need. An interval that runs backwards holds
    /// nothing: 1, and no key is made.
    int MergeAndCreateKey(double from, double to, double x, double y, FSKind left, FSKind right,
                          int openAtFrom, int openAtTo, int keepKeyData);
    /// The value is that of the keys alone: no extrapolation is used beyond them. A cycling curve
    /// first moves the interval into its keys' range, along with x.
    int MergeAndCreateNonModifyingKey(double from, double to, double x, int openAtFrom,
                                      int openAtTo, int keepKeyData,
                                      int ignoreExtrapolation) override;
    int RemoveKey(double x, double tolerance) override;
    /// `kind` is the kind of the span that takes the key's place, 0 for that of the span before it.
    /// A locked key beside x, found by the tolerance, goes all the same.
    int RemoveKey(double x, FSKind kind, double tolerance);
    int RemoveKeys(double from, double to, int openAtFrom, int openAtTo) override;
    /// The same; the gap becomes one segment of `kind`.
    int RemoveKeys(double from, double to, FSKind kind, int openAtFrom, int openAtTo);
    /// Refuses when a key up to x is locked. Leaves a key at x on a curve without keys too.
    int RemoveHead(double x) override;
    /// Refuses when a key from x on is locked. Leaves a key at x on a curve without keys too.
    int RemoveTail(double x) override;
    /// Refuses, with the clipboard as it was, when a key in [from, to] is locked. When a key behind
    /// it is, so that the gap cannot close, the curve keeps its shape but the automatic keys of the
    /// stretch are frozen. `clipboard` is replaced; it cannot be this curve.
    int Cut(double from, double to, HvBaseFCurve& clipboard) override;
    /// What stands behind `to` moves to the end of the pasted piece. Refuses when a key from `from`
    /// on is locked.
    int Paste(HvBaseFCurve const& source, double from, double to) override;
    /// The last key takes over the right value, right handle and kind of the source's first; locks
    /// and user data come along with the others. When the handle does not fit, the result is 0 with
    /// the keys appended: a caller who wants all or nothing takes a copy first, as Paste does.
    int Append(HvBaseFCurve const& source) override;
    // Each adds one key behind the last, whose kind moves on to it; refused unless the point lies
    // past the last key. The linear and constant forms also make the first key of a curve.
    /// The cubic from the last key over the handles P1, P2 to P3; refused when it turns back.
    int AppendBezierCubicSegment(HvPoint2<double> const& P1, HvPoint2<double> const& P2,
                                 HvPoint2<double> const& P3);
    /// The line from the last key to P.
    int AppendLinearSegment(HvPoint2<double> const& P);
    /// Moves the last key along its line to P.x when the last segment is linear and its line passes
    /// P within `tolerance` (in values); otherwise AppendLinearSegment. Of a key that moves, a
    /// locked parameter stays where it is and locked values stay what they are.
    int AppendOrExtendLinearSegment(HvPoint2<double> const& P, double tolerance);
    /// Holds the last right value up to P.x and jumps to P.y there.
    int AppendConstantSegment(HvPoint2<double> const& P);

    // Changing keys. A move of the whole curve is refused when any key is locked against it, or
    // keys would meet or numbers leave their range; user data move along.

    int ShiftParameters(double offset) override;
    int ScaleParameterAxis(double scale) override;
    int ShiftValues(double offset) override;
    /// Scales the clamping values too, but for those at the infinite default.
    int ScaleAndShiftValues(double scale, double offset) override;
    /// Mirrors about the middle of the curve's bounds; the clamping values stay.
    int MirrorValues() override;
    int MirrorParameters() override;
    /// Moves the handle of that side along. The lock is looked for at exactly x: a locked key
    /// beside it keeps its value while its handle moves. 1 also when no key is within the
    /// tolerance.
    int SetKeyValue(double x, KeySide side, double value, double tolerance) override;
    // A segment that becomes cubic and whose stored handles turn back gets handles at the thirds of
    // its chord.
    /// Sets the kind of the span on one side of the key; on a curve without keys of its only span.
    int SetSegmentKind(double x, KeySide side, FSKind kind, double tolerance);
    /// Sets the kind of the span that holds x; at a key, of the span to its right.
    int SetSegmentKindAtParameter(double x, FSKind kind);
    /// Sets the kind of the span before the first key.
    int SetFirstSegmentKind(FSKind kind);
    /// Gives all spans one kind.
    int ConvertToUniformSegmentKind(FSKind kind);
    /// Sets the stored handle of one side from a vector from the key; shrinks it until its segment
    /// is a function of the parameter, and refuses when that fails.
    int SetKeyTgtHandle(double x, KeySide side, HvPoint2<double> const& handle, double tolerance);
    /// The same for both sides.
    int SetKeyTgtHandles(double x, HvPoint2<double> const& left, HvPoint2<double> const& right,
                         double tolerance);
    int SetConstraint(double& parameter, KeyConstraint constraint, int on,
                      double tolerance) override;
    // Locking moves no handle. Each stores the found key's parameter in `x`.
    /// Sets TangentContinuityLocked.
    int LockTangentContinuity(double& x, double tolerance);
    /// Clears TangentContinuityLocked.
    int UnlockTangentContinuity(double& x, double tolerance);
    /// `scale` multiplies y, so that lengths compare as they look in a view. Refuses on an inner
    /// key between cubic segments whose handles differ in length.
    int LockTangentLengthContinuity(double& x, double scale, double tolerance);
    /// Clears TangentLengthContinuityLocked.
    int UnlockTangentLengthContinuity(double& x, double scale, double tolerance);
    /// Turns the handle opposite to `side` onto the line of that one and locks tangent continuity.
    /// On a key beside segments that are not cubic no handle moves. Refuses when the tangents at
    /// exactly x are locked, or continuity already is and holds.
    int UnifyAndLockTangentContinuity(double& x, KeySide side, double tolerance);
    /// The same for the lengths of the two handles, with y multiplied by `scale`.
    int UnifyAndLockTangentLengthContinuity(double& x, KeySide side, double scale,
                                            double tolerance);
    /// Writes evaluated handles to the stored ones and clears the constraints of the mask
    /// `constraints` (KeyConstraint values or-ed together). A stored handle that reaches past the
    /// end of its segment is shortened where the frozen one that it faces is too short for it.
    int FreezeAllTangents(int constraints);
    /// The same between the keys nearest to `from` and `to`; `leftSide` and `rightSide` tell that
    /// the end keys are frozen on their inner side only.
    int FreezeTangentsInInterval(double from, double to, int leftSide, int rightSide,
                                 int constraints);
    /// The same from key `i` to key `j`, both included.
    int FreezeTangentsInInterval(unsigned int i, unsigned int j, int leftSide, int rightSide,
                                 int constraints);

    // Reshaping.

    int ScaleAndOffsetParameters(double from, double to, double pivot, double scale, double offset,
                                 int rippleLeft, int rippleRight, RegionHandle handle,
                                 int selectedOnly) override;
    int ResampleSequence(double from, double to, double step, int keepExisting,
                         int ignoreExtrapolation) override;
    int SmoothSequence(double from, double to, double const* kernel,
                       unsigned int kernelSize) override;
    unsigned int ReduceNumKeys(double from, double to, double tolerance) override;
    /// The same over all keys.
    unsigned int ReduceNumKeys(double tolerance);

    // Saving.

    unsigned int GetBufferSize() const override;
    unsigned int WriteToBuffer(void* buffer) const override;
    unsigned int ReadFromBufferBody(void const* body) override;
    /// The same through a reader, which stays in its bounds and steps over what was used. 0 also,
    /// and the reader then fails, for a body that does not hold what it claims.
    unsigned int ReadArchiveBody(HvByteReader& body);

private:
    friend class HvStdTgtMoverImpl;
    class Rollback;
    class SnapShotBuilder;

    /// Exchanges keys, fields and user data.
    void ExchangeContents(HvStdFCurve& other) noexcept;
};

/// Whether x(t) of the Bezier P0..P3 rises, which makes y a function of x: 1 or 0. Looks at x only.
HV_API int HvStdFCurve_IsCubicSegmentValid(HvPoint2<double> const& P0, HvPoint2<double> const& P1,
                                           HvPoint2<double> const& P2, HvPoint2<double> const& P3);

#endif
