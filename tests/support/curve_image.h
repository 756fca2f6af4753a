// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A curve as a text: two curves with the same text have the same keys and fields, bit for bit.

#ifndef TESTS_SUPPORT_CURVE_IMAGE_H
#define TESTS_SUPPORT_CURVE_IMAGE_H

#include <hv/fcurve/HvBaseFCurve.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

/// Appends a double exactly.
inline void CurveImage_AddNumber(std::string& image, char const* name, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, " %s=%a", name, value);
    image += text;
}

/// Everything that the public interface shows of a curve. The keys' selection shows behind the
/// curve's own, so it is read from a copy that is selected.
inline std::string CurveImage(HvBaseFCurve const& curve)
{
    std::string image;
    auto const add = [&](char const* name, double value) {
        CurveImage_AddNumber(image, name, value);
    };

    HvBaseFCurve::FCurveInfo info{};
    info.mask = 0x7F;
    curve.GetFCurveInfo(&info);
    add("kind", info.kind);
    add("keys", info.numKeys);
    add("whenNoKeys", info.valueWhenNoKeys);
    add("defaultKind", info.defaultSegmentKind);
    add("lower", info.lowerClamp);
    add("upper", info.upperClamp);
    add("extrapolation", info.extrapolation);
    add("readOnly", curve.IsReadOnly());
    add("time", curve.IsTimeFCurve());
    add("selected", curve.IsSelected());
    add("defaultTangent", curve.IsDefautlBezierTangentConstraintOn());
    add("before", curve.GetMinusInfinityVal());
    add("after", curve.GetPlusInfinityVal());

    std::unique_ptr<HvBaseFCurve> const copy(curve.Clone());
    copy->SetSelected(1);
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        HvBaseFCurve::KeyInfo key{};
        key.mask = 0x3FF;
        copy->GetKeyInfoFromIndex(i, &key);
        double left = 0;
        double right = 0;
        copy->GetKeyValuesByIndex(i, left, right);
        image += "\n";
        add("p", key.parameter);
        add("left", left);
        add("right", right);
        add("ltx", key.leftTangentX);
        add("lty", key.leftTangentY);
        add("rtx", key.rightTangentX);
        add("rty", key.rightTangentY);
        add("kind", key.segmentKind);
        add("selected", key.selected);
        for (int constraint = 1; constraint <= 8192; constraint *= 2) {
            int on = 0;
            copy->GetConstraintByIndex(i, static_cast<HvBaseFCurve::KeyConstraint>(constraint), on);
            image += on ? "+" : "-";
        }
        add("data", curve.HasUserData(key.parameter));
    }
    std::vector<unsigned char> data(curve.GetUserDataBufferSize());
    if (!data.empty()) {
        curve.WriteUserDataToBuffer(data.data());
    }
    image += "\n data";
    for (unsigned char const byte : data) {
        char text[8];
        std::snprintf(text, sizeof text, " %02x", byte);
        image += text;
    }
    return image;
}

#endif
