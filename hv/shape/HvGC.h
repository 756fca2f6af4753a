// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The graphics context: how shapes are flattened, filled and stroked.

#ifndef HV_SHAPE_HVGC_H
#define HV_SHAPE_HVGC_H

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/rotation/HvTransfo4.h>

/// The settings of every operation that renders, flattens or samples a shape: a plain structure,
/// read and written by its fields. Each operation reads what it needs while it runs, so nobody may
/// change a context that is in use; HvShape2f::SoftFill writes `maxCoverage` for a while.
struct HV_API HvGC {
    /// Every field as its comment says. Throws std::bad_alloc, for the falloff's keys.
    HvGC();
    /// Copies every field.
    HvGC(HvGC const& other);
    /// Copies every field; without memory the falloff stays as it was.
    HvGC& operator=(HvGC const& other);
    ~HvGC();

    // Flattening, sampling and fitting.

    /// Greatest distance of a polyline from its outline, and of a fit from its samples, in device
    /// units. Fills and strokes use at least 0.25. Its square is the gap between the edges of a
    /// stroke up to which no join is made.
    double flatness = 1.0;
    /// Distance of neighbouring samples aimed at, in device units.
    double sampleSpacing = 1.0;
    /// Greatest error of a flattened property curve, in the property's unit.
    double propFlatness = 0.1;
    /// The property of samples from a subpath without a property curve.
    double defaultProperty = 1.0;
    /// Smallest distance along a path of two property breaks, and the distance on each axis below
    /// which two input points of a path builder are one.
    double minPointGap = 0.5;
    /// A fit turns a corner where the squared cosine of the turn is below this; initially that of
    /// 25 degrees.
    double cornerCosSquared = 0x1.a48dba91d9804p-1;

    // Stroke and coverage.

    /// Longest miter in half widths of the stroke; below 1 it counts as 1.
    double miterLimit = 1.0;
    /// Full width of the stroke, in device units.
    double strokeWidth = 1.0;
    /// The sum of the two is the blur radius of the soft fill, in device units.
    double softRadiusA = 0.0;
    double softRadiusB = 0.0;  ///< see softRadiusA
    /// Greatest coverage of anti-aliased and soft fills, 0 to 1.
    double maxCoverage = 1.0;
    /// 0: even-odd; otherwise: non-zero winding.
    int fillRule = 1;
    /// The ends of a stroke. 0: round; 1: square; 2: butt.
    int capStyle = 2;
    /// The corners of a stroke. 0: bevel; 1: miter; 2: round.
    int joinStyle = 1;
    /// 0: the stroke has one width; otherwise it swells from nothing at both ends of a subpath.
    int taperStroke = 0;
    /// 1: the soft fill is cut by the shape's own coverage; otherwise it is not.
    int softClipToShape = 1;

    // Mapping and profile.

    /// Maps the shape's coordinates to device coordinates; initially the identity.
    HvTransfo4 transform;
    /// The blur kernel of the soft fill, and the coverage over distance of the radial fills;
    /// initially the line from 1 at 0 to 0 at 1.
    HvStdFCurve falloff;
};

#endif
