// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Plays a recorded drag on a curve and checks after each mouse step what holds for every tool.

#ifndef TESTS_SUPPORT_DRAG_REPLAY_H
#define TESTS_SUPPORT_DRAG_REPLAY_H

#include "drawn_curve.h"

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2.h>

#include <cmath>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// The mouse steps of a drag: each the whole translation since its start.
using DragSteps = std::vector<HvPoint2<double>>;

/// A curve under a tool. `Check` compares what is there with what was there at the last check, or
/// at construction, and gives the first thing that does not hold as a sentence, or nothing:
///
///  - keys stand in rising order, and every cubic segment runs forward;
///  - a key of locked parameter stands where it stood, and if its value is locked too, it has it;
///  - where the values of the curve in the view have changed, old and new lie in `invalid`, and
///  what
///    is drawn outside is the same.
///
///     DragReplay replay(curve, viewLeft, viewRight);
///     std::string const fault = replay.Play(steps, [&](HvPoint2<double> t, auto& invalid) {
///         return mover.Update(t, parameters, invalid, moved, viewLeft, viewRight);
///     });
class DragReplay {
public:
    DragReplay(HvBaseFCurve const& curve, double viewLeft, double viewRight)
        : curve_(curve), left_(viewLeft), right_(viewRight), locked_(LockedKeys()),
          seen_(Picture()), drawn_(curve, viewLeft, viewRight)
    {
    }

    /// Takes each step by `update(translation, invalid)`; the first fault, or nothing.
    template <class Update>
    std::string Play(DragSteps const& steps, Update update)
    {
        for (std::size_t k = 0; k < steps.size(); ++k) {
            HvExtent2<double> invalid;
            update(steps[k], invalid);
            std::string const fault = Check(invalid);
            if (!fault.empty()) {
                std::ostringstream text;
                text << "step " << k << ", to (" << steps[k].x << ", " << steps[k].y
                     << "): " << fault;
                return text.str();
            }
        }
        return std::string();
    }

    std::string Check(HvExtent2<double> const& invalid)
    {
        std::string fault = OrderFault();
        fault = fault.empty() ? SegmentFault() : fault;
        fault = fault.empty() ? LockFault() : fault;
        HvExtent2<double> wider = invalid;
        wider.min = wider.min - HvPoint2<double>(kSlack, kSlack);
        wider.max = wider.max + HvPoint2<double>(kSlack, kSlack);
        fault = fault.empty() ? ValueFault(wider) : fault;
        fault = fault.empty() ? DrawingFault(wider) : fault;
        return fault;
    }

private:
    /// Samples of a picture, off any grid that keys stand on.
    static constexpr int kSamples = 150;
    /// Two pictures are the same within this: the solver of curve parameters stops within 1e-9, and
    /// y(t) is not steeper than 100 on the curves of these tests.
    static constexpr double kSameValue = 1e-7;
    /// Handles are put back to within rounding, so an extent may miss a sample by as much.
    static constexpr double kSlack = 1e-7;

    struct LockedKey {
        double parameter;
        bool isValueLocked;
        double left;
        double right;
    };

    double SampleAt(int k) const { return left_ + (right_ - left_) * (k + 0.3737) / kSamples; }

    std::vector<double> Picture() const
    {
        std::vector<double> values;
        for (int k = 0; k < kSamples; ++k) {
            values.push_back(curve_.Eval(SampleAt(k), 0));
        }
        return values;
    }

    std::vector<LockedKey> LockedKeys() const
    {
        std::vector<LockedKey> keys;
        for (unsigned int i = 0; i < curve_.GetNumKeys(); ++i) {
            LockedKey key{};
            int isParameterLocked = 0;
            int isValueLocked = 0;
            curve_.GetKeyParameter(i, key.parameter);
            curve_.GetKeyValuesByIndex(i, key.left, key.right);
            curve_.GetConstraintByIndex(i, HvBaseFCurve::ParameterLocked, isParameterLocked);
            curve_.GetConstraintByIndex(i, HvBaseFCurve::ValueLocked, isValueLocked);
            key.isValueLocked = isValueLocked != 0;
            if (isParameterLocked != 0) {
                keys.push_back(key);
            }
        }
        return keys;
    }

    std::string OrderFault() const
    {
        double before = -INFINITY;
        for (unsigned int i = 0; i < curve_.GetNumKeys(); ++i) {
            double x = 0;
            curve_.GetKeyParameter(i, x);
            if (!(before < x)) {
                return "keys do not rise at index " + std::to_string(i);
            }
            before = x;
        }
        return std::string();
    }

    std::string SegmentFault() const
    {
        HvBaseFCurve const* const known = curve_.QueryFCurveKind(HvBaseFCurve::Standard);
        auto const* const curve = static_cast<HvStdFCurve const*>(known);
        for (unsigned int i = 0; curve != nullptr && i + 1 < curve->GetNumKeys(); ++i) {
            HvPoint2<double> left;
            HvPoint2<double> first;
            HvPoint2<double> second;
            HvPoint2<double> right;
            HvBaseFCurve::FSKind kind = HvBaseFCurve::CubicSegment;
            double p0 = 0;
            double p3 = 0;
            curve->GetKeyParameter(i, p0);
            curve->GetKeyParameter(i + 1, p3);
            curve->GetSegmentKindByIndex(i, HvBaseFCurve::Right, kind);
            curve->GetEvaluatedKeyTgtHandlesByIndex(i, left, first);
            curve->GetEvaluatedKeyTgtHandlesByIndex(i + 1, second, right);
            // Handles are vectors; the test of a segment looks at x only.
            bool const isValid = HvStdFCurve_IsCubicSegmentValid({p0, 0}, {p0 + first.x, 0},
                                                                 {p3 + second.x, 0}, {p3, 0}) != 0;
            if (kind == HvBaseFCurve::CubicSegment && !isValid) {
                return "the segment after key " + std::to_string(i) + " turns back";
            }
        }
        return std::string();
    }

    std::string LockFault() const
    {
        for (LockedKey const& key : locked_) {
            double left = 0;
            double right = 0;
            unsigned int i = 0;
            if (curve_.GetKeyIndex(key.parameter, i) == 0) {
                return "a key of locked parameter has gone from " + std::to_string(key.parameter);
            }
            curve_.GetKeyValuesByIndex(i, left, right);
            if (key.isValueLocked && right != key.right) {
                return "a locked value has changed at " + std::to_string(key.parameter);
            }
        }
        return std::string();
    }

    std::string ValueFault(HvExtent2<double> const& invalid)
    {
        std::vector<double> const before = seen_;
        seen_ = Picture();
        for (int k = 0; k < kSamples; ++k) {
            double const x = SampleAt(k);
            double const was = before[static_cast<std::size_t>(k)];
            double const is = seen_[static_cast<std::size_t>(k)];
            bool const isSame = std::fabs(is - was) <= kSameValue * (1 + std::fabs(was));
            if (!isSame && !(invalid.Contains({x, was}) && invalid.Contains({x, is}))) {
                std::ostringstream text;
                text << "changed outside the extent at " << x << " from " << was << " to " << is
                     << "; the extent is (" << invalid.min.x << ", " << invalid.min.y << ") to ("
                     << invalid.max.x << ", " << invalid.max.y << "), state " << invalid.state;
                return text.str();
            }
        }
        return std::string();
    }

    std::string DrawingFault(HvExtent2<double> const& invalid)
    {
        DrawnCurve const before = std::move(drawn_);
        drawn_ = DrawnCurve(curve_, left_, right_);
        HvPoint2<double> where;
        if (before.DiffersOutside(invalid, drawn_, where) ||
            drawn_.DiffersOutside(invalid, before, where)) {
            std::ostringstream text;
            text << "drawn otherwise outside the extent, at (" << where.x << ", " << where.y
                 << "); the extent is (" << invalid.min.x << ", " << invalid.min.y << ") to ("
                 << invalid.max.x << ", " << invalid.max.y << "), state " << invalid.state;
            return text.str();
        }
        return std::string();
    }

    HvBaseFCurve const& curve_;
    double left_;
    double right_;
    std::vector<LockedKey> locked_;
    std::vector<double> seen_;
    DrawnCurve drawn_;
};

#endif
