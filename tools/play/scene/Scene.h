// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// An animation as objects of the library: compositions of layers, layers of shapes, every value
// that moves a curve. Built once, then only read, by any number of threads at once.

#ifndef HV_TOOLS_PLAY_SCENE_SCENE_H
#define HV_TOOLS_PLAY_SCENE_SCENE_H

#include <hv/fcurve/HvBooleanFCurve.h>
#include <tools/play/scene/AnimatedOutline.h>
#include <tools/play/scene/animated.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

// Shapes. In a group the first is in front; a paint or a modifier works on the outlines of its
// group that stand before it, those of inner groups included.

struct SceneOutline {
    AnimatedOutline outline;
    bool isReversed;
};

struct SceneRect {
    AnimatedPlace centre;
    AnimatedPlace size;
    AnimatedNumber radius;
    bool isReversed;
};

struct SceneEllipse {
    AnimatedPlace centre;
    AnimatedPlace size;
    bool isReversed;
};

struct SceneStar {
    AnimatedPlace centre;
    AnimatedNumber numPoints;
    AnimatedNumber rotation;  ///< degrees
    AnimatedNumber outerRadius;
    AnimatedNumber outerRoundness;  ///< percent
    AnimatedNumber innerRadius;
    AnimatedNumber innerRoundness;
    bool isPolygon;  ///< without inner points
    bool isReversed;
};

/// A part of each outline by its length, or of all of them as if they were one.
struct SceneTrim {
    AnimatedNumber start;   ///< percent
    AnimatedNumber end;     ///< percent
    AnimatedNumber offset;  ///< degrees of a full turn
    bool isOneRun;
};

/// What stands before it in the group, several times.
struct SceneRepeater {
    AnimatedNumber copies;
    AnimatedNumber offset;
    AnimatedTransform step;
    AnimatedNumber startOpacity;  ///< percent
    AnimatedNumber endOpacity;
    bool isBelow;  ///< whether later copies lie below earlier ones
};

struct SceneGradient {
    AnimatedPlace start;
    AnimatedPlace end;
    AnimatedNumber highlight;       ///< radial: percent of the way from the centre to the rim
    AnimatedNumber highlightAngle;  ///< degrees
    /// Four numbers for each colour, where and what; then two for each opacity.
    std::vector<AnimatedNumber> stops;
    std::size_t numColours;
    bool isRadial;
};

struct SceneStroke {
    AnimatedNumber width;
    int capStyle;   ///< as HvGC has it
    int joinStyle;  ///< as HvGC has it
    double miterLimit;
    std::vector<AnimatedNumber> dashes;  ///< lengths painted and left out in turn; empty: no dashes
    AnimatedNumber dashOffset;
};

/// A fill, or a stroke, of one colour or of a gradient.
struct ScenePaint {
    AnimatedColour colour;
    std::optional<SceneGradient> gradient;
    AnimatedNumber opacity;  ///< percent
    int fillRule;            ///< as HvGC has it
    std::optional<SceneStroke> stroke;
};

struct SceneShape;

struct SceneGroup {
    AnimatedTransform transform;
    std::vector<SceneShape> shapes;
};

struct SceneShape {
    std::variant<SceneGroup, SceneOutline, SceneRect, SceneEllipse, SceneStar, SceneTrim,
                 SceneRepeater, ScenePaint>
        kind;
};

// Layers.

enum class MaskMode {
    Add,
    Subtract,
    Intersect,
    Lighten,
    Darken,
    Difference
};

struct SceneMask {
    AnimatedOutline outline;
    AnimatedNumber opacity;  ///< percent
    AnimatedNumber feather;  ///< the width of its soft rim
    MaskMode mode;
    bool isInverted;
};

/// What of the layer's matte lets it through.
enum class MatteMode {
    None,
    Alpha,
    InvertedAlpha,
    Luma,
    InvertedLuma
};

struct SceneSolid {
    SceneColour colour;
    double width;
    double height;
};

/// Another composition, in a time of its own.
struct SceneInstance {
    std::size_t composition;
    double start;                           ///< the frame that is its frame 0
    double stretch;                         ///< how much slower it runs
    std::optional<AnimatedNumber> seconds;  ///< the time in it, instead of the two
    double frameRate;
    double width;  ///< what lies beyond is cut off
    double height;

    double TimeAt(double frame) const
    {
        return seconds ? seconds->At(frame) * frameRate : (frame - start) / stretch;
    }
};

struct SceneLayer {
    /// Nothing where a layer serves as a parent alone.
    std::variant<std::monostate, SceneGroup, SceneSolid, SceneInstance> content;
    AnimatedTransform transform;
    std::optional<std::size_t> parent;  ///< a layer of the same composition
    HvBooleanFCurve isVisible{0.0};     ///< between its in point and its out point
    std::vector<SceneMask> masks;
    MatteMode matteMode = MatteMode::None;
    std::optional<std::size_t> matte;  ///< the layer that is its matte
    bool isMatte = false;              ///< it is seen only through the layers whose matte it is
};

/// Layers, the first in front.
struct SceneComposition {
    std::vector<SceneLayer> layers;
};

struct Scene {
    double width = 0.0;
    double height = 0.0;
    double frameRate = 0.0;
    double firstFrame = 0.0;
    double endFrame = 0.0;                       ///< the first one behind the last
    std::vector<SceneComposition> compositions;  ///< the first is what is shown
};

#endif
