// SPDX-License-Identifier: MIT
#pragma once

#include "platform/PreferenceStore.h"

namespace stowpocket {

/// Stored values over registered defaults, in memory. Platforms without a preference store of their own derive
/// theirs from it and add the file.
class LayeredPreferenceStore : public PreferenceStore {
public:
    void registerDefaults(PropertyValue::Dictionary defaults) override;
    [[nodiscard]] std::optional<PropertyValue> value(std::string_view key) const override;
    void setValue(std::string_view key, PropertyValue value) override;
    void removeValue(std::string_view key) override;
    [[nodiscard]] Signal<const std::string&>& changed() override { return changed_; }

protected:
    /// Called after `stored()` has changed and before anybody is told.
    virtual void storedValuesChanged() {}
    [[nodiscard]] const PropertyValue::Dictionary& stored() const { return stored_; }
    /// Takes over what was read from the disk; nobody is told.
    void adopt(PropertyValue::Dictionary stored) { stored_ = std::move(stored); }

private:
    PropertyValue::Dictionary stored_;
    PropertyValue::Dictionary registered_;
    Signal<const std::string&> changed_;
};

}  // namespace stowpocket
