// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Function curves: the kinds of segments, what derives tangents, what lies outside the keys.

#include "Picture.h"

namespace {

using Point = Picture::Point;
using Curve = HvBaseFCurve;

/// A part of the picture that shows curves over [0, 8] and values from -0.5 to 4.
class Panel {
public:
    Panel(Picture& picture, double x, double y, char const* title) : picture_(picture)
    {
        view_.Translate(x, y + 130, 0).Scale(32, -26, 1);
        picture.Text(x, y + 12, title);
        picture.Line(view_.Map(Point(0, -0.3)), view_.Map(Point(8, -0.3)), "#ccc");
    }

    void Draw(HvStdFCurve const& curve, char const* colour)
    {
        HvPoint2dArray points;
        HvPointTagArray tags;
        HvBoolArray flags;
        curve.FlattenFromTo({0, -0.5, 8, 4.2}, view_, 0.1, points, tags, flags, 0);
        picture_.Lines(points, tags, flags, colour);
        for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
            double x;
            double left;
            double right;
            curve.GetKeyParameter(i, x);
            curve.GetKeyValuesByIndex(i, left, right);
            picture_.Dot(view_.Map(Point(x, left)), 3.2, "#222");
            picture_.Dot(view_.Map(Point(x, right)), 3.2, "#222");
        }
    }

    /// The two handles that the segments beside a key use.
    void DrawHandles(HvStdFCurve const& curve, unsigned int i)
    {
        double x;
        double left;
        double right;
        Point before;
        Point behind;
        curve.GetKeyParameter(i, x);
        curve.GetKeyValuesByIndex(i, left, right);
        curve.GetEvaluatedKeyTgtHandlesByIndex(i, before, behind);
        for (Point const& handle : {before, behind}) {
            Point const key(x, right);
            picture_.Line(view_.Map(key), view_.Map(key + handle), kGrey);
            picture_.Ring(view_.Map(key + handle), 2.8, kGrey);
        }
    }

private:
    Picture& picture_;
    HvTransfo4 view_;
};

/// Five keys, unevenly spaced, whose tangents a constraint derives.
HvStdFCurve Derived(Curve::KeyConstraint constraint)
{
    HvStdFCurve curve(0, Curve::CubicSegment);
    double const keys[][2] = {{1, 0.2}, {2.2, 2.8}, {4.4, 3.1}, {5.4, 0.5}, {7, 0.8}};
    for (auto const& key : keys) {
        double x = key[0];
        curve.CreateKey(x, key[1], Curve::CubicSegment, Curve::CubicSegment);
        curve.SetConstraint(x, constraint, 1, 0);
        if (constraint == Curve::UnlimitedAutoSlope) {
            curve.SetConstraint(x, Curve::AutomaticTangents, 1, 0);
        }
    }
    return curve;
}

void DrawKinds(Picture& picture)
{
    Panel panel(picture, 20, 10, "constant, cubic, linear; a key of two values");
    HvStdFCurve curve(1, 1, 3, 3, Curve::ConstantSegment, Curve::ConstantSegment);
    curve.SetSegmentKind(1, Curve::Right, Curve::ConstantSegment, 0);
    curve.AppendBezierCubicSegment({4.2, 3}, {4.4, 0}, {5.5, 0.5});
    curve.AppendLinearSegment({7, 3.5});
    curve.SetKeyValue(3, Curve::Left, 1, 0);
    panel.DrawHandles(curve, 1);
    panel.DrawHandles(curve, 2);
    panel.Draw(curve, kBlue);
}

void DrawTangents(Picture& picture)
{
    Panel smooth(picture, 340, 10, "tangents: automatic (blue), not limited (red)");
    smooth.Draw(Derived(Curve::UnlimitedAutoSlope), kRed);
    smooth.Draw(Derived(Curve::AutomaticTangents), kBlue);
    Panel plain(picture, 20, 180, "tangents: flat (blue), linear (red)");
    plain.Draw(Derived(Curve::FlatTangents), kBlue);
    plain.Draw(Derived(Curve::LinearTangents), kRed);
}

void DrawExtrapolation(Picture& picture)
{
    struct {
        Curve::ExtrapolationMethod method;
        char const* colour;
    } const methods[] = {{Curve::RelativeCycleExtrapolation, kGreen},
                         {Curve::LinearExtrapolation, kRed},
                         {Curve::CycleExtrapolation, "#c0a020"},
                         {Curve::ConstantExtrapolation, kBlue}};
    Panel panel(picture, 340, 180, "outside: held, a line, repeated, repeated higher");
    for (auto const& shown : methods) {
        HvStdFCurve curve({2.5, 0.6}, {3.5, 0.6}, {3.7, 2.6}, {4.5, 1.6}, Curve::CubicSegment,
                          Curve::CubicSegment);
        curve.SetExtrapolationMethod(shown.method);
        panel.Draw(curve, shown.colour);
    }
}

}  // namespace

void DrawCurves(std::FILE* file)
{
    Picture picture(file, 640, 345);
    DrawKinds(picture);
    DrawTangents(picture);
    DrawExtrapolation(picture);
}
