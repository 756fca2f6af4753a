// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How far a stretch of a curve may go: the limits of all its coordinates in one interval.

#ifndef HV_FCURVE_INTERNAL_STRETCH_LIMITER_H
#define HV_FCURVE_INTERNAL_STRETCH_LIMITER_H

/// A stretch about a pivot by the scale s moves each coordinate v of the curve along a line: it
/// stands at v + (1 - s) * w, where the weight w is what s = 0 would add. Keys that scale have
/// w = pivot - v, keys that follow the dragged side as a whole have the weight of that side, and
/// keys that stay have 0. With the share u = 1 - s every limit of a coordinate is therefore an
/// interval of u that holds 0, the start; all that has to be kept of any number of limits is what
/// they have in common.
class HvStretchLimiter {
public:
    /// What one step of the drag comes to.
    struct Step {
        double scale = 1;
        double share = 0;      ///< 1 - scale, and exactly 0 for a drag by 0
        double amount = 0;     ///< by how much the side moves
        bool limited = false;  ///< whether a limit has shortened the drag; the least scale does not
    };

    /// A stretch that moves `side` about `pivot`. `minimalScale` is what no scale is nearer to 0
    /// than; it counts within [0, 1], NaN as 0, and is at least 0.001.
    HvStretchLimiter(double pivot, double side, double minimalScale);

    /// Whether the side is far enough from the pivot to give a scale.
    bool HasScale() const;

    /// Keeps what starts at `start` and has this weight within [low, high]. A start beyond a limit
    /// may not go further beyond, but is not drawn in. A limit that is NaN limits nothing.
    void Keep(double start, double weight, double low, double high);
    /// Keeps the scale at the least one or above, so that nothing turns round.
    void ForbidFlip();

    /// The step for a drag of the side by `amount`, which is not NaN. Cost: constant.
    Step Limit(double amount) const;

private:
    double pivot_;
    double side_;
    double leastScale_;
    double lowest_;   ///< of the share
    double highest_;  ///< of the share
};

#endif
