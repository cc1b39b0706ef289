// SPDX-License-Identifier: MIT
// How tests steer the stand-ins for what GNUstep lacks, and see what these were told.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

@class SPUUpdater;

namespace stowpocket::standIn {

/// The file systems that getfsstat() names: mount point, and whether it is on this machine.
extern std::map<std::string, bool> mounts;
/// What a script with that source returns, one item per line; other sources fail.
extern std::map<std::string, std::string> scripts;
/// Returns and forgets what scopes of security, requests and updaters were told, in that order.
[[nodiscard]] std::vector<std::string> takeCalls();
/// The last updater, which the framework's controller owns.
extern SPUUpdater* __unsafe_unretained updater;

/// Runs the main run loop until `condition` holds; false after five seconds.
[[nodiscard]] bool comesTrue(const std::function<bool()>& condition);

}  // namespace stowpocket::standIn
