// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace stowpocket {

/// Uninterpreted data: a bookmark, a dropped representation, the data value of a property list.
using Bytes = std::vector<std::uint8_t>;

/// A moment on the civil clock, to the microsecond. A double that holds seconds since 1970 keeps that precision for
/// the next two centuries.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

/// A property-list value, as preferences hold it. Reading it as a type that it does not have returns none.
class PropertyValue {
public:
    using Array = std::vector<PropertyValue>;
    using Dictionary = std::map<std::string, PropertyValue, std::less<>>;

    PropertyValue(bool value) : value_(value) {}
    PropertyValue(std::int64_t value) : value_(value) {}
    PropertyValue(int value) : value_(std::int64_t{value}) {}
    PropertyValue(double value) : value_(value) {}
    PropertyValue(std::string value) : value_(std::move(value)) {}
    PropertyValue(std::string_view value) : value_(std::string(value)) {}
    PropertyValue(const char* value) : value_(std::string(value)) {}
    PropertyValue(Bytes value) : value_(std::move(value)) {}
    PropertyValue(Date value) : value_(value) {}
    PropertyValue(Array value) : value_(std::move(value)) {}
    PropertyValue(Dictionary value) : value_(std::move(value)) {}

    [[nodiscard]] std::optional<bool> boolean() const { return as<bool>(); }
    [[nodiscard]] std::optional<std::int64_t> integer() const { return as<std::int64_t>(); }
    [[nodiscard]] std::optional<double> real() const { return as<double>(); }
    [[nodiscard]] std::optional<Date> date() const { return as<Date>(); }

    /// Null when the value has another type; otherwise borrowed from this value.
    [[nodiscard]] const std::string* string() const { return std::get_if<std::string>(&value_); }
    [[nodiscard]] const Bytes* data() const { return std::get_if<Bytes>(&value_); }
    [[nodiscard]] const Array* array() const { return std::get_if<Array>(&value_); }
    [[nodiscard]] const Dictionary* dictionary() const { return std::get_if<Dictionary>(&value_); }

    friend bool operator==(const PropertyValue&, const PropertyValue&) = default;

private:
    template <class T>
    [[nodiscard]] std::optional<T> as() const {
        const T* const held = std::get_if<T>(&value_);
        return held == nullptr ? std::nullopt : std::optional<T>(*held);
    }

    std::variant<bool, std::int64_t, double, std::string, Bytes, Date, Array, Dictionary> value_;
};

/// The value under `key`, borrowed from `dictionary`; null when there is none.
[[nodiscard]] inline const PropertyValue* find(const PropertyValue::Dictionary& dictionary, std::string_view key) {
    const auto entry = dictionary.find(key);
    return entry == dictionary.end() ? nullptr : &entry->second;
}

/// In points, the unit of layout: one pixel on a plain screen, two on one of double density.
struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

/// In points, with y growing downward.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

/// In points, with y growing downward.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double right() const { return x + width; }
    [[nodiscard]] double bottom() const { return y + height; }
    [[nodiscard]] double centerX() const { return x + width / 2; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace stowpocket
