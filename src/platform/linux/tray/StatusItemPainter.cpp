// SPDX-License-Identifier: MIT
#include "platform/linux/tray/StatusItemPainter.h"

#include "platform/qt/QtPopover.h"

#include <QFontMetricsF>
#include <QThread>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace stowpocket {
namespace {

/// Alone on the screen the icon may be larger than in a bar, which makes it easier to hit.
constexpr double pocketScale = 1.4;
constexpr double pocketPadding = 7;
constexpr double pocketRadius = 10;
constexpr float borderOpacity = 0.22F;

/// Everything in `whole` except the badge and a gap around it, so that a filled symbol does not touch the badge.
QPainterPath around(const QRectF& badge, const QRectF& whole) {
    constexpr double gap = 1;
    const QRectF hole = badge.adjusted(-gap, -gap, gap, gap);
    QPainterPath path;
    path.addRect(whole);
    path.addRoundedRect(hole, hole.height() / 2, hole.height() / 2);
    return path;
}

QString countText(const StatusItemTitle& title) {
    return QString::fromStdString(title.text).trimmed();
}

QFont titleFont(const StatusItemTitle& title, double size) {
    QFont font;
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    font.setBold(title.weight == FontWeight::bold);
    return font;
}

void paintCount(QPainter& painter, const StatusItemLayout& layout, const StatusItemTitle& title,
                const QColor& color) {
    const QRectF room = exactRect(layout.count);
    painter.setFont(titleFont(title, layout.fontSize));
    if (layout.countPlace == CountPlace::beside) {
        painter.setPen(color);
        const QRectF raised = room.translated(0, -title.baselineOffset * layout.scale);
        painter.drawText(raised, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                         QString::fromStdString(title.text));
    } else if (layout.countPlace == CountPlace::badge) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRoundedRect(room, room.height() / 2, room.height() / 2);
        painter.setPen(readableOn(color));
        painter.drawText(room, Qt::AlignCenter | Qt::TextDontClip, countText(title));
    }
}

StatusItemLayout layOutPocket(const QSize& size, const StatusItemContent& content) {
    return layOutStatusItem(measureContent(content),
                            {size.width() - 2.0 * pocketPadding, size.height() - 2.0 * pocketPadding});
}

}  // namespace

std::optional<QColor> announcedForeground(std::span<const std::uint32_t> property) {
    // GNOME Shell 43 leaves these on a black bar until the style of the bar changes, if it started without XWayland.
    constexpr std::uint32_t full = 0xFFFF;
    constexpr std::array<std::uint32_t, 12> unset{0, 0, 0, full, 0, 0, full, full, 0, 0, full, 0};
    if (property.size() < 3 || std::ranges::equal(property, unset))
        return std::nullopt;
    const auto highByte = [](std::uint32_t component) { return static_cast<int>(component >> 8u & 0xFF); };
    return QColor(highByte(property[0]), highByte(property[1]), highByte(property[2]));
}

StatusItemMeasure measureContent(const StatusItemContent& content) {
    const QFontMetricsF metrics(titleFont(content.title, content.title.fontSize));
    return {content.image.pointSize, content.title.fontSize,
            metrics.horizontalAdvance(QString::fromStdString(content.title.text)),
            metrics.horizontalAdvance(countText(content.title))};
}

/// The whole program shares one list of fonts, so the size does not matter here.
void loadCountFont() {
    const StatusItemTitle title{.text = "0", .fontSize = 9, .weight = FontWeight::bold, .baselineOffset = 0};
    static_cast<void>(QFontMetricsF(titleFont(title, title.fontSize)).height());
}

void paintContent(QPainter& painter, const StatusItemContent& content, const SymbolPainter& paintSymbol,
                  const StatusItemLayout& layout, const QColor& color) {
    const double pixels = layout.symbol.width * painter.device()->devicePixelRatioF();
    const QImage symbol = paintSymbol(content.image, color, static_cast<int>(std::lround(pixels)));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (layout.countPlace == CountPlace::badge)
        painter.setClipPath(around(exactRect(layout.count), exactRect(layout.symbol)));
    painter.drawImage(exactRect(layout.symbol).toAlignedRect(), symbol);
    painter.setClipping(false);
    paintCount(painter, layout, content.title, color);
    painter.restore();
}

QSize pocketSize(const StatusItemContent& content) {
    const Size wish = preferredStatusItemSize(measureContent(content));
    return QSizeF(wish.width * pocketScale + 2 * pocketPadding, wish.height * pocketScale + 2 * pocketPadding)
        .toSize();
}

QPainterPath pocketOutline(const QRectF& room) {
    QPainterPath path;
    path.addRoundedRect(room, pocketRadius, pocketRadius);
    return path;
}

void paintPanel(QPainter& painter, const QSizeF& size, const QPalette& palette, bool isBlended) {
    QColor border = palette.color(QPalette::WindowText);
    border.setAlphaF(borderOpacity);
    painter.setRenderHint(QPainter::Antialiasing, isBlended);
    // Half of the line is outside the outline. Where the window ends at the outline, the line is drawn twice as wide.
    const QRectF room({0, 0}, size);
    const QPainterPath outline = pocketOutline(isBlended ? room.adjusted(0.5, 0.5, -0.5, -0.5) : room);
    painter.fillPath(outline, palette.window());
    painter.setPen(QPen(border, isBlended ? 1 : 2));
    painter.drawPath(outline);
}

void paintPocket(QPainter& painter, const QSize& size, const StatusItemContent& content,
                 const SymbolPainter& paintSymbol, const QPalette& palette, bool isBlended) {
    paintPanel(painter, size, palette, isBlended);
    painter.translate(pocketPadding, pocketPadding);
    paintContent(painter, content, paintSymbol, layOutPocket(size, content), palette.color(QPalette::WindowText));
}

IconDrag pocketDragAt(const QPointF& point, const QSize& size, const StatusItemContent& content) {
    const StatusItemLayout layout = layOutPocket(size, content);
    const bool isCount = layout.countPlace != CountPlace::none && point.x() - pocketPadding >= layout.count.x;
    return isCount ? IconDrag::everything : IconDrag::newest;
}

QColor readableOn(const QColor& background) {
    // Perceived brightness by the weights of ITU-R BT.601, in thousandths.
    const int brightness = 299 * background.red() + 587 * background.green() + 114 * background.blue();
    return brightness < 128 * 1000 ? QColor(Qt::white) : QColor(38, 38, 38);
}

CountFont::CountFont() = default;

CountFont::~CountFont() {
    if (loading_)
        loading_->wait();
}

void CountFont::whenLoaded(std::function<void()> then) {
    if (isLoaded_)
        return then();
    then_ = std::move(then);
    if (loading_)
        return;
    loading_.reset(QThread::create(loadCountFont));
    QObject::connect(loading_.get(), &QThread::finished, loading_.get(), [this] {
        isLoaded_ = true;
        std::exchange(then_, {})();
    });
    loading_->start();
}

}  // namespace stowpocket
