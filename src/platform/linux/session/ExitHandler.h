// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace stowpocket {

/// Runs a function when the process is ended by exit() while this exists. Qt does that from inside the main loop when
/// the X server goes, so that nothing further up the stack is destroyed. One at a time; main thread.
class ExitHandler {
public:
    explicit ExitHandler(std::function<void()> onExit);
    ExitHandler(const ExitHandler&) = delete;
    ExitHandler& operator=(const ExitHandler&) = delete;
    ~ExitHandler();
};

}  // namespace stowpocket
