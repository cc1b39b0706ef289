// SPDX-License-Identifier: MIT
#include "platform/linux/session/ProgramLock.h"

#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/Folders.h"

#include <QLoggingCategory>
#include <QString>
#include <QSysInfo>

#include <fcntl.h>
#include <sys/file.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <thread>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(sessionLog, "stowpocket.session")

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

/// Opens for reading where that is enough, so that a disk too busy for writing does not delay the start.
FileDescriptor openToLock(const std::string& path) {
    FileDescriptor file = openLock(path, O_RDONLY);
    if (!file.isOpen() && errno == ENOENT && makeFolders(parentFolder(path)))
        file = openLock(path, O_RDWR | O_CREAT);
    // NFS requires write access for this lock.
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

/// A lock on the first byte of the file means that the place is not written yet. It belongs to the open file, like
/// the lock on the whole file. On a system without such locks, readers do not wait.
struct flock placeLock(short type) {
    return {.l_type = type, .l_whence = SEEK_SET, .l_start = 0, .l_len = 1, .l_pid = 0};
}

bool isPlaceWritten(const FileDescriptor& file) {
    struct flock asked = placeLock(F_WRLCK);
    return ::fcntl(file.get(), F_OFD_GETLK, &asked) != 0 || asked.l_type == F_UNLCK;
}

/// Waits a moment for the place to be written. The rest of an older, longer place may follow the text.
std::string readPlace(const FileDescriptor& file) {
    const auto end = std::chrono::steady_clock::now() + 200ms;
    while (!isPlaceWritten(file) && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(pollInterval);
    std::array<char, 512> text{};
    const ssize_t length = ::pread(file.get(), text.data(), text.size() - 1, 0);
    return length > 0 ? std::string(text.data()) : "an unknown place";
}

/// Waits neither for the disk nor for the thread, either of which would delay a start on a busy machine. Truncates
/// nothing, since ext4 takes a millisecond or two for that.
void writePlace(const std::string& path, const FileDescriptor& file) {
    struct flock unwritten = placeLock(F_RDLCK);
    static_cast<void>(::fcntl(file.get(), F_OFD_SETLK, &unwritten));
    // The thread keeps the file locked, so that it cannot overwrite the place of the next program.
    FileDescriptor taken(::fcntl(file.get(), F_DUPFD_CLOEXEC, 0));
    std::thread([path, place = ownPlace(), taken = std::move(taken)] {
        const FileDescriptor written = openLock(path, O_WRONLY);
        if (written.isOpen())
            static_cast<void>(writeAll(written.get(), place + '\0'));
        struct flock done = placeLock(F_UNLCK);
        static_cast<void>(::fcntl(taken.get(), F_OFD_SETLK, &done));
    }).detach();
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
        writePlace(path, file_);
    else
        qCWarning(sessionLog, "%s cannot be locked (%s); a second program would not be noticed", path.c_str(),
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
    return "stowpocket runs in another session already, which has the shelf: " + holder;
}

}  // namespace stowpocket
