// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Values of SVG attributes: colours, lengths, transforms.

#include <tools/svg/NumberScanner.h>
#include <tools/svg/svg_colour_names.h>
#include <tools/svg/svg_values.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <vector>

namespace {

struct Unit {
    char const* name;
    double length;
};

constexpr Unit kUnits[] = {{"", 1.0},    {"px", 1.0},         {"pt", 96.0 / 72.0}, {"pc", 16.0},
                           {"in", 96.0}, {"cm", 96.0 / 2.54}, {"mm", 96.0 / 25.4}};

/// A number and what stands behind it, white space cut off.
bool ReadWithUnit(std::string const& text, double& value, std::string& unit)
{
    NumberScanner scanner(text);
    if (!scanner.ReadNumber(value)) {
        return false;
    }
    unit = text.substr(scanner.Place());
    unit.erase(unit.find_last_not_of(" \t\r\n") + 1);
    return true;
}

unsigned char ByteOf(double value)
{
    return static_cast<unsigned char>(std::clamp(value, 0.0, 255.0) + 0.5);
}

int HexDigit(char c)
{
    static std::string const kDigits = "0123456789abcdef";
    std::size_t const digit = kDigits.find(c);
    return digit == std::string::npos ? -1 : static_cast<int>(digit);
}

/// "#rgb" or "#rrggbb", in small letters.
bool ReadHexColour(std::string const& text, SvgColour& colour)
{
    if (text.size() != 4 && text.size() != 7) {
        return false;
    }
    std::size_t const digits = text.size() == 4 ? 1 : 2;
    unsigned char parts[3];
    for (std::size_t i = 0; i < 3; ++i) {
        int const high = HexDigit(text[1 + i * digits]);
        int const low = HexDigit(text[(i + 1) * digits]);
        if (high < 0 || low < 0) {
            return false;
        }
        parts[i] = static_cast<unsigned char>(high * 16 + low);
    }
    colour = {parts[0], parts[1], parts[2]};
    return true;
}

/// "rgb(1, 2, 3)" or "rgb(1%, 2%, 3%)".
bool ReadRgbColour(std::string const& text, SvgColour& colour)
{
    std::string const inside = text.substr(4);
    NumberScanner scanner(inside);
    unsigned char parts[3];
    for (unsigned char& part : parts) {
        double value = 0.0;
        if (!scanner.ReadNumber(value)) {
            return false;
        }
        if (scanner.Peek() == '%') {
            scanner.Take();
            value = value * 255.0 / 100.0;
        }
        part = ByteOf(value);
        scanner.SkipSpace();
    }
    colour = {parts[0], parts[1], parts[2]};
    return scanner.Take() == ')' && scanner.IsAtEnd();
}

/// Composes one transform on the right; false for a name or a number of arguments that there is
/// not.
bool Compose(std::string const& name, std::vector<double> const& a, HvTransfo4& transform)
{
    std::size_t const n = a.size();
    HvPoint2<double> const origin;
    if (name == "matrix" && n == 6) {
        double const columns[16] = {a[0], a[1], 0, 0, a[2], a[3], 0, 0,
                                    0,    0,    1, 0, a[4], a[5], 0, 1};
        transform.PostMultiply(HvTransfo4(columns));
    } else if (name == "translate" && (n == 1 || n == 2)) {
        transform.Translate(a[0], n == 2 ? a[1] : 0.0, 0.0);
    } else if (name == "scale" && (n == 1 || n == 2)) {
        transform.ScaleXY(a[0], a[n - 1], origin);
    } else if (name == "rotate" && (n == 1 || n == 3)) {
        transform.RotateXY(a[0], n == 3 ? HvPoint2<double>(a[1], a[2]) : origin);
    } else if ((name == "skewX" || name == "skewY") && n == 1) {
        double const slope = std::tan(a[0] * 0.017453292519943295);
        bool const isX = name == "skewX";
        double const columns[16] = {
            1, isX ? 0 : slope, 0, 0, isX ? slope : 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        transform.PostMultiply(HvTransfo4(columns));
    } else {
        return false;
    }
    return true;
}

}  // namespace

bool SvgValue_ReadColour(std::string const& text, SvgColour& colour)
{
    std::string small;
    for (char const c : text) {
        if (std::isspace(static_cast<unsigned char>(c)) == 0) {
            small += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    if (!small.empty() && small[0] == '#') {
        return ReadHexColour(small, colour);
    }
    if (small.rfind("rgb(", 0) == 0) {
        return ReadRgbColour(small, colour);
    }
    auto const* const named =
        std::find_if(std::begin(kSvgColourNames), std::end(kSvgColourNames),
                     [&](SvgColourName const& name) { return small == name.name; });
    if (named == std::end(kSvgColourNames)) {
        return false;
    }
    colour = {static_cast<unsigned char>(named->rgb >> 16),
              static_cast<unsigned char>(named->rgb >> 8), static_cast<unsigned char>(named->rgb)};
    return true;
}

bool SvgValue_ReadLength(std::string const& text, double& length)
{
    double value = 0.0;
    std::string name;
    if (!ReadWithUnit(text, value, name)) {
        return false;
    }
    for (Unit const& unit : kUnits) {
        if (name == unit.name) {
            length = value * unit.length;
            return true;
        }
    }
    return false;
}

bool SvgValue_ReadShare(std::string const& text, double& share)
{
    double value = 0.0;
    std::string unit;
    if (!ReadWithUnit(text, value, unit) || (!unit.empty() && unit != "%")) {
        return false;
    }
    share = std::clamp(unit == "%" ? value / 100.0 : value, 0.0, 1.0);
    return true;
}

bool SvgValue_ReadTransform(std::string const& text, HvTransfo4& transform)
{
    HvTransfo4 composed = transform;
    NumberScanner scanner(text);
    scanner.SkipSeparator();
    while (!scanner.IsAtEnd()) {
        std::string name;
        while (std::isalpha(static_cast<unsigned char>(scanner.Peek())) != 0) {
            name += scanner.Take();
        }
        scanner.SkipSpace();
        if (scanner.Take() != '(') {
            return false;
        }
        std::vector<double> arguments;
        double value = 0.0;
        while (scanner.ReadNumber(value)) {
            arguments.push_back(value);
        }
        scanner.SkipSpace();
        if (scanner.Take() != ')' || !Compose(name, arguments, composed)) {
            return false;
        }
        scanner.SkipSeparator();
    }
    transform = composed;
    return true;
}
