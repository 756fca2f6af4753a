// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: a failed allocation at every allocation of every operation.
// std::bad_alloc comes out, the locks are free, nothing leaks and the curves stay valid.

#include "quat_fcurve_support.h"

#include <hv/fcurve/HvFCurveArchive.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/lock_probe.h>

#include <functional>

namespace {

using C = HvBaseFCurve;

struct Pair {
    Trio trio;
    Trio other;
    std::string keys;
};

/// The keys alone: what a failed edit must leave.
std::string KeysImage(Trio const& trio)
{
    std::string image;
    for (HvQuatFCurve const* const curve : {trio.x.get(), trio.y.get(), trio.z.get()}) {
        for (double const v : ValuesOf(*curve)) {
            CurveImage_AddNumber(image, "", v);
        }
        for (double const t : TimesOf(*curve)) {
            CurveImage_AddNumber(image, "", t);
        }
    }
    return image;
}

std::unique_ptr<Pair> MakePair()
{
    auto pair = std::make_unique<Pair>(Pair{MakeTrio(), MakeTrio(), ""});
    pair->keys = KeysImage(pair->trio);
    return pair;
}

struct Scenario {
    char const* name;
    bool isAllOrNothing;
    std::function<void(Pair&)> call;
};

std::vector<Scenario> Scenarios()
{
    using P = Pair;
    static unsigned char bytes[4096];
    return {
        {"construction", true, [](P&) { HvQuatFCurve const curve(1u); }},
        {"Clone", true, [](P& p) { std::unique_ptr<C> const copy(p.trio.y->Clone()); }},
        {"SnapShot", true,
         [](P& p) {
             std::unique_ptr<C> const copy(p.trio.y->SnapShot(1, 2, C::CycleExtrapolation));
         }},
        {"assignment", true, [](P& p) { *p.trio.y = *p.other.y; }},
        {"Eval", true, [](P& p) { p.trio.y->Eval(3, 0); }},
        {"CreateKey", true, [](P& p) { p.trio.y->CreateKey(3, 1); }},
        {"CreateNonModifyingKey", true, [](P& p) { p.trio.y->CreateNonModifyingKey(3, 0); }},
        {"MergeAndCreateKey", true, [](P& p) { p.trio.y->MergeAndCreateKey(1, 4, 3, 1, 0, 0, 1); }},
        {"RemoveKey", true, [](P& p) { p.trio.y->RemoveKey(4, 0); }},
        {"RemoveKeys", true, [](P& p) { p.trio.y->RemoveKeys(1, 4, 0, 0); }},
        {"RemoveTail", false, [](P& p) { p.trio.y->RemoveTail(3); }},
        {"RemoveHead", false, [](P& p) { p.trio.y->RemoveHead(3); }},
        {"Append", true, [](P& p) { p.trio.y->Append(*p.other.y); }},
        {"Append itself", true, [](P& p) { p.trio.y->Append(*p.trio.y); }},
        {"Paste", true, [](P& p) { p.trio.y->Paste(*p.other.y, 2, 3); }},
        {"Cut", true, [](P& p) { p.trio.y->Cut(2, 3, *p.other.y); }},
        {"ShiftParameters", true, [](P& p) { p.trio.y->ShiftParameters(2); }},
        {"ScaleParameterAxis", true, [](P& p) { p.trio.y->ScaleParameterAxis(2); }},
        {"MirrorParameters", true, [](P& p) { p.trio.y->MirrorParameters(); }},
        {"ScaleAndOffsetParameters", true,
         [](P& p) { p.trio.y->ScaleAndOffsetParameters(0, 9, 0, -2, 1, 0, 0, C::LeftHandle, 0); }},
        {"ResampleSequence", true, [](P& p) { p.trio.y->ResampleSequence(1, 5, 0.5, 0, 0); }},
        {"ReduceNumKeys", true, [](P& p) { p.trio.y->ReduceNumKeys(1, 5, 1); }},
        {"SmoothSequence", true,
         [](P& p) {
             double const kernel[] = {0.5, 0.5};
             p.trio.y->SmoothSequence(1, 5, kernel, 2);
         }},
        {"ShiftValues", true, [](P& p) { p.trio.y->ShiftValues(2); }},
        {"SetExtrapolationMethod", true,
         [](P& p) { p.trio.y->SetExtrapolationMethod(C::CycleExtrapolation); }},
        {"EvalSequence", true,
         [](P& p) {
             HvDoubleArray a, b;
             p.trio.y->EvalSequence(1, 5, 0.5, 1, a, b, 0);
         }},
        {"Flatten", true,
         [](P& p) {
             HvPoint2dArray points;
             HvPointTagArray tags;
             p.trio.y->Flatten(HvTransfo4(), 5, points, tags, 0);
         }},
        {"FlattenFromTo", true,
         [](P& p) {
             HvPoint2dArray points;
             HvPointTagArray tags;
             HvBoolArray flags;
             HvExtent2<double> const extent(0, -1e9, 6, 1e9);
             int const result =
                 p.trio.y->FlattenFromTo(extent, HvTransfo4(), 5, points, tags, flags, 0);
             EXPECT_EQ(result == 0, points.Size() == 0);
         }},
        {"archive", true,
         [](P& p) {
             p.trio.y->WriteToBuffer(bytes);
             p.other.z->ReadFromBufferBody(bytes + 4);
         }},
        {"CreateFromBuffer", true,
         [](P& p) {
             C* curve = nullptr;
             p.trio.y->WriteToBuffer(bytes);
             HvBaseFCurve_CreateFromBuffer(bytes, sizeof bytes, &curve);
             std::unique_ptr<C> const owned(curve);
         }},
    };
}

TEST(HvQuatFCurve_failure, LeavesEverythingValidAtEachAllocation)
{
    for (Scenario const& scenario : Scenarios()) {
        SCOPED_TRACE(scenario.name);
        RefuseEachAllocation(
            MakePair, [&](std::unique_ptr<Pair>& pair) { scenario.call(*pair); },
            [&](std::unique_ptr<Pair>& pair, bool completed) {
                EXPECT_EQ(pair->trio.curve->IsValid(), 1);
                EXPECT_EQ(pair->other.curve->IsValid(), 1);
                EXPECT_TRUE(LockProbe_AreBothFree(*pair->trio.y));
                EXPECT_TRUE(LockProbe_AreBothFree(*pair->other.y));
                if (!completed && scenario.isAllOrNothing) {
                    EXPECT_EQ(KeysImage(pair->trio), pair->keys);
                }
            });
    }
}

}  // namespace
