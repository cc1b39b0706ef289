// SPDX-License-Identifier: MIT
#include "views/shelf/ShelfItemView.h"

#include "views/controls/Button.h"
#include "views/controls/Compose.h"
#include "views/controls/Drawing.h"
#include "views/shelf/TilePicture.h"

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleHints>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace stowpocket {
namespace {

constexpr int tileWidth = 80;
constexpr int verticalPadding = 6;
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
constexpr double selectedFillOpacity = 0.16;
constexpr double selectedBorderWidth = 1;

constexpr QRect pictureFrame((tileWidth - tilePictureSide) / 2, verticalPadding, tilePictureSide, tilePictureSide);
/// Keeps the text away from the tile's border.
constexpr int nameMargin = 2;
constexpr QRect nameFrame(nameMargin, verticalPadding + tilePictureSide + spacing, tileWidth - 2 * nameMargin,
                          nameHeight);
constexpr int detailsTop = verticalPadding + tilePictureSide + spacing + nameHeight;

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

Selecting selectingBy(Qt::KeyboardModifiers modifiers) {
    if (modifiers.testFlag(Qt::ShiftModifier))
        return Selecting::range;
    return modifiers.testFlag(Qt::ControlModifier) ? Selecting::toggle : Selecting::alone;
}

}  // namespace

ShelfItemView::ShelfItemView(const UUID& id, TilePresentation shown, TileHost& host, QWidget* parent)
    : QWidget(parent), id_(id), host_(host) {
    setFocusPolicy(Qt::NoFocus);  // the grid makes one tile at a time reachable by Tab
    setPresentation(std::move(shown));
}

void ShelfItemView::setPresentation(TilePresentation shown) {
    shown_ = std::move(shown);
    nameLines_.clear();
    setAccessibleName(QString::fromStdString(shown_.accessibleName()));
    setFixedSize(ShelfItemView::sizeHint());
    update();
}

void ShelfItemView::setSelected(bool isSelected) {
    if (std::exchange(isSelected_, isSelected) == isSelected)
        return;
    QAccessible::State change;
    change.selected = true;
    QAccessibleStateChangeEvent event(this, change);
    QAccessible::updateAccessibility(&event);
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
            QStringLiteral("Remove from shelf"), [this] { host_.remove(*this); });
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
    letGo();
}

void ShelfItemView::focusInEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    const bool isBack = reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
    if (!isBack)
        showsFocus_ = reason != Qt::MouseFocusReason;
    QWidget::focusInEvent(event);
}

void ShelfItemView::letGo() {
    pressedAt_.reset();
    longPress_.stop();
}

void ShelfItemView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    pressedAt_ = event->position().toPoint();
    if (event->pointerType() == QPointingDevice::PointerType::Finger)
        longPress_.start(QGuiApplication::styleHints()->mousePressAndHoldInterval(), this);
}

void ShelfItemView::mouseMoveEvent(QMouseEvent* event) {
    if (!pressedAt_ ||
        (event->position().toPoint() - *pressedAt_).manhattanLength() < QApplication::startDragDistance())
        return;
    const QPoint held = *pressedAt_ - pictureFrame.topLeft();
    letGo();
    host_.startDrag(*this, held);
}

void ShelfItemView::mouseReleaseEvent(QMouseEvent* event) {
    const bool isClick = pressedAt_ && event->button() == Qt::LeftButton;
    letGo();
    if (isClick)
        host_.click(*this, selectingBy(event->modifiers()));
}

/// Its first click has selected the tile.
void ShelfItemView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier)
        host_.perform(*this, TileCommand::open);
    else
        mousePressEvent(event);
}

void ShelfItemView::contextMenuEvent(QContextMenuEvent* event) {
    letGo();
    host_.openMenu(*this, event->globalPos());
}

void ShelfItemView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != longPress_.timerId() || !pressedAt_)
        return QWidget::timerEvent(event);
    const QPoint held = *pressedAt_;
    letGo();
    host_.openMenu(*this, mapToGlobal(held));
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
    if (isSelected_) {
        const QRectF inside = QRectF(rect()).adjusted(selectedBorderWidth / 2, selectedBorderWidth / 2,
                                                      -selectedBorderWidth / 2, -selectedBorderWidth / 2);
        const QPainterPath shape = continuousRoundedRect(inside, cornerRadius - selectedBorderWidth / 2);
        painter.fillPath(shape, Theme::color(ColorRole::accent, palette(), selectedFillOpacity));
        painter.strokePath(shape, QPen(Theme::color(ColorRole::accent, palette()), selectedBorderWidth));
    }
    if (hasFocus() && showsFocus_) {
        constexpr double inset = focusWidth / 2;
        painter.strokePath(
            continuousRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), cornerRadius - inset),
            QPen(Theme::color(ColorRole::focus, palette()), focusWidth));
    }
}

void ShelfItemView::paintPicture(QPainter& painter) const {
    painter.drawImage(pictureFrame.topLeft(), tilePicture(host_.pictureOf(*this), devicePixelRatioF()));
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
