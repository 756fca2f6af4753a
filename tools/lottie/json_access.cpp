// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reading JSON values that may be anything.

#include <tools/ToolError.h>
#include <tools/lottie/json_access.h>

#include <algorithm>
#include <cmath>

namespace {

/// Beyond this a number is refused: products of two numbers that are not stay finite.
constexpr double kLargestNumber = 1e100;

/// `text` with control characters, which could steer a terminal, as question marks.
std::string Plain(std::string text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }, '?');
    return text;
}

}  // namespace

Json const* Json_Find(Json const& object, char const* key)
{
    if (!object.is_object()) {
        return nullptr;
    }
    auto const found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

double Json_Number(Json const& value, std::string const& path)
{
    if (!value.is_number()) {
        throw ToolError(path + " is not a number");
    }
    double const number = value.get<double>();
    if (!(std::fabs(number) <= kLargestNumber)) {
        throw ToolError(path + " is beyond 1e100");
    }
    return number;
}

std::vector<double> Json_Numbers(Json const& value, std::string const& path)
{
    if (!value.is_array()) {
        return {Json_Number(value, path)};
    }
    if (value.empty()) {
        throw ToolError(path + " is empty");
    }
    std::vector<double> numbers;
    numbers.reserve(value.size());
    for (Json const& element : value) {
        numbers.push_back(Json_Number(element, Json_ElementPath(path, numbers.size())));
    }
    return numbers;
}

bool Json_IsOn(Json const* value)
{
    if (value == nullptr) {
        return false;
    }
    return value->is_boolean() ? value->get<bool>()
                               : value->is_number() && value->get<double>() != 0.0;
}

std::string Json_Text(Json const* value)
{
    return value != nullptr && value->is_string() ? Plain(value->get<std::string>())
                                                  : std::string();
}

std::string Json_ElementPath(std::string const& path, std::size_t index)
{
    return path + "[" + std::to_string(index) + "]";
}

std::string Json_MemberPath(std::string const& path, std::string const& key)
{
    return path.empty() ? Plain(key) : path + "." + Plain(key);
}
