// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: which locks its operations take, and one rotation among threads.

#include "quat_fcurve_support.h"

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <tests/support/lock_probe.h>

#include <atomic>
#include <functional>
#include <thread>

namespace {

using C = HvBaseFCurve;
using Q = HvQuatFCurve;

struct Operation {
    char const* name;
    bool access;
    bool section;
    std::function<void(Q&)> call;
};

TEST(HvQuatFCurve_threads, TakeTheLocksOfTheContract)
{
    static double d;
    static std::vector<std::unique_ptr<C>> clones;
    Operation const operations[] = {
        {"Eval", false, true, [](Q& c) { c.Eval(2.5, 0); }},
        {"GetNumKeys", false, true, [](Q& c) { c.GetNumKeys(); }},
        {"GetKeyValue", false, true, [](Q& c) { c.GetKeyValue(1, C::Left, d, 0); }},
        {"GetBufferSize", false, true, [](Q& c) { c.GetBufferSize(); }},
        {"EvalInverse", false, true, [](Q& c) { c.EvalInverse(1, d, 0); }},
        {"SnapShot", false, true,
         [](Q& c) { clones.emplace_back(c.SnapShot(1, 2, C::ConstantExtrapolation)); }},
        {"CreateKey", true, true, [](Q& c) { c.CreateKey(3, 1); }},
        {"RemoveKey", true, true, [](Q& c) { c.RemoveKey(3, 0); }},
        {"ShiftParameters", true, true, [](Q& c) { c.ShiftParameters(0); }},
        {"FoldParameter", true, true, [](Q& c) { c.FoldParameter(9); }},
        {"SetExtrapolationMethod", true, true,
         [](Q& c) { c.SetExtrapolationMethod(C::ConstantExtrapolation); }},
        {"AreAnyValuesLockedInInterval", false, false,
         [](Q& c) { c.AreAnyValuesLockedInInterval(0, 9, 0, 0); }},
        {"AreAnyParametersLockedInInterval", false, false,
         [](Q& c) { c.AreAnyParametersLockedInInterval(0, 9, 0, 0); }},
        {"AreAnyKeysLockedInInterval", false, false,
         [](Q& c) { c.AreAnyKeysLockedInInterval(0, 9, 0, 0); }},
        {"GetKind", false, false, [](Q& c) { d = c.GetKind(); }},
        {"IsConstraintSupported", false, false,
         [](Q& c) { d = c.IsConstraintSupported(C::ValueLocked); }},
        {"SetClampingValues", false, false, [](Q& c) { c.SetClampingValues(0, 1); }},
        {"GetFCurveInfo of null", false, false, [](Q& c) { c.GetFCurveInfo(nullptr); }},
    };
    Trio const trio = MakeTrio();
    for (Operation const& operation : operations) {
        SCOPED_TRACE(operation.name);
        auto const call = [&] { operation.call(*trio.y); };
        EXPECT_EQ(LockProbe_Waits(*trio.y, ProbedLock::Access, operation.access, call),
                  operation.access);
        EXPECT_EQ(LockProbe_Waits(*trio.y, ProbedLock::Section, operation.section, call),
                  operation.section);
        EXPECT_TRUE(LockProbe_AreBothFree(*trio.y));
    }
    clones.clear();
}

TEST(HvQuatFCurve_threads, ReadWhatAnEditLeaves)
{
    // An edit turns all keys by 360 degrees and back: x is 10 at the first key or 370, and y and z
    // stay. Readers of all three components see nothing else.
    Trio const trio = MakeTrio();
    std::atomic<bool> isDone{false};
    std::atomic<int> faults{0};
    std::thread editor([&] {
        for (int k = 0; k < 40; ++k) {
            trio.x->ShiftValues(k % 2 == 0 ? 360 : -360);
            trio.y->CreateNonModifyingKey(3, 0);
            trio.z->RemoveKey(3, 0);
        }
        isDone = true;
    });
    auto const read = [&](HvQuatFCurve const& curve, double first, double second) {
        HvTransfo4 const identity;
        do {
            double const value = curve.Eval(1, 0);
            double const error = std::min(std::abs(value - first), std::abs(value - second));
            HvPoint2dArray points;
            HvPointTagArray tags;
            curve.Flatten(identity, 5, points, tags, 0);
            faults += error < 1e-9 && points.Size() >= 4 ? 0 : 1;
        } while (!isDone);
    };
    std::thread readers[] = {std::thread([&] { read(*trio.x, 10, 370); }),
                             std::thread([&] { read(*trio.y, -20, -20); }),
                             std::thread([&] { read(*trio.z, 30, 30); })};
    editor.join();
    for (std::thread& reader : readers) {
        reader.join();
    }
    EXPECT_EQ(faults, 0);
}

TEST(HvQuatFCurve_threads, JoinInOppositeDirectionsWithoutDeadlock)
{
    // Two curves over one rotation and one over another, each the source of the others.
    Trio const a = MakeTrio();
    Trio const b = MakeTrio();
    auto const work = [](HvQuatFCurve& to, HvQuatFCurve& from) {
        for (int k = 0; k < 150; ++k) {
            to.Append(from);
            to.RemoveTail(6);
            from.Eval(2, 0);
            to.Cut(5.5, 5.75, from);
            to = from;
        }
    };
    std::thread threads[] = {std::thread([&] { work(*a.x, *b.x); }),
                             std::thread([&] { work(*b.x, *a.y); }),
                             std::thread([&] { work(*a.y, *a.x); })};
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(a.curve->IsValid(), 1);
    EXPECT_EQ(b.curve->IsValid(), 1);
}

}  // namespace
