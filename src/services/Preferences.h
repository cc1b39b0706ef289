// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "foundation/Values.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// The user's settings under string keys, kept across restarts. Main thread only. Reads come from memory and never
/// fail. A change is saved in the background; while that fails, `saveProblem` returns the reason.
class PreferenceStore {
public:
    /// Gets the reason why a change is not saved, as text for the user, or none if it is saved.
    using SaveCompletion = std::function<void(const std::optional<std::string>& problem)>;

    virtual ~PreferenceStore() = default;

    /// Adds default values for keys that are not stored. Defaults are never saved. Called at launch, before the first
    /// read.
    virtual void registerDefaults(PropertyValue::Dictionary defaults) = 0;
    /// The stored value, or else the default; none if the key has neither.
    [[nodiscard]] virtual std::optional<PropertyValue> value(std::string_view key) const = 0;
    virtual void setValue(std::string_view key, PropertyValue value) = 0;
    /// Removes the stored value, so that the default applies again.
    virtual void removeValue(std::string_view key) = 0;
    /// Emitted after a stored value has changed, with its key.
    [[nodiscard]] virtual Signal<const std::string&>& changed() = 0;

    /// Calls `completion` once every change so far is safely stored: at once if it is already, and after two seconds
    /// at the latest, then with the reason why it is not. It is not called after this object is destroyed.
    virtual void whenSaved(SaveCompletion completion) = 0;
    /// Why changes cannot be saved at present, as text for the user; none if they can.
    [[nodiscard]] virtual std::optional<std::string> saveProblem() const = 0;
    /// Emitted after `saveProblem` has changed.
    [[nodiscard]] virtual Signal<>& saveProblemChanged() = 0;

    /// `value` in the requested type; false, 0 or an empty string if there is none. Booleans, numbers and strings are
    /// converted into each other as in the user defaults of macOS, since scripts and users write them in any of these
    /// types.
    [[nodiscard]] bool boolean(std::string_view key) const;
    [[nodiscard]] std::int64_t integer(std::string_view key) const;
    /// Strings only: nothing is converted.
    [[nodiscard]] std::string string(std::string_view key) const;
};

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
    /// Called after `stored()` has changed and before `changed` is emitted.
    virtual void storedValuesChanged() {}
    [[nodiscard]] const PropertyValue::Dictionary& stored() const { return stored_; }
    /// Adopts the values read from the disk. Emits nothing.
    void adopt(PropertyValue::Dictionary stored) { stored_ = std::move(stored); }
    /// Adopts what other programs changed between `before` and `after`, except for keys that have changed here since
    /// `before`.
    void takeOver(const PropertyValue::Dictionary& before, const PropertyValue::Dictionary& after);
    void setSaveProblem(std::optional<std::string> problem);

private:
    PropertyValue::Dictionary stored_;
    PropertyValue::Dictionary registered_;
    std::optional<std::string> saveProblem_;
    Signal<const std::string&> changed_;
    Signal<> saveProblemChanged_;
};

/// Merges, key by key, what two writers have made of `base`: `ours` where it differs from `base`, else `theirs`.
[[nodiscard]] PropertyValue::Dictionary mergedValues(const PropertyValue::Dictionary& base,
                                                     const PropertyValue::Dictionary& ours,
                                                     const PropertyValue::Dictionary& theirs);

}  // namespace stowpocket
