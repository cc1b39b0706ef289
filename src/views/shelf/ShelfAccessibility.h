// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// From now on assistive technology meets the tiles as the items of a list, each with an action that removes it.
/// May be called again.
void installShelfAccessibility();

}  // namespace stowpocket
