// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Geometry.h"

#include <vector>

namespace stowpocket {

/// A line through points, straight between them.
using Polyline = std::vector<Point>;

/// The first part of the line, `fraction`, from 0 to 1, of its length. Empty when that is nothing.
[[nodiscard]] Polyline trimmed(const Polyline& line, double fraction);

/// The checkmark of the closing screen, drawn into a box of that size from its top left corner.
[[nodiscard]] Polyline onboardingCheckmark(double width, double height);

}  // namespace stowpocket
