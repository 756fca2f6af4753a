// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path with fewer points near a path.

#ifndef HV_PATHBUILD_INTERNAL_SIMPLIFY_PATH_H
#define HV_PATHBUILD_INTERNAL_SIMPLIFY_PATH_H

class HvPath2fProp1d;

/// Appends the subpaths of `source` to `out`, another path, each simplified with its property.
///
/// @param tolerance          greatest distance of an outline from that of the source. A tolerance
///                           that is not above 0 copies the outlines.
/// @param propertyTolerance  greatest error of a property.
///
/// A subpath that does not get fewer points by it, or holds a number that is not finite, is copied.
/// Without memory `out` holds a part.
void HvPath_Simplify(HvPath2fProp1d const& source, double tolerance, double propertyTolerance,
                     HvPath2fProp1d& out);

#endif
