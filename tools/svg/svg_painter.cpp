// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// An SVG document painted through the library's coverage.

#include <hv/foundation/HvExtent2.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <tools/paint/stroke_outline.h>
#include <tools/svg/svg_outlines.h>
#include <tools/svg/svg_painter.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// Strokes are joined wherever their sides part by more than this, in pixels.
constexpr double kJointGap = 0.01;
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

class SvgPainter {
public:
    SvgPainter(SvgPaintOptions const& options, int width, int height,
               std::function<void()> const& advance)
        : options_(options), advance_(advance), raster_(width, height, 0)
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
        outline.SoftFill(gc, raster_, nullptr);
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
        HvPath2f const outline = StrokeOutline_Of(element.outline, gc);
        HvGC strokeGc;
        strokeGc.flatness = kJointGap;
        outline.AAFill(strokeGc, raster_, nullptr);
        PaintCoverage(outline, strokeGc, paint, canvas);
    }

    /// Paints what was covered, and clears it for the next shape.
    void PaintCoverage(HvPath2f const& outline, HvGC const& gc, SvgPaint const& paint,
                       Canvas& canvas)
    {
        coverage_.Take(raster_, BoxOf(outline, gc));
        canvas.Paint(coverage_, {paint.colour.red, paint.colour.green, paint.colour.blue,
                                 ByteOf(paint.opacity)});
    }

    /// The pixels that a fill may have covered. A blur writes them all.
    PixelBox BoxOf(HvPath2f const& outline, HvGC const& gc) const
    {
        PixelBox const whole = {0, 0, raster_.width, raster_.height};
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
    HvUByteRaster raster_;  ///< of one shape at a time; nothing is covered between shapes
    Coverage coverage_;     ///< the same, to be painted
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
