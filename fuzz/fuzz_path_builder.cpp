// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any stroke, drawn in any order of calls with any tolerances, ends; the path is still one that can
// be asked, and a closed stroke is closed. The first byte chooses the builder, then come the
// numbers of the context and the fit, then calls, each a byte and a point. All numbers are read bit
// for bit.

#include <hv/foundation/HvMemory.h>
#include <hv/pathbuild/HvBezierFitPathBuilder.h>
#include <hv/pathbuild/HvCubicPathBuilder.h>
#include <hv/pathbuild/HvLinearPathBuilder.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace {

// A hostile spacing may ask for more samples than a machine holds: the library is then refused
// storage, as it would be by the machine.
int AtMostAMegabyte(std::size_t size)
{
    return size <= std::size_t{1} << 20 ? 1 : 0;
}

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

/// The bytes of an input, read as numbers; zeros behind their end.
class Input {
public:
    Input(std::uint8_t const* data, std::size_t size) : data_(data), size_(size) {}

    bool IsAtEnd() const { return size_ == 0; }

    template <class T>
    T Take()
    {
        T value{};
        std::size_t const count = std::min(size_, sizeof value);
        std::memcpy(&value, data_, count);
        data_ += count;
        size_ -= count;
        return value;
    }

private:
    std::uint8_t const* data_;
    std::size_t size_;
};

std::unique_ptr<HvBasePathBuilder> MakeBuilder(Input& input, HvGC const& gc, HvPath2f& path)
{
    std::uint8_t const kind = input.Take<std::uint8_t>();
    if (kind % 3 == 0) {
        return std::make_unique<HvLinearPathBuilder>(gc, &path);
    }
    if (kind % 3 == 1) {
        return std::make_unique<HvCubicPathBuilder>(gc, &path);
    }
    double const longStep = input.Take<float>();
    double const spacing = input.Take<float>();
    double const tolerance = input.Take<float>();
    return std::make_unique<HvBezierFitPathBuilder>(gc, &path, longStep, spacing, tolerance,
                                                    input.Take<std::uint8_t>());
}

void Call(HvBasePathBuilder& builder, std::uint8_t call, HvPoint2<float> const& p)
{
    switch (call % 16) {
    case 0:
        builder.StartSubpath(p);
        break;
    case 1:
        builder.EndSubpath(p, call / 16 % 2);
        break;
    case 2:
        builder.GetTrailingSamples();
        break;
    case 3:
        builder.AddInputPoint(p, 1);
        break;
    default:
        builder.AddInputPoint(p, 0);
    }
}

void Ask(HvPath2f const& path)
{
    unsigned int const count = path.NumPoints();
    Require(path.NumSubpaths() <= count && path.NumSegments() <= count);
    for (unsigned int i = 0; i < count; i += 7) {
        Require(path.StartOfSegment(i) <= i && path.EndOfSegment(i) < count);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    HvGC gc;
    gc.minPointGap = input.Take<float>();
    gc.flatness = input.Take<float>();
    gc.sampleSpacing = input.Take<float>();
    HvPath2f path(16u);
    std::unique_ptr<HvBasePathBuilder> const builder = MakeBuilder(input, gc, path);
    HvSetAllocationHook(AtMostAMegabyte);
    while (!input.IsAtEnd()) {
        std::uint8_t const call = input.Take<std::uint8_t>();
        float const x = input.Take<float>();
        float const y = input.Take<float>();
        try {
            Call(*builder, call, {x, y});
        } catch (std::bad_alloc const&) {
        }
        Ask(path);
    }
    HvSetAllocationHook(nullptr);
    return 0;
}
