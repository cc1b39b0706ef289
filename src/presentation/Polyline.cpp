// SPDX-License-Identifier: MIT
#include "presentation/Polyline.h"

#include <cmath>

namespace stowpocket {
namespace {

double distance(const Point& from, const Point& to) {
    return std::hypot(to.x - from.x, to.y - from.y);
}

double length(const Polyline& line) {
    double sum = 0;
    for (std::size_t index = 1; index < line.size(); ++index)
        sum += distance(line[index - 1], line[index]);
    return sum;
}

}  // namespace

Polyline trimmed(const Polyline& line, double fraction) {
    if (line.empty() || fraction <= 0)
        return {};
    if (fraction >= 1)
        return line;
    double left = length(line) * fraction;
    Polyline part{line.front()};
    for (std::size_t index = 1; index < line.size() && left > 0; ++index) {
        const Point& from = line[index - 1];
        const Point& to = line[index];
        const double piece = distance(from, to);
        const double share = left < piece ? left / piece : 1;
        part.push_back({std::lerp(from.x, to.x, share), std::lerp(from.y, to.y, share)});
        left -= piece;
    }
    return part;
}

Polyline onboardingCheckmark(double width, double height) {
    return {{0.22 * width, 0.5 * height}, {0.42 * width, 0.65 * height}, {0.75 * width, 0.3 * height}};
}

}  // namespace stowpocket
