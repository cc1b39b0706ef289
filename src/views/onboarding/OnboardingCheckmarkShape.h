// SPDX-License-Identifier: MIT
#pragma once

#include <QPainterPath>

namespace stowpocket {

/// The stroke of the closing screen's checkmark. Only the size of the rectangle counts: the shape is drawn from the
/// origin, so whoever paints it moves the painter there.
struct OnboardingCheckmarkShape {
    [[nodiscard]] static QPainterPath path(const QRectF& rect);
    /// The first part of the stroke, `fraction` of its length.
    [[nodiscard]] static QPainterPath trimmedPath(const QRectF& rect, double fraction);
};

}  // namespace stowpocket
