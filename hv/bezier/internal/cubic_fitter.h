// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One cubic through the ends of a stretch of points, near all of them.

#ifndef HV_BEZIER_INTERNAL_CUBIC_FITTER_H
#define HV_BEZIER_INTERNAL_CUBIC_FITTER_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvULongArray.h>

/// The directions in which a curve leaves its start and reaches its end, along the walk. An end
/// without one is free. A direction that is zero or not finite collapses its handle.
struct HvFitTangents {
    bool hasStart = false;
    bool hasEnd = false;
    HvPoint2<double> start;
    HvPoint2<double> end;
};

/// How much a fit may cost.
struct HvFitEffort {
    /// Rounds in which the parameters are moved to the feet of the points and all is solved anew.
    unsigned int rounds;
    /// Points that take part in the least squares, evenly chosen where there are more.
    unsigned int mostSamples;
    /// Gives up at once where the first solution misses a point by more than this many tolerances.
    double hopelessErrors;
    /// Gives up after a round that leaves more than this share of the sum of squared distances.
    double worthwhileShare;
};

/// Fits single cubics to stretches of points by least squares over the handles; P. Schneider, "An
/// algorithm for automatically fitting digitized curves", Graphics Gems, 1990, with free handles
/// besides those of given direction. The points and parameters are borrowed.
class HvCubicFitter {
public:
    HvCubicFitter(HvPoint2<float> const* points, double const* parameters)
        : points_(points), parameters_(parameters)
    {
    }

    /// Fits the points `first` to `last`, `first` < `last`. True when all points that took part are
    /// within `tolerance` of their feet on the curve, whose controls are rounded already.
    bool Fit(unsigned int first, unsigned int last, HvFitTangents const& tangents, double tolerance,
             HvFitEffort const& effort);

    /// The same with free ends, for points that one cubic follows, but at a pace that is far from
    /// even: near a cusp, around a loop. Finds the pace along with the handles. Costs a few hundred
    /// steps for each of at most 128 points; at once false where the points turn more than a cubic.
    bool FitAtAnyPace(unsigned int first, unsigned int last, double tolerance);

    /// After a fit that succeeded: whether the curve is within `tolerance` of every point between
    /// the two, and between neighbouring points stays near the step from one to the other.
    bool Follows(unsigned int first, unsigned int last, double tolerance);

    /// The four control points of the last fit; the ends are the points themselves.
    HvPoint2<float> const* Cubic() const { return cubic_; }
    /// The point of the last fit that was farthest from its foot, strictly between its ends
    /// if there is one between.
    unsigned int Worst() const { return worst_; }

private:
    struct Handles {
        HvPoint2<double> start;
        HvPoint2<double> end;
    };

    /// The points between the ends that take part in the least squares, with their numbers, their
    /// places on the curve and their squared distances from there, both before and after a step.
    /// The arrays only grow.
    struct Samples {
        unsigned int count = 0;
        HvULongArray at;
        HvDoubleArray x;
        HvDoubleArray y;
        HvDoubleArray places;
        HvDoubleArray squares;
        HvDoubleArray nextPlaces;
        HvDoubleArray nextSquares;
    };

    /// The points between two neighbouring samples, or the ends, and the places of these.
    struct Stretch {
        unsigned int from;
        unsigned int to;
        double fromPlace;
        double toPlace;
    };

    void ChooseSamples(unsigned int first, unsigned int last, unsigned int most);
    bool Solve(HvFitTangents const& tangents, Handles& handles) const;
    bool SolveAcross(HvFitTangents const& tangents, Handles& handles) const;
    Handles ThirdsOfChord(HvFitTangents const& tangents) const;
    void SetHandles(Handles const& handles);
    double MoveToFeet(double tolerance, double hopeless, double& sumOfSquares);
    bool TurnsLikeACubic(double tolerance) const;
    void StartByBend();
    void StartEvenly();
    void ScalePlaces(double whole);
    HvPoint2<double> SampleOrEnd(unsigned int k) const;
    bool Improve(double tolerance, Handles& handles);
    bool Step(Handles const& handles, double damping, Handles& next);
    double SquaresAt(HvDoubleArray const& places, double& greatest) const;
    void SetCurve(Handles const& handles);
    void StepToFeet();
    double MoveToFoot(HvPoint2<double> const& p, double tolerance, double& u) const;
    HvPoint2<double> At(double u) const
    {
        return start_ + (coefficients_[0] + (coefficients_[1] + coefficients_[2] * u) * u) * u;
    }
    double PlaceRate(Stretch const& stretch) const;
    bool FollowsAtOnce(Stretch const& stretch, double tolerance) const;
    bool FollowsStepByStep(Stretch const& stretch, double tolerance) const;
    bool StaysNear(HvPoint2<double> const& a, HvPoint2<double> const& b, double from, double to,
                   double tolerance) const;

    HvPoint2<float> const* points_;
    double const* parameters_;
    Samples samples_;
    unsigned int first_ = 0;
    unsigned int last_ = 0;
    HvPoint2<float> cubic_[4];
    // The curve as a polynomial around its start: start + c[0] u + c[1] u^2 + c[2] u^3.
    HvPoint2<double> start_;
    HvPoint2<double> coefficients_[3];
    unsigned int worst_ = 0;
};

#endif
