// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path on the unit quaternion sphere that a quaternion curve interpolates its keys with.

#ifndef HV_ROTATION_HVQUATSPLINE_H
#define HV_ROTATION_HVQUATSPLINE_H

#include <hv/foundation/HvMemory.h>
#include <hv/platform/HvExport.h>
#include <hv/rotation/HvQuat.h>
#include <hv/rotation/HvQuatKey.h>

/// A path on the unit quaternion sphere through the rotations of a row of keys.
///
/// Each segment is a product of exponentials, with cumulative cubic weights b1, b2, b3 of the local
/// parameter u:
///
///     q(u) = q0 * exp(b1 w1) * exp(b2 w2) * exp(b3 w3)
///
/// w1 and w3 are a third of the tangents at its ends, which follow from the logarithms of the
/// rotations between neighbouring keys by the rule of tension, continuity and bias; w2 is what
/// leads to the segment's end. The sign of each quaternion is chosen by its predecessor's, so the
/// path takes the short way. Beyond the first and the last key stands one key more that continues
/// the rotation: two keys give a constant angular velocity.
///
/// Key times are expected to rise strictly. If they do not, evaluation still ends and stays in
/// bounds, but its numbers mean little and may be NaN; so they are with angles that are not finite.
///
/// Threads: a const spline may be read by any number of threads. No evaluation allocates.
/// Sources: M. Kim, M. Kim, S. Shin, "A general construction scheme for unit quaternion curves with
/// simple high order derivatives", 1995 (the product); D. Kochanek, R. Bartels, "Interpolating
/// splines with local tension, continuity, and bias control", 1984 (the tangents).
class HV_API HvQuatSpline : public HvAllocated {
public:
    /// What the path does outside its keys; the numbers of the curves' extrapolation methods.
    /// Stored in files: never renumber.
    enum ExtrapolationMethod : unsigned int {
        ConstantExtrapolation = 1,  ///< hold the end's rotation
        LinearExtrapolation = 2,    ///< turn on with the end's velocity
        CycleExtrapolation = 3,     ///< repeat the path
        RelativeCycleExtrapolation =
            4  ///< repeat the path, each time from where the last one ended
    };

    /// The path between two keys. `w` of the three vectors plays no part.
    struct HV_API Segment {
        HvQuat q0;                 ///< where it starts
        HvQuat w1;                 ///< a third of the tangent that leaves the start
        HvQuat w3;                 ///< a third of the tangent that arrives at the end
        HvQuat q1;                 ///< where it ends, but for the sign that spins may bring
        HvQuat w2;                 ///< leads to the end, spins included
        double startTime = 0;      ///< time of the first key
        double endTime = 0;        ///< time of the second key
        double inverseLength = 0;  ///< 1 / (endTime - startTime)

        /// The quaternion at the local parameter `u`, 0 at the start and 1 at the end. Of unit
        /// length but for rounding; not normalized.
        HvQuat Eval(double u) const;
    };

    /// Makes numKeys - 1 segments through `keys`, whose angles act in `order`; none when `numKeys`
    /// is below 2. `extrapolation` is what Eval does outside the keys: any number that is no
    /// ExtrapolationMethod holds the end's rotation.
    HvQuatSpline(int numKeys, HvQuatKey const* keys, HvQuat::RotOrder order,
                 unsigned int extrapolation);
    /// Copies the segments.
    HvQuatSpline(HvQuatSpline const& other);
    /// Copies the segments; without memory the spline stays as it was.
    HvQuatSpline& operator=(HvQuatSpline const& other);
    ~HvQuatSpline();

    /// Number of segments, one less than keys; 0 for fewer than two keys.
    int GetNumSegments() const { return numSegments_; }
    /// A segment by its index, which is not checked.
    Segment const& GetSegment(int i) const { return segments_[i]; }
    /// Bytes held outside the object: the segments.
    unsigned long GetDynamicMemSize() const;

    /// What Eval does outside the keys.
    unsigned int GetExtrapolationMethod() const { return extrapolationMethod_; }
    /// Sets what Eval does outside the keys; the segments do not depend on it.
    void SetExtrapolationMethod(unsigned int method) { extrapolationMethod_ = method; }

    /// The quaternion at the time `t`; the identity without segments.
    ///
    /// At a key it is the key's rotation. Inside it is of unit length but for rounding, and is not
    /// normalized; turned on linearly from a slow end, at less than 1.6 degrees a segment, it is
    /// the point of a straight line and grows with the distance. NaN gives NaN, and so does an
    /// infinite time where the end is not held.
    /// Cost: O(log keys), about one step where keys are evenly spaced; O(keys) when their times do
    /// not rise. All numbers of cycles cost the same.
    HvQuat Eval(double t) const;

    /// Finds the segment that serves the time `t`: the first that ends after it.
    ///
    /// @param u  set to the local parameter; left alone when `t` is not after the first start, 1
    ///           when it is not before the last end.
    /// @return   index of the segment: 0 not after the first start, the last one not before the
    ///           last end, and for NaN; 0 without segments.
    int GetEvalInterval(double t, double& u) const;

    /// Eval and GetEvalInterval in one search.
    ///
    /// @param u  the local parameter of GetEvalInterval, 0 where that leaves it alone.
    HvQuat EvalWithInterval(double t, int& segment, double& u) const;

private:
    int FindSegment(double t) const;
    HvQuat EvalOnPath(double t) const;
    HvQuat EvalBefore(double t) const;
    HvQuat EvalAfter(double t) const;

    int numSegments_;
    Segment* segments_;
    unsigned int extrapolationMethod_;
    bool isAscending_;  ///< all ends rise strictly, so a search may bisect
};

/// The path of HvQuatSpline::Segment in one call.
///
/// @param q0        where it starts.
/// @param delta     the rotation from start to end: conj(start) * end.
/// @param tangent0  the vector part is the tangent that leaves the start, a quaternion logarithm.
/// @param tangent1  the same that arrives at the end.
/// @param u         local parameter, 0 at the start and 1 at the end.
/// @param spins     turns by a whole circle to add on the way, about the axis of w2.
HV_API HvQuat Hermite(HvQuat const& q0, HvQuat const& delta, HvQuat const& tangent0,
                      HvQuat const& tangent1, double u, int spins);

#endif
