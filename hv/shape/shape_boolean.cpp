// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Two shapes combined as pixels: one walk, and a test for each operator.

#include <hv/shape/shape_boolean.h>

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvShape2f.h>

#include <cstddef>

namespace {

/// What Fill sets, and what the combination sets.
constexpr unsigned char kFilled = 255;

/// Sets the pixels of `out` whose values in the fills of `a` and `b` pass `test`.
template <class Test>
void Combine(HvGC const& gc, HvShape2f const& a, HvShape2f const& b, HvUByteRaster& out, Test test)
{
    HvUByteRaster inA(out.width, out.height, 0);
    a.Fill(gc, inA, nullptr);
    HvUByteRaster inB(out.width, out.height, 0);
    b.Fill(gc, inB, nullptr);
    std::size_t const count = out.NumPixels();
    for (std::size_t i = 0; i < count; ++i) {
        if (test(inA.data[i], inB.data[i])) {
            out.data[i] = kFilled;
        }
    }
}

}  // namespace

void HvShape2f_IntersectionAB(HvGC const& gc, HvShape2f const* a, HvShape2f const* b,
                              HvUByteRaster& out)
{
    Combine(gc, *a, *b, out,
            [](unsigned char x, unsigned char y) { return x == kFilled && y == kFilled; });
}

void HvShape2f_DifferenceAB(HvGC const& gc, HvShape2f const* a, HvShape2f const* b,
                            HvUByteRaster& out)
{
    Combine(gc, *a, *b, out,
            [](unsigned char x, unsigned char y) { return x == kFilled && y == 0; });
}

void HvShape2f_UnionAB(HvGC const& gc, HvShape2f const* a, HvShape2f const* b, HvUByteRaster& out)
{
    Combine(gc, *a, *b, out,
            [](unsigned char x, unsigned char y) { return x == kFilled || y == kFilled; });
}
