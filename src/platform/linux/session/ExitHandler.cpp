// SPDX-License-Identifier: MIT
#include "platform/linux/session/ExitHandler.h"

#include "foundation/Invariant.h"

#include <cstdlib>
#include <utility>

namespace stowpocket {
namespace {

std::function<void()>& handler() {
    static std::function<void()> function;
    return function;
}

void runHandler() {
    if (const std::function<void()> run = std::exchange(handler(), {}))
        run();
}

}  // namespace

ExitHandler::ExitHandler(std::function<void()> onExit) {
    invariant(!handler(), "one handler of the exit");
    handler() = std::move(onExit);
    // Registered after the function was made, so that it still exists when the process ends.
    static const bool isRegistered = std::atexit(runHandler) == 0;
    invariant(isRegistered, "the C library takes a handler of the exit");
}

ExitHandler::~ExitHandler() {
    handler() = {};
}

}  // namespace stowpocket
