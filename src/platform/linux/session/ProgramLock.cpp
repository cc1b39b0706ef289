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
#include <future>
#include <memory>
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

FileDescriptor openLock(const std::string& path, int mode) {
    return FileDescriptor(::open(path.c_str(), mode | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, userOnly));
}

/// For reading where that is enough: a disk that is too busy to be written to does not hold up the start then.
FileDescriptor openToLock(const std::string& path) {
    FileDescriptor file = openLock(path, O_RDONLY);
    if (!file.isOpen() && errno == ENOENT && makeFolders(parentFolder(path)))
        file = openLock(path, O_RDWR | O_CREAT);
    // NFS gives this lock only to who may write.
    if (file.isOpen() && tryLock(file, LOCK_EX) == Taking::impossible && errno == EBADF)
        file = openLock(path, O_RDWR);
    return file;
}

std::string part(const char* what, const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr || *value == '\0' ? std::string() : std::string(", ") + what + ' ' + value;
}

std::string ownPlace() {
    return QSysInfo::machineHostName().toStdString() + part("display", "DISPLAY") +
           part("session", "XDG_SESSION_ID") + ", process " + std::to_string(::getpid());
}

/// A longer place may follow behind the end of the text.
std::string readPlace(const FileDescriptor& file) {
    std::array<char, 512> text{};
    const ssize_t length = ::pread(file.get(), text.data(), text.size() - 1, 0);
    return length > 0 ? std::string(text.data()) : "an unknown place";
}

/// Waits a moment for the disk and no longer. Nothing is truncated: ext4 takes a millisecond or two to free what a
/// file holds, at every start.
void writePlace(const std::string& path) {
    constexpr auto diskPatience = 200ms;
    const auto isWritten = std::make_shared<std::promise<void>>();
    const std::future<void> written = isWritten->get_future();
    std::thread([path, place = ownPlace(), isWritten] {
        const FileDescriptor file = openLock(path, O_WRONLY);
        if (file.isOpen())
            static_cast<void>(writeAll(file.get(), place + '\0'));
        isWritten->set_value();
    }).detach();
    static_cast<void>(written.wait_for(diskPatience));
}

}  // namespace

ProgramLock::ProgramLock(const std::string& path, std::chrono::milliseconds patience) : file_(openToLock(path)) {
    const auto end = std::chrono::steady_clock::now() + patience;
    Taking taking = tryLock(file_, LOCK_EX);
    while (taking == Taking::heldByAnother && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(pollInterval);
        taking = tryLock(file_, LOCK_EX);
    }
    if (taking == Taking::heldByAnother)
        holder_ = readPlace(file_);
    else if (taking == Taking::taken)
        writePlace(path);
    else
        qWarning("stowpocket: %s cannot be locked (%s); a second program would not be noticed", path.c_str(),
                 lastError().message().c_str());
}

std::optional<std::string> ProgramLock::holderOf(const std::string& path) {
    const FileDescriptor file = openLock(path, O_RDONLY);
    return tryLock(file, LOCK_SH) == Taking::heldByAnother ? std::optional(readPlace(file)) : std::nullopt;
}

std::string ProgramLock::pathBeside(const std::string& preferences) {
    return parentFolder(preferences) + "/lock";
}

std::string runsElsewhereText(const std::string& holder) {
    return "stowpocket runs in another session already, which has the shelf: " + printable(holder);
}

}  // namespace stowpocket
