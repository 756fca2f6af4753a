// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// An outline that moves from key to key.

#ifndef HV_TOOLS_PLAY_SCENE_ANIMATEDOUTLINE_H
#define HV_TOOLS_PLAY_SCENE_ANIMATEDOUTLINE_H

#include <tools/play/scene/PathBlend.h>
#include <tools/play/scene/animated.h>

#include <vector>

/// The outlines of the keys as paths, and the curve that leads from one to the next. Read by any
/// number of threads at once.
class AnimatedOutline {
public:
    explicit AnimatedOutline(OutlineProperty const& property);

    HvPath2f At(double frame) const;

private:
    std::vector<HvPath2fProp1d> outlines_;
    std::vector<PathBlend> blends_;  ///< from each outline to the next
    AnimatedPhase phase_;
};

#endif
