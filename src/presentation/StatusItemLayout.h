// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Geometry.h"
#include "services/Pictures.h"

namespace stowpocket {

/// How the count is shown: not at all, beside the symbol, or as a badge on its corner where there is no room beside
/// it.
enum class CountPlace { none, beside, badge };

/// What stands in the menu bar, measured at natural size.
struct StatusItemMeasure {
    double symbolSize = 0;
    double fontSize = 0;
    /// Of the title with its leading space, and of the count alone; both 0 when there is no title.
    double titleWidth = 0;
    double countWidth = 0;
};

struct StatusItemLayout {
    Rect symbol;
    CountPlace countPlace = CountPlace::none;
    /// Room of the count, in which it is centred on a badge and left-aligned beside the symbol.
    Rect count;
    double fontSize = 0;
    /// How far natural sizes were stretched or shrunk.
    double scale = 1;

    friend bool operator==(const StatusItemLayout&, const StatusItemLayout&) = default;
};

enum class BarDirection { horizontal, vertical };

/// How much room the item asks the bar for. Along a vertical bar that is a square: such bars shrink what is wider.
[[nodiscard]] Size statusItemWish(const StatusItemMeasure& measure, BarDirection bar = BarDirection::horizontal);

/// What is drawn where in the room that the bar granted, which may be any.
[[nodiscard]] StatusItemLayout layOutStatusItem(const StatusItemMeasure& measure, const Size& granted);

/// The same for a picture that others scale: the count, if there is one, is a badge at every size.
[[nodiscard]] StatusItemLayout layOutBadge(const StatusItemMeasure& measure, const Size& room);

}  // namespace stowpocket
