// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Drawings painted through the library's coverage.

#ifndef HV_TOOLS_PLAY_PAINTING_DRAWINGPAINTER_H
#define HV_TOOLS_PLAY_PAINTING_DRAWINGPAINTER_H

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <tools/paint/Canvas.h>
#include <tools/play/evaluation/drawing.h>

/// Fills and strokes outlines: each paint becomes one path in pixels, the path coverage, the
/// coverage colour.
class DrawingPainter {
public:
    DrawingPainter(int width, int height);

    /// Paints the drawing, made fainter by `opacity`, 0 to 1: each paint for itself.
    void Paint(Drawing const& drawing, HvTransfo4 const& toPixels, double opacity, Canvas& canvas);
    /// Paints one path of a drawing's coordinates.
    void PaintPath(HvPath2f const& path, HvTransfo4 const& toPixels, SceneColour const& colour,
                   double opacity, Canvas& canvas);
    /// Stores the coverage of a filled path, a byte for each pixel, those of `box`; its rim runs
    /// from full to none over a width of `feather`, in the path's coordinates.
    void Cover(HvPath2f const& path, HvTransfo4 const& toPixels, double feather,
               PixelBox const& box, std::uint8_t* shares);

private:
    HvPath2f FillOutline(Drawing const& drawing, DrawnPaint const& paint,
                         HvTransfo4 const& toPixels) const;
    HvPath2f StrokeOutline(Drawing const& drawing, DrawnPaint const& paint,
                           HvTransfo4 const& toPixels);
    void CoverSoftly(HvPath2f& pixels, double radius, PixelBox const& box, std::uint8_t* shares);
    void CopyRows(HvUByteRaster const& raster, int margin, PixelBox const& box,
                  std::uint8_t* shares) const;
    PixelBox Fill(HvPath2f const& pixels, int fillRule);
    PixelBox BoxOf(HvPath2f const& pixels) const;
    void ClearCoverage(PixelBox const& box);
    std::size_t Offset(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(coverage_.width) +
               static_cast<std::size_t>(x);
    }

    HvGC fillGc_;
    HvGC strokeGc_;
    HvUByteRaster coverage_;  ///< of one path at a time; nothing is covered between paths
};

#endif
