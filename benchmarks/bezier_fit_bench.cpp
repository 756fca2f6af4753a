// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How many points of a stroke are fitted in a second, how many cubics come out, and how near do
// they stay?
//
// 100,000 points along a smooth stroke, half a unit apart, with Gaussian noise of 0, 0.1 or 0.25
// units (the argument, in hundredths), fitted within 1 unit. Beside the library: the plain fitter
// of P. Schneider, "An algorithm for automatically fitting digitized curves", Graphics Gems, 1990,
// with its chord-length parameters, four rounds of Newton's method and splits at the worst point,
// with tangents over five points on each side, since those of single steps are lost in the noise.
// "segments" counts the cubics, "error" is the greatest distance of a point from its foot, sought
// from many places of the cubic that covers it. The degenerate case: all points equal.

#include <hv/bezier/HvBezierSink.h>
#include <hv/bezier/HvBezierTool.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace {

using Point = HvPoint2<double>;

constexpr unsigned int kPoints = 100000;
constexpr double kTolerance = 1.0;
constexpr double kCornerCosSquared = 0.82139380484;  // of 25 degrees

HvPoint2fArray Stroke(double noise)
{
    std::mt19937 engine(1);
    std::normal_distribution<double> normal;
    HvPoint2fArray points(kPoints);
    // The speed of the curve is about 400.
    for (unsigned int i = 0; i < kPoints; ++i) {
        double const t = i * 0.5 / 400;
        double const x = 300 * std::cos(0.7 * t) + 100 * std::cos(1.9 * t) + 30 * std::cos(5.3 * t);
        double const y =
            300 * std::sin(0.71 * t) + 100 * std::sin(2.1 * t) + 30 * std::sin(4.9 * t);
        double const dx = noise * normal(engine);
        points.Add(HvPoint2<float>(Point(x + dx, y + noise * normal(engine))));
    }
    return points;
}

/// Four controls for each cubic, and the number of the point that ends it.
struct Chain {
    std::vector<Point> controls;
    std::vector<unsigned int> lasts;
};

Point At(Point const* c, double u)
{
    double const v = 1 - u;
    return c[0] * (v * v * v) + c[1] * (3 * u * v * v) + c[2] * (3 * u * u * v) +
           c[3] * (u * u * u);
}

double Dot(Point const& a, Point const& b)
{
    return a.x * b.x + a.y * b.y;
}

Point Unit(Point const& v)
{
    double const length = std::sqrt(Dot(v, v));
    return length > 0 ? v * (1 / length) : v;
}

class SchneiderFitter {
public:
    SchneiderFitter(HvPoint2fArray const& points, double tolerance)
        : squaredTolerance_(tolerance * tolerance)
    {
        for (HvPoint2<float> const& p : points) {
            if (points_.empty() || Point(p) != points_.back()) {
                points_.emplace_back(p);
            }
        }
    }

    Chain Fit()
    {
        Chain chain;
        auto const last = static_cast<int>(points_.size()) - 1;
        if (last > 0) {
            Fit(0, last, Direction(0, 0, kTangentReach), Direction(last, kTangentReach, 0) * -1.0,
                chain);
        }
        return chain;
    }

private:
    static constexpr int kRounds = 4;
    static constexpr int kTangentReach = 5;

    /// Along the walk.
    Point Direction(int at, int before, int after) const
    {
        auto const last = static_cast<int>(points_.size()) - 1;
        return Unit(points_[static_cast<std::size_t>(std::min(at + after, last))] -
                    points_[static_cast<std::size_t>(std::max(at - before, 0))]);
    }
    Point const& P(int i) const { return points_[static_cast<std::size_t>(i)]; }

    void Fit(int first, int last, Point const& t1, Point const& t2, Chain& chain)
    {
        Point curve[4];
        if (last - first == 1) {
            double const third = std::sqrt(Dot(P(last) - P(first), P(last) - P(first))) / 3;
            Accept(first, last, t1 * third, t2 * third, curve, chain);
            return;
        }
        std::vector<double> u(1, 0.0);
        for (int i = first + 1; i <= last; ++i) {
            Point const step = P(i) - P(i - 1);
            u.push_back(u.back() + std::sqrt(Dot(step, step)));
        }
        double const length = u.back();
        for (double& value : u) {
            value /= length;
        }
        int split = 0;
        double error = 0;
        for (int round = 0; round <= kRounds; ++round) {
            Solve(first, last, u, t1, t2, curve);
            error = Error(first, last, u, curve, split);
            if (error <= squaredTolerance_) {
                Accept(first, last, curve[1] - curve[0], curve[2] - curve[3], curve, chain);
                return;
            }
            if (error > 16 * squaredTolerance_) {
                break;
            }
            for (int i = first; i <= last; ++i) {
                Improve(P(i), curve, u[static_cast<std::size_t>(i - first)]);
            }
        }
        Point const t = Direction(split, kTangentReach, kTangentReach);
        Fit(first, split, t1, t * -1.0, chain);
        Fit(split, last, t, t2, chain);
    }

    void Accept(int first, int last, Point const& h1, Point const& h2, Point* curve, Chain& chain)
    {
        curve[0] = P(first);
        curve[1] = P(first) + h1;
        curve[2] = P(last) + h2;
        curve[3] = P(last);
        chain.controls.insert(chain.controls.end(), curve, curve + 4);
        chain.lasts.push_back(static_cast<unsigned int>(last));
    }

    void Solve(int first, int last, std::vector<double> const& u, Point const& t1, Point const& t2,
               Point* curve) const
    {
        double c00 = 0, c01 = 0, c11 = 0, x0 = 0, x1 = 0;
        for (int i = first; i <= last; ++i) {
            double const s = u[static_cast<std::size_t>(i - first)];
            double const v = 1 - s;
            Point const a1 = t1 * (3 * s * v * v);
            Point const a2 = t2 * (3 * s * s * v);
            Point const d = P(i) - P(first) * (v * v * v + 3 * s * v * v) -
                            P(last) * (s * s * s + 3 * s * s * v);
            c00 += Dot(a1, a1);
            c01 += Dot(a1, a2);
            c11 += Dot(a2, a2);
            x0 += Dot(a1, d);
            x1 += Dot(a2, d);
        }
        double const determinant = c00 * c11 - c01 * c01;
        double const chord = std::sqrt(Dot(P(last) - P(first), P(last) - P(first)));
        double left = (x0 * c11 - x1 * c01) / determinant;
        double right = (c00 * x1 - c01 * x0) / determinant;
        if (!(left > 1e-6 * chord && right > 1e-6 * chord)) {
            left = right = chord / 3;
        }
        curve[0] = P(first);
        curve[1] = P(first) + t1 * left;
        curve[2] = P(last) + t2 * right;
        curve[3] = P(last);
    }

    double Error(int first, int last, std::vector<double> const& u, Point const* curve,
                 int& split) const
    {
        double worst = 0;
        split = (first + last) / 2;
        for (int i = first + 1; i < last; ++i) {
            Point const gap = At(curve, u[static_cast<std::size_t>(i - first)]) - P(i);
            if (Dot(gap, gap) > worst) {
                worst = Dot(gap, gap);
                split = i;
            }
        }
        return worst;
    }

    static void Improve(Point const& p, Point const* c, double& u)
    {
        double const v = 1 - u;
        Point const first =
            ((c[1] - c[0]) * (v * v) + (c[2] - c[1]) * (2 * u * v) + (c[3] - c[2]) * (u * u)) * 3.0;
        Point const second =
            ((c[2] - c[1] * 2.0 + c[0]) * v + (c[3] - c[2] * 2.0 + c[1]) * u) * 6.0;
        Point const gap = At(c, u) - p;
        double const slope = Dot(first, first) + Dot(gap, second);
        if (slope != 0) {
            u -= Dot(gap, first) / slope;
        }
    }

    double squaredTolerance_;
    std::vector<Point> points_;
};

/// Takes what the library draws.
struct ChainSink : HvBezierSink {
    Chain chain;
    Point at;

    void Moveto(HvPoint2<float> const& p) override { at = Point(p); }
    void Lineto(HvPoint2<float> const& p) override { Curveto(p, p, p); }
    void Curveto(HvPoint2<float> const& c1, HvPoint2<float> const& c2,
                 HvPoint2<float> const& p) override
    {
        chain.controls.insert(chain.controls.end(), {at, Point(c1), Point(c2), Point(p)});
        at = Point(p);
    }
    int Closeto() override { return 1; }
};

/// Finds the points that end the cubics.
void FindLasts(HvPoint2fArray const& points, Chain& chain)
{
    unsigned int i = 0;
    for (std::size_t k = 3; k < chain.controls.size(); k += 4) {
        for (++i; i + 1 < points.Size() && Point(points[i]) != chain.controls[k]; ++i) {
        }
        chain.lasts.push_back(i);
    }
}

/// The greatest distance of a point from the cubic that covers it: from the nearest of many places,
/// and a search around it.
double ErrorOf(HvPoint2fArray const& points, Chain const& chain)
{
    constexpr int kPlaces = 64;
    double worst = 0;
    unsigned int i = 0;
    for (std::size_t k = 0; k < chain.lasts.size(); ++k) {
        Point const* const c = chain.controls.data() + 4 * k;
        for (; i <= chain.lasts[k] && i < points.Size(); ++i) {
            auto const squaredDistance = [&](double u) {
                Point const gap = At(c, u) - Point(points[i]);
                return Dot(gap, gap);
            };
            int best = 0;
            for (int place = 1; place <= kPlaces; ++place) {
                bool const isNearer = squaredDistance(double(place) / kPlaces) <
                                      squaredDistance(double(best) / kPlaces);
                best = isNearer ? place : best;
            }
            double low = std::max(best - 1, 0) / double(kPlaces);
            double high = std::min(best + 1, kPlaces) / double(kPlaces);
            for (int step = 0; step < 20; ++step) {
                double const a = low + (high - low) / 3;
                double const b = high - (high - low) / 3;
                (squaredDistance(a) < squaredDistance(b) ? high : low) =
                    squaredDistance(a) < squaredDistance(b) ? b : a;
            }
            worst = std::max(worst, squaredDistance(0.5 * (low + high)));
        }
    }
    return std::sqrt(worst);
}

template <class Fit>
void Measure(benchmark::State& state, Fit const& fit)
{
    HvPoint2fArray const points = Stroke(static_cast<double>(state.range(0)) / 100.0);
    Chain chain;
    for (auto _ : state) {
        chain = fit(points);
        benchmark::DoNotOptimize(chain.controls.data());
    }
    if (chain.lasts.empty()) {
        FindLasts(points, chain);
    }
    state.counters["segments"] = static_cast<double>(chain.lasts.size());
    state.counters["error"] = ErrorOf(points, chain);
    state.counters["points/s"] =
        benchmark::Counter(double(points.Size()) * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate);
}

void OpenFit(benchmark::State& state)
{
    HvBezierTool tool;
    Measure(state, [&](HvPoint2fArray const& points) {
        ChainSink sink;
        tool.OpenFit(points, kCornerCosSquared, 3, kTolerance, 0, sink, 0);
        return sink.chain;
    });
}

void Schneider(benchmark::State& state)
{
    Measure(state,
            [](HvPoint2fArray const& points) { return SchneiderFitter(points, kTolerance).Fit(); });
}

void OpenFitOfEqualPoints(benchmark::State& state)
{
    HvPoint2fArray const points(HvPoint2<float>(1, 1), kPoints);
    HvBezierTool tool;
    for (auto _ : state) {
        ChainSink sink;
        benchmark::DoNotOptimize(
            tool.OpenFit(points, kCornerCosSquared, 3, kTolerance, 0, sink, 0));
    }
}

}  // namespace

BENCHMARK(Schneider)->Arg(0)->Arg(10)->Arg(25)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenFit)->Arg(0)->Arg(10)->Arg(25)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenFitOfEqualPoints)->Unit(benchmark::kMillisecond);
