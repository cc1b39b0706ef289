// SPDX-License-Identifier: MIT
#include "main/linux/LinuxServices.h"

#include "app/HandOver.h"
#include "platform/linux/appearance/DesktopSettings.h"
#include "platform/linux/updates/InstalledProgram.h"
#include "platform/qt/QtWindow.h"
#include "updates/AppcastUpdater.h"

#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

#include <sys/utsname.h>

#include <cstdio>

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

LinuxStorage::LinuxStorage(const std::string& preferencesPath)
    : preferences(dispatch, preferencesPath), bundle(installedBundle()) {}

LinuxUpdates::LinuxUpdates(const CoreServices& coreServices, Application& program)
    : core(coreServices),
      application(program),
      feedSession(installedFile(updaterProgram)),
      transport(installedFile(updaterProgram), runningAppImage().value_or(std::string())) {}

std::unique_ptr<UpdateFramework> LinuxUpdates::startFramework() {
    return std::make_unique<AppcastUpdater>(AppcastUpdaterServices{
        .core = core,
        .transport = transport,
        .window = window,
        .system = thisSystem(),
        .ownsItsFile = runningAppImage().has_value(),
        .openPage = [](const std::string& url) { QDesktopServices::openUrl(QUrl(QString::fromStdString(url))); },
        .restart =
            [this] {
                isRestartAsked = true;
                application.terminate();
            },
    });
}

std::unique_ptr<LinuxServices> LinuxServices::make() {
    auto connection = X11Connection::ofApplication();
    const std::optional<std::string> preferencesPath = LinuxPreferenceStore::defaultPath();
    if (!connection || !preferencesPath) {
        std::fprintf(stderr, "stowpocket: %s\n", connection ? "there is no home folder" : "this is no X11 desktop");
        return nullptr;
    }
    if (isMotionReduced(*connection))
        QApplication::setStyle(new MotionlessStyle);
    return std::unique_ptr<LinuxServices>(new LinuxServices(std::move(connection), *preferencesPath));
}

LinuxServices::LinuxServices(std::unique_ptr<X11Connection> connection, const std::string& preferencesPath)
    : storage_(preferencesPath),
      desktop_(std::move(connection), coreServicesOf(storage_)),
      updates_(coreServicesOf(storage_), desktop_.application) {}

AppServices LinuxServices::forApp() {
    return appServicesOf(storage_, desktop_, updates_);
}

}  // namespace stowpocket
