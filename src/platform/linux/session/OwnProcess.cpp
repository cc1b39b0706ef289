// SPDX-License-Identifier: MIT
#include "platform/linux/session/OwnProcess.h"

#include "foundation/Invariant.h"
#include "platform/linux/files/DurableFile.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace stowpocket {
namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::function<void()>& handler() {
    static std::function<void()> function;
    return function;
}

void runHandler() {
    if (const std::function<void()> run = std::exchange(handler(), {}))
        run();
}

constexpr std::array<int, 3> terminationSignals{SIGTERM, SIGINT, SIGHUP};

/// The two ends of a pipe. Writing a byte is one of the few things that a signal handler may do.
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

std::string runningFile() {
    constexpr const char* link = "/proc/self/exe";
    const std::string file = linkTarget(link);
    return file == link ? std::string() : file;
}

std::string ownExecutable() {
    return executableToStart(runningFile(), environment("APPIMAGE"), environment("APPDIR"));
}

std::string executableToStart(std::string_view runningCode, std::string_view appImage, std::string_view appFolder) {
    while (appFolder.ends_with('/'))
        appFolder.remove_suffix(1);
    const bool runsFromAppImage = appImage.starts_with('/') && !appFolder.empty() &&
                                  runningCode.starts_with(appFolder) &&
                                  runningCode.substr(appFolder.size()).starts_with('/');
    if (runsFromAppImage)
        return std::string(appImage);
    // The kernel adds this for a program whose file was replaced while it ran.
    constexpr std::string_view deleted = " (deleted)";
    if (runningCode.ends_with(deleted))
        runningCode.remove_suffix(deleted.size());
    return std::string(runningCode);
}

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
