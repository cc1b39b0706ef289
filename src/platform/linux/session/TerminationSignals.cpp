// SPDX-License-Identifier: MIT
#include "platform/linux/session/TerminationSignals.h"

#include "foundation/Invariant.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace stowpocket {
namespace {

constexpr std::array<int, 3> terminationSignals{SIGTERM, SIGINT, SIGHUP};

/// The two ends of a pipe. A signal handler may do next to nothing, but it may write a byte.
std::array<int, 2> ends{-1, -1};

void noteSignal(int) {
    const int before = errno;
    static_cast<void>(!::write(ends[1], "", 1));
    errno = before;
}

int openPipe() {
    invariant(ends[0] < 0 && ::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) == 0, "one pipe for termination signals");
    return ends[0];
}

void handleWith(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (const int signal : terminationSignals)
        ::sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> onTermination)
    : arrival_(openPipe(), QSocketNotifier::Read) {
    QObject::connect(&arrival_, &QSocketNotifier::activated, [this, onTermination = std::move(onTermination)] {
        arrival_.setEnabled(false);
        onTermination();
    });
    handleWith(noteSignal);
}

TerminationSignals::~TerminationSignals() {
    handleWith(SIG_DFL);
    arrival_.setEnabled(false);
    for (int& end : ends) {
        ::close(end);
        end = -1;
    }
}

}  // namespace stowpocket
