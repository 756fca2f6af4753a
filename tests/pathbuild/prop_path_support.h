// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Property paths whose inside can be seen, and what their tests share.

#ifndef TESTS_PATHBUILD_PROP_PATH_SUPPORT_H
#define TESTS_PATHBUILD_PROP_PATH_SUPPORT_H

#include <hv/foundation/HvDLList.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvGC.h>

#include <initializer_list>
#include <ostream>
#include <utility>
#include <vector>

using PropPoint = HvPoint2<float>;

/// First points of subpaths with the value that their curves have at 0.
using PropKeys = std::vector<std::pair<unsigned int, double>>;

/// A path that shows its list.
class OpenProp : public HvPath2fProp1d {
public:
    OpenProp() : HvPath2fProp1d(0u) {}
    OpenProp(HvPath2fProp1d const& path) : HvPath2fProp1d(path) {}
    using HvPath2fProp1d::GetPropCurveInsideCriticalSection;
    using HvPath2fProp1d::propCurves;
    using HvPath2fProp1d::RemovePropCurveInsideCriticalSection;
    using HvPath2fProp1d::SetPropCurveInsideCriticalSection;

    PropKeys Keys() const
    {
        PropKeys keys;
        HvDLListIter<HvPropCurveData> entries(propCurves);
        while (HvPropCurveData const* const entry = entries.Next()) {
            keys.emplace_back(entry->subpathStart, entry->curve.Eval(0.0, 0));
        }
        return keys;
    }

    /// Appends a subpath of lines.
    void AddLines(std::initializer_list<PropPoint> pts)
    {
        bool isFirst = true;
        for (PropPoint const& p : pts) {
            if (isFirst) {
                Moveto(p);
            } else {
                Lineto(p);
            }
            isFirst = false;
        }
    }
};

inline PropKeys KeysOf(HvPath2fProp1d const& path)
{
    return OpenProp(path).Keys();
}

/// A constant property.
inline HvRawFCurve Constant(double value)
{
    return HvRawFCurve(0.0, value);
}

/// A property through keys of arc length and value.
inline HvRawFCurve Through(std::initializer_list<std::pair<double, double>> keys)
{
    HvRawFCurve curve(keys.begin()->first, keys.begin()->second);
    for (auto const& key : keys) {
        curve.AppendLinearSegment({key.first, key.second});
    }
    return curve;
}

/// Three subpaths of lines with the curves 1, 2 and 3: points 0 to 3, 4 to 7 and 8 to 11.
inline OpenProp ThreeLines()
{
    OpenProp path;
    for (unsigned int k = 0; k < 3; ++k) {
        float const y = static_cast<float>(k);
        path.AddLines({{0, y}, {1, y}, {2, y}, {3, y}});
        path.SetPropCurve(4 * k, Constant(k + 1.0));
    }
    return path;
}

/// What an operation appends.
struct PropSamples {
    std::vector<PropPoint> points;
    std::vector<int> tags;
    std::vector<double> values;
};

/// Calls `unsigned int operation(points, tags, values)` on arrays that are not empty, and gives
/// what it appends.
template <class Operation>
PropSamples Appended(Operation operation)
{
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvDoubleArray values;
    points.Add({77, 78});
    tags.Add(HvPointTagEnd);
    values.Add(79.0);
    values.Add(80.0);
    unsigned int const count = static_cast<unsigned int>(operation(points, tags, values));
    PropSamples samples;
    samples.points.assign(points.begin() + 1, points.end());
    samples.tags.assign(tags.begin() + 1, tags.end());
    samples.values.assign(values.begin() + 2, values.end());
    EXPECT_EQ(count, samples.points.size());
    EXPECT_EQ(samples.tags.size(), samples.points.size());
    EXPECT_EQ(samples.values.size(), samples.points.size());
    EXPECT_EQ(points[0], PropPoint(77, 78));
    EXPECT_EQ(values[1], 80.0);
    return samples;
}

/// The x of points, on paths along that axis.
inline std::vector<float> XOf(PropSamples const& samples)
{
    std::vector<float> x;
    for (PropPoint const& p : samples.points) {
        x.push_back(p.x);
    }
    return x;
}

#endif
