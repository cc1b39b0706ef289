// SPDX-License-Identifier: MIT
#include "main/linux/LinuxDesktop.h"

#include "app/DesktopShortcuts.h"
#include "platform/linux/files/Folders.h"
#include "platform/linux/hotkeys/CommandBinding.h"
#include "platform/linux/hotkeys/PortalHotkeyService.h"
#include "platform/linux/hotkeys/X11HotkeyService.h"
#include "platform/linux/session/OwnProcess.h"
#include "platform/linux/updates/InstalledProgram.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtDrops.h"
#include "platform/qt/QtPopover.h"
#include "presentation/Texts.h"
#include "views/controls/Theme.h"
#include "views/shelf/PocketRows.h"

#include <QDesktopServices>
#include <QUrl>
#include <QWidget>

namespace stowpocket {
namespace {

/// The helper that decodes pictures, installed beside the program.
constexpr auto decoderProgram = "libexec/stowpocket/stowpocket-decoder";

/// The pocket for Wayland compositors, installed beside the program.
constexpr auto waylandModule = "libexec/stowpocket/stowpocket-wayland.so";

/// The symbol drawn so that its square is as large as the place in the icon.
QImage paintSymbol(const StatusItemImage& image, const QColor& color, int pixelSize) {
    const double pointSize = image.pointSize * pixelSize / Symbol::side(image.pointSize);
    return Symbol::image(image.symbolName, pointSize, image.weight, {color}, 1);
}

PortalHotkeyService::Name portalName(const HotkeyIdentifier& hotkey) {
    if (hotkey == quickDropHotkey)
        return {QStringLiteral("quick-drop"), QStringLiteral("Quick Drop")};
    return {QStringLiteral("open-close-shelf"), QStringLiteral("Open/Close Shelf")};
}

void openInBrowser(const std::string& url) {
    QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

}  // namespace

LinuxDesktop::LinuxDesktop(std::unique_ptr<X11Connection> x11, const CoreServices& coreServices)
    : connection(std::move(x11)),
      core(coreServices),
      thumbnails(core.dispatch, installedFile(decoderProgram)),
      icons(screen),
      directSaves(*connection, core.dispatch),
      drops(*connection, core.dispatch, directSaves),
      dragWatch(*connection),
      statusBar(*connection, paintSymbol, drops, dragWatch,
                {core.dispatch, installedFile(waylandModule), paintPocketRows}, [this] { iconStands.occur(); }),
      fileDrag(*connection),
      clipboard(core.dispatch),
      popoverHost(*connection, fileDrag),
      eventMonitors(*connection,
                    {.afterOwn = [this](std::function<void()> work) { fileDrag.whenOver(std::move(work)); },
                     .isWaylandDragOn = [this] { return dragWatch.isWaylandDragOn(); }}),
      menuCover(*connection),
      fileManagerSelection(core.dispatch, *connection),
      opener(QDBusConnection::sessionBus()),
      loginItem(configHome(), ownExecutable()),
      colorScheme(QDBusConnection::sessionBus(), *connection,
                  [](bool isDark) { Theme::setAppearance(isDark ? Appearance::dark : Appearance::light); }),
      views(platformOfViews()),
      waylandDragEnded_(dragWatch.waylandDragEnded.connect([this] { eventMonitors.waylandDragEnded(); })),
      waylandDropped_(dragWatch.waylandDropped.connect([this](xcb_window_t window) { takeKeyboard(window); })) {}

/// A Wayland window on the way of the drag has it now, and a shelf that was dropped on would close without it.
void LinuxDesktop::takeKeyboard(xcb_window_t droppedOn) {
    QWidget* const window = QWidget::find(droppedOn);
    if (window != nullptr && window->isWindow() && !window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus))
        popoverHost.focus(*window);
}

QtViewFactory::Platform LinuxDesktop::platformOfViews() {
    return {
        .makePopover = [this](MakeContent make) { return std::make_unique<QtPopover>(popoverHost, std::move(make)); },
        .drops = {.offersItems = [this](const QMimeData& data) { return offersItems(data, drops); },
                  .itemProviders = [this](const QMimeData& data) { return itemProvidersOf(data, drops); }},
        .tiles = {.startFileDrag = [this](QWidget& source, const std::vector<FileURL>& files, const QPixmap& picture,
                                          QPoint hotSpot) { fileDrag.start(source, files, picture, hotSpot); },
                  .byteCountText = byteCountText,
                  .opener = opener},
        .settings = {.core = core,
                     .eventMonitors = eventMonitors,
                     .loginItem = loginItem,
                     .openURL = openInBrowser,
                     .isHotkeyTaken =
                         [this](const HotkeyIdentifier& hotkey) {
                             return hotkeyManager && hotkeyManager->isTaken(hotkey);
                         },
                     .makeDesktopShortcuts = makerOfDesktopShortcuts()},
        .blendsWindows = [this] { return popoverHost.blendsWindows(); },
        .whenIconStands = [this](std::function<void()> work) { iconStands.whenOccurred(std::move(work)); },
    };
}

/// Empty where keys are taken from the X server.
std::function<std::shared_ptr<DesktopShortcuts>()> LinuxDesktop::makerOfDesktopShortcuts() {
    if (!isWaylandSession())
        return {};
    return [this] {
        return DesktopShortcuts::make(
            {.core = core,
             .clipboard = clipboard,
             .programs = makeSettingsPrograms(),
             .source = [this] { return hotkeyService ? hotkeyService->source() : HotkeySource::none; },
             .keySymbol = [keys = X11KeyCharacters(connection->raw())](
                              std::uint32_t keyCode) { return keys.symbolName(keyCode); },
             .desktop = shortcutDesktopOf(sessionNames()),
             .program = shellCommand(ownExecutable())});
    };
}

/// Compositors know the windows of X11 programs by their own tokens too, in the place of the id.
void LinuxDesktop::useTokens(const StartupTokens& tokens) {
    popoverHost.startup().begin(tokens.startupID.empty() ? tokens.activationToken : tokens.startupID);
}

HotkeyManager& LinuxDesktop::sharedHotkeyManager() {
    if (!hotkeyManager) {
        hotkeyService = makeHotkeyService();
        hotkeyManager.emplace(*hotkeyService, core.preferences, core.notifications);
    }
    return *hotkeyManager;
}

std::unique_ptr<HotkeyService> LinuxDesktop::makeHotkeyService() {
    if (!isWaylandSession())
        return makeKeyGrabs();
    return std::make_unique<PortalHotkeyService>(
        QDBusConnection::sessionBus(), core.preferences, portalName, [this] { return makeKeyGrabs(); },
        [this](const std::string& token) { useTokens({.activationToken = token, .startupID = {}}); });
}

std::unique_ptr<HotkeyService> LinuxDesktop::makeKeyGrabs() {
    auto grabs = std::make_unique<X11HotkeyService>(connection->raw());
    // A shortcut that is in force can be recorded for the other purpose too.
    grabs->setOwnWindows([this](const KeyEvent& event) { return eventMonitors.swallowsGrabbed(event); });
    return grabs;
}

}  // namespace stowpocket
