// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingCheckmarkShape.h"

#include "presentation/Polyline.h"

namespace stowpocket {

QPainterPath OnboardingCheckmarkShape::path(const QRectF& rect) {
    return trimmedPath(rect, 1);
}

QPainterPath OnboardingCheckmarkShape::trimmedPath(const QRectF& rect, double fraction) {
    QPainterPath path;
    for (const Point& point : trimmed(onboardingCheckmark(rect.width(), rect.height()), fraction)) {
        if (path.elementCount() == 0)
            path.moveTo(point.x, point.y);
        else
            path.lineTo(point.x, point.y);
    }
    return path;
}

}  // namespace stowpocket
