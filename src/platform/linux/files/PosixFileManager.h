// SPDX-License-Identifier: MIT
#pragma once

#include "services/Files.h"

namespace stowpocket {

class FileProbe;

/// The files of this machine. `probe` must outlive this. Copying and removing are not cut short on any thread: a
/// network file takes the time that it takes, and belongs in the background.
class PosixFileManager : public FileManager {
public:
    explicit PosixFileManager(FileProbe& probe) : probe_(probe) {}

    [[nodiscard]] bool fileExists(const FileURL& url) override;
    [[nodiscard]] std::optional<FileAttributes> attributes(const FileURL& url) override;
    [[nodiscard]] bool createDirectory(const FileURL& url) override;
    [[nodiscard]] bool copyItem(const FileURL& from, const FileURL& to) override;
    bool removeItem(const FileURL& url) override;
    [[nodiscard]] std::optional<FileURL> applicationSupportDirectory() override;
    [[nodiscard]] std::optional<FileURL> homeDirectory() override;

private:
    FileProbe& probe_;
};

}  // namespace stowpocket
