// SPDX-License-Identifier: MIT
#include "foundation/DispatchGroup.h"

#include <utility>

namespace stowpocket {

void DispatchGroup::enter() {
    state_.fetch_add(1);
}

void DispatchGroup::leave() {
    std::int64_t state = state_.load();
    do {
        if (state % unarmed == 0)
            return;
    } while (!state_.compare_exchange_weak(state, state - 1));
    if (state == 1)
        finish();
}

void DispatchGroup::notify(Work work) {
    work_ = std::move(work);
    if (state_.fetch_sub(unarmed) == unarmed)
        finish();
}

void DispatchGroup::finish() {
    if (!finished_.exchange(true))
        std::exchange(work_, {})();
}

}  // namespace stowpocket
