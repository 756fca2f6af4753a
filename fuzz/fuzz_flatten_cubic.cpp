// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any eight coordinates and any tolerance flatten to an end, keep the curve's own ends, and clip to
// what lies in the rectangle. The input is read as numbers bit for bit, so NaN, infinities and
// denormals all come up.

#include <hv/bezier/HvBezierTool_clip.h>
#include <hv/bezier/HvBezierTool_flatten.h>
#include <hv/foundation/HvMemory.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// A hostile tolerance may ask for more points than a machine holds: the library is then refused
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

bool SameBits(HvPoint2<double> const& a, HvPoint2<double> const& b)
{
    return std::memcmp(&a.x, &b.x, sizeof a.x) == 0 && std::memcmp(&a.y, &b.y, sizeof a.y) == 0;
}

void Flatten(HvPoint2<double> const* cubic, double tolerance)
{
    HvPoint2dArray points;
    unsigned int const count = HvBezierTool_FlattenCubic2d(cubic, tolerance, &points, 0);
    Require(count == points.Size() && count > 0);
    Require(SameBits(points[0], cubic[0]));
    Require(count == 1 || SameBits(points[count - 1], cubic[3]));
}

void Clip(HvPoint2<double> const* cubic, double tolerance)
{
    // A rectangle over two of the control points: what lies in it is seldom all or nothing.
    HvExtent2<double> clip;
    clip.Augment(cubic[0]);
    clip.Augment(cubic[2]);
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    HvBezierTool_ClipAndFlattenCubic2d(cubic, tolerance, clip, &points, &tags, &flags);
    Require(points.Size() == tags.Size() && points.Size() == flags.Size());
    Require(tags.Size() == 0 || tags[0] == HvPointTagStart);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    double numbers[9] = {};
    std::memcpy(numbers, data, std::min(size, sizeof numbers));
    HvPoint2<double> const cubic[4] = {{numbers[0], numbers[1]},
                                       {numbers[2], numbers[3]},
                                       {numbers[4], numbers[5]},
                                       {numbers[6], numbers[7]}};
    HvSetAllocationHook(AtMostAMegabyte);
    for (auto operation : {Flatten, Clip}) {
        try {
            operation(cubic, numbers[8]);
        } catch (std::bad_alloc const&) {
        }
    }
    HvSetAllocationHook(nullptr);
    return 0;
}
