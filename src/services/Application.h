// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// The running program as the desktop sees it. Main thread.
class Application {
public:
    virtual ~Application() = default;
    /// Makes this the program that the user works with, taking the keyboard from the one before.
    virtual void activate() = 0;
    /// Ends the main loop; the call returns and the program ends in its turn.
    virtual void terminate() = 0;
};

}  // namespace stowpocket
