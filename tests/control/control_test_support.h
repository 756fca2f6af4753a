// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves for the tests of the control operator, and their composition by evaluation alone.

#ifndef TESTS_CONTROL_CONTROL_TEST_SUPPORT_H
#define TESTS_CONTROL_CONTROL_TEST_SUPPORT_H

#include <hv/control/HvControlOperator.h>
#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <memory>
#include <random>
#include <vector>

using Curve = HvBaseFCurve;
using CurvePtr = std::unique_ptr<HvBaseFCurve>;
using StdPtr = std::unique_ptr<HvStdFCurve>;
using Point = HvPoint2<double>;

constexpr Curve::FSKind kConstant = Curve::ConstantSegment;
constexpr Curve::FSKind kLinear = Curve::LinearSegment;
constexpr Curve::FSKind kCubic = Curve::CubicSegment;

inline StdPtr Compose(Curve const& c, Curve const& d, double from, double to,
                      double tolerance = 1e-6)
{
    return StdPtr(HvControlOperator::Compose(c, d, from, to, tolerance));
}

/// A key of a standard curve whose right span has a kind.
struct KeySpec {
    double x;
    double left;
    double right;
    Curve::FSKind kind;
};

inline StdPtr StdCurve(std::initializer_list<KeySpec> keys,
                       Curve::ExtrapolationMethod method = Curve::ConstantExtrapolation)
{
    StdPtr curve(new HvStdFCurve(keys.begin()->left, keys.begin()->kind));
    for (KeySpec const& key : keys) {
        curve->CreateKey(key.x, key.left, kLinear, key.kind);
        curve->SetKeyValue(key.x, Curve::Right, key.right, 0);
    }
    for (KeySpec const& key : keys) {
        curve->SetSegmentKind(key.x, Curve::Right, key.kind, 0);
    }
    curve->SetExtrapolationMethod(method);
    return curve;
}

/// A line from (x0, y0) to (x1, y1), held or continued outside.
inline StdPtr Line(double x0, double y0, double x1, double y1,
                   Curve::ExtrapolationMethod method = Curve::ConstantExtrapolation)
{
    return StdCurve({{x0, y0, y0, kLinear}, {x1, y1, y1, kLinear}}, method);
}

inline StdPtr Cubic(Point const& P0, Point const& P1, Point const& P2, Point const& P3)
{
    return StdPtr(new HvStdFCurve(P0, P1, P2, P3, kCubic, kCubic));
}

/// A key of a composition.
struct KeyRow {
    double x;
    double left;
    double right;
};

inline std::vector<KeyRow> Keys(HvStdFCurve const& curve)
{
    std::vector<KeyRow> rows;
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        KeyRow row{};
        curve.GetKeyParameter(i, row.x);
        curve.GetKeyValuesByIndex(i, row.left, row.right);
        rows.push_back(row);
    }
    return rows;
}

inline Curve::FSKind KindAfter(HvStdFCurve const& curve, unsigned int i)
{
    Curve::FSKind kind = kConstant;
    curve.GetSegmentKindByIndex(i, Curve::Right, kind);
    return kind;
}

/// Whether every cubic segment is a function of the parameter, and the keys rise.
inline bool IsValid(HvStdFCurve const& curve)
{
    std::vector<KeyRow> const rows = Keys(curve);
    for (unsigned int i = 0; i + 1 < rows.size(); ++i) {
        Point left;
        Point right;
        Point unused;
        curve.GetEvaluatedKeyTgtHandlesByIndex(i, unused, right);
        curve.GetEvaluatedKeyTgtHandlesByIndex(i + 1, left, unused);
        Point const P0(rows[i].x, rows[i].right);
        Point const P3(rows[i + 1].x, rows[i + 1].left);
        if (!(P0.x < P3.x) || (KindAfter(curve, i) == kCubic &&
                               !HvStdFCurve_IsCubicSegmentValid(P0, P0 + right, P3 + left, P3))) {
            return false;
        }
    }
    return true;
}

/// The greatest difference at even samples of [from, to].
inline double WorstDifference(HvStdFCurve const& r, HvControlOperator const& op, double from,
                              double to, int n)
{
    double worst = 0;
    for (int k = 0; k <= n; ++k) {
        double const t = from + (to - from) * k / n;
        double const e = std::fabs(r.Eval(t, 0) - op.Eval(t));
        worst = e <= worst ? worst : e;
    }
    return worst;
}

/// Random curves, the same on every machine for one seed.
class CurveMaker {
public:
    explicit CurveMaker(unsigned int seed) : engine_(seed) {}

    /// Any of [0, n).
    unsigned int Pick(unsigned int n) { return static_cast<unsigned int>(engine_() % n); }
    double Real(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(engine_()) / 4294967296.0);
    }

    /// Up to `mostKeys` keys from about `low` to `high`, values of [lowValue, highValue].
    StdPtr Standard(unsigned int mostKeys, double low, double high, double lowValue,
                    double highValue)
    {
        unsigned int const n = Pick(mostKeys + 1);
        StdPtr curve(new HvStdFCurve(Real(lowValue, highValue), RandomKind()));
        std::vector<double> const parameters = Parameters(n, low, high);
        for (double const x : parameters) {
            curve->CreateKey(x, Real(lowValue, highValue), RandomKind(), RandomKind());
        }
        for (double x : parameters) {
            curve->SetSegmentKind(x, Curve::Right, RandomKind(), 0);
            curve->UnlockTangentContinuity(x, 0);
            double const reach = (high - low) / (n + 1.0);
            curve->SetKeyTgtHandles(x, Point(-Real(0, reach), Real(-4, 4)),
                                    Point(Real(0, reach), Real(-4, 4)), 0);
            static Curve::KeyConstraint const kDeriving[] = {
                Curve::FlatTangents,   Curve::FlatAtExtremum,     Curve::UnlimitedAutoSlope,
                Curve::LinearTangents, Curve::ZeroLengthTangents, Curve::AutomaticTangents};
            for (Curve::KeyConstraint const constraint : kDeriving) {
                if (Pick(4) == 0) {
                    curve->SetConstraint(x, constraint, 1, 0);
                }
            }
            if (Pick(4) == 0) {
                curve->SetKeyValue(x, Curve::Right, Real(lowValue, highValue), 0);
            }
        }
        curve->SetExtrapolationMethod(static_cast<Curve::ExtrapolationMethod>(1 + Pick(4)));
        return curve;
    }

    /// A curve of any kind.
    CurvePtr Any(unsigned int mostKeys, double low, double high, double lowValue, double highValue)
    {
        static int const kMethods[] = {1, 3, 4, 2};
        unsigned int const kind = Pick(8);
        CurvePtr curve;
        if (kind == 0) {
            curve.reset(new HvBooleanFCurve(Pick(2) != 0));
            Fill(*curve, mostKeys, low, high, [&] { return double(Pick(2)); });
        } else if (kind == 1) {
            curve.reset(new HvIntegerFCurve(3));
            Fill(*curve, mostKeys, low, high,
                 [&] { return std::floor(Real(lowValue, highValue)); });
        } else if (kind == 2) {
            curve.reset(new HvRawFCurve(1.5));
            Fill(*curve, mostKeys, low, high, [&] { return Real(lowValue, highValue); });
        } else {
            return Standard(mostKeys, low, high, lowValue, highValue);
        }
        curve->SetExtrapolationMethod(
            static_cast<Curve::ExtrapolationMethod>(kMethods[Pick(kind == 2 ? 4 : 3)]));
        return curve;
    }

private:
    Curve::FSKind RandomKind()
    {
        static Curve::FSKind const kKinds[] = {kConstant, kLinear, kCubic, kCubic, kCubic};
        return kKinds[Pick(5)];
    }
    std::vector<double> Parameters(unsigned int n, double low, double high)
    {
        std::vector<double> parameters;
        for (unsigned int i = 0; i < n; ++i) {
            double const span = (high - low) / n;
            parameters.push_back(low + span * (i + Real(0.1, 0.9)));
        }
        return parameters;
    }
    template <class Value>
    void Fill(Curve& curve, unsigned int mostKeys, double low, double high, Value value)
    {
        for (double const x : Parameters(Pick(mostKeys + 1), low, high)) {
            curve.CreateKey(x, value());
        }
    }

    std::mt19937 engine_;
};

#endif
