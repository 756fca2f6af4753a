// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any edits of a path with a property: each curve follows its own subpath, what the path gives as
// points it gives with as many tags and values, and its archive reads back as the same bytes.

#include <fuzz/fuzz_input.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/byte_codec.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvGC.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace {

constexpr std::size_t kMostBytes = 1u << 16;  // of one allocation: more samples are only slow
constexpr unsigned int kMostPoints = 64;      // inputs explore orders of edits, not sizes
constexpr double kMostValue = 64;             // of a property, and so many edits

int AllowSmall(std::size_t size)
{
    return size <= kMostBytes ? 1 : 0;
}

// The value at the start of each subpath, in order, which tells the curves of a run apart; -1 where
// there is none.
using Owners = std::vector<double>;

Owners OwnersOf(HvPath2fProp1d const& path)
{
    Owners owners;
    for (unsigned int i = 0; i < path.NumPoints(); ++i) {
        if (path.IsStartOfSubpath(i) != 0) {
            owners.push_back(path.HasPropCurve(i) != 0 ? path.EvalPropCurve(i, 0) : -1.0);
        }
    }
    return owners;
}

// The subpath that an edit was about may be gone, still be there, or be there in two parts that
// both have its curve; the others are as they were.
void RequireSameBut(Owners const& before, std::size_t edited, Owners const& after)
{
    FuzzRequire(after.size() + 1 >= before.size() && after.size() <= before.size() + 1);
    Owners expected(before);
    auto const place = expected.begin() + static_cast<std::ptrdiff_t>(edited);
    if (after.size() < before.size()) {
        expected.erase(place);
    } else if (after.size() > before.size()) {
        expected.insert(place, before[edited]);
    }
    FuzzRequire(after == expected);
}

std::size_t SubpathOf(HvPath2fProp1d const& path, unsigned int point)
{
    std::size_t starts = 0;
    for (unsigned int i = 0; i <= point; ++i) {
        starts += path.IsStartOfSubpath(i) != 0 ? 1u : 0u;
    }
    return starts - 1;
}

void Draw(FuzzInput& input, HvPath2fProp1d& path, double value)
{
    path.Moveto(input.Point());
    unsigned int const start = path.NumPoints() - 1;
    for (int count = input.Next() % 6; count > 0; --count) {
        HvPoint2<float> const p = input.Point();
        if (input.Next() % 2 == 0) {
            path.Lineto(p);
        } else {
            HvPoint2<float> const q = input.Point();
            path.Curveto(p, q, input.Point());
        }
    }
    if (input.Next() % 2 != 0) {
        path.CloseSubpath(start);
    }
    HvPoint2dArray curve;
    for (int count = input.Next() % 4; count > 0; --count) {
        curve.Add({curve.Size() * 8.0, curve.Size() == 0 ? value : input.Next() * 0.25});
    }
    path.SetPropCurve(start, curve, 0.1);
}

// Puts other lines in place of a section.
int Replace(FuzzInput& input, HvPath2fProp1d& path, unsigned int first, unsigned int last)
{
    HvPath2f lines(0u);
    lines.Moveto(path.GetPoint(first));
    for (int count = input.Next() % 4; count > 0; --count) {
        lines.Lineto(input.Point());
    }
    lines.Lineto(path.GetPoint(last));
    return path.ReplaceSubpathSection(first, last, lines, 0, lines.NumPoints() - 1);
}

// One edit, of those after which the curves follow; a curve that is drawn begins at `value`.
void Edit(FuzzInput& input, HvPath2fProp1d& path, double value)
{
    int const kind = input.Next() % 6;
    unsigned int const count = path.NumPoints();
    if (count == 0 || (kind < 2 && count < kMostPoints)) {
        return Draw(input, path, value);
    }
    unsigned int const a = static_cast<unsigned int>(input.Next()) % count;
    unsigned int const b = static_cast<unsigned int>(input.Next()) % count;
    Owners before = OwnersOf(path);
    std::size_t const edited = SubpathOf(path, a);
    if (kind == 2) {
        FuzzRequire(path.RemoveSubpath(a) == 1 && OwnersOf(path).size() + 1 == before.size());
    } else if (kind == 3) {
        path.RemoveSubpathSection(a, b);
    } else if (kind == 4) {
        Replace(input, path, a, b);
        FuzzRequire(OwnersOf(path).size() == before.size());
    } else {
        path.SetPropCurve(a, b);
        double const owner = before[SubpathOf(path, b)];
        before[edited] = owner < 0 ? before[edited] : owner;
    }
    RequireSameBut(before, edited, OwnersOf(path));
}

void RequirePoints(FuzzInput const& input, HvPath2fProp1d const& path, HvGC const& gc)
{
    using Way = unsigned int (HvPath2fProp1d::*)(HvGC const&, HvPoint2fArray&, HvPointTagArray&,
                                                 HvDoubleArray&) const;
    Way const ways[] = {&HvPath2fProp1d::Flatten, &HvPath2fProp1d::Sample,
                        &HvPath2fProp1d::PropertySample};
    for (Way const way : ways) {
        HvPoint2fArray points;
        HvPointTagArray tags;
        HvDoubleArray values;
        unsigned int const count = (path.*way)(gc, points, tags, values);
        FuzzRequire(points.Size() == count && tags.Size() == count && values.Size() == count);
        for (double const value : values) {
            // A polyline does not leave the values of its keys.
            FuzzRequire(!input.IsTame() || (value >= 0 && value <= kMostValue));
        }
        FuzzRequire(count == 0 || (tags[0] == HvPointTagStart && tags[count - 1] == HvPointTagEnd));
    }
}

void RequireReadable(HvPath2fProp1d const& path)
{
    std::vector<unsigned char> archive(path.GetBufferSize());
    FuzzRequire(path.WriteToBuffer(archive.data()) == archive.size());
    HvByteReader body(archive.data() + 4, archive.size() - 4);
    HvPath2fProp1d again(0u);
    FuzzRequire(again.ReadArchiveBody(body) != 0 && body.Left() == 0);
    std::vector<unsigned char> second(again.GetBufferSize());
    FuzzRequire(again.WriteToBuffer(second.data()) == second.size() && second == archive);
    FuzzRequire(OwnersOf(again) == OwnersOf(path));
}

void Run(FuzzInput& input)
{
    double const gaps[] = {0.5, 4.0, 0.01, 0.0, -1.0, 1e30, std::nan("")};
    HvGC gc;
    gc.sampleSpacing = gaps[input.Next() % 7];
    gc.minPointGap = gaps[input.Next() % 7];
    gc.propFlatness = gaps[input.Next() % 7];
    HvPath2fProp1d path(0u);
    for (double value = 1; value <= kMostValue && !input.Empty(); ++value) {
        Edit(input, path, value);
        RequireReadable(path);
    }
    RequirePoints(input, path, gc);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    HvSetAllocationHook(&AllowSmall);
    try {
        Run(input);
    } catch (std::bad_alloc const&) {
        // So many samples were asked for that there is no memory.
    }
    HvSetAllocationHook(nullptr);
    return 0;
}
