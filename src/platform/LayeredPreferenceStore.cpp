// SPDX-License-Identifier: MIT
#include "platform/LayeredPreferenceStore.h"

namespace stowpocket {

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

}  // namespace stowpocket
