// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A page of small pictures, each with a caption.

#ifndef TESTS_PICTURES_PICTUREPAGE_H
#define TESTS_PICTURES_PICTUREPAGE_H

#include <hv/raster/HvUByteRaster.h>

#include <string>
#include <vector>

/// Square cells in rows, drawn one after another, with grey lines between them. A shape that sticks
/// out of its cell is cut there by the fill itself, as the cell is a raster of its own.
class PicturePage {
public:
    PicturePage(std::string const& name, int columns, int rows, int side);

    /// Renders the next cell: `draw` gets its raster, all 0.
    template <class Draw>
    void Add(std::string const& caption, Draw const& draw)
    {
        HvUByteRaster cell(side_, side_, 0);
        draw(cell);
        Place(caption, cell);
    }

    std::string const& Name() const { return name_; }
    HvUByteRaster const& Picture() const { return picture_; }
    /// The caption of the cell that a pixel belongs to.
    std::string CaptionAt(int x, int y) const;

private:
    void Place(std::string const& caption, HvUByteRaster const& cell);

    std::string name_;
    int columns_;
    int side_;
    HvUByteRaster picture_;
    std::vector<std::string> captions_;
};

/// Every cap with every join, tapers, miter limits, open and closed, hard as
/// HvPath2f::Stroke gives it.
PicturePage StrokePage();
/// The same outlines filled with anti-aliasing.
PicturePage SmoothStrokePage();
/// Hard and anti-aliased fills by both rules.
PicturePage FillPage();
/// Soft fills of several radii, cut by the shape or not.
PicturePage SoftFillPage();
/// Rectangles and ovals by each of their fills.
PicturePage ShapePage();
/// Parallelograms and ellipses scanned directly, in every mode.
PicturePage ScanPage();
/// Strokes of a pen, built by every builder, with their samples.
PicturePage PenPage();

#endif
