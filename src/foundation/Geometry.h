// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// In points, the unit of layout: one pixel on a plain screen, two on one of double density.
struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

/// In points, with y growing downward.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

/// In points, with y growing downward.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double right() const { return x + width; }
    [[nodiscard]] double bottom() const { return y + height; }
    [[nodiscard]] double centerX() const { return x + width / 2; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace stowpocket
