// SPDX-License-Identifier: MIT
#pragma once

#include "updates/Appcast.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace stowpocket {

/// Why a step of an update came to nothing. Whatever it is, the program is as it was before.
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
    other,
};

/// Does the work of an update: what touches the network, and bytes that others wrote. One job at a time; each call
/// returns at once and its completion runs later, once, unless the job is cancelled before. Main thread.
class UpdateTransport {
public:
    using ListDone = std::function<void(std::variant<std::vector<AppcastItem>, UpdateFailure>)>;
    using TextDone = std::function<void(const std::string& text)>;
    using Done = std::function<void(std::optional<UpdateFailure>)>;
    using Progress = std::function<void(std::int64_t received)>;

    virtual ~UpdateTransport() = default;
    /// Reads the list of releases at `url`, which counts only when it is signed with `publicKey`. Without a key any
    /// list does, for a program that only tells of new versions.
    virtual void readList(const std::string& url, const std::string& publicKey, ListDone done) = 0;
    /// Reads a page as plain text; empty when there is none.
    virtual void readNotes(const std::string& url, TextDone done) = 0;
    /// Fetches the file of `item` and keeps it when its length and signature are right. What was fetched before is
    /// not fetched again.
    virtual void download(const AppcastItem& item, const std::string& publicKey, Progress progress, Done done) = 0;
    /// Puts the fetched file in the place of this program, whose own file is kept until `removeReplaced`.
    virtual void install(const AppcastItem& item, const std::string& publicKey, Done done) = 0;
    /// Ends the job under way without its completion.
    virtual void cancel() = 0;

    /// Forgets what was fetched, whole or in part.
    virtual void discardDownload() = 0;
    /// Removes the file of the version that was replaced.
    virtual void removeReplaced() = 0;
};

}  // namespace stowpocket
