// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// Carries out the one job that the arguments name and answers the exit code. It may do little more than that: what
/// comes from the network is read here, far from the shelf.
int runUpdater(int argc, char** argv);

}  // namespace stowpocket
