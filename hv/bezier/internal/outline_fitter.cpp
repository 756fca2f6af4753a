// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Smooth chains of cubics along a polyline.
//
// A stretch of k points that is accepted costs k distances; one that is refused costs the samples
// that take part in the least squares, a fixed number. Doubling and halving lead to a stretch with
// at most 2 log k trials, so a polyline of n points costs at most n log n whatever it looks like.

#include <hv/bezier/internal/outline_fitter.h>

#include <hv/bezier/internal/distinct_points.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// For most stretches: it finds whether a cubic would do, and most would not.
constexpr HvFitEffort kTrial = {4, 48, 5.0, 0.95};
/// A free end needs two more points than its handle has unknowns; with fewer, it would follow
/// their noise.
constexpr unsigned int kLeastInnerPointsOfFreeEnd = 3;
/// The end of a stretch is sought to this share of its length: nearer gains no cubic.
constexpr unsigned int kLengthSteps = 16;
/// So many points before the end of a stretch may end it in its place.
constexpr unsigned int kMostPlacesBefore = 7;
/// Runs of more cubics are long enough for their errors to be even already, and those of more
/// points would take too long.
constexpr unsigned int kMostEvenedCubics = 8;
constexpr unsigned int kMostEvenedPoints = 1000;
/// Halvings of the tolerance's range in the search of the smallest one.
constexpr int kEveningRounds = 4;

}  // namespace

HvOutlineFitter::HvOutlineFitter(HvPoint2fArray const& points, bool isClosed,
                                 double cornerCosSquared, double tolerance)
    : points_(HvDistinctPoints_Of(points, isClosed)), lengths_(LengthsOf(points_)),
      isClosed_(isClosed), tolerance_(tolerance),
      directions_(points_, lengths_, isClosed, cornerCosSquared, tolerance),
      fitter_(points_.Data(), lengths_.Data())
{
}

HvDoubleArray HvOutlineFitter::LengthsOf(HvPoint2fArray const& points)
{
    HvDoubleArray lengths(points.Size());
    double length = 0.0;
    lengths.Add(length);
    for (unsigned int i = 1; i < points.Size(); ++i) {
        // Squares of floats neither overflow nor vanish in double.
        length += std::sqrt(HvPoint2_SquaredLengthAB(points[i - 1], points[i]));
        lengths.Add(length);
    }
    return lengths;
}

void HvOutlineFitter::Fit()
{
    cubics_.Chop(0);
    unsigned int const last = points_.Size() - 1;
    if (last == 0) {
        HvPoint2<float> const p = points_[0];
        HvPoint2<float> const collapsed[3] = {p, p, p};
        cubics_.Add(collapsed, 3);
        return;
    }
    HvULongArray corners;
    bool const isSeamCorner = directions_.FindCorners(corners);
    corners.Add(last);
    Run run = {};
    if (isClosed_ && !isSeamCorner) {
        run.ends.hasStart = true;
        run.ends.start = directions_.TangentAtSeam();
    }
    HvFitTangents const seam = run.ends;
    for (unsigned long const corner : corners) {
        run.last = static_cast<unsigned int>(corner);
        if (run.last == last) {
            run.ends.hasEnd = seam.hasStart;
            run.ends.end = seam.start;
        }
        FitRun(run);
        run = {};
        run.first = static_cast<unsigned int>(corner);
    }
}

unsigned int HvOutlineFitter::Draw(HvBezierSink& sink) const
{
    for (unsigned int i = 0; i < cubics_.Size(); i += 3) {
        sink.Curveto(cubics_[i], cubics_[i + 1], cubics_[i + 2]);
    }
    return cubics_.Size();
}

/// Fits within the tolerance, then within the smallest one that takes no more cubics.
void HvOutlineFitter::FitRun(Run const& run)
{
    unsigned int const before = cubics_.Size();
    FitRun(run, tolerance_, std::numeric_limits<unsigned int>::max(), cubics_);
    unsigned int const count = (cubics_.Size() - before) / 3;
    if (count < 2 || count > kMostEvenedCubics || run.last - run.first > kMostEvenedPoints) {
        return;
    }
    double low = 0.0;
    double high = tolerance_;
    for (int round = 0; round < kEveningRounds; ++round) {
        double const middle = low + 0.5 * (high - low);
        trial_.Chop(0);
        if (FitRun(run, middle, count, trial_)) {
            high = middle;
            cubics_.Chop(before);
            cubics_.Add(trial_);
        } else {
            low = middle;
        }
    }
}

/// Appends the cubics of a run; false, with some of them appended, when it takes more than `most`.
bool HvOutlineFitter::FitRun(Run const& run, double tolerance, unsigned int most,
                             HvFittedCubics& cubics)
{
    HvFitTangents start = run.ends;
    unsigned int guess = run.last - run.first;
    unsigned int count = 0;
    for (unsigned int at = run.first; at < run.last; ++count) {
        if (count == most) {
            return false;
        }
        Piece piece;
        unsigned int const length = FindLongest(run, at, start, tolerance, guess, piece);
        cubics.Add(piece.cubic + 1, 3);
        at += length;
        guess = length;
        start.hasStart = true;
        start.start = piece.endTangent;
    }
    return true;
}

/// The number of steps from `at` on that one cubic follows; one step always is.
unsigned int HvOutlineFitter::FindLongest(Run const& run, unsigned int at,
                                          HvFitTangents const& start, double tolerance,
                                          unsigned int guess, Piece& piece)
{
    unsigned int const whole = run.last - at;
    unsigned int good = 0;
    unsigned int bad = whole + 1;
    for (unsigned int length = std::min(guess, whole); length < bad;) {
        if (Try(run, at, JointOf(run, at, length), start, tolerance, piece)) {
            good = length;
            length = length > whole / 2 ? std::max(whole, length + 1) : 2 * length;
        } else {
            bad = length;
            length /= 2;
        }
        if (good != 0 && bad <= whole) {
            break;
        }
    }
    while (bad - good > 1 + good / kLengthSteps) {
        unsigned int const middle = good + (bad - good) / 2;
        (Try(run, at, JointOf(run, at, middle), start, tolerance, piece) ? good : bad) = middle;
    }
    return piece.last - at;
}

/// The end of the stretch of `length` steps from `at` on, or a better place somewhat before.
unsigned int HvOutlineFitter::JointOf(Run const& run, unsigned int at, unsigned int length) const
{
    unsigned int const last = at + length;
    return last == run.last
               ? last
               : directions_.CalmestUpTo(last, last - std::min(kMostPlacesBefore, length / 4));
}

/// Whether one cubic follows the stretch; stores it only then.
bool HvOutlineFitter::Try(Run const& run, unsigned int first, unsigned int last,
                          HvFitTangents const& start, double tolerance, Piece& piece)
{
    HvFitTangents tangents = start;
    tangents.hasEnd = run.ends.hasEnd;
    tangents.end = run.ends.end;
    if (last != run.last) {
        tangents.hasEnd = true;
        tangents.end = directions_.TangentAt(last, run.first, run.last);
    }
    if ((!tangents.hasStart || !tangents.hasEnd) && last - first > kLeastInnerPointsOfFreeEnd &&
        fitter_.Fit(first, last, tangents, tolerance, kTrial) &&
        Accept(first, last, tangents.end, tolerance, piece)) {
        return true;
    }
    // A run is one cubic when it was drawn as one, whatever its pace was. What one cubic did not
    // follow within the tolerance it does not within less.
    bool const isWholeRun = first == run.first && last == run.last && !(tolerance < tolerance_);
    bool const mayBeOne = isWholeRun && !tangents.hasStart && !tangents.hasEnd;
    if (!tangents.hasStart) {
        tangents.hasStart = true;
        tangents.start = directions_.TangentAt(first, first, last);
    }
    if (!tangents.hasEnd) {
        tangents.hasEnd = true;
        tangents.end = directions_.TangentAt(last, first, last);
    }
    bool const isStep = last - first == 1;
    return ((fitter_.Fit(first, last, tangents, tolerance, kTrial) || isStep) &&
            Accept(first, last, tangents.end, tolerance, piece)) ||
           (mayBeOne && fitter_.FitAtAnyPace(first, last, tolerance) &&
            Accept(first, last, tangents.end, tolerance, piece));
}

/// Takes the last fit if it follows the stretch, as that of one step does.
bool HvOutlineFitter::Accept(unsigned int first, unsigned int last,
                             HvPoint2<double> const& endTangent, double tolerance, Piece& piece)
{
    if (last - first > 1 && !fitter_.Follows(first, last, tolerance)) {
        return false;
    }
    std::copy_n(fitter_.Cubic(), 4, piece.cubic);
    piece.endTangent = endTangent;
    piece.last = last;
    return true;
}
