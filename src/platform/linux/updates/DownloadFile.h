// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/DurableFile.h"
#include "updates/UpdateStatus.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace stowpocket {

/// Whether `signature` is the Ed25519 signature of `bytes` by the owner of `publicKey`; both are in Base64. False if
/// either is invalid.
[[nodiscard]] bool isSigned(std::span<const std::uint8_t> bytes, std::string_view signature,
                            std::string_view publicKey);

/// The part of `list` before its last line, if that line is `<!-- edSignature: SIGNATURE -->` and signs all of it;
/// none otherwise. Unsigned content is never parsed.
[[nodiscard]] std::optional<std::string_view> signedPart(std::string_view list, std::string_view publicKey);

/// What is known about a file before it is fetched.
struct SignedFile {
    std::int64_t length = 0;
    std::string signature;
    std::string publicKey;
};

/// A newer version of the program during the download. It is stored beside the file of the program, so that it can
/// replace that file in one step. Readable by the user only, and not executable.
class DownloadFile {
public:
    /// Creates the file anew and reserves space for it, if the file system can.
    [[nodiscard]] std::optional<UpdateFailure> create(const std::string& program, std::int64_t length);
    [[nodiscard]] std::optional<UpdateFailure> write(std::string_view bytes);
    [[nodiscard]] std::int64_t size() const { return size_; }

private:
    FileDescriptor file_;
    std::int64_t size_ = 0;
};

/// A downloaded file that is complete, signed and a program for this machine. It is kept open, so that the file that
/// is installed is the one that was checked.
class CheckedDownload {
public:
    [[nodiscard]] static std::variant<CheckedDownload, UpdateFailure> open(const std::string& program,
                                                                           const SignedFile& expected);
    /// Replaces the program with the file. At every moment the program has its old contents or its new ones; the old
    /// file is kept beside it. After a failure everything is as before.
    [[nodiscard]] std::optional<UpdateFailure> install() const;

private:
    CheckedDownload(std::string program, FileDescriptor file)
        : program_(std::move(program)), file_(std::move(file)) {}

    std::string program_;
    FileDescriptor file_;
};

/// The failure that errno describes after a failed write.
[[nodiscard]] UpdateFailure failureOfErrno(int error);

}  // namespace stowpocket
