// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Bookmarks.h"
#include "platform/FileManager.h"
#include "platform/MainBundle.h"
#include "platform/PreferenceStore.h"
#include "platform/PropertyListParser.h"
#include "platform/Trash.h"

#include <memory>

// What the program keeps and finds on the disk, through the system's own services.
namespace stowpocket {

/// The user's standard defaults.
[[nodiscard]] std::unique_ptr<PreferenceStore> makeUserDefaultsStore();
/// Bookmarks of the system, with security scope, so that a sandboxed copy reaches its files again after a restart.
[[nodiscard]] std::unique_ptr<Bookmarks> makeMacBookmarks();
[[nodiscard]] std::unique_ptr<FileManager> makeMacFileManager();
[[nodiscard]] std::unique_ptr<Trash> makeMacTrash();
[[nodiscard]] std::unique_ptr<PropertyListParser> makeMacPropertyListParser();
/// What the program's own bundle says of itself.
[[nodiscard]] MainBundle macMainBundle();

}  // namespace stowpocket
