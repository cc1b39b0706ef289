// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"

#include <map>
#include <string>
#include <string_view>

namespace stowpocket {

/// Carries named announcements upward, from parts that do not know who listens. Main thread only; observers run at
/// once, in the order in which they were added. The names stand as constants beside whoever posts them.
class NotificationCenter {
public:
    void post(std::string_view name);
    /// `observer` runs at every post of `name` for as long as the subscription lives.
    Subscription observe(std::string_view name, std::function<void()> observer);

private:
    std::map<std::string, Signal<>, std::less<>> signals_;
};

}  // namespace stowpocket
