// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// The application's entry among the programs that start with the session. Main thread.
class LoginItem {
public:
    enum class Status { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

    virtual ~LoginItem() = default;
    [[nodiscard]] virtual Status status() const = 0;
    /// True when it is registered afterwards.
    [[nodiscard]] virtual bool registerItem() = 0;
    /// True when it is not registered afterwards.
    [[nodiscard]] virtual bool unregisterItem() = 0;
};

}  // namespace stowpocket
