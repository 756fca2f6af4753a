// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves as a fit makes them, drawn into a picture.

#ifndef EXAMPLES_SUPPORT_FITSINK_H
#define EXAMPLES_SUPPORT_FITSINK_H

#include "SvgPage.h"

/// Draws what it is told into a page, with a ring wherever two curves join.
class FitSink : public HvBezierSink {
public:
    explicit FitSink(SvgPage& page) : page_(page) {}

    /// Begins a path.
    void Begin(char const* colour);
    /// Ends it; returns the number of curves.
    unsigned int End();

    void Moveto(HvPoint2<float> const& p) override;
    void Lineto(HvPoint2<float> const& p) override { Curveto(p, p, p); }
    void Curveto(HvPoint2<float> const& c1, HvPoint2<float> const& c2,
                 HvPoint2<float> const& p) override;
    int Closeto() override;

private:
    SvgPage& page_;
    char const* colour_ = "";
    HvPoint2fArray joints_;
};

/// Draws points as grey dots.
void DrawPoints(SvgPage& page, HvPoint2fArray const& points, double radius);

#endif
