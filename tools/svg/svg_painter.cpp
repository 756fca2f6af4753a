// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// An SVG document painted through the library's coverage.

#include <hv/foundation/HvExtent2.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2fIter.h>
#include <tools/svg/svg_outlines.h>
#include <tools/svg/svg_painter.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace {

/// Strokes are joined wherever their sides part by more than this, in pixels.
constexpr double kJointGap = 0.01;
/// The styles of HvGC for round corners and ends.
constexpr int kRoundJoin = 2;
constexpr int kRoundCap = 0;
/// How far the handles of a quarter of a circle reach, as a share of its radius.
constexpr float kQuarterCircle = 0.55228475F;
/// How far beyond its outline a fill may cover pixels: its right end counts.
constexpr int kBoxMargin = 1;

std::size_t NumShapesIn(std::vector<SvgElement> const& elements)
{
    std::size_t count = 0;
    for (SvgElement const& element : elements) {
        count += element.outline.NumPoints() != 0 ? 1 : 0;
        count += NumShapesIn(element.children);
    }
    return count;
}

std::uint8_t ByteOf(double share)
{
    return static_cast<std::uint8_t>(std::clamp(share, 0.0, 1.0) * 255.0 + 0.5);
}

/// Appends a disc of the stroke's width around a point of the path. Discs run as the rings of a
/// stroke do, so that by winding they add to it.
void AppendDisc(HvPoint2<float> const& point, HvGC const& gc, HvPath2f& outline)
{
    auto const radius = static_cast<float>(gc.strokeWidth / 2.0);
    HvPoint2<float> const c = gc.transform.Map(point);
    HvPoint2<float> direction(radius, 0.0F);
    outline.Moveto(c + direction);
    for (int quarter = 0; quarter < 4; ++quarter) {
        HvPoint2<float> const next(direction.y, -direction.x);
        outline.Curveto(c + direction + next * kQuarterCircle,
                        c + next + direction * kQuarterCircle, c + next);
        direction = next;
    }
    outline.Closeto();
}

/// Completes what SVG rounds and the library does not. The library turns a round join only up to
/// 120 degrees and bevels sharper ones: all corners get a disc. It also joins the ends of an open
/// subpath that meet, where SVG puts two caps: round ones make a disc, too.
void AppendRoundParts(HvPath2f const& path, HvGC const& gc, HvPath2f& outline)
{
    unsigned int first = 0;
    unsigned int last = 0;
    HvPath2fIter subpaths(path);
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        bool const isClosed = path.IsSubpathClosed(first) != 0;
        bool const isMeeting = last > first && path.GetPoint(first) == path.GetPoint(last);
        if (isClosed ? gc.joinStyle == kRoundJoin : isMeeting && gc.capStyle == kRoundCap) {
            AppendDisc(path.GetPoint(first), gc, outline);
        }
        if (gc.joinStyle != kRoundJoin) {
            continue;
        }
        for (unsigned int node = path.EndOfSegment(first); node < last;
             node = path.EndOfSegment(node + 1)) {
            AppendDisc(path.GetPoint(node), gc, outline);
        }
    }
}

class SvgPainter {
public:
    SvgPainter(SvgPaintOptions const& options, int width, int height,
               std::function<void()> const& advance)
        : options_(options), advance_(advance), coverage_(width, height, 0)
    {
    }

    void Paint(std::vector<SvgElement> const& elements, HvTransfo4 const& toPixels, Canvas& canvas)
    {
        for (SvgElement const& element : elements) {
            Paint(element, toPixels, canvas);
        }
    }

private:
    void Paint(SvgElement const& element, HvTransfo4 const& toPixels, Canvas& canvas)
    {
        std::uint8_t const opacity = ByteOf(element.opacity);
        bool const isLayer = opacity != 255;
        Canvas layer(isLayer ? canvas.Width() : 0, isLayer ? canvas.Height() : 0);
        Canvas& target = isLayer ? layer : canvas;
        if (element.outline.NumPoints() != 0) {
            PaintShape(element, toPixels, target);
            advance_();
        }
        Paint(element.children, toPixels, target);
        if (isLayer) {
            canvas.Paint(layer, opacity);
        }
    }

    void PaintShape(SvgElement const& element, HvTransfo4 const& toPixels, Canvas& canvas)
    {
        SvgStyle const& style = element.style;
        HvGC gc;
        gc.flatness = kJointGap;
        gc.fillRule = style.fillRule;
        gc.transform = toPixels;
        gc.transform.PostMultiply(element.transform);
        if (options_.strokeWidth) {
            SvgPaint const paint = style.stroke.isPainted ? style.stroke : style.fill;
            PaintStroke(element, *options_.strokeWidth, paint, gc, canvas);
            return;
        }
        PaintFill(SvgOutline_Closed(element.outline), style.fill, gc, canvas);
        PaintStroke(element, style.strokeWidth, style.stroke, gc, canvas);
    }

    void PaintFill(HvPath2f const& outline, SvgPaint const& paint, HvGC& gc, Canvas& canvas)
    {
        if (!paint.isPainted) {
            return;
        }
        gc.softRadiusA = options_.softRadius;
        gc.softClipToShape = 0;
        outline.SoftFill(gc, coverage_, nullptr);
        gc.softRadiusA = 0.0;
        PaintCoverage(outline, gc, paint, canvas);
    }

    void PaintStroke(SvgElement const& element, double width, SvgPaint const& paint, HvGC& gc,
                     Canvas& canvas)
    {
        if (!paint.isPainted || !(width > 0.0)) {
            return;
        }
        // A transform that stretches unevenly would stretch the pen too; its mean is taken.
        double const* const m = gc.transform.GetMatrixPtr();
        gc.strokeWidth = width * std::sqrt(std::fabs(m[0] * m[5] - m[1] * m[4]));
        gc.capStyle = element.style.capStyle;
        gc.joinStyle = element.style.joinStyle;
        gc.miterLimit = element.style.miterLimit;
        HvPath2f outline(1u);
        element.outline.GetStrokeOutline(gc, outline);
        AppendRoundParts(element.outline, gc, outline);
        HvGC strokeGc;
        strokeGc.flatness = kJointGap;
        outline.AAFill(strokeGc, coverage_, nullptr);
        PaintCoverage(outline, strokeGc, paint, canvas);
    }

    /// Paints what was covered, and clears it for the next shape.
    void PaintCoverage(HvPath2f const& outline, HvGC const& gc, SvgPaint const& paint,
                       Canvas& canvas)
    {
        PixelBox const box = BoxOf(outline, gc);
        canvas.Paint(
            coverage_.data, box,
            {paint.colour.red, paint.colour.green, paint.colour.blue, ByteOf(paint.opacity)});
        for (int y = box.top; y < box.bottom; ++y) {
            std::size_t const row =
                static_cast<std::size_t>(y) * static_cast<std::size_t>(coverage_.width);
            std::memset(coverage_.data + row + box.left, 0,
                        static_cast<std::size_t>(box.right - box.left));
        }
    }

    /// The pixels that a fill may have covered. A blur writes them all.
    PixelBox BoxOf(HvPath2f const& outline, HvGC const& gc) const
    {
        PixelBox const whole = {0, 0, coverage_.width, coverage_.height};
        if (options_.softRadius >= 1.0) {
            return whole;
        }
        HvExtent2<float> extent;
        outline.GetExtent(extent);
        gc.transform.MapInPlace(extent);
        auto const cut = [](double value, int high) {
            return static_cast<int>(std::min(std::max(value, 0.0), double(high)));
        };
        return {cut(std::floor(extent.min.x) - kBoxMargin, whole.right),
                cut(std::floor(extent.min.y) - kBoxMargin, whole.bottom),
                cut(std::ceil(extent.max.x) + kBoxMargin, whole.right),
                cut(std::ceil(extent.max.y) + kBoxMargin, whole.bottom)};
    }

    SvgPaintOptions const& options_;
    std::function<void()> const& advance_;
    HvUByteRaster coverage_;  ///< of one shape at a time; nothing is covered between shapes
};

}  // namespace

std::size_t SvgPainter_NumShapes(SvgDocument const& document)
{
    return NumShapesIn(document.elements);
}

void SvgPainter_Paint(SvgDocument const& document, SvgPaintOptions const& options, Canvas& canvas,
                      std::function<void()> const& advance)
{
    HvTransfo4 toPixels;
    toPixels.ScaleXY(options.scale, options.scale, HvPoint2<double>());
    toPixels.PostMultiply(document.transform);
    SvgPainter painter(options, canvas.Width(), canvas.Height(), advance);
    painter.Paint(document.elements, toPixels, canvas);
}
