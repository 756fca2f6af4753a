// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Every operation that departs from the locks of plain readers and writers, in one table of all
// kinds of curve.

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>

#include "lock_probe.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace {

using Curve = std::unique_ptr<HvBaseFCurve>;

constexpr std::size_t kNumKinds = 5;

struct Departure {
    char const* name;
    /// Called on a curve with keys at 0 and 1; what it gives is left to `kept`, so that no
    /// destructor takes locks within the operation.
    std::function<void(HvBaseFCurve&, Curve& kept)> operate;
    LocksTaken expected[kNumKinds];  ///< boolean, integer, standard, raw, quaternion
};

Departure const kDepartures[] = {
    {"SnapShot",
     [](HvBaseFCurve& curve, Curve& kept) {
         kept.reset(curve.SnapShot(0, 1, HvBaseFCurve::ConstantExtrapolation));
     },
     {kWriterLocks, kReaderLocks, kWriterLocks, kReaderLocks, kReaderLocks}},
    {"FoldParameter",
     [](HvBaseFCurve& curve, Curve&) { curve.FoldParameter(3); },
     {kWriterLocks, kWriterLocks, kWriterLocks, kWriterLocks, kWriterLocks}},
    {"SetExtrapolationMethod",
     [](HvBaseFCurve& curve, Curve&) {
         curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
     },
     {kWriterLocks, kWriterLocks, kReaderLocks, kWriterLocks, kWriterLocks}},
    {"AreAnyValuesLockedInInterval",
     [](HvBaseFCurve& curve, Curve&) { curve.AreAnyValuesLockedInInterval(0, 1, 0, 0); },
     {kNoLocks, kNoLocks, kNoLocks, kNoLocks, kNoLocks}},
    {"AreAnyParametersLockedInInterval",
     [](HvBaseFCurve& curve, Curve&) { curve.AreAnyParametersLockedInInterval(0, 1, 0, 0); },
     {kNoLocks, kNoLocks, kNoLocks, kNoLocks, kNoLocks}},
    {"AreAnyKeysLockedInInterval",
     [](HvBaseFCurve& curve, Curve&) { curve.AreAnyKeysLockedInInterval(0, 1, 0, 0); },
     {kNoLocks, kNoLocks, kNoLocks, kNoLocks, kNoLocks}},
    {"GetKind",
     [](HvBaseFCurve& curve, Curve&) { curve.GetKind(); },
     {kNoLocks, kNoLocks, kNoLocks, kNoLocks, kNoLocks}},
    {"IsConstraintSupported",
     [](HvBaseFCurve& curve, Curve&) { curve.IsConstraintSupported(HvBaseFCurve::ValueLocked); },
     {kNoLocks, kNoLocks, kNoLocks, kNoLocks, kNoLocks}},
    {"SetClampingValues",
     [](HvBaseFCurve& curve, Curve&) { curve.SetClampingValues(0, 1); },
     {kNoLocks, kNoLocks, kWriterLocks, kWriterLocks, kNoLocks}},
};

Curve CurveOfKind(std::size_t kind)
{
    Curve curve;
    switch (kind) {
    case 0:
        curve = std::make_unique<HvBooleanFCurve>(0.0);
        break;
    case 1:
        curve = std::make_unique<HvIntegerFCurve>(0.0);
        break;
    case 2:
        curve = std::make_unique<HvStdFCurve>(0.0, HvBaseFCurve::CubicSegment);
        break;
    case 3:
        curve = std::make_unique<HvRawFCurve>(0.0);
        break;
    default:
        curve = std::make_unique<HvQuatFCurve>(0u);
    }
    curve->CreateKey(0, 0);
    curve->CreateKey(1, 1);
    return curve;
}

}  // namespace

TEST(lock_departures, AreThoseOfTheTable)
{
    for (Departure const& departure : kDepartures) {
        for (std::size_t kind = 0; kind < kNumKinds; ++kind) {
            SCOPED_TRACE(departure.name + std::string(" of kind ") + std::to_string(kind));
            Curve const curve = CurveOfKind(kind);
            Curve kept[2];
            std::size_t run = 0;
            ExpectLocks(*curve, departure.expected[kind],
                        [&] { departure.operate(*curve, kept[run++]); });
        }
    }
}
