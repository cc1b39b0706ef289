// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace stowpocket {

/// What a drag somewhere on the desktop carries for the shelf, as far as its source tells.
enum class DragOffer { nothing, files, promise, unknown };

/// Judges by types, each a number that the window system gave its name. `targets` is the answer to the plain question
/// which types there are, none when the source refused it; `typeList` is what such a source may have noted on its
/// window, empty when it has not. Qt sources refuse, and note the types only when there are more than three.
[[nodiscard]] DragOffer judgeDrag(std::optional<std::span<const std::uint32_t>> targets,
                                  std::span<const std::uint32_t> typeList, std::uint32_t uriList,
                                  std::uint32_t directSave);

}  // namespace stowpocket
