// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/FileWatch.h"
#include "services/SavedPreferenceStore.h"

#include <optional>
#include <string>

namespace stowpocket {

/// Preferences in a property-list file, which is written again when somebody has removed it.
class LinuxPreferenceStore : public SavedPreferenceStore {
public:
    LinuxPreferenceStore(Dispatch& dispatch, const std::string& path);

    /// The usual place of the file; none when the user has no home folder.
    [[nodiscard]] static std::optional<std::string> defaultPath();

private:
    Dispatch& dispatch_;
    FileWatch watch_;
    std::unique_ptr<ScheduledWork> writingAgain_;
};

}  // namespace stowpocket
