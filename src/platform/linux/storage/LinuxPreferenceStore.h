// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SavedPreferenceStore.h"

#include <optional>
#include <string>

namespace stowpocket {

/// Preferences in a property-list file.
class LinuxPreferenceStore : public SavedPreferenceStore {
public:
    LinuxPreferenceStore(Dispatch& dispatch, std::string path);

    /// The usual place of the file; none when the user has no home folder.
    [[nodiscard]] static std::optional<std::string> defaultPath();
};

}  // namespace stowpocket
