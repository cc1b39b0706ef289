// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/storage/FileDescriptor.h"
#include "platform/UpdateWorker.h"

#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

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

/// None when the fetched file is whole and signed.
[[nodiscard]] std::optional<UpdateFailure> checkDownload(const std::string& program, const SignedFile& expected);

/// Checks the fetched file once more and puts it in the place of `program`, which has its old contents or the new
/// ones at every moment; the old file is kept beside it. After a failure everything is as before.
[[nodiscard]] std::optional<UpdateFailure> installDownload(const std::string& program, const SignedFile& expected);

/// What errno says of a failed write.
[[nodiscard]] UpdateFailure failureOfErrno(int error);

}  // namespace stowpocket
