// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path as the place where fitted curves are drawn.

#include <hv/shape/HvPath2fSink.h>

#include <hv/shape/HvPath2f.h>

void HvPath2fSink::Moveto(HvPoint2<float> const& p)
{
    path_.Moveto(p);
}

void HvPath2fSink::Lineto(HvPoint2<float> const& p)
{
    path_.Lineto(p);
}

void HvPath2fSink::Curveto(HvPoint2<float> const& c1, HvPoint2<float> const& c2,
                           HvPoint2<float> const& p)
{
    path_.Curveto(c1, c2, p);
}

int HvPath2fSink::Closeto()
{
    return path_.Closeto();
}
