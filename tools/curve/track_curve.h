// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From a track of an animation to a curve.

#ifndef HV_TOOLS_CURVE_TRACK_CURVE_H
#define HV_TOOLS_CURVE_TRACK_CURVE_H

#include <hv/fcurve/HvStdFCurve.h>
#include <tools/lottie/LottieDocument.h>

#include <memory>

/// The curve of a track: one key for each of its keys, eased segments as cubics, held ones as
/// constant segments with a jump at their end, constant before and behind the keys. Throws
/// ToolError when the library refuses a key.
std::unique_ptr<HvStdFCurve> TrackCurve_Build(LottieTrack const& track);

/// The value that the track has just before its key `i`: that of the key before, where it is held.
double TrackCurve_LeftValue(LottieTrack const& track, std::size_t i);

/// The greatest difference between the track's keys and the curve at their times, on both sides of
/// each; infinite when the curve gives NaN.
double TrackCurve_LargestError(LottieTrack const& track, HvStdFCurve const& curve);

#endif
