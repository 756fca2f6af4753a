// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// An SVG file as shapes to be painted. Properties are attributes, or stand in a style attribute,
// which wins; style sheets are not read.

#include <tools/ToolError.h>
#include <tools/files.h>
#include <tools/svg/NumberScanner.h>
#include <tools/svg/SvgDocument.h>
#include <tools/svg/svg_shapes.h>

#include <pugixml.hpp>

#include <algorithm>
#include <cstring>

namespace {

using Node = pugi::xml_node;

/// Groups in groups beyond this are taken for an attack.
constexpr int kMostNesting = 200;
/// The size of a document that tells none.
constexpr double kDefaultSize = 100.0;

std::string Trimmed(std::string const& text)
{
    std::size_t const first = text.find_first_not_of(" \t\r\n");
    std::size_t const last = text.find_last_not_of(" \t\r\n");
    return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

/// The value of a property, "" when the element does not tell it.
std::string PropertyOf(Node const& element, char const* name)
{
    std::string const style = element.attribute("style").value();
    for (std::size_t start = 0; start < style.size();) {
        std::size_t const end = std::min(style.find(';', start), style.size());
        std::string const declaration = style.substr(start, end - start);
        std::size_t const colon = declaration.find(':');
        if (colon != std::string::npos && Trimmed(declaration.substr(0, colon)) == name) {
            return Trimmed(declaration.substr(colon + 1));
        }
        start = end + 1;
    }
    return Trimmed(element.attribute(name).value());
}

/// The number behind a keyword of a property; -1 for one that there is not.
struct Keyword {
    char const* name;
    int value;
};

int ValueOf(std::string const& text, std::initializer_list<Keyword> keywords)
{
    for (Keyword const& keyword : keywords) {
        if (text == keyword.name) {
            return keyword.value;
        }
    }
    return -1;
}

/// Reads a tree of elements and gathers notes.
class SvgReader {
public:
    explicit SvgReader(SvgDocument& document) : document_(document) {}

    void ReadRoot(Node const& root)
    {
        ReadSize(root);
        SvgStyle style;
        ReadStyle(root, style);
        ReadChildren(root, HvTransfo4(), style, document_.elements, 0);
    }

private:
    void Note(std::string const& text)
    {
        auto const same = std::find_if(document_.notes.begin(), document_.notes.end(),
                                       [&](SvgNote const& note) { return note.text == text; });
        if (same == document_.notes.end()) {
            document_.notes.push_back({text});
        } else {
            ++same->count;
        }
    }

    void ReadSize(Node const& root)
    {
        double box[4] = {0.0, 0.0, 0.0, 0.0};
        std::string const text = root.attribute("viewBox").value();
        NumberScanner scanner(text);
        bool hasBox = true;
        for (double& number : box) {
            hasBox = hasBox && scanner.ReadNumber(number);
        }
        hasBox = hasBox && box[2] > 0.0 && box[3] > 0.0;
        // A share of the window that there is not counts as the whole.
        double& width = document_.width;
        double& height = document_.height;
        if (!SvgValue_ReadLength(root.attribute("width").value(), width) || !(width > 0.0)) {
            width = hasBox ? box[2] : kDefaultSize;
        }
        if (!SvgValue_ReadLength(root.attribute("height").value(), height) || !(height > 0.0)) {
            height = hasBox ? box[3] : kDefaultSize;
        }
        if (hasBox) {
            double const scale = std::min(width / box[2], height / box[3]);
            document_.transform.Translate((width - scale * box[2]) / 2.0,
                                          (height - scale * box[3]) / 2.0, 0.0);
            document_.transform.ScaleXY(scale, scale, HvPoint2<double>());
            document_.transform.Translate(-box[0], -box[1], 0.0);
        }
    }

    void ReadChildren(Node const& parent, HvTransfo4 const& transform, SvgStyle const& style,
                      std::vector<SvgElement>& elements, int nesting)
    {
        if (nesting > kMostNesting) {
            throw ToolError("groups are nested more than " + std::to_string(kMostNesting) +
                            " deep");
        }
        for (Node const& node : parent.children()) {
            if (node.type() == pugi::node_element) {
                ReadElement(node, transform, style, elements, nesting);
            }
        }
    }

    void ReadElement(Node const& node, HvTransfo4 const& parentTransform,
                     SvgStyle const& parentStyle, std::vector<SvgElement>& elements, int nesting)
    {
        std::string const name = node.name();
        bool const isGroup = name == "g" || name == "a" || name == "svg";
        if (!isGroup && !SvgShape_IsShape(name)) {
            static char const* const kSilent[] = {"title", "desc", "metadata", "defs"};
            if (std::find(std::begin(kSilent), std::end(kSilent), name) == std::end(kSilent) &&
                name.find(':') == std::string::npos) {
                Note("<" + name + "> is not supported");
            }
            return;
        }
        if (PropertyOf(node, "display") == "none" || PropertyOf(node, "visibility") == "hidden") {
            return;
        }
        SvgElement element;
        element.id = node.attribute("id").value();
        element.transform = parentTransform;
        element.style = parentStyle;
        if (pugi::xml_attribute const transform = node.attribute("transform")) {
            if (!SvgValue_ReadTransform(transform.value(), element.transform)) {
                Note(std::string("transform \"") + transform.value() + "\" is not understood");
            }
        }
        ReadStyle(node, element.style);
        ReadShare(node, "opacity", element.opacity);
        NoteUnsupported(node);
        if (isGroup) {
            ReadChildren(node, element.transform, element.style, element.children, nesting + 1);
        } else {
            std::string const fault = SvgShape_Draw(node, element.outline);
            if (!fault.empty()) {
                Note(fault);
            }
        }
        elements.push_back(element);
    }

    void NoteUnsupported(Node const& node)
    {
        for (char const* const name : {"stroke-dasharray", "clip-path", "mask", "filter",
                                       "marker-start", "marker-mid", "marker-end"}) {
            std::string const value = PropertyOf(node, name);
            if (!value.empty() && value != "none") {
                Note(std::string(name) + " is not supported");
            }
        }
    }

    void ReadStyle(Node const& node, SvgStyle& style)
    {
        ReadPaint(node, "fill", style.fill);
        ReadShare(node, "fill-opacity", style.fill.opacity);
        ReadPaint(node, "stroke", style.stroke);
        ReadShare(node, "stroke-opacity", style.stroke.opacity);
        ReadKeyword(node, "fill-rule", {{"evenodd", 0}, {"nonzero", 1}}, style.fillRule);
        ReadKeyword(node, "stroke-linecap", {{"round", 0}, {"square", 1}, {"butt", 2}},
                    style.capStyle);
        ReadKeyword(node, "stroke-linejoin", {{"bevel", 0}, {"miter", 1}, {"round", 2}},
                    style.joinStyle);
        ReadLengthProperty(node, "stroke-width", style.strokeWidth);
        ReadLengthProperty(node, "stroke-miterlimit", style.miterLimit);
    }

    void ReadPaint(Node const& node, char const* name, SvgPaint& paint)
    {
        std::string const value = PropertyOf(node, name);
        if (value.empty() || value == "inherit") {
            return;
        }
        if (value == "none" || value == "transparent") {
            paint.isPainted = false;
        } else if (value == "currentColor") {
            // Nobody around the document says another colour.
            paint.isPainted = true;
            paint.colour = SvgColour();
            SvgValue_ReadColour(PropertyOf(node, "color"), paint.colour);
        } else if (SvgValue_ReadColour(value, paint.colour)) {
            paint.isPainted = true;
        } else {
            paint.isPainted = false;
            Note(std::string(name) + " \"" + value + "\" is not supported");
        }
    }

    void ReadShare(Node const& node, char const* name, double& share)
    {
        std::string const value = PropertyOf(node, name);
        if (!value.empty() && !SvgValue_ReadShare(value, share)) {
            Note(std::string(name) + " \"" + value + "\" is not understood");
        }
    }

    void ReadLengthProperty(Node const& node, char const* name, double& length)
    {
        std::string const value = PropertyOf(node, name);
        if (!value.empty() && !SvgValue_ReadLength(value, length)) {
            Note(std::string(name) + " \"" + value + "\" is not understood");
        }
    }

    void ReadKeyword(Node const& node, char const* name, std::initializer_list<Keyword> keywords,
                     int& value)
    {
        std::string const text = PropertyOf(node, name);
        if (text.empty() || text == "inherit") {
            return;
        }
        int const read = ValueOf(text, keywords);
        if (read < 0) {
            Note(std::string(name) + " \"" + text + "\" is not supported");
        } else {
            value = read;
        }
    }

    SvgDocument& document_;
};

}  // namespace

SvgDocument SvgDocument_Parse(std::string const& text)
{
    pugi::xml_document xml;
    pugi::xml_parse_result const parsed = xml.load_buffer(text.data(), text.size());
    if (!parsed) {
        throw ToolError(std::string("no SVG: ") + parsed.description() + " at byte " +
                        std::to_string(parsed.offset));
    }
    Node const root = xml.document_element();
    if (std::strcmp(root.name(), "svg") != 0) {
        throw ToolError("no SVG: its root is no <svg>");
    }
    SvgDocument document;
    SvgReader(document).ReadRoot(root);
    return document;
}

SvgDocument SvgDocument_Read(std::string const& path)
{
    std::string const text = File_Read(path);
    try {
        return SvgDocument_Parse(text);
    } catch (ToolError const& error) {
        throw ToolError(path + ": " + error.what());
    }
}
