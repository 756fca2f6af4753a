// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Copying two curves.

#include <hv/control/internal/HvCurvePair.h>

#include <hv/fcurve/HvCurveLock.h>

#include <functional>
#include <utility>

struct HvCurvePair::Copies {
    Copies(HvBaseFCurve const& controllerSource, HvBaseFCurve const& drivenSource)
    {
        bool const isControllerFirst =
            std::less<HvBaseFCurve const*>()(&controllerSource, &drivenSource);
        HvAccessLock const access;
        HvCurveLock const firstLock(isControllerFirst ? controllerSource : drivenSource);
        HvCurveLock const secondLock(isControllerFirst ? drivenSource : controllerSource);
        controller.reset(controllerSource.Clone());
        driven.reset(drivenSource.Clone());
    }

    std::unique_ptr<HvBaseFCurve> controller;
    std::unique_ptr<HvBaseFCurve> driven;
};

HvCurvePair::HvCurvePair(HvBaseFCurve const& controller, HvBaseFCurve const& driven)
    : HvCurvePair(Copies(controller, driven))
{
}

HvCurvePair::HvCurvePair(Copies copies)
    : controller_(std::move(copies.controller)), driven_(std::move(copies.driven))
{
}
