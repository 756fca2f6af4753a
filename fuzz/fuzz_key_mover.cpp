// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Keys of any curve, dragged anywhere, and stretches of them scaled: after every step the keys
// ascend.

#include <fuzz/fuzz_input.h>
#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvFCurveKeyMover.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvExtent2.h>

#include <initializer_list>
#include <memory>

namespace {

constexpr int kMostKeys = 24;
constexpr int kMostSteps = 24;

std::unique_ptr<HvBaseFCurve> CurveOf(FuzzInput& input)
{
    switch (input.Next() % 5) {
    case 0:
        return std::make_unique<HvBooleanFCurve>(0.0);
    case 1:
        return std::make_unique<HvIntegerFCurve>(1.0);
    case 2:
        return std::make_unique<HvRawFCurve>(1.0);
    case 3:
        return std::make_unique<HvQuatFCurve>(1u);
    default:
        return std::make_unique<HvStdFCurve>(1.0, HvBaseFCurve::CubicSegment);
    }
}

void GiveKeys(HvBaseFCurve& curve, FuzzInput& input)
{
    int const keys = input.Next() % kMostKeys;
    for (int i = 0; i < keys; ++i) {
        double const x = input.Coordinate();
        curve.CreateKey(x, input.Coordinate());
        double place = x;
        int const kind = input.Next();
        if (kind % 4 == 0) {
            curve.SetConstraint(place, static_cast<HvBaseFCurve::KeyConstraint>(kind / 4 % 16), 1,
                                1e-9);
        }
    }
    curve.SetExtrapolationMethod(
        static_cast<HvBaseFCurve::ExtrapolationMethod>(1 + input.Next() % 4));
}

void RequireAscending(HvBaseFCurve const& curve)
{
    HvDoubleArray parameters;
    curve.GetAllKeyParameters(parameters);
    for (unsigned int i = 1; i < parameters.Size(); ++i) {
        FuzzRequire(parameters[i - 1] < parameters[i]);
    }
}

// The parameters of some of the keys, and of what is no key.
HvDoubleArray Chosen(HvBaseFCurve const& curve, FuzzInput& input)
{
    HvDoubleArray all;
    curve.GetAllKeyParameters(all);
    HvDoubleArray chosen;
    for (double const parameter : all) {
        if (input.Next() % 3 == 0) {
            chosen.Add(parameter);
        }
    }
    if (input.Next() % 8 == 0) {
        chosen.Add(input.Coordinate());
    }
    return chosen;
}

void Drag(HvBaseFCurve& curve, FuzzInput& input)
{
    HvDoubleArray parameters = Chosen(curve, input);
    HvExtent2<double> const limits(-1000, -1000, 1000, 1000);
    HvFCurveKeyMover mover(curve, parameters, limits, limits);
    int const steps = input.Next() % kMostSteps;
    for (int i = 0; i < steps; ++i) {
        HvPoint2<double> offset{input.Coordinate(), input.Coordinate()};
        HvExtent2<double> invalid;
        HvExtent2<double> moved;
        mover.Update(offset, parameters, invalid, moved, -500, 500);
        RequireAscending(curve);
    }
    mover.Finalize();
    RequireAscending(curve);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    std::unique_ptr<HvBaseFCurve> const curve = CurveOf(input);
    GiveKeys(*curve, input);
    for (int i = 0; i < 3 && !input.Empty(); ++i) {
        Drag(*curve, input);
        double const from = input.Coordinate();
        double const to = input.Coordinate();
        double const scale = input.Coordinate();
        curve->ScaleAndOffsetParameters(from, to, input.Coordinate(), scale, input.Coordinate(),
                                        input.Next() % 2, input.Next() % 2,
                                        HvBaseFCurve::RightHandle, 0);
        RequireAscending(*curve);
    }
    return 0;
}
