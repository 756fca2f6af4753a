// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Walks along a polyline in even steps: a table of lengths is made once, and every question about
// the way is answered from it.

#include <hv/hv.h>

#include <cstdio>

int main()
{
    // A walk around three sides of a field, 30 by 40 metres.
    HvPoint2fArray walk;
    for (HvPoint2<float> const corner : {HvPoint2<float>(0, 0), HvPoint2<float>(30, 0),
                                         HvPoint2<float>(30, 40), HvPoint2<float>(0, 40)}) {
        walk.Add(corner);
    }

    // Entry i is the way from the first point to point i.
    HvDoubleArray lengths;
    HvPoint2fArray_ComputeChordLength(walk, 0, walk.Size() - 1, lengths);
    std::printf("%g metres in all\n", lengths[lengths.Size() - 1]);

    // The cursor never turns back, so that any number of targets costs one walk.
    HvPolylineCursor cursor(walk, lengths, 0, walk.Size() - 1);
    for (double const target : {15.0, 30.0, 50.0, 99.0}) {
        if (cursor.MoveTo(target)) {
            HvPoint2<float> const p = cursor.PointAt(target);
            std::printf("after %2g metres at (%g, %g)\n", target, double(p.x), double(p.y));
        }
    }

    // Posts about 12 metres apart: the way is divided into steps as near to that as they can be.
    HvPoint2fArray posts;
    HvPointTagArray tags;
    HvPoint2fArray_AppendEvenSamples(walk, lengths, 0, walk.Size() - 1, 12, false, posts, tags);
    std::printf("%u posts, %.2f metres apart:", posts.Size(),
                lengths[lengths.Size() - 1] / posts.Size());
    for (HvPoint2<float> const& p : posts) {
        std::printf(" (%.1f, %.1f)", double(p.x), double(p.y));
    }
    std::printf("\n");
}
