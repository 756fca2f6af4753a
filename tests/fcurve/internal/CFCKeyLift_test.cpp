// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/fcurve/internal/CFCKeyLift.h>

#include "../std_edit.h"

#include <tests/support/generators.h>

namespace {

using Order = CFCKeyLift<HvStdFCurve>::Order;

/// A long curve of mixed kinds, at quarters.
StdCurve LongCurve()
{
    StdCurve curve({});
    double x = 0;
    for (int i = 0; i < 40; ++i) {
        double const share = PickInRange(1, 10) / 40.0;
        CFCStdKey key = KeyWithHandles(x, PickInRange(-5, 6), {-share, 1}, {share, -1},
                                       static_cast<FSKind>(PickInRange(1, 4)));
        curve.Impl().keys.Add(key);
        x += PickInRange(1, 9) / 4.0;
    }
    return curve;
}

/// A key of the curve and where it goes.
struct Way {
    double from;
    double to;
    double y;
    FSKind kind;
};

/// Rising ways between the ends, at first few apart and never onto a key that stays.
std::vector<Way> AnyWays(StdCurve const& curve)
{
    HvStdFCurveImpl const& impl = curve.Impl();
    std::vector<Way> ways;
    double last = impl.FirstParameter();
    int const rarity = PickInRange(1, 12);
    for (unsigned int i = 1; i + 1 < impl.NumKeys(); ++i) {
        double const x = impl.Parameter(i);
        // An eighth aside stands no other key.
        double const target = x + PickInRange(-20, 21) / 4.0 + 0.125;
        if (PickInRange(0, rarity) == 0 && target > last && target < impl.LastParameter()) {
            ways.push_back({x, target, impl.keys[i].rightValue + 1, impl.SegmentKind(i)});
            last = target;
        }
    }
    return ways;
}

/// All keys by their stored fields, but for the words.
std::string KeyImage(HvStdFCurveImpl const& impl)
{
    std::string image;
    for (CFCStdKey const& key : impl.keys) {
        char text[400];
        std::snprintf(text, sizeof text, "%a %a %a (%a, %a) (%a, %a) %d\n", key.parameter,
                      key.leftValue, key.rightValue, key.leftHandle.x, key.leftHandle.y,
                      key.rightHandle.x, key.rightHandle.y, int(key.segmentKind));
        image += text;
    }
    return image;
}

/// Targets of the dragged keys; returns the order in which they were added.
Order Aim(CFCDraggedKeys<HvStdFCurve>& dragged, StdCurve const& curve, std::vector<Way> const& ways)
{
    dragged.BeginWith(curve.Impl());
    Order order(1);
    for (Way const& way : ways) {
        unsigned int i = 0;
        curve.GetKeyIndex(way.from, i);
        dragged.Add(curve.Impl(), i);
        CFCDraggedKey& key = dragged.keys[dragged.Count() - 1];
        key.targetParameter = way.to;
        key.targetLeftValue = key.targetRightValue = way.y;
        order.Add(dragged.Count() - 1);
    }
    return order;
}

}  // namespace

TEST(CFCKeyLift, DoesWhatRemovingEachKeyAndCreatingItAgainDoes)
{
    ExpectProperty("one by one", [] {
        StdCurve curve = LongCurve();
        std::vector<Way> const ways = AnyWays(curve);
        StdCurve plain(curve);
        for (std::size_t k = ways.size(); k-- > 0;) {
            RC_ASSERT(plain.RemoveKey(ways[k].from, 0) == 1);
        }
        FSKind kind = kCubic;
        bool const isUniform = curve.HasUniformSegmentKind(kind) != 0;
        for (Way const& way : ways) {
            RC_ASSERT(plain.CreateKey(way.to, way.y, kKeep, isUniform ? kKeep : way.kind) == 1);
        }

        CFCDraggedKeys<HvStdFCurve> dragged;
        CFCKeyLift<HvStdFCurve> lift(curve, dragged);
        Order const order = Aim(dragged, curve, ways);
        lift.Begin(order);
        RC_ASSERT(lift.Prepare(order));
        lift.Move();
        RC_ASSERT(KeyImage(curve.Impl()) == KeyImage(plain.Impl()));
    });
}

TEST(CFCKeyLift, LeavesKeysThatStayAsTheyWereOnceAllAreBack)
{
    ExpectProperty("there and back", [] {
        StdCurve curve = LongCurve();
        StdCurve const before(curve);
        std::vector<Way> const ways = AnyWays(curve);
        CFCDraggedKeys<HvStdFCurve> dragged;
        CFCKeyLift<HvStdFCurve> lift(curve, dragged);
        Order const order = Aim(dragged, curve, ways);
        lift.Begin(order);
        for (double const share : {1.0, 0.5, 0.0}) {
            for (unsigned int k = 0; k < dragged.Count(); ++k) {
                CFCDraggedKey& key = dragged.keys[k];
                // Halves of odd eighths are no place of another key either.
                key.targetParameter = ways[k].from + share * (ways[k].to - ways[k].from);
            }
            RC_ASSERT(lift.Prepare(order));
            lift.Move();
        }
        unsigned int w = 0;
        for (unsigned int i = 0; i < before.Impl().NumKeys(); ++i) {
            CFCStdKey const& was = before.Impl().keys[i];
            CFCStdKey const& is = curve.Impl().keys[i];
            RC_ASSERT(was.parameter == is.parameter);
            RC_ASSERT(was.segmentKind == is.segmentKind);
            if (w < ways.size() && ways[w].from == was.parameter) {
                ++w;  // its tangents are the tool's
            } else {
                RC_ASSERT(was.leftHandle == is.leftHandle);
                RC_ASSERT(was.rightHandle == is.rightHandle);
            }
        }
    });
}

TEST(CFCKeyLift, RefusesPlacesThatAreTaken)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(1, 1, 1, kCubic), KeyAt(2, 2, 2, kCubic),
                    KeyAt(3, 3, 3, kCubic)});
    std::string const before = StdImage(curve);
    auto const prepare = [&](double first, double second) {
        CFCDraggedKeys<HvStdFCurve> dragged;
        CFCKeyLift<HvStdFCurve> lift(curve, dragged);
        Order const order = Aim(dragged, curve, {{1, first, 1, kCubic}, {2, second, 2, kCubic}});
        lift.Begin(order);
        return lift.Prepare(order);
    };
    EXPECT_TRUE(prepare(2, 1)) << "places of each other";
    EXPECT_FALSE(prepare(0, 2)) << "that of a key that stays";
    EXPECT_FALSE(prepare(1.5, 1.5)) << "the same";
    for (double const bad : NonFinite()) {
        EXPECT_FALSE(prepare(bad, 2));
    }
    EXPECT_EQ(StdImage(curve), before);
}
