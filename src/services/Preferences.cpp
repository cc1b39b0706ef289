// SPDX-License-Identifier: MIT
#include "services/Preferences.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <set>

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

/// The number at the beginning of a string, clamped to the range; 0 if there is none.
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

using Values = PropertyValue::Dictionary;

std::set<std::string> keysThatDiffer(const Values& some, const Values& others) {
    std::set<std::string> keys;
    const auto compare = [&keys](const Values& left, const Values& right) {
        for (const auto& [key, value] : left) {
            const PropertyValue* const other = find(right, key);
            if (other == nullptr || *other != value)
                keys.insert(key);
        }
    };
    compare(some, others);
    compare(others, some);
    return keys;
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

void LayeredPreferenceStore::registerDefaults(PropertyValue::Dictionary defaults) {
    for (auto& [key, value] : defaults)
        registered_.insert_or_assign(key, std::move(value));
}

std::optional<PropertyValue> LayeredPreferenceStore::value(std::string_view key) const {
    if (const PropertyValue* const found = find(stored_, key))
        return *found;
    if (const PropertyValue* const found = find(registered_, key))
        return *found;
    return std::nullopt;
}

void LayeredPreferenceStore::setValue(std::string_view key, PropertyValue value) {
    const PropertyValue* const old = find(stored_, key);
    if (old != nullptr && *old == value)
        return;
    const std::string name(key);
    stored_.insert_or_assign(name, std::move(value));
    storedValuesChanged();
    changed_.emit(name);
}

void LayeredPreferenceStore::removeValue(std::string_view key) {
    const auto entry = stored_.find(key);
    if (entry == stored_.end())
        return;
    const std::string name(key);
    stored_.erase(entry);
    storedValuesChanged();
    changed_.emit(name);
}

void LayeredPreferenceStore::takeOver(const Values& before, const Values& after) {
    if (before == after)
        return;
    const Values old = std::exchange(stored_, mergedValues(before, stored_, after));
    for (const std::string& key : keysThatDiffer(old, stored_))
        changed_.emit(key);
}

void LayeredPreferenceStore::setSaveProblem(std::optional<std::string> problem) {
    if (saveProblem_ == problem)
        return;
    saveProblem_ = std::move(problem);
    saveProblemChanged_.emit();
}

Values mergedValues(const Values& base, const Values& ours, const Values& theirs) {
    Values merged = theirs;
    for (const std::string& key : keysThatDiffer(base, ours)) {
        if (const PropertyValue* const value = find(ours, key))
            merged.insert_or_assign(key, *value);
        else
            merged.erase(key);
    }
    return merged;
}

}  // namespace stowpocket
