// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"

/// The vocabulary for forms: sections below each other, each with a title above a rounded panel of rows.
namespace stowpocket {

/// A whole page of sections that scrolls if it is higher than its place.
/// Null sections are skipped.
[[nodiscard]] QWidget* form(std::initializer_list<QWidget*> sections);
/// The title may be empty. Hidden rows and the lines above them take no room.
[[nodiscard]] QWidget* formSection(const QString& title, std::initializer_list<QWidget*> rows);
[[nodiscard]] QWidget* formRow(QLayout* stack);

}  // namespace stowpocket
