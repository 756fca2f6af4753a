// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the positions of an animation to a motion path.

#include <tools/ToolError.h>
#include <tools/curve/track_path.h>
#include <tools/number_text.h>

#include <cmath>

namespace {

using TangentInfo = HvMotionPath3d::TangentInfo;

/// An easing that rises less than this share of the way along a handle's time is level there:
/// editors write three decimals.
constexpr double kLevelSlope = 1e-3;

bool IsEven(LottieEasing const& easing)
{
    return easing.outX == easing.outY && easing.inX == easing.inY;
}

/// The rule for the start of a segment.
TangentInfo RuleAtStart(LottiePathKey const& key)
{
    switch (key.segment) {
    case LottieSegment::Hold:
        return HvMotionPath3d::TangentStep;
    case LottieSegment::Linear:
        return HvMotionPath3d::TangentLinear;
    case LottieSegment::Eased:
        break;
    }
    if (IsEven(key.easing)) {
        return HvMotionPath3d::TangentLinear;
    }
    bool const isLevel =
        key.easing.outX > 0.0 && std::fabs(key.easing.outY) <= kLevelSlope * key.easing.outX;
    return isLevel ? HvMotionPath3d::TangentStop : HvMotionPath3d::TangentSmooth;
}

/// The rule for its end.
TangentInfo RuleAtEnd(LottiePathKey const& key)
{
    bool const isEased = key.segment == LottieSegment::Eased;
    if (!isEased || key.easing.inX == key.easing.inY) {
        return HvMotionPath3d::TangentLinear;
    }
    bool const isLevel = std::fabs(1 - key.easing.inY) <= kLevelSlope * (1 - key.easing.inX);
    return isLevel ? HvMotionPath3d::TangentStop : HvMotionPath3d::TangentSmooth;
}

/// Adds the segment between two keys and the second key. 1, or 0 when the path refuses.
int AppendSegment(HvMotionPath3d& path, LottiePathKey const& from, LottiePathKey const& to)
{
    unsigned int const start = path.NumPoints() - 1;
    int const isAdded =
        path.Curveto(from.place + from.leaving, to.place + from.arriving, to.place, to.time);
    if (isAdded == 0) {
        return 0;
    }
    HvPoint3<double> const none;
    if (from.leaving == none && from.arriving == none) {
        path.LinearizeSegment(start);
    }
    path.SetRightTangentInfo(start, RuleAtStart(from));
    path.SetLeftTangentInfo(start + 3, RuleAtEnd(from));
    return 1;
}

}  // namespace

HvMotionPath3d TrackPath_Build(LottiePath const& path)
{
    HvMotionPath3d motion;
    LottiePathKey const& first = path.keys.front();
    motion.Moveto(first.place, first.time);
    for (std::size_t i = 1; i < path.keys.size(); ++i) {
        if (AppendSegment(motion, path.keys[i - 1], path.keys[i]) == 0) {
            throw ToolError(path.path + ": no motion path goes through its key at frame " +
                            NumberText_Exact(path.keys[i].time));
        }
    }
    return motion;
}
