// SPDX-License-Identifier: MIT
#pragma once

#include "services/Bookmarks.h"
#include "services/Files.h"
#include "services/MainBundle.h"
#include "services/Preferences.h"
#include "services/Processes.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// What the program keeps and finds on the disk, through the system's own services.
namespace stowpocket {

class FileProbe;

/// The mount on the way to `path` that is not on this machine's own disks: a network volume, or a folder that is
/// mounted on first touch. Links are not followed: a path that leads there by one is not seen. Any thread.
[[nodiscard]] std::optional<std::string> remoteMountOn(const std::string& path);

/// The user's standard defaults.
[[nodiscard]] std::unique_ptr<PreferenceStore> makeUserDefaultsStore();
/// Bookmarks of the system, with security scope, so that a sandboxed copy reaches its files again after a restart.
/// `probe` outlives them, as it does the file manager.
[[nodiscard]] std::unique_ptr<Bookmarks> makeMacBookmarks(FileProbe& probe);
[[nodiscard]] std::unique_ptr<FileManager> makeMacFileManager(FileProbe& probe);
/// A file's size as the system writes it beside files, in the user's language. Main thread.
[[nodiscard]] std::string macByteCountText(std::int64_t bytes);
[[nodiscard]] std::unique_ptr<Trash> makeMacTrash();
[[nodiscard]] std::unique_ptr<PropertyListParser> makeMacPropertyListParser();
/// What the program's own bundle says of itself.
[[nodiscard]] MainBundle macMainBundle();

}  // namespace stowpocket
