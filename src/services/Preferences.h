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

/// The user's settings under string keys, kept across restarts. Main thread only. Reads answer from memory at once
/// and never fail; a write is on its way to the disk when the call returns, and comes to nothing only while
/// `saveProblem` says why.
class PreferenceStore {
public:
    /// Gets the reason why a change is not saved, for the user; none when it is.
    using SaveCompletion = std::function<void(const std::optional<std::string>& problem)>;

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

    /// Calls `completion` once whatever becomes of this process, every change so far is kept: at once when that is so
    /// already, and after two seconds at the latest, with the reason when it is not so by then. Never called when
    /// this is gone before.
    virtual void whenSaved(SaveCompletion completion) = 0;
    /// Why changes are not saved at present, for the user; none while they are.
    [[nodiscard]] virtual std::optional<std::string> saveProblem() const = 0;
    /// Emitted after `saveProblem` has changed.
    [[nodiscard]] virtual Signal<>& saveProblemChanged() = 0;

    /// `value` as the type asked for; false, 0 or an empty string when it has none. Booleans, numbers and texts count
    /// for each other as in the user defaults of macOS, since scripts and users write them in any of these forms.
    [[nodiscard]] bool boolean(std::string_view key) const;
    [[nodiscard]] std::int64_t integer(std::string_view key) const;
    /// Text only: nothing is converted.
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
