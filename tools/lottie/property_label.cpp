// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the short keys of a Lottie document mean.

#include <tools/lottie/property_label.h>

namespace {

struct Label {
    char const* ownerType;  ///< null: in an object of any type
    char const* key;
    char const* name;
};

/// The first row that fits holds.
constexpr Label kLabels[] = {
    {"tm", "s", "trim start"},
    {"tm", "e", "trim end"},
    {"tm", "o", "trim offset"},
    {"rc", "s", "size"},
    {"rc", "r", "roundness"},
    {"el", "s", "size"},
    {"sr", "pt", "points"},
    {"sr", "or", "outer radius"},
    {"sr", "ir", "inner radius"},
    {"sr", "os", "outer roundness"},
    {"sr", "is", "inner roundness"},
    {"rd", "r", "radius"},
    {"rp", "c", "copies"},
    {"gf", "s", "start"},
    {"gf", "e", "end"},
    {"gs", "s", "start"},
    {"gs", "e", "end"},
    {nullptr, "a", "anchor"},
    {nullptr, "p", "position"},
    {nullptr, "s", "scale"},
    {nullptr, "r", "rotation"},
    {nullptr, "o", "opacity"},
    {nullptr, "sk", "skew"},
    {nullptr, "sa", "skew axis"},
    {nullptr, "rx", "rotation x"},
    {nullptr, "ry", "rotation y"},
    {nullptr, "rz", "rotation z"},
    {nullptr, "or", "orientation"},
    {nullptr, "c", "colour"},
    {nullptr, "w", "width"},
    {nullptr, "tm", "time remap"},
    {nullptr, "ks", "path"},
};

}  // namespace

std::string PropertyLabel(std::string const& key, std::string const& ownerType,
                          std::string const& ownerKey)
{
    // A position may be split into properties of its own.
    if (ownerKey == "p" && key.size() == 1 && key[0] >= 'x' && key[0] <= 'z') {
        return "position " + key;
    }
    for (Label const& label : kLabels) {
        if (key == label.key && (label.ownerType == nullptr || ownerType == label.ownerType)) {
            return label.name;
        }
    }
    return key;
}
