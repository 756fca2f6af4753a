// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reading JSON values that may be anything, with messages that name the place.

#ifndef HV_TOOLS_LOTTIE_JSON_ACCESS_H
#define HV_TOOLS_LOTTIE_JSON_ACCESS_H

#include <nlohmann/json.hpp>

#include <cstddef>
#include <string>
#include <vector>

/// A JSON value whose members stay in the order of the file.
using Json = nlohmann::ordered_json;

/// The value of a text. Throws ToolError where it is no JSON, nested beyond 256 levels, or has an
/// object of more than 65536 members: far beyond what an editor writes.
Json Json_Parse(std::string const& text);

/// The member `key` of an object, or null when there is none or `object` is no object.
Json const* Json_Find(Json const& object, char const* key);

/// The number `value`; throws ToolError when it is none or beyond 1e100.
double Json_Number(Json const& value, std::string const& path);

/// A number, or an array of numbers: at least one.
std::vector<double> Json_Numbers(Json const& value, std::string const& path);

/// Whether a switch is on: true, or a number other than 0.
bool Json_IsOn(Json const* value);

/// The text of a string, with what could steer a terminal replaced; otherwise "".
std::string Json_Text(Json const* value);

/// The path of an array's element.
std::string Json_ElementPath(std::string const& path, std::size_t index);

/// The path of an object's member.
std::string Json_MemberPath(std::string const& path, std::string const& key);

#endif
