// SPDX-License-Identifier: MIT
#pragma once

#include "services/Preferences.h"

#include <chrono>
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>

namespace stowpocket {

class Dispatch;
class ScheduledWork;
class SerialQueue;

/// The file behind the preferences. Read once, on the main thread. Afterwards one thread at a time uses it, and may
/// block.
class PreferenceDisk {
public:
    using Values = PropertyValue::Dictionary;

    struct Saved {
        /// Why the values are not on the disk, as text for the user; none if they are.
        std::optional<std::string> problem = {};
        /// What the disk holds now: the values, merged with what other programs have changed since `base`.
        Values values = {};
    };

    virtual ~PreferenceDisk() = default;
    /// Empty if nothing could be read.
    [[nodiscard]] virtual Values read() = 0;
    /// Returns once the values would survive a power failure. `base` is what they are derived from: the result of an
    /// earlier `read` or `save`.
    [[nodiscard]] virtual Saved save(const Values& base, const Values& values) = 0;
    /// False if another program has removed the file.
    [[nodiscard]] virtual bool isThere() = 0;
};

/// Preferences that this program stores itself. A change is written at once; changes made during a write follow
/// together in the next one. A failed write is repeated at the next change and after growing pauses.
class SavedPreferenceStore : public LayeredPreferenceStore {
public:
    /// Reads the stored values. `dispatch` outlives this.
    SavedPreferenceStore(Dispatch& dispatch, std::shared_ptr<PreferenceDisk> disk);
    /// Calls `finish`.
    ~SavedPreferenceStore() override;

    void whenSaved(SaveCompletion completion) override;

    /// Called when the program ends. Saves what is not yet saved, or everything if another program has removed the
    /// file. This is the only call that blocks the main thread on the disk, for five seconds at most. Returns the
    /// problem if it fails.
    std::optional<std::string> finish();

protected:
    /// Saves again as after a change. Without values there is nothing to save.
    void saveAgain();
    void storedValuesChanged() override;

private:
    struct Waiting {
        std::uint64_t generation;
        SaveCompletion completion;
        std::unique_ptr<ScheduledWork> timeLimit;
    };

    void saveAfter(std::chrono::milliseconds pause);
    void startSaving();
    void finishSaving(std::uint64_t generation, const PreferenceDisk::Values& sent,
                      const PreferenceDisk::Saved& saved);
    void answer(std::uint64_t generation, const std::optional<std::string>& problem);

    Dispatch& dispatch_;
    const std::shared_ptr<PreferenceDisk> disk_;
    std::unique_ptr<SerialQueue> queue_;
    /// The next attempt, unless one is under way.
    std::unique_ptr<ScheduledWork> scheduled_;
    /// Runs until the disk has responded.
    std::unique_ptr<ScheduledWork> silence_;
    bool isSaving_ = false;
    /// What the disk held after the last successful read or save.
    std::shared_ptr<const PreferenceDisk::Values> base_;
    std::chrono::milliseconds pause_;
    std::uint64_t generation_ = 0;
    std::uint64_t savedGeneration_ = 0;
    std::uint64_t finishedGeneration_ = 0;
    std::list<Waiting> waiting_;
    /// Lets results from other threads find out that this has been destroyed.
    const std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace stowpocket
