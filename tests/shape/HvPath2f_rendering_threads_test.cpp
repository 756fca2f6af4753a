// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path that four threads render, flatten and ask while a fifth edits it.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/HvULongArray.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/polygon_fill.h>
#include <hv/shape/HvGC.h>

#include "outline_paths.h"
#include <tests/platform/run_threads.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <vector>

namespace {

constexpr int kReaders = 4;
constexpr int kSteps = 1000;
constexpr int kSide = 24;

/// All numbers that an operation gives.
using Answer = std::vector<double>;

struct Question {
    char const* name;
    std::function<Answer(HvPath2f const&, HvGC const&)> ask;
};

Answer AnswerOf(HvUByteRaster const& raster)
{
    return Answer(raster.data, raster.data + raster.NumPixels());
}

template <class Points>
Answer AnswerOf(Points const& points, HvPointTagArray const& tags)
{
    Answer answer;
    for (auto const& point : points) {
        answer.insert(answer.end(), {double(point.x), double(point.y)});
    }
    answer.insert(answer.end(), tags.begin(), tags.end());
    return answer;
}

Answer Filled(HvPath2f const& path, HvGC const& gc,
              void (HvPath2f::*fill)(HvGC const&, HvUByteRaster&, int (*)()) const)
{
    HvUByteRaster raster(kSide, kSide, 0);
    (path.*fill)(gc, raster, nullptr);
    return AnswerOf(raster);
}

template <class Run>
Answer Polyline(Run const& run)
{
    HvPoint2fArray points;
    HvPointTagArray tags;
    run(points, tags);
    return AnswerOf(points, tags);
}

Answer WidePolyline(HvPath2f const& path, HvGC const& gc)
{
    HvPoint2dArray points;
    HvPointTagArray tags;
    path.TransformAndFlattenPath(gc.transform, 0.25, points, tags);
    return AnswerOf(points, tags);
}

Answer PointsInExtent(HvPath2f const& path)
{
    HvULongArray indices;
    path.GetPointsInExtentIndices({0, 0, 12, 12}, &indices);
    return Answer(indices.begin(), indices.end());
}

Answer ClosePoint(HvPath2f const& path)
{
    unsigned int index = 0;
    int const isNear = path.GetClosePointIndex({12, 3}, 4, &index);
    return {double(isNear), double(index)};
}

Answer NearestPoint(HvPath2f const& path)
{
    unsigned int index = 0;
    path.GetClosePointIndex({20, 9}, &index);
    return {double(index)};
}

Answer TightExtent(HvPath2f const& path)
{
    HvExtent2<double> extent;
    path.GetTightExtent(extent);
    return {extent.min.x, extent.min.y, extent.max.x, extent.max.y, double(extent.state)};
}

/// Operations that answer from one look at the path. A soft fill that is cut by the shape looks
/// twice, so it may see an edit between both.
std::vector<Question> Questions()
{
    return {
        {"Fill", [](auto& path, auto& gc) { return Filled(path, gc, &HvPath2f::Fill); }},
        {"AAFill", [](auto& path, auto& gc) { return Filled(path, gc, &HvPath2f::AAFill); }},
        {"SoftFill", [](auto& path, auto& gc) { return Filled(path, gc, &HvPath2f::SoftFill); }},
        {"Stroke",
         [](auto& path, auto& gc) {
             HvUByteRaster raster(kSide, kSide, 0);
             path.Stroke(gc, raster);
             return AnswerOf(raster);
         }},
        {"Flatten",
         [](auto& path, auto& gc) {
             return Polyline([&](auto& points, auto& tags) { path.Flatten(gc, points, tags); });
         }},
        {"AltFlatten",
         [](auto& path, auto&) {
             return Polyline([&](auto& points, auto& tags) { path.AltFlatten(0.1, points, tags); });
         }},
        {"Sample",
         [](auto& path, auto& gc) {
             return Polyline([&](auto& points, auto& tags) { path.Sample(gc, points, tags); });
         }},
        {"TransformAndFlattenPath", WidePolyline},
        {"IsIntersectingExtent, inside",
         [](auto& path, auto& gc) {
             return Answer{double(path.IsIntersectingExtent(gc, {8, 8, 9, 9}, 0))};
         }},
        {"IsIntersectingExtent, on the outline",
         [](auto& path, auto& gc) {
             return Answer{double(path.IsIntersectingExtent(gc, {0, 9, 24, 10}, 0))};
         }},
        {"IsIntersectingExtent, in a corner",
         [](auto& path, auto& gc) {
             return Answer{double(path.IsIntersectingExtent(gc, {20, 19, 21, 20}, 0))};
         }},
        {"IsInteriorIntersectingExtent, inside",
         [](auto& path, auto& gc) {
             return Answer{double(path.IsInteriorIntersectingExtent(gc, {8, 8, 9, 9}, 0))};
         }},
        {"IsInteriorIntersectingExtent, on the outline",
         [](auto& path, auto& gc) {
             return Answer{double(path.IsInteriorIntersectingExtent(gc, {0, 9, 24, 10}, 0))};
         }},
        {"IsInteriorIntersectingExtent, in a corner",
         [](auto& path, auto& gc) {
             return Answer{double(path.IsInteriorIntersectingExtent(gc, {20, 19, 21, 20}, 0))};
         }},
        {"points in an extent", [](auto& path, auto&) { return PointsInExtent(path); }},
        {"a point close by", [](auto& path, auto&) { return ClosePoint(path); }},
        {"the nearest point", [](auto& path, auto&) { return NearestPoint(path); }},
        {"GetTightExtent", [](auto& path, auto&) { return TightExtent(path); }},
        {"GetNodeNormalizedArcLength",
         [](auto& path, auto&) { return Answer{path.GetNodeNormalizedArcLength(3, 0.1)}; }},
    };
}

HvGC ReaderContext()
{
    HvGC gc;
    gc.flatness = 0.25;
    gc.strokeWidth = 3.0;
    gc.softRadiusA = 2.0;
    gc.softClipToShape = 0;
    return gc;
}

HvPath2f Drop()
{
    HvPath2f path(0u);
    path.Moveto({12, 2});
    path.Curveto({30, 14}, {18, 22}, {12, 22});
    path.Curveto({6, 22}, {-6, 14}, {12, 2});
    path.Closeto();
    return path;
}

HvPath2f Frame()
{
    HvPath2f path = PolygonPath({{3, 3}, {21, 4}, {20, 20}, {4, 21}, {2, 12}}, true);
    path.Moveto({9, 6});
    path.Curveto({9, 16}, {16, 16}, {16, 6});
    path.Lineto({9, 6});
    path.Closeto();
    return path;
}

/// Runs `read(k, step)` on four threads while `edit(step)` runs on a fifth until they are done.
template <class Read, class Edit>
void ReadWhileEditing(Read const& read, Edit const& edit)
{
    std::atomic<int> reading{kReaders};
    RunThreads(kReaders + 1, [&](int k) {
        if (k == kReaders) {
            for (int step = 0; reading > 0; ++step) {
                edit(step);
            }
            return;
        }
        for (int step = 0; step < kSteps; ++step) {
            read(k, step);
        }
        --reading;
    });
}

/// Whether the runs of a polyline start, go on and end as they should.
bool AreWholeRuns(HvPointTagArray const& tags)
{
    int last = HvPointTagEnd;
    for (HvPointTag const tag : tags) {
        if ((tag == HvPointTagStart) != (last == HvPointTagEnd)) {
            return false;
        }
        last = tag;
    }
    return last == HvPointTagEnd;
}

}  // namespace

TEST(HvPath2f_rendering_threads, EveryAnswerIsThatOfOneWholeEdit)
{
    HvPath2f const states[] = {Drop(), Frame()};
    std::vector<Question> const questions = Questions();
    std::vector<Answer> expected[2];
    HvGC const gc = ReaderContext();
    for (Question const& question : questions) {
        for (int i = 0; i < 2; ++i) {
            expected[i].push_back(question.ask(states[i], gc));
        }
    }
    HvPath2f path(states[0]);
    ReadWhileEditing(
        [&](int k, int step) {
            // Each thread starts elsewhere, so that different operations meet.
            std::size_t const number = static_cast<std::size_t>(step + 4 * k) % questions.size();
            Answer const answer = questions[number].ask(path, gc);
            EXPECT_TRUE(answer == expected[0][number] || answer == expected[1][number])
                << questions[number].name;
        },
        [&](int step) { path = states[(step + 1) % 2]; });
}

TEST(HvPath2f_rendering_threads, SoftFillCutByTheShapeLooksTwice)
{
    // The blur may be that of one state and the cut that of the other, never anything else; and
    // each thread finds its own context as it was.
    HvPath2f const states[] = {Drop(), Frame()};
    HvGC const gc = ReaderContext();
    std::vector<Answer> expected;
    for (HvPath2f const& blurred : states) {
        for (HvPath2f const& cutting : states) {
            HvUByteRaster raster(kSide, kSide, 0);
            HvUByteRaster mask(kSide, kSide, 0);
            blurred.SoftFill(gc, raster, nullptr);
            cutting.AAFill(gc, mask, nullptr);
            HvUByteRaster_ClipToMask(raster, mask);
            expected.push_back(AnswerOf(raster));
        }
    }
    HvPath2f path(states[0]);
    ReadWhileEditing(
        [&](int, int) {
            HvGC own = gc;
            own.softClipToShape = 1;
            Answer const answer = Filled(path, own, &HvPath2f::SoftFill);
            EXPECT_EQ(std::count(expected.begin(), expected.end(), answer), 1);
            EXPECT_EQ(own.maxCoverage, 1.0);
        },
        [&](int step) { path = states[(step + 1) % 2]; });
}

TEST(HvPath2f_rendering_threads, EditsInPlaceLeaveWholeOutlines)
{
    HvPath2f path = Frame();
    HvGC const gc = ReaderContext();
    ReadWhileEditing(
        [&](int k, int step) {
            if ((k + step) % 2 == 0) {
                HvUByteRaster raster(kSide, kSide, 0);
                path.AAFill(gc, raster, nullptr);
                path.Stroke(gc, raster);
                path.IsIntersectingExtent(gc, {8, 8, 9, 9}, 0);
                return;
            }
            HvPoint2dArray points;
            HvPointTagArray tags;
            path.TransformAndFlattenPath(gc.transform, 0.25, points, tags);
            EXPECT_EQ(points.Size(), tags.Size());
            EXPECT_TRUE(AreWholeRuns(tags));
        },
        [&](int step) {
            float const way = static_cast<float>(step % 8);
            HvPoint2<float> const line[] = {{21, 4}, {20, 20}};
            HvPoint2<float> const cubic[] = {{21, 4}, {28, 8}, {12 + way, 16}, {20, 20}};
            path.ReplaceSegment(2, cubic, 3);
            path.ReplacePoint(3, {26, way}, 0);
            path.Moveto({0, way});
            path.Curveto({4, way}, {6, 4});
            path.CloseSubpath(path.NumPoints() - 1);
            path.RemoveSubpath(path.NumPoints() - 1);
            path.ReplaceSegment(2, line, 1);
        });
}
