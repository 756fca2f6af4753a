// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Ellipses into pixels.

#include <hv/raster/scan_convert.h>

#include <hv/bezier/quadratic.h>
#include <hv/foundation/HvPoint3.h>
#include <hv/foundation/saturate.h>
#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/internal/pixel_span.h>
#include <hv/rotation/HvTransfo4.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

using Point = HvPoint2<double>;

/// The greatest quadratic form that still counts as inside; the curve has 1. So the pixels that the
/// curve meets exactly are inside whatever rounding does.
constexpr double kInsideForm = 1.000001;
/// A half axis below this in both coordinates spans nothing.
constexpr double kLeastHalfAxis = 9.999999747378752e-05;
/// A side that leans by less than this runs along an axis.
constexpr double kAlongAxis = 0.0001;

bool AreFinite(HvPoint2<float> const& p0, HvPoint2<float> const& p1, HvPoint2<float> const& p2,
               double half)
{
    for (float const number : {p0.x, p0.y, p1.x, p1.y, p2.x, p2.y}) {
        if (!std::isfinite(number)) {
            return false;
        }
    }
    return std::isfinite(half);
}

/// An ellipse with any axes: the points p with |Inverse(p)| <= 1.
class Ellipse {
public:
    Ellipse(HvPoint2<float> const& p0, HvPoint2<float> const& p1, HvPoint2<float> const& p2)
        : centre_((Point(p1) + Point(p2)) * 0.5), u_((Point(p1) - Point(p0)) * 0.5),
          v_((Point(p2) - Point(p0)) * 0.5)
    {
        HvTransfo4 frame;
        frame.SetTo3PointTransformXY(HvPoint3<double>(0.0, 0.0, 0.0),
                                     HvPoint3<double>(u_.x, u_.y, 0.0),
                                     HvPoint3<double>(v_.x, v_.y, 0.0));
        HvTransfo4 inverse;
        hasInverse_ = frame.Inverse(inverse) != 0;
        alongX_ = Point(inverse.GetMatrixElement(0, 0), inverse.GetMatrixElement(1, 0));
        alongY_ = Point(inverse.GetMatrixElement(0, 1), inverse.GetMatrixElement(1, 1));
    }

    bool HasInverse() const { return hasInverse_; }
    /// Whether a half axis spans nothing.
    bool IsDegenerate() const { return IsShort(u_) || IsShort(v_); }

    /// The rows of sample points from the lowest to the highest point of the curve.
    HvPixelSpan Rows(double half, int height) const
    {
        double const reach = std::hypot(u_.y, v_.y);
        return HvPixelSpan::Cut(std::ceil(centre_.y - reach - half),
                                std::floor(centre_.y + reach - half), height);
    }

    /// 1 on the curve, 0 in the centre.
    double FormAt(double x, double y) const
    {
        Point const p = alongX_ * (x - centre_.x) + alongY_ * (y - centre_.y);
        return p.x * p.x + p.y * p.y;
    }

    /// The first and last whole x whose sample point in the row at `y` is inside; `first` above
    /// `last` when there is none. They are where the form's roots lie, which are as exact as the
    /// form itself.
    void GetSpan(double y, double half, double& first, double& last) const
    {
        Point const start = alongY_ * (y - centre_.y);
        double low = 0.0;
        double high = 0.0;
        if (SolveQuadraticEquation(low, high, HvPoint2_AdotB(alongX_, alongX_),
                                   2.0 * HvPoint2_AdotB(alongX_, start),
                                   HvPoint2_AdotB(start, start) - kInsideForm) == 0 ||
            !std::isfinite(low) || !std::isfinite(high)) {
            first = 0.0;
            last = -1.0;
            return;
        }
        first = std::ceil(centre_.x + low - half);
        last = std::floor(centre_.x + high - half);
    }

private:
    static bool IsShort(Point const& axis)
    {
        return kLeastHalfAxis > std::fabs(axis.x) && kLeastHalfAxis > std::fabs(axis.y);
    }

    Point centre_;
    Point u_;
    Point v_;
    Point alongX_;  // what a step along x is in units of the half axes
    Point alongY_;
    bool hasInverse_;
};

/// An ellipse with its axes along x and y, in whole pixels about the pixel of its centre.
class IsotheticEllipse {
public:
    IsotheticEllipse(HvPoint2<float> const& p0, HvPoint2<float> p1, HvPoint2<float> p2)
    {
        if (kAlongAxis > std::fabs(p2.y - p0.y) && kAlongAxis > std::fabs(p1.x - p0.x)) {
            std::swap(p1, p2);
        }
        a_ = std::fabs(double(p1.x) - double(p0.x)) * 0.5;
        b_ = std::fabs(double(p2.y) - double(p0.y)) * 0.5;
        perA_ = a_ > 0.0 ? 1.0 / a_ : 0.0;
        perB_ = b_ > 0.0 ? 1.0 / b_ : 0.0;
        centre_ = Point(std::floor((double(p1.x) + double(p2.x)) * 0.5 + 0.5),
                        std::floor((double(p1.y) + double(p2.y)) * 0.5 + 0.5));
    }

    double CentreX() const { return centre_.x; }

    HvPixelSpan Rows(double half, int height) const
    {
        double const reach = HasArea() ? std::floor(b_) : Run(b_, half);
        return HvPixelSpan::Cut(centre_.y - reach, centre_.y + reach, height);
    }

    /// The greatest offset along x in the row at `y`.
    double Reach(double y, double half) const
    {
        if (!HasArea()) {
            return Run(a_, half);
        }
        double const j = y - centre_.y;
        double const t = j / b_;
        double const reach = std::floor(a_ * std::sqrt(std::max(0.0, 1.0 - t * t)));
        // A whole number on the curve may have been rounded to just below itself.
        return IsInside(reach + 1.0, j) ? reach + 1.0 : reach;
    }

    /// 0 in the centre, 1 on the curve and beyond.
    double DistanceAt(double x, double y) const
    {
        double const i = (x - centre_.x) * perA_;
        double const j = (y - centre_.y) * perB_;
        return std::min(1.0, std::sqrt(i * i + j * j));
    }

private:
    bool HasArea() const { return a_ >= kLeastHalfAxis && b_ >= kLeastHalfAxis; }
    /// A run along an axis without the other reaches a little less far than the ellipse would.
    static double Run(double axis, double half)
    {
        return axis >= kLeastHalfAxis ? std::max(0.0, std::floor(axis - half)) : 0.0;
    }
    bool IsInside(double i, double j) const
    {
        return a_ * a_ * b_ * b_ >= b_ * b_ * i * i + a_ * a_ * j * j;
    }

    Point centre_;
    double a_;
    double b_;
    double perA_;  // of an offset along x, its part of a; 0 when there is no a
    double perB_;
};

/// The disc of distances that is stamped on both ends of a span. They are computed where the disc
/// meets the raster: a table of them would take memory with the square of the radius.
class Brush {
public:
    /// Below 0 the brush has no pixel.
    explicit Brush(std::int64_t radius) : radius_(radius) {}

    /// Stamps at the pixel (x, y), x being a whole number of any size.
    void StampAt(double x, int y, HvFloatRaster& distance) const
    {
        double const reach = static_cast<double>(radius_);
        if (!(x >= -reach && distance.width - 1 + reach >= x)) {
            return;
        }
        std::int64_t const centreX = HvSaturate_To<std::int64_t>(x);
        HvPixelSpan const rows = HvPixelSpan::Cut(y - reach, y + reach, distance.height);
        for (int row = rows.first; row <= rows.last; ++row) {
            std::int64_t const dy = row - std::int64_t(y);
            double const chord = HalfChord(dy);
            HvPixelSpan const span = HvPixelSpan::Cut(x - chord, x + chord, distance.width);
            for (int column = span.first; column <= span.last; ++column) {
                std::int64_t const dx = column - centreX;
                double const length = std::sqrt(static_cast<double>(dx * dx + dy * dy));
                distance.SetValWhenSmaller(column, row, static_cast<float>(length));
            }
        }
    }

private:
    /// The greatest whole dx with dx^2 + dy^2 <= radius^2, for |dy| <= radius.
    double HalfChord(std::int64_t dy) const
    {
        std::int64_t const square = radius_ * radius_ - dy * dy;
        std::int64_t chord = HvSaturate_To<std::int64_t>(std::sqrt(static_cast<double>(square)));
        // Of squares beyond 2^53 the root may have been rounded across a whole number.
        if (chord * chord > square) {
            --chord;
        } else if (square >= (chord + 1) * (chord + 1)) {
            ++chord;
        }
        return static_cast<double>(chord);
    }

    std::int64_t radius_;
};

/// What a scanned ellipse leaves behind: the value in its spans, and the brush at their ends.
class SpanWriter {
public:
    SpanWriter(HvUByteRaster& raster, unsigned char value, HvFloatRaster& distance, int brushRadius,
               OvalFillMode mode)
        : raster_(raster), value_(value), distance_(distance),
          brush_(mode == OvalFillBrushed ? brushRadius : -1)
    {
    }

    void Write(int y, double first, double last) const
    {
        HvPixelSpan const span = HvPixelSpan::Cut(first, last, raster_.width);
        if (!span.IsEmpty()) {
            unsigned char* const row =
                raster_.data + static_cast<std::ptrdiff_t>(y) * raster_.width;
            std::fill(row + span.first, row + span.last + 1, value_);
        }
        if (last >= first) {
            brush_.StampAt(first, y, distance_);
            brush_.StampAt(last, y, distance_);
        }
    }

private:
    HvUByteRaster& raster_;
    unsigned char value_;
    HvFloatRaster& distance_;
    Brush brush_;
};

}  // namespace

void ScanConvert(HvPoint2<float> const& p0, HvPoint2<float> const& p1, HvPoint2<float> const& p2,
                 double half, HvUByteRaster& raster, unsigned char value, HvFloatRaster& distance,
                 int brushRadius, OvalFillMode mode)
{
    if (!AreFinite(p0, p1, p2, half)) {
        return;
    }
    Ellipse const ellipse(p0, p1, p2);
    bool const mayBeDegenerate = mode > OvalFillBrushed;
    if ((ellipse.IsDegenerate() && !mayBeDegenerate) || !ellipse.HasInverse()) {
        return;
    }
    SpanWriter const writer(raster, value, distance, brushRadius, mode);
    HvPixelSpan const rows = ellipse.Rows(half, raster.height);
    for (int y = rows.first; y <= rows.last; ++y) {
        double first;
        double last;
        ellipse.GetSpan(y + half, half, first, last);
        writer.Write(y, first, last);
    }
}

void ScanConvertIsothetic(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                          HvPoint2<float> const& p2, double half, HvUByteRaster& raster,
                          unsigned char value, HvFloatRaster& distance, int brushRadius,
                          OvalFillMode mode)
{
    if (!AreFinite(p0, p1, p2, half)) {
        return;
    }
    IsotheticEllipse const ellipse(p0, p1, p2);
    SpanWriter const writer(raster, value, distance, brushRadius, mode);
    HvPixelSpan const rows = ellipse.Rows(half, raster.height);
    for (int y = rows.first; y <= rows.last; ++y) {
        double const reach = ellipse.Reach(y, half);
        writer.Write(y, ellipse.CentreX() - reach, ellipse.CentreX() + reach);
    }
}

void FillDistanceRaster(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                        HvPoint2<float> const& p2, double half, HvFloatRaster& distance)
{
    if (!AreFinite(p0, p1, p2, half)) {
        return;
    }
    Ellipse const ellipse(p0, p1, p2);
    if (!ellipse.HasInverse()) {
        return;
    }
    HvPixelSpan const rows = ellipse.Rows(half, distance.height);
    for (int y = rows.first; y <= rows.last; ++y) {
        double first;
        double last;
        ellipse.GetSpan(y + half, half, first, last);
        HvPixelSpan const span = HvPixelSpan::Cut(first, last, distance.width);
        for (int x = span.first; x <= span.last; ++x) {
            double const d = std::min(1.0, std::sqrt(ellipse.FormAt(x + half, y + half)));
            distance.SetValWhenSmaller(x, y, static_cast<float>(d));
        }
    }
}

void FillDistanceRasterIsothetic(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                                 HvPoint2<float> const& p2, double half, HvFloatRaster& distance)
{
    if (!AreFinite(p0, p1, p2, half)) {
        return;
    }
    IsotheticEllipse const ellipse(p0, p1, p2);
    HvPixelSpan const rows = ellipse.Rows(half, distance.height);
    for (int y = rows.first; y <= rows.last; ++y) {
        double const reach = ellipse.Reach(y, half);
        HvPixelSpan const span =
            HvPixelSpan::Cut(ellipse.CentreX() - reach, ellipse.CentreX() + reach, distance.width);
        for (int x = span.first; x <= span.last; ++x) {
            distance.SetValWhenSmaller(x, y, static_cast<float>(ellipse.DistanceAt(x, y)));
        }
    }
}
