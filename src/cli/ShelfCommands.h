// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/RunningShelf.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace stowpocket {

class AppDelegate;
class ShelfManager;

/// What requests of other processes do in the running program. Names come from outside: one that is malformed is
/// answered, never trusted. Made after the launch; main thread only.
class ShelfCommands : public ShelfRequests {
public:
    using UseTokens = std::function<void(const StartupTokens&)>;

    /// `app` outlives this. `useTokens` runs before a window is shown for a request that came with tokens.
    ShelfCommands(AppDelegate& app, UseTokens useTokens);

    /// Opens the shelf when some did not fit, so that its message is seen.
    void add(std::span<const std::string> urls, AddCompletion completion) override;
    [[nodiscard]] std::vector<StagedFile> list() const override;
    void remove(std::span<const std::string> names, const RemoveCompletion& completion) override;
    void perform(ShelfAction action, const StartupTokens& tokens, const ActionCompletion& completion) override;

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
