// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/LinuxBookmarks.h"
#include "platform/linux/files/MountTable.h"
#include "platform/linux/files/PosixFileManager.h"
#include "platform/linux/preferences/PlistParser.h"
#include "platform/posix/FileProbe.h"
#include "platform/qt/QtChildProcess.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtTrash.h"
#include "platform/qt/SystemClock.h"

namespace stowpocket {

/// Every service that background work uses, and the dispatch that runs it. Made on the main thread.
struct LinuxBackground {
    LinuxBackground() {
        probe.setRunWait([this](const std::function<bool()>& wait) { return dispatch.runWait(wait); });
    }

    SystemClock clock;
    MountTable mounts;
    FileProbe probe{[this](const std::string& path) { return hangingMountOn(*mounts.mounts(), path); }};
    PosixFileManager files{probe};
    LinuxBookmarks bookmarks{mounts, probe, LinuxBookmarks::userFolders()};
    QtChildProcess childProcess;
    PlistParser propertyLists;
    QtTrash trash;
    QtDispatch dispatch;
};

}  // namespace stowpocket
