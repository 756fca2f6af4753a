// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which key may move where: what the key mover does, said in the plainest way.

#ifndef TESTS_FCURVE_KEY_MOVE_MODEL_H
#define TESTS_FCURVE_KEY_MOVE_MODEL_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

/// A list of keys of which some are dragged. Every question is answered by looking at all of them.
class KeyMoveModel {
public:
    struct Key {
        double x;
        double left;
        double right;
        bool isParameterLocked;
        bool isValueLocked;
        bool isDragged;
        bool gives;  ///< has been asked in this step, and goes to its place
        double startX;
        double startLeft;
        double startRight;
    };

    KeyMoveModel(HvBaseFCurve const& curve, std::vector<double> const& dragged,
                 HvExtent2<double> const& limits)
        : kind_(curve.GetKind()), limits_(limits)
    {
        for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
            Key key{};
            int isParameterLocked = 0;
            int isValueLocked = 0;
            curve.GetKeyParameter(i, key.x);
            curve.GetKeyValuesByIndex(i, key.left, key.right);
            curve.GetConstraintByIndex(i, HvBaseFCurve::ParameterLocked, isParameterLocked);
            curve.GetConstraintByIndex(i, HvBaseFCurve::ValueLocked, isValueLocked);
            key.isParameterLocked = isParameterLocked != 0;
            key.isValueLocked = isValueLocked != 0;
            if (kind_ != HvBaseFCurve::Standard) {
                key.left = key.right;  // one value
            }
            key.isDragged = std::count(dragged.begin(), dragged.end(), key.x) != 0;
            key.startX = key.x;
            key.startLeft = key.left;
            key.startRight = key.right;
            keys_.push_back(key);
        }
    }

    /// Whether a drag can begin.
    bool IsUsable() const
    {
        return std::any_of(keys_.begin(), keys_.end(), [](Key const& key) {
            return key.isDragged && !(key.isParameterLocked && key.isValueLocked);
        });
    }
    /// Whether the curve is shifted as a whole, which rounds in another way.
    bool IsWhole() const
    {
        return kind_ != HvBaseFCurve::Boolean && kind_ != HvBaseFCurve::Quaternion &&
               std::all_of(keys_.begin(), keys_.end(), [](Key const& key) {
                   return key.isDragged && !key.isParameterLocked && !key.isValueLocked;
               });
    }

    /// One step; draws the translation back to the limits, and tells whether it is done.
    bool Move(HvPoint2<double>& t)
    {
        Limit(t);
        std::vector<Key> const before = keys_;
        std::vector<Key*> dragged = DraggedByStart();
        for (Key& key : keys_) {
            key.gives = false;
        }
        Key const* lowest = nullptr;
        for (Key const* key : dragged) {
            lowest = lowest == nullptr && !key->isParameterLocked ? key : lowest;
        }
        if (lowest != nullptr && lowest->x < lowest->startX + t.x) {
            std::reverse(dragged.begin(), dragged.end());
        }
        bool isBlocked = false;
        for (Key* key : dragged) {
            if (!key->isParameterLocked) {
                isBlocked = isBlocked || !IsFree(*key, key->startX + t.x, t.x);
                key->gives = !isBlocked;
            }
        }
        for (Key* key : dragged) {
            if (key->gives) {
                key->x = key->startX + t.x;
            }
            if (!key->isValueLocked) {
                key->left = ValueOf(key->startLeft + t.y);
                key->right = ValueOf(key->startRight + t.y);
            }
        }
        std::vector<double> const places = Parameters();
        if (std::adjacent_find(places.begin(), places.end()) != places.end()) {
            keys_ = before;
            return false;
        }
        return true;
    }

    /// The keys as they stand.
    std::vector<Key> Sorted() const
    {
        std::vector<Key> keys = keys_;
        std::sort(keys.begin(), keys.end(), [](Key const& a, Key const& b) { return a.x < b.x; });
        return keys;
    }
    std::vector<double> Parameters() const
    {
        std::vector<double> parameters;
        for (Key const& key : Sorted()) {
            parameters.push_back(key.x);
        }
        return parameters;
    }
    /// Where the dragged keys stand, in the order of where they started.
    std::vector<double> Dragged() const
    {
        std::vector<double> parameters;
        for (Key const& key : keys_) {
            if (key.isDragged) {
                parameters.push_back(key.x);
            }
        }
        return parameters;
    }

private:
    static constexpr double kNear = 1e-6;

    std::vector<Key*> DraggedByStart()
    {
        std::vector<Key*> dragged;  // keys_ stays in the order of the start
        for (Key& key : keys_) {
            if (key.isDragged) {
                dragged.push_back(&key);
            }
        }
        return dragged;
    }

    bool IsFree(Key const& key, double target, double shift) const
    {
        bool isLeft = false;
        bool isTaken = false;
        for (Key const& other : keys_) {
            bool const isNear =
                other.x >= target - kNear && other.x <= target + kNear && &other != &key;
            isLeft = isLeft || (isNear && other.isDragged && other.gives);
            isTaken = isTaken || isNear;
            if (!other.isDragged && other.x == target) {
                return false;
            }
        }
        return isLeft || !isTaken || shift == 0;
    }

    double ValueOf(double y) const
    {
        constexpr double kLow = std::numeric_limits<int>::min();
        constexpr double kHigh = std::numeric_limits<int>::max();
        return kind_ == HvBaseFCurve::Boolean   ? (y >= 0.5 ? 1 : 0)
               : kind_ == HvBaseFCurve::Integer ? std::min(std::max(y, kLow), kHigh)
                                                : y;
    }

    void Limit(HvPoint2<double>& t) const
    {
        double lowX = INFINITY;
        double highX = -INFINITY;
        Key const* low = nullptr;
        Key const* high = nullptr;
        for (Key const& key : keys_) {
            if (key.isDragged && !key.isParameterLocked) {
                lowX = std::min(lowX, key.startX);
                highX = std::max(highX, key.startX);
            }
            if (key.isDragged && !key.isValueLocked) {
                double const least = std::min(key.startLeft, key.startRight);
                double const most = std::max(key.startLeft, key.startRight);
                bool const isLower =
                    low == nullptr || least < std::min(low->startLeft, low->startRight);
                bool const isHigher =
                    high == nullptr || most > std::max(high->startLeft, high->startRight);
                low = isLower ? &key : low;
                high = isHigher ? &key : high;
            }
        }
        double const wanted = t.y;
        if (limits_.state == 0 && lowX + t.x < limits_.min.x) {
            t.x = limits_.min.x - lowX;
        } else if (limits_.state == 0 && highX + t.x > limits_.max.x) {
            t.x = limits_.max.x - highX;
        }
        if (limits_.state == 0 && low != nullptr) {
            if (low->startRight + wanted < limits_.min.y) {
                t.y = limits_.min.y - low->startRight;
            } else if (high->startRight + wanted > limits_.max.y) {
                t.y = limits_.max.y - high->startRight;
            }
            if (low->startLeft + wanted < limits_.min.y) {
                t.y = limits_.min.y - low->startLeft;
            } else if (high->startLeft + wanted > limits_.max.y) {
                t.y = limits_.max.y - high->startLeft;
            }
        }
        t.y = kind_ == HvBaseFCurve::Integer ? std::floor(t.y) : t.y;
    }

    HvBaseFCurve::Kind kind_;
    HvExtent2<double> limits_;
    std::vector<Key> keys_;
};

#endif
