// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

class QThread;

namespace stowpocket {

/// Lets the first count wait until its font is loaded, on a thread of its own: on the main thread that would be felt,
/// and at the start of the program it would cost memory that a program at rest does not need. Main thread.
class CountFont {
public:
    CountFont();
    ~CountFont();

    /// Runs `then` once counts can be drawn without delay, perhaps before this returns; not after this is destroyed.
    /// Another `then` meanwhile takes its place.
    void whenLoaded(std::function<void()> then);

private:
    std::function<void()> then_;
    std::unique_ptr<QThread> loading_;
    bool isLoaded_ = false;
};

}  // namespace stowpocket
