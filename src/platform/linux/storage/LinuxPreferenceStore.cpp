// SPDX-License-Identifier: MIT
#include "platform/linux/storage/LinuxPreferenceStore.h"

#include "platform/linux/storage/BaseDirectories.h"
#include "platform/linux/storage/PreferenceFile.h"

namespace stowpocket {

LinuxPreferenceStore::LinuxPreferenceStore(Dispatch& dispatch, std::string path)
    : SavedPreferenceStore(dispatch, std::make_shared<PreferenceFile>(std::move(path))) {}

std::optional<std::string> LinuxPreferenceStore::defaultPath() {
    std::optional<std::string> folder = configHome();
    return folder ? std::optional(folder->append("/stowpocket/preferences.plist")) : std::nullopt;
}

}  // namespace stowpocket
