// SPDX-License-Identifier: MIT
#pragma once

#include "cli/Outcome.h"
#include "foundation/Signal.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace stowpocket {

class AppDelegate;
class ShelfManager;

/// What the desktop gave the process that asks, so that a window opened for it may take the focus. Either may be
/// empty.
struct StartupTokens {
    /// As in XDG_ACTIVATION_TOKEN.
    std::string activationToken;
    /// As in DESKTOP_STARTUP_ID.
    std::string startupID;

    friend bool operator==(const StartupTokens&, const StartupTokens&) = default;
};

/// What requests of other processes do in the running program. Names come from outside: one that is malformed is
/// answered, never trusted. Made after the launch; main thread only.
class ShelfCommands {
public:
    /// What became of each name, and why the change is not saved yet; no reason when it is.
    template <class Outcome>
    using Completion =
        std::function<void(const std::vector<Outcome>& outcomes, const std::optional<std::string>& problem)>;
    using AddCompletion = Completion<AddOutcome>;
    using RemoveCompletion = Completion<RemoveOutcome>;
    using ActionCompletion = std::function<void(const std::optional<std::string>& problem)>;
    using UseTokens = std::function<void(const StartupTokens&)>;

    /// `app` outlives this. `useTokens` runs before a window is shown for a request that came with tokens.
    ShelfCommands(AppDelegate& app, UseTokens useTokens);

    /// Takes URLs of files in as a drop does. Opens the shelf when some did not fit, so that its message is seen.
    /// `completion` gets one outcome per URL once the files stand on the shelf and are saved; never called when that
    /// is no more.
    void add(std::span<const std::string> urls, AddCompletion completion);
    [[nodiscard]] std::vector<StagedFile> list() const;
    /// Names are ids of items or URLs of files.
    void remove(std::span<const std::string> names, const RemoveCompletion& completion);
    void perform(ShelfAction action, const StartupTokens& tokens, const ActionCompletion& completion);

private:
    struct Waiting {
        std::uint64_t batch;
        std::function<void()> complete;
    };

    [[nodiscard]] ShelfManager& shelf() const;
    void carryOut(ShelfAction action);
    void completeAdditions();
    /// Completes once what has been done so far is saved, or cannot be.
    template <class Outcome>
    void completeWhenSaved(std::vector<Outcome> outcomes, Completion<Outcome> completion);

    AppDelegate& app_;
    const UseTokens useTokens_;
    /// Additions that the shelf still prepares in the background, each with its own batch.
    std::vector<Waiting> waiting_;
    Subscription itemsChanged_;
};

}  // namespace stowpocket
