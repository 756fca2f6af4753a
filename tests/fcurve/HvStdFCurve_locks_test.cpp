// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/foundation/HvDoubleArray.h>
#include <tests/fcurve/lock_probe.h>
#include <tests/fcurve/std_curve.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace {

constexpr HvBaseFCurve::FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;

class HvStdFCurve_locks : public testing::Test {
protected:
    void Expect(LocksTaken locks, std::function<void()> const& operation) const
    {
        ExpectLocks(curve, locks, operation);
    }

    HvStdFCurve curve{0, 0, 1, 1, kLinear, kCubic};
    double a = 0;
    double b = 0;
    int on = 0;
    HvBaseFCurve::FSKind kind = kLinear;
    HvPoint2<double> left;
    HvPoint2<double> right;
};

}  // namespace

TEST_F(HvStdFCurve_locks, ReadersTakeTheSectionAlone)
{
    HvBaseFCurve::FCurveInfo info{0x7F, {}, 0, 0, {}, 0, 0, {}};
    HvBaseFCurve::KeyInfo key{0x3FF, 0, 0, 0, 0, 0, 0, 0, 0, {}, 0};
    HvDoubleArray x, y, z;
    std::unique_ptr<HvBaseFCurve> clones[2];  // kept, since a destructor is a writer
    int numClones = 0;
    std::function<void()> const readers[] = {
        [&] { curve.Eval(0.5, 0); },
        [&] { curve.EvalMany(&a, 1, &b, 0); },
        [&] { curve.EvalLeft(0.5, 0); },
        [&] { curve.EvalInverse(0.5, a, 0); },
        [&] { curve.EvalIntegral(0, 1); },
        [&] { curve.IsBijective(); },
        [&] { curve.GetValueLowerBound(0); },
        [&] { curve.GetValueUpperBound(0); },
        [&] { curve.GetValueRange(0, HvBaseFCurve::Left, a, b, 0, 0); },
        [&] { curve.HasConstantValue(); },
        [&] { curve.HasUniformSegmentKind(kind); },
        [&] { curve.GetClampingValues(a, b); },
        [&] { curve.GetFCurveInfo(&info); },
        [&] { curve.GetKeyInfoFromIndex(0, &key); },
        [&] { curve.GetKeyInfoFromParameter(0, &key); },
        [&] { curve.GetKeyValue(0, HvBaseFCurve::Left, a, 0); },
        [&] { curve.GetKeys(x, y, z, 0); },
        [&] { curve.GetSegmentKind(0, HvBaseFCurve::Left, kind, 0); },
        [&] { curve.GetSegmentKindAtParameter(0); },
        [&] { curve.GetFirstSegmentKind(); },
        [&] { curve.GetActualKeyTgtHandle(0, HvBaseFCurve::Left, left, 0); },
        [&] { curve.GetEvaluatedKeyTgtHandles(0, left, right, 0); },
        [&] { curve.GetConstraint(a = 0, HvBaseFCurve::ValueLocked, on, 0); },
        [&] { curve.GetConstraintByIndex(0, HvBaseFCurve::ValueLocked, on); },
        [&] { curve.IsTangentContinuityLocked(0, 0); },
        [&] { curve.AreAnyTgtDirectionsLockedInInterval(0, 1, 0, 0); },
        [&] { curve.AreAnyTgtLengthsLockedInInterval(0, 1, 0, 0); },
        [&] { clones[numClones++].reset(curve.Clone()); },
    };
    for (auto const& reader : readers) {
        SCOPED_TRACE(&reader - readers);
        Expect(kReaderLocks, reader);
    }
}

TEST_F(HvStdFCurve_locks, WritersTakeTheAccessLockToo)
{
    HvStdFCurve const other(curve);
    std::function<void()> const writers[] = {
        [&] { curve.SetValueWhenNoKeys(1); },
        [&] { curve.SetClampingValues(0, 1); },
        [&] { curve.SetDefaultBezierTangentConstraint(true); },
        [&] { curve.SetFirstSegmentKind(kCubic); },
        [&] { curve.SetAsTimeFCurve(true); },
        [&] { curve.SetReadOnlyConstraint(0); },
        [&] { curve.SetSelected(1); },
        [&] { curve.SetKeySelected(0u, 1); },
        [&] { curve = other; },
        [&] { curve.Set(other); },
    };
    for (auto const& writer : writers) {
        SCOPED_TRACE(&writer - writers);
        Expect(kWriterLocks, writer);
    }
}

TEST_F(HvStdFCurve_locks, TheKnownDepartures)
{
    Expect(kWriterLocks, [&] { curve.FoldParameter(0); });
    Expect(kReaderLocks, [&] { curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation); });
    Expect(kNoLocks, [&] { curve.AreAnyValuesLockedInInterval(0, 1, 0, 0); });
    Expect(kNoLocks, [&] { curve.AreAnyParametersLockedInInterval(0, 1, 0, 0); });
    Expect(kNoLocks, [&] { curve.AreAnyKeysLockedInInterval(0, 1, 0, 0); });
    Expect(kNoLocks, [&] { curve.GetKind(); });
    Expect(kReaderLocks, [&] { curve.QueryFCurveKind(HvBaseFCurve::Standard); });
    Expect(kNoLocks, [&] { curve.IsConstraintSupported(HvBaseFCurve::AllLocked); });
    Expect(kNoLocks, [&] { curve.EvalNoLock(0.5, 0); });
    Expect(kNoLocks, [&] { curve.GetNearestKeyParameterInCenteredIntervalNoLock(a, 1); });
    Expect(kNoLocks, [&] { curve.GetFCurveInfo(nullptr); });
}

TEST_F(HvStdFCurve_locks, HoldersMayCallOn)
{
    HvCurveLock const lock(curve);
    EXPECT_EQ(curve.Eval(0.5, 0), 0.5);
    EXPECT_EQ(curve.SetValueWhenNoKeys(3), 1);
}

TEST_F(HvStdFCurve_locks, ThreadsEvaluateOneCurveWithTheSameValues)
{
    StdCurve many({});
    for (int i = 0; i < 200; ++i) {
        many.Impl().keys.Add(KeyAt(i, i % 7, i % 5, HvBaseFCurve::FSKind(1 + i % 3)));
    }
    double expected[500];
    for (int i = 0; i < 500; ++i) {
        expected[i] = many.Eval(i * 0.41, 0);
    }
    std::thread threads[4];
    int differences[4] = {};
    for (int t = 0; t < 4; ++t) {
        threads[t] = std::thread([&, t] {
            for (int step = 0; step < 2000; ++step) {
                int const i = step * (2 * t + 1) % 500;
                differences[t] += many.Eval(i * 0.41, 0) != expected[i];
            }
        });
    }
    for (int t = 0; t < 4; ++t) {
        threads[t].join();
        EXPECT_EQ(differences[t], 0);
    }
}
