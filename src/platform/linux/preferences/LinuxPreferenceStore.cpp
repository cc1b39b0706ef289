// SPDX-License-Identifier: MIT
#include "platform/linux/preferences/LinuxPreferenceStore.h"

#include "platform/linux/files/BaseDirectories.h"
#include "platform/linux/preferences/PreferenceFile.h"
#include "services/Dispatch.h"

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// Some programs put a file aside before they write the new one.
constexpr auto replacementTime = 1000ms;

}  // namespace

LinuxPreferenceStore::LinuxPreferenceStore(Dispatch& dispatch, const std::string& path)
    : SavedPreferenceStore(dispatch, std::make_shared<PreferenceFile>(path)),
      dispatch_(dispatch),
      watch_(path, [this] {
          writingAgain_ = dispatch_.after(replacementTime, [this] {
              saveAgain();
              whenSaved([this](const std::optional<std::string>&) { watch_.begin(); });
          });
      }) {}

std::optional<std::string> LinuxPreferenceStore::defaultPath() {
    std::optional<std::string> folder = configHome();
    return folder ? std::optional(folder->append("/stowpocket/preferences.plist")) : std::nullopt;
}

}  // namespace stowpocket
