// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reducing and smoothing of keys in their stores, by index.

#include <tests/fcurve/std_edit.h>

#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/internal/CFCSingleValueImpl.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

/// A stepped store with keys at 0, 1, 2, ..., whose words are given.
CFCIntegerStore Steps(std::vector<int> const& values, std::vector<unsigned short> const& words)
{
    CFCIntegerStore store;
    for (unsigned int i = 0; i < values.size(); ++i) {
        store.InsertKey(i, {static_cast<double>(i), values[i], 0}, i < words.size() ? words[i] : 0);
    }
    return store;
}

std::vector<int> ValuesOf(CFCIntegerStore const& store)
{
    std::vector<int> values;
    for (auto const& key : store.keys) {
        values.push_back(key.value);
    }
    return values;
}

std::vector<double> ParametersOf(StdCurve const& curve)
{
    std::vector<double> parameters;
    for (CFCStdKey const& key : curve.Impl().keys) {
        parameters.push_back(key.parameter);
    }
    return parameters;
}

using Values = std::vector<int>;

}  // namespace

// Reducing.

TEST(CFCKeyStore_reshape, StepsOfTheToleranceGoAndLockedKeysStay)
{
    // The range is 10: a tolerance of 0.2 allows steps of 2.
    CFCIntegerStore store =
        Steps({0, 2, 3, 4, 10, 10, 10, 0},
              {0, 0, 0, 0, 0, CFCKeyConstraint::kParameterLocked, CFCKeyConstraint::kValueLocked});
    HvIntegerFCurve owner(0);
    EXPECT_EQ(store.ReduceNumKeys(0, 7, 0.2, owner), 2u);
    EXPECT_EQ(ValuesOf(store), (Values{0, 3, 10, 10, 10, 0}));
    ASSERT_EQ(store.constraints.Count(), 6u);
    EXPECT_EQ(store.ConstraintWord(2), 0);
    EXPECT_EQ(store.ConstraintWord(3), CFCKeyConstraint::kParameterLocked);
    EXPECT_EQ(store.ConstraintWord(4), CFCKeyConstraint::kValueLocked);
}

TEST(CFCKeyStore_reshape, KeysOutsideTheIndicesStay)
{
    CFCIntegerStore store = Steps({5, 5, 5, 5, 5, 5}, {});
    HvIntegerFCurve owner(0);
    EXPECT_EQ(store.ReduceNumKeys(1, 4, 0, owner), 2u);
    EXPECT_EQ(store.keys.Count(), 4u);
    EXPECT_EQ(store.keys[1].parameter, 1);
    EXPECT_EQ(store.keys[2].parameter, 4);
    EXPECT_EQ(store.ReduceNumKeys(1, 2, 1, owner), 0u) << "no key between";
}

TEST(CFCKeyStore_reshape, EachStraightRunHasItsOwnToleranceAndCubicRunsAreLeftAlone)
{
    // Linear up to 3 with a range of 10, constant up to 6 with a range of 1, cubic from there. A
    // tolerance of 0.2 allows 2 and 0.2.
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 5, 5, kLinear), KeyAt(2, 8.5, 8.5, kLinear),
                    KeyAt(3, 10, 10, kConstant), KeyAt(4, 10, 10.1, kConstant),
                    KeyAt(5, 10.1, 10.1, kConstant), KeyAt(6, 11, 11, kCubic),
                    KeyAt(7, 11, 11, kCubic), KeyAt(8, 11, 11, kCubic)});
    CFCStdStore& store = curve.Impl();
    // The line from 0 stands at 10 above 2 and at 15 above 3; that of the constant run starts at 10
    // and is level.
    EXPECT_EQ(store.ReduceNumKeys(0, 8, 0.2, curve), 2u);
    EXPECT_EQ(ParametersOf(curve), (std::vector<double>{0, 2, 3, 5, 6, 7, 8}));
    EXPECT_EQ(curve.Impl().SegmentKind(2), kConstant);
    EXPECT_EQ(curve.Impl().SegmentKind(4), kCubic);
}

TEST(CFCKeyStore_reshape, UserDataGoWithTheirKeys)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 1, 1, kLinear), KeyAt(2, 2, 2, kLinear)});
    curve.SetUserDataSet(SetOf(1, "goes"), 1);
    curve.SetUserDataSet(SetOf(1, "stays"), 2);
    CFCStdStore& store = curve.Impl();
    EXPECT_EQ(store.ReduceNumKeys(0, 2, 0, curve), 1u);
    EXPECT_FALSE(curve.HasUserData(1));
    EXPECT_EQ(TextIn(curve.GetUserDataSet(2), 1), "stays");
}

// 2026-11-21: the order in which runs are reduced. An automatic key takes its tangent from the keys
// beside it, also from one that is about to go.
TEST(CFCKeyStore_reshape, CubicRunKeepsTheTangentThatAKeyOfTheLinearRunGivesIt)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 3, 3, kLinear), KeyAt(2, 6, 6, kCubic),
                    KeyAt(3, 7, 7, kCubic), KeyAt(4, 9, 9, kCubic)});
    for (CFCStdKey& key : curve.Impl().keys) {
        key.constraints.Set(Word::kAutomaticTangents);
    }
    StdCurve const before(curve);
    EXPECT_EQ(curve.ReduceNumKeys(1.0), 2u) << "the tolerance is all of the range";
    ASSERT_EQ(ParametersOf(curve), (std::vector<double>{0, 2, 4}));
    // The slope at 2 is (7 - 3) / 2 and the handle of a third of the old span grows with the span.
    ExpectNear(curve.Impl().keys[1].rightHandle, 2 + 2.0 / 3, 6 + 4.0 / 3);
}

// Smoothing.

TEST(CFCKeyStore_reshape, LockedAndUnchangedStepsStayAndTheFirstOneKeepsToTheLeftValueRule)
{
    double const kernel[3] = {0.25, 0.5, 0.25};
    HvIntegerFCurve owner(0);
    CFCIntegerStore store = Steps({0, 8, 0, 8}, {0, 0, CFCKeyConstraint::kValueLocked, 0});
    store.leftValue = -1;
    store.SmoothSequence(0, 3, kernel, 3, owner);
    // At the ends the two taps that meet a value count: (0.5 * 0 + 0.25 * 8) / 0.75 is 2.67.
    EXPECT_EQ(ValuesOf(store), (Values{3, 4, 0, 5}));
    EXPECT_EQ(store.leftValue, 3);

    CFCIntegerStore kept = Steps({4, 4, 4}, {});
    kept.leftValue = -1;
    kept.SmoothSequence(0, 2, kernel, 3, owner);
    EXPECT_EQ(kept.leftValue, -1) << "a key that keeps its value leaves the value before it alone";

    CFCIntegerStore later = Steps({4, 0, 8}, {});
    later.leftValue = -1;
    later.SmoothSequence(1, 2, kernel, 3, owner);
    EXPECT_EQ(ValuesOf(later), (Values{4, 3, 5}));
    EXPECT_EQ(later.leftValue, -1);
}

TEST(CFCKeyStore_reshape, BothSidesOfAStandardKeySmoothUnlessItsValueIsLocked)
{
    StdCurve curve({KeyAt(0, 1, 2, kCubic), KeyAt(1, 3, 6, kCubic), KeyAt(2, 5, 10, kCubic)});
    Lock(curve, 1, Word::kValueLocked);
    double const shift[3] = {0, 0, 1};  // each value from the next key
    CFCStdStore& store = curve.Impl();
    store.SmoothSequence(0, 1, shift, 3, curve);
    CFCStdKey const& key = store.keys[0];
    EXPECT_EQ(key.leftValue, 3);
    EXPECT_EQ(key.leftHandle, Point(0, 3));
    EXPECT_EQ(key.rightValue, 6);
    EXPECT_EQ(key.rightHandle, Point(0, 6));
    EXPECT_EQ(store.keys[1].leftValue, 3);
    EXPECT_EQ(store.keys[1].rightValue, 6);
    EXPECT_EQ(store.keys[2].leftValue, 5);
}

TEST(CFCKeyStore_reshape, ImplementationSmoothsTheKeysOfTheClosedInterval)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 1, 1, kLinear), KeyAt(2, 5, 5, kLinear)});
    double const twice = 2;
    HvStdFCurveImpl& impl = curve.Impl();
    EXPECT_EQ(impl.SmoothSequence(1, 2, &twice, 1, curve), 1);
    EXPECT_EQ(impl.keys[0].rightValue, 0);
    EXPECT_EQ(impl.keys[1].rightValue, 2);
    EXPECT_EQ(impl.keys[2].rightValue, 10);
    EXPECT_EQ(impl.SmoothSequence(1.25, 1.75, &twice, 1, curve), 1);
    EXPECT_EQ(impl.keys[1].rightValue, 2) << "no key there";
}
