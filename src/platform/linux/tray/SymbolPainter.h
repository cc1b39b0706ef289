// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"

#include <QColor>
#include <QImage>

#include <functional>

namespace stowpocket {

/// Draws a symbol in one colour into a transparent square of that many pixels a side.
using SymbolPainter = std::function<QImage(const StatusItemImage& symbol, const QColor& color, int pixelSize)>;

}  // namespace stowpocket
