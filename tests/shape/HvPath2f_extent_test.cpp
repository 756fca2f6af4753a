// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/foundation/HvExtent2.h>
#include <hv/shape/HvPath2fIter.h>

#include "outline_paths.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using Extent = HvExtent2<float>;
using WideExtent = HvExtent2<double>;

template <class T>
void ExpectExtent(HvExtent2<T> const& extent, T minX, T minY, T maxX, T maxY)
{
    EXPECT_EQ(extent.state, HvExtent2<T>::Ordinary);
    EXPECT_EQ(extent.min, HvPoint2<T>(minX, minY));
    EXPECT_EQ(extent.max, HvPoint2<T>(maxX, maxY));
}

}  // namespace

TEST(HvPath2f_extent, EmptyPathHasAnEmptyExtent)
{
    HvPath2f const path(1u);
    Extent extent(1, 2, 3, 4);
    EXPECT_EQ(&path.GetTightExtent(extent), &extent);
    EXPECT_EQ(extent.state, Extent::Empty);
    EXPECT_EQ(extent.min, HvPoint2<float>());
    WideExtent wide(1, 2, 3, 4);
    EXPECT_EQ(path.GetTightExtent(wide).state, WideExtent::Empty);
    EXPECT_EQ(path.GetSegmentExtent(0, extent).state, Extent::Empty);
}

TEST(HvPath2f_extent, CubicIsTighterThanItsControls)
{
    HvPath2f path(1u);
    path.Moveto({0, 0});
    path.Curveto({0, 16}, {16, 16}, {16, 0});
    Extent extent;
    // The top of the curve is at 12; of the quarters, the two middle ones reach control y 12.
    ExpectExtent(path.GetTightExtent(extent), 0.0F, 0.0F, 16.0F, 12.0F);
    WideExtent wide;
    ExpectExtent(path.GetTightExtent(wide), 0.0, 0.0, 16.0, 12.0);
    ExpectExtent(path.GetExtent(extent), 0.0F, 0.0F, 16.0F, 16.0F);
}

TEST(HvPath2f_extent, OtherDegreesCountWithTheirControls)
{
    HvPath2f path(1u);
    path.Moveto({0, 0});
    path.Curveto({8, 16}, {16, 0});
    Extent extent;
    ExpectExtent(path.GetTightExtent(extent), 0.0F, 0.0F, 16.0F, 16.0F);
}

TEST(HvPath2f_extent, SegmentExtentHoldsTheControlsOfItsSegment)
{
    HvPath2f path(1u);
    path.Moveto({0, 0});
    path.Lineto({1, 1});
    path.Curveto({2, 9}, {5, 5});
    Extent extent;
    for (unsigned int const i : {2u, 3u}) {
        ExpectExtent(path.GetSegmentExtent(i, extent), 1.0F, 1.0F, 5.0F, 9.0F);
    }
    ExpectExtent(path.GetSegmentExtent(0, extent), 0.0F, 0.0F, 1.0F, 1.0F);
    EXPECT_EQ(path.GetSegmentExtent(4, extent).state, Extent::Empty);
}

RC_GTEST_PROP(HvPath2f_extent, TightExtentLiesBetweenOutlineAndControls, ())
{
    HvPath2f const path = RandomOutline();
    WideExtent tight;
    WideExtent controls;
    path.GetTightExtent(tight);
    path.GetExtent(controls);
    RC_ASSERT(controls.Contains(tight.min) && controls.Contains(tight.max));
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        for (unsigned int start = first; start < last;) {
            unsigned int const end = path.EndOfSegment(start + 1);
            for (int k = 0; k <= 64; ++k) {
                HvPoint2<double> const p = BezierAt(SegmentOf(path, start, end), k / 64.0);
                RC_ASSERT(p.x >= tight.min.x - 1e-12 && p.x <= tight.max.x + 1e-12);
                RC_ASSERT(p.y >= tight.min.y - 1e-12 && p.y <= tight.max.y + 1e-12);
            }
            start = end;
        }
    }
}
