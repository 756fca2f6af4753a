// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A stroke of a pen, read from a table of numbers.

#include <tools/ToolError.h>
#include <tools/number_text.h>
#include <tools/stroke/StrokeDocument.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

namespace {

/// What stands in a column.
enum class Column {
    X,
    Y,
    Pressure,
    Time,
    Other
};

using Fields = std::vector<std::string_view>;

std::string_view Trimmed(std::string_view text)
{
    auto const isSpace = [](char c) { return c == ' ' || c == '\r' || c == '\t'; };
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

Fields FieldsOf(std::string_view line)
{
    Fields fields;
    for (;;) {
        std::size_t const end = line.find_first_of(",;\t");
        fields.push_back(Trimmed(line.substr(0, end)));
        if (end == std::string_view::npos) {
            return fields;
        }
        line.remove_prefix(end + 1);
    }
}

std::optional<double> NumberIn(std::string_view field)
{
    if (!field.empty() && field.front() == '+') {
        field.remove_prefix(1);  // from_chars knows no plus sign
    }
    double value = 0.0;
    auto const [stop, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    bool const isNumber =
        error == std::errc() && stop == field.data() + field.size() && std::isfinite(value);
    return isNumber ? std::optional<double>(value) : std::nullopt;
}

Column ColumnNamed(std::string_view name)
{
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    if (lower == "x") {
        return Column::X;
    }
    if (lower == "y") {
        return Column::Y;
    }
    if (lower == "pressure") {
        return Column::Pressure;
    }
    bool const isTime = lower == "milliseconds" || lower == "seconds" || lower == "time";
    return isTime ? Column::Time : Column::Other;
}

/// One document in the reading.
class Parser {
public:
    StrokeDocument Parse(std::string_view text)
    {
        // Some programs begin their files with a mark of the encoding.
        if (text.substr(0, 3) == "\xef\xbb\xbf") {
            text.remove_prefix(3);
        }
        for (line_ = 1; !text.empty(); ++line_) {
            std::size_t const end = text.find('\n');
            ReadLine(Trimmed(text.substr(0, end)));
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        }
        if (document_.points.size() < 2) {
            throw ToolError("a stroke needs two points; there " +
                            std::string(document_.points.empty() ? "is none" : "is one"));
        }
        return std::move(document_);
    }

private:
    [[noreturn]] void Refuse(std::string const& reason) const
    {
        throw ToolError("line " + std::to_string(line_) + ": " + reason);
    }

    void ReadLine(std::string_view line)
    {
        if (line.empty() || line.front() == '#') {
            return;
        }
        Fields const fields = FieldsOf(line);
        if (columns_.empty()) {
            if (!NumberIn(fields.front())) {
                NameColumns(fields);
                return;
            }
            CountColumns(fields.size());
        }
        if (fields.size() != columns_.size()) {
            Refuse(NumberText_Counted(fields.size(), "column") + ", not " +
                   std::to_string(columns_.size()));
        }
        ReadPoint(fields);
    }

    void NameColumns(Fields const& names)
    {
        for (std::string_view name : names) {
            Column const column = ColumnNamed(name);
            bool const isTwice =
                column != Column::Other &&
                std::find(columns_.begin(), columns_.end(), column) != columns_.end();
            if (isTwice) {
                Refuse("two columns for " + std::string(name));
            }
            columns_.push_back(column);
        }
        for (Column needed : {Column::X, Column::Y}) {
            if (std::find(columns_.begin(), columns_.end(), needed) == columns_.end()) {
                Refuse(std::string("no column ") + (needed == Column::X ? "x" : "y"));
            }
        }
        NoteColumns();
    }

    void CountColumns(std::size_t count)
    {
        if (count < 2 || count > 4) {
            Refuse(NumberText_Counted(count, "column") + ", where x, y, pressure and time fit");
        }
        constexpr Column kOrder[] = {Column::X, Column::Y, Column::Pressure, Column::Time};
        columns_.assign(kOrder, kOrder + count);
        NoteColumns();
    }

    void NoteColumns()
    {
        auto const has = [this](Column column) {
            return std::find(columns_.begin(), columns_.end(), column) != columns_.end();
        };
        document_.hasPressure = has(Column::Pressure);
        document_.hasTime = has(Column::Time);
    }

    void ReadPoint(Fields const& fields)
    {
        StrokePoint point;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (columns_[i] != Column::Other) {
                SetNumber(point, columns_[i], fields[i]);
            }
        }
        if (document_.hasTime && !document_.points.empty() &&
            point.time < document_.points.back().time) {
            Refuse("time goes back from " + NumberText_Exact(document_.points.back().time) +
                   " to " + NumberText_Exact(point.time));
        }
        document_.points.push_back(point);
    }

    void SetNumber(StrokePoint& point, Column column, std::string_view field) const
    {
        std::optional<double> const value = NumberIn(field);
        if (!value) {
            Refuse("\"" + std::string(field.substr(0, kLongestQuote)) + "\" is no number");
        }
        if (column == Column::Time) {
            point.time = *value;
            return;
        }
        if (std::fabs(*value) > kGreatestNumber) {
            Refuse(NumberText_Exact(*value) + " is too far out");
        }
        if (column == Column::Pressure) {
            if (*value < 0.0) {
                Refuse("pressure " + NumberText_Exact(*value) + " is below 0");
            }
            point.pressure = *value;
        } else {
            (column == Column::X ? point.place.x : point.place.y) = static_cast<float>(*value);
        }
    }

    /// Letters of a bad field that are repeated to the reader.
    static constexpr std::size_t kLongestQuote = 40;
    /// Squares of coordinates up to this are floats still.
    static constexpr double kGreatestNumber = 1e18;

    StrokeDocument document_;
    std::vector<Column> columns_;
    std::size_t line_ = 1;
};

}  // namespace

StrokeDocument StrokeDocument_Parse(std::string const& text)
{
    return Parser().Parse(text);
}
