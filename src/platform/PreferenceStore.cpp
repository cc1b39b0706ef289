// SPDX-License-Identifier: MIT
#include "platform/PreferenceStore.h"

namespace stowpocket {

bool PreferenceStore::boolean(std::string_view key) const {
    const std::optional<PropertyValue> found = value(key);
    return found && found->boolean().value_or(false);
}

std::int64_t PreferenceStore::integer(std::string_view key) const {
    const std::optional<PropertyValue> found = value(key);
    return found ? found->integer().value_or(0) : 0;
}

std::string PreferenceStore::string(std::string_view key) const {
    const std::optional<PropertyValue> found = value(key);
    return found && found->string() != nullptr ? *found->string() : std::string();
}

}  // namespace stowpocket
