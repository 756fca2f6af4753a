// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Values that move, as curves and motion paths.

#include <hv/fcurve/HvIntegerFCurve.h>
#include <tools/ToolError.h>
#include <tools/curve/track_curve.h>
#include <tools/play/scene/animated.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// How far places on a motion path may be off, in units of the document: far below a pixel at any
/// size that is painted.
constexpr double kPlaceTolerance = 1e-3;

/// The direction of a move is that between two places so many frames before and behind.
constexpr double kDirectionStep = 0.01;

/// Integers of an integer curve stay exact in a float, too.
constexpr double kLargestInteger = 1 << 24;

bool HoldsIntegers(LottieTrack const& track)
{
    // The last key always holds: nothing follows it.
    return std::all_of(track.keys.begin(), track.keys.end(), [](LottieKey const& key) {
        return key.segment == LottieSegment::Hold && key.value == std::floor(key.value) &&
               std::fabs(key.value) <= kLargestInteger;
    });
}

std::unique_ptr<HvBaseFCurve> CurveOf(LottieTrack const& track)
{
    if (!HoldsIntegers(track)) {
        return TrackCurve_Build(track);
    }
    auto curve = std::make_unique<HvIntegerFCurve>(track.keys.front().value);
    for (LottieKey const& key : track.keys) {
        if (curve->CreateKey(key.time, key.value) == 0) {
            throw ToolError(track.path + ": no curve goes through its keys");
        }
    }
    return curve;
}

/// A track of the same times and easings whose key i has the value i.
LottieTrack WayOf(LottiePath const& path)
{
    LottieTrack way;
    way.path = path.path;
    for (LottiePathKey const& key : path.keys) {
        way.keys.push_back(
            {key.time, static_cast<double>(way.keys.size()), key.segment, key.easing});
    }
    return way;
}

PlaceProperty ConstantPlace(double value)
{
    PlaceProperty place;
    place.x.keys.resize(1);
    place.x.keys.front().value = value;
    place.y = place.x;
    return place;
}

/// Times `base` with itself, for a negative one by its size and the turns it makes.
double Power(double base, double times)
{
    return base >= 0.0 ? std::pow(base, times)
                       : std::pow(-base, times) * (std::fmod(std::round(times), 2.0) != 0 ? -1 : 1);
}

}  // namespace

AnimatedNumber::AnimatedNumber(LottieTrack const& track) : constant_(track.keys.front().value)
{
    if (track.keys.size() > 1) {
        curve_ = CurveOf(track);
    }
}

AnimatedPhase::AnimatedPhase(LottieTrack const& track) : value_(track)
{
    for (LottieKey const& key : track.keys) {
        times_.push_back(key.time);
    }
}

Phase AnimatedPhase::At(double frame) const
{
    // The key at or before the frame; none follows the last one.
    auto const after = std::upper_bound(times_.begin(), times_.end(), frame);
    std::ptrdiff_t const key = std::max<std::ptrdiff_t>(after - times_.begin() - 1, 0);
    if (after == times_.begin() || after == times_.end()) {
        return {static_cast<unsigned int>(key), 0.0};
    }
    return {static_cast<unsigned int>(key), value_.At(frame) - static_cast<double>(key)};
}

AnimatedPlace::AnimatedPlace(PlaceProperty const& property)
    : x_(property.x), y_(property.y),
      motion_(property.motion ? MotionOf(*property.motion) : nullptr)
{
}

std::unique_ptr<AnimatedPlace::Motion> AnimatedPlace::MotionOf(LottiePath const& path)
{
    std::unique_ptr<Motion> motion(new Motion{HvMotionPath3d(), AnimatedPhase(WayOf(path)), {}});
    HvPoint3<double> const none;
    motion->path.Moveto(path.keys.front().place, 0.0);
    for (std::size_t i = 1; i < path.keys.size(); ++i) {
        LottiePathKey const& from = path.keys[i - 1];
        LottiePathKey const& to = path.keys[i];
        bool const isStraight = from.leaving == none && from.arriving == none;
        auto const time = static_cast<double>(i);
        if (isStraight) {
            motion->path.Lineto(to.place, time);
        } else {
            motion->path.Curveto(from.place + from.leaving, to.place + from.arriving, to.place,
                                 time);
        }
        motion->isStraight.push_back(isStraight);
    }
    for (unsigned int node = 0; node < motion->path.NumPoints(); node += 3) {
        motion->path.SetLeftTangentInfo(node, HvMotionPath3d::TangentLinear);
        motion->path.SetRightTangentInfo(node, HvMotionPath3d::TangentLinear);
    }
    return motion;
}

HvPoint2<double> AnimatedPlace::OnPath(Phase const& phase) const
{
    bool const hasNext = phase.key + 1 < motion_->way.NumKeys();
    if (hasNext && motion_->isStraight[phase.key]) {
        // Beyond its ends a line goes on; a curve ends there.
        HvPoint3<double> from;
        HvPoint3<double> to;
        motion_->path.GetControlPoint(3 * phase.key, from);
        motion_->path.GetControlPoint(3 * phase.key + 3, to);
        return {from.x + (to.x - from.x) * phase.share, from.y + (to.y - from.y) * phase.share};
    }
    HvPoint3<double> place;
    motion_->path.Eval(phase.key + std::clamp(phase.share, 0.0, 1.0), kPlaceTolerance, place, 0);
    return {place.x, place.y};
}

HvPoint2<double> AnimatedPlace::At(double frame) const
{
    if (motion_ != nullptr) {
        return OnPath(motion_->way.At(frame));
    }
    return {x_.At(frame), y_.At(frame)};
}

double AnimatedPlace::DirectionAt(double frame) const
{
    HvPoint2<double> const step = At(frame + kDirectionStep) - At(frame - kDirectionStep);
    return step == HvPoint2<double>() ? 0.0 : std::atan2(step.y, step.x) * (180.0 / M_PI);
}

AnimatedColour::AnimatedColour(SceneColour const& constant)
    : red_(constant.red), green_(constant.green), blue_(constant.blue)
{
}

AnimatedColour::AnimatedColour(std::vector<LottieTrack> const& tracks)
    : red_(tracks[0]), green_(tracks[1]), blue_(tracks[2])
{
    for (std::size_t part = 0; part < 3; ++part) {
        for (LottieKey const& key : tracks[part].keys) {
            scale_ = key.value > 1.0 ? 1.0 / 255.0 : scale_;
        }
    }
}

SceneColour AnimatedColour::At(double frame) const
{
    return {red_.At(frame) * scale_, green_.At(frame) * scale_, blue_.At(frame) * scale_};
}

AnimatedTransform::AnimatedTransform()
    : anchor_(ConstantPlace(0.0)), place_(ConstantPlace(0.0)), scale_(ConstantPlace(100.0)),
      opacity_(100.0)
{
}

AnimatedTransform::AnimatedTransform(PropertyReader const& reader)
    : anchor_(reader.Place("a", 0.0)), place_(reader.Place("p", 0.0)),
      scale_(reader.Place("s", 100.0)),
      rotation_(reader.Number(reader.Has("rz") ? "rz" : "r", 0.0)), skew_(reader.Number("sk", 0.0)),
      skewAxis_(reader.Number("sa", 0.0)), opacity_(reader.Number("o", 100.0))
{
}

HvTransfo4 AnimatedTransform::Composed(double frame, double times,
                                       HvPoint2<double> const& home) const
{
    HvPoint2<double> const origin;
    HvPoint2<double> const scale = scale_.At(frame) * 0.01;
    double const skew = skew_.At(frame) * times;
    HvTransfo4 transform;
    transform.Translate(place_.At(frame) * times + home, 0.0);
    double const turn = isAlongPath_ ? place_.DirectionAt(frame) : 0.0;
    transform.RotateXY(rotation_.At(frame) * times + turn, origin);
    if (skew != 0.0) {
        double const axis = skewAxis_.At(frame);
        transform.RotateXY(-axis, origin);
        transform.ShearXZ(std::tan(-skew * (M_PI / 180.0)), 0.0);
        transform.RotateXY(axis, origin);
    }
    transform.ScaleXY(Power(scale.x, times), Power(scale.y, times), origin);
    transform.Translate(-anchor_.At(frame), 0.0);
    return transform;
}

HvTransfo4 AnimatedTransform::At(double frame) const
{
    return Composed(frame, 1.0, HvPoint2<double>());
}

HvTransfo4 AnimatedTransform::Repeated(double frame, double times) const
{
    return Composed(frame, times, anchor_.At(frame));
}

double AnimatedTransform::OpacityAt(double frame) const
{
    return std::clamp(opacity_.At(frame) * 0.01, 0.0, 1.0);
}
