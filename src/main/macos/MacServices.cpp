// SPDX-License-Identifier: MIT
#include "main/macos/MacServices.h"

#include "app/HandOver.h"
#include "platform/macos/MacWindows.h"
#include "platform/macos/QtBridge.h"
#include "platform/qt/QtImages.h"
#include "platform/qt/QtWindow.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileOpenEvent>
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

DragImage imageOfDrag(const QPixmap& picture, QPoint hotSpot) {
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
    return [&drags](QWidget& source, const std::vector<FileURL>& files, const QPixmap& picture, QPoint hotSpot) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): on macOS the identifier of a window is its NSView
        drags.start(reinterpret_cast<void*>(source.window()->winId()), files, imageOfDrag(picture, hotSpot),
                    [widget = QPointer(&source)] {
                        if (widget)
                            releaseButton(*widget);
                    });
    };
}

}  // namespace

MacDesktop::MacDesktop(const CoreServices& coreServices)
    : core(coreServices),
      screen(makeMacMainScreen()),
      thumbnails(makeQuickLookThumbnails(makeImageContent)),
      icons(makeMacWorkspaceIcons(makeImageContent)),
      application(makeMacApplication()),
      statusBar(makeMacStatusBar()),
      fileDrag(makeMacFileDragSource()),
      eventMonitors(makeMacEventMonitors()),
      clipboard(makeMacClipboard()),
      scripts(makeAppleScriptService()),
      fileManagerSelection(*scripts),
      opener(makeMacFileOpener()),
      loginItem(makeMacLoginItem()),
      volumes(makeMacVolumes()),
      hotkeyService(makeCarbonHotkeyService(*eventMonitors)),
      views({
          .makePopover = makePopover,
          .drops = {.offersItems = [](const QMimeData&) { return dragCarriesItems(); },
                    .itemProviders = [](const QMimeData&) { return droppedItemProviders(); }},
          .tiles = {.startFileDrag = startFileDragWith(*fileDrag),
                    .byteCountText = macByteCountText,
                    .opener = *opener,
                    .fileCount = FileCount::bySystem},
          .settings = {
              .core = core,
              .eventMonitors = *eventMonitors,
              .loginItem = *loginItem,
              .openURL = [](const std::string& url) { QDesktopServices::openUrl(QUrl(QString::fromStdString(url))); },
              .isHotkeyTaken =
                  [this](const HotkeyIdentifier& hotkey) { return sharedHotkeyManager().isTaken(hotkey); }},
          .makeWindow = makeWindow,
      }) {}

HotkeyManager& MacDesktop::sharedHotkeyManager() {
    if (!hotkeyManager)
        hotkeyManager.emplace(*hotkeyService, core.preferences, core.notifications);
    return *hotkeyManager;
}

MacServices::MacServices() : desktop_(coreServicesOf(storage_)) {
    if (isMotionReduced())
        QApplication::setStyle(new MotionlessStyle);
}

AppServices MacServices::forApp() {
    AppServices services = appServicesOf(storage_, desktop_, updates_);
    const MacBackground& background = *storage_.background;
    services.installerImage.emplace(InstallerImageServices{.core = services.core,
                                                           .childProcess = *background.childProcess,
                                                           .propertyLists = *background.propertyLists,
                                                           .trash = *background.trash});
    return services;
}

OpenedFiles::OpenedFiles(Delivery deliver) : deliver_(std::move(deliver)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool OpenedFiles::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FileOpen)
        return QObject::eventFilter(watched, event);
    arrived(static_cast<QFileOpenEvent*>(event)->file());
    return true;
}

/// The name as it was given: QFile would write its accents in another form than drops do.
void OpenedFiles::arrived(const QString& path) {
    const std::optional<FileURL> file = FileURL::fromPath(path.toStdString());
    if (!file)
        return;
    if (files_.empty())
        QMetaObject::invokeMethod(
            this, [this] { deliver_(std::exchange(files_, {})); }, Qt::QueuedConnection);
    files_.push_back(*file);
}

}  // namespace stowpocket
