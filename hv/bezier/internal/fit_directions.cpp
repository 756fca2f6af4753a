// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where a polyline turns a corner, and which way it goes elsewhere, in spite of noise.

#include <hv/bezier/internal/fit_directions.h>

#include <algorithm>
#include <cmath>

namespace {

/// Over how many tolerances directions are taken. Noise of 0.3 tolerances then turns them by about
/// 6 degrees, far from what counts as a corner; a larger reach would take tight bends for corners.
constexpr double kReachTolerances = 4.0;
/// Corners nearer than half the reach are one; the square of the half.
constexpr double kSameCornerShare = 0.25;
/// Points on one side of a place that take part in a direction; more would say little more.
constexpr std::int64_t kMostPoints = 32;
/// How far apart, as a factor, the squares of a chord and of the reach may be for the chord to
/// count as one of the reach.
constexpr double kAboutReachShare = 1.5;
/// Points that are looked at together for a corner; more would less often fit within the reach.
constexpr std::int64_t kGroup = 4;
/// Below this share of its greatest possible value a determinant means that the bend is not known.
constexpr double kDegenerateShare = 1e-9;

using Vector = HvPoint2<double>;

Vector Unit(Vector const& v)
{
    // Of differences of floats neither squares nor sums overflow or vanish.
    double const length = std::sqrt(HvPoint2_AdotB(v, v));
    return length > 0.0 ? v * (1.0 / length) : Vector();
}

/// Whether a turn from `a` to `b` has a negative cosine, or one whose square is below the limit.
bool IsTurn(double dot, double squaredA, double squaredB, double cosSquared)
{
    return dot < 0.0 || dot * dot < cosSquared * squaredA * squaredB;
}

bool IsTurn(Vector const& a, Vector const& b, double cosSquared)
{
    return IsTurn(HvPoint2_AdotB(a, b), HvPoint2_AdotB(a, a), HvPoint2_AdotB(b, b), cosSquared);
}

}  // namespace

HvFitDirections::HvFitDirections(HvPoint2fArray const& points, HvDoubleArray const& lengths,
                                 bool isClosed, double cornerCosSquared, double tolerance)
    : points_(points), lengths_(lengths), isClosed_(isClosed),
      steps_(std::int64_t{points.Size()} - 1), cornerCosSquared_(cornerCosSquared),
      squaredReach_(kReachTolerances * tolerance * kReachTolerances * tolerance)
{
}

/// The points of a closed polyline go on for ever in both directions.
Vector HvFitDirections::Point(std::int64_t i) const
{
    std::int64_t const k = i < 0 ? i + steps_ : i > steps_ ? i - steps_ : i;
    return Vector(points_[static_cast<unsigned int>(k)]);
}

double HvFitDirections::Length(std::int64_t i) const
{
    double const total = lengths_[static_cast<unsigned int>(steps_)];
    return i < 0        ? lengths_[static_cast<unsigned int>(i + steps_)] - total
           : i > steps_ ? lengths_[static_cast<unsigned int>(i - steps_)] + total
                        : lengths_[static_cast<unsigned int>(i)];
}

bool HvFitDirections::FindCorners(HvULongArray& corners) const
{
    Candidates candidates(1);
    std::int64_t const half = std::max<std::int64_t>(steps_ / 2, 1);
    Reach reach;
    for (std::int64_t i = 1; i < steps_; ++i) {
        if (i % kGroup == 0 && IsGroupWithoutTurn(i, reach)) {
            i += kGroup - 1;
            continue;
        }
        Vector const here = Point(i);
        if (IsTurn(here - Point(i - 1), Point(i + 1) - here, cornerCosSquared_)) {
            std::int64_t const from = isClosed_ ? i - half : 0;
            std::int64_t const to = isClosed_ ? i + half : steps_;
            double const sharpness = Sharpness(i, from, to, reach);
            if (sharpness > 0.0) {
                candidates.Add({i, from, to, sharpness, Candidate::Open});
            }
        }
    }
    // The ends are cuts in any case, and so is a seam in a corner: they take the corners around.
    bool const isSeamCorner =
        isClosed_ && IsTurn(Point(0) - Point(-1), Point(1) - Point(0), cornerCosSquared_) &&
        Sharpness(0, -half, half, reach) > 0.0;
    if (isSeamCorner || !isClosed_) {
        TakeAround(candidates, -1, 1, 0);
        TakeAround(candidates, candidates.Count(), -1, steps_);
    }
    HvAltDynArray<unsigned int> order(std::max(candidates.Count(), 1u));
    for (unsigned int k = 0; k < candidates.Count(); ++k) {
        order.Add(k);
    }
    std::sort(order.begin(), order.end(), [&](unsigned int a, unsigned int b) {
        double const sharpnessA = candidates[a].sharpness;
        double const sharpnessB = candidates[b].sharpness;
        return sharpnessA != sharpnessB ? sharpnessA > sharpnessB : a < b;
    });
    for (unsigned int const k : order) {
        Candidate& candidate = candidates[k];
        if (candidate.state == Candidate::Clipped &&
            Sharpness(candidate.at, candidate.from, candidate.to, reach) == 0.0) {
            candidate.state = Candidate::Dropped;
        }
        if (candidate.state != Candidate::Dropped) {
            candidate.state = Candidate::Taken;
            TakeAround(candidates, k, -1, candidate.at);
            TakeAround(candidates, k, 1, candidate.at);
        }
    }
    for (Candidate const& candidate : candidates) {
        if (candidate.state == Candidate::Taken) {
            corners.Add(static_cast<unsigned long>(candidate.at));
        }
    }
    return isSeamCorner;
}

/// Drops the candidates on one side of a corner that are the same, and lets others within its reach
/// look no farther than the corner, where the polyline will be cut. Corners that are taken are
/// apart by half the reach, so a candidate is looked at for a few dozens of them at most.
void HvFitDirections::TakeAround(Candidates& candidates, std::int64_t k, std::int64_t direction,
                                 std::int64_t corner) const
{
    std::int64_t const count = candidates.Count();
    for (std::int64_t j = k + direction; j >= 0 && j < count; j += direction) {
        Candidate& other = candidates[static_cast<unsigned int>(j)];
        double const squared = HvPoint2_SquaredLengthAB(Point(other.at), Point(corner));
        if (other.state == Candidate::Taken || squared >= squaredReach_) {
            return;
        }
        if (squared < kSameCornerShare * squaredReach_) {
            other.state = Candidate::Dropped;
        } else if (other.state != Candidate::Dropped) {
            other.state = Candidate::Clipped;
            (direction > 0 ? other.from : other.to) = corner;
        }
    }
}

bool HvFitDirections::IsAboutReach(Vector const& chord) const
{
    double const squared = HvPoint2_AdotB(chord, chord);
    return squared * kAboutReachShare >= squaredReach_ &&
           squared <= kAboutReachShare * squaredReach_;
}

bool HvFitDirections::IsClearlyNoTurn(Vector const& before, Vector const& after) const
{
    return !IsTurn(before, after, 0.5 * (1.0 + cornerCosSquared_));
}

/// Whether chords on both sides show that there is no corner at `first` and the points after it,
/// which are so close together that no other sides would fit between them. Makes the steps of the
/// chords those of the reach around.
bool HvFitDirections::IsGroupWithoutTurn(std::int64_t first, Reach& reach) const
{
    std::int64_t const last = first + kGroup - 1;
    std::int64_t const from = first - reach.before;
    std::int64_t const to = last + reach.after;
    if (from < 0 || to > steps_) {
        return false;
    }
    double const length = Length(last) - Length(first);
    if (!(length * length <= kSameCornerShare * squaredReach_)) {
        return false;
    }
    Vector const before = Point(first) - Point(from);
    Vector const after = Point(to) - Point(last);
    bool const isBefore = IsAboutReach(before);
    bool const isAfter = IsAboutReach(after);
    if (!isBefore) {
        reach.before += HvPoint2_AdotB(before, before) < squaredReach_ ? 1 : -1;
    }
    if (!isAfter) {
        reach.after += HvPoint2_AdotB(after, after) < squaredReach_ ? 1 : -1;
    }
    return isBefore && isAfter && IsClearlyNoTurn(before, after);
}

/// How sharply the polyline turns between straight sides, above 0, up to 2 for a reversal; 0 where
/// it turns no corner: where the two steps, which turn one, are short, the directions around them
/// must turn one too.
double HvFitDirections::Sharpness(std::int64_t at, std::int64_t from, std::int64_t to,
                                  Reach& reach) const
{
    Vector const here = Point(at);
    std::int64_t const mostBefore = at - from;
    std::int64_t const mostAfter = to - at;
    // Chords that turn clearly less spare the directions, which noise moves less than chords. Where
    // those over the steps of the neighbour's reach are about as long, they spare its search too.
    Vector const before = here - Point(at - std::min(reach.before, mostBefore));
    Vector const after = Point(at + std::min(reach.after, mostAfter)) - here;
    if (IsAboutReach(before) && IsAboutReach(after) && IsClearlyNoTurn(before, after)) {
        return 0.0;
    }
    reach.before = StepsInReach(at, -1, mostBefore);
    reach.after = StepsInReach(at, 1, mostAfter);
    if (IsClearlyNoTurn(here - Point(at - reach.before), Point(at + reach.after) - here)) {
        return 0.0;
    }
    Vector const in = -Direction(at, -1, reach.before);
    Vector const out = Direction(at, 1, reach.after);
    if (!IsTurn(in, out, cornerCosSquared_)) {
        return 0.0;
    }
    // Beside the tip of a spike the turn looks as sharp as in the tip, but one of the sides leads
    // around it. 1e-9 above a straight run: with a threshold above 1 even that is a corner.
    double const straight =
        Straightness(at - reach.before, at) * Straightness(at, at + reach.after);
    return std::max((1.0 - HvPoint2_AdotB(Unit(in), Unit(out))) * straight, kDegenerateShare);
}

/// The way between two points as the crow flies, as a share of the way along the polyline.
double HvFitDirections::Straightness(std::int64_t from, std::int64_t to) const
{
    return std::sqrt(HvPoint2_SquaredLengthAB(Point(from), Point(to))) /
           (Length(to) - Length(from));
}

/// Steps from a point until the reach is first left, 1 to `most`. Beyond the points that are looked
/// at one by one it may be left for a while: the end is found by doubling and halving there, so
/// that a crowd of points costs no more than its logarithm.
std::int64_t HvFitDirections::StepsInReach(std::int64_t at, std::int64_t direction,
                                           std::int64_t most) const
{
    Vector const here = Point(at);
    auto const isOut = [&](std::int64_t steps) {
        return HvPoint2_SquaredLengthAB(here, Point(at + direction * steps)) >= squaredReach_;
    };
    // Away from the seam the points lie in a row.
    std::int64_t const alone = std::min(most, kMostPoints);
    std::int64_t const farthest = at + direction * alone;
    std::int64_t out = 1;
    if (at >= 0 && farthest >= 0 && at <= steps_ && farthest <= steps_) {
        HvPoint2<float> const* point = points_.Data() + at + direction;
        for (; out < alone; ++out, point += direction) {
            if (HvPoint2_SquaredLengthAB(here, Vector(*point)) >= squaredReach_) {
                return out;
            }
        }
    }
    while (out < alone && !isOut(out)) {
        ++out;
    }
    std::int64_t in = out - 1;
    while (out < most && !isOut(out)) {
        in = out;
        out = std::min(2 * out, most);
    }
    while (out - in > 1) {
        std::int64_t const middle = in + (out - in) / 2;
        (isOut(middle) ? out : in) = middle;
    }
    return out;
}

/// Visits points within some steps of a point, spread evenly where there are many; returns their
/// number. Most often they lie in one row of the arrays, away from the seam.
template <class Visit>
std::int64_t HvFitDirections::VisitSide(std::int64_t at, std::int64_t direction, std::int64_t steps,
                                        Visit const& visit) const
{
    std::int64_t const count = std::min(steps, kMostPoints);
    std::int64_t const farthest = at + direction * steps;
    bool const isInRow = at >= 0 && at <= steps_ && farthest >= 0 && farthest <= steps_;
    HvPoint2<float> const* const points = points_.Data();
    double const* const lengths = lengths_.Data();
    // The k-th point is k steps / count away, rounded down.
    std::int64_t const whole = steps / count;
    std::int64_t const part = steps % count;
    std::int64_t rest = 0;
    std::int64_t i = at;
    for (std::int64_t k = 0; k < count; ++k) {
        rest += part;
        bool const isOneMore = rest >= count;
        rest -= isOneMore ? count : 0;
        i += direction * (whole + (isOneMore ? 1 : 0));
        if (isInRow) {
            visit(Vector(points[i]), lengths[i]);
        } else {
            visit(Point(i), Length(i));
        }
    }
    return count;
}

/// The main axis of the points within some steps of a point, leading away from it.
Vector HvFitDirections::Direction(std::int64_t at, std::int64_t direction, std::int64_t steps) const
{
    Vector const here = Point(at);
    Vector const away = Point(at + direction * steps) - here;
    if (steps == 1) {
        return away;
    }
    Vector mean;
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    std::int64_t const count =
        VisitSide(at, direction, steps, [&](Vector const& p, double /*length*/) {
            Vector const d = p - here;
            mean = mean + d;
            xx += d.x * d.x;
            xy += d.x * d.y;
            yy += d.y * d.y;
        });
    double const n = static_cast<double>(count + 1);
    xx -= mean.x * mean.x / n;
    xy -= mean.x * mean.y / n;
    yy -= mean.y * mean.y / n;
    // The axis of twice the angle is (xx - yy, 2 xy); half way to it from the first axis, or from
    // the second one where that is nearer, lies the main axis.
    double const difference = xx - yy;
    double const size = std::sqrt(difference * difference + 4.0 * xy * xy);
    if (!(size > 0.0)) {
        return away;
    }
    double const c = difference / size;
    double const s = 2.0 * xy / size;
    Vector const axis = c >= 0.0 ? Vector(1.0 + c, s) : Vector(s, 1.0 - c);
    return HvPoint2_AdotB(axis, away) < 0.0 ? -axis : axis;
}

Vector HvFitDirections::TangentAt(unsigned int at, unsigned int from, unsigned int to) const
{
    return Tangent(at, std::int64_t{at} - from, std::int64_t{to} - at);
}

Vector HvFitDirections::TangentAtSeam() const
{
    std::int64_t const half = std::max<std::int64_t>(steps_ / 2, 1);
    return Tangent(0, half, half);
}

/// Over the points within reach on both sides, as far as they are given, and the point itself.
HvFitDirections::Moments HvFitDirections::MomentsAround(std::int64_t at, std::int64_t before,
                                                        std::int64_t after) const
{
    Vector const here = Point(at);
    double const length = Length(at);
    Moments moments;
    moments.s[0] = 1.0;
    auto const addSide = [&](std::int64_t direction, std::int64_t most) {
        if (most < 1) {
            return;
        }
        VisitSide(at, direction, StepsInReach(at, direction, most),
                  [&](Vector const& p, double lengthThere) {
                      double const s = lengthThere - length;
                      Vector const d = p - here;
                      double const ss = s * s;
                      moments.s[0] += 1.0;
                      moments.s[1] += s;
                      moments.s[2] += ss;
                      moments.s[3] += ss * s;
                      moments.s[4] += ss * ss;
                      moments.d[0] = moments.d[0] + d;
                      moments.d[1] = moments.d[1] + d * s;
                      moments.d[2] = moments.d[2] + d * ss;
                  });
    };
    addSide(-1, before);
    addSide(1, after);
    return moments;
}

/// The derivative at a point of the parabola through it that is nearest to the points around, over
/// the length of the polyline. With one point on each side it goes through both.
Vector HvFitDirections::Tangent(std::int64_t at, std::int64_t before, std::int64_t after) const
{
    Moments const m = MomentsAround(at, before, after);
    double const determinant = m.s[2] * m.s[4] - m.s[3] * m.s[3];
    Vector const tangent = determinant > kDegenerateShare * m.s[2] * m.s[4]
                               ? Unit(m.d[1] * m.s[4] - m.d[2] * m.s[3])
                               : Unit(m.d[1]);
    if (tangent != Vector()) {
        return tangent;
    }
    Vector const here = Point(at);
    return Unit(after > 0 ? Point(at + 1) - here : here - Point(at - 1));
}

unsigned int HvFitDirections::CalmestUpTo(unsigned int at, unsigned int from) const
{
    unsigned int calmest = at;
    double least = Unrest(at);
    for (unsigned int i = at; i > from && least > 0.0;) {
        double const unrest = Unrest(--i);
        if (unrest < least) {
            least = unrest;
            calmest = i;
        }
    }
    return calmest;
}

/// How far an inner point is from the nearest parabola of the points around; 0 where the steps are
/// too long to tell.
double HvFitDirections::Unrest(unsigned int at) const
{
    constexpr double kLeastPoints = 5.0;
    Moments const m = MomentsAround(at, at, steps_ - at);
    if (m.s[0] < kLeastPoints) {
        return 0.0;
    }
    double const a = m.s[2] * m.s[4] - m.s[3] * m.s[3];
    double const b = m.s[1] * m.s[4] - m.s[2] * m.s[3];
    double const c = m.s[1] * m.s[3] - m.s[2] * m.s[2];
    double const determinant = m.s[0] * a - m.s[1] * b + m.s[2] * c;
    return HvPoint2_Length(m.d[0] * a - m.d[1] * b + m.d[2] * c) / std::fabs(determinant);
}
