// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/FileManagers.h"

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

/// Classes as the programs of Debian 12 set them. All put text/uri-list on the clipboard; only Dolphin also takes
/// Ctrl+Insert for files.
constexpr std::array<KnownFileManager, 7> knownFileManagers{{
    {"thunar", CopyKey::controlC, false},
    {"pcmanfm", CopyKey::controlC, false},
    {"pcmanfm-qt", CopyKey::controlC, false},
    {"org.gnome.nautilus", CopyKey::controlC, false},
    {"caja", CopyKey::controlC, false},
    {"nemo", CopyKey::controlC, false},
    {"dolphin", CopyKey::controlInsert, true},
}};

bool equalIgnoringCase(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(one, other, {}, lower, lower);
}

}  // namespace

std::optional<KnownFileManager> fileManagerOf(std::string_view windowClass) {
    for (const KnownFileManager& manager : knownFileManagers) {
        if (equalIgnoringCase(manager.windowClass, windowClass))
            return manager;
    }
    return std::nullopt;
}

}  // namespace stowpocket
