// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantAnimation>

#include <chrono>

class QWidget;

namespace stowpocket::Motion {

/// Whether the desktop lets `view` move; where it asks for reduced motion, changes are shown at once.
[[nodiscard]] bool isWanted(const QWidget& view);
/// The same for a view that is not made yet.
[[nodiscard]] bool isWanted();
/// Gives the animation its duration and the ease-in-out curve.
void prepare(QVariantAnimation& animation, std::chrono::milliseconds duration);
/// Puts the animation, running or not, to the end of its direction.
void finish(QVariantAnimation& animation);

}  // namespace stowpocket::Motion
