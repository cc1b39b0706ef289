// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateTransport.h"

#include <string>
#include <vector>

namespace stowpocket {

/// The machine that a version has to run on.
struct UpdateSystem {
    /// As lists of releases name it: "linux".
    std::string operatingSystem;
    std::string systemVersion;
    /// As the system names its processor: "x86_64".
    std::string hardware;
};

/// The newest version of `items` that is for everybody, runs on this machine and is newer than `runningVersion`; null
/// when there is none. A version that names no system is for another one than this. `skippedVersion` is passed over.
[[nodiscard]] const AppcastItem* selectUpdate(const std::vector<AppcastItem>& items, const UpdateSystem& system,
                                              const std::string& runningVersion, const std::string& skippedVersion);

}  // namespace stowpocket
