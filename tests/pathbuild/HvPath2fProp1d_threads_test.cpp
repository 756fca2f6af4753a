// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Property paths that several threads use at once, and the locks that their operations take.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/byte_codec.h>
#include <hv/shape/HvShapeLock.h>
#include <tests/platform/run_threads.h>
#include <tests/shape/shape_lock_probe.h>

#include <gtest/gtest.h>

#include "prop_path_support.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

TEST(HvPath2fProp1d_threads, EveryOperationHoldsThePath)
{
    OpenProp path = ThreeLines();
    OpenProp other = ThreeLines();
    HvGC const gc;
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvDoubleArray values;
    HvDoubleArray const three(1.0, 3);
    HvPoint2dArray const curvePoints(HvPoint2<double>(1, 1), 1);
    HvExtent2<float> const extent(0, 0, 1, 1);
    double s = 0;
    std::vector<unsigned char> bytes(path.GetBufferSize());
    path.WriteToBuffer(bytes.data());
    std::function<void()> const calls[] = {
        [&] { HvPath2fProp1d const copy(path); },
        [&] { HvPath2fProp1d const copy(static_cast<HvPath2f const&>(path)); },
        [&] { std::unique_ptr<HvShape2f>(path.Clone()); },
        [&] { other = path; },
        [&] { path = other; },
        [&] { path.QueryShapeKind(HvShape2f::PathProp1d); },
        [&] { path.HasPropCurve(0); },
        [&] { path.GetPropCurve(0); },
        [&] { path.SetPropCurve(0, Constant(1)); },
        [&] { path.SetPropCurve(0, curvePoints, 0.1); },
        [&] { path.SetPropCurve(0, 4u); },
        [&] { path.SetPropCurve(0, other, 4); },
        [&] { other.SetPropCurve(0, path, 4); },
        [&] { path.EvalPropCurve(0, 1.0); },
        [&] { path.EvalPropCurve(0, three, values); },
        [&] { path.GetLargestArcLength(0); },
        [&] { path.GetPropCurveParameter(1, 0.1, s); },
        [&] { path.AppendLinearSegment(0, 1, 1); },
        [&] { path.AppendOrExtendLinearSegment(0, 1, 1, 1); },
        [&] { path.Flatten(gc, points, tags, values); },
        [&] { path.Sample(gc, points, tags, values); },
        [&] { path.PropertySample(gc, points, tags, values); },
        [&] { path.IntersectSamplePointsExtent(gc, extent, points, tags, values, 0); },
        [&] { path.IntersectPropertySamplePointsExtent(gc, extent, points, tags, values, 0); },
        [&] { path.AddFittedSamplesFromPath(gc, other); },
        [&] { other.AddFittedSamplesFromPath(gc, path); },
        [&] { path.SetToLerpAB(other, other, 0.5, 1, 0.1); },
        [&] { other.SetToLerpAB(path, other, 0.5, 1, 0.1); },
        [&] { other.SetToLerpAB(other, path, 0.5, 1, 0.1); },
        [&] { path.GetBufferSize(); },
        [&] { path.WriteToBuffer(bytes.data()); },
        [&] { path.ReadFromBufferBody(bytes.data() + 4); },
        [&] {
            HvByteReader reader(bytes.data() + 4, bytes.size() - 4);
            path.ReadArchiveBody(reader);
        },
        [&] { path.ReplaceSubpathSection(0, 1, other, 0, 1); },
        [&] { path.RemoveSubpathSection(0, 1); },
        [&] { path.RemoveSubpath(0); },
    };
    int number = 0;
    for (auto const& call : calls) {
        path = ThreeLines();
        other = ThreeLines();
        path.WriteToBuffer(bytes.data());
        EXPECT_TRUE(ShapeLockProbe_Waits(path, true, call)) << number;
        EXPECT_TRUE(ShapeLockProbe_IsFree(path)) << number;
        ++number;
    }
}

// While a source is held, an operation waits for it with its target in hand already.
TEST(HvPath2fProp1d_threads, TargetIsLockedBeforeItsSources)
{
    OpenProp const a = ThreeLines();
    OpenProp const b = ThreeLines();
    OpenProp target = ThreeLines();
    std::function<void()> const calls[] = {
        [&] { target = a; },
        [&] { target.SetPropCurve(0, a, 0); },
        [&] { target.AddFittedSamplesFromPath(HvGC(), a); },
        [&] { target.SetToLerpAB(a, b, 0.5, 1, 0.1); },
    };
    int number = 0;
    for (auto const& call : calls) {
        std::thread worker;
        std::thread probe;
        std::atomic<bool> isFree{true};
        {
            HvShapeLock const held(a);
            worker = std::thread(call);
            // A question to the target is not answered any more once the worker waits for a source.
            for (int tries = 0; tries < 1000 && isFree; ++tries) {
                if (probe.joinable()) {
                    probe.join();
                }
                isFree = false;
                probe = std::thread([&] {
                    target.NumPoints();
                    isFree = true;
                });
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
            EXPECT_FALSE(isFree) << number;
        }
        probe.join();
        worker.join();
        ++number;
    }
}

TEST(HvPath2fProp1d_threads, ReadersSeeWholeEdits)
{
    // Threads edit, copy, save and sample; in every copy each curve belongs to a subpath.
    HvPath2fProp1d path(0u);
    OpenProp const source = ThreeLines();
    RunThreads(4, [&](int k) {
        for (int step = 0; step < 150; ++step) {
            if (k == 0) {
                path.Moveto({0, 0});
                path.Lineto({float(step), 1});
                path.SetPropCurve(path.NumPoints() / 2, Constant(step + 1));
            } else if (k == 1) {
                if (step % 4 == 0) {
                    path = source;
                }
                path.RemoveSubpathSection(1, 2);
                path.RemoveSubpath(0);
            } else {
                OpenProp const copy(path);
                HvDLListIter<HvPropCurveData> entries(copy.propCurves);
                while (HvPropCurveData const* const entry = entries.Next()) {
                    ASSERT_EQ(copy.IsStartOfSubpath(entry->subpathStart), 1);
                }
                HvPoint2fArray points;
                HvPointTagArray tags;
                HvDoubleArray values;
                path.PropertySample(HvGC(), points, tags, values);
                path.Flatten(HvGC(), points, tags, values);
                ASSERT_EQ(points.Size(), values.Size());
                std::vector<unsigned char> bytes;
                {
                    HvShapeLock const lock(path);
                    bytes.resize(path.GetBufferSize());
                    path.WriteToBuffer(bytes.data());
                }
                HvByteReader reader(bytes.data() + 4, bytes.size() - 4);
                ASSERT_NE(OpenProp().ReadArchiveBody(reader), 0u);
            }
        }
    });
}
