// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// An SVG document painted through the library's coverage.

#ifndef HV_TOOLS_SVG_SVG_PAINTER_H
#define HV_TOOLS_SVG_SVG_PAINTER_H

#include <tools/paint/Canvas.h>
#include <tools/svg/SvgDocument.h>

#include <functional>
#include <optional>

struct SvgPaintOptions {
    double scale = 1.0;                 ///< pixels to a user unit
    double softRadius = 0.0;            ///< blur of fills, in pixels
    std::optional<double> strokeWidth;  ///< strokes every shape this wide, in user units, unfilled
};

/// Shapes in a document, those of groups too.
std::size_t SvgPainter_NumShapes(SvgDocument const& document);

/// Paints the document over the canvas; `advance` is called after each shape.
void SvgPainter_Paint(SvgDocument const& document, SvgPaintOptions const& options, Canvas& canvas,
                      std::function<void()> const& advance);

#endif
