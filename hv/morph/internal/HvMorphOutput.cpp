// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where a morph puts what it makes.

#include <hv/morph/internal/HvMorphOutput.h>

#include <hv/morph/HvMorpherImpl.h>
#include <hv/shape/HvGC.h>

unsigned int HvMorphOutput::AppendFit(HvPoint2fArray const& line, bool isClosed)
{
    unsigned int const subpath = path.NumPoints();
    if (isClosed) {
        tool_.ClosedFit(line, gc_.cornerCosSquared, 3, gc_.minPointGap, 0, sink_);
    } else {
        tool_.OpenFit(line, gc_.cornerCosSquared, 3, gc_.minPointGap, 0, sink_, 0);
    }
    return subpath;
}

void HvMorphOutput_AppendOpen(HvMorpherImpl const& morph, double t, HvPoint2fArray const& line,
                              unsigned int steps, HvPath2fProp1d& out)
{
    HvMorphOutput output(out, *morph.gc);
    unsigned int const subpath = output.AppendFit(line, false);
    if (output.Has(subpath)) {
        morph.SetThePropertyCurve(t, output.path, steps, 0, 0, subpath);
        output.Finish();
    }
}
