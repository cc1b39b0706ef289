// SPDX-License-Identifier: MIT
#pragma once

#include "services/Files.h"
#include "services/MainBundle.h"
#include "services/OtherPrograms.h"
#include "services/Preferences.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// Files and preferences, through the system's own services.
namespace stowpocket {

class FileProbe;

/// Returns the mount on the way to `path` that is not on a disk of this machine: a network volume, or a folder that
/// is mounted on first use. Links are not followed, so a mount behind a link is not found. Any thread.
[[nodiscard]] std::optional<std::string> remoteMountOn(const std::string& path);

/// The user's standard defaults.
[[nodiscard]] std::unique_ptr<PreferenceStore> makeUserDefaultsStore();
/// The system's bookmarks with security scope, which let a sandboxed copy reach its files again after a restart.
/// `probe` must outlive the bookmarks and the file manager.
[[nodiscard]] std::unique_ptr<Bookmarks> makeMacBookmarks(FileProbe& probe);
[[nodiscard]] std::unique_ptr<FileManager> makeMacFileManager(FileProbe& probe);
/// Returns a file's size as the system shows it, in the user's language. Main thread.
[[nodiscard]] std::string macByteCountText(std::int64_t bytes);
[[nodiscard]] std::unique_ptr<Trash> makeMacTrash();
[[nodiscard]] std::unique_ptr<PropertyListParser> makeMacPropertyListParser();
/// Returns the address and the information list of the program's own bundle.
[[nodiscard]] MainBundle macMainBundle();

}  // namespace stowpocket
