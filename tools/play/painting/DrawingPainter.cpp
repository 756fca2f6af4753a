// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Drawings painted through the library's coverage.

#include <tools/paint/stroke_outline.h>
#include <tools/play/evaluation/path_pieces.h>
#include <tools/play/painting/DrawingPainter.h>
#include <tools/play/painting/GradientColours.h>
#include <tools/play/painting/mapped_path.h>

#include <hv/foundation/HvExtent2.h>

#include <algorithm>
#include <cmath>

namespace {

/// As fine as fills and strokes go, and strokes are joined wherever their sides part by more, in
/// pixels.
constexpr double kFlatness = 0.01;
/// Wider than any picture, in pixels.
constexpr double kWidestStroke = 1 << 18;
/// The widest blur, in pixels.
constexpr double kWidestFeather = 500.0;
/// How far beyond its outline a fill may cover pixels: its right end counts.
constexpr int kBoxMargin = 1;
/// The first number of a key, which tells fills from strokes.
constexpr double kFillKey = 0.0;
constexpr double kStrokeKey = 1.0;
/// Room that most drawings do not outgrow.
constexpr unsigned int kFewPoints = 64;
/// Two columns of a transform that differ by less than this share draw a round pen round.
constexpr double kRoundPen = 1e-6;

std::uint8_t ByteOf(double share)
{
    return static_cast<std::uint8_t>(share > 0.0 ? std::min(share, 1.0) * 255.0 + 0.5 : 0.0);
}

/// How a transform shapes a round pen.
struct Pen {
    double scale;  ///< the mean of what it does to lengths
    bool isRound;
};

Pen PenOf(HvTransfo4 const& transform)
{
    double const* const m = transform.GetMatrixPtr();
    double const x = m[0] * m[0] + m[1] * m[1];
    double const y = m[4] * m[4] + m[5] * m[5];
    double const across = m[0] * m[4] + m[1] * m[5];
    double const slack = kRoundPen * (x + y);
    return {std::sqrt(std::fabs(m[0] * m[5] - m[1] * m[4])),
            std::fabs(x - y) <= slack && std::fabs(across) <= slack};
}

}  // namespace

DrawingPainter::DrawingPainter(HvUByteRaster& raster) : raster_(raster)
{
    fillGc_.flatness = kFlatness;
    fillGc_.softClipToShape = 0;
    strokeGc_.flatness = kFlatness;
}

void DrawingPainter::Paint(Drawing const& drawing, HvTransfo4 const& toPixels, double opacity,
                           Canvas& canvas)
{
    for (auto paint = drawing.paints.rbegin(); paint != drawing.paints.rend(); ++paint) {
        double const share = paint->opacity * opacity;
        if (!(share > 0.0)) {
            continue;
        }
        Coverage const& coverage = CoverageOf(drawing, *paint, toPixels);
        if (paint->gradient) {
            HvTransfo4 gradientToPixels(toPixels);
            gradientToPixels.PostMultiply(paint->toLayer);
            canvas.PaintColours(coverage, GradientColours(*paint->gradient, gradientToPixels,
                                                          TableOf(*paint->gradient, share)));
        } else {
            canvas.Paint(coverage, ColourOf(paint->colour, share));
        }
    }
}

GradientTable const& DrawingPainter::TableOf(DrawnGradient const& gradient, double opacity)
{
    key_.Clear();
    GradientTable::AddTo(key_, gradient, opacity);
    return gradientTables_.Get(key_, [&](GradientTable& table) { table.Make(gradient, opacity); });
}

void DrawingPainter::PaintPath(HvPath2f const& path, HvTransfo4 const& toPixels,
                               SceneColour const& colour, double opacity, Canvas& canvas)
{
    canvas.Paint(CoverageOf(path, toPixels, 0.0), ColourOf(colour, opacity));
}

PaintColour DrawingPainter::ColourOf(SceneColour const& colour, double opacity)
{
    return {ByteOf(colour.red), ByteOf(colour.green), ByteOf(colour.blue), ByteOf(opacity)};
}

Coverage const& DrawingPainter::CoverageOf(Drawing const& drawing, DrawnPaint const& paint,
                                           HvTransfo4 const& toPixels)
{
    if (paint.stroke) {
        return StrokeCoverage(drawing, paint, toPixels);
    }
    HvPath2f pixels(kFewPoints);
    for (std::size_t const i : paint.outlines) {
        DrawnOutline const& outline = drawing.outlines[i];
        HvTransfo4 map(toPixels);
        map.PostMultiply(outline.toLayer);
        MappedPath_Append(outline.path, map, OpenSubpaths::Closed, pixels);
    }
    return FillCoverage(pixels, paint.fillRule, 0.0);
}

Coverage const& DrawingPainter::CoverageOf(HvPath2f const& path, HvTransfo4 const& toPixels,
                                           double feather)
{
    HvPath2f pixels(path.NumPoints());
    MappedPath_Append(path, toPixels, OpenSubpaths::Closed, pixels);
    // Half of the rim lies inside and half outside.
    return FillCoverage(pixels, 1, std::min(feather * PenOf(toPixels).scale / 2, kWidestFeather));
}

Coverage const& DrawingPainter::FillCoverage(HvPath2f const& pixels, int fillRule, double radius)
{
    key_.Clear();
    key_.Add({kFillKey, static_cast<double>(fillRule), radius});
    key_.Add(pixels);
    return coverages_.Get(key_, [&](Coverage& coverage) {
        if (radius > 0.0) {
            FillSoftly(pixels, radius, coverage);
        } else {
            Fill(pixels, fillRule, coverage);
        }
    });
}

void DrawingPainter::Fill(HvPath2f const& pixels, int fillRule, Coverage& coverage)
{
    fillGc_.fillRule = fillRule;
    pixels.AAFill(fillGc_, raster_, nullptr);
    coverage.Take(raster_, BoxOf(pixels, kBoxMargin));
}

/// What lies outside a raster counts as empty to a blur: around the box there must be room.
void DrawingPainter::FillSoftly(HvPath2f const& pixels, double radius, Coverage& coverage)
{
    int const margin = static_cast<int>(std::ceil(radius)) + 1;
    PixelBox const box = BoxOf(pixels, margin + kBoxMargin);
    int const left = box.left - margin;
    int const top = box.top - margin;
    HvUByteRaster raster(box.right + margin - left, box.bottom + margin - top, 0);
    HvPath2f moved(pixels);
    moved.Translate({static_cast<float>(-left), static_cast<float>(-top)});
    fillGc_.fillRule = 1;
    fillGc_.softRadiusA = radius;
    moved.SoftFill(fillGc_, raster, nullptr);
    fillGc_.softRadiusA = 0.0;
    coverage.Take(raster, box, left, top);
}

/// The pen belongs to the group of the paint: a transform around it that stretches unevenly
/// stretches the pen too. Such a stroke is drawn in the group, as large as it will be on the
/// average, so that its curves are as smooth; then it is mapped.
Coverage const& DrawingPainter::StrokeCoverage(Drawing const& drawing, DrawnPaint const& paint,
                                               HvTransfo4 const& toPixels)
{
    DrawnStroke const& stroke = *paint.stroke;
    HvTransfo4 paintToPixels(toPixels);
    paintToPixels.PostMultiply(paint.toLayer);
    Pen const pen = PenOf(paintToPixels);
    HvTransfo4 layerToPen;
    if (!(pen.scale * stroke.width > 0.0) || paint.toLayer.Inverse(layerToPen) == 0) {
        return FillCoverage(HvPath2f(0u), 1, 0.0);
    }
    HvTransfo4 penToPixels;
    if (pen.isRound) {
        layerToPen = toPixels;
    } else {
        HvTransfo4 larger;
        larger.ScaleXY(pen.scale, pen.scale, HvPoint2<double>());
        layerToPen.PreMultiply(larger);
        penToPixels = paintToPixels;
        penToPixels.ScaleXY(1.0 / pen.scale, 1.0 / pen.scale, HvPoint2<double>());
    }
    HvPath2f path(kFewPoints);
    for (std::size_t const i : paint.outlines) {
        DrawnOutline const& outline = drawing.outlines[i];
        HvTransfo4 toPen(layerToPen);
        toPen.PostMultiply(outline.toLayer);
        MappedPath_Append(stroke.dashes.empty()
                              ? outline.path
                              : PathPieces_Dash(outline.path, stroke.dashes, stroke.dashOffset),
                          toPen, OpenSubpaths::Kept, path);
    }
    strokeGc_.strokeWidth = std::min(stroke.width * pen.scale, kWidestStroke);
    strokeGc_.capStyle = stroke.capStyle;
    strokeGc_.joinStyle = stroke.joinStyle;
    strokeGc_.miterLimit = stroke.miterLimit;
    double const* const m = penToPixels.GetMatrixPtr();
    key_.Clear();
    key_.Add({kStrokeKey, strokeGc_.strokeWidth, static_cast<double>(stroke.capStyle),
              static_cast<double>(stroke.joinStyle), stroke.miterLimit, m[0], m[1], m[4], m[5],
              m[12], m[13]});
    key_.Add(path);
    return coverages_.Get(key_, [&](Coverage& coverage) {
        HvPath2f const outline = StrokeOutline_Of(path, strokeGc_);
        if (pen.isRound) {
            Fill(outline, 1, coverage);
        } else {
            HvPath2f pixels(outline.NumPoints());
            MappedPath_Append(outline, penToPixels, OpenSubpaths::Kept, pixels);
            Fill(pixels, 1, coverage);
        }
    });
}

/// The pixels of the picture that lie within `margin` of a path.
PixelBox DrawingPainter::BoxOf(HvPath2f const& pixels, int margin) const
{
    if (pixels.NumPoints() == 0) {
        return {};
    }
    HvExtent2<float> extent;
    pixels.GetExtent(extent);
    // What is no number counts as the whole width or height.
    auto const low = [](float value, int end) {
        return value > 0.0F ? static_cast<int>(std::min(value, static_cast<float>(end))) : 0;
    };
    auto const high = [](float value, int end) {
        return value < static_cast<float>(end) ? static_cast<int>(std::ceil(std::max(value, 0.0F)))
                                               : end;
    };
    return {std::max(low(extent.min.x, raster_.width) - margin, 0),
            std::max(low(extent.min.y, raster_.height) - margin, 0),
            std::min(high(extent.max.x, raster_.width) + margin, raster_.width),
            std::min(high(extent.max.y, raster_.height) + margin, raster_.height)};
}
