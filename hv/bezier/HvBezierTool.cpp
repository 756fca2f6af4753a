// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Bezier curves of any degree up to 8 to polylines.
//
// The curve is halved until its third differences are about the tolerance, then each piece is
// walked by forward differences, as cubics are; see HvBezierTool_flatten.h for the sources.

#include <hv/bezier/HvBezierTool.h>

#include <hv/bezier/internal/degree_tables.h>
#include <hv/bezier/internal/flattening_rule.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace {

/// Halving once more would append more points than an array holds.
constexpr unsigned int kMostHalvings = 31;

/// From this depth on every scaled difference is zero; it keeps the exponent within an int.
constexpr unsigned int kVanishingDepth = 4096;

/// The point times 2^`exponent`, each coordinate as ldexp gives it.
HvPoint2<double> TimesPowerOfTwo(HvPoint2<double> const& p, int exponent)
{
    // A power within the exponent range is a number, and the product is rounded no more than ldexp.
    constexpr int kLeastExponent = std::numeric_limits<double>::min_exponent - 1;
    if (exponent >= kLeastExponent) {
        return p * std::ldexp(1.0, exponent);
    }
    return {std::ldexp(p.x, exponent), std::ldexp(p.y, exponent)};
}

/// Appends `count` points of a curve of degree N, starting after `p`. A degree that is known to the
/// compiler keeps the differences in registers.
template <unsigned int N, class Element, class Array>
void Walk(HvPoint2<double> p, HvPoint2<double>* differences, unsigned int count, Array& out)
{
    HvPoint2<double> d[N];
    std::copy_n(differences, N, d);
    for (unsigned int i = 0; i < count; ++i) {
        p = p + d[0];
        // Rising order: each difference takes the next one as it was before this step.
        for (unsigned int j = 0; j + 1 < N; ++j) {
            d[j] = d[j] + d[j + 1];
        }
        out.Add(Element(p));
    }
    std::copy_n(d, N, differences);
}

template <class Element, class Array>
void Walk(unsigned int degree, HvPoint2<double> const& start, HvPoint2<double>* differences,
          unsigned int count, Array& out)
{
    using Walker = void (*)(HvPoint2<double>, HvPoint2<double>*, unsigned int, Array&);
    // A curve of degree 0 steps like one of degree 1 whose difference is zero.
    static constexpr Walker kWalkers[kHvBezierMaxDegree + 1] = {
        Walk<1, Element, Array>, Walk<1, Element, Array>, Walk<2, Element, Array>,
        Walk<3, Element, Array>, Walk<4, Element, Array>, Walk<5, Element, Array>,
        Walk<6, Element, Array>, Walk<7, Element, Array>, Walk<8, Element, Array>};
    out.Reserve(HvArrayCapacity_GrownSize(out.Size(), count));
    kWalkers[degree](start, differences, count, out);
}

}  // namespace

unsigned int HvBezierTool::MaxDegreeForThisImplementation() const
{
    return kHvBezierMaxDegree;
}

unsigned int HvBezierTool::Flatten(HvPoint2<double> const* points, unsigned int start,
                                   unsigned int curveDegree, double within, HvPoint2dArray* out,
                                   int skipFirst)
{
    return FlattenPoints(points + start, curveDegree, within, *out, skipFirst);
}

unsigned int HvBezierTool::Flatten(HvPoint2<float> const* points, unsigned int start,
                                   unsigned int curveDegree, double within, HvPoint2fArray* out,
                                   int skipFirst)
{
    return FlattenPoints(points + start, curveDegree, within, *out, skipFirst);
}

unsigned int HvBezierTool::Flatten(HvPoint2fArray const& points, unsigned int start,
                                   unsigned int curveDegree, double within, HvPoint2fArray* out,
                                   int skipFirst)
{
    return FlattenPoints(points.Data() + start, curveDegree, within, *out, skipFirst);
}

template <class Element, class Array>
unsigned int HvBezierTool::FlattenPoints(Element const* points, unsigned int curveDegree,
                                         double within, Array& out, int skipFirst)
{
    if (curveDegree > kHvBezierMaxDegree) {
        return 0;
    }
    // Copies, since the points may lie in the array that grows.
    Element const first = points[0];
    Element const last = points[curveDegree];
    HvPoint2<double> local[kHvBezierMaxDegree + 1];
    std::transform(points, points + curveDegree + 1, local,
                   [](Element const& p) { return HvPoint2<double>(p); });
    unsigned int const before = out.Size();
    try {
        if (skipFirst == 0) {
            out.Add(first);
        }
        if (curveDegree >= 2) {
            tolerance = within;
            degree = curveDegree;
            outputCount = skipFirst == 0 ? 1 : 0;
            SetOutput(out);
            ContextInitOne(local);
            PMSOFD(local, DepthPMSOFD());
            ++outputCount;
        }
        out.Add(last);
    } catch (...) {
        out.Chop(before);
        throw;
    }
    return out.Size() - before;
}

unsigned int HvBezierTool::FlatPolylineSizeUpperBound(HvPoint2<float> const* points,
                                                      unsigned int start, unsigned int curveDegree,
                                                      double within)
{
    if (curveDegree < 2) {
        return curveDegree + 1;
    }
    if (curveDegree > kHvBezierMaxDegree) {
        return 0;
    }
    degree = curveDegree;
    tolerance = within;
    HvPoint2<double> local[kHvBezierMaxDegree + 1];
    std::transform(points + start, points + start + degree + 1, local,
                   [](HvPoint2<float> const& p) { return HvPoint2<double>(p); });
    ContextInitOne(local);
    return pointCount;
}

void HvBezierTool::ContextInitOne(HvPoint2<double> const* points)
{
    depth = 0;
    if (degree <= kHvBezierMaxDegree) {
        FillDifferenceTable(points);
        double const deviation = degree < 2 ? 0.0 : Deviation(points);
        if (deviation > 0.0) {
            depth = HvFlattening_Doublings(DegreePairs[degree] * deviation * 0.25 / tolerance);
        }
    }
    pointCount = depth < std::numeric_limits<unsigned int>::digits
                     ? static_cast<unsigned int>(HvFlattening_Steps(depth)) + 1
                     : std::numeric_limits<unsigned int>::max();
}

void HvBezierTool::ContextInitTwo()
{
    if (degree > kHvBezierMaxDegree) {
        return;
    }
    int const h = static_cast<int>(std::min(depth, kVanishingDepth));
    HvPoint2<double> scaled[kHvBezierMaxDegree + 1];
    for (unsigned int k = 1; k <= degree; ++k) {
        scaled[k] = TimesPowerOfTwo(*DifferenceRow(k), -static_cast<int>(k) * h);
    }
    for (unsigned int r = 1; r <= degree; ++r) {
        HvPoint2<double> sum;
        for (unsigned int k = r; k <= degree; ++k) {
            sum = sum + scaled[k] * double(ForwardDifferenceCoefficient[degree][k][r]);
        }
        forwardDifferences[r - 1] = sum;
    }
    forwardDifferences[degree] = HvPoint2<double>();
}

void HvBezierTool::OFDInnerLoop()
{
    if (degree > kHvBezierMaxDegree || pointCount < 3) {
        return;
    }
    unsigned int const count = pointCount - 2;
    if (outputIsDouble != 0) {
        Walk<HvPoint2<double>>(degree, differenceTable[0], forwardDifferences, count,
                               *doubleOutput);
    } else {
        Walk<HvPoint2<float>>(degree, differenceTable[0], forwardDifferences, count, *floatOutput);
    }
    outputCount += count;
}

unsigned int HvBezierTool::DepthPMSOFD()
{
    if (degree < 3 || degree > kHvBezierMaxDegree) {
        return 0;
    }
    double greatest = 0.0;
    HvPoint2<double> const* const row = DifferenceRow(3);
    for (unsigned int i = 0; i + 3 <= degree; ++i) {
        greatest = std::max(greatest, HvPoint2_Length(row[i]));
    }
    unsigned int const levels = HvFlattening_Levels(greatest / tolerance);
    return levels == 0 ? 0 : levels - 1;
}

void HvBezierTool::PMSOFD(HvPoint2<double> const* points, unsigned int levels)
{
    if (degree > kHvBezierMaxDegree) {
        return;
    }
    if (levels == 0) {
        ContextInitOne(points);
        ContextInitTwo();
        OFDInnerLoop();
        return;
    }
    if (levels > kMostHalvings) {
        throw std::bad_alloc();
    }
    // De Casteljau in place: what stays behind on the way is the left half, the last point of each
    // round belongs to the right one.
    HvPoint2<double> left[kHvBezierMaxDegree + 1];
    HvPoint2<double> right[kHvBezierMaxDegree + 1];
    std::copy(points, points + degree + 1, left);
    right[degree] = left[degree];
    for (unsigned int i = 0; i < degree; ++i) {
        for (unsigned int j = degree; j > i; --j) {
            left[j] = (left[j] + left[j - 1]) * 0.5;
        }
        right[degree - 1 - i] = left[degree];
    }
    PMSOFD(left, levels - 1);
    Append(right[0]);
    PMSOFD(right, levels - 1);
}

void HvBezierTool::SetOutput(HvPoint2fArray& out)
{
    floatOutput = &out;
    outputIsDouble = 0;
}

void HvBezierTool::SetOutput(HvPoint2dArray& out)
{
    doubleOutput = &out;
    outputIsDouble = 1;
}

void HvBezierTool::Append(HvPoint2<double> const& point)
{
    if (outputIsDouble != 0) {
        doubleOutput->Add(point);
    } else {
        floatOutput->Add(HvPoint2<float>(point));
    }
    ++outputCount;
}

HvPoint2<double> const* HvBezierTool::DifferenceRow(unsigned int order) const
{
    return differenceTable + (order * (degree + 1) - order * (order - 1) / 2);
}

void HvBezierTool::FillDifferenceTable(HvPoint2<double> const* points)
{
    HvPoint2<double>* row = std::copy(points, points + degree + 1, differenceTable);
    for (unsigned int count = degree; count > 0; --count) {
        HvPoint2<double> const* const above = row - (count + 1);
        for (unsigned int i = 0; i < count; ++i) {
            row[i] = above[i + 1] - above[i];
        }
        row += count;
    }
}

/// The greatest distance of the second differences across the chord, or, where the ends meet, of
/// the inner control points from the start.
double HvBezierTool::Deviation(HvPoint2<double> const* points) const
{
    HvPoint2<double> const chord = points[degree] - points[0];
    double const length = HvPoint2_Length(chord);
    HvPoint2<double> const* const second = DifferenceRow(2);
    double greatest = 0.0;
    for (unsigned int i = 1; i < degree; ++i) {
        double const d =
            length == 0.0
                ? HvPoint2_Length(points[i] - points[0])
                : std::fabs(chord.y * second[i - 1].x - chord.x * second[i - 1].y) / length;
        greatest = std::max(greatest, d);
    }
    return greatest;
}
