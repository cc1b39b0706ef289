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
    using AddCompletion = std::function<void(std::vector<AddOutcome>)>;
    using UseTokens = std::function<void(const StartupTokens&)>;

    /// `app` outlives this. `useTokens` runs before a window is shown for a request that came with tokens.
    ShelfCommands(AppDelegate& app, UseTokens useTokens);

    /// Takes URLs of files in as a drop does. Opens the shelf when some did not fit, so that its message is seen.
    /// `completion` gets one outcome per URL once the files stand on the shelf; never called when that is no more.
    void add(std::span<const std::string> urls, AddCompletion completion);
    [[nodiscard]] std::vector<StagedFile> list() const;
    /// Names are ids of items or URLs of files.
    [[nodiscard]] std::vector<RemoveOutcome> remove(std::span<const std::string> names);
    void perform(ShelfAction action, const StartupTokens& tokens);

private:
    struct Waiting {
        std::vector<AddOutcome> outcomes;
        AddCompletion completion;
    };

    [[nodiscard]] ShelfManager& shelf() const;
    void completeAdditions();

    AppDelegate& app_;
    const UseTokens useTokens_;
    /// Additions that the shelf still prepares in the background.
    std::vector<Waiting> waiting_;
    Subscription itemsChanged_;
};

}  // namespace stowpocket
