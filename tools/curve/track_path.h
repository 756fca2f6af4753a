// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the positions of an animation to a motion path.

#ifndef HV_TOOLS_CURVE_TRACK_PATH_H
#define HV_TOOLS_CURVE_TRACK_PATH_H

#include <hv/motionpath/HvMotionPath3d.h>
#include <tools/lottie/LottieDocument.h>

/// The motion path of a position with handles in space: a node for each key at its time, and the
/// cubic that its handles give; without handles the even cubic of the chord.
///
/// Shape and key times are the file's, exactly. Its easing becomes the nearest rules that a motion
/// path knows: held segments stay, even ones are even, an easing that leaves or arrives level stops
/// at that key, any other is smooth there. Throws ToolError when the library refuses a key.
HvMotionPath3d TrackPath_Build(LottiePath const& path);

#endif
