// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outlines of SVG elements.

#ifndef HV_TOOLS_SVG_SVG_SHAPES_H
#define HV_TOOLS_SVG_SVG_SHAPES_H

#include <hv/shape/HvPath2f.h>

#include <pugixml.hpp>

#include <string>

/// Whether elements of this name have an outline.
bool SvgShape_IsShape(std::string const& name);

/// Appends the outline of a path, rect, circle, ellipse, line, polyline or polygon. Returns "", or
/// what is wrong with its attributes; what could be read before has then been drawn.
std::string SvgShape_Draw(pugi::xml_node const& element, HvPath2f& outline);

#endif
