// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Duplicates, order, and closeness of polylines.

#include <hv/foundation/polyline_compare.h>

#include <hv/foundation/polyline_length.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace {

using Point = HvPoint2<double>;
using Points = std::vector<Point>;
using Tags = std::vector<HvPointTag>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr HvPointTag S = HvPointTagStart;
constexpr HvPointTag I = HvPointTagInner;
constexpr HvPointTag E = HvPointTagEnd;

HvPoint2dArray MakeArray(Points const& points)
{
    return HvPoint2dArray(points.data(), unsigned(points.size()));
}

HvPoint2fArray MakeFloatArray(Points const& points)
{
    HvPoint2fArray a;
    for (Point const& p : points) {
        a.Add(HvPoint2<float>(p));
    }
    return a;
}

HvPointTagArray MakeTags(Tags const& tags)
{
    return HvPointTagArray(tags.data(), unsigned(tags.size()));
}

struct Filtered {
    HvPoint2dArray points;
    HvPointTagArray tags;
};

bool Is(Filtered const& f, Points const& points, Tags const& tags)
{
    return Points(f.points.begin(), f.points.end()) == points &&
           Tags(f.tags.begin(), f.tags.end()) == tags;
}

Filtered Filter(Points const& points, Tags const& tags)
{
    Filtered f;
    HvPoint2dArray_Filter(MakeArray(points), MakeTags(tags), f.points, f.tags);
    return f;
}

constexpr unsigned int kUntouched = 12345;

struct Verdict {
    int result;
    unsigned int failedAt;
};

bool operator==(Verdict const& a, Verdict const& b)
{
    return a.result == b.result && a.failedAt == b.failedAt;
}

/// The verdict about ranges, which float and double polylines share.
Verdict Compare(Points const& a, unsigned int a0, unsigned int a1, Points const& b, unsigned int b0,
                unsigned int b1, double tolerance)
{
    HvPoint2dArray const da = MakeArray(a), db = MakeArray(b);
    HvPoint2fArray const fa = MakeFloatArray(a), fb = MakeFloatArray(b);
    HvDoubleArray chordA, chordB;
    HvPoint2dArray_ComputeChordLength(da, 0, da.Size() - 1, chordA);
    HvPoint2dArray_ComputeChordLength(db, 0, db.Size() - 1, chordB);
    Verdict d{-1, kUntouched}, f{-1, kUntouched};
    d.result = HvPoint2dArray_PolylinesAreClose(da, chordA, a0, a1, db, chordB, b0, b1, tolerance,
                                                d.failedAt);
    f.result = HvPoint2fArray_PolylinesAreClose(fa, chordA, a0, a1, fb, chordB, b0, b1, tolerance,
                                                f.failedAt);
    EXPECT_EQ(d, f);
    return d;
}

Verdict Compare(Points const& a, Points const& b, double tolerance)
{
    return Compare(a, 0, unsigned(a.size()) - 1, b, 0, unsigned(b.size()) - 1, tolerance);
}

Verdict const kClose{1, kUntouched};

}  // namespace

TEST(Polyline_ConsecutivePointsDiffer, SeesEqualNeighboursOnly)
{
    struct Row {
        Points points;
        int expected;
    };
    for (Row const& row : {Row{{}, 1},
                           {{{1, 2}}, 1},
                           {{{1, 2}, {1, 3}}, 1},
                           {{{1, 2}, {1, 2}}, 0},
                           {{{1, 2}, {3, 4}, {1, 2}}, 1},
                           {{{0, 0}, {1, 2}, {3, 4}, {3, 4}}, 0},
                           {{{kNaN, 0}, {kNaN, 0}}, 1},
                           {{{0.0, 0}, {-0.0, 0}}, 0}}) {
        EXPECT_EQ(HvPoint2dArray_ConsecutivePointsDiffer(MakeArray(row.points)), row.expected);
        EXPECT_EQ(HvPoint2fArray_ConsecutivePointsDiffer(MakeFloatArray(row.points)), row.expected);
    }
}

TEST(Polyline_IsStrictlyIncreasingX, OrdersByXThenY)
{
    EXPECT_EQ(HvPoint2dArray_IsStrictlyIncreasingX(MakeArray({})), 1);
    EXPECT_EQ(HvPoint2dArray_IsStrictlyIncreasingX(MakeArray({{5, 5}})), 1);
    EXPECT_EQ(HvPoint2dArray_IsStrictlyIncreasingX(MakeArray({{0, 9}, {1, 0}, {1, 1}, {2, -9}})),
              1);
    EXPECT_EQ(HvPoint2dArray_IsStrictlyIncreasingX(MakeArray({{0, 0}, {0, 0}})), 0);
    EXPECT_EQ(HvPoint2dArray_IsStrictlyIncreasingX(MakeArray({{0, 1}, {0, 0}})), 0);
    EXPECT_EQ(HvPoint2dArray_IsStrictlyIncreasingX(MakeArray({{0, 0}, {1, 0}, {0.5, 1}})), 0);
    EXPECT_EQ(HvPoint2dArray_IsStrictlyIncreasingX(MakeArray({{0, 0}, {kNaN, 0}})), 0);
}

TEST(Polyline_Filter, DropsInnerDuplicates)
{
    EXPECT_TRUE(Is(Filter({{0, 0}, {0, 0}, {1, 0}, {1, 0}, {2, 0}}, {S, I, I, I, E}),
                   {{0, 0}, {1, 0}, {2, 0}}, {S, I, E}));
}

TEST(Polyline_Filter, MakesTheLastPointTheEndForADuplicateAtTheEnd)
{
    EXPECT_TRUE(Is(Filter({{0, 0}, {1, 0}, {1, 0}}, {S, I, E}), {{0, 0}, {1, 0}}, {S, E}));
}

TEST(Polyline_Filter, NeverCollapsesARunToAPoint)
{
    EXPECT_TRUE(Is(Filter({{1, 1}, {1, 1}}, {S, E}), {{1, 1}, {1, 1}}, {S, E}));
    EXPECT_TRUE(Is(Filter({{1, 1}, {1, 1}, {1, 1}}, {S, I, E}), {{1, 1}, {1, 1}}, {S, E}));
}

TEST(Polyline_Filter, StartsARunAlways)
{
    EXPECT_TRUE(Is(Filter({{0, 0}, {1, 1}, {1, 1}, {2, 2}}, {S, E, S, E}),
                   {{0, 0}, {1, 1}, {1, 1}, {2, 2}}, {S, E, S, E}));
}

TEST(Polyline_Filter, CopiesALeadingInnerOrEndPoint)
{
    EXPECT_TRUE(Is(Filter({{0, 0}}, {I}), {{0, 0}}, {I}));
    EXPECT_TRUE(Is(Filter({{0, 0}, {0, 0}}, {E, E}), {{0, 0}}, {E}));
    EXPECT_TRUE(Is(Filter({}, {}), {}, {}));
}

TEST(Polyline_Filter, AppendsAfterWhatIsThere)
{
    Filtered f;
    f.points.Add(1, 1);
    f.tags.Add(I);
    HvPoint2dArray_Filter(MakeArray({{1, 1}, {1, 1}}), MakeTags({I, E}), f.points, f.tags);
    EXPECT_TRUE(Is(f, {{1, 1}}, {E}));
}

TEST(Polyline_Filter, TakesItsOutputsAsInputs)
{
    Filtered f{MakeArray({{0, 0}, {1, 0}, {1, 0}}), MakeTags({S, I, E})};
    HvPoint2dArray_Filter(f.points, f.tags, f.points, f.tags);
    EXPECT_TRUE(Is(f, {{0, 0}, {1, 0}, {1, 0}, {0, 0}, {1, 0}}, {S, I, E, S, E}));
    // The first end tag makes the last point the end; the last tag to be read is still the inner
    // one that stood there.
    Filtered t{MakeArray({{4, 4}, {5, 5}}), MakeTags({E, I})};
    HvPoint2dArray_Filter(MakeArray({{5, 5}, {6, 6}}), t.tags, t.points, t.tags);
    EXPECT_TRUE(Is(t, {{4, 4}, {5, 5}, {6, 6}}, {E, E, I}));
}

TEST(Polyline_Filter, IsDoneAfterOnePass)
{
    EXPECT_TRUE(rc::check([] {
        Points points;
        Tags tags;
        int const runs = PickInRange(1, 5);
        for (int run = 0; run < runs; ++run) {
            int const count = PickInRange(2, 8);
            for (int i = 0; i < count; ++i) {
                points.push_back(Point(PickInRange(0, 2), PickInRange(0, 2)));
                tags.push_back(i == 0 ? S : i == count - 1 ? E : I);
            }
        }
        Filtered const once = Filter(points, tags);
        Points const oncePoints(once.points.begin(), once.points.end());
        Tags const onceTags(once.tags.begin(), once.tags.end());
        RC_ASSERT(Is(Filter(oncePoints, onceTags), oncePoints, onceTags));
        int starts = 0, ends = 0;
        for (HvPointTag const tag : onceTags) {
            starts += tag == S;
            ends += tag == E;
        }
        RC_ASSERT(starts == runs && ends == runs);
        RC_ASSERT(oncePoints.front() == points.front() && oncePoints.back() == points.back());
    }));
}

TEST(Polyline_Filter, LeavesTheOutputsAsTheyWereWhenAnAllocationFails)
{
    RefuseEachAllocation(
        [] {
            return Filtered{MakeArray({{5, 5}}), MakeTags({I})};
        },
        [](Filtered& f) {
            HvPoint2dArray_Filter(MakeArray({{5, 5}, {5, 5}, {6, 6}}), MakeTags({I, E, S}),
                                  f.points, f.tags);
        },
        [](Filtered& f, bool completed) {
            EXPECT_TRUE(completed ? Is(f, {{5, 5}, {6, 6}}, {E, S}) : Is(f, {{5, 5}}, {I}));
        });
}

TEST(Polyline_PolylinesAreClose, ComparesAtEqualLengths)
{
    Points const straight{{0, 0}, {10, 0}};
    EXPECT_EQ(Compare(straight, {{0, 0}, {3, 0}, {7, 0}, {10, 0}}, 0.0), kClose);
    // The second point lies 5 along its line, so it is held against (5, 0): 2 and 4 make 20.
    Points const bent{{0, 0}, {3, 4}, {10, 0}};
    EXPECT_EQ(Compare(straight, bent, 4.47), (Verdict{0, 1}));
    EXPECT_EQ(Compare(straight, bent, 4.48), kClose);
}

TEST(Polyline_PolylinesAreClose, AllowsADistanceOfExactlyTheTolerance)
{
    Points const straight{{0, 0}, {10, 0}};
    // Points 5 along both lines, 8 and 4 apart; and 6 apart exactly.
    EXPECT_EQ(Compare(straight, {{0, 6}, {5, 6}, {10, 6}}, 6.0), kClose);
    EXPECT_EQ(Compare(straight, {{0, 6}, {5, 6}, {10, 6}}, 5.999999), (Verdict{0, 1}));
    EXPECT_EQ(Compare(straight, {{0, 6}, {5, 6}, {10, 6}}, -6.0), kClose);
}

TEST(Polyline_PolylinesAreClose, LeavesTheEndsOut)
{
    EXPECT_EQ(Compare({{0, 0}, {10, 0}}, {{0, 99}, {10, 99}}, 0.0), kClose);
    EXPECT_EQ(Compare({{0, 0}, {10, 0}}, {{0, 99}}, 0.0), kClose);
}

TEST(Polyline_PolylinesAreClose, HoldsWhatGoesOnAgainstTheLastPoint)
{
    Points const shortLine{{0, 0}, {4, 0}};
    Points const longLine{{0, 0}, {2, 0}, {6, 0}, {7, 0}, {9, 0}, {20, 0}};
    EXPECT_EQ(Compare(shortLine, longLine, 5.0), kClose);
    EXPECT_EQ(Compare(shortLine, longLine, 4.0), (Verdict{0, 4}));
    EXPECT_EQ(Compare(shortLine, longLine, 1.5), (Verdict{0, 2}));
}

TEST(Polyline_PolylinesAreClose, StartsAtTheFirstPointWithoutLength)
{
    // The second point repeats the first: no length has been walked.
    EXPECT_EQ(Compare({{0, 0}, {10, 0}}, {{0, 0}, {0, 0}, {10, 0}}, 0.0), kClose);
    EXPECT_EQ(Compare({{0, 0}, {10, 0}}, {{3, 4}, {3, 4}, {10, 0}}, 5.0), kClose);
    EXPECT_EQ(Compare({{0, 0}, {10, 0}}, {{3, 4}, {3, 4}, {10, 0}}, 4.9), (Verdict{0, 1}));
    EXPECT_EQ(Compare({{0, 0}, {0, 0}, {10, 0}}, {{0, 0}, {5, 0}, {10, 0}}, 0.0), kClose);
    // Nor may the segment before the stretch be looked at, which here has no length.
    EXPECT_EQ(Compare({{0, 0}, {0, 0}, {10, 0}}, 1, 2, {{3, 4}, {3, 4}, {10, 0}}, 0, 2, 4.9),
              (Verdict{0, 1}));
}

TEST(Polyline_PolylinesAreClose, ComparesRangesFromTheirOwnStarts)
{
    Points const a{{-50, 9}, {0, 0}, {4, 0}, {4, 6}, {99, 99}};
    Points const b{{7, 7}, {8, 8}, {0, 0}, {2, 0}, {4, 2}, {4, 6}, {-9, -9}};
    // (4, 2) lies 2 + sqrt 8 = 4.83 along b, where a is at (4, 0.83): 1.17 apart.
    EXPECT_EQ(Compare(a, 1, 3, b, 2, 5, 1.18), kClose);
    EXPECT_EQ(Compare(a, 1, 3, b, 2, 5, 1.17), (Verdict{0, 4}));
    EXPECT_EQ(Compare(a, 2, 2, b, 2, 5, 2.0), kClose);
    EXPECT_EQ(Compare(a, 2, 2, b, 2, 5, 1.9), (Verdict{0, 3}));
}

TEST(Polyline_PolylinesAreClose, CountsNaNAsClose)
{
    EXPECT_EQ(Compare({{0, 0}, {10, 0}}, {{0, 0}, {kNaN, 0}, {10, 0}}, 0.0), kClose);
    EXPECT_EQ(Compare({{0, 0}, {10, 0}}, {{0, 0}, {9, 9}, {10, 0}}, kNaN), kClose);
}

TEST(Polyline_PolylinesAreClose, IsCloseToAFinerCopyOfItself)
{
    EXPECT_TRUE(rc::check([] {
        Points coarse, fine;
        int const count = PickInRange(2, 12);
        for (int i = 0; i < count; ++i) {
            // Steps of whole length along the axes keep every length exact.
            Point const step = PickInRange(0, 2) == 0 ? Point(8, 0) : Point(0, 8);
            Point const last = coarse.empty() ? Point() : coarse.back();
            Point const next = coarse.empty() ? Point() : last + step;
            for (int k = 1; k < 8 && !coarse.empty(); ++k) {
                fine.push_back(last + step * (k / 8.0));
            }
            coarse.push_back(next);
            fine.push_back(next);
        }
        RC_ASSERT(Compare(coarse, fine, 0.0) == kClose);
        std::size_t const moved = PickInRange<std::size_t>(1, fine.size() - 1);
        Points other = fine;
        other[moved] = other[moved] + Point(1, 1) * 1000.0;
        RC_ASSERT(Compare(coarse, other, 1.0).result == 0);
        RC_ASSERT(Compare(coarse, other, 1.0).failedAt == moved);
    }));
}
