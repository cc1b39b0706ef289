// SPDX-License-Identifier: MIT
#include "services/PreferenceStore.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace stowpocket {
namespace {

std::string_view withoutLeadingBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    return text;
}

/// A text counts as true when it begins with a letter of "yes" or "true" or with a number other than 0.
bool isTrue(std::string_view text) {
    text = withoutLeadingBlanks(text);
    if (text.starts_with('+') || text.starts_with('-'))
        text.remove_prefix(1);
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    return text.find_first_of("YyTt123456789") == 0;
}

/// The number at the beginning of a text, brought into range; 0 without one.
std::int64_t integerOf(std::string_view text) {
    text = withoutLeadingBlanks(text);
    if (text.starts_with("+") && !text.starts_with("+-"))
        text.remove_prefix(1);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc::result_out_of_range)
        return number;
    return text.starts_with('-') ? std::numeric_limits<std::int64_t>::min()
                                 : std::numeric_limits<std::int64_t>::max();
}

std::int64_t integerOf(double number) {
    constexpr double limit = 9223372036854775808.0;  // 2 to the 63rd
    if (std::isnan(number))
        return 0;
    if (number >= limit)
        return std::numeric_limits<std::int64_t>::max();
    return number < -limit ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(number);
}

}  // namespace

bool PreferenceStore::boolean(std::string_view key) const {
    const std::optional<PropertyValue> found = value(key);
    if (!found)
        return false;
    if (const std::string* const text = found->string())
        return isTrue(*text);
    return found->boolean().value_or(false) || found->integer().value_or(0) != 0 || found->real().value_or(0) != 0;
}

std::int64_t PreferenceStore::integer(std::string_view key) const {
    const std::optional<PropertyValue> found = value(key);
    if (!found)
        return 0;
    if (const std::string* const text = found->string())
        return integerOf(*text);
    if (const std::optional<double> number = found->real())
        return integerOf(*number);
    return found->integer().value_or(found->boolean().value_or(false) ? 1 : 0);
}

std::string PreferenceStore::string(std::string_view key) const {
    const std::optional<PropertyValue> found = value(key);
    return found && found->string() != nullptr ? *found->string() : std::string();
}

}  // namespace stowpocket
