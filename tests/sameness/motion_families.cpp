// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Motion paths: places at times, edits as archives.

#include "SampleNumbers.h"
#include "families.h"

#include <hv/motionpath/HvMotionPath3d.h>

#include <memory>

namespace {

HvPoint3<double> PointOf(SampleNumbers& numbers)
{
    double const x = numbers.In(-100, 100);
    double const y = numbers.In(-100, 100);
    return {x, y, numbers.In(-100, 100)};
}

/// Straight and curved segments with every rule of timing; some smoothed afterwards.
std::shared_ptr<HvMotionPath3d> SampleMotion(std::uint64_t seed)
{
    SampleNumbers numbers(seed);
    auto path = std::make_shared<HvMotionPath3d>();
    path->Moveto(PointOf(numbers), 0);
    for (unsigned int i = 1; i < 12; ++i) {
        if (i % 3 == 0) {
            path->Lineto(PointOf(numbers), i);
        } else {
            HvPoint3<double> const c1 = PointOf(numbers);
            HvPoint3<double> const c2 = PointOf(numbers);
            path->Curveto(c1, c2, PointOf(numbers), i);
        }
        auto const info = static_cast<HvMotionPath3d::TangentInfo>(numbers.Below(5));
        path->SetRightTangentInfo(3 * (i - 1), info);
    }
    path->SmoothSegment(12);
    path->LockG1Continuity(3);
    path->TranslateControlPoint(4, {1, 2, 3}, 0);
    return path;
}

}  // namespace

void AddMotionFamilies(Families& families)
{
    auto paths = std::make_shared<std::vector<std::shared_ptr<HvMotionPath3d>>>();
    for (std::uint64_t seed = 0; seed < 10; ++seed) {
        paths->push_back(SampleMotion(seed));
    }
    families.push_back({"motion_places", 300, [paths](unsigned int item, Digest& digest) {
                            SampleNumbers numbers(item);
                            for (auto const& path : *paths) {
                                HvPoint3<double> place;
                                path->Eval(numbers.In(-1, 12), 0.01, place, 0);
                                digest.Add(place.x);
                                digest.Add(place.y);
                                digest.Add(place.z);
                            }
                        }});
    families.push_back({"motion_archives", 10, [paths](unsigned int item, Digest& digest) {
                            HvMotionPath3d const& path = *(*paths)[item];
                            std::vector<unsigned char> bytes(path.GetBufferSize());
                            digest.Add(std::uint64_t{path.WriteToBuffer(bytes.data())});
                            digest.AddBytes(bytes.data(), bytes.size());
                        }});
}
