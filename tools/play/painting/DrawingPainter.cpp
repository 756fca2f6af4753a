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
#include <cstring>

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
/// Two columns of a transform that differ by less than this share draw a round pen round.
constexpr double kRoundPen = 1e-6;

std::uint8_t ByteOf(double share)
{
    return static_cast<std::uint8_t>(share > 0.0 ? std::min(share, 1.0) * 255.0 + 0.5 : 0.0);
}

PaintColour ColourOf(SceneColour const& colour, double opacity)
{
    return {ByteOf(colour.red), ByteOf(colour.green), ByteOf(colour.blue), ByteOf(opacity)};
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

DrawingPainter::DrawingPainter(int width, int height) : coverage_(width, height, 0)
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
        HvPath2f const pixels = paint->stroke ? StrokeOutline(drawing, *paint, toPixels)
                                              : FillOutline(drawing, *paint, toPixels);
        PixelBox const box = Fill(pixels, paint->stroke ? 1 : paint->fillRule);
        if (paint->gradient) {
            HvTransfo4 gradientToPixels(toPixels);
            gradientToPixels.PostMultiply(paint->toLayer);
            GradientColours const colours(*paint->gradient, gradientToPixels, share);
            canvas.PaintRows(coverage_.data, box,
                             [&colours](int x, int y, std::size_t count, std::uint32_t* row) {
                                 colours.Row(x, y, count, row);
                             });
        } else {
            canvas.Paint(coverage_.data, box, ColourOf(paint->colour, share));
        }
        ClearCoverage(box);
    }
}

void DrawingPainter::PaintPath(HvPath2f const& path, HvTransfo4 const& toPixels,
                               SceneColour const& colour, double opacity, Canvas& canvas)
{
    HvPath2f pixels(path.NumPoints());
    MappedPath_Append(path, toPixels, OpenSubpaths::Closed, pixels);
    PixelBox const box = Fill(pixels, 1);
    canvas.Paint(coverage_.data, box, ColourOf(colour, opacity));
    ClearCoverage(box);
}

void DrawingPainter::Cover(HvPath2f const& path, HvTransfo4 const& toPixels, double feather,
                           PixelBox const& box, std::uint8_t* shares)
{
    HvPath2f pixels(path.NumPoints());
    MappedPath_Append(path, toPixels, OpenSubpaths::Closed, pixels);
    // Half of the rim lies inside and half outside.
    double const radius = std::min(feather * PenOf(toPixels).scale / 2, kWidestFeather);
    fillGc_.fillRule = 1;
    if (radius > 0.0) {
        CoverSoftly(pixels, radius, box, shares);
        return;
    }
    PixelBox const covered = Fill(pixels, 1);
    CopyRows(coverage_, 0, box, shares);
    ClearCoverage(covered);
}

/// What lies outside a raster counts as empty to a blur: around the picture there must be room.
void DrawingPainter::CoverSoftly(HvPath2f& pixels, double radius, PixelBox const& box,
                                 std::uint8_t* shares)
{
    int const margin = static_cast<int>(std::ceil(radius)) + 1;
    HvUByteRaster raster(coverage_.width + 2 * margin, coverage_.height + 2 * margin, 0);
    pixels.Translate({static_cast<float>(margin), static_cast<float>(margin)});
    fillGc_.softRadiusA = radius;
    pixels.SoftFill(fillGc_, raster, nullptr);
    fillGc_.softRadiusA = 0.0;
    CopyRows(raster, margin, box, shares);
}

/// Copies what `raster` has in a box of the picture, which lies in it behind a margin.
void DrawingPainter::CopyRows(HvUByteRaster const& raster, int margin, PixelBox const& box,
                              std::uint8_t* shares) const
{
    auto const width = static_cast<std::size_t>(raster.width);
    for (int y = box.top; y < box.bottom; ++y) {
        std::size_t const row = static_cast<std::size_t>(y + margin) * width;
        std::memcpy(shares + Offset(box.left, y),
                    raster.data + row + static_cast<std::size_t>(box.left + margin),
                    static_cast<std::size_t>(box.right - box.left));
    }
}

HvPath2f DrawingPainter::FillOutline(Drawing const& drawing, DrawnPaint const& paint,
                                     HvTransfo4 const& toPixels) const
{
    HvPath2f pixels(1u);
    for (std::size_t const i : paint.outlines) {
        DrawnOutline const& outline = drawing.outlines[i];
        HvTransfo4 map(toPixels);
        map.PostMultiply(outline.toLayer);
        MappedPath_Append(outline.path, map, OpenSubpaths::Closed, pixels);
    }
    return pixels;
}

/// The pen belongs to the group of the paint: a transform around it that stretches unevenly
/// stretches the pen too. Such a stroke is drawn in the group, as large as it will be on the
/// average, so that its curves are as smooth; then it is mapped.
HvPath2f DrawingPainter::StrokeOutline(Drawing const& drawing, DrawnPaint const& paint,
                                       HvTransfo4 const& toPixels)
{
    DrawnStroke const& stroke = *paint.stroke;
    HvTransfo4 paintToPixels(toPixels);
    paintToPixels.PostMultiply(paint.toLayer);
    Pen const pen = PenOf(paintToPixels);
    HvPath2f pixels(1u);
    HvTransfo4 layerToPaint;
    if (!(pen.scale * stroke.width > 0.0) || paint.toLayer.Inverse(layerToPaint) == 0) {
        return pixels;
    }
    HvTransfo4 layerToPen;
    layerToPen.ScaleXY(pen.scale, pen.scale, HvPoint2<double>());
    layerToPen.PostMultiply(layerToPaint);
    HvTransfo4 penToPixels(paintToPixels);
    penToPixels.ScaleXY(1.0 / pen.scale, 1.0 / pen.scale, HvPoint2<double>());

    strokeGc_.strokeWidth = std::min(stroke.width * pen.scale, kWidestStroke);
    strokeGc_.capStyle = stroke.capStyle;
    strokeGc_.joinStyle = stroke.joinStyle;
    strokeGc_.miterLimit = stroke.miterLimit;
    for (std::size_t const i : paint.outlines) {
        DrawnOutline const& outline = drawing.outlines[i];
        HvTransfo4 toPen(pen.isRound ? toPixels : layerToPen);
        toPen.PostMultiply(outline.toLayer);
        HvPath2f path(outline.path.NumPoints());
        MappedPath_Append(stroke.dashes.empty()
                              ? outline.path
                              : PathPieces_Dash(outline.path, stroke.dashes, stroke.dashOffset),
                          toPen, OpenSubpaths::Kept, path);
        MappedPath_Append(StrokeOutline_Of(path, strokeGc_),
                          pen.isRound ? HvTransfo4() : penToPixels, OpenSubpaths::Kept, pixels);
    }
    return pixels;
}

/// Covers what the path fills; the box of what may have been covered.
PixelBox DrawingPainter::Fill(HvPath2f const& pixels, int fillRule)
{
    fillGc_.fillRule = fillRule;
    pixels.AAFill(fillGc_, coverage_, nullptr);
    return BoxOf(pixels);
}

PixelBox DrawingPainter::BoxOf(HvPath2f const& pixels) const
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
    return {std::max(low(extent.min.x, coverage_.width) - kBoxMargin, 0),
            std::max(low(extent.min.y, coverage_.height) - kBoxMargin, 0),
            std::min(high(extent.max.x, coverage_.width) + kBoxMargin, coverage_.width),
            std::min(high(extent.max.y, coverage_.height) + kBoxMargin, coverage_.height)};
}

void DrawingPainter::ClearCoverage(PixelBox const& box)
{
    for (int y = box.top; y < box.bottom; ++y) {
        std::memset(coverage_.data + Offset(box.left, y), 0,
                    static_cast<std::size_t>(box.right - box.left));
    }
}
