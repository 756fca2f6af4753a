// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A failed allocation at every allocation of every operation: std::bad_alloc comes out, the locks
// are free, nothing leaks and the curves stay valid.

#include <tests/fcurve/stepped_test_support.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/lock_probe.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using C = HvBaseFCurve;

/// Two curves with user data, and room for a third.
template <class Curve>
struct Pair {
    std::unique_ptr<Open<Curve>> curve;
    std::unique_ptr<Open<Curve>> other;
    std::string image;
    std::string otherImage;
};

template <class Curve>
Pair<Curve> MakePair()
{
    // Four keys fill the arrays: the next one makes them grow, and removing three makes them
    // shrink.
    Pair<Curve> pair;
    pair.curve = std::make_unique<Open<Curve>>(
        0, std::initializer_list<std::pair<double, double>>{{1, 1}, {2, 0}, {3, 1}, {4, 0}});
    pair.other = std::make_unique<Open<Curve>>(
        0, std::initializer_list<std::pair<double, double>>{{1, 1}, {2, 0}, {3, 1}});
    for (double const p : {1.0, 2.0, 3.0}) {
        Tag(*pair.curve, p, 1);
        Tag(*pair.other, p, 2);
    }
    pair.image = pair.curve->Image();
    pair.otherImage = pair.other->Image();
    return pair;
}

template <class Curve>
struct Scenario {
    char const* name;
    bool isAllOrNothing;
    std::function<void(Pair<Curve>&)> call;
};

template <class Curve>
std::vector<Scenario<Curve>> Scenarios()
{
    using P = Pair<Curve>;
    return {
        {"CreateKey at the end", true, [](P& p) { p.curve->CreateKey(9, 1); }},
        {"CreateKey at the start", true, [](P& p) { p.curve->CreateKey(0, 1); }},
        {"CreateKey inside", true, [](P& p) { p.curve->CreateKey(2.5, 1); }},
        {"CreateNonModifyingKey", true, [](P& p) { p.curve->CreateNonModifyingKey(2.5, 0); }},
        {"MergeAndCreateKey", false,
         [](P& p) { p.curve->MergeAndCreateKey(2, 3, 2.5, 1, 0, 0, 1); }},
        {"MergeAndCreateKey of all", false,
         [](P& p) { p.curve->MergeAndCreateKey(0, 9, 2.5, 1, 0, 0, 1); }},
        {"MergeAndCreateKey of none", true,
         [](P& p) { p.curve->MergeAndCreateKey(2.2, 2.7, 2.5, 1, 0, 0, 1); }},
        {"MergeAndCreateNonModifyingKey", false,
         [](P& p) { p.curve->MergeAndCreateNonModifyingKey(2, 9, 2.5, 0, 0, 1, 0); }},
        {"RemoveKey", false, [](P& p) { p.curve->RemoveKey(2, 0); }},
        {"RemoveKeys", false, [](P& p) { p.curve->RemoveKeys(2, 9, 0, 0); }},
        {"RemoveKeys of all", false, [](P& p) { p.curve->RemoveKeys(0, 9, 0, 0); }},
        {"RemoveTail", false, [](P& p) { p.curve->RemoveTail(1.5); }},
        {"RemoveHead", false, [](P& p) { p.curve->RemoveHead(3.5); }},
        {"Cut", true,
         [](P& p) {
             Curve removed(0);
             p.curve->Cut(1.5, 2.5, removed);
         }},
        {"Append", false, [](P& p) { p.curve->Append(*p.other); }},
        {"Append itself", false, [](P& p) { p.curve->Append(*p.curve); }},
        {"Paste", true, [](P& p) { p.curve->Paste(*p.other, 1.5, 2.5); }},
        {"ShiftParameters", true, [](P& p) { p.curve->ShiftParameters(2); }},
        {"ScaleParameterAxis", true, [](P& p) { p.curve->ScaleParameterAxis(2); }},
        {"MirrorValues", true, [](P& p) { p.curve->MirrorValues(); }},
        {"MirrorParameters", true, [](P& p) { p.curve->MirrorParameters(); }},
        {"assignment", true,
         [](P& p) { static_cast<Curve&>(*p.curve) = static_cast<Curve&>(*p.other); }},
        {"Set", true, [](P& p) { p.curve->Set(*p.other); }},
        {"Clone", true, [](P& p) { std::unique_ptr<C> const copy(p.curve->Clone()); }},
        {"section", true, [](P& p) { Curve const section(*p.curve, 1.5, 2.5); }},
        {"construction", true, [](P&) { Curve const curve(1); }},
        {"GetKeys", true,
         [](P& p) {
             HvDoubleArray a;
             HvDoubleArray b;
             HvDoubleArray c;
             p.curve->GetKeys(a, b, c, 0);
         }},
        {"GetKeyParameters", true,
         [](P& p) {
             HvDoubleArray a;
             p.curve->GetKeyParameters(0, 9, a, 0, 0, 0);
             p.curve->GetAllKeyParameters(a);
         }},
        {"evaluation", true,
         [](P& p) {
             p.curve->Eval(2.5, 0);
             p.curve->FoldParameter(9);
         }},
    };
}

template <class Curve>
class HvSteppedFCurve_failure : public testing::Test {
};
using Kinds = testing::Types<HvBooleanFCurve, HvIntegerFCurve>;
TYPED_TEST_SUITE(HvSteppedFCurve_failure, Kinds, );

TYPED_TEST(HvSteppedFCurve_failure, LeavesEverythingValidAtEachAllocation)
{
    using P = Pair<TypeParam>;
    for (Scenario<TypeParam> const& scenario : Scenarios<TypeParam>()) {
        SCOPED_TRACE(scenario.name);
        RefuseEachAllocation([] { return MakePair<TypeParam>(); },
                             [&](P& pair) { scenario.call(pair); },
                             [&](P& pair, bool completed) {
                                 auto& impl = pair.curve->Impl();
                                 EXPECT_EQ(impl.IsValid(), 1);
                                 EXPECT_EQ(impl.keys.Count(), impl.constraints.Count());
                                 EXPECT_EQ(pair.other->Image(), pair.otherImage);
                                 EXPECT_TRUE(LockProbe_AreBothFree(*pair.curve));
                                 EXPECT_TRUE(LockProbe_AreBothFree(*pair.other));
                                 if (!completed && scenario.isAllOrNothing) {
                                     EXPECT_EQ(pair.curve->Image(), pair.image);
                                 }
                             });
    }
}

TYPED_TEST(HvSteppedFCurve_failure, LeavesTheCutCurveAndItsTargetAlone)
{
    using P = Pair<TypeParam>;
    RefuseEachAllocation(
        [] {
            P pair = MakePair<TypeParam>();
            pair.other = std::make_unique<Open<TypeParam>>(1);
            pair.otherImage = pair.other->Image();
            return pair;
        },
        [](P& pair) { pair.curve->Cut(1.5, 2.5, *pair.other); },
        [](P& pair, bool completed) {
            if (!completed) {
                EXPECT_EQ(pair.curve->Image(), pair.image);
                EXPECT_EQ(pair.other->Image(), pair.otherImage);
            }
        });
}

}  // namespace
