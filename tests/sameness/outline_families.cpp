// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines: flattening, sampling, strokes, fits, archives of shapes.

#include "SampleNumbers.h"
#include "families.h"
#include "sample_paths.h"

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fSink.h>

namespace {

constexpr unsigned int kPaths = 40;

void AddShape(HvShape2f const& shape, Digest& digest)
{
    std::vector<unsigned char> bytes(shape.GetBufferSize());
    digest.Add(std::uint64_t{shape.WriteToBuffer(bytes.data())});
    digest.AddBytes(bytes.data(), bytes.size());
}

void AddFlattened(unsigned int item, Digest& digest)
{
    HvPath2f const path = SamplePath(item);
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvGC gc;
    gc.transform.RotateXY(12.5 * item, {100, 100});
    gc.flatness = 0.1;
    gc.sampleSpacing = 3.5;
    path.Flatten(gc, points, tags);
    path.Sample(gc, points, tags);
    digest.AddAll(points);
}

void AddMoved(unsigned int item, Digest& digest)
{
    HvPath2f path = SamplePath(item);
    path.Rotate(7.0 * item, {50, 60});
    path.ShearX(0.2, 10);
    path.LockG1(3);
    path.ReplacePoint(4, {75, 80}, 1);
    path.RemoveSubpathSection(3, 6);
    AddShape(path, digest);
    AddShape(HvPath2f(HvOval2f({40, 50}, 30, 20)), digest);
}

void AddStroked(unsigned int item, Digest& digest)
{
    HvGC gc;
    gc.strokeWidth = 1 + 0.5 * item;
    gc.capStyle = static_cast<int>(item % 3);
    gc.joinStyle = static_cast<int>(item / 3 % 3);
    gc.miterLimit = 3;
    gc.taperStroke = static_cast<int>(item % 2);
    HvPath2f outline(0);
    SamplePath(item).GetStrokeOutline(gc, outline);
    AddShape(outline, digest);
}

void AddFitted(unsigned int item, Digest& digest)
{
    HvPoint2fArray points;
    HvPointTagArray tags;
    SamplePath(item).AltFlatten(0.05, points, tags);
    HvBezierTool tool;
    HvPath2f fitted(0);
    HvPath2fSink sink(fitted);
    digest.Add(std::uint64_t{tool.OpenFit(points, 0.5, 3, 0.25, 0, sink, 0)});
    AddShape(fitted, digest);
}

}  // namespace

void AddOutlineFamilies(Families& families)
{
    families.push_back({"outline_flattening", kPaths, AddFlattened});
    families.push_back({"outline_edits", kPaths, AddMoved});
    families.push_back({"outline_strokes", kPaths, AddStroked});
    families.push_back({"outline_fits", kPaths, AddFitted});
}
