// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a stretch of a curve's region does to which keys, settled when the drag begins.

#ifndef HV_FCURVE_INTERNAL_STRETCH_PLAN_H
#define HV_FCURVE_INTERNAL_STRETCH_PLAN_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/internal/stretch_limiter.h>
#include <hv/foundation/HvAltDynArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2.h>

class HvDoubleArray;

/// What the host asks for.
struct HvStretchRequest {
    HvExtent2<double> region;
    HvExtent2<double> limits;  ///< limits nothing unless its state is 0
    HvPoint2<double> pivot;
    HvBaseFCurve::RegionHandle handle;
    bool ripple;
    double minimalScale;

    bool IsHorizontal() const
    {
        return handle == HvBaseFCurve::LeftHandle || handle == HvBaseFCurve::RightHandle;
    }
};

/// Which parts of a key may change.
enum HvStretchLock : unsigned char {
    HvStretchFree = 1,
    HvStretchParameterLocked = 4,
    HvStretchValueLocked = 5,
    HvStretchBothLocked = 6
};

/// Which parts of a key lie in the region.
enum HvStretchPart : unsigned char {
    HvStretchInside = 1,
    HvStretchLeftInside = 2,   ///< the left value alone
    HvStretchRightInside = 3,  ///< the right value alone
    HvStretchOutside = 4       ///< moved by ripple only
};

/// A key of the run that a stretch concerns, as it was at the start, and the weights of what the
/// stretch moves (see HvStretchLimiter); 0 is what stays.
struct HvStretchKey {
    double parameter;
    double leftValue;  ///< the right value on kinds whose keys have one value
    double rightValue;
    double weight;      ///< of the parameter, or of the right value in a vertical stretch
    double leftWeight;  ///< of the left value in a vertical stretch
    HvStretchLock lock;
    HvStretchPart part;

    /// Whether the key's locks let its parameter change, or in a vertical stretch its values.
    bool IsFree(bool horizontal) const
    {
        return lock == HvStretchFree ||
               lock == (horizontal ? HvStretchValueLocked : HvStretchParameterLocked);
    }
    bool IsLeftInside() const { return part == HvStretchInside || part == HvStretchLeftInside; }
    bool IsRightInside() const { return part == HvStretchInside || part == HvStretchRightInside; }
};

/// The run of keys that a stretch concerns, what it does to each and how far it may go. Read once,
/// through the contract of the curve, so that it serves every kind; the curve's locks are the
/// caller's. The weights, and with them the set of the keys that move, never change in a drag.
class HvStretchPlan {
public:
    using Step = HvStretchLimiter::Step;
    /// A coordinate nearer than this to another counts as the same: a key of the host's list, the
    /// pivot on an edge.
    static constexpr double kSameTolerance = 1e-7;

    /// @param listed  parameters of keys that are in the region wherever they stand.
    HvStretchPlan(HvBaseFCurve const& curve, HvStretchRequest const& request,
                  HvDoubleArray const& listed);

    /// Whether there is anything to stretch: an ordinary region with a key, exactly one handle,
    /// edges and pivot that are finite on its axis, and a key of the run that is not locked whole.
    bool IsUsable() const { return usable_; }
    bool IsHorizontal() const { return request_.IsHorizontal(); }
    HvExtent2<double> const& Region() const { return request_.region; }
    /// Index in the curve of the first key of the run.
    unsigned int First() const { return first_; }
    HvAltDynArray<HvStretchKey> const& Keys() const { return keys_; }

    /// How far a drag by `amount`, which is not NaN, really goes.
    Step Limit(double amount) const { return limiter_.Limit(amount); }
    /// Where a coordinate stands after a step: exactly where it was for a weight or a share of 0.
    static double Target(double start, double weight, double share)
    {
        return weight == 0 || share == 0 ? start : start + share * weight;
    }
    /// The region after a step.
    HvExtent2<double> Stretched(double share) const;

private:
    /// An edge of the region on the axis of the handle.
    struct Edge {
        double position;
        double weight;
    };

    Edge const& Near() const { return nearIsLow_ ? low_ : high_; }
    Edge const& Far() const { return nearIsLow_ ? high_ : low_; }
    bool FindRun(HvBaseFCurve const& curve, HvDoubleArray const& listed, unsigned int& count);
    void ReadKeys(HvBaseFCurve const& curve, HvDoubleArray const& listed, unsigned int count);
    HvStretchPart PartInRegion(HvStretchKey const& key) const;
    void SetWeights(HvStretchKey& key);
    double TakeRippleWeight(double v);
    bool IsFixed(HvStretchKey const& key) const;
    void LimitKeys();
    void LimitBetweenFixedKeys(double before, double after);
    void LimitEdges(double before, double after);

    HvStretchRequest request_;
    bool hasTwoValues_;  ///< whether a key's left value is its own
    bool nearIsLow_;
    double pivot_;  ///< on the axis of the handle
    Edge low_;
    Edge high_;
    HvStretchLimiter limiter_;
    bool usable_ = false;
    bool ripples_ = false;  ///< whether anything follows as a whole
    unsigned int first_ = 0;
    HvAltDynArray<HvStretchKey> keys_{1};
};

#endif
