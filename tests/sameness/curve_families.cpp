// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Function curves: edits, evaluation, flattening, archives, composed curves.

#include "SampleNumbers.h"
#include "families.h"

#include <hv/bezier/HvFlattenedRuns.h>
#include <hv/control/HvControlOperator.h>
#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/HvStdTgtMover.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>

#include <memory>

namespace {

constexpr unsigned int kCurves = 24;
constexpr unsigned int kKeys = 40;

using Curve = std::shared_ptr<HvBaseFCurve>;

/// Keys of all kinds of segments, with handles drawn out and with a constraint here and there.
Curve StandardCurve(std::uint64_t seed)
{
    SampleNumbers numbers(seed);
    auto curve = std::make_shared<HvStdFCurve>(numbers.In(-10, 10), HvBaseFCurve::CubicSegment);
    for (unsigned int i = 0; i < kKeys; ++i) {
        double const x = numbers.In(0, 100);
        auto const left = static_cast<HvBaseFCurve::FSKind>(1 + numbers.Below(3));
        auto const right = static_cast<HvBaseFCurve::FSKind>(1 + numbers.Below(3));
        curve->CreateKey(x, numbers.In(-50, 50), left, right);
        HvPoint2<double> const handle{numbers.In(0, 2), numbers.In(-20, 20)};
        curve->SetKeyTgtHandle(x, HvBaseFCurve::Right, handle, 1e-9);
        double place = x;
        curve->SetConstraint(place, static_cast<HvBaseFCurve::KeyConstraint>(numbers.Below(12)), 1,
                             1e-9);
    }
    return curve;
}

/// Of any kind of curve that is made of numbers: all edits that every kind has.
Curve EditedCurve(unsigned int item)
{
    SampleNumbers numbers(item);
    Curve curve;
    switch (item % 4) {
    case 0:
        curve = std::make_shared<HvBooleanFCurve>(0);
        break;
    case 1:
        curve = std::make_shared<HvIntegerFCurve>(3.0);
        break;
    case 2:
        curve = std::make_shared<HvRawFCurve>(0.5);
        break;
    default:
        curve = StandardCurve(item);
        break;
    }
    for (unsigned int i = 0; i < kKeys; ++i) {
        double const x = numbers.In(0, 100);
        curve->CreateKey(x, numbers.In(-50, 50));
    }
    curve->RemoveKeys(20.25, 30.5, 0, 1);
    curve->ShiftParameters(numbers.In(-5, 5));
    curve->ScaleParameterAxis(1.1);
    curve->ScaleAndShiftValues(-1.7, 0.3);
    curve->ScaleAndOffsetParameters(40, 60, 50, 0.7, 0.25, 1, 1, HvBaseFCurve::RightHandle, 0);
    curve->SetExtrapolationMethod(
        static_cast<HvBaseFCurve::ExtrapolationMethod>(1 + numbers.Below(4)));
    return curve;
}

void AddArchive(HvBaseFCurve const& curve, Digest& digest)
{
    std::vector<unsigned char> bytes(curve.GetBufferSize());
    digest.Add(std::uint64_t{curve.WriteToBuffer(bytes.data())});
    digest.AddBytes(bytes.data(), bytes.size());
}

void AddFlattened(HvBaseFCurve const& curve, Digest& digest)
{
    HvTransfo4 transfo;
    transfo.Scale(7.5, 1.25, 1.0);
    HvPoint2dArray points;
    HvPointTagArray tags;
    digest.Add(std::uint64_t{curve.Flatten(transfo, 0.25, points, tags, 1)});
    digest.AddAll(points);
}

/// Drags of a handle, which turn and scale it.
void AddDraggedHandles(unsigned int item, Digest& digest)
{
    Curve const curve = StandardCurve(item);
    auto* const standard = static_cast<HvStdFCurve*>(curve.get());
    SampleNumbers numbers(item + 1000);
    for (unsigned int i = 0; i < 10; ++i) {
        double x = 0;
        standard->GetKeyParameter(numbers.Below(standard->GetNumKeys()), x);
        HvPoint2<double> const left{numbers.In(-3, 0), numbers.In(-9, 9)};
        HvPoint2<double> const right{numbers.In(0, 3), numbers.In(-9, 9)};
        digest.Add(std::uint64_t{standard->SetKeyTgtHandles(x, left, right, 1e-9) != 0});
    }
    AddArchive(*standard, digest);
}

}  // namespace

void AddCurveFamilies(Families& families)
{
    auto curves = std::make_shared<std::vector<Curve>>();
    for (unsigned int i = 0; i < kCurves; ++i) {
        curves->push_back(EditedCurve(i));
    }
    families.push_back({"curve_archives", kCurves, [curves](unsigned int item, Digest& digest) {
                            AddArchive(*(*curves)[item], digest);
                        }});
    families.push_back({"curve_evaluation", 400, [curves](unsigned int item, Digest& digest) {
                            SampleNumbers numbers(item);
                            for (Curve const& curve : *curves) {
                                digest.Add(curve->Eval(numbers.In(-150, 250), 1));
                            }
                        }});
    families.push_back({"curve_flattening", kCurves, [curves](unsigned int item, Digest& digest) {
                            AddFlattened(*(*curves)[item], digest);
                        }});
    families.push_back({"curve_handles", kCurves, AddDraggedHandles});
    families.push_back({"curve_composition", kCurves / 4, [](unsigned int item, Digest& digest) {
                            Curve const controller = StandardCurve(item);
                            Curve const driven = StandardCurve(item + 500);
                            std::unique_ptr<HvStdFCurve> const composed(
                                HvControlOperator::Compose(*controller, *driven, 10.0, 30.0, 0.05));
                            AddArchive(*composed, digest);
                        }});
}
