// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the tool tells of an animation and its tracks.

#ifndef HV_TOOLS_CURVE_TRACK_REPORT_H
#define HV_TOOLS_CURVE_TRACK_REPORT_H

#include <hv/fcurve/HvStdFCurve.h>
#include <tools/curve/track_reshape.h>
#include <tools/lottie/LottieDocument.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

/// Writes the document in one line and a table of its tracks, numbered from 0, then its notes.
void TrackReport_List(std::ostream& out, std::string const& file, LottieDocument const& document);

/// Writes a line for each time: the time, the value, and where the curve jumps there the value from
/// the left.
void TrackReport_Evaluate(std::ostream& out, HvStdFCurve const& curve,
                          std::vector<double> const& times);

/// A track that was reduced, and its number.
struct TrackReport_Reduced {
    std::size_t number;
    LottieTrack const* track;
    TrackReduction reduction;
};

/// Writes a table of what reducing did to the tracks, and the sums of their keys.
void TrackReport_Reductions(std::ostream& out, std::vector<TrackReport_Reduced> const& tracks);

#endif
