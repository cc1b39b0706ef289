// SPDX-License-Identifier: MIT
#include "main/linux/LinuxServices.h"

#include "platform/linux/appearance/XSettings.h"
#include "platform/linux/files/BaseDirectories.h"
#include "platform/linux/session/OwnExecutable.h"
#include "platform/linux/updates/InstalledFiles.h"
#include "platform/qt/QtDropData.h"
#include "platform/qt/QtPopover.h"
#include "platform/qt/StillStyle.h"
#include "presentation/ByteCount.h"
#include "views/controls/Symbol.h"
#include "views/controls/Theme.h"

#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

#include <cstdio>

namespace stowpocket {
namespace {

/// The helper that decodes pictures, installed beside the program.
constexpr auto decoderProgram = "libexec/stowpocket/stowpocket-decoder";

/// The symbol drawn so that its square is as large as the place in the icon.
QImage paintSymbol(const StatusItemImage& image, const QColor& color, int pixelSize) {
    const double pointSize = image.pointSize * pixelSize / Symbol::side(image.pointSize);
    return Symbol::image(image.symbolName, pointSize, image.weight, {color}, 1);
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
      preferences_(background_->dispatch, std::move(preferencesPath)),
      thumbnails_(background_->dispatch, installedFile(decoderProgram)),
      icons_(screen_),
      directSaves_(*connection_, background_->dispatch),
      drops_(*connection_, background_->dispatch, directSaves_),
      statusBar_(*connection_, paintSymbol, drops_, [this] { iconStands_.reach(); }),
      fileDrag_(*connection_),
      popoverHost_(*connection_, fileDrag_),
      views_({
          .makePopover =
              [this](MakeContent makeContent) {
                  return std::make_unique<QtPopover>(popoverHost_, std::move(makeContent));
              },
          .drops = {.offersItems = [this](const QMimeData& data) { return offersItems(data, drops_); },
                    .itemProviders = [this](const QMimeData& data) { return itemProvidersOf(data, drops_); }},
          .tiles = {.startFileDrag = [this](QWidget& source, const FileURL& file, const QPixmap& picture,
                                            QPoint hotSpot) { fileDrag_.start(source, file, picture, hotSpot); },
                    .byteCountText = byteCountText},
          .settings = {.preferences = preferences_,
                       .eventMonitors = eventMonitors_,
                       .notificationCenter = notificationCenter_,
                       .loginItem = loginItem_,
                       .mainBundle = mainBundle_,
                       .openURL =
                           [](const std::string& url) {
                               QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
                           },
                       .hotkeySource = [this] { return hotkeys_.source(); }},
          .blendsWindows = [this] { return popoverHost_.blendsWindows(); },
          .whenIconStands = [this](std::function<void()> work) { iconStands_.whenReached(std::move(work)); },
      }),
      eventMonitors_(connection_->raw(), [this](std::function<void()> work) { fileDrag_.whenOver(std::move(work)); }),
      fileManagerSelection_(background_->dispatch, *connection_),
      loginItem_(configHome(), ownExecutable()),
      hotkeys_(
          {.connection = *connection_,
           .dispatch = background_->dispatch,
           .eventMonitors = eventMonitors_,
           .preferences = preferences_,
           .notificationCenter = notificationCenter_,
           .useToken = [this](const std::string& token) { useTokens({.activationToken = token, .startupID = {}}); }}),
      mainBundle_(installedBundle()),
      updates_({.preferences = preferences_,
                .dispatch = background_->dispatch,
                .clock = background_->clock,
                .mainBundle = mainBundle_,
                .application = application_}),
      colorScheme_(QDBusConnection::sessionBus(), *connection_,
                   [](bool isDark) { Theme::setAppearance(isDark ? Appearance::dark : Appearance::light); }) {}

/// Compositors know the windows of X11 programs by their own tokens too, in the place of the id.
void LinuxServices::useTokens(const StartupTokens& tokens) {
    popoverHost_.startup().begin(tokens.startupID.empty() ? tokens.activationToken : tokens.startupID);
}

AppServices LinuxServices::forApp() {
    return {
        .shelf = {.preferences = preferences_,
                  .bookmarks = background_->bookmarks,
                  .fileManager = background_->files,
                  .thumbnails = thumbnails_,
                  .workspaceIcons = icons_,
                  .mainScreen = screen_,
                  .dispatch = background_->dispatch,
                  .clock = background_->clock,
                  .notificationCenter = notificationCenter_},
        .statusBar = statusBar_,
        .views = views_,
        .application = application_,
        .eventMonitors = eventMonitors_,
        .fileManagerSelection = fileManagerSelection_,
        .loginItem = loginItem_,
        .volumes = volumes_,
        .sharedHotkeyManager = [this]() -> HotkeyManager& { return hotkeys_.sharedManager(); },
        .updates = {.preferences = preferences_,
                    .feedSession = updates_.feedSession(),
                    .alerts = alerts_,
                    .dispatch = background_->dispatch,
                    .mainBundle = mainBundle_,
                    .startUpdateFramework = [this] { return updates_.startFramework(); }},
        .installerImage = {.dispatch = background_->dispatch,
                           .childProcess = background_->childProcess,
                           .propertyLists = background_->propertyLists,
                           .fileManager = background_->files,
                           .trash = background_->trash},
    };
}

}  // namespace stowpocket
