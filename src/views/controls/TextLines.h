// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

namespace stowpocket {

/// `text` broken into at most two lines of that width, between words where they fit and within one where it does
/// not. What is too long loses the middle of its second line, so that the end of a file name stays.
[[nodiscard]] QStringList brokenIntoTwoLines(const QString& text, const QFont& font, int width);

/// `text` broken into as many lines of that width as it takes.
[[nodiscard]] QStringList brokenIntoLines(const QString& text, const QFont& font, int width);

}  // namespace stowpocket
