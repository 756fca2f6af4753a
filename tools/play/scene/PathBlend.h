// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One outline that becomes another.

#ifndef HV_TOOLS_PLAY_SCENE_PATHBLEND_H
#define HV_TOOLS_PLAY_SCENE_PATHBLEND_H

#include <hv/shape/HvPath2f.h>

/// Sets `out` to the outline that has gone the share `share` of the way from `a` to `b`: 0 gives
/// `a`, 1 gives `b`, beyond it goes on. `out` is neither of them.
void PathBlend_Set(HvPath2f const& a, HvPath2f const& b, double share, HvPath2f& out);

#endif
