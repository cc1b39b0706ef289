// SPDX-License-Identifier: MIT
// stowpocket-updater: what an update has to do with the network and with the bytes that come from there.
#include "platform/linux/updates/UpdaterProgram.h"

int main(int argc, char** argv) {
    return stowpocket::runUpdater(argc, argv);
}
