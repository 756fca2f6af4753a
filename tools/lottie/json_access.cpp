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

/// Deeper nesting than any editor makes; walks over a document call themselves for each level.
constexpr int kDeepest = 256;

/// Members stand in the order of the file and are searched one after the other: without a limit an
/// object of millions would take hours.
constexpr std::size_t kMostMembers = 65536;

/// What is quoted of a parser's message.
constexpr std::size_t kLongestMessage = 160;

/// Refuses a document while it is read.
class ParseLimits {
public:
    bool operator()(int depth, Json::parse_event_t event)
    {
        if (depth > kDeepest) {
            throw ToolError("nested deeper than " + std::to_string(kDeepest) + " levels");
        }
        if (event == Json::parse_event_t::object_start) {
            members_.push_back(0);
        } else if (event == Json::parse_event_t::object_end) {
            members_.pop_back();
        } else if (event == Json::parse_event_t::key && ++members_.back() > kMostMembers) {
            throw ToolError("an object has more than " + std::to_string(kMostMembers) + " members");
        }
        return true;
    }

private:
    std::vector<std::size_t> members_;  ///< of each object that is open
};

/// `text` with control characters, which could steer a terminal, as question marks.
std::string Plain(std::string text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }, '?');
    return text;
}

}  // namespace

Json Json_Parse(std::string const& text)
{
    try {
        ParseLimits limits;
        return Json::parse(text, [&limits](int depth, Json::parse_event_t event, Json&) {
            return limits(depth, event);
        });
    } catch (Json::parse_error const& error) {
        // The parser's message says the place, after a number of its own, and quotes what it met
        // there, however long.
        std::string const what = error.what();
        std::size_t const start = what.find("parse error");
        throw ToolError("not JSON: " +
                        what.substr(start == std::string::npos ? 0 : start, kLongestMessage));
    } catch (Json::exception const&) {
        throw ToolError("not JSON that can be read: it holds a number beyond all range");
    }
}

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
