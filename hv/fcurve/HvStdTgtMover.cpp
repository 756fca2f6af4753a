// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Dragging a tangent handle. One side is written; the other is its image in the vertical, made by
// turning the sign of every x on the way in and out.

#include <hv/fcurve/HvStdTgtMover.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvStdTgtMoverImpl.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <algorithm>
#include <cmath>

namespace {

using Point = HvPoint2<double>;

/// Cleared when the key is taken hold of: AutomaticTangents, LinearTangents, FlatAtExtremum and
/// FlatTangents.
constexpr int kClearedAtStart = HvBaseFCurve::AutomaticTangents | HvBaseFCurve::LinearTangents |
                                HvBaseFCurve::FlatAtExtremum | HvBaseFCurve::FlatTangents;
/// Cleared once more by the first update, should the host have set them in between.
constexpr int kClearedAtFirstUpdate =
    HvBaseFCurve::AutomaticTangents | HvBaseFCurve::FlatAtExtremum | HvBaseFCurve::FlatTangents;

/// Handles whose cosine differs from 1 or -1 by less than this lie on one line.
constexpr double kCollinearCosine = 1e-6;
/// By how much of their distance two boundary values are drawn inwards: the least that is valid.
constexpr double kSqueezes[] = {1e-6, 1e-5, 1e-4, 1e-3, 1e-2};

/// The roots of t*t - s*t - g, in the form that does not cancel; false when there are none.
bool SolveBoundary(double s, double g, double& r0, double& r1)
{
    double const discriminant = s * s + 4 * g;
    if (!(discriminant >= 0)) {
        return false;
    }
    if (kHvGeometryTolerance > std::fabs(s)) {
        if (!(g >= 0)) {
            return false;
        }
        r1 = std::sqrt(g);
        r0 = -r1;
        return true;
    }
    double const w = -0.5 * (s + std::copysign(std::sqrt(discriminant), s));
    r0 = std::min(-w, g / w);
    r1 = std::max(-w, g / w);
    return true;
}

/// Moves the roots back by `origin` and inwards until both are valid.
template <class IsValid>
int SqueezedRoots(double low, double high, double origin, IsValid const& isValid, double& r0,
                  double& r1)
{
    for (double const squeeze : kSqueezes) {
        double const inner0 = origin + (low + squeeze * (high - low));
        double const inner1 = origin + (high - squeeze * (high - low));
        if (inner0 <= inner1 && isValid(inner0) && isValid(inner1)) {
            r0 = inner0;
            r1 = inner1;
            return 1;
        }
    }
    return 0;
}

/// The one of two values that lies nearer to x, the lower on a tie.
double Nearer(double r0, double r1, double x)
{
    return std::fabs(r0 - x) <= std::fabs(r1 - x) ? r0 : r1;
}

/// The point of the line from `key` to `handle` at the abscissa x.
Point AtAbscissa(Point const& key, Point const& handle, double x)
{
    return Point(x, key.y + (handle.y - key.y) * ((x - key.x) / (handle.x - key.x)));
}

double Dot(Point const& a, Point const& b)
{
    return a.x * b.x + a.y * b.y;
}

}  // namespace

// Both solvers move a to 0 first: at the distance of a long animation from the origin, the
// discriminant would be the difference of two large equal numbers.

int ValidHandleAbscissaFromRight(double a, double c, double d, double& r0, double& r1)
{
    double low = 0;
    double high = 0;
    if (!SolveBoundary((c - a) + (d - a), -(c - a) * (c - a), low, high)) {
        return 0;
    }
    return SqueezedRoots(
        low, high, a, [=](double b) { return CubicRises(a, b, c, d); }, r0, r1);
}

int ValidHandleAbscissaFromLeft(double a, double b, double d, double& r0, double& r1)
{
    double low = 0;
    double high = 0;
    if (!SolveBoundary(b - a, (b - a) * ((d - a) - (b - a)), low, high)) {
        return 0;
    }
    return SqueezedRoots(
        low, high, a, [=](double c) { return CubicRises(a, b, c, d); }, r0, r1);
}

HvStdTgtMoverImpl::HvStdTgtMoverImpl(HvStdFCurve& curve, double x, KeySide side, double tolerance)
    : curve_(curve), side_(side), sign_(side == HvBaseFCurve::Right ? -1 : 1)
{
    HvCurveWriter const guard(curve);
    HvStdFCurveImpl const& impl = *curve.impl_;
    if (impl.NumKeys() < 2 || !impl.FindKey(x, tolerance, index_)) {
        return;
    }
    usable_ = true;
    parameter_ = impl.Parameter(index_);
    curve.FreezeTangentsInInterval(index_, index_, 0, 0, kClearedAtStart);

    bool const isLeft = side_ != HvBaseFCurve::Right;
    bool const hasPrevious = index_ != 0;
    bool const hasNext = index_ + 1 < impl.NumKeys();
    hasNear_ = isLeft ? hasPrevious : hasNext;
    hasFar_ = isLeft ? hasNext : hasPrevious;
    keyDragged_ = Turned(isLeft ? impl.LeftPoint(index_) : impl.RightPoint(index_));
    keyOpposite_ = Turned(isLeft ? impl.RightPoint(index_) : impl.LeftPoint(index_));
    if (hasNear_) {
        nearKey_ = Turned(isLeft ? impl.RightPoint(index_ - 1) : impl.LeftPoint(index_ + 1));
    }
    if (hasFar_) {
        farKey_ = Turned(isLeft ? impl.LeftPoint(index_ + 1) : impl.RightPoint(index_ - 1));
    }
    start_ = Current();
    working_ = start_;
}

HvStdTgtMoverImpl::Handles HvStdTgtMoverImpl::Current() const
{
    HvAltDynArray<CFCStdKey> const& keys = curve_.impl_->keys;
    bool const isLeft = side_ != HvBaseFCurve::Right;
    CFCStdKey const& key = keys[index_];
    Handles handles;
    handles.dragged = Turned(isLeft ? key.leftHandle : key.rightHandle);
    handles.opposite = Turned(isLeft ? key.rightHandle : key.leftHandle);
    if (hasNear_) {
        handles.nearHandle =
            Turned(isLeft ? keys[index_ - 1].rightHandle : keys[index_ + 1].leftHandle);
    }
    if (hasFar_) {
        handles.farHandle =
            Turned(isLeft ? keys[index_ + 1].leftHandle : keys[index_ - 1].rightHandle);
    }
    return handles;
}

int HvStdTgtMoverImpl::Update(Point const& handle, int keepContinuity, int keepLengthContinuity,
                              double scale, HvExtent2<double>& invalid)
{
    HvCurveWriter const guard(curve_);
    if (curve_.IsReadOnly()) {
        return 1;
    }
    if (!usable_ || index_ >= curve_.impl_->NumKeys() ||
        curve_.impl_->Parameter(index_) != parameter_) {
        return 0;
    }
    if (firstUpdate_) {
        ClearDerivingConstraints(invalid);
    }
    switch (side_) {
    case HvBaseFCurve::Left:
        return UpdateLeft(handle, keepContinuity, keepLengthContinuity, scale, invalid);
    case HvBaseFCurve::Right:
        return UpdateRight(handle, keepContinuity, keepLengthContinuity, scale, invalid);
    }
    return 0;
}

/// Clears for the first update, also where that refuses then: the shape that the constraints gave
/// is to be drawn anew.
void HvStdTgtMoverImpl::ClearDerivingConstraints(HvExtent2<double>& invalid)
{
    HvStdFCurveImpl& impl = *curve_.impl_;
    unsigned short const word = impl.ConstraintWord(index_);
    HvExtent2<double> extent = invalid;
    impl.ComputeKeyExtent(parameter_, extent);
    impl.SetConstraints(index_, kClearedAtFirstUpdate, false);
    if (impl.ConstraintWord(index_) != word) {
        invalid = extent;
    }
    firstUpdate_ = false;
}

int HvStdTgtMoverImpl::UpdateLeft(Point const& handle, int keepContinuity, int keepLengthContinuity,
                                  double scale, HvExtent2<double>& invalid)
{
    return Drag(handle, {keepContinuity != 0, keepLengthContinuity != 0, scale}, invalid);
}

int HvStdTgtMoverImpl::UpdateRight(Point const& handle, int keepContinuity,
                                   int keepLengthContinuity, double scale,
                                   HvExtent2<double>& invalid)
{
    return Drag(handle, {keepContinuity != 0, keepLengthContinuity != 0, scale}, invalid);
}

int HvStdTgtMoverImpl::Drag(Point const& handle, Wishes const& wishes, HvExtent2<double>& invalid)
{
    HvCurveWriter const guard(curve_);
    Wishes checked = wishes;
    if (!(checked.scale > 0 && HvStdEdit_AreFinite(checked.scale))) {
        checked.scale = 1;
    }
    Handles handles = start_;
    unsigned short const word = curve_.impl_->ConstraintWord(index_);
    if (!FindCandidate(Turned(handle), word, checked.scale, handles.dragged) ||
        !FitNearSegment(handles)) {
        return 0;
    }
    bool const follows = checked.continuity || checked.lengthContinuity;
    if (follows) {
        handles.opposite = FollowingHandle(handles.dragged, checked);
        if (!HvStdEdit_AreFinite(handles.opposite) || !FitFarSegment(handles)) {
            return 0;
        }
    }
    Store(handles, follows, invalid);
    return 1;
}

/// Where the locks of the key let the dragged handle go; false when they hold it, or the point is
/// not finite.
bool HvStdTgtMoverImpl::FindCandidate(Point const& wanted, unsigned short word, double scale,
                                      Point& candidate) const
{
    bool const directionLocked = (word & CFCKeyConstraint::kTangentDirectionLocked) != 0;
    bool const lengthLocked = (word & CFCKeyConstraint::kTangentLengthLocked) != 0;
    Point const& key = keyDragged_;
    Point const start = start_.dragged - key;
    Point const towards = wanted - key;
    if ((directionLocked && lengthLocked) || !HvStdEdit_AreFinite(wanted)) {
        return false;
    }
    if (lengthLocked) {
        // The length that is kept is the one seen in the view.
        double const seen = kHvGeometryTolerance > std::fabs(1 - scale) ? 1 : scale;
        double const length = std::hypot(start.x, seen * start.y);
        double const wantedLength = std::hypot(towards.x, seen * towards.y);
        candidate = wantedLength > 0 ? key + towards * (length / wantedLength) : working_.dragged;
    } else if (!directionLocked) {
        candidate = wanted;
    } else if (HvPoint2_AIsNearB(key, start_.dragged)) {
        // Too short to tell a direction: it stands for a vertical one.
        double const length = HvPoint2_Length(start);
        candidate = Point(key.x, start.y > 0 ? key.y + length : key.y - length);
    } else {
        double const t = Dot(start, towards) / Dot(start, start);
        candidate = key + start * std::max(t, 0.0);
    }
    candidate.x = std::min(candidate.x, key.x);
    return HvStdEdit_AreFinite(candidate);
}

// Validity is asked of the abscissas as they are stored, not of their images: rounding does not
// treat the two alike.

bool HvStdTgtMoverImpl::Rises(double a, double b, double c, double d) const
{
    return sign_ > 0 ? CubicRises(a, b, c, d) : CubicRises(-d, -c, -b, -a);
}

/// The place for the second abscissa of a, b, c, d at which the segment is valid, nearest to b.
bool HvStdTgtMoverImpl::FindSecond(double a, double& b, double c, double d) const
{
    double r0 = 0;
    double r1 = 0;
    if (sign_ > 0) {
        if (!ValidHandleAbscissaFromRight(a, c, d, r0, r1)) {
            return false;
        }
    } else if (!ValidHandleAbscissaFromLeft(-d, -c, -a, r1, r0)) {
        return false;
    }
    b = Nearer(sign_ * r0, sign_ * r1, b);
    return true;
}

/// The same for the third abscissa.
bool HvStdTgtMoverImpl::FindThird(double a, double b, double& c, double d) const
{
    double r0 = 0;
    double r1 = 0;
    if (sign_ > 0) {
        if (!ValidHandleAbscissaFromLeft(a, b, d, r0, r1)) {
            return false;
        }
    } else if (!ValidHandleAbscissaFromRight(-d, -b, -a, r1, r0)) {
        return false;
    }
    c = Nearer(sign_ * r0, sign_ * r1, c);
    return true;
}

/// Makes the segment on the dragged side valid: the neighbour's handle gives way along its line, or
/// else the dragged handle along its own; false when neither serves.
bool HvStdTgtMoverImpl::FitNearSegment(Handles& handles) const
{
    double const a = nearKey_.x;
    double b = handles.nearHandle.x;
    double c = handles.dragged.x;
    double const d = keyDragged_.x;
    if (!hasNear_ || Rises(a, b, c, d)) {
        return true;
    }
    if (b - a >= kHvGeometryTolerance && FindSecond(a, b, c, d)) {
        handles.nearHandle = AtAbscissa(nearKey_, handles.nearHandle, b);
        return true;
    }
    if (d - c >= kHvGeometryTolerance && FindThird(a, b, c, d)) {
        handles.dragged = AtAbscissa(keyDragged_, handles.dragged, c);
        return true;
    }
    return false;
}

/// The same for the other segment, of which the opposite handle has followed the dragged one.
bool HvStdTgtMoverImpl::FitFarSegment(Handles& handles) const
{
    double const a = keyOpposite_.x;
    double b = handles.opposite.x;
    double c = handles.farHandle.x;
    double const d = farKey_.x;
    if (!hasFar_ || Rises(a, b, c, d)) {
        return true;
    }
    if (d - c >= kHvGeometryTolerance && FindThird(a, b, c, d)) {
        handles.farHandle = AtAbscissa(farKey_, handles.farHandle, c);
        return true;
    }
    if (b - a >= kHvGeometryTolerance && FindSecond(a, b, c, d)) {
        handles.opposite = AtAbscissa(keyOpposite_, handles.opposite, b);
        return true;
    }
    return false;
}

/// The direction, as seen in the view, of the opposite handle when the dragged one has this vector.
HvPoint2<double> HvStdTgtMoverImpl::FollowingDirection(Point const& dragged,
                                                       Wishes const& wishes) const
{
    auto const seen = [&wishes](Point const& v) { return Point(v.x, wishes.scale * v.y); };
    Point const startDragged = start_.dragged - keyDragged_;
    Point const startOpposite = start_.opposite - keyOpposite_;
    if (!wishes.continuity && wishes.lengthContinuity) {
        return seen(startOpposite);
    }
    unsigned short const word = curve_.impl_->ConstraintWord(index_);
    if (word & CFCKeyConstraint::kMirroredTangents) {
        return seen(Point(-dragged.x, dragged.y));
    }
    double const cosine = Dot(startDragged, startOpposite) /
                          (HvPoint2_Length(startDragged) * HvPoint2_Length(startOpposite));
    if (!(1 - std::fabs(cosine) >= kCollinearCosine)) {  // a handle of no length has no angle
        return seen(-dragged);
    }

    // The opposite handle turns by the angle that the dragged one has turned by, but not past the
    // vertical.
    Point const from = seen(startDragged);
    Point const to = seen(dragged);
    double const turnCosine = Dot(from, to) / (HvPoint2_Length(from) * HvPoint2_Length(to));
    double const size = std::acos(std::min(1.0, std::max(-1.0, turnCosine)));
    double const turn = from.x * to.y - from.y * to.x < 0 ? -size : size;
    Point const opposite = seen(startOpposite);
    constexpr double kRightAngle = 1.5707963267948966;
    double const angle = std::atan2(opposite.y, opposite.x) + turn;
    if (angle > kRightAngle) {
        return Point(0, 1);
    }
    if (angle < -kRightAngle) {
        return Point(0, -1);
    }
    return Point(std::cos(angle), std::sin(angle));
}

HvPoint2<double> HvStdTgtMoverImpl::FollowingHandle(Point const& dragged,
                                                    Wishes const& wishes) const
{
    Point const vector = dragged - keyDragged_;
    if (kHvGeometryTolerance > std::fabs(vector.x) && kHvGeometryTolerance > std::fabs(vector.y)) {
        return wishes.lengthContinuity ? working_.opposite : start_.opposite;
    }
    auto const seenLength = [&wishes](Point const& v) {
        return std::hypot(v.x, wishes.scale * v.y);
    };
    double const length =
        seenLength(wishes.lengthContinuity ? vector : start_.opposite - keyOpposite_);
    Point const direction = FollowingDirection(vector, wishes);
    double const directionLength = HvPoint2_Length(direction);
    if (!(directionLength > 0)) {
        return keyOpposite_;
    }
    Point const unit = direction * (1 / directionLength);
    Point const handle = keyOpposite_ + Point(unit.x * length, unit.y * length / wishes.scale);
    return Point(std::max(handle.x, keyOpposite_.x), handle.y);
}

void HvStdTgtMoverImpl::CandidateP1FromCandidateQ2(Point& q, double scale, int keepContinuity,
                                                   int keepLengthContinuity, Point* p) const
{
    *p =
        Turned(FollowingHandle(Turned(q), {keepContinuity != 0, keepLengthContinuity != 0, scale}));
}

void HvStdTgtMoverImpl::CandidateQ2FromCandidateP1(Point& q, double scale, int keepContinuity,
                                                   int keepLengthContinuity, Point* p) const
{
    CandidateP1FromCandidateQ2(q, scale, keepContinuity, keepLengthContinuity, p);
}

/// Writes the handles that differ from those in the curve; those of the far side only when the step
/// treats it, otherwise they stay as an earlier step left them.
void HvStdTgtMoverImpl::Store(Handles const& handles, bool farToo, HvExtent2<double>& invalid)
{
    HvStdFCurveImpl& impl = *curve_.impl_;
    Handles const current = Current();
    bool const isLeft = side_ == HvBaseFCurve::Left;
    auto const write = [&](unsigned int i, bool leftHandle, Point const& now, Point const& wanted) {
        if (now == wanted) {
            return;
        }
        if (leftHandle) {
            impl.WriteLeftHandle(i, Turned(wanted));
        } else {
            impl.WriteRightHandle(i, Turned(wanted));
        }
        invalid.Augment(Turned(wanted));
    };

    impl.ComputeKeyExtent(parameter_, invalid);
    write(index_, isLeft, current.dragged, handles.dragged);
    if (hasNear_) {
        write(isLeft ? index_ - 1 : index_ + 1, !isLeft, current.nearHandle, handles.nearHandle);
    }
    if (farToo) {
        write(index_, !isLeft, current.opposite, handles.opposite);
        if (hasFar_) {
            write(isLeft ? index_ + 1 : index_ - 1, isLeft, current.farHandle, handles.farHandle);
        }
    }
    impl.ComputeKeyExtent(parameter_, invalid);
    working_ = Current();
}

HvStdTgtMover::HvStdTgtMover(HvStdFCurve& curve, double x, HvBaseFCurve::KeySide side,
                             double tolerance)
    : impl_(new HvStdTgtMoverImpl(curve, x, side, tolerance))
{
}

HvStdTgtMover::~HvStdTgtMover()
{
    delete impl_;
}

int HvStdTgtMover::Update(HvPoint2<double> const& handle, int keepContinuity,
                          int keepLengthContinuity, double scale, HvExtent2<double>& invalid)
{
    return impl_->Update(handle, keepContinuity, keepLengthContinuity, scale, invalid);
}
