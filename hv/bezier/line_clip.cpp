// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The one way in which the library clips a line segment to a rectangle.

#include <hv/bezier/line_clip.h>

#include <cmath>

namespace {

/// Differences outside this range and its inverse are scaled before they are multiplied with each
/// other: their products stay far from the ends of the exponent range.
constexpr double kLargeDifference = 0x1p+400;
/// Brings any difference of finite numbers beyond those limits back inside.
constexpr double kDifferenceScale = 0x1p-600;

enum Side {
    NoSide,
    MinX,
    MaxX,
    MinY,
    MaxY
};

/// A parameter on the segment, numerator / denominator, with denominator > 0.
struct Crossing {
    double numerator;
    double denominator;
    Side side;
};

bool IsAbove(Crossing const& a, Crossing const& b)
{
    return a.numerator * b.denominator > b.numerator * a.denominator;
}

/// Where the way from `from` to `to` meets `limit`, one of them lying on each side of it or on it.
Crossing MakeCrossing(double from, double to, double limit, Side side)
{
    double denominator = std::fabs(to - from);
    double numerator = std::fabs(limit - from);
    if (denominator > kLargeDifference || denominator < 1.0 / kLargeDifference) {
        double const scale =
            denominator > kLargeDifference ? kDifferenceScale : 1.0 / kDifferenceScale;
        denominator = std::fabs(to * scale - from * scale);
        numerator = std::fabs(limit * scale - from * scale);
    }
    return {numerator, denominator, side};
}

/// The part of a segment that is left while the sides cut it.
class Remainder {
public:
    /// Cuts the segment a to b by all sides of `clip`; false when nothing is left.
    bool Cut(HvPoint2<double> const& a, HvPoint2<double> const& b, HvExtent2<double> const& clip)
    {
        if (clip.Contains(a) != 0 && clip.Contains(b) != 0) {
            return true;
        }
        return clip.state == HvExtent2<double>::Ordinary && CutBelow(a.x, b.x, clip.min.x, MinX) &&
               CutAbove(a.x, b.x, clip.max.x, MaxX) && CutBelow(a.y, b.y, clip.min.y, MinY) &&
               CutAbove(a.y, b.y, clip.max.y, MaxY);
    }

    Crossing const& Entering() const { return entering_; }
    Crossing const& Leaving() const { return leaving_; }

private:
    /// Cuts by the half line of the numbers that are not below `limit`; false when nothing is left.
    /// Infinite sides never cut: all finite numbers lie on one side of them.
    bool CutBelow(double from, double to, double limit, Side side)
    {
        bool const startsInside = from >= limit;
        bool const endsInside = to >= limit;
        if (startsInside && endsInside) {
            return true;
        }
        if (startsInside == endsInside) {
            return false;
        }
        Crossing const crossing = MakeCrossing(from, to, limit, side);
        if (startsInside) {
            if (IsAbove(leaving_, crossing)) {
                leaving_ = crossing;
            }
        } else if (IsAbove(crossing, entering_)) {
            entering_ = crossing;
        }
        return !IsAbove(entering_, leaving_);
    }
    bool CutAbove(double from, double to, double limit, Side side)
    {
        return CutBelow(-from, -to, -limit, side);
    }

    Crossing entering_{0.0, 1.0, NoSide};
    Crossing leaving_{1.0, 1.0, NoSide};
};

double Interpolate(double from, double to, double t)
{
    double const delta = to - from;
    return std::isfinite(delta) ? from + t * delta : from * (1.0 - t) + to * t;
}

HvPoint2<double> PointAt(Crossing const& crossing, HvPoint2<double> const& a,
                         HvPoint2<double> const& b, HvExtent2<double> const& clip)
{
    double const t = crossing.numerator / crossing.denominator;
    switch (crossing.side) {
    case MinX:
        return {clip.min.x, Interpolate(a.y, b.y, t)};
    case MaxX:
        return {clip.max.x, Interpolate(a.y, b.y, t)};
    case MinY:
        return {Interpolate(a.x, b.x, t), clip.min.y};
    default:
        return {Interpolate(a.x, b.x, t), clip.max.y};
    }
}

bool IsFinite(HvPoint2<double> const& p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}

}  // namespace

int HvLineClip_Meets(HvPoint2<double> const& a, HvPoint2<double> const& b,
                     HvExtent2<double> const& clip)
{
    Remainder remainder;
    return IsFinite(a) && IsFinite(b) && remainder.Cut(a, b, clip) ? 1 : 0;
}

int HvLineClip_Clip(HvPoint2<double>& a, HvPoint2<double>& b, HvExtent2<double> const& clip)
{
    if (!IsFinite(a) || !IsFinite(b)) {
        return 0;
    }
    Remainder remainder;
    if (!remainder.Cut(a, b, clip)) {
        return 0;
    }
    HvPoint2<double> const from = a;
    HvPoint2<double> const to = b;
    Crossing const& leaving = remainder.Leaving();
    if (leaving.denominator > leaving.numerator) {
        b = PointAt(leaving, from, to, clip);
    }
    if (remainder.Entering().numerator > 0.0) {
        a = PointAt(remainder.Entering(), from, to, clip);
    }
    return 1;
}
