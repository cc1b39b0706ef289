// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

namespace stowpocket {

/// How the list of items has just changed, so that a view can follow without looking at every item again.
struct ShelfChange {
    enum class Kind {
        inserted,  ///< the items at `indexes` are new
        removed,   ///< the items that stood at `indexes` before are gone
        updated,   ///< the items at `indexes` changed in themselves
        reset,     ///< anything may have changed; `indexes` is empty
    };

    Kind kind = Kind::reset;
    /// Ascending.
    std::vector<std::size_t> indexes;
};

}  // namespace stowpocket
