// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"

/// The words for forms: sections below each other, each a title above a rounded panel of rows.
namespace stowpocket {

/// A whole page of sections, which scrolls where it is higher than its place.
/// Sections that are null are left out.
[[nodiscard]] QWidget* form(std::initializer_list<QWidget*> sections);
/// Without a title where that is empty. Rows that are hidden take no room, nor does the line above them.
[[nodiscard]] QWidget* formSection(const QString& title, std::initializer_list<QWidget*> rows);
[[nodiscard]] QWidget* formRow(QLayout* stack);

}  // namespace stowpocket
