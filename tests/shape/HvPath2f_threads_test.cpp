// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths that several threads use at once.

#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>
#include <hv/shape/HvPath2fSink.h>

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/byte_codec.h>
#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvPathTags.h>

#include "path_test_support.h"
#include <tests/platform/run_threads.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <sstream>
#include <thread>

namespace {

// Whether `call` waits while this thread holds the path. One that does not lock is over long
// before.
bool Waits(HvPath2f const& path, std::function<void()> const& call)
{
    std::atomic<bool> started{false};
    std::atomic<bool> done{false};
    std::thread worker;
    bool waits = false;
    {
        HvShapeLock const lock(path);
        worker = std::thread([&] {
            started = true;
            call();
            done = true;
        });
        while (!started) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        waits = !done;
    }
    worker.join();
    return waits;
}

}  // namespace

TEST(HvPath2f_threads, EveryOperationHoldsThePath)
{
    OpenPath path = SmoothRun();
    OpenPath other = SmoothRun();
    PathPoint p(1, 1);
    PathPoint pts[16];
    HvPoint2<double> wide[16];
    unsigned int a = 0;
    unsigned int b = 0;
    int flag = 0;
    HvExtent2<float> extent;
    HvExtent2<double> wideExtent;
    unsigned char bytes[16 + 9 * 64] = {};
    std::ostringstream stream;
    HvPath2fIter iter(path);
    std::function<void()> const calls[] = {
        [&] { path.Moveto(p); },
        [&] { path.Lineto(p); },
        [&] {
            unsigned int const size = 1;
            path.AppendPolylines(&p, &size, 1);
        },
        [&] { path.Curveto(p, p); },
        [&] { path.Curveto(p, p, p); },
        [&] { path.AltCurveto(pts, 4); },
        [&] { path.AltAltCurveto(other.points, 0, 4); },
        [&] { path.Closeto(); },
        [&] { HvPath2fSink(path).Lineto(p); },
        [&] { path.NumPoints(); },
        [&] { path.NumSubpaths(); },
        [&] { path.NumSegments(); },
        [&] { path.NumNodes(); },
        [&] { path.NumNodesExceptLastNodeOfClosedSubpaths(); },
        [&] { path.LargestDegree(); },
        [&] { path.IsPolyline(); },
        [&] { path.GetDegree(1); },
        [&] { path.StartOfSegment(1); },
        [&] { path.EndOfSegment(1); },
        [&] { path.GetSegmentIndices(1, a, b); },
        [&] { path.GetSubpathIndices(1, a, b); },
        [&] { path.IsStartOfSubpath(1); },
        [&] { path.IsEndOfSubpath(1, flag); },
        [&] { path.IsSubpathClosed(1); },
        [&] { path.IsSiblingOf(other); },
        [&] { other.IsSiblingOf(path); },
        [&] { path.GetCurrentPoint(); },
        [&] { path.GetPoint(1); },
        [&] { path.GetPoint(1, p); },
        [&] { path.GetPoints(0, 3, pts); },
        [&] { path.GetPoints(0, 3, wide); },
        [&] { path.IsG1Continuous(3); },
        [&] {
            path.ReplacePoint(3, {1, 1}, 0);
        },
        [&] {
            path.ReplacePointIgnoringLock(3, {1, 1});
        },
        [&] {
            path.ReplaceTangentVectorDirections(3, {1, 1});
        },
        [&] { path.LockG1(3); },
        [&] { path.CloseSubpath(0); },
        [&] { path.OpenSubpath(0); },
        [&] { path.ReplaceSegment(0, pts, 3); },
        [&] { path.ReplaceSubpathSection(0, 1); },
        [&] { path.ReplaceSubpathSection(0, 1, p, p); },
        [&] { path.ReplaceSubpathSection(0, 1, other, 0, 1); },
        [&] { other.ReplaceSubpathSection(0, 1, path, 0, 1); },
        [&] { path.RemoveSubpathSection(0, 1); },
        [&] { path.GetExtent(extent); },
        [&] { path.GetExtent(wideExtent); },
        [&] {
            path.Translate({1, 1});
        },
        [&] { path.Rotate(1, p); },
        [&] { path.Scale(1, 1, p); },
        [&] { path.ShearX(1, 1); },
        [&] { path.ShearY(1, 1); },
        [&] { path.Transform(HvTransfo4()); },
        [&] { path.GetBufferSize(); },
        [&] { path.WriteToBuffer(bytes); },
        [&] { path.ReadFromBufferBody(bytes + 4); },
        [&] {
            HvByteReader reader(bytes + 4, sizeof bytes - 4);
            path.ReadArchiveBody(reader);
        },
        [&] { stream << path; },
        [&] { iter.GetNextSubPathIndices(a, b); },
        [&] { path.QueryShapeKind(HvShape2f::Path); },
        [&] { HvPath2f const copy(path); },
        [&] { HvPath2f const piece(path, 0, 3); },
        [&] { std::unique_ptr<HvShape2f>(path.Clone()); },
        [&] { other = path; },
        [&] { path = other; },
        [&] { path.RemoveSubpath(0); },
    };
    int number = 0;
    for (auto const& call : calls) {
        EXPECT_TRUE(Waits(path, call)) << number;
        ++number;
    }
}

TEST(HvPath2f_threads, TheDegreeIsReadWithoutTheLock)
{
    OpenPath const path = SmoothRun();
    HvShapeLock const lock(path);
    EXPECT_EQ(AskedByAnotherThread([&] { return path.Degree(1); }), 3u);
}

TEST(HvPath2f_threads, ReadersSeeWholeEdits)
{
    // Two threads edit, two copy and read; each copy is a path that some order of edits made.
    HvPath2f path(0u);
    path.Moveto({0, 0});
    RunThreads(4, [&](int k) {
        for (int step = 0; step < 300; ++step) {
            if (k == 0) {
                path.Curveto({1, 1}, {2, 2}, {float(step), 3});
                path.LockG1(3);
                path.ReplacePoint(3, {5, 5}, 1);
            } else if (k == 1) {
                unsigned int const last = step % 8 == 0 ? 4u : 1u;
                path.ReplaceSubpathSection(0, 3, {4, 4}, {float(step), 5});
                path.ReplaceSubpathSection(0, last);
                path.CloseSubpath(0);
                path.OpenSubpath(0);
                path.RemoveSubpathSection(3, 6);
            } else {
                OpenPath const copy(path);
                ASSERT_EQ(copy.points.Size(), copy.tags.Size());
                ASSERT_TRUE(HvPathTags(copy.tags).AreWellFormed());
                path.NumSegments();
                path.IsSiblingOf(copy);
                std::unique_ptr<unsigned char[]> const bytes(
                    new unsigned char[copy.GetBufferSize()]);
                copy.WriteToBuffer(bytes.get());
                HvPath2f read(0u);
                ASSERT_NE(read.ReadFromBufferBody(bytes.get() + 4), 0u);
            }
        }
    });
    EXPECT_TRUE(HvPathTags(OpenPath(path).tags).AreWellFormed());
}
