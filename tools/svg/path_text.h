// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path as path data of SVG.

#ifndef HV_TOOLS_SVG_PATH_TEXT_H
#define HV_TOOLS_SVG_PATH_TEXT_H

#include <string>

class HvPath2f;

/// The text of a "d" attribute that draws the path, as short as absolute coordinates of seven
/// digits allow; a line for each subpath. Throws ToolError for a segment above degree 3, which SVG
/// has not.
std::string PathText_Of(HvPath2f const& path);

#endif
