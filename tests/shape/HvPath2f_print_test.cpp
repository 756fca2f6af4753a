// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths as text.

#include <hv/shape/HvPath2f.h>

#include "path_test_support.h"

#include <gtest/gtest.h>

#include <sstream>

TEST(HvPath2f_print, WritesCountsAndPoints)
{
    OpenPath path = Triangle();
    path.Moveto({0.5F, -2});
    path.Curveto({1, 1}, {2, 2}, {3, 3});
    std::ostringstream stream;
    EXPECT_EQ(&(stream << static_cast<HvPath2f const&>(path)), &stream);
    EXPECT_EQ(stream.str(), "Statistics for this path: \n"
                            "NumPoints: 8\n"
                            "NumSegments: 4\n"
                            "NumSubpaths: 2\n"
                            "LargestDegree: 3\n"
                            "The points: \n"
                            "Index: 0 X: 0 Y: 0 First: 0 Last: 1\n"
                            "Index: 1 X: 4 Y: 0 First: 0 Last: 1\n"
                            "Index: 2 X: 0 Y: 3 First: 1 Last: 2\n"
                            "Index: 3 X: 0 Y: 0 First: 2 Last: 3\n"
                            "Index: 4 X: 0.5 Y: -2 First: 4 Last: 7\n"
                            "Index: 5 X: 1 Y: 1 First: 4 Last: 7\n"
                            "Index: 6 X: 2 Y: 2 First: 4 Last: 7\n"
                            "Index: 7 X: 3 Y: 3 First: 4 Last: 7\n");
}

TEST(HvPath2f_print, WritesAnEmptyPath)
{
    std::ostringstream stream;
    stream << HvPath2f(0u);
    EXPECT_EQ(stream.str(),
              "Statistics for this path: \nNumPoints: 0\nNumSegments: 0\nNumSubpaths: 0\n"
              "LargestDegree: 0\nThe points: \n");
}
