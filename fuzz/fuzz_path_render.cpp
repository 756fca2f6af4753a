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
#include <hv/shape/HvPath2fIter.h>
#include <hv/shape/internal/polygon_clip.h>

#include <cmath>
#include <new>

namespace {

constexpr unsigned char kBefore = 77;
constexpr std::size_t kMostBytes = 1u << 20;  // of one allocation
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
    double const across = Choose(input.Next());
    gc.transform.Scale(across, Choose(input.Next() % 6), 1.0);
    return gc;
}

// Where the path is looked at.
struct Look {
    HvUByteRaster raster;
    HvExtent2<float> query;
    HvExtent2<double> clip;

    explicit Look(FuzzInput& input) : raster{input.Next() % 40, input.Next() % 40, kBefore}
    {
        float const qx = static_cast<float>(input.Next() % 40);
        float const qy = static_cast<float>(input.Next() % 40);
        query = {qx, qy, qx + 1, qy + 1};
        double const x = input.Next() / 2.0 - 40;
        double const y = input.Next() / 2.0 - 40;
        double const width = input.Next() % 40;
        clip = {x, y, x + width, y + input.Next() % 40};
    }
};

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
        pts[0] = input.Point();
        path.Curveto(pts[0], input.Point(), p);
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

// What lies outside is not flattened for clipping, and nobody can tell.
void RequireClipped(HvPath2f const& path, HvGC const& gc, HvExtent2<double> const& clip)
{
    HvPoint2dArray expected;
    HvPoint2dArray polygon;
    HvPoint2dArray spare;
    HvPointTagArray tags;
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        polygon.Chop(0);
        HvPath2f const subpath(path, first, last);
        if (last - first > 1 && path.IsSubpathClosed(first) == 1) {
            subpath.TransformAndFlattenPath(gc.transform, gc.flatness, polygon, tags);
            polygon.Chop(polygon.Size() - 1);
            HvPolygon_Clip(polygon, clip, spare);
        }
        if (polygon.Size() != 0) {
            expected.Add(polygon);
            expected.Add(polygon[0]);
        }
    }
    HvPoint2dArray clipped;
    path.TransformFlattenAndClipClosedSubPaths(gc.transform, gc.flatness, clip, clipped, tags);
    FuzzRequire(clipped.Size() == expected.Size());
    for (unsigned int i = 0; i < clipped.Size(); ++i) {
        // Equal, or both no number.
        FuzzRequire(!(clipped[i].x < expected[i].x) && !(clipped[i].x > expected[i].x));
        FuzzRequire(!(clipped[i].y < expected[i].y) && !(clipped[i].y > expected[i].y));
    }
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

void Render(HvPath2f const& path, HvGC const& gc, Look const& look)
{
    HvUByteRaster raster(look.raster);
    auto const requireHard = [&raster] {
        for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
            FuzzRequire(raster.data[i] == kBefore || raster.data[i] == 255);
        }
    };
    path.Fill(gc, raster, nullptr);
    requireHard();
    path.Stroke(gc, raster);
    requireHard();
    raster = look.raster;
    path.AAFill(gc, raster, nullptr);
    path.SoftFill(gc, raster, nullptr);
    // What the outline meets is met as a whole too.
    bool const isMet = path.IsInteriorIntersectingExtent(gc, look.query, 1);
    FuzzRequire(isMet || path.IsIntersectingExtent(gc, look.query, 1) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    HvSetAllocationHook(&AllowSmall);
    try {
        HvGC const gc = Context(input);
        Look const look(input);
        HvPath2f path(0u);
        for (int step = 0; step < kMostSteps && !input.Empty(); ++step) {
            Step(path, input);
        }
        path.CloseSubpath(0);
        try {
            RequireClipped(path, gc, look.clip);
            Outline(path, gc);
        } catch (std::bad_alloc const&) {
        }
        HvGC ours(gc);  // a soft fill writes into it for a while
        Render(path, ours, look);
    } catch (std::bad_alloc const&) {
    }
    HvSetAllocationHook(nullptr);
    return 0;
}
