// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a stretch of a curve's region comes to, worked out slowly: each key asked on its own where
// it goes, every pair asked whether it may, and the drag found by halving.

#ifndef HV_TESTS_FCURVE_STRETCH_MODEL_H
#define HV_TESTS_FCURVE_STRETCH_MODEL_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

/// What a stretcher is made with.
struct StretchArguments {
    HvExtent2<double> region;
    std::vector<double> listed;
    HvExtent2<double> limits;
    HvPoint2<double> pivot;
    HvBaseFCurve::RegionHandle handle = HvBaseFCurve::LeftHandle;
    bool ripple = false;
    double minimalScale = 0;
};

struct StretchModelKey {
    double parameter;
    double left;
    double right;
    bool parameterLocked;
    bool valueLocked;
};

struct StretchModelStep {
    bool limited;
    double amount;
    double scale;
    std::vector<StretchModelKey> keys;  ///< of the whole curve, in their order at the start
    /// How near the drag comes to where it would just be limited, as a difference of scales.
    double doubt;
};

class StretchModel {
public:
    StretchModel(HvBaseFCurve const& curve, StretchArguments const& arguments)
        : arguments_(arguments), kind_(curve.GetKind())
    {
        for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
            StretchModelKey key{};
            curve.GetKeyParameter(i, key.parameter);
            curve.GetKeyValuesByIndex(i, key.left, key.right);
            if (kind_ != HvBaseFCurve::Standard) {
                key.left = key.right;
            }
            int locked = 0;
            curve.GetConstraintByIndex(i, HvBaseFCurve::ParameterLocked, locked);
            key.parameterLocked = locked != 0;
            curve.GetConstraintByIndex(i, HvBaseFCurve::ValueLocked, locked);
            key.valueLocked = locked != 0;
            start_.push_back(key);
        }
        FindRun();
    }

    bool IsUsable() const
    {
        if (begin_ >= end_) {
            return false;
        }
        return std::any_of(
            start_.begin() + begin_, start_.begin() + end_,
            [](StretchModelKey const& key) { return !key.parameterLocked || !key.valueLocked; });
    }
    bool Horizontal() const
    {
        return arguments_.handle == HvBaseFCurve::LeftHandle ||
               arguments_.handle == HvBaseFCurve::RightHandle;
    }
    std::size_t Begin() const { return static_cast<std::size_t>(begin_); }
    std::size_t End() const { return static_cast<std::size_t>(end_); }
    std::vector<StretchModelKey> const& Start() const { return start_; }
    /// Whether the parameter of key i ever changes.
    bool Moves(std::size_t i) const { return std::fabs(Parameter(i, 3) - Parameter(i, 1)) > 0; }

    StretchModelStep Step(double wanted) const
    {
        double const amount =
            kind_ == HvBaseFCurve::Integer && !Horizontal() ? std::floor(wanted) : wanted;
        double const distance = Near() - Pivot();
        double scale = (distance + amount) / distance;
        StretchModelStep step{};
        if (std::fabs(distance) < 1e-7) {
            return {true, 0, 1, start_, 1};
        }
        step.limited = !Holds(scale);
        if (step.limited) {
            double good = 1;
            double bad = scale;
            for (int i = 0; i < 200; ++i) {
                double const middle = (good + bad) / 2;
                (Holds(middle) ? good : bad) = middle;
            }
            step.doubt = std::fabs(scale - good);
            scale = good;
        } else {
            step.doubt = 1;
            for (double const nudge : {1e-9, -1e-9}) {
                step.doubt = Holds(scale + nudge) ? step.doubt : 0;
            }
        }
        if (std::fabs(scale) < Least()) {
            scale = scale < 0 && Holds(-Least()) ? -Least() : Least();
        }
        step.scale = scale;
        step.amount = (scale - 1) * distance;
        for (std::size_t i = 0; i < start_.size(); ++i) {
            StretchModelKey key = start_[i];
            key.parameter = Parameter(i, scale);
            key.left = Fitting(start_[i].left, Value(i, true, scale));
            key.right = Fitting(start_[i].right, Value(i, false, scale));
            step.keys.push_back(key);
        }
        return step;
    }

private:
    static constexpr double kGap = 0.001;
    static constexpr double kSlack = 1e-11;

    double Least() const
    {
        double const m = arguments_.minimalScale;
        return m > 0.001 ? std::min(m, 1.0) : 0.001;
    }
    double Pivot() const { return Horizontal() ? arguments_.pivot.x : arguments_.pivot.y; }
    double Low() const { return Horizontal() ? arguments_.region.min.x : arguments_.region.min.y; }
    double High() const { return Horizontal() ? arguments_.region.max.x : arguments_.region.max.y; }
    bool NearIsLow() const
    {
        return arguments_.handle == HvBaseFCurve::LeftHandle ||
               arguments_.handle == HvBaseFCurve::BottomHandle;
    }
    double Near() const { return NearIsLow() ? Low() : High(); }
    double Far() const { return NearIsLow() ? High() : Low(); }
    bool PivotOffFarEdge() const { return std::fabs(Pivot() - Far()) >= 1e-7; }

    void FindRun()
    {
        int const n = static_cast<int>(start_.size());
        begin_ = 0;
        while (begin_ < n && start_[Index(begin_)].parameter < arguments_.region.min.x) {
            ++begin_;
        }
        end_ = n;
        while (end_ > 0 && start_[Index(end_ - 1)].parameter > arguments_.region.max.x) {
            --end_;
        }
        if (begin_ >= end_) {
            return;
        }
        bool before = false;
        bool after = false;
        for (double const x : arguments_.listed) {
            before = before || x < start_[Index(begin_)].parameter;
            after = after || x > start_[Index(end_ - 1)].parameter;
        }
        if (arguments_.ripple && !Horizontal()) {
            begin_ = 0;
            end_ = n;
            return;
        }
        bool const all = arguments_.ripple && PivotOffFarEdge();
        bool const left = all || (arguments_.ripple && NearIsLow());
        bool const right = all || (arguments_.ripple && !NearIsLow());
        begin_ = left ? 0 : std::max(0, begin_ - (before ? 1 : 0));
        end_ = right ? n : std::min(n, end_ + (after ? 1 : 0));
    }
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    bool InRun(std::size_t i) const { return i >= Begin() && i < End(); }
    bool IsListed(std::size_t i) const
    {
        return std::any_of(arguments_.listed.begin(), arguments_.listed.end(),
                           [&](double x) { return std::fabs(x - start_[i].parameter) < 1e-7; });
    }
    bool Inside(std::size_t i, bool left) const
    {
        StretchModelKey const& key = start_[i];
        return IsListed(i) ||
               arguments_.region.Contains({key.parameter, left ? key.left : key.right}) != 0;
    }

    double Rippled(double v, double scale) const
    {
        if (!arguments_.ripple) {
            return v;
        }
        double const nearShift = (1 - scale) * (Pivot() - Near());
        double const farShift = PivotOffFarEdge() ? (1 - scale) * (Pivot() - Far()) : 0;
        if (v < Low()) {
            return v + (NearIsLow() ? nearShift : farShift);
        }
        return v > High() ? v + (NearIsLow() ? farShift : nearShift) : v;
    }
    double Scaled(double v, double scale) const { return Pivot() + (v - Pivot()) * scale; }

    double Parameter(std::size_t i, double scale) const
    {
        double const x = start_[i].parameter;
        if (!Horizontal() || !InRun(i) || start_[i].parameterLocked) {
            return x;
        }
        return Inside(i, true) || Inside(i, false) ? Scaled(x, scale) : Rippled(x, scale);
    }
    double Value(std::size_t i, bool left, double scale) const
    {
        double const v = left ? start_[i].left : start_[i].right;
        if (Horizontal() || !InRun(i) || start_[i].valueLocked) {
            return v;
        }
        return Inside(i, left) ? Scaled(v, scale) : Rippled(v, scale);
    }
    double Fitting(double start, double value) const
    {
        if (value == start) {
            return start;
        }
        switch (kind_) {
        case HvBaseFCurve::Boolean:
            return value >= 0.5 ? 1 : 0;
        case HvBaseFCurve::Integer:
            return std::floor(value + 0.5);
        default:
            return value;
        }
    }

    static bool Within(double low, double high, double start, double at)
    {
        return at >= std::min(low, start) - kSlack && at <= std::max(high, start) + kSlack;
    }
    bool Holds(double scale) const
    {
        return KeysKeepTheirPlaces(scale) && KeysKeepTheLimits(scale) && EdgesHold(scale) &&
               (!RipplesAny() || scale >= Least() - kSlack);
    }
    bool KeysKeepTheirPlaces(double scale) const
    {
        if (!Horizontal()) {
            return true;
        }
        double const infinity = HUGE_VAL;
        for (std::size_t i = 0; i < start_.size(); ++i) {
            for (std::size_t j = 0; j < start_.size(); ++j) {
                if (!Moves(i) || Moves(j)) {
                    continue;
                }
                double const p = start_[i].parameter;
                bool const below = start_[j].parameter < p;
                double const low = below ? start_[j].parameter + kGap : -infinity;
                double const high = below ? infinity : start_[j].parameter - kGap;
                if (!Within(low, high, p, Parameter(i, scale))) {
                    return false;
                }
            }
        }
        return true;
    }
    bool KeysKeepTheLimits(double scale) const
    {
        if (arguments_.limits.state != 0) {
            return true;
        }
        double const low = Horizontal() ? arguments_.limits.min.x : arguments_.limits.min.y;
        double const high = Horizontal() ? arguments_.limits.max.x : arguments_.limits.max.y;
        for (std::size_t i = 0; i < start_.size(); ++i) {
            bool const held = Horizontal() ? !Moves(i) || Within(low, high, start_[i].parameter,
                                                                 Parameter(i, scale))
                                           : ValueWithin(low, high, i, true, scale) &&
                                                 ValueWithin(low, high, i, false, scale);
            if (!held) {
                return false;
            }
        }
        return true;
    }
    bool ValueWithin(double low, double high, std::size_t i, bool left, double scale) const
    {
        double const start = left ? start_[i].left : start_[i].right;
        return Within(low, high, start, Value(i, left, scale));
    }
    /// Whether no edge has come within the gap of what is fixed beyond it or locked in the region.
    bool EdgesHold(double scale) const
    {
        double const low = NearIsLow() || PivotOffFarEdge() ? Scaled(Low(), scale) : Low();
        double const high = !NearIsLow() || PivotOffFarEdge() ? Scaled(High(), scale) : High();
        for (std::size_t i = 0; i < start_.size(); ++i) {
            if (Horizontal()) {
                bool const inner =
                    InRun(i) && start_[i].parameterLocked && Inside(i, true) && Inside(i, false);
                if (!Moves(i) && !EdgesHoldAt(start_[i].parameter, inner, low, high)) {
                    return false;
                }
            } else if (InRun(i) && start_[i].valueLocked) {
                bool const inner = Inside(i, true) && Inside(i, false);
                if (!EdgesHoldAt(start_[i].left, inner, low, high) ||
                    !EdgesHoldAt(start_[i].right, inner, low, high)) {
                    return false;
                }
            }
        }
        return true;
    }
    bool EdgesHoldAt(double fixed, bool inner, double low, double high) const
    {
        double const infinity = HUGE_VAL;
        bool const below = fixed < Low();
        bool const above = fixed > High();
        return Within(below ? fixed + kGap : -infinity, inner ? fixed - kGap : infinity, Low(),
                      low) &&
               Within(inner ? fixed + kGap : -infinity, above ? fixed - kGap : infinity, High(),
                      high);
    }
    bool RipplesAny() const
    {
        for (std::size_t i = Begin(); arguments_.ripple && i < End(); ++i) {
            StretchModelKey const& key = start_[i];
            if (Horizontal()) {
                bool const outside = !Inside(i, true) && !Inside(i, false);
                if (outside && !key.parameterLocked && Rippled(key.parameter, 3) != key.parameter) {
                    return true;
                }
            } else if (!key.valueLocked &&
                       ((!Inside(i, true) && Rippled(key.left, 3) != key.left) ||
                        (!Inside(i, false) && Rippled(key.right, 3) != key.right))) {
                return true;
            }
        }
        return false;
    }

    StretchArguments arguments_;
    HvBaseFCurve::Kind kind_;
    std::vector<StretchModelKey> start_;
    int begin_ = 0;
    int end_ = 0;
};

#endif
