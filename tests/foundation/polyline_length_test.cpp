// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Chord lengths.

#include <hv/foundation/polyline_length.h>

#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using Numbers = std::vector<double>;

Numbers Contents(HvDoubleArray const& a)
{
    return Numbers(a.begin(), a.end());
}

/// Points whose steps are 5, 0, 13 and 1 long.
template <class Array, class Point>
Array MakePoints()
{
    Array a;
    for (Point const& p : {Point(0, 0), Point(3, 4), Point(3, 4), Point(8, 16), Point(8, 17)}) {
        a.Add(p);
    }
    return a;
}

HvPoint2fArray FloatPoints()
{
    return MakePoints<HvPoint2fArray, HvPoint2<float>>();
}

HvPoint2dArray DoublePoints()
{
    return MakePoints<HvPoint2dArray, HvPoint2<double>>();
}

HvDoubleArray WithOne(double number)
{
    return HvDoubleArray(number, 1u);
}

}  // namespace

TEST(Polyline_ComputeChordLength, AppendsTheRunningLengthOfARange)
{
    HvDoubleArray out = WithOne(-1);
    HvPoint2fArray_ComputeChordLength(FloatPoints(), 0, 4, out);
    EXPECT_EQ(Contents(out), (Numbers{-1, 0, 5, 5, 18, 19}));
    HvDoubleArray part;
    HvPoint2dArray_ComputeChordLength(DoublePoints(), 2, 4, part);
    EXPECT_EQ(Contents(part), (Numbers{0, 13, 14}));
    HvPoint2dArray_ComputeChordLength(DoublePoints(), 3, 3, part);
    EXPECT_EQ(Contents(part), (Numbers{0, 13, 14, 0}));
}

TEST(Polyline_ComputeChordLength, AppendsNothingForNoPoints)
{
    HvDoubleArray out;
    HvPoint2fArray const none;
    HvPoint2fArray_ComputeChordLength(none, 0, none.Size() - 1, out);
    HvPoint2dArray_ComputeChordLength(HvPoint2dArray(), 0, 0, out);
    HvPoint2fArray_ComputeChordLength(none, HvPointTagArray(), out);
    HvPoint2fArray_ComputeIncrementalChordLength(none, 0, none.Size() - 1, out);
    EXPECT_EQ(HvPoint2fArraySingleComponent_ComputeChordLength(none, out), 0.0);
    EXPECT_EQ(HvPoint3dArraySingleComponent_ComputeChordLength(HvPoint3dArray(), out), 0.0);
    EXPECT_EQ(HvPoint2fArraySingleComponent_ComputeLength(none), 0.0);
    EXPECT_EQ(out.Size(), 0u);
}

TEST(Polyline_ComputeChordLength, RestartsAfterAnEndTag)
{
    HvPointTag const tags[] = {HvPointTagStart, HvPointTagEnd, HvPointTagStart, HvPointTagInner,
                               HvPointTagEnd};
    HvDoubleArray out;
    HvPoint2fArray_ComputeChordLength(FloatPoints(), HvPointTagArray(tags, 5), out);
    EXPECT_EQ(Contents(out), (Numbers{0, 5, 0, 13, 14}));
}

TEST(Polyline_ComputeChordLength, RestartsAfterEndTagsOnly)
{
    // A start tag alone does not cut, and neither is an end tag needed at the end.
    HvPointTag const tags[] = {HvPointTagInner, HvPointTagStart, HvPointTagEnd, HvPointTagInner,
                               HvPointTagInner};
    HvDoubleArray out;
    HvPoint2fArray_ComputeChordLength(FloatPoints(), HvPointTagArray(tags, 5), out);
    EXPECT_EQ(Contents(out), (Numbers{0, 5, 5, 0, 1}));
}

TEST(Polyline_ComputeIncrementalChordLength, ContinuesWithTheIndexProcessedLast)
{
    HvPoint2fArray const a = FloatPoints();
    HvDoubleArray out;
    HvPoint2fArray_ComputeIncrementalChordLength(a, 0, 0, out);
    EXPECT_EQ(Contents(out), (Numbers{0}));
    HvPoint2fArray_ComputeIncrementalChordLength(a, 0, 2, out);
    HvPoint2fArray_ComputeIncrementalChordLength(a, 2, 4, out);
    EXPECT_EQ(Contents(out), (Numbers{0, 5, 5, 18, 19}));
}

TEST(Polyline_ComputeIncrementalChordLength, AppendsAgainForTheSameIndex)
{
    HvPoint2fArray const a = FloatPoints();
    HvDoubleArray out;
    HvPoint2fArray_ComputeIncrementalChordLength(a, 0, 1, out);
    HvPoint2fArray_ComputeIncrementalChordLength(a, 0, 1, out);
    EXPECT_EQ(Contents(out), (Numbers{0, 5, 5}));
    HvDoubleArray offset = WithOne(100);
    HvPoint2fArray_ComputeIncrementalChordLength(a, 0, 1, offset);
    EXPECT_EQ(Contents(offset), (Numbers{100, 105}));
}

TEST(Polyline_ComputeLength, SumsTheWholePolyline)
{
    HvDoubleArray out = WithOne(7);
    EXPECT_EQ(HvPoint2fArraySingleComponent_ComputeChordLength(FloatPoints(), out), 19.0);
    EXPECT_EQ(Contents(out), (Numbers{7, 0, 5, 5, 18, 19}));
    EXPECT_EQ(HvPoint2fArraySingleComponent_ComputeLength(FloatPoints()), 19.0);
    HvPoint3dArray space;
    for (HvPoint3<double> const& p :
         {HvPoint3<double>(0, 0, 0), {2, -3, 6}, {2, -3, 6}, {5, 1, 6}}) {
        space.Add(p);
    }
    HvDoubleArray inSpace;
    EXPECT_EQ(HvPoint3dArraySingleComponent_ComputeChordLength(space, inSpace), 12.0);
    EXPECT_EQ(Contents(inSpace), (Numbers{0, 7, 7, 12}));
}

TEST(Polyline_ComputeLength, MeasuresFloatPointsInDouble)
{
    HvPoint2fArray a;
    a.Add(HvPoint2<float>(-1, 0));
    a.Add(HvPoint2<float>(16777216.0f, 0));
    EXPECT_EQ(HvPoint2fArraySingleComponent_ComputeLength(a), 16777217.0);
}

TEST(Polyline_ComputeChordLength, LeavesTheTableAsItWasWhenAnAllocationFails)
{
    RefuseEachAllocation(
        [] { return HvDoubleArray(3.0, 2u); },
        [](HvDoubleArray& out) {
            HvPoint2fArraySingleComponent_ComputeChordLength(FloatPoints(), out);
        },
        [](HvDoubleArray& out, bool completed) { EXPECT_EQ(out.Size(), completed ? 7u : 2u); });
}
