// SPDX-License-Identifier: MIT
#include "platform/linux/tray/WaylandPocket.h"

#include "intake/ExchangeFormats.h"
#include "platform/linux/drags/DropReading.h"
#include "platform/linux/tray/StatusItemWindow.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtPopover.h"
#include "services/MainBundle.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QLibrary>
#include <QLoggingCategory>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <utility>

namespace stowpocket {
namespace {

Point pointOf(const QPointF& point) {
    return {point.x(), point.y()};
}

Q_LOGGING_CATEGORY(waylandLog, "stowpocket.wayland")

constexpr int mostReadings = 4;

/// A drag with these formats; its data are read by other means.
std::unique_ptr<QMimeData> formatsOnly(const std::vector<std::string>& formats) {
    auto data = std::make_unique<QMimeData>();
    for (const std::string& format : formats)
        data->setData(QString::fromStdString(format), {});
    return data;
}

/// Returns whether one was open.
bool closeMenu() {
    QWidget* const menu = QApplication::activePopupWidget();
    return menu != nullptr && menu->close();
}

/// The text on a small panel, a little away from the pointer, which is at the top left corner.
QImage dragPicture(const QString& text, const QPalette& palette, double scale) {
    constexpr int widestText = 240;
    constexpr QSize fromPointer(12, 12);
    constexpr QSize padding(10, 6);
    const QFontMetrics metrics{QFont()};
    const QString shown = metrics.elidedText(text, Qt::ElideMiddle, widestText);
    const QRect panel(QPoint(fromPointer.width(), fromPointer.height()),
                      QSize(metrics.horizontalAdvance(shown), metrics.height()) + 2 * padding);
    QImage picture((fromPointer + panel.size()) * scale, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette.color(QPalette::Mid));
    painter.setBrush(palette.window());
    painter.drawPath(pocketOutline(QRectF(panel).adjusted(0.5, 0.5, -0.5, -0.5)));
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawText(panel, Qt::AlignCenter, shown);
    return picture;
}

/// The point below the left edge of the pocket, as the X server counts. Nothing that X11 programs show is above it.
QPoint below(const LayerPlace& place) {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return {};
    return screen->geometry().topRight() +
           QPoint(1 - place.fromRight - place.size.width(), place.fromTop + place.size.height());
}

}  // namespace

WaylandPocketList::WaylandPocketList(Dispatch& dispatch, const IconDragSource& source, PocketListPainter paint,
                                     Surface surface)
    : source_(source),
      paint_(std::move(paint)),
      surface_(std::move(surface)),
      folding_(dispatch, [this](bool isUnfolded) { becomeUnfolded(isUnfolded); }) {}

void WaylandPocketList::setAllowed(bool isAllowed) {
    isAllowed_ = isAllowed;
    if (!isAllowed)
        fold();
}

void WaylandPocketList::pocketMoved(const LayerPlace& place) {
    if (std::exchange(pocket_, place) != place && folding_.isUnfolded())
        update();
}

void WaylandPocketList::pointAt(LayerPart part, const std::optional<QPointF>& point, PocketFolding::By by) {
    folding_.setPointedAt(point.has_value() && isAllowed_, by);
    if (part == LayerPart::list && list_.pointAt(point ? std::optional(pointOf(*point)) : std::nullopt))
        surface_.repaint();
}

void WaylandPocketList::scroll(double steps, double points) {
    if (list_.scroll(steps * PocketList::wheelStep + points))
        surface_.repaint();
}

void WaylandPocketList::becomeUnfolded(bool isUnfolded) {
    if (isUnfolded) {
        if (source_.watch)
            changes_ = source_.watch([this] { update(); });
        return update();
    }
    changes_.clear();
    list_.clear();
    surface_.hide();
}

void WaylandPocketList::update() {
    std::vector<WaitingFile> files = source_.list ? source_.list() : std::vector<WaitingFile>();
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (files.empty() || screen == nullptr)
        return fold();
    const QRect whole = screen->geometry();
    const QRect pocket(QPoint(whole.width() - pocket_.fromRight - pocket_.size.width(), pocket_.fromTop),
                       pocket_.size);
    list_.lay(std::move(files), rectOf(pocket), rectOf(usableArea(*screen).translated(-whole.topLeft())));
    const Rect& frame = list_.frame();
    surface_.show({.size = QSizeF(frame.width, frame.height).toSize(),
                   .fromTop = static_cast<int>(frame.y),
                   .fromRight = whole.width() - static_cast<int>(frame.right()),
                   .output = pocket_.output});
    surface_.repaint();
}

QImage WaylandPocketList::picture(double scale, const QPalette& palette) const {
    const QSizeF size(list_.frame().width, list_.frame().height);
    QImage picture((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintPanel(painter, size, palette, true);
    paint_(painter, list_, palette);
    return picture;
}

std::vector<FileURL> WaylandPocketList::filesAt(const QPointF& point) const {
    const std::optional<PocketList::Row> row = list_.draggableAt(pointOf(point));
    if (!row)
        return {};
    return row->file != nullptr ? source_.file(row->file->id) : source_.files(IconDrag::everything);
}

void WaylandPocket::PaletteWatch::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        onChange_();
}

WaylandPocket::WaylandPocket(const WaylandSupport& support, const StatusItemContent& content,
                             const SymbolPainter& paintSymbol, std::function<void()> onClick)
    : support_(support),
      content_(content),
      paintSymbol_(paintSymbol),
      onClick_(std::move(onClick)),
      list_(support.dispatch, content.dragSource, support.paintList,
            {.show = [this](const LayerPlace& place) { layer_ ? layer_->show(LayerPart::list, place) : void(); },
             .hide = [this] { layer_ ? layer_->hide(LayerPart::list) : void(); },
             .repaint = [this] { layer_ ? layer_->repaint(LayerPart::list) : void(); }}) {
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        QMetaObject::invokeMethod(
            &context_, [this] { load(); }, Qt::QueuedConnection);
}

WaylandPocket::~WaylandPocket() = default;

/// The module stays loaded until the process ends: what it read of a drop may outlive the pocket.
void WaylandPocket::load() {
    QLibrary module(QString::fromStdString(support_.module));
    const auto make = reinterpret_cast<MakeLayerPocket>(module.resolve(makeLayerPocketName));
    if (make == nullptr)
        qCInfo(waylandLog, "the pocket is an X11 window: %s", qPrintable(module.errorString()));
    else
        layer_.reset(make(*this));
    if (layer_)
        palette_ = std::make_unique<PaletteWatch>([this] {
            showContent();
            layer_ ? layer_->repaint(LayerPart::list) : void();
        });
}

void WaylandPocket::layerReady() {
    isReady_ = true;
    readyChanged.emit();
}

void WaylandPocket::layerLost(const std::string& why) {
    // Most compositors that cannot show it never could, which is no news.
    if (std::exchange(isReady_, false))
        qCWarning(waylandLog, "the pocket is an X11 window from now on; the compositor has lost it: %s", why.c_str());
    QMetaObject::invokeMethod(
        &context_,
        [this] {
            list_.fold();
            layer_.reset();
        },
        Qt::QueuedConnection);
    readyChanged.emit();
}

void WaylandPocket::show(const LayerPlace& place) {
    place_ = place;
    if (layer_)
        layer_->show(LayerPart::pocket, place);
    list_.pocketMoved(place);
}

void WaylandPocket::hide() {
    list_.fold();
    if (layer_)
        layer_->hide(LayerPart::pocket);
}

void WaylandPocket::showContent() {
    if (layer_)
        layer_->repaint(LayerPart::pocket);
}

void WaylandPocket::whenAnswered(std::function<void()> done) {
    if (layer_)
        layer_->whenAnswered(std::move(done));
}

QImage WaylandPocket::layerPicture(LayerPart part, double scale) {
    if (part == LayerPart::list)
        return list_.picture(scale, palette_->palette());
    QImage picture((QSizeF(place_.size) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintPocket(painter, place_.size, content_, paintSymbol_, palette_->palette(), true);
    return picture;
}

/// What is pressed on the pocket is meant for it, and not for the list.
void WaylandPocket::layerPressed(LayerPart part) {
    if (part == LayerPart::pocket)
        list_.fold();
}

/// The X server, which an open menu hears of clicks from, does not know of those on the pocket.
void WaylandPocket::layerClicked(LayerPart part) {
    if (part == LayerPart::pocket)
        list_.fold();
    if (!closeMenu() && part == LayerPart::pocket)
        onClick_();
}

void WaylandPocket::layerScrolled(LayerPart part, double steps, double points) {
    if (part == LayerPart::list)
        list_.scroll(steps, points);
}

void WaylandPocket::layerMenuAsked() {
    list_.fold();
    if (!closeMenu())
        showStatusItemMenu(content_.menu, below(place_));
}

LayerDrag WaylandPocket::layerDrag(LayerPart part, const QPointF& pressed, double scale) {
    if (!content_.dragSource.files)
        return {};
    const std::vector<FileURL> files = part == LayerPart::list
                                           ? list_.filesAt(pressed)
                                           : content_.dragSource.files(pocketDragAt(pressed, place_.size, content_));
    if (files.empty())
        return {};
    std::string paths;
    for (const FileURL& file : files)
        paths += (paths.empty() ? "" : "\n") + file.path();
    const QString text = files.size() == 1 ? QString::fromStdString(files.front().lastPathComponent())
                                           : QStringLiteral("%1 files").arg(files.size());
    return {uriListOf(files), paths, dragPicture(text, palette_->palette(), scale)};
}

void WaylandPocket::layerDragBegan() {
    dragsOut.emit(true);
    list_.fold();
}

/// Where nothing stands for the file of a picture, as in the drags of browsers, the picture itself becomes the file.
bool WaylandPocket::promisesFiles(const QMimeData& data) const {
    return !isDropping_ && std::ranges::any_of(pictureFormats(), [&](const ContentsFormat& each) {
        return data.hasFormat(each.format);
    });
}

bool WaylandPocket::layerEntered(const std::vector<std::string>& formats) {
    const auto data = formatsOnly(formats);
    if (!content_.dropView || !offersAnyOf(*data, content_.dropView->registeredDraggedTypes(), *this))
        return false;
    QtDraggingPasteboard pasteboard(*data, *this);
    const bool isWanted = content_.dropView->draggingEntered(pasteboard) == DragOperation::copy;
    hovered.emit(isWanted);
    return isWanted;
}

void WaylandPocket::layerDropped(std::shared_ptr<OfferedData> data) {
    list_.dropped();
    if (readings_ == mostReadings)
        return dropped.emit();
    ++readings_;
    auto work = [&dispatch = support_.dispatch, self = std::weak_ptr(self_), data = std::move(data)]() mutable {
        PipeData pipes([&](const std::string& format) { return data->open(format); }, DropPatience());
        auto reading = std::make_shared<const DropReading>(readDrop(pipes, data->formats()));
        dispatch.async([self, data = std::move(data), reading = std::move(reading)] {
            if (const auto pocket = self.lock())
                (*pocket)->finishDrop(*data, *reading);
        });
    };
    support_.dispatch.serialQueue(std::string(bundleIdentifier) + ".dropped")->async(std::move(work));
}

void WaylandPocket::finishDrop(OfferedData& data, const DropReading& reading) {
    --readings_;
    isDropping_ = true;
    received_.uriList = reading.uriList;
    if (reading.contents)
        received_.contents = providerOf(*reading.contents, support_.dispatch);
    const auto formats = formatsOnly(data.formats());
    QtDraggingPasteboard pasteboard(*formats, *this);
    if (content_.dropView && content_.dropView->performDragOperation(pasteboard))
        data.finish();
    received_ = {};
    isDropping_ = false;
    dropped.emit();
}

}  // namespace stowpocket
