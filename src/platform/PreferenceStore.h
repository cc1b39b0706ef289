// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/PropertyValue.h"
#include "foundation/Signal.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// The user's settings under string keys, kept across restarts. Main thread only. Reads answer from memory at once
/// and never fail; a write is on its way to the disk when the call returns and no caller waits for it.
class PreferenceStore {
public:
    virtual ~PreferenceStore() = default;

    /// Adds answers for keys that the user has not stored; never written. Called at launch, before they are read.
    virtual void registerDefaults(PropertyValue::Dictionary defaults) = 0;
    /// The stored value, else the registered one; none when the key has neither.
    [[nodiscard]] virtual std::optional<PropertyValue> value(std::string_view key) const = 0;
    virtual void setValue(std::string_view key, PropertyValue value) = 0;
    /// Forgets the stored value, so that the registered one answers again.
    virtual void removeValue(std::string_view key) = 0;
    /// Emitted after a stored value has changed, with its key.
    [[nodiscard]] virtual Signal<const std::string&>& changed() = 0;

    /// `value` as the type asked for; false, 0 or an empty string when there is none of that type.
    [[nodiscard]] bool boolean(std::string_view key) const;
    [[nodiscard]] std::int64_t integer(std::string_view key) const;
    [[nodiscard]] std::string string(std::string_view key) const;
};

}  // namespace stowpocket
