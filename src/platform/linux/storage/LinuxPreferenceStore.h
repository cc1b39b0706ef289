// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LayeredPreferenceStore.h"
#include "platform/linux/storage/PreferenceFile.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace stowpocket {

class Dispatch;
class ScheduledWork;
class SerialQueue;

/// Preferences in a property-list file, read once at construction. A change is on its way to the disk within a tenth
/// of a second, together with those that follow it closely, and always off the main thread; a write that fails is
/// tried again at the next change. `dispatch` must outlive this.
class LinuxPreferenceStore : public LayeredPreferenceStore {
public:
    LinuxPreferenceStore(Dispatch& dispatch, std::string path);
    /// Flushes.
    ~LinuxPreferenceStore() override;

    /// The usual place of the file; none when the user has no home folder.
    [[nodiscard]] static std::optional<std::string> defaultPath();

    /// Returns when everything that is not yet on the disk has been written there, or has failed to be. The one call
    /// that makes the main thread wait for the disk: for the end of the program.
    void flush();

protected:
    void storedValuesChanged() override;

private:
    void startWriting();

    Dispatch& dispatch_;
    const std::shared_ptr<PreferenceFile> file_;
    std::unique_ptr<SerialQueue> queue_;
    std::unique_ptr<ScheduledWork> scheduledWrite_;
    std::uint64_t generation_ = 0;
};

}  // namespace stowpocket
