// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Invariant.h"

#include <string>

/// What each target defines: the rules that hold for whatever bytes others have written. A broken invariant ends the
/// process.
namespace stowpocket {
void checkInput(const std::string& text);
}
