// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A drag of the curve stretcher, with what it answers at hand.

#ifndef HV_TESTS_FCURVE_STRETCH_DRAG_H
#define HV_TESTS_FCURVE_STRETCH_DRAG_H

#include "stretch_model.h"

#include <hv/fcurve/HvFCurveStretcher.h>
#include <hv/foundation/HvDoubleArray.h>

#include <vector>

constexpr HvBaseFCurve::RegionHandle kBottomHandle = HvBaseFCurve::BottomHandle;
constexpr HvBaseFCurve::RegionHandle kLeftHandle = HvBaseFCurve::LeftHandle;
constexpr HvBaseFCurve::RegionHandle kRightHandle = HvBaseFCurve::RightHandle;
constexpr HvBaseFCurve::RegionHandle kTopHandle = HvBaseFCurve::TopHandle;

class StretchDrag {
public:
    StretchDrag(HvBaseFCurve& curve, StretchArguments const& arguments)
        : arguments_(arguments), region(arguments.region),
          stretcher(curve, region, ListOf(arguments.listed), arguments.limits, arguments.pivot,
                    arguments.handle, arguments.ripple ? 1 : 0, arguments.minimalScale)
    {
    }

    /// Drags the side by `amount` from where it stood at the start.
    int To(double amount)
    {
        bool const horizontal =
            arguments_.handle == kLeftHandle || arguments_.handle == kRightHandle;
        translation = horizontal ? HvPoint2<double>(amount, 77) : HvPoint2<double>(77, amount);
        before.Chop(0);
        after.Chop(0);
        invalid = HvExtent2<double>();
        return stretcher.Update(translation, viewLeft, viewRight, before, after, invalid, region,
                                limited);
    }
    /// The part of the translation that counts.
    double Used() const { return translation.x != 0 ? translation.x : translation.y; }

private:
    static HvDoubleArray ListOf(std::vector<double> const& numbers)
    {
        HvDoubleArray list;
        for (double const x : numbers) {
            list.Add(x);
        }
        return list;
    }

    StretchArguments arguments_;

public:
    double viewLeft = -1000;
    double viewRight = 1000;
    HvPoint2<double> translation;
    HvDoubleArray before;
    HvDoubleArray after;
    HvExtent2<double> invalid;
    HvExtent2<double> region;
    int limited = -1;
    HvFCurveStretcher stretcher;
};

#endif
