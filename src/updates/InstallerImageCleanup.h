// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "services/CoreServices.h"

#include <memory>
#include <optional>
#include <string>

namespace stowpocket {

class ChildProcess;
class PropertyListParser;
class ScheduledWork;
class Trash;

/// What the clean-up is built on; all of it outlives the work in the background.
struct InstallerImageServices {
    CoreServices core;
    ChildProcess& childProcess;
    PropertyListParser& propertyLists;
    Trash& trash;
    /// The tool that lists and detaches disk images.
    std::string imageTool = "/usr/bin/hdiutil";
};

/// Cleans up the disk image that the program was installed from: some time after the launch, unmounts the first
/// mounted image that contains a copy of this bundle and moves it to the Trash. Only for a program that runs from an
/// Applications folder. Failures are silent. Main thread; the work runs in the background.
class InstallerImageCleanup {
public:
    /// `home` is the user's home folder, if there is one.
    InstallerImageCleanup(const InstallerImageServices& services, const FileURL& bundle,
                          const std::optional<FileURL>& home);
    ~InstallerImageCleanup();

    /// Called once, at launch; returns at once.
    void cleanUp();

private:
    const InstallerImageServices services_;
    const FileURL bundle_;
    const std::optional<FileURL> home_;
    std::unique_ptr<ScheduledWork> pending_;
};

}  // namespace stowpocket
