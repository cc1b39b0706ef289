// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/PocketList.h"

class QPainter;
class QPalette;

namespace stowpocket {

/// Draws the rows of the list beside the pocket as the shelf draws its tiles. The list's corner is the origin of the
/// painter.
void paintPocketRows(QPainter& painter, const PocketList& list, const QPalette& palette);

}  // namespace stowpocket
