// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Writing SVG.

#ifndef HV_TOOLS_PLOT_SVGWRITER_H
#define HV_TOOLS_PLOT_SVGWRITER_H

#include <hv/foundation/HvPoint2.h>

#include <string>
#include <vector>

/// Builds the text of an SVG document, element by element. Coordinates are pixels from the top
/// left, written with two decimals. Looks come from classes of the style sheet.
class SvgWriter {
public:
    using Point = HvPoint2<double>;

    /// Begins a document. `style` is its style sheet, `title` and `description` are for readers who
    /// do not see it.
    SvgWriter(double width, double height, std::string const& style, std::string const& title,
              std::string const& description);

    void Rect(std::string const& cls, double x, double y, double width, double height);
    void Line(std::string const& cls, Point const& a, Point const& b);
    void Polyline(std::string const& cls, std::vector<Point> const& points);
    /// A polygon, filled by winding where it crosses itself.
    void Polygon(std::string const& cls, std::vector<Point> const& points);
    /// A circle; a tooltip that is not empty shows when it is pointed at.
    void Circle(std::string const& cls, Point const& centre, double radius,
                std::string const& tooltip = std::string());
    /// A square standing on its corner.
    void Diamond(std::string const& cls, Point const& centre, double radius,
                 std::string const& tooltip = std::string());
    void Text(std::string const& cls, Point const& at, std::string const& text);

    /// Ends the document and gives its text.
    std::string Finish();

private:
    void PointList(char const* element, std::string const& cls, std::vector<Point> const& points);
    void Open(std::string const& element, std::string const& cls);
    void Attribute(char const* name, double value);
    void Attribute(char const* name, std::string const& value);
    void Close(std::string const& element, std::string const& tooltip);

    std::string text_;
};

/// `text` with the characters that mean something in XML escaped, and without those that XML
/// forbids.
std::string SvgWriter_Escape(std::string const& text);

#endif
