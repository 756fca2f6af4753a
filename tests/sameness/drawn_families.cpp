// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What is drawn from other things: strokes of a pen, morphs, contours of pixels.

#include "SampleNumbers.h"
#include "families.h"
#include "sample_paths.h"

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/morph/HvMorpher.h>
#include <hv/pathbuild/HvBezierFitPathBuilder.h>
#include <hv/pathbuild/HvBezierFitPathPropBuilder.h>
#include <hv/pathbuild/HvCubicPathBuilder.h>
#include <hv/pathbuild/HvMipPath2fProp1d.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/vectorize/HvVectorizer.h>

namespace {

constexpr unsigned int kDrawings = 16;

void AddShape(HvShape2f const& shape, Digest& digest)
{
    std::vector<unsigned char> bytes(shape.GetBufferSize());
    digest.Add(std::uint64_t{shape.WriteToBuffer(bytes.data())});
    digest.AddBytes(bytes.data(), bytes.size());
}

/// A random walk of a pen, asked for samples as it goes.
void Draw(HvBasePathBuilder& builder, std::uint64_t seed, Digest& digest)
{
    SampleNumbers numbers(seed);
    HvPoint2<float> pen = numbers.PointIn(0, 200);
    builder.StartSubpath(pen);
    for (int i = 0; i < 60; ++i) {
        pen = pen + numbers.PointIn(-6, 8);
        builder.AddInputPoint(pen, 0);
        if (i % 7 == 0) {
            digest.AddAll(*builder.GetTrailingSamples());
        }
    }
    digest.AddAll(*builder.EndSubpath(pen, static_cast<int>(seed % 2)));
}

void AddStrokes(unsigned int item, Digest& digest)
{
    HvGC const gc;
    HvPath2f cubics(0u);
    HvCubicPathBuilder cubicBuilder(gc, &cubics);
    Draw(cubicBuilder, item, digest);
    AddShape(cubics, digest);
    HvPath2f fits(0u);
    HvBezierFitPathBuilder fitBuilder(gc, &fits, 20.0, 10.0, 0.25, 5);
    Draw(fitBuilder, item, digest);
    AddShape(fits, digest);
    HvPath2fProp1d widths(0u);
    HvBezierFitPathPropBuilder widthBuilder(gc, &widths, 20.0, 10.0, 0.25, 5, 0.05);
    SampleNumbers numbers(item);
    widthBuilder.StartSubpath(numbers.PointIn(0, 200), 1.0);
    for (int i = 0; i < 60; ++i) {
        HvPoint2<float> const pen = numbers.PointIn(0, 200);
        widthBuilder.AddInputPoint(pen, numbers.In(0, 4), 0);
    }
    widthBuilder.EndSubpath(numbers.PointIn(0, 200), 2.0, 0);
    AddShape(widths, digest);
}

/// A path with a property on its first subpath.
HvPath2fProp1d WithProperty(unsigned int seed)
{
    HvPath2fProp1d path{SamplePath(seed)};
    SampleNumbers numbers(seed);
    HvPoint2dArray points;
    for (int i = 0; i < 10; ++i) {
        points.Add({20.0 * i, numbers.In(0, 4)});
    }
    path.SetPropCurve(0, points, 0.1);
    return path;
}

// A path with a property: as points in all ways, between two others, and fitted anew.
void AddProperties(unsigned int item, Digest& digest)
{
    HvPath2fProp1d const first = WithProperty(item);
    HvPath2fProp1d between(0u);
    between.SetToLerpAB(first, WithProperty(item + 100), 0.4, 2.0, 0.05);
    AddShape(between, digest);
    HvGC gc;
    gc.flatness = 0.1;
    gc.sampleSpacing = 3.5;
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvDoubleArray values;
    between.Flatten(gc, points, tags, values);
    between.Sample(gc, points, tags, values);
    between.PropertySample(gc, points, tags, values);
    digest.AddAll(points);
    digest.AddAll(values);
    HvPath2fProp1d fitted(0u);
    fitted.AddFittedSamplesFromPath(gc, first);
    AddShape(fitted, digest);
    AddShape(*HvMipPath2fProp1d(first, 0.5, 0.05).Level(3), digest);
}

void AddMorphs(unsigned int item, Digest& digest)
{
    HvPath2fProp1d const first = WithProperty(item);
    HvPath2fProp1d second = WithProperty(item + 100);
    second.OpenSubpath(0);
    HvGC gc;
    gc.minPointGap = 2.0;
    HvMorpher morpher(&first, &second, gc);
    HvPath2f road(0u);
    road.Moveto({0, 0});
    road.Curveto({10, 90}, {120, -60}, {100, 40});
    morpher.SetMotionPath(0, 0, &road);
    HvPath2fProp1d out(0u);
    morpher.LinearMorph(0.3, out);
    morpher.TurtleMorph(0.7, out);
    morpher.LinearMotionPathMorph(0.4, out);
    AddShape(out, digest);
}

void AddContours(unsigned int item, Digest& digest)
{
    constexpr int kSide = 120;
    HvUByteRaster raster(kSide, kSide, 0);
    HvGC gc;
    gc.flatness = 0.75;
    SamplePath(item).Fill(gc, raster, nullptr);
    HvVectorizer const vectorizer(4.0, 3.0);
    HvPath2f path(0u);
    vectorizer.Vectorize(raster, 0, HvExtent2<float>(), path);
    vectorizer.VectorizeAndFit(raster, 0, HvExtent2<float>(), gc, path);
    AddShape(path, digest);
}

}  // namespace

void AddDrawnFamilies(Families& families)
{
    families.push_back({"drawn_strokes", kDrawings, AddStrokes});
    families.push_back({"drawn_properties", kDrawings, AddProperties});
    families.push_back({"drawn_morphs", kDrawings, AddMorphs});
    families.push_back({"drawn_contours", kDrawings, AddContours});
}
