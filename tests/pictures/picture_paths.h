// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polygons for the pages.

#ifndef TESTS_PICTURES_PICTURE_PATHS_H
#define TESTS_PICTURES_PICTURE_PATHS_H

#include <hv/shape/HvPath2f.h>

#include <vector>

using Corners = std::vector<HvPoint2<float>>;

/// Adds the lines between the corners as a subpath.
inline void PicturePath_AddLines(HvPath2f& path, Corners const& corners)
{
    path.Moveto(corners.front());
    for (std::size_t i = 1; i < corners.size(); ++i) {
        path.Lineto(corners[i]);
    }
}

/// The same, and back to the first corner.
inline void PicturePath_AddPolygon(HvPath2f& path, Corners const& corners)
{
    PicturePath_AddLines(path, corners);
    path.Lineto(corners.front());
    path.Closeto();
}

inline HvPath2f PicturePath_Lines(Corners const& corners)
{
    HvPath2f path(0u);
    PicturePath_AddLines(path, corners);
    return path;
}

inline HvPath2f PicturePath_Polygons(std::vector<Corners> const& polygons)
{
    HvPath2f path(0u);
    for (Corners const& corners : polygons) {
        PicturePath_AddPolygon(path, corners);
    }
    return path;
}

#endif
