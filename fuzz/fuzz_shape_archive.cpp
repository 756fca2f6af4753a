// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any bytes, read as the archive of a shape, are refused, or give a shape that writes itself and
// reads back as the same bytes. One with a property can be flattened, sampled and edited so that
// every curve still belongs to a subpath.

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/pathbuild/HvShapeFactory.h>
#include <hv/shape/HvGC.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using Shape = std::unique_ptr<HvShape2f>;

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

Shape Read(std::uint8_t const* data, std::size_t size)
{
    HvShape2f* shape = nullptr;
    HvArchiveFault fault;
    unsigned int const used = HvShape2f_CreateFromBuffer(data, size, &shape, fault);
    Require((used != 0) == (shape != nullptr));
    Require(data == nullptr || (used == 0) == (fault.reason != nullptr));
    Require(used <= size && fault.place <= size);
    return Shape(shape);
}

void RequireReadable(HvShape2f const& shape)
{
    std::vector<unsigned char> written(shape.GetBufferSize());
    Require(shape.WriteToBuffer(written.data()) == written.size());
    Shape const again = Read(written.data(), written.size());
    Require(again != nullptr);
    std::vector<unsigned char> second(again->GetBufferSize());
    again->WriteToBuffer(second.data());
    Require(second == written);
}

// What draws a path, and puts it between others. Samples of a path of hostile size would be more
// than there is memory for.
void Draw(HvPath2fProp1d const& path)
{
    HvGC gc;
    HvExtent2<float> extent;
    path.GetExtent(extent);
    float const side = extent.max.x - extent.min.x + extent.max.y - extent.min.y;
    if (!(side < 1e4F)) {
        return;
    }
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvDoubleArray values;
    path.Flatten(gc, points, tags, values);
    path.Sample(gc, points, tags, values);
    path.PropertySample(gc, points, tags, values);
    Require(points.Size() == tags.Size() && points.Size() == values.Size());
    HvPath2fProp1d between(0u);
    between.SetToLerpAB(path, path, 0.5, 10.0, 0.1);
    Require(between.IsSiblingOf(path) == 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Shape const shape = Read(data, size);
    if (shape == nullptr) {
        return 0;
    }
    RequireReadable(*shape);
    if (shape->QueryShapeKind(HvShape2f::PathProp1d) == nullptr) {
        return 0;
    }
    auto& path = static_cast<HvPath2fProp1d&>(*shape);
    Draw(path);
    for (unsigned int i = 0; i < path.NumPoints(); i += 3) {
        unsigned int first = 0;
        unsigned int last = 0;
        path.GetSubpathIndices(i, first, last);
        path.RemoveSubpathSection(path.StartOfSegment(i), last);
        RequireReadable(path);
        path.SetPropCurve(i % path.NumPoints(), first);
        path.RemoveSubpathSection(first, path.EndOfSegment(i % path.NumPoints()));
        RequireReadable(path);
    }
    while (path.RemoveSubpath(path.NumPoints() / 2) != 0) {
        RequireReadable(path);
    }
    return 0;
}
