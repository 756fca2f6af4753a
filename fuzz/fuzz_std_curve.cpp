// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any sequence of edits of a standard curve leaves its keys in ascending order and its evaluation
// in agreement with itself, whatever numbers the edits are given.

#include <fuzz/fuzz_input.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvPoint2dArray.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

constexpr unsigned int kMaxKeys = 64;  // inputs explore orders of edits, not sizes

class Bytes : public FuzzInput {
public:
    using FuzzInput::FuzzInput;

    // Mostly a small number, so that edits meet each other's keys; sometimes any bits at all.
    double Number()
    {
        int const first = Next();
        if (first < 240) {
            return (first - 100) / 8.0;
        }
        std::uint64_t bits = 0;
        for (int i = 0; i < 8; ++i) {
            bits = bits << 8 | static_cast<unsigned int>(Next());
        }
        double number = 0;
        std::memcpy(&number, &bits, sizeof number);
        return number;
    }
    HvBaseFCurve::FSKind Kind() { return static_cast<HvBaseFCurve::FSKind>(Next() % 5); }
    HvBaseFCurve::KeySide Side() { return static_cast<HvBaseFCurve::KeySide>(Next() % 4); }
};

// A curve through up to eight points; their parameters rise, their values are any numbers.
HvStdFCurve Curve(Bytes& bytes)
{
    HvPoint2dArray points;
    double x = bytes.Next();
    for (int count = bytes.Next() % 8; count >= 0; --count) {
        double const y = bytes.Number();
        points.Add(HvPoint2<double>(x, std::isfinite(y) ? y : 0));
        x += 1 + bytes.Next() / 16.0;
    }
    auto const method = static_cast<HvStdFCurve::DPMethod>(1 + bytes.Next() % 4);
    double const tolerance = bytes.Number();
    HvBaseFCurve::FSKind const first = bytes.Kind();
    return HvStdFCurve(points, method, tolerance, first, bytes.Kind());
}

void Edit(Bytes& bytes, HvStdFCurve& curve)
{
    double x = bytes.Number();
    switch (bytes.Next() % 7) {
    case 0:
        curve.CreateKey(x, bytes.Number());
        break;
    case 1:
        curve.CreateNonModifyingKey(x, bytes.Next() % 2);
        break;
    case 2: {
        auto const constraint = static_cast<HvBaseFCurve::KeyConstraint>(1 << bytes.Next() % 15);
        curve.SetConstraint(x, constraint, bytes.Next() % 2, 0.5);
        break;
    }
    case 3: {
        HvBaseFCurve::KeySide const side = bytes.Side();
        curve.SetKeyValue(x, side, bytes.Number(), 0.5);
        break;
    }
    case 4:
        curve.RemoveKey(x, 0.5);
        break;
    case 5: {
        int const openAtFrom = bytes.Next() % 2;
        curve.RemoveKeys(x, bytes.Number(), openAtFrom, bytes.Next() % 2);
        break;
    }
    default:
        curve.SetExtrapolationMethod(
            static_cast<HvBaseFCurve::ExtrapolationMethod>(bytes.Next() % 6));
    }
}

bool SameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void CheckKeys(HvStdFCurve const& curve)
{
    double previous = -std::numeric_limits<double>::infinity();
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        double x = 0;
        FuzzRequire(curve.GetKeyParameter(i, x) == 1);
        FuzzRequire(std::isfinite(x) && x > previous);
        previous = x;
    }
    double x = 0;
    FuzzRequire(curve.GetKeyParameter(curve.GetNumKeys(), x) == 0);
}

void CheckEvaluation(HvStdFCurve const& curve, double x)
{
    double const value = curve.Eval(x, 0);
    double many[2] = {x, x};
    curve.EvalMany(many, 2, many, 0);
    FuzzRequire(SameBits(many[0], value) && SameBits(many[1], value));
    FuzzRequire(SameBits(curve.EvalNoLock(x, 0), value));
    double parameter = 0;
    if (curve.EvalInverse(value, parameter, 0) == 1) {
        FuzzRequire(!std::isnan(parameter));
    }
    double const area = curve.EvalIntegral(-x, x);
    FuzzRequire(SameBits(area, -curve.EvalIntegral(x, -x)) || std::isnan(area) || area == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Bytes bytes(data, size);
    HvStdFCurve curve = Curve(bytes);
    while (!bytes.Empty() && curve.GetNumKeys() < kMaxKeys) {
        Edit(bytes, curve);
        CheckKeys(curve);
        CheckEvaluation(curve, bytes.Number());
    }
    return 0;
}
