// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The values of a stroke, and how they come to lie along its outline.

#include <hv/pathbuild/internal/HvPropTrack.h>

#include <hv/foundation/array_capacity.h>
#include <hv/pathbuild/HvPath2fProp1d.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Highest degree of a segment of a path.
constexpr unsigned int kMaxDegree = 8;

bool IsFinite(HvPoint2<float> const& p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}

/// How far the place of a value may lie from where its way puts it, as a part of the longest of the
/// stretches between nodes around it. Smoothing moves a point by a quarter of its longer step at
/// most; the rest is for ways that do not go in proportion to arcs.
constexpr double kMostShift = 0.3;

/// The arc where the line through two nodes has a way.
double ArcAt(HvPoint2<double> const& a, HvPoint2<double> const& b, double way)
{
    double const run = b.x - a.x;
    return run > 0.0 ? a.y + (b.y - a.y) * std::min((way - a.x) / run, 1.0) : b.y;
}

}  // namespace

HvPropTrack::HvPropTrack(double tolerance) : filter_(tolerance) {}

void HvPropTrack::Reset()
{
    points_.Chop(0);
    ways_.Chop(0);
    values_.Chop(0);
    inputWays_.Chop(0);
    nodes_.Chop(0);
    line_.Chop(0);
    arcs_.Chop(0);
    keys_.Chop(0);
    samples_.Chop(0);
    way_ = 0.0;
    firstValue_ = 0.0;
    lastValue_ = 0.0;
    arc_ = 0.0;
    arcOfSample_ = 0.0;
    hasFirst_ = false;
    hasSubpath_ = false;
    hasKey_ = false;
    hasCurve_ = false;
    hasEnd_ = false;
    nextKey_ = 0;
    hasSample_ = false;
}

// The way.

void HvPropTrack::Add(HvPoint2<float> const& q, double value, double gap)
{
    unsigned int const count = HvArrayCapacity_GrownSize(points_.Size(), 1);
    points_.Reserve(count);
    ways_.Reserve(count);
    values_.Reserve(count);
    double const known = std::isfinite(value) ? value : lastValue_;
    if (!hasFirst_) {
        hasFirst_ = true;
        first_ = q;
        firstValue_ = known;
        place_ = q;
    } else if (std::fabs(double(q.x) - double(place_.x)) > gap ||
               std::fabs(double(q.y) - double(place_.y)) > gap) {
        double const step = HvPoint2_LengthAB(place_, q);
        way_ += std::isfinite(step) ? step : 0.0;
        place_ = q;
    }
    lastValue_ = known;
    points_.Add(q);
    ways_.Add(way_);
    values_.Add(known);
}

// The place of a point that came in and is not committed: of several equal ones the last. A point
// that the builder made itself lies in a straight step, so behind the one before by its distance.
double HvPropTrack::WayOf(HvPoint2<float> const& q) const
{
    for (unsigned int i = IsFinite(q) ? points_.Size() : 0; i-- > 0;) {
        if (points_[i] == q) {
            return ways_[i];
        }
    }
    return way_;
}

void HvPropTrack::FollowInput(HvPoint2fArray const& input)
{
    // What was expected of a commit that failed did not come.
    inputWays_.Chop(input.Size());
    unsigned int const known = inputWays_.Size();
    inputWays_.Reserve(input.Size());
    double before = known == 0 ? 0.0 : inputWays_[known - 1];
    for (unsigned int j = known; j < input.Size(); ++j) {
        // The points of a divided step come before the point that it leads to.
        bool const isLast = j + 1 == input.Size();
        if (isLast) {
            before = std::max(before, WayOf(input[j]));
        } else if (j != 0) {
            double const step = HvPoint2_LengthAB(input[j - 1], input[j]);
            before = std::min(before + (std::isfinite(step) ? step : 0.0), way_);
        }
        inputWays_.Add(before);
    }
}

void HvPropTrack::Expect(HvPoint2<float> const& q)
{
    double const before = inputWays_.Size() == 0 ? 0.0 : inputWays_[inputWays_.Size() - 1];
    inputWays_.Add(std::max(before, WayOf(q)));
}

void HvPropTrack::Close()
{
    if (hasFirst_ && place_ != first_) {
        Add(first_, firstValue_, 0.0);
    }
}

// The arc.

void HvPropTrack::Commit(HvPath2fProp1d& path, HvPoint2fArray const& input, double flatness)
{
    if (input.Size() == 0 || path.NumPoints() == 0) {
        return;
    }
    if (!hasSubpath_) {
        unsigned int end = 0;
        path.GetSubpathIndices(path.NumPoints() - 1, start_, end);
        nodes_.Chop(0);
        nodes_.Add(0.0, 0.0);
        measured_ = start_;
        node_ = 0;
        hasSubpath_ = true;
    }
    MeasureArc(path, input, flatness);
    FilterValues();
    if (!hasCurve_) {
        path.SetPropCurve(start_, HvRawFCurve(0.0, firstValue_));
        hasCurve_ = true;
    }
    if (HvRawFCurve* const curve = path.GetPropCurve(start_)) {
        WriteKeys(*curve);
    }
}

// Appends the nodes that the path has got, and the outline up to them. A node is found in the input
// by its coordinates; one that is not there leaves its stretch to the next.
void HvPropTrack::MeasureArc(HvPath2fProp1d const& path, HvPoint2fArray const& input,
                             double flatness)
{
    unsigned int const count = path.NumPoints();
    while (measured_ + 1 < count) {
        unsigned int const end = std::max(path.EndOfSegment(measured_ + 1), measured_ + 1);
        AppendSegment(path, measured_, end, flatness);
        double const arc = arcs_[arcs_.Size() - 1];
        HvPoint2<float> const p = path.GetPoint(end);
        unsigned int next = node_ + 1;
        while (IsFinite(p) && next < input.Size() && input[next] != p) {
            ++next;
        }
        if (IsFinite(p) && next < input.Size() && next < inputWays_.Size()) {
            nodes_.Add(inputWays_[next], arc);
            node_ = next;
        }
        arc_ = arc;
        measured_ = end;
    }
    // All that has come in is in the path: its end is where the pen is.
    nodes_.Add(way_, arc_);
}

// Makes the outline behind `arc_` that of a segment.
void HvPropTrack::AppendSegment(HvPath2fProp1d const& path, unsigned int start, unsigned int end,
                                double flatness)
{
    HvPoint2<float> points[kMaxDegree + 1];
    path.GetPoints(start, end, points);
    segment_.Chop(0);
    segment_.Add(points[0]);
    if (std::all_of(points, points + (end - start) + 1, IsFinite)) {
        tool_.Flatten(points, 0, end - start, flatness, &segment_, 1);
    }
    unsigned int const size = HvArrayCapacity_GrownSize(line_.Size(), segment_.Size());
    line_.Reserve(size);
    arcs_.Reserve(size);
    // What an interrupted commit appended beyond `arc_` goes.
    while (arcs_.Size() != 0 && arcs_[arcs_.Size() - 1] > arc_) {
        arcs_.Chop(arcs_.Size() - 1);
        line_.Chop(arcs_.Size());
    }
    double arc = arc_;
    for (unsigned int i = 0; i < segment_.Size(); ++i) {
        arc += i == 0 ? 0.0 : HvPoint2_LengthAB(segment_[i - 1], segment_[i]);
        line_.Add(segment_[i]);
        arcs_.Add(arc);
    }
}

// The property.

// The place on the outline from `low` to `high` that is nearest to `q`, the first of several;
// `guess` where none is.
double HvPropTrack::FootOf(HvPoint2<float> const& q, double low, double high, double guess)
{
    double foot = guess;
    double least = std::numeric_limits<double>::infinity();
    // Places come in ascending order.
    while (edge_ + 2 < arcs_.Size() && arcs_[edge_ + 1] < filter_.Reach()) {
        ++edge_;
    }
    for (unsigned int i = edge_; i + 1 < arcs_.Size() && arcs_[i] <= high; ++i) {
        if (arcs_[i + 1] < low) {
            continue;
        }
        HvPoint2<double> const a(line_[i]);
        HvPoint2<double> const way = HvPoint2<double>(line_[i + 1]) - a;
        HvPoint2<double> const to = HvPoint2<double>(q) - a;
        double const length = arcs_[i + 1] - arcs_[i];
        double const along = length > 0.0 ? (to.x * way.x + to.y * way.y) / length : 0.0;
        double const at =
            std::min(std::max(arcs_[i] + std::min(std::max(along, 0.0), length), low), high);
        double const share = length > 0.0 ? (at - arcs_[i]) / length : 0.0;
        double const x = to.x - way.x * share;
        double const y = to.y - way.y * share;
        if (x * x + y * y < least) {
            least = x * x + y * y;
            foot = at;
        }
    }
    return foot;
}

// The place of a value between the nodes `node` and `node` + 1: the foot of its point near where
// its way puts it.
double HvPropTrack::PlaceOf(unsigned int i, unsigned int node)
{
    if (ways_[i] >= way_ || nodes_.Size() < 2) {
        return arc_;
    }
    double const guess = ArcAt(nodes_[node], nodes_[node + 1], ways_[i]);
    unsigned int const from = node == 0 ? 0 : node - 1;
    unsigned int const to = std::min(node + 2, nodes_.Size() - 1);
    double longest = 0.0;
    for (unsigned int k = from; k < to; ++k) {
        longest = std::max(longest, nodes_[k + 1].y - nodes_[k].y);
    }
    double const reach = longest * kMostShift;
    double const low = std::max(filter_.Reach(), guess - reach);
    return FootOf(points_[i], low, std::max(low, std::min(guess + reach, arc_)), guess);
}

// Hands the values to the filter, each at its place; of several at one place the last.
void HvPropTrack::FilterValues()
{
    keys_.Reserve(HvArrayCapacity_GrownSize(keys_.Size(), values_.Size()));
    // Nothing fails from here on.
    unsigned int node = 0;
    edge_ = 0;
    HvSwingFilter::Point key;
    for (unsigned int i = 0; i < values_.Size();) {
        unsigned int last = i;
        while (last + 1 < values_.Size() && ways_[last + 1] == ways_[i]) {
            ++last;
        }
        while (node + 2 < nodes_.Size() && nodes_[node + 1].x < ways_[i]) {
            ++node;
        }
        if (!hasKey_) {
            filter_.Start({0.0, values_[last]});
            firstValue_ = values_[last];
            hasKey_ = true;
        } else if (filter_.Add({PlaceOf(i, node), values_[last]}, key)) {
            keys_.Add(key);
        }
        i = last + 1;
    }
    points_.Chop(0);
    ways_.Chop(0);
    values_.Chop(0);
    line_.Chop(0);
    arcs_.Chop(0);
    nodes_[0] = nodes_[nodes_.Size() - 1];
    nodes_.Chop(1);
}

void HvPropTrack::WriteKeys(HvRawFCurve& curve)
{
    auto const removeEnd = [&] {
        double last = 0.0;
        if (hasEnd_ && curve.GetLargestKeyParameter(last) != 0) {
            curve.RemoveKey(last, 0.0);
        }
        hasEnd_ = false;
    };
    for (; nextKey_ < keys_.Size(); ++nextKey_) {
        removeEnd();
        curve.AppendLinearSegment(keys_[nextKey_]);
    }
    keys_.Chop(0);
    nextKey_ = 0;
    if (filter_.HasEnd()) {
        removeEnd();
        curve.AppendLinearSegment(filter_.End());
        hasEnd_ = true;
    }
}

void HvPropTrack::Sample(HvPath2fProp1d const& path, unsigned int count, double spacing)
{
    samples_.Chop(0);
    samples_.Reserve(count);
    for (unsigned int i = 0; i < count; ++i) {
        // The end of the stroke may be a sample, and comes sooner than a step.
        double const next = arcOfSample_ + (spacing > 0.0 ? spacing : arc_);
        arcOfSample_ = hasSample_ ? std::min(next, arc_) : 0.0;
        hasSample_ = true;
        samples_.Add(arcOfSample_);
    }
    if (HvRawFCurve const* const curve = hasSubpath_ ? path.GetPropCurve(start_) : nullptr) {
        curve->EvalMany(samples_.Data(), count, samples_.Data(), 0);
    } else {
        std::fill(samples_.begin(), samples_.end(), 0.0);  // somebody has removed it
    }
}
