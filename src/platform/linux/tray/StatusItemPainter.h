// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/Layout.h"
#include "services/StatusItem.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

class QThread;

namespace stowpocket {

/// Draws a symbol in one colour into a transparent square of `pixelSize` pixels a side.
using SymbolPainter = std::function<QImage(const StatusItemImage& symbol, const QColor& color, int pixelSize)>;

/// The colour that the bar announces for symbols: the first one of _NET_SYSTEM_TRAY_COLORS, whose components have 16
/// bits. Nothing when the property is absent or cut short, or holds what a tray begins with before it knows its bar.
[[nodiscard]] std::optional<QColor> announcedForeground(std::span<const std::uint32_t> property);

/// What the icon shows and who takes drops on it, wherever it is shown.
struct StatusItemContent {
    StatusItemImage image;
    StatusItemTitle title;
    std::shared_ptr<DraggingDestination> dropView;
    StatusItemMenu menu = {};
    IconDragSource dragSource = {};
};

[[nodiscard]] StatusItemMeasure measureContent(const StatusItemContent& content);

/// Loads the font of counts, which is slow the first time. Any thread.
void loadCountFont();

/// Draws symbol and count in one colour. `layout` is relative to the origin of the painter.
void paintContent(QPainter& painter, const StatusItemContent& content, const SymbolPainter& paintSymbol,
                  const StatusItemLayout& layout, const QColor& color);

/// The pocket: the icon on a small panel of its own, in points.
[[nodiscard]] QSize pocketSize(const StatusItemContent& content);
/// Draws it with its top left corner at the origin of the painter, in the colours of the palette. `isBlended` tells
/// whether what is behind it shows through.
void paintPocket(QPainter& painter, const QSize& size, const StatusItemContent& content,
                 const SymbolPainter& paintSymbol, const QPalette& palette, bool isBlended);
/// What a drag that begins there carries: everything if it is the count, otherwise the newest file.
[[nodiscard]] IconDrag pocketDragAt(const QPointF& point, const QSize& size, const StatusItemContent& content);
/// The outline of its panel.
[[nodiscard]] QPainterPath pocketOutline(const QRectF& room);
/// Draws a panel like it, of that size.
void paintPanel(QPainter& painter, const QSizeF& size, const QPalette& palette, bool isBlended);

/// White or nearly black, whichever stands out from `background`.
[[nodiscard]] QColor readableOn(const QColor& background);

/// Delays the first count until its font is loaded on a thread of its own. Loading on the main thread would be felt,
/// and loading at the start would cost memory that a program at rest does not need. Main thread.
class CountFont {
public:
    CountFont();
    ~CountFont();

    /// Runs `then` when counts can be drawn without delay, which may be at once. A later call replaces a `then` that
    /// still waits. Never runs it after this is destroyed.
    void whenLoaded(std::function<void()> then);

private:
    std::function<void()> then_;
    std::unique_ptr<QThread> loading_;
    bool isLoaded_ = false;
};

}  // namespace stowpocket
