// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What is painted for a frame: the scene at one time, without anything that moves.

#ifndef HV_TOOLS_PLAY_EVALUATION_DRAWING_H
#define HV_TOOLS_PLAY_EVALUATION_DRAWING_H

#include <hv/foundation/HvPoint2.h>
#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvPath2f.h>
#include <tools/play/scene/Scene.h>

#include <cstddef>
#include <optional>
#include <vector>

/// An outline where it was drawn.
struct DrawnOutline {
    HvPath2f path;
    HvTransfo4 toLayer;
};

struct DrawnStop {
    double offset;
    SceneColour colour;
};

struct DrawnOpacity {
    double offset;
    double opacity;
};

struct DrawnGradient {
    HvPoint2<double> start;
    HvPoint2<double> end;
    HvPoint2<double> focus;  ///< of a radial one
    bool isRadial;
    std::vector<DrawnStop> colours;
    std::vector<DrawnOpacity> opacities;
};

struct DrawnStroke {
    double width;
    int capStyle;
    int joinStyle;
    double miterLimit;
    std::vector<double> dashes;
    double dashOffset;
};

/// A fill or a stroke of some outlines together.
struct DrawnPaint {
    SceneColour colour;
    std::optional<DrawnGradient> gradient;
    double opacity;
    int fillRule;
    std::optional<DrawnStroke> stroke;
    HvTransfo4 toLayer;  ///< from the group where the paint stands: the shape of the pen
    std::vector<std::size_t> outlines;
};

/// The shapes of a layer. The first paint is in front.
struct Drawing {
    std::vector<DrawnOutline> outlines;
    std::vector<DrawnPaint> paints;
};

/// The drawing of a group at a time. Throws ToolError when repeaters ask for more than a million
/// outlines or paints.
Drawing Drawing_Of(SceneGroup const& group, double frame);

#endif
