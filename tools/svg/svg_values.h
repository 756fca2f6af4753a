// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Values of SVG attributes: colours, lengths, transforms.

#ifndef HV_TOOLS_SVG_SVG_VALUES_H
#define HV_TOOLS_SVG_SVG_VALUES_H

#include <hv/rotation/HvTransfo4.h>

#include <string>

/// A colour, each part from 0 to 255.
struct SvgColour {
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
};

/// Reads a colour: #rgb, #rrggbb, rgb(r, g, b) in numbers or percent, or a name of SVG 1.1. False
/// for anything else.
bool SvgValue_ReadColour(std::string const& text, SvgColour& colour);

/// Reads a length in user units; px, pt, pc, mm, cm and in are turned into them at 96 to the inch.
/// False for anything else.
bool SvgValue_ReadLength(std::string const& text, double& length);

/// Reads a number, or a percentage as a share of 1.
bool SvgValue_ReadShare(std::string const& text, double& share);

/// Composes a list of transforms (matrix, translate, scale, rotate, skewX, skewY) on the right of
/// `transform`; false, with `transform` as it was, for anything else.
bool SvgValue_ReadTransform(std::string const& text, HvTransfo4& transform);

#endif
