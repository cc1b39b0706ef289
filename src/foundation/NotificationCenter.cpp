// SPDX-License-Identifier: MIT
#include "foundation/NotificationCenter.h"

namespace stowpocket {

void NotificationCenter::post(std::string_view name) {
    const auto signal = signals_.find(name);
    if (signal != signals_.end())
        signal->second.emit();
}

Subscription NotificationCenter::observe(std::string_view name, std::function<void()> observer) {
    return signals_[std::string(name)].connect(std::move(observer));
}

}  // namespace stowpocket
