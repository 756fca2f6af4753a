// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outlines of SVG elements.

#include <hv/shape/HvPath2fSink.h>
#include <tools/svg/NumberScanner.h>
#include <tools/svg/path_data.h>
#include <tools/svg/svg_shapes.h>
#include <tools/svg/svg_values.h>

#include <algorithm>

namespace {

using Point = HvPoint2<double>;
using Node = pugi::xml_node;

HvPoint2<float> Narrow(Point const& p)
{
    return HvPoint2<float>(p);
}

/// A length of an element; `missing` when it is not told. False when it is no length.
bool ReadLength(Node const& element, char const* name, double& length, double missing)
{
    length = missing;
    pugi::xml_attribute const attribute = element.attribute(name);
    return !attribute || SvgValue_ReadLength(attribute.value(), length);
}

/// An axis-aligned box with corners of elliptical quarters; a circle is all corners.
void DrawRoundBox(Point const& low, Point const& high, Point const& radii, HvPath2fSink& sink)
{
    bool const isRound = radii.x > 0.0 && radii.y > 0.0;
    double const rx = isRound ? std::min(radii.x, (high.x - low.x) / 2.0) : 0.0;
    double const ry = isRound ? std::min(radii.y, (high.y - low.y) / 2.0) : 0.0;
    // Clockwise from the left end of the upper side: where each side ends and the next one starts.
    Point const ends[4][2] = {{{high.x - rx, low.y}, {high.x, low.y + ry}},
                              {{high.x, high.y - ry}, {high.x - rx, high.y}},
                              {{low.x + rx, high.y}, {low.x, high.y - ry}},
                              {{low.x, low.y + ry}, {low.x + rx, low.y}}};
    Point at = ends[3][1];
    sink.Moveto(Narrow(at));
    for (auto const& end : ends) {
        if (end[0] != at) {
            sink.Lineto(Narrow(end[0]));
        }
        PathData_DrawArc(end[0], end[1], {Point(rx, ry), 0.0}, false, true, sink);
        at = end[1];
    }
    sink.Closeto();
}

bool DrawRect(Node const& element, HvPath2fSink& sink)
{
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
    double rx = 0.0;
    double ry = 0.0;
    bool const isRead = ReadLength(element, "x", x, 0.0) && ReadLength(element, "y", y, 0.0) &&
                        ReadLength(element, "width", width, 0.0) &&
                        ReadLength(element, "height", height, 0.0) &&
                        ReadLength(element, "rx", rx, -1.0) && ReadLength(element, "ry", ry, -1.0);
    if (!isRead) {
        return false;
    }
    if (width > 0.0 && height > 0.0) {
        // One radius stands for both.
        Point const radii(rx < 0.0 ? ry : rx, ry < 0.0 ? rx : ry);
        DrawRoundBox(Point(x, y), Point(x + width, y + height), radii, sink);
    }
    return true;
}

bool DrawEllipse(Node const& element, char const* radiusX, char const* radiusY, HvPath2fSink& sink)
{
    Point centre;
    Point radii;
    if (!ReadLength(element, "cx", centre.x, 0.0) || !ReadLength(element, "cy", centre.y, 0.0) ||
        !ReadLength(element, radiusX, radii.x, 0.0) ||
        !ReadLength(element, radiusY, radii.y, 0.0)) {
        return false;
    }
    if (radii.x > 0.0 && radii.y > 0.0) {
        DrawRoundBox(centre - radii, centre + radii, radii, sink);
    }
    return true;
}

bool DrawLine(Node const& element, HvPath2fSink& sink)
{
    Point from;
    Point to;
    if (!ReadLength(element, "x1", from.x, 0.0) || !ReadLength(element, "y1", from.y, 0.0) ||
        !ReadLength(element, "x2", to.x, 0.0) || !ReadLength(element, "y2", to.y, 0.0)) {
        return false;
    }
    sink.Moveto(Narrow(from));
    sink.Lineto(Narrow(to));
    return true;
}

bool DrawPolyline(Node const& element, bool isClosed, HvPath2fSink& sink)
{
    std::string const text = element.attribute("points").value();
    NumberScanner scanner(text);
    Point p;
    Point first;
    bool isStarted = false;
    bool isLine = false;
    while (scanner.ReadNumber(p.x) && scanner.ReadNumber(p.y)) {
        if (isStarted) {
            sink.Lineto(Narrow(p));
            isLine = true;
        } else {
            sink.Moveto(Narrow(p));
            first = p;
        }
        isStarted = true;
    }
    if (isClosed && isLine) {
        sink.Lineto(Narrow(first));
        sink.Closeto();
    }
    scanner.SkipSeparator();
    return scanner.IsAtEnd();
}

}  // namespace

bool SvgShape_IsShape(std::string const& name)
{
    static char const* const kNames[] = {"path", "rect",     "circle", "ellipse",
                                         "line", "polyline", "polygon"};
    return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

std::string SvgShape_Draw(pugi::xml_node const& element, HvPath2f& outline)
{
    HvPath2fSink sink(outline);
    std::string const name = element.name();
    if (name == "path") {
        std::string const data = element.attribute("d").value();
        return PathData_Draw(data, sink);
    }
    bool isDrawn = false;
    if (name == "rect") {
        isDrawn = DrawRect(element, sink);
    } else if (name == "circle") {
        isDrawn = DrawEllipse(element, "r", "r", sink);
    } else if (name == "ellipse") {
        isDrawn = DrawEllipse(element, "rx", "ry", sink);
    } else if (name == "line") {
        isDrawn = DrawLine(element, sink);
    } else {
        isDrawn = DrawPolyline(element, name == "polygon", sink);
    }
    return isDrawn ? "" : "an attribute of a " + name + " is no number";
}
