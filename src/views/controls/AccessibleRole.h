// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

class QWidget;

namespace stowpocket {

/// Tells assistive technology what the view is, where the toolkit's own answer would be wrong. Buttons in such a role
/// can be pressed; tabs among them say which one is selected. Called before the view gets its name or text: the
/// toolkit decides then, once and for all, how it describes the view.
void setAccessibleRole(QWidget& view, QAccessible::Role role);

}  // namespace stowpocket
