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

/// The file behind preferences. Read once, on the main thread; from then on one thread at a time asks it, and may be
/// kept waiting.
class PreferenceDisk {
public:
    using Values = PropertyValue::Dictionary;

    struct Saved {
        /// Why the values are not on the disk, for the user; none when they are.
        std::optional<std::string> problem = {};
        /// What the disk holds now: the values, with what other programs have changed there since `base`.
        Values values = {};
    };

    virtual ~PreferenceDisk() = default;
    /// Empty when there is nothing that could be read.
    [[nodiscard]] virtual Values read() = 0;
    /// Ends when the values would outlive a power failure. `base` is what they have come from: values that `read` or
    /// `save` answered.
    [[nodiscard]] virtual Saved save(const Values& base, const Values& values) = 0;
    /// False when somebody has taken the file away.
    [[nodiscard]] virtual bool isThere() = 0;
};

/// Preferences that are kept by this program itself. A change goes to the disk at once, together with those that come
/// while another is on its way. What cannot be saved is tried again at every change and after pauses that grow.
class SavedPreferenceStore : public LayeredPreferenceStore {
public:
    /// Reads. `dispatch` outlives this.
    SavedPreferenceStore(Dispatch& dispatch, std::shared_ptr<PreferenceDisk> disk);
    /// Finishes.
    ~SavedPreferenceStore() override;

    void whenSaved(SaveCompletion completion) override;

    /// For the end of the program, the one call that makes the main thread wait for the disk, and for five seconds at
    /// most: saves what is not yet saved, and everything when somebody has taken the file away. Answers what kept it
    /// from that.
    std::optional<std::string> finish();

protected:
    /// As after a change; without values there is nothing to save.
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
    /// Runs while the disk has not answered.
    std::unique_ptr<ScheduledWork> silence_;
    bool isSaving_ = false;
    /// What the disk held when it was last heard of.
    std::shared_ptr<const PreferenceDisk::Values> base_;
    std::chrono::milliseconds pause_;
    std::uint64_t generation_ = 0;
    std::uint64_t savedGeneration_ = 0;
    std::uint64_t finishedGeneration_ = 0;
    std::list<Waiting> waiting_;
    /// Answers from other threads that come after this is gone find it gone.
    const std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace stowpocket
