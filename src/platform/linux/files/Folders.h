// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/DurableFile.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QSocketNotifier;

namespace stowpocket {

/// The user's folders by the XDG Base Directory rules: the value of the variable if it is an absolute path, else the
/// usual place below the home folder; none if the user has no home folder. Must not run while another thread changes
/// the environment.
[[nodiscard]] std::optional<std::string> configHome();
[[nodiscard]] std::optional<std::string> dataHome();
/// `HOME` if it is an absolute path, else the home folder from the user database.
[[nodiscard]] std::optional<std::string> homeFolder();

/// Creates the folder at the absolute `path` and its missing parents, readable by the user only. Returns true if a
/// folder of this user is there afterwards. A symbolic link as the last component does not count, because whoever
/// created it decides where the files of the user go.
[[nodiscard]] bool makeFolders(const std::string& path);

/// The folder that contains `path`.
[[nodiscard]] std::string parentFolder(const std::string& path);

/// Reports that a file, or the folder that contains it, has been removed or renamed. Main thread.
class FileWatch {
public:
    /// `onGone` is called from the main loop.
    FileWatch(const std::string& path, std::function<void()> onGone);
    ~FileWatch();

    /// Watches the folder that exists now. Must be called again after the folder has been created anew.
    void begin();

private:
    void readEvents();

    const std::string folder_;
    const std::string name_;
    const std::function<void()> onGone_;
    const FileDescriptor events_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace stowpocket
