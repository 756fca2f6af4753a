// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Rotations: angles from quaternions and back, quaternion curves, transforms.

#include "SampleNumbers.h"
#include "families.h"

#include <hv/rotation/HvQuat.h>
#include <hv/rotation/HvQuatCurve.h>
#include <hv/rotation/HvTransfo4.h>

#include <memory>

namespace {

void AddPoint(HvPoint3<double> const& point, Digest& digest)
{
    digest.Add(point.x);
    digest.Add(point.y);
    digest.Add(point.z);
}

void AddAngles(unsigned int item, Digest& digest)
{
    SampleNumbers numbers(item);
    HvPoint3<double> const angles{numbers.In(-7, 7), numbers.In(-7, 7), numbers.In(-7, 7)};
    for (int order = 0; order < 6; ++order) {
        auto const rotOrder = static_cast<HvQuat::RotOrder>(order);
        HvPoint3<double> back;
        HvQuat(angles, rotOrder).Get(back, angles, rotOrder);
        AddPoint(back, digest);
    }
}

void AddTransforms(unsigned int item, Digest& digest)
{
    SampleNumbers numbers(item);
    HvTransfo4 transfo;
    transfo.Translate(HvPoint3<double>{numbers.In(-9, 9), numbers.In(-9, 9), numbers.In(-9, 9)});
    transfo.RotateXYZ({numbers.In(-400, 400), numbers.In(-400, 400), numbers.In(-400, 400)});
    HvPoint3<double> const factors{numbers.In(0.1, 3), numbers.In(0.1, 3), numbers.In(0.1, 3)};
    transfo.Scale(factors.x, factors.y, factors.z);
    HvPoint3<double> scale;
    HvPoint3<double> rotation;
    HvPoint3<double> translation;
    transfo.ExtractTransforms(scale, rotation, translation);
    AddPoint(scale, digest);
    AddPoint(rotation, digest);
    AddPoint(translation, digest);
}

}  // namespace

void AddRotationFamilies(Families& families)
{
    families.push_back({"rotation_angles", 500, AddAngles});
    families.push_back({"rotation_transforms", 500, AddTransforms});
    auto curve = std::make_shared<HvQuatCurve>();
    SampleNumbers numbers(4);
    for (int i = 0; i < 30; ++i) {
        HvPoint3<double> const angles{numbers.In(-4, 4), numbers.In(-4, 4), numbers.In(-4, 4)};
        HvPoint2<float> const tensionAndContinuity = numbers.PointIn(-1, 1);
        HvPoint2<float> const biasAndUnused = numbers.PointIn(-1, 1);
        auto const spins = static_cast<int>(numbers.Below(3));
        curve->SetKey(HvQuatKey(numbers.In(0, 50), angles, tensionAndContinuity.x,
                                tensionAndContinuity.y, biasAndUnused.x, spins),
                      1e-6);
    }
    families.push_back({"rotation_curve", 500, [curve](unsigned int item, Digest& digest) {
                            SampleNumbers times(item);
                            // Eval writes what the curve remembers: threads take turns.
                            curve->AcquireLock();
                            HvPoint3<double> const angles = curve->Eval(times.In(-60, 110));
                            curve->ReleaseLock();
                            AddPoint(angles, digest);
                        }});
}
