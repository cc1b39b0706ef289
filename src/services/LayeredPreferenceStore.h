// SPDX-License-Identifier: MIT
#pragma once

#include "services/PreferenceStore.h"

namespace stowpocket {

/// Stored values over registered defaults, in memory.
class LayeredPreferenceStore : public PreferenceStore {
public:
    void registerDefaults(PropertyValue::Dictionary defaults) override;
    [[nodiscard]] std::optional<PropertyValue> value(std::string_view key) const override;
    void setValue(std::string_view key, PropertyValue value) override;
    void removeValue(std::string_view key) override;
    [[nodiscard]] Signal<const std::string&>& changed() override { return changed_; }
    void whenSaved(SaveCompletion completion) override { completion(saveProblem_); }
    [[nodiscard]] std::optional<std::string> saveProblem() const override { return saveProblem_; }
    [[nodiscard]] Signal<>& saveProblemChanged() override { return saveProblemChanged_; }

protected:
    /// Called after `stored()` has changed and before anybody is told.
    virtual void storedValuesChanged() {}
    [[nodiscard]] const PropertyValue::Dictionary& stored() const { return stored_; }
    /// Takes over what was read from the disk; nobody is told.
    void adopt(PropertyValue::Dictionary stored) { stored_ = std::move(stored); }
    /// Takes over what others changed between `before` and `after`, but for the keys that have changed here since
    /// they were as in `before`.
    void takeOver(const PropertyValue::Dictionary& before, const PropertyValue::Dictionary& after);
    void setSaveProblem(std::optional<std::string> problem);

private:
    PropertyValue::Dictionary stored_;
    PropertyValue::Dictionary registered_;
    std::optional<std::string> saveProblem_;
    Signal<const std::string&> changed_;
    Signal<> saveProblemChanged_;
};

/// What two writers who both began with `base` have made of it, key by key: where `ours` has changed it counts, else
/// `theirs`.
[[nodiscard]] PropertyValue::Dictionary mergedValues(const PropertyValue::Dictionary& base,
                                                     const PropertyValue::Dictionary& ours,
                                                     const PropertyValue::Dictionary& theirs);

}  // namespace stowpocket
