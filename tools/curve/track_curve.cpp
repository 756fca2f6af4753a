// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From a track of an animation to a curve.

#include <tools/ToolError.h>
#include <tools/curve/track_curve.h>
#include <tools/number_text.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Point = HvPoint2<double>;

/// How often a segment whose time runs backwards by rounding is mended; the step doubles each time,
/// so that the last try shrinks the handles to nothing.
constexpr int kMendingSteps = 45;
/// The first step, as a share of the handles.
constexpr double kFirstMend = 0x1p-44;

/// The four points of an eased segment.
struct Cubic {
    Point start;
    Point out;
    Point in;
    Point end;

    bool IsValid() const { return HvStdFCurve_IsCubicSegmentValid(start, out, in, end) != 0; }
};

Cubic CubicOf(LottieKey const& from, LottieKey const& to)
{
    LottieEasing const& easing = from.easing;
    double const time = to.time - from.time;
    double const value = to.value - from.value;
    Cubic cubic;
    cubic.start = Point(from.time, from.value);
    cubic.end = Point(to.time, to.value);
    // The sum may round to beyond the segment.
    cubic.out = Point(std::clamp(from.time + easing.outX * time, from.time, to.time),
                      from.value + easing.outY * value);
    cubic.in = Point(std::clamp(from.time + easing.inX * time, from.time, to.time),
                     from.value + easing.inY * value);
    return cubic;
}

/// The cubic with time that does not run backwards. The steepest easing, out at 1 and in at 0, has
/// a point where time stands still; there rounding can tip it over.
Cubic Mended(Cubic const& cubic)
{
    Cubic mended = cubic;
    double step = kFirstMend;
    for (int i = 0; i < kMendingSteps && !mended.IsValid(); ++i) {
        mended.out = cubic.start + (cubic.out - cubic.start) * (1.0 - step);
        mended.in = cubic.end + (cubic.in - cubic.end) * (1.0 - step);
        step *= 2.0;
    }
    return mended;
}

/// Adds the segment between two keys and the second key. 1, or 0 when the curve refuses.
int AppendSegment(HvStdFCurve& curve, LottieKey const& from, LottieKey const& to)
{
    switch (from.segment) {
    case LottieSegment::Hold:
        return curve.AppendConstantSegment(Point(to.time, to.value));
    case LottieSegment::Linear:
        return curve.AppendLinearSegment(Point(to.time, to.value));
    case LottieSegment::Eased:
        break;
    }
    Cubic const cubic = Mended(CubicOf(from, to));
    return curve.AppendBezierCubicSegment(cubic.out, cubic.in, cubic.end);
}

double ErrorOf(double value, double expected)
{
    double const error = std::fabs(value - expected);
    return std::isnan(error) ? std::numeric_limits<double>::infinity() : error;
}

}  // namespace

std::unique_ptr<HvStdFCurve> TrackCurve_Build(LottieTrack const& track)
{
    LottieKey const& first = track.keys.front();
    auto curve =
        std::make_unique<HvStdFCurve>(first.time, first.value, first.value,
                                      HvBaseFCurve::ConstantSegment, HvBaseFCurve::ConstantSegment);
    for (std::size_t i = 1; i < track.keys.size(); ++i) {
        if (AppendSegment(*curve, track.keys[i - 1], track.keys[i]) == 0) {
            throw ToolError(track.path + ": no curve goes through its key at frame " +
                            NumberText_Exact(track.keys[i].time));
        }
    }
    return curve;
}

double TrackCurve_LeftValue(LottieTrack const& track, std::size_t i)
{
    bool const jumps = i > 0 && track.keys[i - 1].segment == LottieSegment::Hold;
    return track.keys[jumps ? i - 1 : i].value;
}

double TrackCurve_LargestError(LottieTrack const& track, HvStdFCurve const& curve)
{
    double largest = 0.0;
    for (std::size_t i = 0; i < track.keys.size(); ++i) {
        LottieKey const& key = track.keys[i];
        double const left = TrackCurve_LeftValue(track, i);
        largest = std::max({largest, ErrorOf(curve.Eval(key.time, 0), key.value),
                            ErrorOf(curve.EvalLeft(key.time, 0), left)});
    }
    return largest;
}
