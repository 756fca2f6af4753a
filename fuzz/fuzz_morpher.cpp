// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any two outlines with properties morph in all ways: nothing is read past an end, what is appended
// is a path again, and a refusal for want of memory leaves the output as it was.

#include <fuzz/fuzz_input.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/morph/HvMorpher.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvGC.h>

#include <cmath>
#include <initializer_list>
#include <new>

namespace {

constexpr std::size_t kMostBytes = 1u << 18;  // of one allocation: fits of more samples are slow
constexpr int kMostPoints = 24;

int AllowSmall(std::size_t size)
{
    return size <= kMostBytes ? 1 : 0;
}

HvPath2fProp1d Outline(FuzzInput& input)
{
    HvPath2fProp1d path(0u);
    int const points = input.Next() % kMostPoints;
    for (int i = 0; i < points; ++i) {
        int const kind = input.Next() % 8;
        HvPoint2<float> const p = input.Point();
        if (kind == 0 || path.NumPoints() == 0) {
            path.Moveto(p);
        } else if (kind == 1) {
            path.CloseSubpath(path.NumPoints() - 1);
        } else if (kind == 2) {
            HvPoint2<float> const c = input.Point();
            path.Curveto(c, input.Point(), p);
        } else if (kind == 3) {
            HvPoint2dArray values;
            values.Add({0.0, input.Next() * 0.5});
            values.Add({input.Next() * 1.0, input.Next() * 0.5});
            path.SetPropCurve(path.NumPoints() - 1, values, 0.1);
        } else {
            path.Lineto(p);
        }
    }
    return path;
}

void Morph(FuzzInput& input)
{
    HvPath2fProp1d const first = Outline(input);
    HvPath2fProp1d const second = Outline(input);
    HvPath2fProp1d const road = Outline(input);
    double const spacings[] = {1.0, 0.5, 8.0, 0.01, 0.0, -1.0, 1e30, std::nan("")};
    double const times[] = {0.5, 0.0, 1.0, -1.0, 2.0, 0.25, 1e30, std::nan("")};
    HvGC gc;
    gc.minPointGap = spacings[input.Next() % 8];
    gc.propFlatness = spacings[input.Next() % 8];
    double const t = times[input.Next() % 8];
    HvMorpher morpher(&first, &second, gc);
    for (int i = 0; i < 2; ++i) {
        auto const from = static_cast<unsigned int>(input.Next() % 32);
        auto const to = static_cast<unsigned int>(input.Next() % 32);
        morpher.SetMotionPath(from, to, input.Next() % 2 == 0 ? nullptr : &road);
    }
    using Way = int (HvMorpher::*)(double, HvPath2fProp1d&) const;
    for (Way const way :
         {&HvMorpher::LinearMorph, &HvMorpher::TurtleMorph, &HvMorpher::LinearMotionPathMorph}) {
        HvPath2fProp1d out(0u);
        try {
            (morpher.*way)(t, out);
        } catch (std::bad_alloc const&) {
            FuzzRequire(out.NumPoints() == 0);
        }
        FuzzRequire(out.NumPoints() == 0 || out.IsStartOfSubpath(0) != 0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    HvSetAllocationHook(&AllowSmall);
    try {
        Morph(input);
    } catch (std::bad_alloc const&) {
        // Drawing itself may find no memory.
    }
    HvSetAllocationHook(nullptr);
    return 0;
}
