// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// How heavy text and symbols are drawn.
enum class FontWeight { regular, medium, semibold, bold };

}  // namespace stowpocket
