// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvQuatSpline: making the segments.

#include <hv/foundation/raw_elements.h>
#include <hv/rotation/HvQuatSpline.h>
#include <hv/rotation/internal/quat_exp.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr double kThird = 0.3333333333333333;

/// Zero-filled segments made ready; null for none.
HvQuatSpline::Segment* MakeSegments(int count)
{
    if (count <= 0) {
        return nullptr;
    }
    auto const n = static_cast<unsigned int>(count);
    auto* const segments = HvElements_Allocate<HvQuatSpline::Segment>(n);
    std::uninitialized_value_construct_n(segments, n);
    return segments;
}

/// `q` or its negative, whichever lies on the side of `neighbour`: the same rotation, reached the
/// short way.
HvQuat OnSideOf(HvQuat const& neighbour, HvQuat const& q)
{
    return HvQuat_Dot(q, neighbour) < 0.0 ? HvQuat(-q.w, -q.x, -q.y, -q.z) : q;
}

/// The rotation of the key that stands beyond the last one, `b`, as far from it as `a` is before:
/// the slerp from `a` to `b` at 2. With h the angle between them its weights are sin(-h) / sin h =
/// -1 and sin(2h) / sin h = 2 cos h, so it is the reflection of `a` in `b`. As every key it has
/// three angles, and through these it goes.
HvQuat RotationBeyond(HvQuat const& a, HvQuat const& b, HvQuat::RotOrder order)
{
    HvPoint3<double> angles;
    HvQuat_Combine(-1.0, a, 2.0 * HvQuat_Dot(a, b), b).Get(angles, order);
    return HvQuat(angles, order);
}

/// The logarithm of the rotation from `a` to `b`.
HvPoint3<double> LogBetween(HvQuat const& a, HvQuat const& b)
{
    return HvQuat_Log(a.Conjugate() * b);
}

/// How much of the tangent at a key is the logarithm before it and how much the one after it.
struct TangentWeights {
    double before;
    double after;
};

/// `length` is that of the interval beside the key that takes part, `span` that of both intervals
/// around the key at the segment's start. A key with spins the other way turns its tangent round.
double TangentScale(HvQuatKey const& key, double length, double span)
{
    double const sign = key.spins < 0 ? -1.0 : 1.0;
    return 2.0 * length / span * sign * 0.5 * (1.0 - static_cast<double>(key.tension));
}

/// Weights of the tangent that leaves the key at a segment's start.
TangentWeights WeightsAtStart(HvQuatKey const& start, double lengthBefore, double span)
{
    double const bias = start.bias;
    double const continuity = start.continuity;
    double const k = TangentScale(start, lengthBefore, span);
    return {(1.0 + bias) * k * (1.0 + continuity), (1.0 - bias) * k * (1.0 - continuity)};
}

/// Weights of the tangent that arrives at the key at its end. The span is that around the start,
/// and the second weight has the continuity of the start: on purpose, saved animations have always
/// moved so.
TangentWeights WeightsAtEnd(HvQuatKey const& start, HvQuatKey const& end, double length,
                            double span)
{
    double const bias = end.bias;
    double const k = TangentScale(end, length, span);
    return {(1.0 + bias) * k * (1.0 - static_cast<double>(end.continuity)),
            (1.0 - bias) * k * (1.0 + static_cast<double>(start.continuity))};
}

/// The vector that leads from exp(w1) to delta * exp(-w3), with `spins` half turns on the sphere
/// added along its direction. One too short to have a direction takes them on in `w`, where they
/// play no part.
HvQuat MiddleVector(HvPoint3<double> const& w1, HvQuat const& delta, HvPoint3<double> const& w3,
                    int spins)
{
    HvQuat const vector = HvQuat_FromVector(HvQuat_Log(HvQuat_Exp(-w1) * delta * HvQuat_Exp(-w3)));
    if (spins == 0) {
        return vector;
    }
    HvQuat direction = vector;
    direction.Normalize();
    return HvQuat_Combine(1.0, vector, spins * kQuatPi, direction);
}

HvQuat EvalProduct(HvQuat const& q0, HvPoint3<double> const& w1, HvPoint3<double> const& w2,
                   HvPoint3<double> const& w3, double u)
{
    double const v = 1.0 - u;
    double const b1 = 1.0 - v * v * v;
    double const b2 = 3.0 * u * u - 2.0 * u * u * u;
    double const b3 = u * u * u;
    return q0 * HvQuat_Exp(w1 * b1) * HvQuat_Exp(w2 * b2) * HvQuat_Exp(w3 * b3);
}

}  // namespace

HvQuat HvQuatSpline::Segment::Eval(double u) const
{
    return EvalProduct(q0, HvQuat_Vector(w1), HvQuat_Vector(w2), HvQuat_Vector(w3), u);
}

HvQuat Hermite(HvQuat const& q0, HvQuat const& delta, HvQuat const& tangent0,
               HvQuat const& tangent1, double u, int spins)
{
    HvPoint3<double> const w1 = HvQuat_Vector(tangent0) * kThird;
    HvPoint3<double> const w3 = HvQuat_Vector(tangent1) * kThird;
    return EvalProduct(q0, w1, HvQuat_Vector(MiddleVector(w1, delta, w3, spins)), w3, u);
}

// Segment i runs from key b to key c; a and d are the keys beside them.
HvQuatSpline::HvQuatSpline(int numKeys, HvQuatKey const* keys, HvQuat::RotOrder order,
                           unsigned int extrapolation)
    : numSegments_(std::max(numKeys, 1) - 1), segments_(MakeSegments(numSegments_)),
      extrapolationMethod_(extrapolation), isAscending_(true)
{
    if (numSegments_ == 0) {
        return;
    }
    HvQuat qb(keys[0].angles, order);
    HvQuat qc = OnSideOf(qb, HvQuat(keys[1].angles, order));
    HvQuat const qa = OnSideOf(qb, RotationBeyond(qc, qb, order));
    double timeA = 2.0 * keys[0].time - keys[1].time;
    HvPoint3<double> logAB = LogBetween(qa, qb);
    HvPoint3<double> logBC = LogBetween(qb, qc);
    for (int i = 0; i < numSegments_; ++i) {
        HvQuatKey const& b = keys[i];
        HvQuatKey const& c = keys[i + 1];
        HvQuat const qd = OnSideOf(qc, i + 2 < numKeys ? HvQuat(keys[i + 2].angles, order)
                                                       : RotationBeyond(qb, qc, order));
        HvPoint3<double> const logCD = LogBetween(qc, qd);
        TangentWeights const start = WeightsAtStart(b, b.time - timeA, c.time - timeA);
        TangentWeights const end = WeightsAtEnd(b, c, c.time - b.time, c.time - timeA);
        HvPoint3<double> const w1 = (logAB * start.before + logBC * start.after) * kThird;
        HvPoint3<double> const w3 = (logBC * end.before + logCD * end.after) * kThird;

        Segment& segment = segments_[i];
        segment.q0 = qb;
        segment.q1 = qc;
        segment.w1 = HvQuat_FromVector(w1);
        segment.w2 = MiddleVector(w1, qb.Conjugate() * qc, w3, b.spins);
        segment.w3 = HvQuat_FromVector(w3);
        segment.startTime = b.time;
        segment.endTime = c.time;
        segment.inverseLength = 1.0 / (c.time - b.time);
        isAscending_ = isAscending_ && b.time < c.time;

        timeA = b.time;
        qb = qc;
        qc = qd;
        logAB = logBC;
        logBC = logCD;
    }
}

HvQuatSpline::HvQuatSpline(HvQuatSpline const& other)
    : numSegments_(other.numSegments_), segments_(MakeSegments(numSegments_)),
      extrapolationMethod_(other.extrapolationMethod_), isAscending_(other.isAscending_)
{
    std::copy_n(other.segments_, numSegments_, segments_);
}

HvQuatSpline& HvQuatSpline::operator=(HvQuatSpline const& other)
{
    HvQuatSpline copy(other);
    std::swap(numSegments_, copy.numSegments_);
    std::swap(segments_, copy.segments_);
    std::swap(extrapolationMethod_, copy.extrapolationMethod_);
    std::swap(isAscending_, copy.isAscending_);
    return *this;
}

HvQuatSpline::~HvQuatSpline()
{
    HvFree(segments_);
    segments_ = nullptr;
}

unsigned long HvQuatSpline::GetDynamicMemSize() const
{
    return static_cast<unsigned long>(numSegments_) * sizeof(Segment);
}
