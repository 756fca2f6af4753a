// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tests/fcurve/std_curve.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using Point = HvPoint2<double>;
using Word = CFCKeyConstraint;

constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;

// The rules once more, slowly: the right handle is written out, the left one is the right handle of
// the curve mirrored about the axis of values.

enum class Form {
    BothCoordinates,
    YAlone,
    InsideSegment
};

struct Neighbours {
    CFCStdKey const* previous;
    CFCStdKey const& key;
    CFCStdKey const* next;
};

CFCStdKey Mirrored(CFCStdKey const& key)
{
    CFCStdKey mirrored = key;
    mirrored.parameter = -key.parameter;
    std::swap(mirrored.leftValue, mirrored.rightValue);
    mirrored.leftHandle = Point(-key.rightHandle.x, key.rightHandle.y);
    mirrored.rightHandle = Point(-key.leftHandle.x, key.leftHandle.y);
    return mirrored;
}

double PlainX(Neighbours const& n, bool right)
{
    unsigned const word = n.key.constraints.word;
    CFCStdKey const* const neighbour = right ? n.next : n.previous;
    if (word & 0x100) {
        return n.key.parameter;
    }
    if ((word & 0x1000) && neighbour) {
        return n.key.parameter + (neighbour->parameter - n.key.parameter) / 3;
    }
    return right ? n.key.rightHandle.x : n.key.leftHandle.x;
}

bool Extremum(Neighbours const& n)
{
    if (!n.previous || !n.next) {
        return true;
    }
    double const A = n.previous->rightValue;
    double const B = n.next->leftValue;
    for (double v : {n.key.rightValue, n.key.leftValue}) {
        if ((v <= A + 1e-6 && v <= B + 1e-6) || (v >= A - 1e-6 && v >= B - 1e-6)) {
            return true;
        }
    }
    return false;
}

double AutoSlope(Neighbours const& n)
{
    double const A = n.previous->rightValue;
    double const B = n.next->leftValue;
    double const s = (B - A) / (n.next->parameter - n.previous->parameter);
    if (n.key.constraints.word & 0x80) {
        return s;
    }
    double const lo = std::min(A, B);
    double const hi = std::max(A, B);
    double const L = n.key.leftValue;
    double const R = n.key.rightValue;
    if (L < lo || L > hi || R < lo || R > hi) {
        return 0;
    }
    double const dl = PlainX(n, false) - n.key.parameter;
    double const dr = PlainX(n, true) - n.key.parameter;
    double const yl = L + s * dl;
    double const yr = R + s * dr;
    double const sl = yl < lo || yl > hi ? (std::clamp(yl, lo, hi) - L) / dl : s;
    double const sr = yr < lo || yr > hi ? (std::clamp(yr, lo, hi) - R) / dr : s;
    return std::fabs(sl) < std::fabs(sr) ? sl : sr;
}

Point ExpectedRight(Neighbours const& n, Form form)
{
    unsigned const word = n.key.constraints.word;
    CFCStdKey const& key = n.key;
    double const p = key.parameter;
    double const R = key.rightValue;
    double const H = PlainX(n, true);
    double const flatX = form == Form::InsideSegment ? H : key.rightHandle.x;
    bool const asked =
        (word & 0x40) && (form == Form::BothCoordinates || !(word & 0x1000) || (word & 0x80));
    if (word & 0x100) {
        return {p, R};
    }
    if ((word & 0x20) || (asked && Extremum(n))) {
        return {flatX, R};
    }
    if (word & 0x400) {
        return {H, n.next ? R + (n.next->leftValue - R) / (n.next->parameter - p) * (H - p) : R};
    }
    if (!(word & 0x1000)) {
        return key.rightHandle;
    }
    return {H, n.previous && n.next ? R + (H - p) * AutoSlope(n) : R};
}

Point ExpectedLeft(Neighbours const& n, Form form)
{
    CFCStdKey const key = Mirrored(n.key);
    CFCStdKey const previous = n.next ? Mirrored(*n.next) : CFCStdKey();
    CFCStdKey const next = n.previous ? Mirrored(*n.previous) : CFCStdKey();
    Point const handle =
        ExpectedRight({n.next ? &previous : nullptr, key, n.previous ? &next : nullptr}, form);
    return {-handle.x, handle.y};
}

/// Three keys whose values make the middle one rise gently, steeply, jump, peak, or lie level.
std::vector<std::vector<CFCStdKey>> Shapes()
{
    double const values[][6] = {
        // left and right value of each key
        {0, 0, 1, 1, 3, 3},         // between
        {0, 0, 0.1, 0.1, 3, 3},     // close to the lower neighbour: the left handle is limited
        {0, 0, 2.9, 2.9, 3, 3},     // close to the upper one: the right handle is limited
        {3, 3, 2.9, 2.8, 0, 0},     // falling, with a jump
        {0, 0, 5, 5, 3, 3},         // peak
        {0, 0, 1, 4, 3, 3},         // right value beyond both, left value between
        {0, 0, -4, 1, 3, 3},        // left value beyond both
        {1, 1, 1, 1, 1, 1},         // level
        {0, 0, -5e-7, -5e-7, 3, 3}  // below both by less than the tolerance
    };
    std::vector<std::vector<CFCStdKey>> shapes;
    for (auto const& v : values) {
        std::vector<CFCStdKey> keys;
        double const x[] = {0, 2, 3.5};
        for (int i = 0; i < 3; ++i) {
            CFCStdKey key = KeyAt(x[i], v[2 * i], v[2 * i + 1], kCubic);
            key.leftHandle = Point(x[i] - 0.4, v[2 * i] - 0.7);
            key.rightHandle = Point(x[i] + 0.3, v[2 * i + 1] + 1.1);
            keys.push_back(key);
        }
        shapes.push_back(keys);
    }
    return shapes;
}

void ExpectNear(Point const& actual, Point const& expected)
{
    // Both sides compute each coordinate in fewer than ten operations on numbers below 10.
    constexpr double kRounding = 1e-13;
    EXPECT_NEAR(actual.x, expected.x, kRounding);
    EXPECT_NEAR(actual.y, expected.y, kRounding);
}

CFCStdStore StoreOf(std::vector<CFCStdKey> const& keys)
{
    CFCStdStore store;
    for (CFCStdKey const& key : keys) {
        store.keys.Add(key);
    }
    return store;
}

}  // namespace

TEST(CFCKeyStoreC, UsesStoredHandlesWithoutRules)
{
    CFCStdStore store;
    store.keys.Add(KeyWithHandles(1, 2, {-0.5, 3}, {0.25, -4}));
    EXPECT_EQ(store.GetEvaluatedLeftTgt(0), Point(0.5, 5));
    EXPECT_EQ(store.GetEvaluatedRightTgt(0), Point(1.25, -2));
    EXPECT_EQ(store.GetEvaluatedLeftTgtY(0), 5);
    EXPECT_EQ(store.GetEvaluatedRightTgtY(0), -2);
}

TEST(CFCKeyStoreC, TakesAutomaticSlopeFromNeighbours)
{
    // Neighbours (0, 0) and (4, 8): slope 2. The handles lie at thirds of spans of 1 and 3.
    CFCStdStore store =
        StoreOf({CFCStdKey(0, 0, kCubic), CFCStdKey(1, 3, kCubic), CFCStdKey(4, 8, kCubic)});
    store.keys[1].constraints.Set(Word::kAutomaticTangents);
    ExpectNear(store.GetEvaluatedLeftTgt(1), Point(2.0 / 3, 3 - 2.0 / 3));
    ExpectNear(store.GetEvaluatedRightTgt(1), Point(2, 5));
}

TEST(CFCKeyStoreC, LimitsAutomaticSlopeToTheNeighboursRange)
{
    // Slope 2 would take the right handle from (1, 7.5) to (2, 9.5), above 8: it is cut to 0.5.
    CFCStdStore store =
        StoreOf({CFCStdKey(0, 0, kCubic), CFCStdKey(1, 7.5, kCubic), CFCStdKey(4, 8, kCubic)});
    store.keys[1].constraints.Set(Word::kAutomaticTangents);
    ExpectNear(store.GetEvaluatedRightTgt(1), Point(2, 8));
    ExpectNear(store.GetEvaluatedLeftTgt(1), Point(2.0 / 3, 7.5 - 0.5 / 3));
    store.keys[1].constraints.Set(Word::kUnlimitedAutoSlope);
    ExpectNear(store.GetEvaluatedRightTgt(1), Point(2, 9.5));
}

TEST(CFCKeyStoreC, CountsAnExtremumWithinAMillionth)
{
    CFCStdStore store =
        StoreOf({CFCStdKey(0, 0, kCubic), CFCStdKey(1, 0, kCubic), CFCStdKey(2, 1, kCubic)});
    store.keys[1].constraints.Set(Word::kFlatAtExtremum);
    auto const isFlatAt = [&store](double value) {
        store.keys[1].leftValue = store.keys[1].rightValue = value;
        store.keys[1].rightHandle = Point(1.2, 77);
        return store.GetEvaluatedRightTgt(1).y != 77;
    };
    EXPECT_TRUE(isFlatAt(1e-6));
    EXPECT_FALSE(isFlatAt(std::nextafter(1e-6, 1)));
    EXPECT_TRUE(isFlatAt(1 - 1e-6));
    EXPECT_FALSE(isFlatAt(0.5));
    EXPECT_FALSE(isFlatAt(1 - 2e-6));
}

TEST(CFCKeyStoreC, DerivesEveryCombinationOfConstraints)
{
    unsigned short const bits[] = {0x0020, 0x0040, 0x0080, 0x0100, 0x0400, 0x0800, 0x1000, 0x0001};
    for (std::vector<CFCStdKey> const& shape : Shapes()) {
        for (unsigned word = 0; word < 256; ++word) {
            CFCStdStore store = StoreOf(shape);
            unsigned short value = 0;
            for (unsigned b = 0; b < 8; ++b) {
                value = static_cast<unsigned short>(value | ((word >> b & 1) ? bits[b] : 0));
            }
            for (unsigned i = 0; i < 3; ++i) {
                store.keys[i].constraints.word = value;
            }
            for (unsigned i = 0; i < 3; ++i) {
                SCOPED_TRACE(testing::Message() << "word " << value << " key " << i << " value "
                                                << shape[1].leftValue);
                Neighbours const n{i > 0 ? &store.keys[i - 1] : nullptr, store.keys[i],
                                   i < 2 ? &store.keys[i + 1] : nullptr};
                ExpectNear(store.GetEvaluatedRightTgt(i), ExpectedRight(n, Form::BothCoordinates));
                ExpectNear(store.GetEvaluatedLeftTgt(i), ExpectedLeft(n, Form::BothCoordinates));
                EXPECT_NEAR(store.GetEvaluatedRightTgtY(i), ExpectedRight(n, Form::YAlone).y,
                            1e-13);
                EXPECT_NEAR(store.GetEvaluatedLeftTgtY(i), ExpectedLeft(n, Form::YAlone).y, 1e-13);
            }
        }
    }
}

TEST(CFCKeyStoreC, EvaluatesCubicsOfEveryCombinationOfConstraints)
{
    // The handles inside a segment take the general x; the cubic at t = 1/2 is weighed 1, 3, 3, 1.
    unsigned short const bits[] = {0x0020, 0x0040, 0x0080, 0x0100, 0x0400, 0x1000};
    for (std::vector<CFCStdKey> const& shape : Shapes()) {
        for (unsigned word = 0; word < 64; ++word) {
            CFCStdStore store = StoreOf(shape);
            for (unsigned i = 0; i < 3; ++i) {
                store.keys[i].constraints.word = 0;
                for (unsigned b = 0; b < 6; ++b) {
                    store.keys[i].constraints.Assign(bits[b], (word >> b & 1) != 0);
                }
            }
            for (unsigned i = 0; i < 2; ++i) {
                SCOPED_TRACE(testing::Message() << "word " << word << " segment " << i);
                CFCStdKey const& a = store.keys[i];
                CFCStdKey const& b = store.keys[i + 1];
                Neighbours const na{i > 0 ? &store.keys[i - 1] : nullptr, a, &b};
                Neighbours const nb{&a, b, i < 1 ? &store.keys[i + 2] : nullptr};
                Point const P1 = ExpectedRight(na, Form::InsideSegment);
                Point const P2 = ExpectedLeft(nb, Form::InsideSegment);
                double const x = (a.parameter + 3 * P1.x + 3 * P2.x + b.parameter) / 8;
                double const y = (a.rightValue + 3 * P1.y + 3 * P2.y + b.leftValue) / 8;
                // The solver's parameter is within 2e-9, and no dy/dt of these exceeds 30.
                EXPECT_NEAR(store.EvalJustAfterIndex(x, i), y, 6e-8);
            }
        }
    }
}

TEST(CFCKeyStoreC, KeepsStoredXOfAFlatAutomaticKeyOnlyInTheTwoCoordinateForm)
{
    CFCStdStore store = StoreOf({CFCStdKey(0, 0, kCubic), CFCStdKey(3, 3, kCubic)});
    store.keys[0].rightHandle = Point(0.25, 9);
    store.keys[0].constraints.Set(Word::kAutomaticTangents | Word::kFlatTangents);
    EXPECT_EQ(store.GetEvaluatedRightTgt(0), Point(0.25, 0));
    // Evaluation takes the handle at the third: x = (0 + 3*1 + 3*3 + 3)/8 at t = 1/2.
    EXPECT_NEAR(store.EvalJustAfterIndex(15.0 / 8, 0), (0 + 0 + 9 + 3) / 8.0, 1e-8);
}

TEST(CFCKeyStoreC, AsksLimitedAutomaticKeysForExtremaOnlyInTheTwoCoordinateForm)
{
    // The key stands at 1e-7 above its lower neighbour: an extremum within the tolerance, and yet
    // its slope is limited to a little more than zero.
    CFCStdStore store =
        StoreOf({CFCStdKey(0, 0, kCubic), CFCStdKey(3, 1e-7, kCubic), CFCStdKey(6, 3, kCubic)});
    store.keys[1].constraints.Set(Word::kAutomaticTangents | Word::kFlatAtExtremum);
    EXPECT_EQ(store.GetEvaluatedRightTgt(1).y, 1e-7);
    EXPECT_NEAR(store.GetEvaluatedRightTgtY(1), 2e-7, 1e-18);
    store.keys[1].constraints.Set(Word::kUnlimitedAutoSlope);
    EXPECT_EQ(store.GetEvaluatedRightTgtY(1), 1e-7);
}

TEST(CFCKeyStoreC, SetsUpControlPointsFromBothKeys)
{
    CFCStdStore store = StoreOf({KeyAt(0, 1, 2, kCubic), KeyAt(3, 5, 6, kCubic)});
    store.keys[0].rightHandle = Point(1, 7);
    store.keys[1].leftHandle = Point(2, 8);
    Point P[4];
    store.BezierCubicSetupUsingEvaluatedTangents(0, 1, P);
    EXPECT_EQ(P[0], Point(0, 2));
    EXPECT_EQ(P[1], Point(1, 7));
    EXPECT_EQ(P[2], Point(2, 8));
    EXPECT_EQ(P[3], Point(3, 5));
}

TEST(CFCKeyStoreC, EvaluatesEachKindInsideItsSegment)
{
    CFCStdStore store = StoreOf({KeyAt(0, 1, 2, HvBaseFCurve::ConstantSegment),
                                 KeyAt(4, 10, 6, HvBaseFCurve::ConstantSegment)});
    EXPECT_EQ(store.EvalJustAfterIndex(3, 0), 2);
    store.keys[0].segmentKind = HvBaseFCurve::LinearSegment;
    EXPECT_EQ(store.EvalJustAfterIndex(3, 0), 8);
    // Handles on the keys: x = 4 (3t^2 - 2t^3), so t = 1/4 stands at 4 * 10/64.
    store.keys[0].segmentKind = HvBaseFCurve::CubicSegment;
    EXPECT_NEAR(store.EvalJustAfterIndex(0.625, 0), 2 + 8 * 10.0 / 64, 1e-7);
    store.keys[0].segmentKind = 0;
    EXPECT_EQ(store.EvalJustAfterIndex(3, 0), 0);
    store.keys[0].segmentKind = 4;
    EXPECT_EQ(store.EvalJustAfterIndex(3, 0), 0);
}
