// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/raster/HvBlurKernel.h>

#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <new>
#include <vector>

namespace {

double Line(double x)
{
    return 1.0 - x;
}

TEST(HvBlurKernel, IsSoftFromARadiusOfOne)
{
    EXPECT_TRUE(HvBlurKernel::IsSoft(1.0));
    EXPECT_TRUE(HvBlurKernel::IsSoft(std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(HvBlurKernel::IsSoft(std::nextafter(1.0, 0.0)));
    EXPECT_FALSE(HvBlurKernel::IsSoft(-5.0));
    EXPECT_FALSE(HvBlurKernel::IsSoft(std::nan("")));
}

TEST(HvBlurKernel, ReachesToTheRadiusRoundedHalfDown)
{
    EXPECT_EQ(HvBlurKernel(1.0, Line).Reach(), 1);
    EXPECT_EQ(HvBlurKernel(1.5, Line).Reach(), 1);
    EXPECT_EQ(HvBlurKernel(1.51, Line).Reach(), 2);
    EXPECT_EQ(HvBlurKernel(2.5, Line).Reach(), 2);
    EXPECT_EQ(HvBlurKernel(10.0, Line).Reach(), 10);
}

// With a reach of 1 the samples of 1 - x are 1/3, 1 and 1/3, together 5/3.
TEST(HvBlurKernel, WeightsAreTheSamplesDividedByTheirSum)
{
    HvBlurKernel const kernel(1.0, Line);
    EXPECT_DOUBLE_EQ(kernel.Weights()[0], 0.2);
    EXPECT_DOUBLE_EQ(kernel.Weights()[1], 0.6);
    EXPECT_DOUBLE_EQ(kernel.Weights()[2], 0.2);
    EXPECT_DOUBLE_EQ(kernel.Sums()[2], 51.0);
    EXPECT_DOUBLE_EQ(kernel.Sums()[1], 204.0);
    EXPECT_DOUBLE_EQ(kernel.Sums()[0], 255.0);
}

TEST(HvBlurKernel, SamplesTheFalloffOnceForEachDistance)
{
    std::vector<double> asked;
    HvBlurKernel const kernel(3.0, [&](double x) {
        asked.push_back(x);
        return 1.0;
    });
    EXPECT_EQ(asked, (std::vector<double>{0.0, 1 / 3.5, 2 / 3.5, 3 / 3.5}));
}

TEST(HvBlurKernel, AnAbsurdRadiusIsRefusedBeforeItIsSampled)
{
    auto const unasked = [](double) {
        ADD_FAILURE() << "sampled";
        return 1.0;
    };
    for (double const radius :
         {HvBlurKernel::kMaxReach + 1.0, 1e9, 1e300, std::numeric_limits<double>::infinity()}) {
        EXPECT_THROW(HvBlurKernel(radius, unasked), std::bad_alloc) << radius;
    }
    EXPECT_EQ(HvBlurKernel(HvBlurKernel::kMaxReach, Line).Reach(), HvBlurKernel::kMaxReach);
}

TEST(HvBlurKernel, LeavesNothingBehindWhenTheFalloffThrows)
{
    AllocationCounter const counter;
    EXPECT_THROW(HvBlurKernel(5.0,
                              [](double x) -> double {
                                  if (x > 0.5) {
                                      throw 7;
                                  }
                                  return 1.0;
                              }),
                 int);
    EXPECT_EQ(counter.Live(), 0);
}

TEST(HvBlurKernel, AllocatesOnce)
{
    EXPECT_EQ(RefuseEachAllocation([] { HvBlurKernel const kernel(4.0, Line); }), 1);
}

}  // namespace
