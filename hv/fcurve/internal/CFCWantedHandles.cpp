// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Giving keys that a tool has put down their tangents again.

#include <hv/fcurve/internal/CFCWantedHandles.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <algorithm>

namespace {

using Wanted = CFCWantedHandles;

void StoreOne(HvStdFCurveImpl& impl, unsigned int i, HvBaseFCurve::KeySide side,
              HvPoint2<double> vector)
{
    if (impl.FitActualKeyTgtHandle(i, side, vector)) {
        impl.WriteVector(i, side, vector);
    }
}

/// Stores the two handles of the segment between two keys; false when they do not go together.
bool StorePair(HvStdFCurveImpl& impl, Wanted const& key, Wanted const& next)
{
    HvPoint2<double> const right = impl.RightPoint(key.index) + key.right;
    HvPoint2<double> const left = impl.LeftPoint(next.index) + next.left;
    if (!HvStdEdit_AreFinite(right) || !HvStdEdit_AreFinite(left) ||
        (!impl.defaultBezierTangentConstraint &&
         !impl.IsSegmentValidWith(key.index, right, left))) {
        return false;
    }
    impl.WriteRightHandle(key.index, right);
    impl.WriteLeftHandle(next.index, left);
    return true;
}

}  // namespace

void CFCWantedHandles_Store(HvStdFCurveImpl& impl, HvAltDynArray<CFCWantedHandles>& wanted)
{
    auto const isBefore = [](Wanted const& a, Wanted const& b) { return a.index < b.index; };
    if (!std::is_sorted(wanted.begin(), wanted.end(), isBefore)) {
        std::sort(wanted.begin(), wanted.end(), isBefore);
    }
    bool isLeftStored = false;
    for (unsigned int j = 0; j < wanted.Count(); ++j) {
        Wanted const& key = wanted[j];
        if (!isLeftStored) {
            StoreOne(impl, key.index, HvBaseFCurve::Left, key.left);
        }
        bool const facesNext = j + 1 < wanted.Count() && wanted[j + 1].index == key.index + 1;
        isLeftStored = facesNext && StorePair(impl, key, wanted[j + 1]);
        if (!isLeftStored) {
            StoreOne(impl, key.index, HvBaseFCurve::Right, key.right);
        }
    }
}
