// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/Folders.h"
#include "services/SavedPreferenceStore.h"

#include <cstdint>
#include <optional>
#include <string>

namespace stowpocket {

/// The file that contains the preferences, with its previous version beside it. A file that is not a property list is
/// set aside, and the previous version takes its place. A file that cannot be read is left alone and not overwritten
/// as long as it exists. What other programs write into the file meanwhile is kept, key by key. Each failure is
/// logged once.
class PreferenceFile : public PreferenceDisk {
public:
    explicit PreferenceFile(std::string path) : path_(std::move(path)) {}

    [[nodiscard]] Values read() override;
    [[nodiscard]] Saved save(const Values& base, const Values& values) override;
    [[nodiscard]] bool isThere() override;

private:
    /// The file at the path and its state; writing by another program changes one of them.
    struct Version {
        std::uint64_t inode = 0;
        std::int64_t size = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        friend bool operator==(const Version&, const Version&) = default;
    };

    [[nodiscard]] std::optional<Version> version() const;
    [[nodiscard]] std::string previousPath() const;
    [[nodiscard]] std::optional<Values> readFile();
    void setAside();
    void warnOnce(const std::string& what);

    const std::string path_;
    bool isUnreadable_ = false;
    bool hasWarned_ = false;
    /// The values that were last read or written, and the version of the file that contains them.
    Values contents_;
    std::optional<Version> seen_;
};

/// Preferences in a property-list file, which is written again if somebody has removed it.
class LinuxPreferenceStore : public SavedPreferenceStore {
public:
    LinuxPreferenceStore(Dispatch& dispatch, const std::string& path);

    /// The default path of the file; none if the user has no home folder.
    [[nodiscard]] static std::optional<std::string> defaultPath();

private:
    Dispatch& dispatch_;
    FileWatch watch_;
    std::unique_ptr<ScheduledWork> writingAgain_;
};

}  // namespace stowpocket
