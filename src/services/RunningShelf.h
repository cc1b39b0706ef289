// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// The result for one file that another process asked to add or remove.
enum class AddOutcome { added, alreadyOnShelf, shelfFull, malformed };
enum class RemoveOutcome { removed, notOnShelf, malformed };

/// What another process asked to do with items of the shelf, and the result for one of them.
enum class ItemUse { copy, open };
enum class UseOutcome { done, notOnShelf, missing, malformed };

/// Requests without arguments.
enum class ShelfAction { clear, undo, show, toggle, quickDrop, paste };

/// One item, as other processes see it.
struct StagedFile {
    std::string id;
    FileURL fileURL;
    bool isAvailable = false;
    std::int64_t fileSize = 0;

    friend bool operator==(const StagedFile&, const StagedFile&) = default;
};

/// A request with more files is refused; longer lists are sent in parts.
inline constexpr std::size_t maxFilesPerRequest = 16'384;
/// Longer names are malformed. This is four times the longest path with every byte escaped.
inline constexpr std::size_t maxNameLength = std::size_t{4} * 3 * 4096;

namespace detail {

/// In the order of the enumerations.
inline constexpr std::array<std::string_view, 4> addWords{"added", "already-on-shelf", "shelf-full", "malformed"};
inline constexpr std::array<std::string_view, 3> removeWords{"removed", "not-on-shelf", "malformed"};
inline constexpr std::array<std::string_view, 4> useWords{"done", "not-on-shelf", "missing", "malformed"};

template <class Outcome>
std::optional<Outcome> outcomeFor(std::span<const std::string_view> words, std::string_view word) {
    const auto found = std::ranges::find(words, word);
    return found == words.end() ? std::nullopt : std::optional(static_cast<Outcome>(found - words.begin()));
}

}  // namespace detail

/// The outcomes as words in messages between processes; none for an unknown word.
[[nodiscard]] inline std::string_view word(AddOutcome outcome) {
    return detail::addWords.at(static_cast<std::size_t>(outcome));
}
[[nodiscard]] inline std::string_view word(RemoveOutcome outcome) {
    return detail::removeWords.at(static_cast<std::size_t>(outcome));
}
[[nodiscard]] inline std::optional<AddOutcome> addOutcome(std::string_view word) {
    return detail::outcomeFor<AddOutcome>(detail::addWords, word);
}
[[nodiscard]] inline std::optional<RemoveOutcome> removeOutcome(std::string_view word) {
    return detail::outcomeFor<RemoveOutcome>(detail::removeWords, word);
}
[[nodiscard]] inline std::string_view word(UseOutcome outcome) {
    return detail::useWords.at(static_cast<std::size_t>(outcome));
}
[[nodiscard]] inline std::optional<UseOutcome> useOutcome(std::string_view word) {
    return detail::outcomeFor<UseOutcome>(detail::useWords, word);
}

/// What the desktop gave the requesting process so that a window opened for it may take the focus. Either may be
/// empty.
struct StartupTokens {
    /// As in XDG_ACTIVATION_TOKEN.
    std::string activationToken;
    /// As in DESKTOP_STARTUP_ID.
    std::string startupID;

    friend bool operator==(const StartupTokens&, const StartupTokens&) = default;
};

/// Whether a program that does not run yet is started for the request.
enum class StartProgram { never, ifNeeded };

/// The running program, as the command verbs of another process see it. Calls block until the response arrives or a
/// time limit is reached. After a call without response, `problem` returns the reason.
class RunningShelf {
public:
    virtual ~RunningShelf() = default;
    /// True if the program runs and accepts requests.
    [[nodiscard]] virtual bool reach(StartProgram start) = 0;
    /// Returns one outcome per file, in order, once the files are on the shelf. At most `maxFilesPerRequest` files.
    [[nodiscard]] virtual std::optional<std::vector<AddOutcome>> add(std::span<const FileURL> files) = 0;
    [[nodiscard]] virtual std::optional<std::vector<StagedFile>> list() = 0;
    /// Names are ids of items or URLs of files, at most `maxFilesPerRequest`.
    [[nodiscard]] virtual std::optional<std::vector<RemoveOutcome>> remove(std::span<const std::string> names) = 0;
    /// Uses these items together. Names are as for `remove`.
    [[nodiscard]] virtual std::optional<std::vector<UseOutcome>> use(ItemUse what,
                                                                     std::span<const std::string> names) = 0;
    [[nodiscard]] virtual bool perform(ShelfAction action) = 0;
    /// Why the last call had no response, as text for the user.
    [[nodiscard]] virtual std::string problem() const = 0;
    /// True if the reason is that the program runs in another session.
    [[nodiscard]] virtual bool runsElsewhere() const = 0;
    /// Why the changes of the last call are not saved yet, as text for the user; empty if they are.
    [[nodiscard]] virtual std::string saveProblem() const = 0;
};

/// The requests of other processes, as the running program carries them out. Names come from outside and may be
/// anything. Main thread.
class ShelfRequests {
public:
    /// Gets the result for each name, and the reason if the change is not saved yet.
    template <class Outcome>
    using Completion =
        std::function<void(const std::vector<Outcome>& outcomes, const std::optional<std::string>& problem)>;
    using AddCompletion = Completion<AddOutcome>;
    using RemoveCompletion = Completion<RemoveOutcome>;
    using ActionCompletion = std::function<void(const std::optional<std::string>& problem)>;

    virtual ~ShelfRequests() = default;
    /// Adds files by URL as a drop does. `completion` gets one outcome per URL once the files are on the shelf and
    /// saved. It is not called if the shelf is destroyed first.
    virtual void add(std::span<const std::string> urls, AddCompletion completion) = 0;
    [[nodiscard]] virtual std::vector<StagedFile> list() const = 0;
    /// Names are ids of items or URLs of files.
    virtual void remove(std::span<const std::string> names, const RemoveCompletion& completion) = 0;
    /// Uses these items together. Returns one outcome per name.
    [[nodiscard]] virtual std::vector<UseOutcome> use(ItemUse what, std::span<const std::string> names) = 0;
    virtual void perform(ShelfAction action, const StartupTokens& tokens, const ActionCompletion& completion) = 0;
};

}  // namespace stowpocket
