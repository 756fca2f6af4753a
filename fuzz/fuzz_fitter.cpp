// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves fitted to any points are finite, start and end where they should, and keep their
// tolerance.

#include <fuzz/fuzz_input.h>
#include <hv/bezier/HvBezierTool.h>
#include <hv/bezier/HvSpline2d.h>
#include <hv/bezier/HvSpline3d.h>
#include <tests/bezier/fit_test_support.h>

#include <cstdint>

namespace {

// Measuring the distances costs more than the fits.
constexpr unsigned int kMostPoints = 50;
// Places of a cubic in the slow measure, and how far half of a step between two may lead.
constexpr int kSlowPlaces = 4000;
constexpr double kSlowSlack = 0.1;

class Bytes : public FuzzInput {
public:
    using FuzzInput::FuzzInput;

    // A number on a grid of 256ths from -128 to 126; one in 256 times one that is hostile.
    float Coordinate()
    {
        int const high = Next();
        int const low = Next();
        if (high == 255) {
            float const hostile[] = {std::numeric_limits<float>::max(),
                                     -std::numeric_limits<float>::max(),
                                     1e-45F,
                                     1e30F,
                                     -1e-30F,
                                     static_cast<float>(kNaN),
                                     static_cast<float>(-kInfinity)};
            return hostile[low % 7];
        }
        return static_cast<float>((high * 256 + low) / 256.0 - 128.0);
    }
    double Tolerance()
    {
        int const exponent = Next();
        double const hostile[] = {0.0, 1e-310, 1e300, kInfinity};
        return exponent < 4 ? hostile[exponent] : std::ldexp(1.0, exponent % 24 - 16);
    }
};

// The distance of a point from a chain by plain force, for where the search among few places may
// have missed the foot.
double SlowDistance(FittedChain const& chain, Point2 const& p)
{
    double least = kInfinity;
    for (std::size_t i = 0; i < chain.Segments(); ++i) {
        std::vector<Point2> const cubic = chain.Cubic(i);
        for (int k = 0; k <= kSlowPlaces; ++k) {
            least = std::min(least, Length(CubicAt(cubic.data(), double(k) / kSlowPlaces) - p));
        }
    }
    return least;
}

bool IsWithin(FittedChain const& chain, HvPoint2fArray const& points, double tolerance)
{
    if (ErrorOf(chain, points) <= tolerance + Slack(points)) {
        return true;
    }
    for (FitPoint const& p : points) {
        if (!(SlowDistance(chain, Point2(p)) <= tolerance + kSlowSlack)) {
            return false;
        }
    }
    return true;
}

void CheckSpline(HvPoint2fArray const& points, double tolerance)
{
    HvPoint2dArray plane;
    HvPoint3dArray space;
    for (FitPoint const& p : points) {
        plane.Add(p.x, p.y);
        space.Add(Point3(p.y, p.x, p.x * 0.5));
    }
    HvDoubleArray parameters;
    HvSpline2d spline;
    if (spline.OpenFit(plane, tolerance, HvSpline2d::ContinuousDerivative, &parameters) == 1) {
        for (unsigned int i = 0; i < plane.Size(); ++i) {
            Point2 const gap = spline.Eval(parameters[i]) - plane[i];
            FuzzRequire(std::hypot(gap.x, gap.y) <= tolerance * (1 + 1e-15));
        }
    }
    HvSpline3d inSpace;
    if (inSpace.OpenFit(space, tolerance, HvSpline3d::ContinuousDerivative, &parameters) == 1) {
        for (unsigned int i = 0; i < space.Size(); ++i) {
            Point3 const gap = inSpace.Eval(parameters[i]) - space[i];
            FuzzRequire(std::hypot(gap.x, gap.y, gap.z) <= tolerance * (1 + 1e-15));
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Bytes bytes(data, size);
    int const kind = bytes.Next() % 5;
    double const tolerance = bytes.Tolerance();
    double const corner = bytes.Next() / 128.0 - 0.5;
    HvPoint2fArray points;
    bool isFinite = true;
    bool isTame = true;
    while (!bytes.Empty() && points.Size() < kMostPoints) {
        float const x = bytes.Coordinate();
        points.Add(FitPoint(x, bytes.Coordinate()));
        FitPoint const& p = points[points.Size() - 1];
        isFinite = isFinite && std::isfinite(p.x) && std::isfinite(p.y);
        isTame = isTame && std::fabs(p.x) <= 128 && std::fabs(p.y) <= 128;
    }
    if (kind == 4) {
        CheckSpline(points, tolerance);
        return 0;
    }
    HvBezierTool tool;
    FittedChain chain;
    unsigned int added = 0;
    switch (kind) {
    case 0:
        added = tool.OpenFit(points, corner, 3, tolerance, 0, chain, 0);
        break;
    case 1:
        added = tool.ClosedFit(points, corner, 3, tolerance, 0, chain);
        break;
    case 2:
        added = tool.OpenCatmullRomFit(points, chain, 0);
        break;
    default:
        added = tool.ClosedCatmullRomFit(points, chain);
        break;
    }
    FuzzRequire(added == chain.points.size());
    FuzzRequire((added != 0) == (isFinite && points.Size() >= 2));
    if (added == 0) {
        return 0;
    }
    bool const isClosed = kind % 2 == 1;
    FuzzRequire(chain.calls == "M" + std::string(chain.Segments(), 'C') + (isClosed ? "Z" : ""));
    FuzzRequire(chain.points.front() == points[0]);
    FuzzRequire(chain.points.back() == points[isClosed ? 0 : points.Size() - 1]);
    for (FitPoint const& p : chain.points) {
        FuzzRequire(std::isfinite(p.x) && std::isfinite(p.y));
    }
    if (isTame) {
        FuzzRequire(IsWithin(chain, points, kind < 2 ? tolerance : 0.0));
    }
    return 0;
}
