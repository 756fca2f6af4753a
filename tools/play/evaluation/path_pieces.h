// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths cut by their length: trims and dashes.

#ifndef HV_TOOLS_PLAY_EVALUATION_PATH_PIECES_H
#define HV_TOOLS_PLAY_EVALUATION_PATH_PIECES_H

#include <hv/shape/HvPath2f.h>

#include <vector>

/// A part of a run, in shares of its length. Where it ends beyond 1 it goes on from the start.
struct TrimRange {
    double start;   ///< 0 up to but not including 1
    double length;  ///< 0 to 1

    double End() const { return start + length; }
    bool IsWhole() const { return length >= 1.0; }
};

/// The range of a start and an end, in either order, both shares of the length, moved on by
/// `offset` turns. What is no number counts as 0.
TrimRange TrimRange_Of(double start, double end, double offset);

/// Leaves the range of each subpath of a path; where it runs over the seam of a closed subpath it
/// stays in one piece.
HvPath2f PathPieces_Trim(HvPath2f const& path, TrimRange const& range);

/// Leaves the range of the run over all paths, one after the other.
void PathPieces_TrimAsOne(std::vector<HvPath2f*> const& paths, TrimRange const& range);

/// The dashes of a path.
///
/// @param dashes  lengths painted and left out in turn; of an odd count the pattern runs twice.
///                Negative ones count as 0.
/// @return        the path itself where the pattern has no length, or so little that a subpath
///                would have more than 10000 dashes.
HvPath2f PathPieces_Dash(HvPath2f const& path, std::vector<double> const& dashes, double offset);

#endif
