// SPDX-License-Identifier: MIT
#include "platform/linux/updates/DownloadFile.h"

#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/Folders.h"
#include "platform/linux/updates/InstalledProgram.h"

#include <elf.h>
#include <fcntl.h>
#include <sodium.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <span>

namespace stowpocket {
namespace {

template <std::size_t size>
std::optional<std::array<unsigned char, size>> decoded(std::string_view base64) {
    std::array<unsigned char, size> bytes{};
    std::size_t length = 0;
    // The library accepts some non-ASCII bytes as characters of Base64.
    if (std::ranges::any_of(base64, [](char character) { return static_cast<unsigned char>(character) > 127; }))
        return std::nullopt;
    const bool isWhole = sodium_base642bin(bytes.data(), size, base64.data(), base64.size(), nullptr, &length,
                                           nullptr, sodium_base64_VARIANT_ORIGINAL) == 0;
    return isWhole && length == size ? std::optional(bytes) : std::nullopt;
}

constexpr mode_t userOnly = 0600;
constexpr mode_t userMayRun = 0100;
constexpr mode_t permissions = 0777;

/// The contents of a file, valid as long as this object exists.
class MappedFile {
public:
    MappedFile(int descriptor, std::size_t size)
        : size_(size),
          memory_(size == 0 ? MAP_FAILED : ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0)) {}
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile() {
        if (memory_ != MAP_FAILED)
            ::munmap(memory_, size_);
    }
    [[nodiscard]] std::span<const std::uint8_t> bytes() const {
        return memory_ == MAP_FAILED ? std::span<const std::uint8_t>()
                                     : std::span(static_cast<const std::uint8_t*>(memory_), size_);
    }

private:
    const std::size_t size_;
    void* const memory_;
};

/// The processor that an executable is built for; none if the file is not an executable.
std::optional<std::uint16_t> machineOf(std::span<const std::uint8_t> bytes) {
    Elf64_Ehdr header{};  // the fields that are read here lie at the same place in 32-bit files
    if (bytes.size() < sizeof header)
        return std::nullopt;
    std::memcpy(&header, bytes.data(), sizeof header);
    const bool isExecutable = std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0;
    return isExecutable ? std::optional(header.e_machine) : std::nullopt;
}

std::optional<std::uint16_t> machineOfThisProgram() {
    const FileDescriptor file(::open("/proc/self/exe", O_RDONLY | O_CLOEXEC));
    return machineOf(MappedFile(file.get(), sizeof(Elf64_Ehdr)).bytes());
}

/// Without O_NONBLOCK a pipe at this path would block.
FileDescriptor openDownload(const std::string& program) {
    return FileDescriptor(::open(downloadPath(program).c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
}

/// Whether the file at `path` is the open one.
bool isAt(const std::string& path, int descriptor) {
    struct stat there {};
    struct stat open {};
    return ::lstat(path.c_str(), &there) == 0 && ::fstat(descriptor, &open) == 0 && there.st_dev == open.st_dev &&
           there.st_ino == open.st_ino;
}

std::optional<UpdateFailure> check(int descriptor, const SignedFile& expected) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return UpdateFailure::other;
    if (status.st_size != expected.length)
        return UpdateFailure::wrongLength;
    const MappedFile contents(descriptor, static_cast<std::size_t>(status.st_size));
    if (!isSigned(contents.bytes(), expected.signature, expected.publicKey))
        return UpdateFailure::badSignature;
    const std::optional<std::uint16_t> machine = machineOf(contents.bytes());
    return machine && machine == machineOfThisProgram() ? std::nullopt
                                                        : std::optional(UpdateFailure::notForThisMachine);
}

/// A second name for the old file keeps `target` in place all the time. On a file system without second names,
/// `target` is missing for a moment between the two steps. Only a name can be renamed to `target`, so another file
/// may have taken that name meanwhile; then the old file is put back.
std::optional<UpdateFailure> exchange(const std::string& download, const std::string& target, int checked) {
    const std::string replaced = replacedPath(target);
    ::unlink(replaced.c_str());
    ::unlink(startedPath(target).c_str());
    const bool isLinked = ::link(target.c_str(), replaced.c_str()) == 0;
    if (!isLinked && std::rename(target.c_str(), replaced.c_str()) != 0)
        return failureOfErrno(errno);
    const bool isRenamed = std::rename(download.c_str(), target.c_str()) == 0;
    if (isRenamed && isAt(target, checked))
        return std::nullopt;
    const UpdateFailure failure = isRenamed ? UpdateFailure::badSignature : failureOfErrno(errno);
    static_cast<void>(isLinked && !isRenamed ? ::unlink(replaced.c_str())
                                             : std::rename(replaced.c_str(), target.c_str()));
    return failure;
}

}  // namespace

bool isSigned(std::span<const std::uint8_t> bytes, std::string_view signature, std::string_view publicKey) {
    const auto signatureBytes = decoded<crypto_sign_BYTES>(signature);
    const auto keyBytes = decoded<crypto_sign_PUBLICKEYBYTES>(publicKey);
    return sodium_init() >= 0 && signatureBytes && keyBytes &&
           crypto_sign_verify_detached(signatureBytes->data(), bytes.data(), bytes.size(), keyBytes->data()) == 0;
}

std::optional<std::string_view> signedPart(std::string_view list, std::string_view publicKey) {
    constexpr std::string_view opening = "<!-- edSignature: ";
    constexpr std::string_view closing = " -->";
    list = list.substr(0, list.find_last_not_of("\r\n") + 1);
    const std::size_t start = list.rfind(opening);
    if (start == std::string_view::npos || !list.ends_with(closing))
        return std::nullopt;
    const std::string_view signature = list.substr(start + opening.size());
    const std::string_view part = list.substr(0, start);
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(part.data()), part.size());
    return isSigned(bytes, signature.substr(0, signature.size() - closing.size()), publicKey) ? std::optional(part)
                                                                                              : std::nullopt;
}

UpdateFailure failureOfErrno(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return UpdateFailure::diskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return UpdateFailure::notWritable;
    default:
        return UpdateFailure::other;
    }
}

std::optional<UpdateFailure> DownloadFile::create(const std::string& program, std::int64_t length) {
    const std::string path = downloadPath(program);
    ::unlink(path.c_str());
    file_ = FileDescriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, userOnly));
    if (!file_.isOpen())
        return failureOfErrno(errno);
    size_ = 0;
    const bool isRefused = ::fallocate(file_.get(), FALLOC_FL_KEEP_SIZE, 0, length) != 0;
    return isRefused && failureOfErrno(errno) == UpdateFailure::diskFull ? std::optional(UpdateFailure::diskFull)
                                                                         : std::nullopt;
}

std::optional<UpdateFailure> DownloadFile::write(std::string_view bytes) {
    if (const std::error_code error = writeAll(file_.get(), bytes))
        return failureOfErrno(error.value());
    size_ += static_cast<std::int64_t>(bytes.size());
    return std::nullopt;
}

std::variant<CheckedDownload, UpdateFailure> CheckedDownload::open(const std::string& program,
                                                                   const SignedFile& expected) {
    FileDescriptor file = openDownload(program);
    if (!file.isOpen())
        return UpdateFailure::other;
    if (const std::optional<UpdateFailure> failure = check(file.get(), expected))
        return *failure;
    return CheckedDownload(program, std::move(file));
}

std::optional<UpdateFailure> CheckedDownload::install() const {
    const std::string target = linkTarget(program_);
    struct stat old {};
    if (::lstat(target.c_str(), &old) != 0 || !S_ISREG(old.st_mode))
        return UpdateFailure::other;
    if (::fchmod(file_.get(), (old.st_mode & permissions) | userMayRun) != 0 || ::fsync(file_.get()) != 0)
        return failureOfErrno(errno);
    if (const std::optional<UpdateFailure> failure = exchange(downloadPath(program_), target, file_.get()))
        return failure;
    const FileDescriptor folder(::open(parentFolder(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen())
        static_cast<void>(::fsync(folder.get()));
    return std::nullopt;
}

}  // namespace stowpocket
