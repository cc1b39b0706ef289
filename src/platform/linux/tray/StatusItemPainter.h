// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/StatusItemLayout.h"
#include "services/StatusItem.h"

#include <QColor>
#include <QImage>
#include <QPainter>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

class QThread;

namespace stowpocket {

/// Draws a symbol in one colour into a transparent square of that many pixels a side.
using SymbolPainter = std::function<QImage(const StatusItemImage& symbol, const QColor& color, int pixelSize)>;

/// What the bar says symbols should be drawn in: the first colour of _NET_SYSTEM_TRAY_COLORS, whose components have
/// 16 bits. None when the property is absent or cut short.
[[nodiscard]] std::optional<QColor> announcedForeground(std::span<const std::uint32_t> property);

/// What the icon shows and who takes drops on it, wherever it is.
struct StatusItemContent {
    StatusItemImage image;
    StatusItemTitle title;
    std::shared_ptr<DraggingDestination> dropView;
};

[[nodiscard]] StatusItemMeasure measureContent(const StatusItemContent& content);

/// Loads what drawing a count takes. That is slow the first time, but may be done on any thread.
void loadCountFont();

/// Draws symbol and count in one colour as they were laid out in a room whose upper left corner is the painter's
/// origin.
void paintContent(QPainter& painter, const StatusItemContent& content, const SymbolPainter& paintSymbol,
                  const StatusItemLayout& layout, const QColor& color);

/// White or nearly black, whichever stands out from `background`.
[[nodiscard]] QColor readableOn(const QColor& background);

/// Lets the first count wait until its font is loaded, on a thread of its own: on the main thread that would be felt,
/// and at the start of the program it would cost memory that a program at rest does not need. Main thread.
class CountFont {
public:
    CountFont();
    ~CountFont();

    /// Runs `then` once counts can be drawn without delay, perhaps before this returns; not after this is destroyed.
    /// Another `then` meanwhile takes its place.
    void whenLoaded(std::function<void()> then);

private:
    std::function<void()> then_;
    std::unique_ptr<QThread> loading_;
    bool isLoaded_ = false;
};

}  // namespace stowpocket
