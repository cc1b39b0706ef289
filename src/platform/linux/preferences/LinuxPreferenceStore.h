// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/FileWatch.h"
#include "services/SavedPreferenceStore.h"

#include <cstdint>
#include <optional>
#include <string>

namespace stowpocket {

/// The file behind the preferences, with the version before it beside it. A file that is no property list is set
/// aside, and the earlier version takes its place; one that cannot be read is left alone, and nothing is written over
/// it for as long as it is there. What other programs write into the file meanwhile is kept, key by key. Whatever
/// goes wrong is logged once.
class PreferenceFile : public PreferenceDisk {
public:
    explicit PreferenceFile(std::string path) : path_(std::move(path)) {}

    [[nodiscard]] Values read() override;
    [[nodiscard]] Saved save(const Values& base, const Values& values) override;
    [[nodiscard]] bool isThere() override;

private:
    /// Which file stands there, and in which state: another program's writing changes one of them.
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
    /// What was last read or written, and the version of the file that holds it.
    Values contents_;
    std::optional<Version> seen_;
};

/// Preferences in a property-list file, which is written again when somebody has removed it.
class LinuxPreferenceStore : public SavedPreferenceStore {
public:
    LinuxPreferenceStore(Dispatch& dispatch, const std::string& path);

    /// The usual place of the file; none when the user has no home folder.
    [[nodiscard]] static std::optional<std::string> defaultPath();

private:
    Dispatch& dispatch_;
    FileWatch watch_;
    std::unique_ptr<ScheduledWork> writingAgain_;
};

}  // namespace stowpocket
