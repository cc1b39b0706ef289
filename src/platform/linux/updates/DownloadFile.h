// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/DurableFile.h"
#include "updates/UpdateTransport.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace stowpocket {

/// Whether `signature` is the Ed25519 signature over `bytes` by the owner of `publicKey`; both are in Base64. False
/// also when one of them is none.
[[nodiscard]] bool isSigned(std::span<const std::uint8_t> bytes, std::string_view signature,
                            std::string_view publicKey);

/// What comes before the last line of `list`, when that line is `<!-- edSignature: SIGNATURE -->` and signs all of
/// it; none otherwise. What was not signed is never looked at.
[[nodiscard]] std::optional<std::string_view> signedPart(std::string_view list, std::string_view publicKey);

/// What is known of a file before it is fetched.
struct SignedFile {
    std::int64_t length = 0;
    std::string signature;
    std::string publicKey;
};

/// A newer version of the program while it is being fetched, beside the program's file, so that it can take its place
/// at one stroke. Readable by the user alone; without the right to be run.
class DownloadFile {
public:
    /// Makes the file anew, and has room for it set aside where the file system can.
    [[nodiscard]] std::optional<UpdateFailure> create(const std::string& program, std::int64_t length);
    [[nodiscard]] std::optional<UpdateFailure> write(std::string_view bytes);
    [[nodiscard]] std::int64_t size() const { return size_; }

private:
    FileDescriptor file_;
    std::int64_t size_ = 0;
};

/// A fetched file that is whole, signed and a program for this machine. It is held open, so that what is installed is
/// what was checked.
class CheckedDownload {
public:
    [[nodiscard]] static std::variant<CheckedDownload, UpdateFailure> open(const std::string& program,
                                                                           const SignedFile& expected);
    /// Puts the file in the place of the program, which has its old contents or the new ones at every moment; the old
    /// file is kept beside it. After a failure everything is as before.
    [[nodiscard]] std::optional<UpdateFailure> install() const;

private:
    CheckedDownload(std::string program, FileDescriptor file)
        : program_(std::move(program)), file_(std::move(file)) {}

    std::string program_;
    FileDescriptor file_;
};

/// What errno says of a failed write.
[[nodiscard]] UpdateFailure failureOfErrno(int error);

}  // namespace stowpocket
