// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Parallelograms into pixels.

#include <hv/raster/scan_convert.h>

#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/internal/pixel_span.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace {

using Point = HvPoint2<double>;

/// The numbers along x from `low` to `high`; empty while `low` is above.
struct Interval {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void Add(double x)
    {
        low = std::min(low, x);
        high = std::max(high, x);
    }
};

/// A side from its lower end to its upper one.
struct Side {
    Point low;
    Point high;

    /// Where the side crosses `y`, which lies between its ends. Of ordinary coordinates the product
    /// is exact, and so is a crossing that double can hold: a sample point on a side is found to be
    /// on it.
    double At(double y) const
    {
        double const x = low.x + (y - low.y) * (high.x - low.x) / (high.y - low.y);
        // Rounding stays within the ends.
        return std::min(std::max(x, std::min(low.x, high.x)), std::max(low.x, high.x));
    }
};

/// A convex quadrilateral, cut by horizontal lines.
class Quadrilateral {
public:
    Quadrilateral(Point const& p0, Point const& p1, Point const& p2)
        : corners_{p0, p1, p1 + p2 - p0, p2}, rows_(), isFinite_(true)
    {
        for (int i = 0; i < 4; ++i) {
            Point const& from = corners_[i];
            Point const& to = corners_[(i + 1) % 4];
            sides_[i] = from.y < to.y ? Side{from, to} : Side{to, from};
            rows_.Add(from.y);
            isFinite_ = isFinite_ && std::isfinite(from.x) && std::isfinite(from.y);
        }
    }

    bool IsFinite() const { return isFinite_; }
    Interval const& Rows() const { return rows_; }

    /// What the line at `y` has inside. Of a side the lower end belongs to it, the upper does not,
    /// so that a line through a corner meets two sides as any other.
    Interval Cut(double y) const
    {
        Interval inside;
        for (Side const& side : sides_) {
            if (y >= side.low.y && side.high.y > y) {
                inside.Add(side.At(y));
            }
        }
        return inside;
    }

    /// The extent along x of what lies between the lines at `from` and `to`, both included.
    Interval Band(double from, double to) const
    {
        Interval inside;
        for (Side const& side : sides_) {
            for (double const y : {from, to}) {
                if (y >= side.low.y && side.high.y >= y && side.high.y > side.low.y) {
                    inside.Add(side.At(y));
                }
            }
        }
        for (Point const& corner : corners_) {
            if (corner.y >= from && to >= corner.y) {
                inside.Add(corner.x);
            }
        }
        return inside;
    }

private:
    Point corners_[4];
    Side sides_[4];
    Interval rows_;
    bool isFinite_;
};

/// Calls `fill(y, span)` for each row of a raster of width * height that the shape covers: by the
/// sample points, those on the left and lower sides included; or, with `touched`, by all points,
/// where a point belongs to the pixel that floor(point - half) tells.
template <class Fill>
void ForEachRow(Quadrilateral const& shape, double half, bool touched, int width, int height,
                Fill fill)
{
    Interval const& y = shape.Rows();
    HvPixelSpan const rows =
        touched ? HvPixelSpan::Cut(std::floor(y.low - half), std::floor(y.high - half), height)
                : HvPixelSpan::Cut(std::ceil(y.low - half), std::ceil(y.high - half - 1), height);
    for (int row = rows.first; row <= rows.last; ++row) {
        double const sample = row + half;
        Interval const x = touched ? shape.Band(sample, sample + 1) : shape.Cut(sample);
        HvPixelSpan const span =
            touched
                ? HvPixelSpan::Cut(std::floor(x.low - half), std::floor(x.high - half), width)
                : HvPixelSpan::Cut(std::ceil(x.low - half), std::ceil(x.high - half - 1), width);
        if (!span.IsEmpty()) {
            fill(row, span);
        }
    }
}

/// The distance from a centre line, which is 1 at floor(p0). The length of the side along which the
/// line runs cancels out.
class CentreLine {
public:
    /// The line through `centre` along `side`, or where that vanishes along `other`.
    CentreLine(Point const& centre, Point const& side, Point const& other, Point const& scaleAt)
        : centre_(centre), along_(side == Point() ? other : side), scale_(AreaTo(scaleAt))
    {
    }

    /// At most 1, also where there is no scale.
    double DistanceAt(double x, double y) const
    {
        double const distance = std::fabs(AreaTo(Point(x, y)) / scale_);
        return 1.0 > distance ? distance : 1.0;
    }

private:
    double AreaTo(Point const& p) const { return HvPoint2_AdetB(along_, p - centre_); }

    Point centre_;
    Point along_;
    double scale_;
};

/// Leaves the distances of the modes from RectFillRadial on.
void FillDistances(Quadrilateral const& shape, Point const& p0, Point const& p1, Point const& p2,
                   double half, HvFloatRaster& distance, RectFillMode mode)
{
    Point const width = p1 - p0;
    Point const height = p2 - p0;
    Point const centre = (p1 + p2) * 0.5;
    Point const scaleAt(std::floor(p0.x), std::floor(p0.y));
    CentreLine const alongWidth(centre, width, height, scaleAt);
    CentreLine const alongHeight(centre, height, width, scaleAt);
    bool const touched = mode == RectFillLinearTouched || mode == RectFillLinearThin;
    ForEachRow(
        shape, half, touched, distance.width, distance.height, [&](int y, HvPixelSpan const& span) {
            float* const row = distance.data + static_cast<std::ptrdiff_t>(y) * distance.width;
            for (int x = span.first; x <= span.last; ++x) {
                double const d = alongWidth.DistanceAt(x, y);
                if (mode == RectFillRadial) {
                    row[x] = static_cast<float>(std::max(d, alongHeight.DistanceAt(x, y)));
                } else {
                    distance.SetValWhenSmaller(x, y, static_cast<float>(d));
                }
            }
        });
}

}  // namespace

void ScanConvert(HvPoint2<float> const& p0, HvPoint2<float> const& p1, HvPoint2<float> const& p2,
                 double half, HvUByteRaster& raster, unsigned char value, HvFloatRaster& distance,
                 RectFillMode mode)
{
    Quadrilateral const shape{Point(p0), Point(p1), Point(p2)};
    if (!shape.IsFinite() || !std::isfinite(half)) {
        return;
    }
    switch (mode) {
    case RectFillPlain:
    case RectFillTouched:
        ForEachRow(shape, half, mode == RectFillTouched, raster.width, raster.height,
                   [&](int y, HvPixelSpan const& span) {
                       unsigned char* const row =
                           raster.data + static_cast<std::ptrdiff_t>(y) * raster.width;
                       std::fill(row + span.first, row + span.last + 1, value);
                   });
        break;
    case RectFillNothing:
        break;
    case RectFillRadial:
    case RectFillLinear:
    case RectFillLinearTouched:
    case RectFillLinearThin:
        FillDistances(shape, Point(p0), Point(p1), Point(p2), half, distance, mode);
        break;
    }
}
