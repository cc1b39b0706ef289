// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"

#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// Names the application to the system: its spool folder, its queues, its desktop entry, its name on the bus.
inline constexpr std::string_view bundleIdentifier = "com.example.stowpocket";

/// Where the running program is installed, and its information list.
struct MainBundle {
    /// The folder or file that the user moves to install the program.
    FileURL bundleURL;
    /// None when it is absent or unreadable.
    std::optional<PropertyValue::Dictionary> infoDictionary;

    /// The text under `key`; null when it is missing or no text.
    [[nodiscard]] const std::string* infoString(std::string_view key) const {
        const PropertyValue* const value = infoDictionary ? find(*infoDictionary, key) : nullptr;
        return value == nullptr ? nullptr : value->string();
    }
};

/// Keys of the information list.
namespace infoKey {
inline constexpr std::string_view bundleName = "CFBundleName";
inline constexpr std::string_view bundleShortVersionString = "CFBundleShortVersionString";
/// The version by which releases are compared.
inline constexpr std::string_view bundleVersion = "CFBundleVersion";
/// The address of the list of released versions.
inline constexpr std::string_view feedURL = "SUFeedURL";
/// The key that releases are signed with, in Base64.
inline constexpr std::string_view publicEDKey = "SUPublicEDKey";
}  // namespace infoKey

/// The application's entry among the programs that start with the session. Main thread.
class LoginItem {
public:
    enum class Status { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

    virtual ~LoginItem() = default;
    [[nodiscard]] virtual Status status() const = 0;
    /// True when it is registered afterwards.
    [[nodiscard]] virtual bool registerItem() = 0;
    /// True when it is not registered afterwards.
    [[nodiscard]] virtual bool unregisterItem() = 0;
};

}  // namespace stowpocket
