// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Cubic Bezier curves to polylines.

#include <hv/bezier/HvBezierTool_flatten.h>

#include <hv/bezier/internal/cubic_flattener.h>

#include <limits>
#include <new>

namespace {

constexpr unsigned int kNoLimit = std::numeric_limits<unsigned int>::max();

/// Appends to an array of points of type Element.
template <class Metric, class Element, class Array, unsigned int MaxDoublings>
class ArraySink {
public:
    static constexpr unsigned int kMaxDoublings = MaxDoublings;

    explicit ArraySink(Array& out) : out_(out) {}

    bool Misses(typename Metric::Point const*) const { return false; }
    void Expect(std::uint64_t points)
    {
        if (points > kHvArrayMaxCapacity) {
            throw std::bad_alloc();
        }
        out_.Reserve(HvArrayCapacity_GrownSize(out_.Size(), static_cast<unsigned int>(points)));
    }
    void Add(typename Metric::Point const& point) { out_.Add(Element(point)); }

private:
    Array& out_;
};

template <class Metric, unsigned int MaxDoublings, class Element, class Array>
unsigned int Flatten(Element const* cubic, double tolerance, Array& out, int skipFirst)
{
    using Point = typename Metric::Point;
    using Sink = ArraySink<Metric, Element, Array, MaxDoublings>;
    // Copies, since `cubic` may lie in the array that grows.
    Point const points[4] = {Point(cubic[0]), Point(cubic[1]), Point(cubic[2]), Point(cubic[3])};
    Element const last = cubic[3];
    unsigned int const before = out.Size();
    try {
        if (skipFirst == 0) {
            out.Add(cubic[0]);
        }
        Sink sink(out);
        HvCubicFlattener<Metric, Sink>(sink).Walk(points, tolerance);
        out.Add(last);
    } catch (...) {
        out.Chop(before);
        throw;
    }
    return out.Size() - before;
}

}  // namespace

unsigned int HvBezierTool_FlattenCubic2f(HvPoint2<float> const* cubic, double tolerance,
                                         HvPoint2fArray* out, int skipFirst)
{
    return Flatten<HvPlaneMetric, kNoLimit>(cubic, tolerance, *out, skipFirst);
}

unsigned int HvBezierTool_FlattenCubic2d(HvPoint2<double> const* cubic, double tolerance,
                                         HvPoint2dArray* out, int skipFirst)
{
    return Flatten<HvPlaneMetric, kHvPlaneMaxDoublings>(cubic, tolerance, *out, skipFirst);
}

unsigned int HvBezierTool_FlattenCubic3d(HvPoint3<double> const* cubic, double tolerance,
                                         HvPoint3dArray* out, int skipFirst)
{
    return Flatten<HvSpaceMetric, kNoLimit>(cubic, tolerance, *out, skipFirst);
}
