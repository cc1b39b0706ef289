// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "updates/Appcast.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace stowpocket {

/// Why a step of an update failed. The program is unchanged in every case.
enum class UpdateFailure {
    unreachable,        ///< no connection, or one that broke off
    unreadableList,     ///< the list of releases is none
    unsignedList,       ///< the list of releases was not signed with the key of this program
    tooLarge,           ///< an answer without end
    wrongLength,        ///< the file is longer or shorter than announced
    badSignature,       ///< the file was not signed with the key of this program
    notForThisMachine,  ///< the file is no program for this machine
    diskFull,
    notWritable,  ///< the program's folder or file may not be changed
    didNotStay,   ///< the new version did not start, or ended at once, so that the one before it is back
    other,
};

/// Does the work of an update: network access and the handling of untrusted bytes. One job at a time. Each call
/// returns at once, and its completion runs once, later, unless the job is cancelled first. Main thread.
class UpdateTransport {
public:
    using ListDone = std::function<void(std::variant<std::vector<AppcastItem>, UpdateFailure>)>;
    using TextDone = std::function<void(const std::string& text)>;
    using Done = std::function<void(std::optional<UpdateFailure>)>;
    using Progress = std::function<void(std::int64_t received)>;

    virtual ~UpdateTransport() = default;
    /// Reads the list of releases at `url`, which has to be signed with `publicKey`. If the key is empty, an unsigned
    /// list is accepted: such a program only announces new versions.
    virtual void readList(const std::string& url, const std::string& publicKey, ListDone done) = 0;
    /// Reads a page as plain text; empty if there is none.
    virtual void readNotes(const std::string& url, TextDone done) = 0;
    /// Downloads the file of `item` and keeps it if its length and signature are right. A file that is already there
    /// is not downloaded again.
    virtual void download(const AppcastItem& item, const std::string& publicKey, Progress progress, Done done) = 0;
    /// Replaces this program with the downloaded file. The old file is kept until `removeReplaced`.
    virtual void install(const AppcastItem& item, const std::string& publicKey, Done done) = 0;
    /// Ends the current job without calling its completion.
    virtual void cancel() = 0;

    /// Removes the downloaded file, complete or not.
    virtual void discardDownload() = 0;
    /// Removes the file of the version that was replaced, if there is one.
    virtual void removeReplaced() = 0;
};

enum class UpdateState {
    idle,
    checking,
    upToDate,
    offered,
    downloading,
    verifying,
    ready,  ///< fetched, and waiting for the user to have it installed
    installing,
    installed,
    failed,
};

/// The user's choices in the window of updates.
enum class UpdateChoice { install, openPage, skip, later, cancel };

/// The state of an update, as its window shows it.
struct UpdateStatus {
    UpdateState state = UpdateState::idle;
    std::string programName = {};
    std::string runningVersion = {};
    AppcastItem item = {};
    std::int64_t received = 0;
    std::optional<UpdateFailure> failure = {};
    /// Whether the program can replace itself with a new version.
    bool canInstall = false;
};

/// The one window of updates. Main thread.
class UpdateWindow {
public:
    virtual ~UpdateWindow() = default;
    /// Shows `status`. A window that appears does not take the keyboard focus: a key press meant for another window
    /// must not choose anything.
    virtual void show(const UpdateStatus& status) = 0;
    /// Gives the window the keyboard focus, at the request of the user.
    virtual void bringToFront() = 0;
    virtual void close() = 0;
    /// Emitted with the user's choice; closing the window is one too.
    [[nodiscard]] virtual Signal<UpdateChoice>& chosen() = 0;
};

}  // namespace stowpocket
