// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/tray/SymbolPainter.h"
#include "presentation/StatusItemLayout.h"

#include <QPainter>

#include <memory>

namespace stowpocket {

/// What the icon shows and who takes drops on it, wherever it is.
struct StatusItemFace {
    StatusItemImage image;
    StatusItemTitle title;
    std::shared_ptr<DraggingDestination> dropView;
};

[[nodiscard]] StatusItemMeasure measureFace(const StatusItemFace& face);

/// Loads what drawing a count takes. That is slow the first time, but may be done on any thread.
void loadCountFont();

/// Draws symbol and count in one colour as they were laid out in a room whose upper left corner is the painter's
/// origin.
void paintFace(QPainter& painter, const StatusItemFace& face, const SymbolPainter& paintSymbol,
               const StatusItemLayout& layout, const QColor& color);

/// White or nearly black, whichever stands out from `background`.
[[nodiscard]] QColor readableOn(const QColor& background);

}  // namespace stowpocket
