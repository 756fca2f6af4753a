// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Drawings painted through the library's coverage.

#ifndef HV_TOOLS_PLAY_PAINTING_DRAWINGPAINTER_H
#define HV_TOOLS_PLAY_PAINTING_DRAWINGPAINTER_H

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <tools/paint/Canvas.h>
#include <tools/play/evaluation/drawing.h>
#include <tools/play/painting/FrameCache.h>
#include <tools/play/painting/GradientTable.h>

/// Fills and strokes outlines: each paint becomes one path in pixels, the path coverage, the
/// coverage colour.
class DrawingPainter {
public:
    /// @param raster  of the size of the picture, all 0, which it is again between paints. It
    ///                outlives the painter; several painters of a thread may share it.
    explicit DrawingPainter(HvUByteRaster& raster);

    /// Begins a frame: only what the one before painted, too, is not made anew.
    void BeginFrame()
    {
        coverages_.BeginFrame();
        gradientTables_.BeginFrame();
    }

    /// Paints the drawing, made fainter by `opacity`, 0 to 1: each paint for itself.
    void Paint(Drawing const& drawing, HvTransfo4 const& toPixels, double opacity, Canvas& canvas);
    /// Paints a drawing of at most one paint, which has no gradient, through the veil that
    /// veilOf(box) gives for the box of its coverage, without this painter.
    template <class VeilOf>
    void PaintVeiled(Drawing const& drawing, HvTransfo4 const& toPixels, VeilOf const& veilOf,
                     Canvas& canvas)
    {
        for (DrawnPaint const& paint : drawing.paints) {
            Coverage const& coverage = CoverageOf(drawing, paint, toPixels);
            canvas.Paint(coverage, ColourOf(paint.colour, paint.opacity), veilOf(coverage.Box()));
        }
    }
    /// Paints one path of a drawing's coordinates.
    void PaintPath(HvPath2f const& path, HvTransfo4 const& toPixels, SceneColour const& colour,
                   double opacity, Canvas& canvas);
    /// The coverage of a filled path; its rim runs from full to none over a width of `feather`, in
    /// the path's coordinates. Valid until the painter is used again.
    Coverage const& CoverageOf(HvPath2f const& path, HvTransfo4 const& toPixels, double feather);

private:
    static PaintColour ColourOf(SceneColour const& colour, double opacity);
    Coverage const& CoverageOf(Drawing const& drawing, DrawnPaint const& paint,
                               HvTransfo4 const& toPixels);
    GradientTable const& TableOf(DrawnGradient const& gradient, double opacity);
    Coverage const& FillCoverage(HvPath2f const& pixels, int fillRule, double radius);
    Coverage const& StrokeCoverage(Drawing const& drawing, DrawnPaint const& paint,
                                   HvTransfo4 const& toPixels);
    void Fill(HvPath2f const& pixels, int fillRule, Coverage& coverage);
    void FillSoftly(HvPath2f const& pixels, double radius, Coverage& coverage);
    PixelBox BoxOf(HvPath2f const& pixels, int margin) const;

    HvGC fillGc_;
    HvGC strokeGc_;
    HvUByteRaster& raster_;  ///< of one path at a time
    FrameCache<Coverage> coverages_;
    FrameCache<GradientTable> gradientTables_;
    PaintKey key_;
};

#endif
