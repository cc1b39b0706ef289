// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

class QWidget;

namespace stowpocket {

/// Tells assistive technology what the view is if the toolkit's own description would be wrong. Buttons with such a
/// role can be pressed, and tabs say which one is selected. Call it before setting the view's name or text, because
/// the toolkit then decides once and for all how it describes the view.
void setAccessibleRole(QWidget& view, QAccessible::Role role);

}  // namespace stowpocket
