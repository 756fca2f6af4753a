// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path as the place where fitted curves are drawn.

#ifndef HV_SHAPE_HVPATH2FSINK_H
#define HV_SHAPE_HVPATH2FSINK_H

#include <hv/bezier/HvBezierSink.h>

class HvPath2f;

/// Appends what a fit draws to a path, which must outlive the sink. Each operation locks the path
/// for itself: a caller that wants the whole fit in one piece holds the path meanwhile.
class HV_API HvPath2fSink : public HvBezierSink {
public:
    /// Draws into `path`.
    explicit HvPath2fSink(HvPath2f& path) : path_(path) {}

    void Moveto(HvPoint2<float> const& p) override;
    void Lineto(HvPoint2<float> const& p) override;
    void Curveto(HvPoint2<float> const& c1, HvPoint2<float> const& c2,
                 HvPoint2<float> const& p) override;
    int Closeto() override;

private:
    HvPath2f& path_;
};

#endif
