// SPDX-License-Identifier: MIT
#include "updates/UpdateSelection.h"

#include "updates/VersionComparison.h"

#include <algorithm>

namespace stowpocket {
namespace {

/// The same processor has two names.
std::string_view commonName(std::string_view hardware) {
    return hardware == "aarch64" ? "arm64" : hardware;
}

bool runsOnHardware(std::string_view needed, std::string_view hardware) {
    while (!needed.empty()) {
        const std::size_t comma = std::min(needed.find(','), needed.size());
        std::string_view name = needed.substr(0, comma);
        needed.remove_prefix(std::min(comma + 1, needed.size()));
        name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
        name = name.substr(0, name.find_last_not_of(' ') + 1);
        if (!name.empty() && commonName(name) != commonName(hardware))
            return false;
    }
    return true;
}

bool isSuitable(const AppcastItem& item, const UpdateSystem& system) {
    return !item.version.empty() && item.channel.empty() && item.operatingSystem == system.operatingSystem &&
           runsOnHardware(item.hardware, system.hardware) &&
           compareVersions(item.minimumSystemVersion, system.systemVersion) <= 0;
}

}  // namespace

const AppcastItem* selectUpdate(const std::vector<AppcastItem>& items, const UpdateSystem& system,
                                const std::string& runningVersion, const std::string& skippedVersion) {
    const AppcastItem* newest = nullptr;
    for (const AppcastItem& item : items) {
        const std::string& toBeat = newest == nullptr ? runningVersion : newest->version;
        if (isSuitable(item, system) && item.version != skippedVersion && compareVersions(item.version, toBeat) > 0)
            newest = &item;
    }
    return newest;
}

}  // namespace stowpocket
