// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stowpocket {

/// A version is on trial as long as the file of the one that it replaced lies beside it, as `FILE.old`: the program
/// removes that once it has run for a while. Until then each start leaves a mark, which goes when the program ends in
/// order. A mark that no running program holds is that of a start which failed: then the old version takes its place
/// again and runs in this process. Called before anything of the new version can fail.
///
/// A start with arguments leaves no mark, since it may be a command, which ends at once.
void beginTrial(const std::string& file, char** argv);

}  // namespace stowpocket
