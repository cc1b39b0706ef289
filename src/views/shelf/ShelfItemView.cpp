// SPDX-License-Identifier: MIT
#include "views/shelf/ShelfItemView.h"

#include "shelf/ShelfItem.h"
#include "views/controls/Button.h"
#include "views/controls/Compose.h"
#include "views/controls/Drawing.h"

#include <QApplication>
#include <QCache>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace stowpocket {
namespace {

constexpr int tileWidth = 80;
constexpr int verticalPadding = 6;
constexpr int pictureSide = 48;
constexpr double pictureRadius = 6;
constexpr double edgeWidth = 1;
constexpr int edgeStrength = 40;  // of 255
constexpr int spacing = 4;
constexpr int nameHeight = 26;

constexpr int namePointSize = 10;
constexpr int sizePointSize = 9;
constexpr int missingPointSize = 8;
constexpr int removePointSize = 14;

constexpr double cornerRadius = 8;
constexpr double hoverFillOpacity = 0.5;
constexpr double borderWidth = 0.5;
constexpr double hoverBorderOpacity = 0.06;
constexpr double focusWidth = 2;

constexpr QRect pictureFrame((tileWidth - pictureSide) / 2, verticalPadding, pictureSide, pictureSide);
/// Keeps the text away from the tile's border.
constexpr int nameMargin = 2;
constexpr QRect nameFrame(nameMargin, verticalPadding + pictureSide + spacing, tileWidth - 2 * nameMargin,
                          nameHeight);
constexpr int detailsTop = verticalPadding + pictureSide + spacing + nameHeight;

QFont nameFont() {
    return Theme::font(namePointSize);
}

QFont sizeFont() {
    return Theme::font(sizePointSize);
}

QFont missingFont() {
    return Theme::font(missingPointSize, FontWeight::medium);
}

int lineHeight(const QFont& font) {
    return QFontMetrics(font).height();
}

/// Adds a faint dark outline to the picture's content, so that white paper is visible on a light window.
QImage withEdge(const QImage& picture) {
    QImage shade = picture;
    QPainter shading(&shade);
    shading.setCompositionMode(QPainter::CompositionMode_SourceIn);
    shading.fillRect(QRectF(QPointF(), shade.deviceIndependentSize()), QColor(0, 0, 0, edgeStrength));
    shading.end();
    QImage edged = picture;
    QPainter painter(&edged);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    for (const QPointF offset :
         {QPointF(0, edgeWidth), QPointF(edgeWidth, 0), QPointF(-edgeWidth, 0), QPointF(0, -edgeWidth)})
        painter.drawImage(offset, shade);
    return edged;
}

/// Fits the picture into its frame. It is painted into the frame's shape, since clipping leaves jagged corners.
QImage framed(const QImage& picture, double ratio) {
    QImage framed(pictureFrame.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    framed.setDevicePixelRatio(ratio);
    framed.fill(Qt::transparent);
    if (picture.isNull())
        return framed;

    QRectF place(QPointF(), QSizeF(picture.size()).scaled(pictureFrame.size(), Qt::KeepAspectRatio));
    place.moveCenter(QPointF(pictureSide, pictureSide) / 2);
    QPainter painter(&framed);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QPainterPath shape;
    shape.addRect(place);
    const QRectF frame(0, 0, pictureSide, pictureSide);
    painter.fillPath(shape.intersected(continuousRoundedRect(frame, pictureRadius)), Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.drawImage(place, picture);
    painter.end();
    return withEdge(framed);
}

}  // namespace

ShelfItemView::ShelfItemView(const ShelfItem& item, TileActions actions, QWidget* parent)
    : QWidget(parent), fileURL_(item.fileURL), actions_(std::move(actions)) {
    setFocusPolicy(Qt::NoFocus);  // the grid makes one tile at a time reachable by Tab
    setItem(item);
}

void ShelfItemView::setItem(const ShelfItem& item) {
    shown_ = tilePresentation(item, actions_.services.byteCountText);
    nameLines_.clear();
    setAccessibleName(QString::fromStdString(shown_.accessibleName()));
    setFixedSize(sizeHint());
    update();
}

QSize ShelfItemView::sizeHint() const {
    const int missingHeight = shown_.isMissing ? lineHeight(missingFont()) : 0;
    return {tileWidth, detailsTop + lineHeight(sizeFont()) + missingHeight + verticalPadding};
}

void ShelfItemView::setHovered(bool isHovered) {
    if (isHovered == this->isHovered())
        return;
    if (isHovered) {
        Button* const button = Button::ofSymbol(
            "xmark.circle.fill",
            {.pointSize = removePointSize, .role = ColorRole::onDisc, .secondaryRole = ColorRole::redDisc},
            QStringLiteral("Remove from shelf"), [this] { remove(); });
        button->setParent(this);
        button->setToolTip(button->accessibleName());
        button->setFocusPolicy(Qt::NoFocus);  // Delete removes the tile that has the keyboard
        button->resize(button->sizeHint());
        button->move(pictureFrame.right() + 1 - button->width(), pictureFrame.top());
        button->show();
        removeButton_ = button;
    } else {
        // Hiding the button under the pointer sends this tile another leave event.
        QWidget* const button = std::exchange(removeButton_, nullptr);
        button->hide();
        button->deleteLater();  // not immediately: it may be handling its click
    }
    update();
}

bool ShelfItemView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    showWholeName(static_cast<QHelpEvent*>(event)->globalPos());
    return true;
}

/// Broken into lines here, since a tooltip is as wide as its longest word. Always escaped markup, since a name may
/// look like markup.
void ShelfItemView::showWholeName(QPoint place) {
    constexpr int width = 320;
    const QStringList lines = brokenIntoLines(QString::fromStdString(shown_.name), QToolTip::font(), width);
    const QString text =
        lines.join(QLatin1Char('\n')).toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
    QToolTip::showText(place, QStringLiteral("<p style='white-space: pre'>%1</p>").arg(text), this);
}

void ShelfItemView::enterEvent(QEnterEvent*) {
    setHovered(true);
}

void ShelfItemView::leaveEvent(QEvent*) {
    setHovered(false);
}

void ShelfItemView::hideEvent(QHideEvent*) {
    setHovered(false);
    pressedAt_.reset();
}

void ShelfItemView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        pressedAt_ = event->position().toPoint();
}

void ShelfItemView::mouseMoveEvent(QMouseEvent* event) {
    if (!pressedAt_ || !shown_.isDraggable)
        return;
    if ((event->position().toPoint() - *pressedAt_).manhattanLength() >= QApplication::startDragDistance())
        startDrag();
}

void ShelfItemView::mouseReleaseEvent(QMouseEvent*) {
    pressedAt_.reset();
}

void ShelfItemView::startDrag() {
    const QPoint held = *pressedAt_ - pictureFrame.topLeft();
    pressedAt_.reset();
    setHovered(false);
    const QPoint hotSpot(std::clamp(held.x(), 0, pictureSide - 1), std::clamp(held.y(), 0, pictureSide - 1));
    const QPixmap picture = QPixmap::fromImage(framedPicture());
    // Copies, since the tile may be deleted during the drag.
    const StartFileDrag start = actions_.services.startFileDrag;
    const FileURL url = fileURL_;
    start(*this, url, picture, hotSpot);
}

QImage ShelfItemView::framedPicture() const {
    // As many as a tall popover shows at a time; each takes 9 KB on a screen of single density.
    constexpr int keptPictures = 48;
    static QCache<std::pair<qint64, double>, QImage> cache(keptPictures);
    const QImage picture = actions_.picture();
    const double ratio = devicePixelRatioF();
    const std::pair key(picture.cacheKey(), ratio);
    if (const QImage* const kept = cache.object(key))
        return *kept;
    QImage image = framed(picture, ratio);
    cache.insert(key, new QImage(image));
    return image;
}

void ShelfItemView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintDecoration(painter);
    paintPicture(painter);
    paintName(painter);
    paintDetails(painter);
}

void ShelfItemView::paintDecoration(QPainter& painter) const {
    if (isHovered()) {
        painter.fillPath(continuousRoundedRect(rect(), cornerRadius),
                         Theme::color(ColorRole::controlBackground, palette(), hoverFillOpacity));
        constexpr double inset = borderWidth / 2;
        painter.strokePath(
            continuousRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), cornerRadius - inset),
            QPen(Theme::color(ColorRole::primary, palette(), hoverBorderOpacity), borderWidth));
    }
    if (hasFocus()) {
        constexpr double inset = focusWidth / 2;
        painter.strokePath(
            continuousRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), cornerRadius - inset),
            QPen(Theme::color(ColorRole::focus, palette()), focusWidth));
    }
}

void ShelfItemView::paintPicture(QPainter& painter) const {
    painter.drawImage(pictureFrame.topLeft(), framedPicture());
}

void ShelfItemView::paintName(QPainter& painter) {
    const QFont font = nameFont();
    if (nameLines_.isEmpty())
        nameLines_ = brokenIntoTwoLines(QString::fromStdString(shown_.name), font, nameFrame.width());
    // Tall lines are set closer, so that two always fit. All lines use the baseline of the tile's font: the blank
    // space of a taller fallback font would push the text out of the frame.
    const QFontMetrics metrics(font);
    const int pitch = std::min(metrics.height(), nameHeight / 2);
    const int baseline = (pitch - metrics.height()) / 2 + metrics.ascent();
    const auto lineCount = static_cast<int>(nameLines_.size());
    QRect line(nameFrame.x(), nameFrame.y() + (nameHeight - lineCount * pitch) / 2, nameFrame.width(), pitch);

    painter.save();
    painter.setClipRect(nameFrame);
    painter.setFont(font);
    painter.setPen(Theme::color(shown_.isMissing ? ColorRole::secondary : ColorRole::primary, palette()));
    for (const QString& text : nameLines_) {
        const int advance = metrics.horizontalAdvance(text);
        painter.drawText(line.x() + (line.width() - advance) / 2, line.y() + baseline, text);
        line.translate(0, pitch);
    }
    painter.restore();
}

void ShelfItemView::paintDetails(QPainter& painter) const {
    QRect line(0, detailsTop, tileWidth, lineHeight(sizeFont()));
    painter.setFont(sizeFont());
    painter.setPen(Theme::color(ColorRole::secondary, palette()));
    painter.drawText(line, Qt::AlignCenter, QString::fromStdString(shown_.size));
    if (!shown_.isMissing)
        return;
    line = QRect(0, line.bottom() + 1, tileWidth, lineHeight(missingFont()));
    painter.setFont(missingFont());
    painter.setPen(Theme::color(ColorRole::red, palette()));
    painter.drawText(line, Qt::AlignCenter, QStringLiteral("Missing"));
}

}  // namespace stowpocket
