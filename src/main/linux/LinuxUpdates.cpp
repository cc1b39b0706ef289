// SPDX-License-Identifier: MIT
#include "main/linux/LinuxUpdates.h"

#include "platform/linux/session/OwnExecutable.h"
#include "platform/linux/updates/InstalledFiles.h"
#include "services/Windows.h"
#include "updates/AppcastUpdater.h"

#include <QDesktopServices>
#include <QUrl>

#include <sys/utsname.h>

namespace stowpocket {
namespace {

/// The helper of updates, installed beside the program.
constexpr auto updaterProgram = "libexec/stowpocket/stowpocket-updater";

UpdateSystem thisSystem() {
    utsname names{};
    ::uname(&names);
    return {"linux", names.release, names.machine};
}

}  // namespace

LinuxUpdates::LinuxUpdates(const LinuxUpdateServices& services)
    : services_(services),
      feedSession_(installedFile(updaterProgram)),
      worker_(installedFile(updaterProgram), runningAppImage().value_or(std::string())) {}

std::unique_ptr<UpdateFramework> LinuxUpdates::startFramework() {
    return std::make_unique<AppcastUpdater>(AppcastUpdaterServices{
        .preferences = services_.preferences,
        .dispatch = services_.dispatch,
        .clock = services_.clock,
        .mainBundle = services_.mainBundle,
        .worker = worker_,
        .window = window_,
        .system = thisSystem(),
        .ownsItsFile = runningAppImage().has_value(),
        .openPage = [](const std::string& url) { QDesktopServices::openUrl(QUrl(QString::fromStdString(url))); },
        .restart =
            [this] {
                isRestartAsked_ = true;
                services_.application.terminate();
            },
    });
}

}  // namespace stowpocket
