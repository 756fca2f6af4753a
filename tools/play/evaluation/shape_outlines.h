// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outlines of shapes that are given by numbers.

#ifndef HV_TOOLS_PLAY_EVALUATION_SHAPE_OUTLINES_H
#define HV_TOOLS_PLAY_EVALUATION_SHAPE_OUTLINES_H

#include <hv/shape/HvPath2f.h>
#include <tools/play/scene/Scene.h>

/// All outlines run clockwise as seen on the screen, or the other way round where they are
/// reversed; where they begin tells what a trim leaves.
HvPath2f ShapeOutline_Of(SceneOutline const& shape, double frame);
/// From the end of the upper side.
HvPath2f ShapeOutline_Of(SceneRect const& shape, double frame);
/// From the top.
HvPath2f ShapeOutline_Of(SceneEllipse const& shape, double frame);
/// From the outer point at the top. Of more than 1000 points only so many are drawn.
HvPath2f ShapeOutline_Of(SceneStar const& shape, double frame);

#endif
