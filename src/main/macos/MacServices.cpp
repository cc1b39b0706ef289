// SPDX-License-Identifier: MIT
#include "main/macos/MacServices.h"

#include "platform/macos/MacWindows.h"
#include "platform/macos/QtBridge.h"
#include "platform/qt/QtImageContent.h"
#include "platform/qt/StillStyle.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMouseEvent>
#include <QPointer>
#include <QUrl>

namespace stowpocket {
namespace {

std::shared_ptr<const ImageContent> makeImageContent(const Pixels& pixels) {
    return std::make_shared<QtImageContent>(qImageOf(pixels));
}

std::unique_ptr<Popover> makePopover(MakeContent makeContent) {
    return makeMacPopover([makeContent = std::move(makeContent)]() -> std::unique_ptr<HostedView> {
        return std::make_unique<QtHostedView>(makeContent());
    });
}

std::unique_ptr<Window> makeWindow(const QString& title, const QSize& contentSize, QtWindow::Level level,
                                   std::unique_ptr<QWidget> content) {
    const MacWindowKind kind = level == QtWindow::Level::floating ? MacWindowKind::bare : MacWindowKind::titled;
    return makeMacWindow(kind, title.toStdString(), std::make_unique<QtHostedView>(std::move(content), contentSize));
}

DragPicture dragPictureOf(const QPixmap& picture, QPoint hotSpot) {
    const QSizeF size = picture.deviceIndependentSize();
    return {.pixels = pixelsOfImage(picture.toImage()),
            .size = {size.width(), size.height()},
            .hotSpotX = static_cast<double>(hotSpot.x()),
            .hotSpotY = static_cast<double>(hotSpot.y())};
}

/// The system keeps the release of a button that ends a drag of its own, so the widget is told by us.
void releaseButton(QWidget& source) {
    const QPoint away(-1, -1);
    QMouseEvent release(QEvent::MouseButtonRelease, away, source.mapToGlobal(away), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QCoreApplication::sendEvent(&source, &release);
}

StartFileDrag startFileDragWith(FileDragSource& drags) {
    return [&drags](QWidget& source, const FileURL& file, const QPixmap& picture, QPoint hotSpot) {
        drags.start(reinterpret_cast<void*>(source.window()->winId()), file, dragPictureOf(picture, hotSpot),
                    [widget = QPointer(&source)] {
                        if (widget)
                            releaseButton(*widget);
                    });
    };
}

}  // namespace

MacServices::MacServices()
    : preferences_(makeUserDefaultsStore()),
      screen_(makeMacMainScreen()),
      thumbnails_(makeQuickLookThumbnails(makeImageContent)),
      icons_(makeMacWorkspaceIcons(makeImageContent)),
      application_(makeMacApplication()),
      statusBar_(makeMacStatusBar()),
      fileDrag_(makeMacFileDragSource()),
      eventMonitors_(makeMacEventMonitors()),
      scripts_(makeAppleScriptService()),
      fileManagerSelection_(*scripts_),
      loginItem_(makeMacLoginItem()),
      volumes_(makeMacVolumes()),
      hotkeyService_(makeCarbonHotkeyService()),
      mainBundle_(macMainBundle()),
      views_({
          .makePopover = makePopover,
          .drops = {.offersItems = [](const QMimeData&) { return dragCarriesItems(); },
                    .itemProviders = [](const QMimeData&) { return droppedItemProviders(); }},
          .tiles = {.startFileDrag = startFileDragWith(*fileDrag_), .byteCountText = macByteCountText},
          .settings = {
              .preferences = *preferences_,
              .eventMonitors = *eventMonitors_,
              .notificationCenter = notificationCenter_,
              .loginItem = *loginItem_,
              .mainBundle = mainBundle_,
              .openURL = [](const std::string& url) { QDesktopServices::openUrl(QUrl(QString::fromStdString(url))); },
              .hotkeySource = [this] { return hotkeyService_->source(); }},
          .makeWindow = makeWindow,
      }),
      feedSession_(makeMacFeedSession()),
      alerts_(makeMacAlerts()) {
    if (isMotionReduced())
        QApplication::setStyle(new StillStyle);
}

HotkeyManager& MacServices::sharedHotkeyManager() {
    if (!hotkeyManager_)
        hotkeyManager_.emplace(*hotkeyService_, *preferences_, notificationCenter_);
    return *hotkeyManager_;
}

AppServices MacServices::forApp() {
    return {
        .shelf = {.preferences = *preferences_,
                  .bookmarks = *background_->bookmarks,
                  .fileManager = *background_->files,
                  .thumbnails = *thumbnails_,
                  .workspaceIcons = *icons_,
                  .mainScreen = *screen_,
                  .dispatch = background_->dispatch,
                  .clock = background_->clock,
                  .notificationCenter = notificationCenter_},
        .statusBar = *statusBar_,
        .views = views_,
        .application = *application_,
        .eventMonitors = *eventMonitors_,
        .fileManagerSelection = fileManagerSelection_,
        .loginItem = *loginItem_,
        .volumes = *volumes_,
        .sharedHotkeyManager = [this]() -> HotkeyManager& { return sharedHotkeyManager(); },
        .updates = {.preferences = *preferences_,
                    .feedSession = *feedSession_,
                    .alerts = *alerts_,
                    .dispatch = background_->dispatch,
                    .mainBundle = mainBundle_,
                    .startUpdateFramework = startStandardUpdateFramework},
        .installerImage = {.dispatch = background_->dispatch,
                           .childProcess = *background_->childProcess,
                           .propertyLists = *background_->propertyLists,
                           .fileManager = *background_->files,
                           .trash = *background_->trash},
    };
}

}  // namespace stowpocket
