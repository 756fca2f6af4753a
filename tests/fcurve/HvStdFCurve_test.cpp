// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/foundation/HvPoint2dArray.h>
#include <tests/fcurve/std_curve.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <new>

namespace {

using Point = HvPoint2<double>;
using Word = CFCKeyConstraint;

constexpr HvBaseFCurve::FSKind kConstant = HvBaseFCurve::ConstantSegment;
constexpr HvBaseFCurve::FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

HvPoint2dArray PointsOf(std::initializer_list<Point> points)
{
    HvPoint2dArray array(1);
    for (Point const& point : points) {
        array.Add(point);
    }
    return array;
}

void ExpectKey(CFCStdKey const& key, Point const& left, Point const& right, double x,
               double leftValue, double rightValue, HvBaseFCurve::FSKind kind)
{
    EXPECT_EQ(key.leftHandle, left);
    EXPECT_EQ(key.rightHandle, right);
    EXPECT_EQ(key.parameter, x);
    EXPECT_EQ(key.leftValue, leftValue);
    EXPECT_EQ(key.rightValue, rightValue);
    EXPECT_EQ(key.segmentKind, kind);
    EXPECT_EQ(key.constraints.word, 0x0001);
    EXPECT_EQ(key.privateByte1, 0);
    EXPECT_EQ(key.privateByte2, 0);
}

}  // namespace

TEST(HvStdFCurve, StartsWithoutKeys)
{
    StdCurve curve(5, kLinear);
    HvStdFCurveImpl const& impl = curve.Impl();
    EXPECT_EQ(impl.NumKeys(), 0u);
    EXPECT_EQ(impl.keys.Capacity(), 2u);
    EXPECT_EQ(impl.valueWhenNoKeys, 5);
    EXPECT_EQ(curve.GetFirstSegmentKind(), kLinear);
    EXPECT_EQ(impl.lowerClamp, -1.7976931348623157e308);
    EXPECT_EQ(impl.upperClamp, 1.7976931348623157e308);
    EXPECT_EQ(curve.GetExtrapolationMethod(), HvBaseFCurve::ConstantExtrapolation);
    EXPECT_EQ(curve.IsDefautlBezierTangentConstraintOn(), 0);
    EXPECT_EQ(curve.IsReadOnly(), 0);
    EXPECT_EQ(curve.IsTimeFCurve(), 1);
    EXPECT_EQ(curve.IsSelected(), 0);
}

TEST(HvStdFCurve, MakesOneKeyWithBothValues)
{
    StdCurve curve(1, 2, 3, kConstant, kLinear);
    ASSERT_EQ(curve.GetNumKeys(), 1u);
    ExpectKey(curve.Impl().keys[0], {1, 2}, {1, 3}, 1, 2, 3, kLinear);
    EXPECT_EQ(curve.GetFirstSegmentKind(), kConstant);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 2);
}

TEST(HvStdFCurve, MakesALine)
{
    StdCurve curve(1, 2, 3, 4, kConstant, kCubic);
    ASSERT_EQ(curve.GetNumKeys(), 2u);
    ExpectKey(curve.Impl().keys[0], {1, 2}, {1, 2}, 1, 2, 2, kLinear);
    ExpectKey(curve.Impl().keys[1], {3, 4}, {3, 4}, 3, 4, 4, kCubic);
    EXPECT_EQ(curve.GetFirstSegmentKind(), kConstant);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 2);
}

TEST(HvStdFCurve, MakesACubic)
{
    StdCurve curve({0, 1}, {1, 5}, {2, 6}, {3, 4}, kLinear, kConstant);
    ASSERT_EQ(curve.GetNumKeys(), 2u);
    ExpectKey(curve.Impl().keys[0], {0, 1}, {1, 5}, 0, 1, 1, kCubic);
    ExpectKey(curve.Impl().keys[1], {2, 6}, {3, 4}, 3, 4, 4, kConstant);
    EXPECT_EQ(curve.GetFirstSegmentKind(), kLinear);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 1);
}

TEST(HvStdFCurve, MakesPointsIntoKeys)
{
    for (int method = 1; method <= 4; ++method) {
        SCOPED_TRACE(method);
        HvPoint2dArray const points = PointsOf({{0, 3}, {1, 5}, {2, 4}});
        StdCurve curve(points, HvStdFCurve::DPMethod(method), 0, kLinear, kConstant);
        // One cubic meets three points; the fitting method needs no key between.
        unsigned const last = method == 4 ? 1 : 2;
        ASSERT_EQ(curve.GetNumKeys(), last + 1);
        for (Point const& point : points) {
            EXPECT_NEAR(curve.Eval(point.x, 0), point.y, 1e-7);
        }
        EXPECT_EQ(curve.Impl().keys[0].segmentKind, method == 3 ? kLinear : kCubic);
        EXPECT_EQ(curve.Impl().keys[last].segmentKind, kConstant);
        EXPECT_EQ(curve.GetFirstSegmentKind(), kLinear);
        EXPECT_EQ(curve.Impl().valueWhenNoKeys, 3);
        EXPECT_EQ(curve.Impl().IsValid(), 1);
    }
}

TEST(HvStdFCurve, SkipsPointsThatCannotBeKeys)
{
    for (int method = 1; method <= 4; ++method) {
        SCOPED_TRACE(method);
        StdCurve curve(PointsOf({{kNaN, 1}, {0, 3}, {0, 9}, {-1, 9}, {2, 4}, {kInfinity, 1}}),
                       HvStdFCurve::DPMethod(method), 0.1, kCubic, kCubic);
        EXPECT_EQ(curve.GetNumKeys(), 2u);
        EXPECT_EQ(curve.Eval(0, 0), 3);
        EXPECT_EQ(curve.Eval(2, 0), 4);
        StdCurve single(PointsOf({{1, 7}}), HvStdFCurve::DPMethod(method), 0.1, kCubic, kLinear);
        EXPECT_EQ(single.GetNumKeys(), 1u);
        EXPECT_EQ(single.Eval(9, 0), 7);
        EXPECT_EQ(single.Impl().keys[0].segmentKind, kLinear);
        StdCurve none(HvPoint2dArray(1), HvStdFCurve::DPMethod(method), 0.1, kCubic, kCubic);
        EXPECT_EQ(none.GetNumKeys(), 0u);
        EXPECT_EQ(none.Eval(9, 0), 0);
    }
    StdCurve odd(PointsOf({{1, 7}, {2, 8}}), HvStdFCurve::DPMethod(5), 0.1, kCubic, kCubic);
    EXPECT_EQ(odd.GetNumKeys(), 0u);
}

TEST(HvStdFCurve, StoresNoParameterThatIsNotANumber)
{
    for (double x : {kNaN, kInfinity, -kInfinity}) {
        StdCurve one(x, 1, 2, kCubic, kCubic);
        EXPECT_EQ(one.GetNumKeys(), 0u);
        EXPECT_EQ(one.Eval(0, 0), 1);
        StdCurve first(x, 1, 3, 2, kCubic, kCubic);
        EXPECT_EQ(first.GetNumKeys(), 1u);
        StdCurve second(3, 1, x, 2, kCubic, kCubic);
        EXPECT_EQ(second.GetNumKeys(), 1u);
    }
    EXPECT_EQ(StdCurve(3, 1, 3, 2, kCubic, kCubic).GetNumKeys(), 1u);
    EXPECT_EQ(StdCurve({3, 1}, {3, 1}, {2, 1}, {2, 1}, kCubic, kCubic).GetNumKeys(), 1u);
}

TEST(HvStdFCurve, TakesUnknownKindsAsCubic)
{
    for (int kind : {0, 4, -1, 300}) {
        auto const odd = HvBaseFCurve::FSKind(kind);
        EXPECT_EQ(StdCurve(1, odd).GetFirstSegmentKind(), kCubic);
        StdCurve curve(0, 0, 1, 1, odd, odd);
        EXPECT_EQ(curve.GetFirstSegmentKind(), kCubic);
        EXPECT_EQ(curve.Impl().keys[1].segmentKind, kCubic);
        EXPECT_EQ(curve.Impl().IsValid(), 1);
    }
}

TEST(HvStdFCurve, CopiesEverythingButTheHint)
{
    StdCurve curve(0, 0, 1, 1, kLinear, kLinear);
    curve.SetClampingValues(-2, 2);
    curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    curve.SetDefaultBezierTangentConstraint(true);
    curve.SetAsTimeFCurve(false);
    curve.SetSelected(1);
    curve.SetKeySelected(1u, 1);
    curve.SetReadOnlyConstraint(1);

    StdCurve constructed(curve);
    std::unique_ptr<HvBaseFCurve> const cloned(curve.Clone());
    StdCurve assigned(7, kCubic);
    assigned = curve;
    StdCurve set(7, kCubic);
    EXPECT_EQ(set.Set(curve), 1);
    EXPECT_NE(constructed.Impl().hintSlot, curve.Impl().hintSlot);
    EXPECT_NE(assigned.Impl().hintSlot, curve.Impl().hintSlot);

    HvBaseFCurve* const copies[] = {&constructed, cloned.get(), &assigned, &set};
    for (HvBaseFCurve* const copy : copies) {
        EXPECT_EQ(copy->GetKind(), HvBaseFCurve::Standard);
        EXPECT_EQ(copy->GetNumKeys(), 2u);
        EXPECT_EQ(copy->Eval(1.5, 0), 0.5);
        double lower = 0;
        double upper = 0;
        EXPECT_EQ(copy->GetClampingValues(lower, upper), 1);
        EXPECT_EQ(lower, -2);
        EXPECT_EQ(upper, 2);
        EXPECT_EQ(copy->IsDefautlBezierTangentConstraintOn(), 1);
        EXPECT_EQ(copy->IsTimeFCurve(), 0);
        EXPECT_EQ(copy->IsKeySelected(1u), 1);
        EXPECT_EQ(copy->IsReadOnly(), 1);
    }
    assigned.Impl().keys[0].rightValue = 99;
    EXPECT_EQ(curve.Eval(0, 0), 0);
    StdCurve& self = assigned;
    assigned = self;
    EXPECT_EQ(assigned.GetNumKeys(), 2u);
}

// Sections.

namespace {

/// Keys at 0 to 6, six units high, with derived tangents of every sort, whose handles lie at the
/// thirds of their spans: a split there keeps the shape exactly.
StdCurve Derived()
{
    StdCurve curve({});
    double const values[] = {0, 2, 2, 5, 1, 4, 6};
    unsigned short const words[] = {
        Word::kAutomaticTangents, Word::kAutomaticTangents | Word::kUnlimitedAutoSlope,
        Word::kLinearTangents,    Word::kAutomaticTangents,
        Word::kFlatAtExtremum,    Word::kFlatTangents,
        Word::kLinearTangents};
    for (unsigned i = 0; i < 7; ++i) {
        CFCStdKey key = KeyWithHandles(i, values[i], {-1.0 / 3, 0.2}, {1.0 / 3, 0.3});
        key.constraints.word = words[i];
        curve.Impl().keys.Add(key);
    }
    return curve;
}

}  // namespace

TEST(HvStdFCurve, SectionKeepsTheShapeBetweenItsEnds)
{
    StdCurve const curve = Derived();
    for (int i = 0; i <= 24; ++i) {
        for (int j = i + 1; j <= 24; ++j) {
            double const from = i * 0.25;
            double const to = j * 0.25;
            StdCurve const section(curve, from, to);
            ASSERT_EQ(section.Impl().IsValid(), 1);
            EXPECT_EQ(section.Impl().FirstParameter(), from);
            EXPECT_EQ(section.Impl().LastParameter(), to);
            for (int k = 0; k <= 20; ++k) {
                double const x = from + (to - from) * k / 20;
                // Each end costs the solver's 1e-9 once more; slopes stay below 10.
                EXPECT_NEAR(section.Eval(x, 0), curve.Eval(x, 0), 1e-7)
                    << from << ' ' << to << ' ' << x;
            }
        }
    }
}

TEST(HvStdFCurve, SectionBeyondTheKeysKeepsThemAll)
{
    StdCurve const curve = Derived();
    EXPECT_EQ(StdCurve(curve, -5, 9).GetNumKeys(), 7u);
    EXPECT_EQ(StdCurve(curve, 2, 9).GetNumKeys(), 5u);
    EXPECT_EQ(StdCurve(curve, -5, 2).GetNumKeys(), 3u);
    EXPECT_EQ(StdCurve(curve, 4, 2).Impl().FirstParameter(), 2);
    EXPECT_EQ(StdCurve(curve, 4, 2).Impl().LastParameter(), 4);
    EXPECT_EQ(StdCurve(curve, kNaN, kNaN).GetNumKeys(), 7u);
    EXPECT_EQ(StdCurve(StdCurve(1, kLinear), 2, 3).GetNumKeys(), 0u);
}

TEST(HvStdFCurve, SectionPassesLocksAndTheReadOnlyFlag)
{
    StdCurve curve = Derived();
    for (CFCStdKey& key : curve.Impl().keys) {
        key.constraints.Set(Word::kParameterLocked | Word::kValueLocked);
    }
    curve.SetReadOnlyConstraint(1);
    StdCurve const section(curve, 1.5, 4);
    ASSERT_EQ(section.GetNumKeys(), 4u);
    EXPECT_EQ(section.IsReadOnly(), 1);
    // The key made at 1.5 is new; those of the source keep their locks, the end key too.
    unsigned const locks = Word::kParameterLocked | Word::kValueLocked;
    EXPECT_EQ(section.Impl().keys[0].constraints.word & locks, 0u);
    for (unsigned i = 1; i < 4; ++i) {
        EXPECT_EQ(section.Impl().keys[i].constraints.word & locks, locks);
    }
    EXPECT_EQ(curve.GetNumKeys(), 7u);
    EXPECT_EQ(curve.Impl().keys[0].constraints.word & locks, locks);
}

TEST(HvStdFCurve, KnowsItsKind)
{
    HvStdFCurve curve(1, kCubic);
    EXPECT_EQ(curve.GetKind(), 20);
    EXPECT_EQ(curve.QueryFCurveKind(HvBaseFCurve::Standard), &curve);
    EXPECT_EQ(curve.QueryFCurveKind(HvBaseFCurve::Raw), nullptr);
}

TEST(HvStdFCurve, IsWholeAfterAnyFailedAllocation)
{
    HvPoint2dArray const points = PointsOf({{0, 3}, {1, 5}, {2, 4}, {3, 9}, {4, 1}});
    HvStdFCurve const source(points, HvStdFCurve::InterpCubicC2, 0, kCubic, kCubic);
    std::function<void()> const operations[] = {
        [] { HvStdFCurve(1, kCubic); },
        [] { HvStdFCurve(1, 2, 3, kCubic, kCubic); },
        [] { HvStdFCurve(1, 2, 3, 4, kCubic, kCubic); },
        [] {
            HvStdFCurve({0, 0}, {1, 1}, {2, 2}, {3, 3}, kCubic, kCubic);
        },
        [&] { HvStdFCurve(points, HvStdFCurve::InterpCatmullRom, 0, kCubic, kCubic); },
        [&] { HvStdFCurve(points, HvStdFCurve::InterpCubicC2, 0, kCubic, kCubic); },
        [&] { HvStdFCurve(points, HvStdFCurve::ApproxLinearFitC0, 0, kCubic, kCubic); },
        [&] { HvStdFCurve(points, HvStdFCurve::ApproxCubicFitG1, 0, kCubic, kCubic); },
        [&] { HvStdFCurve const copy(source); },
        [&] { HvStdFCurve const section(source, 0.5, 2.5); },
        [&] { std::unique_ptr<HvBaseFCurve> const clone(source.Clone()); },
    };
    for (auto const& operation : operations) {
        long refused = 0;
        for (long n = 1;; ++n) {
            AllocationCounter counter;
            counter.RefuseAllocation(n);
            try {
                operation();
            } catch (std::bad_alloc const&) {
                ++refused;
            }
            ASSERT_EQ(counter.Live(), 0) << "operation " << (&operation - operations) << ", " << n;
            if (!counter.HasRefused()) {
                break;
            }
        }
        EXPECT_GT(refused, 0);
    }
    // An assignment that fails leaves both curves as they were.
    for (long n = 1;; ++n) {
        HvStdFCurve target(0, 8, 1, 8, kLinear, kLinear);
        AllocationCounter counter;
        counter.RefuseAllocation(n);
        try {
            target = source;
            EXPECT_EQ(target.Eval(3, 0), 9);
        } catch (std::bad_alloc const&) {
            EXPECT_EQ(target.Eval(3, 0), 8);
        }
        EXPECT_EQ(source.Eval(3, 0), 9);
        if (!counter.HasRefused()) {
            break;
        }
    }
}
