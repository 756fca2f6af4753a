// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Writing SVG.

#include <tools/number_text.h>
#include <tools/plot/SvgWriter.h>

namespace {

std::string Pixels(double value)
{
    return NumberText_Fixed(value, 2);
}

std::string Pair(HvPoint2<double> const& p)
{
    return Pixels(p.x) + "," + Pixels(p.y);
}

}  // namespace

std::string SvgWriter_Escape(std::string const& text)
{
    std::string escaped;
    for (char const c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            if (static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t') {
                escaped += c;
            }
        }
    }
    return escaped;
}

SvgWriter::SvgWriter(double width, double height, std::string const& style,
                     std::string const& title, std::string const& description)
{
    std::string const size = Pixels(width) + " " + Pixels(height);
    text_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + size + "\"";
    Attribute("width", width);
    Attribute("height", height);
    text_ += " role=\"img\">\n<title>" + SvgWriter_Escape(title) + "</title>\n<desc>" +
             SvgWriter_Escape(description) + "</desc>\n<style>\n" + style + "</style>\n";
}

void SvgWriter::Rect(std::string const& cls, double x, double y, double width, double height)
{
    Open("rect", cls);
    Attribute("x", x);
    Attribute("y", y);
    Attribute("width", width);
    Attribute("height", height);
    Close("rect", std::string());
}

void SvgWriter::Line(std::string const& cls, Point const& a, Point const& b)
{
    Open("line", cls);
    Attribute("x1", a.x);
    Attribute("y1", a.y);
    Attribute("x2", b.x);
    Attribute("y2", b.y);
    Close("line", std::string());
}

void SvgWriter::Polyline(std::string const& cls, std::vector<Point> const& points)
{
    PointList("polyline", cls, points);
}

void SvgWriter::Polygon(std::string const& cls, std::vector<Point> const& points)
{
    PointList("polygon", cls, points);
}

void SvgWriter::Circle(std::string const& cls, Point const& centre, double radius,
                       std::string const& tooltip)
{
    Open("circle", cls);
    Attribute("cx", centre.x);
    Attribute("cy", centre.y);
    Attribute("r", radius);
    Close("circle", tooltip);
}

void SvgWriter::Diamond(std::string const& cls, Point const& centre, double radius,
                        std::string const& tooltip)
{
    Open("polygon", cls);
    Attribute("points", Pair(centre + Point(0, -radius)) + " " + Pair(centre + Point(radius, 0)) +
                            " " + Pair(centre + Point(0, radius)) + " " +
                            Pair(centre + Point(-radius, 0)));
    Close("polygon", tooltip);
}

void SvgWriter::Text(std::string const& cls, Point const& at, std::string const& text)
{
    Open("text", cls);
    Attribute("x", at.x);
    Attribute("y", at.y);
    text_ += ">" + SvgWriter_Escape(text) + "</text>\n";
}

std::string SvgWriter::Finish()
{
    return text_ + "</svg>\n";
}

void SvgWriter::PointList(char const* element, std::string const& cls,
                          std::vector<Point> const& points)
{
    std::string list;
    for (Point const& p : points) {
        list += list.empty() ? Pair(p) : " " + Pair(p);
    }
    Open(element, cls);
    Attribute("points", list);
    Close(element, std::string());
}

void SvgWriter::Open(std::string const& element, std::string const& cls)
{
    text_ += "<" + element;
    if (!cls.empty()) {
        Attribute("class", cls);
    }
}

void SvgWriter::Attribute(char const* name, double value)
{
    Attribute(name, Pixels(value));
}

void SvgWriter::Attribute(char const* name, std::string const& value)
{
    text_ += std::string(" ") + name + "=\"" + value + "\"";
}

void SvgWriter::Close(std::string const& element, std::string const& tooltip)
{
    text_ += tooltip.empty()
                 ? "/>\n"
                 : "><title>" + SvgWriter_Escape(tooltip) + "</title></" + element + ">\n";
}
