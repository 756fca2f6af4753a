// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths joined into one, in other coordinates.

#ifndef HV_TOOLS_PLAY_PAINTING_MAPPED_PATH_H
#define HV_TOOLS_PLAY_PAINTING_MAPPED_PATH_H

#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvPath2f.h>

enum class OpenSubpaths {
    Kept,
    Closed
};

/// Appends the subpaths of a path of lines and cubics, mapped by `map`; where they are to be
/// closed, open ones get a line to their start, as fills see them. Lone points are passed over;
/// coordinates beyond 2^18, and those that are no numbers, are brought back to it.
void MappedPath_Append(HvPath2f const& path, HvTransfo4 const& map, OpenSubpaths open,
                       HvPath2f& out);

#endif
