// SPDX-License-Identifier: MIT
#include "services/LayeredPreferenceStore.h"

#include <set>

namespace stowpocket {
namespace {

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
