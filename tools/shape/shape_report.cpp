// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a shape holds.

#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvPath2fIter.h>
#include <tools/number_text.h>
#include <tools/shape/shape_report.h>
#include <tools/text_table.h>

#include <ostream>

namespace {

std::string KindOf(HvShape2f const& shape)
{
    if (shape.QueryShapeKind(HvShape2f::Path) != nullptr) {
        return "path";
    }
    if (shape.QueryShapeKind(HvShape2f::Rect) != nullptr) {
        return "rectangle";
    }
    return shape.QueryShapeKind(HvShape2f::Oval) != nullptr ? "oval" : "path with a property";
}

/// "3 keys to 12"; "-" without a curve.
std::string PropertyOf(HvPath2fProp1d const* path, unsigned int start)
{
    HvRawFCurve const* const curve = path == nullptr ? nullptr : path->GetPropCurve(start);
    return curve == nullptr ? "-"
                            : NumberText_Counted(curve->GetNumKeys(), "key") + " to " +
                                  NumberText_Exact(path->GetLargestArcLength(start));
}

std::string CoordinateText(float value)
{
    return NumberText_Exact(double(value));
}

void WriteSubpaths(std::ostream& out, HvPath2f const& path, HvPath2fProp1d const* withProperty)
{
    std::vector<TextRow> rows = {{"subpath", "first", "points", "x", "y", "ends", "property"}};
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        HvPoint2<float> const start = path.GetPoint(first);
        rows.push_back({std::to_string(rows.size() - 1), std::to_string(first),
                        std::to_string(last - first + 1), CoordinateText(start.x),
                        CoordinateText(start.y),
                        path.IsSubpathClosed(first) != 0 ? "closed" : "open",
                        PropertyOf(withProperty, first)});
    }
    if (rows.size() > 1) {
        constexpr std::size_t kNumberColumns = 5;
        TextTable_Write(out, rows, kNumberColumns);
    }
}

void WritePoints(std::ostream& out, HvShape2f const& shape)
{
    std::vector<TextRow> rows = {{"point", "x", "y"}};
    for (unsigned int i = 0; i < shape.NumPoints(); ++i) {
        HvPoint2<float> const p = shape.GetPoint(i);
        rows.push_back({std::to_string(i), CoordinateText(p.x), CoordinateText(p.y)});
    }
    TextTable_Write(out, rows, rows[0].size());
}

}  // namespace

void ShapeReport_Write(std::ostream& out, HvShape2f const& shape, std::size_t size, bool brief)
{
    out << KindOf(shape) << ", " << NumberText_Counted(size, "byte");
    auto const* const withProperty =
        static_cast<HvPath2fProp1d const*>(shape.QueryShapeKind(HvShape2f::PathProp1d));
    HvPath2f const* path = withProperty;
    if (path == nullptr) {
        path = static_cast<HvPath2f const*>(shape.QueryShapeKind(HvShape2f::Path));
    }
    if (path != nullptr) {
        out << ", " << NumberText_Counted(path->NumPoints(), "point") << ", "
            << NumberText_Counted(path->NumSubpaths(), "subpath");
    }
    out << "\n";
    if (!brief && path != nullptr) {
        WriteSubpaths(out, *path, withProperty);
    } else if (!brief) {
        WritePoints(out, shape);
    }
}
