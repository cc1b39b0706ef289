// SPDX-License-Identifier: MIT
#include "app/linux/LinuxServices.h"

#include "platform/linux/input/X11HotkeyService.h"
#include "platform/linux/portal/PortalHotkeyService.h"
#include "platform/linux/session/OwnExecutable.h"
#include "platform/linux/storage/BaseDirectories.h"
#include "platform/linux/updates/InstalledFiles.h"
#include "platform/linux/x11/XSettings.h"
#include "platform/qt/QtDropData.h"
#include "platform/qt/QtPopover.h"
#include "platform/qt/StillStyle.h"
#include "updates/AppcastUpdater.h"
#include "views/Symbol.h"
#include "views/Theme.h"

#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

#include <sys/utsname.h>

#include <QDesktopServices>
#include <QUrl>

#include <cstdio>

namespace stowpocket {
namespace {

/// This very program, even where its file has been replaced since the start.
constexpr auto decoderExecutable = "/proc/self/exe";

/// The symbol drawn so that its square is as large as the place in the icon.
QImage paintSymbol(const StatusItemImage& image, const QColor& color, int pixelSize) {
    const double pointSize = image.pointSize * pixelSize / Symbol::side(image.pointSize);
    return Symbol::image(image.symbolName, pointSize, image.weight, {color}, 1);
}

/// The helper of updates, installed beside the program.
constexpr auto updaterProgram = "libexec/stowpocket/stowpocket-updater";

UpdateSystem thisSystem() {
    utsname names{};
    ::uname(&names);
    return {"linux", names.release, names.machine};
}

/// Whether the X server, if there is one, only stands in for a Wayland compositor, which keeps keys to itself.
bool isWaylandSession() {
    return qEnvironmentVariable("XDG_SESSION_TYPE") == QStringLiteral("wayland") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

PortalHotkeyService::Name portalName(const HotkeyIdentifier& hotkey) {
    if (hotkey == quickDropHotkey)
        return {QStringLiteral("quick-drop"), QStringLiteral("Quick Drop")};
    return {QStringLiteral("open-close-shelf"), QStringLiteral("Open/Close Shelf")};
}

}  // namespace

std::unique_ptr<LinuxServices> LinuxServices::make() {
    auto connection = X11Connection::ofApplication();
    std::optional<std::string> preferencesPath = LinuxPreferenceStore::defaultPath();
    if (!connection || !preferencesPath) {
        std::fprintf(stderr, "stowpocket: %s\n", connection ? "there is no home folder" : "this is no X11 desktop");
        return nullptr;
    }
    if (isMotionReduced(*connection))
        QApplication::setStyle(new StillStyle);
    return std::unique_ptr<LinuxServices>(new LinuxServices(std::move(connection), std::move(*preferencesPath)));
}

LinuxServices::LinuxServices(std::unique_ptr<X11Connection> connection, std::string preferencesPath)
    : connection_(std::move(connection)),
      preferences_(dispatch_, std::move(preferencesPath)),
      probe_([this](const std::string& path) { return hangingMountOn(*mounts_.mounts(), path); }),
      files_(probe_),
      bookmarks_(mounts_, probe_, LinuxBookmarks::userFolders()),
      thumbnails_(dispatch_, decoderExecutable),
      icons_(screen_),
      promises_(*connection_, dispatch_),
      statusBar_(*connection_, paintSymbol, &promises_),
      popoverHost_(*connection_),
      fileDrag_(*connection_),
      views_({
          .makePopover =
              [this](MakeContent makeContent) {
                  return std::make_unique<QtPopover>(popoverHost_, std::move(makeContent));
              },
          .drops = {.offersItems = [this](const QMimeData& data) { return offersItems(data, &promises_); },
                    .itemProviders = [this](const QMimeData& data) { return itemProvidersOf(data, &promises_); }},
          .startFileDrag = [this](QWidget& source, const FileURL& file, const QPixmap& picture,
                                  QPoint hotSpot) { fileDrag_.start(source, file, picture, hotSpot); },
          .settings = {.preferences = preferences_,
                       .eventMonitors = eventMonitors_,
                       .notificationCenter = notificationCenter_,
                       .loginItem = loginItem_,
                       .mainBundle = mainBundle_,
                       .openURL =
                           [](const std::string& url) {
                               QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
                           }},
      }),
      eventMonitors_(connection_->raw()),
      fileManagerSelection_(dispatch_),
      loginItem_(configHome(), ownExecutable()),
      mainBundle_(installedBundle()),
      feedSession_(installedFile(updaterProgram)),
      updateWorker_(installedFile(updaterProgram), runningAppImage().value_or(std::string())),
      colorScheme_(QDBusConnection::sessionBus(), *connection_,
                   [](bool isDark) { Theme::setAppearance(isDark ? Appearance::dark : Appearance::light); }) {}

HotkeyManager& LinuxServices::sharedHotkeyManager() {
    if (!hotkeyManager_) {
        hotkeyService_ = makeHotkeyService();
        hotkeyManager_.emplace(*hotkeyService_, preferences_, notificationCenter_);
    }
    return *hotkeyManager_;
}

std::unique_ptr<HotkeyService> LinuxServices::makeHotkeyService() {
    auto makeKeyGrabs = [this]() -> std::unique_ptr<HotkeyService> {
        auto grabs = std::make_unique<X11HotkeyService>(connection_->raw(), dispatch_);
        // A shortcut that is in force can be recorded for the other purpose too.
        grabs->setOwnWindows([this](const KeyEvent& event) { return eventMonitors_.swallowsGrabbed(event); });
        return grabs;
    };
    if (!isWaylandSession())
        return makeKeyGrabs();
    return std::make_unique<PortalHotkeyService>(
        QDBusConnection::sessionBus(), portalName, std::move(makeKeyGrabs),
        [this](const std::string& token) { useTokens({.activationToken = token, .startupID = {}}); });
}

/// Compositors know the windows of X11 programs by their own tokens too, in the place of the id.
void LinuxServices::useTokens(const StartupTokens& tokens) {
    popoverHost_.startup().begin(tokens.startupID.empty() ? tokens.activationToken : tokens.startupID);
}

std::unique_ptr<UpdateFramework> LinuxServices::startUpdateFramework() {
    return std::make_unique<AppcastUpdater>(AppcastUpdaterServices{
        .preferences = preferences_,
        .dispatch = dispatch_,
        .clock = clock_,
        .mainBundle = mainBundle_,
        .worker = updateWorker_,
        .window = updateWindow_,
        .system = thisSystem(),
        .ownsItsFile = runningAppImage().has_value(),
        .openPage = [](const std::string& url) { QDesktopServices::openUrl(QUrl(QString::fromStdString(url))); },
        .restart =
            [this] {
                isRestartAsked_ = true;
                application_.terminate();
            },
    });
}

AppServices LinuxServices::forApp() {
    return {
        .shelf = {.preferences = preferences_,
                  .bookmarks = bookmarks_,
                  .fileManager = files_,
                  .thumbnails = thumbnails_,
                  .workspaceIcons = icons_,
                  .mainScreen = screen_,
                  .dispatch = dispatch_,
                  .clock = clock_,
                  .notificationCenter = notificationCenter_},
        .statusBar = statusBar_,
        .views = views_,
        .application = application_,
        .eventMonitors = eventMonitors_,
        .fileManagerSelection = fileManagerSelection_,
        .loginItem = loginItem_,
        .volumes = volumes_,
        .sharedHotkeyManager = [this]() -> HotkeyManager& { return sharedHotkeyManager(); },
        .updates = {.preferences = preferences_,
                    .feedSession = feedSession_,
                    .alerts = alerts_,
                    .dispatch = dispatch_,
                    .mainBundle = mainBundle_,
                    .startUpdateFramework = [this] { return startUpdateFramework(); }},
        .installerImage = {.dispatch = dispatch_,
                           .childProcess = childProcess_,
                           .propertyLists = propertyLists_,
                           .fileManager = files_,
                           .trash = trash_},
    };
}

}  // namespace stowpocket
