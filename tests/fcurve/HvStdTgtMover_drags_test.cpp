// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Random drags of tangent handles on random curves: what moves, what stays, and what must be drawn
// anew; locks, threads and memory.

#include <hv/fcurve/HvStdTgtMover.h>

#include "std_edit.h"

#include <tests/support/allocation_failure.h>
#include <tests/support/drag_replay.h>
#include <tests/support/generators.h>
#include <tests/support/lock_probe.h>

#include <atomic>
#include <memory>
#include <thread>

namespace {

using Extent = HvExtent2<double>;
using KeySide = HvBaseFCurve::KeySide;

/// Angles and lengths of handles below 30 long that were turned, stretched and stored beside
/// parameters and values below 50.
constexpr double kTurned = 1e-9;
/// A handle shorter than this has no direction worth comparing.
constexpr double kShort = 1e-3;

constexpr unsigned short kLocks[] = {0,
                                     0,
                                     Word::kTangentDirectionLocked,
                                     Word::kTangentLengthLocked,
                                     Word::kTangentDirectionLocked | Word::kTangentLengthLocked,
                                     Word::kMirroredTangents,
                                     Word::kTangentContinuityLocked,
                                     Word::kTangentContinuityLocked | Word::kTangentLengthLocked,
                                     Word::kTangentLengthContinuityLocked |
                                         Word::kMirroredTangents};

/// What the handles of a neighbour may be derived from.
constexpr unsigned short kDerived[] = {0,
                                       0,
                                       Word::kAutomaticTangents,
                                       Word::kFlatTangents,
                                       Word::kFlatAtExtremum,
                                       Word::kLinearTangents,
                                       Word::kZeroLengthTangents};

double Any(double low, double high)
{
    return low + (high - low) * PickInRange(0, 1001) / 1000.0;
}

/// Two to six keys of any kinds, some with jumps; handles that reach up to 1.2 spans.
StdCurve AnyCurve()
{
    StdCurve curve({});
    HvStdFCurveImpl& impl = curve.Impl();
    unsigned int const count = PickInRange(2u, 7u);
    double x = PickInRange(-3, 4);
    for (unsigned int i = 0; i < count; ++i) {
        CFCStdKey key(x, PickInRange(-4, 5), static_cast<FSKind>(PickInRange(1, 6) / 2 + 1));
        key.rightValue = PickInRange(0, 4) == 0 ? PickInRange(-4, 5) : key.leftValue;
        double const next = x + PickInRange(1, 9) / 2.0;
        key.rightHandle = Point(x + Any(0, 1.2) * (next - x), key.rightValue + Any(-4, 4));
        double const before = i == 0 ? 1 : x - impl.keys[i - 1].parameter;
        key.leftHandle = Point(x - Any(0, 1.2) * before, key.leftValue + Any(-4, 4));
        if (PickInRange(0, 2) == 0 && before > 0) {  // handles on one line
            double const share = Any(0, 1.2) * (next - x) / before;
            key.rightHandle =
                Point(x, key.rightValue) - (key.leftHandle - Point(x, key.leftValue)) * share;
        }
        key.constraints.word = kDerived[PickInRange(0, 7)];
        impl.keys.Add(key);
        x = next;
    }
    return curve;
}

/// Valid is what is stored; beside handles that are moved but not shown it may look otherwise.
void ShowHandlesAround(StdCurve& curve, unsigned int i)
{
    for (unsigned int k = i == 0 ? 0 : i - 1; k <= i + 1 && k < curve.GetNumKeys(); ++k) {
        curve.Impl().keys[k].constraints.Clear(Word::kZeroLengthTangents);
    }
}

/// A handle being dragged, and what the curve was at the press.
struct Press {
    Press(StdCurve& dragged, unsigned int key, KeySide draggedSide)
        : curve(dragged), i(key), side(draggedSide), other(draggedSide == kLeft ? kRight : kLeft),
          mover(dragged, dragged.Impl().Parameter(key), draggedSide, 0), start(dragged)
    {
    }

    Point Vector(StdCurve const& of, KeySide which) const
    {
        return which == kLeft ? of.Impl().LeftVector(i) : of.Impl().RightVector(i);
    }
    Point Moved() const { return Vector(curve, side); }
    Point Started() const { return Vector(start, side); }
    Point Opposite() const { return Vector(curve, other); }
    Point OppositeStarted() const { return Vector(start, other); }
    bool Has(unsigned short bits) const { return start.Impl().keys[i].constraints.HasAny(bits); }

    StdCurve& curve;
    unsigned int i;
    KeySide side;
    KeySide other;
    HvStdTgtMover mover;
    StdCurve start;  ///< after the mover has made the handles of the key stored ones
};

double Cross(Point const& a, Point const& b)
{
    return a.x * b.y - a.y * b.x;
}

double Dot(Point const& a, Point const& b)
{
    return a.x * b.x + a.y * b.y;
}

/// Whether two vectors point the same way; one too short for a direction agrees with all.
bool AreAligned(Point const& a, Point const& b)
{
    double const lengths = HvPoint2_Length(a) * HvPoint2_Length(b);
    return HvPoint2_Length(a) < kShort || HvPoint2_Length(b) < kShort ||
           (std::fabs(Cross(a, b)) <= 1e-6 * lengths && Dot(a, b) > 0);
}

/// Nothing of a key but its handles has changed.
void AssertSameBesidesHandles(CFCStdKey was, CFCStdKey const& is)
{
    RC_ASSERT(was.parameter == is.parameter);
    RC_ASSERT(was.leftValue == is.leftValue);
    RC_ASSERT(was.rightValue == is.rightValue);
    RC_ASSERT(was.segmentKind == is.segmentKind);
    RC_ASSERT(was.constraints.word == is.constraints.word);
}

/// Keys elsewhere and the outer handles of the neighbours stay to the bit; the facing handles of
/// the neighbours stay on their lines.
void AssertSurroundings(Press const& press)
{
    HvStdFCurveImpl const& was = press.start.Impl();
    HvStdFCurveImpl const& is = press.curve.Impl();
    RC_ASSERT(was.NumKeys() == is.NumKeys());
    for (unsigned int k = 0; k < is.NumKeys(); ++k) {
        AssertSameBesidesHandles(was.keys[k], is.keys[k]);
        if (k + 1 == press.i) {
            RC_ASSERT(was.keys[k].leftHandle == is.keys[k].leftHandle);
            RC_ASSERT(AreAligned(was.RightVector(k), is.RightVector(k)));
        } else if (k == press.i + 1) {
            RC_ASSERT(was.keys[k].rightHandle == is.keys[k].rightHandle);
            RC_ASSERT(AreAligned(was.LeftVector(k), is.LeftVector(k)));
        } else if (k != press.i) {
            RC_ASSERT(was.keys[k].leftHandle == is.keys[k].leftHandle);
            RC_ASSERT(was.keys[k].rightHandle == is.keys[k].rightHandle);
        }
    }
}

double Seen(Point const& v, double scale)
{
    return std::hypot(v.x, scale * v.y);
}

/// What the locks of the key keep of the dragged handle.
void AssertLocks(Press const& press, double scale)
{
    Point const moved = press.Moved();
    Point const started = press.Started();
    RC_ASSERT((press.side == kLeft ? moved.x <= 0 : moved.x >= 0));
    if (press.Has(Word::kTangentDirectionLocked) && HvPoint2_Length(started) > kShort) {
        RC_ASSERT(AreAligned(moved, started));
    }
    if (press.Has(Word::kTangentLengthLocked)) {
        // Shorter where the segment or the key's parameter has cut it.
        RC_ASSERT(Seen(moved, scale) <= Seen(started, scale) + kTurned);
    }
}

/// Handles on one line stay on one; others keep their angle as seen, up to the vertical.
void AssertAngle(Press const& press, double scale)
{
    Point const started = press.Started();
    Point const oppositeStarted = press.OppositeStarted();
    double const lengths = HvPoint2_Length(started) * HvPoint2_Length(oppositeStarted);
    if (!(lengths > 0) || 1 - std::fabs(Dot(started, oppositeStarted)) / lengths < 1e-6) {
        RC_ASSERT(AreAligned(press.Opposite(), -press.Moved()));
    } else if (lengths > kShort && std::fabs(press.Opposite().x) > kShort) {
        auto const angle = [scale](Point const& a, Point const& b) {
            Point const u(a.x, scale * a.y);
            Point const v(b.x, scale * b.y);
            return std::atan2(Cross(u, v), Dot(u, v));
        };
        double const difference =
            angle(started, press.Moved()) - angle(oppositeStarted, press.Opposite());
        RC_ASSERT(std::fabs(std::remainder(difference, 2 * std::acos(-1.0))) < 1e-5);
    }
}

/// What the opposite handle does when it follows.
void AssertFollows(Press const& press, int continuity, int lengthContinuity, double scale)
{
    Point const moved = press.Moved();
    Point const opposite = press.Opposite();
    if (!continuity && !lengthContinuity) {
        return;
    }
    double const length = Seen(lengthContinuity ? moved : press.OppositeStarted(), scale);
    if (HvPoint2_Length(moved) < kShort || length < kShort) {
        return;  // on its key it leaves the opposite where it was
    }
    RC_ASSERT(Seen(opposite, scale) <= length + kTurned);
    if (!continuity) {
        RC_ASSERT(AreAligned(opposite, press.OppositeStarted()));
    } else if (press.Has(Word::kMirroredTangents)) {
        RC_ASSERT(AreAligned(opposite, Point(-moved.x, moved.y)));
    } else {
        AssertAngle(press, scale);
    }
}

}  // namespace

TEST(HvStdTgtMover_drags, KeepWhatIsLockedAndSegmentsValid)
{
    ExpectProperty("any drag", [] {
        StdCurve curve = AnyCurve();
        unsigned int const i = PickInRange(0u, curve.GetNumKeys());
        Lock(curve, i, kLocks[PickInRange(0, 9)]);
        ShowHandlesAround(curve, i);
        RC_PRE(curve.Impl().IsValid() != 0);
        RC_PRE(EverySegmentRunsForward(curve));
        DragReplay replay(curve, -10, 40);
        Press press(curve, i, PickInRange(0, 2) ? kLeft : kRight);
        RC_PRE(press.start.Impl().IsValid() != 0);
        RC_ASSERT(replay.Check(Extent()) == "");  // taking hold changes no shape
        Point const key = curve.Impl().KeyPoint(i, press.side);
        double const scale = PickInRange(0, 2) ? 1 : Any(0.2, 5);
        int const continuity = PickInRange(0, 2);
        int const lengthContinuity = PickInRange(0, 2);
        for (int step = 0; step < 6; ++step) {
            Point const handle = key + Point(Any(-6, 6), Any(-8, 8));
            std::string const before = StdImage(curve);
            Extent invalid;
            int const result =
                press.mover.Update(handle, continuity, lengthContinuity, scale, invalid);
            RC_ASSERT(replay.Check(invalid) == "");
            RC_ASSERT(curve.Impl().IsValid() != 0);
            if (result == 0) {
                RC_ASSERT(StdImage(curve) == before);
                continue;
            }
            RC_ASSERT((!press.Has(Word::kTangentDirectionLocked) ||
                       !press.Has(Word::kTangentLengthLocked)));
            AssertSurroundings(press);
            AssertLocks(press, scale);
            AssertFollows(press, continuity, lengthContinuity, scale);
        }
    });
}

TEST(HvStdTgtMover_drags, TakeBothLocks)
{
    StdCurve curve = MixedCurve();
    HvStdTgtMover mover(curve, 5, kLeft, 0);
    auto const construct = [&] { HvStdTgtMover const other(curve, 3, kRight, 0); };
    auto const update = [&] {
        Extent invalid;
        mover.Update({4, 4}, 1, 0, 1, invalid);
    };
    for (ProbedLock const lock : {ProbedLock::Access, ProbedLock::Section}) {
        EXPECT_TRUE(LockProbe_Waits(curve, lock, true, construct));
        EXPECT_TRUE(LockProbe_Waits(curve, lock, true, update));
    }
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

TEST(HvStdTgtMover_drags, GoOnWhileTheHostHoldsTheLocks)
{
    StdCurve curve = MixedCurve();
    curve.AcquireLocks();
    HvStdTgtMover mover(curve, 5, kLeft, 0);
    Extent invalid;
    EXPECT_EQ(mover.Update({4, 4}, 0, 0, 1, invalid), 1);
    curve.ReleaseLocks();
    EXPECT_EQ(curve.Impl().keys[3].leftHandle, Point(4, 4));
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

TEST(HvStdTgtMover_drags, RefusedAllocationLeavesTheCurveAsItWas)
{
    auto const prepare = [] { return std::make_unique<StdCurve>(MixedCurve()); };
    std::string const before = StdImage(*prepare());
    long const allocations = RefuseEachAllocation(
        prepare,
        [](std::unique_ptr<StdCurve>& curve) {
            HvStdTgtMover mover(*curve, 5, kLeft, 0);
            Extent invalid;
            mover.Update({4, 4}, 1, 1, 1, invalid);
        },
        [&](std::unique_ptr<StdCurve>& curve, bool completed) {
            EXPECT_TRUE(LockProbe_AreBothFree(*curve));
            EXPECT_TRUE(completed || StdImage(*curve) == before);
        });
    EXPECT_GE(allocations, 1);
}

TEST(HvStdTgtMover_drags, OfTwoCurvesGoOnWhileAThirdThreadEvaluatesBoth)
{
    StdCurve one = MixedCurve();
    StdCurve two = MixedCurve();
    std::atomic<bool> isOver{false};
    std::atomic<int> faults{0};
    auto const drag = [](StdCurve& curve) {
        Point const start = curve.Impl().keys[3].leftHandle;
        HvStdTgtMover mover(curve, 5, kLeft, 0);
        Extent invalid;
        for (int k = 0; k < 300; ++k) {
            mover.Update({5 - k % 7 * 0.25, k % 5 - 1.0}, 0, 0, 1, invalid);
        }
        mover.Update(start, 0, 0, 1, invalid);
    };
    std::thread reader([&] {
        while (!isOver) {
            for (StdCurve const* curve : {&one, &two}) {
                if (!std::isfinite(curve->Eval(4.3, 0)) || curve->GetNumKeys() != 5) {
                    ++faults;
                }
            }
        }
    });
    std::thread first([&] { drag(one); });
    std::thread second([&] { drag(two); });
    first.join();
    second.join();
    isOver = true;
    reader.join();
    EXPECT_EQ(faults, 0);
    for (StdCurve const* curve : {&one, &two}) {
        EXPECT_EQ(curve->Impl().keys[3].leftHandle, MixedCurve().Impl().keys[3].leftHandle);
    }
}
