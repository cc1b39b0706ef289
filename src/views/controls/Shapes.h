// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPainterPath>

namespace stowpocket {

/// A rounded rectangle whose corners begin to bend a little before the circle of that radius would, so that no edge
/// is seen where straight and round meet.
[[nodiscard]] QPainterPath continuousRoundedRect(const QRectF& rect, double radius);

/// The colour `share` of the way from one to the other.
[[nodiscard]] QColor mixedColor(const QColor& from, const QColor& to, double share);

}  // namespace stowpocket
