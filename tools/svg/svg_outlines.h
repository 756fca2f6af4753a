// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outlines of an SVG document.

#ifndef HV_TOOLS_SVG_SVG_OUTLINES_H
#define HV_TOOLS_SVG_SVG_OUTLINES_H

#include <tools/svg/SvgDocument.h>

#include <string>

/// The outline with every subpath closed, as fills see it.
HvPath2f SvgOutline_Closed(HvPath2f const& outline);

/// A shape of a document, its outline in units of the document.
struct SvgOutline {
    HvPath2f path = HvPath2f(1u);
    SvgStyle style;
};

/// The shape whose id is `id`; without an id the one whose outline covers the largest box. Throws
/// ToolError when there is none.
SvgOutline SvgOutline_Find(SvgDocument const& document, std::string const& id);

#endif
