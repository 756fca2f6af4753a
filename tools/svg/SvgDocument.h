// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// An SVG file as shapes to be painted.

#ifndef HV_TOOLS_SVG_SVGDOCUMENT_H
#define HV_TOOLS_SVG_SVGDOCUMENT_H

#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvPath2f.h>
#include <tools/svg/svg_values.h>

#include <string>
#include <vector>

/// A colour with an opacity from 0 to 1, or nothing.
struct SvgPaint {
    bool isPainted = false;
    SvgColour colour;
    double opacity = 1.0;
};

/// How a shape is painted. The styles of ends and corners are those of HvGC.
struct SvgStyle {
    SvgPaint fill = {true, SvgColour(), 1.0};
    SvgPaint stroke;
    int fillRule = 1;
    double strokeWidth = 1.0;
    int capStyle = 2;
    int joinStyle = 1;
    double miterLimit = 4.0;
};

/// A shape, or a group of elements that are painted as one.
struct SvgElement {
    std::string id;                   ///< its name in the file; may be empty
    HvPath2f outline = HvPath2f(1u);  ///< in user units; empty for a group
    HvTransfo4 transform;             ///< to the units of the document
    SvgStyle style;
    double opacity = 1.0;  ///< of the whole element, or of what the group paints
    std::vector<SvgElement> children;
};

/// What a file asks for that is left aside, and how often.
struct SvgNote {
    std::string text;
    std::size_t count = 1;
};

struct SvgDocument {
    double width = 0.0;    ///< in user units
    double height = 0.0;   ///< in user units
    HvTransfo4 transform;  ///< from the units of the document to its width and height
    std::vector<SvgElement> elements;
    std::vector<SvgNote> notes;
};

/// Reads an SVG document: paths and basic shapes with fill, stroke, opacity and transforms, in
/// groups. What is not supported is left out with a note. Throws ToolError for a text that is no
/// SVG document.
SvgDocument SvgDocument_Parse(std::string const& text);
/// The same of a file; the messages begin with its name.
SvgDocument SvgDocument_Read(std::string const& path);

#endif
