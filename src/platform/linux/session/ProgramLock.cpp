// SPDX-License-Identifier: MIT
#include "platform/linux/session/ProgramLock.h"

#include "cli/CommandText.h"
#include "platform/linux/storage/DurableFile.h"
#include "platform/linux/storage/Folders.h"

#include <QString>
#include <QSysInfo>
#include <QtGlobal>

#include <fcntl.h>
#include <sys/file.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <thread>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

constexpr mode_t userOnly = 0600;
constexpr auto pollInterval = 20ms;

enum class Taking { taken, heldByAnother, impossible };

Taking tryLock(const FileDescriptor& file, int kind) {
    if (file.isOpen() && ::flock(file.get(), kind | LOCK_NB) == 0)
        return Taking::taken;
    return file.isOpen() && errno == EWOULDBLOCK ? Taking::heldByAnother : Taking::impossible;
}

std::string part(const char* what, const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr || *value == '\0' ? std::string() : std::string(", ") + what + ' ' + value;
}

std::string ownPlace() {
    return QSysInfo::machineHostName().toStdString() + part("display", "DISPLAY") +
           part("session", "XDG_SESSION_ID") + ", process " + std::to_string(::getpid());
}

std::string readPlace(const FileDescriptor& file) {
    std::array<char, 512> text{};
    const ssize_t length = ::pread(file.get(), text.data(), text.size(), 0);
    return length > 0 ? std::string(text.data(), static_cast<std::size_t>(length)) : "an unknown place";
}

}  // namespace

ProgramLock::ProgramLock(const std::string& path, std::chrono::milliseconds patience) {
    static_cast<void>(makeFolders(parentFolder(path)));
    // Not truncated before it is ours: it says where the holder runs.
    file_ = FileDescriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, userOnly));
    const auto end = std::chrono::steady_clock::now() + patience;
    Taking taking = tryLock(file_, LOCK_EX);
    while (taking == Taking::heldByAnother && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(pollInterval);
        taking = tryLock(file_, LOCK_EX);
    }
    if (taking == Taking::heldByAnother) {
        holder_ = readPlace(file_);
    } else if (taking == Taking::impossible) {
        qWarning("stowpocket: %s cannot be locked (%s); a second program would not be noticed", path.c_str(),
                 lastError().message().c_str());
    } else if (::ftruncate(file_.get(), 0) != 0 || writeAll(file_.get(), ownPlace())) {
        qWarning("stowpocket: %s cannot be written to", path.c_str());
    }
}

std::optional<std::string> ProgramLock::holderOf(const std::string& path) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return tryLock(file, LOCK_SH) == Taking::heldByAnother ? std::optional(readPlace(file)) : std::nullopt;
}

std::string ProgramLock::pathBeside(const std::string& preferences) {
    return parentFolder(preferences) + "/lock";
}

std::string runsElsewhereText(const std::string& holder) {
    return "stowpocket runs in another session already, which has the shelf: " + printable(holder);
}

}  // namespace stowpocket
