// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// One version in a list of releases. Fields that the list does not have are empty.
struct AppcastItem {
    std::string version;
    /// The version as users read it.
    std::string displayVersion;
    std::string minimumSystemVersion;
    std::string operatingSystem;
    /// The required processors, separated by commas.
    std::string hardware;
    /// A version in a channel is only for users of that channel.
    std::string channel;
    /// A page about the version, for people.
    std::string pageURL;
    /// Plain text about the version, and where there is more.
    std::string notes;
    std::string notesURL;
    std::string downloadURL;
    /// Ed25519 over the file, in Base64.
    std::string signature;
    /// The size of the file in bytes.
    std::int64_t length = 0;

    friend bool operator==(const AppcastItem&, const AppcastItem&) = default;
};

/// Encodes items for the transfer from the process that reads the list, each field terminated by NUL. NUL inside a
/// field is dropped; it cannot occur in such a list.
[[nodiscard]] std::string encodedItems(const std::vector<AppcastItem>& items);

/// None if `bytes` were not written by `encodedItems`.
[[nodiscard]] std::optional<std::vector<AppcastItem>> decodedItems(std::string_view bytes);

/// Orders versions as their makers mean them: numbers by value, so 1.10 follows 1.9; missing parts are zero, so 1.0
/// is 1.0.0; what follows the numbers makes a version older when it is a word, as in 1.0b2 or 1.0-rc1, and newer when
/// it is a number, as in 1.0 (52). Words are compared without regard to case.
[[nodiscard]] std::weak_ordering compareVersions(std::string_view left, std::string_view right);

/// The machine that a version has to run on.
struct UpdateSystem {
    /// As lists of releases name it: "linux".
    std::string operatingSystem;
    std::string systemVersion;
    /// As the system names its processor: "x86_64".
    std::string hardware;
};

/// The newest version among `items` that is in no channel, runs on this machine and is newer than `runningVersion`;
/// null if there is none. A version without an operating system is not for this one. `skippedVersion` is ignored.
[[nodiscard]] const AppcastItem* selectUpdate(const std::vector<AppcastItem>& items, const UpdateSystem& system,
                                              const std::string& runningVersion, const std::string& skippedVersion);

}  // namespace stowpocket
