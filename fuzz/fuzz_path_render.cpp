// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any path, drawn and edited, goes through all that renders it: flattening and sampling give runs
// of points with their tags, fills and strokes write what they may, and a hit test knows what a
// fill knows.

#include <fuzz/fuzz_input.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <cmath>
#include <new>

namespace {

constexpr unsigned char kBefore = 77;
constexpr std::size_t kMostBytes = 8u << 20;  // of one allocation
constexpr int kMostSteps = 64;
constexpr unsigned int kMostFitted = 500;  // samples, as fits are slow

// Far outlines at a fine tolerance ask for as many points as there is memory.
int AllowSmall(std::size_t size)
{
    return size <= kMostBytes ? 1 : 0;
}

double Choose(int choice)
{
    double const numbers[] = {0.25, 1.0,  0.5,    4.0,   16.0,
                              0.01, 0.0,  -1.0,   1e300, std::numeric_limits<double>::quiet_NaN(),
                              1.5,  -0.5, 1e-310, 100.0, std::numeric_limits<double>::infinity()};
    return numbers[choice % 15];
}

HvGC Context(FuzzInput& input)
{
    HvGC gc;
    gc.flatness = Choose(input.Next() % 32 == 0 ? input.Next() : input.Next() % 4);
    gc.sampleSpacing = Choose(input.Next());
    gc.strokeWidth = Choose(input.Next());
    gc.miterLimit = Choose(input.Next());
    gc.maxCoverage = Choose(input.Next());
    gc.softRadiusA = Choose(input.Next());
    int const styles = input.Next();
    gc.capStyle = styles % 4;
    gc.joinStyle = styles / 4 % 4;
    gc.taperStroke = styles / 16 % 2;
    gc.fillRule = styles / 32 % 2;
    gc.softClipToShape = styles / 64 % 2;
    int const turn = input.Next();
    gc.transform.Translate(turn % 16, turn / 16, 0.0);
    gc.transform.Scale(Choose(input.Next()), Choose(input.Next() % 6), 1.0);
    return gc;
}

// Adds to the path or edits it.
void Step(HvPath2f& path, FuzzInput& input)
{
    int const kind = input.Next() % 16;
    unsigned int const count = path.NumPoints();
    unsigned int const at = count == 0 ? 0 : static_cast<unsigned int>(input.Next()) % count;
    HvPoint2<float> const p = input.Point();
    if (count == 0 || kind == 0) {
        path.Moveto(p);
        return;
    }
    HvPoint2<float> pts[9] = {p, p, p, p, p, p, p, p, p};
    switch (kind) {
    case 1:
    case 2:
    case 3:
        path.Lineto(p);
        break;
    case 4:
        path.Curveto(path.GetPoint(at), p);
        break;
    case 5:
    case 6:
        path.Curveto(input.Point(), input.Point(), p);
        break;
    case 7:
        pts[1] = input.Point();
        path.AltCurveto(pts, 1 + at % 8);
        break;
    case 8:
    case 9:
        path.CloseSubpath(at);
        break;
    case 10:
        path.OpenSubpath(at);
        break;
    case 11:
        path.LockG1(at);
        path.ReplacePoint(at, p, 1);
        break;
    case 12:
        path.ReplacePoint(at, p, 0);
        break;
    case 13:
        pts[0] = path.GetPoint(path.StartOfSegment(at));
        pts[1 + count % 8] = path.GetPoint(path.EndOfSegment(at));
        path.ReplaceSegment(at, pts, 1 + count % 8);
        break;
    case 14:
        path.ReplaceSubpathSection(at / 2, at, p, path.GetPoint(at));
        break;
    default:
        path.RemoveSubpathSection(at / 2, at);
        break;
    }
}

// The tags of whole runs, one for each point.
void RequireRuns(unsigned int numPoints, HvPointTagArray const& tags)
{
    FuzzRequire(tags.Size() == numPoints);
    HvPointTag before = HvPointTagEnd;
    for (HvPointTag const tag : tags) {
        FuzzRequire((before == HvPointTagEnd) == (tag == HvPointTagStart));
        before = tag;
    }
    FuzzRequire(before == HvPointTagEnd);
}

void Outline(HvPath2f const& path, HvGC const& gc)
{
    HvPoint2fArray pts;
    HvPoint2dArray pts2;
    HvPointTagArray tags;
    FuzzRequire(path.Flatten(gc, pts, tags) == pts.Size());
    RequireRuns(pts.Size(), tags);
    tags.Chop(0);
    path.TransformAndFlattenPath(gc.transform, gc.flatness, pts2, tags);
    RequireRuns(pts2.Size(), tags);
    pts.Chop(0);
    tags.Chop(0);
    path.Sample(gc, pts, tags);
    RequireRuns(pts.Size(), tags);
    if (pts.Size() < kMostFitted) {
        HvPath2f again(1u);
        again.AddFittedSamplesFromPath(gc, path);
    }
}

void Render(HvPath2f const& path, HvGC const& gc, FuzzInput& input)
{
    HvUByteRaster const clean(input.Next() % 40, input.Next() % 40, kBefore);
    HvUByteRaster raster(clean);
    auto const requireHard = [&raster] {
        for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
            FuzzRequire(raster.data[i] == kBefore || raster.data[i] == 255);
        }
    };
    path.Fill(gc, raster, nullptr);
    requireHard();
    path.Stroke(gc, raster);
    requireHard();
    raster = clean;
    path.AAFill(gc, raster, nullptr);
    path.SoftFill(gc, raster, nullptr);
    // Whatever the outline does not meet lies inside when the pixel at its corner does.
    float const x = static_cast<float>(input.Next() % 40);
    float const y = static_cast<float>(input.Next() % 40);
    HvExtent2<float> const query(x, y, x + 1, y + 1);
    bool const isMet = path.IsInteriorIntersectingExtent(gc, query, 1);
    FuzzRequire(isMet || path.IsIntersectingExtent(gc, query, 1) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    HvSetAllocationHook(&AllowSmall);
    try {
        HvGC const original = Context(input);
        HvGC gc(original);  // a soft fill writes into it for a while
        HvPath2f path(0u);
        for (int step = 0; step < kMostSteps && !input.Empty(); ++step) {
            Step(path, input);
        }
        path.CloseSubpath(0);
        try {
            Outline(path, gc);
        } catch (std::bad_alloc const&) {
        }
        Render(path, gc, input);
    } catch (std::bad_alloc const&) {
    }
    HvSetAllocationHook(nullptr);
    return 0;
}
