// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path as the place where fitted curves are drawn.

#include <hv/shape/HvPath2fSink.h>

#include "path_test_support.h"

#include <gtest/gtest.h>

#include <memory>

TEST(HvPath2fSink, DrawsIntoThePath)
{
    OpenPath drawn;
    HvPath2fSink sink(drawn);
    HvBezierSink& base = sink;
    base.Moveto({0, 0});
    base.Lineto({1, 0});
    EXPECT_EQ(base.Closeto(), 0) << "the ends differ";
    base.Curveto({2, 0}, {3, 1}, {0, 0});
    EXPECT_EQ(base.Closeto(), 1);
    OpenPath path;
    path.Moveto({0, 0});
    path.Lineto({1, 0});
    path.Curveto({2, 0}, {3, 1}, {0, 0});
    path.Closeto();
    EXPECT_EQ(ImageOf(drawn), ImageOf(path));
}

TEST(HvPath2fSink, ContinuesThePath)
{
    OpenPath drawn;
    drawn.Moveto({5, 5});
    HvPath2fSink(drawn).Lineto({6, 6});
    EXPECT_EQ(TagsOf(drawn), (std::vector<unsigned int>{1, 3}));
}

TEST(HvPath2fSink, IsDestroyedThroughItsBase)
{
    OpenPath drawn;
    std::unique_ptr<HvBezierSink> const sink(new HvPath2fSink(drawn));
    sink->Moveto({1, 1});
    EXPECT_EQ(drawn.NumPoints(), 1u);
}
