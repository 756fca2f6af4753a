// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a drag changes outside the keys: the extrapolated curve up to the edges of the view.

#ifndef HV_FCURVE_INTERNAL_DRAG_EDGES_H
#define HV_FCURVE_INTERNAL_DRAG_EDGES_H

#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/fcurve/internal/HvQuatFCurveImpl.h>
#include <hv/foundation/HvExtent2.h>

#include <cmath>

/// Augments by a point of which a coordinate may be no number.
inline void HvDragEdges_Add(double x, double y, HvExtent2<double>& extent)
{
    if (!std::isnan(x) && !std::isnan(y)) {
        extent.Augment({x, y});
    }
}

/// The number of whole cycles from the key range to the one that holds x, negative to the left.
inline double HvDragEdges_CycleOf(double x, double first, double last)
{
    double const cycles = (x - first) / (last - first);
    return std::isfinite(cycles) ? std::floor(cycles) : cycles;
}

/// Augments by what the curve shows between its keys and the edges of the view: on the sides asked
/// for, under a cycling method always on both, because what happens inside is seen there too. To be
/// called before the first change of a step and after the last. An edge that is NaN is skipped.
template <class Impl>
void HvDragEdges_Augment(Impl const& impl, double viewLeft, double viewRight, bool left, bool right,
                         HvExtent2<double>& extent)
{
    if (impl.NumKeys() == 0) {
        return;
    }
    double const first = impl.FirstParameter();
    double const last = impl.LastParameter();
    if (impl.Cycles()) {
        HvExtent2<double> keys;
        impl.ComputeAllKeysExtent(keys);
        bool const rises = impl.extrapolation == HvBaseFCurve::RelativeCycleExtrapolation;
        // A jump at the first key makes what is drawn rise otherwise than what is evaluated.
        double const drawn = rises ? impl.CycleOffset() : 0;
        double const evaluated = rises
                                     ? static_cast<double>(impl.RightValueOf(impl.NumKeys() - 1)) -
                                           static_cast<double>(impl.RightValueOf(0))
                                     : 0;
        for (double const edge : {viewLeft, viewRight}) {
            double const cycle = rises ? HvDragEdges_CycleOf(edge, first, last) : 0;
            for (double const offset : {drawn, evaluated}) {
                HvDragEdges_Add(edge, keys.min.y + cycle * offset, extent);
                HvDragEdges_Add(edge, keys.max.y + cycle * offset, extent);
            }
        }
        return;
    }
    bool const isLinear = impl.extrapolation == HvBaseFCurve::LinearExtrapolation;
    if (left) {
        double const held = static_cast<double>(impl.LeftValueOf(0));
        HvDragEdges_Add(
            viewLeft,
            isLinear ? static_cast<double>(impl.EvalRightUsingExtrapolationMethod(viewLeft)) : held,
            extent);
    }
    if (right) {
        double const held = static_cast<double>(impl.RightValueOf(impl.NumKeys() - 1));
        HvDragEdges_Add(viewRight,
                        isLinear
                            ? static_cast<double>(impl.EvalRightUsingExtrapolationMethod(viewRight))
                            : held,
                        extent);
    }
}

/// The same of a rotation. Outside the keys its angle stays near that of the end key whatever it
/// does there, so it never rises; a constant one is that of the key.
inline void HvDragEdges_Augment(HvQuatFCurveImpl const& impl, double viewLeft, double viewRight,
                                bool left, bool right, HvExtent2<double>& extent)
{
    if (impl.NumKeys() == 0) {
        return;
    }
    bool const isConstant =
        impl.NumKeys() == 1 || impl.Method() == HvBaseFCurve::ConstantExtrapolation;
    double const margin = isConstant ? 0 : HvQuatFCurveImpl::kExtentMarginDegrees;
    if (left || impl.Cycles()) {
        double const value = impl.RightValueOf(0);
        HvDragEdges_Add(viewLeft, value - margin, extent);
        HvDragEdges_Add(viewLeft, value + margin, extent);
    }
    if (right || impl.Cycles()) {
        double const value = impl.RightValueOf(impl.NumKeys() - 1);
        HvDragEdges_Add(viewRight, value - margin, extent);
        HvDragEdges_Add(viewRight, value + margin, extent);
    }
}

#endif
