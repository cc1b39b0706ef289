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

/// Carries out requests of other processes in the running program. Names are untrusted; malformed ones get an outcome
/// of their own. Created after the launch. Main thread only.
class ShelfCommands : public ShelfRequests {
public:
    using UseTokens = std::function<void(const StartupTokens&)>;

    /// `app` outlives this. `useTokens` runs before a window is shown for a request that came with tokens.
    ShelfCommands(AppDelegate& app, UseTokens useTokens);

    /// Opens the shelf if some files did not fit, so that the user sees the message.
    void add(std::span<const std::string> urls, AddCompletion completion) override;
    [[nodiscard]] std::vector<StagedFile> list() const override;
    void remove(std::span<const std::string> names, const RemoveCompletion& completion) override;
    [[nodiscard]] std::vector<UseOutcome> use(ItemUse what, std::span<const std::string> names) override;
    void perform(ShelfAction action, const StartupTokens& tokens, const ActionCompletion& completion) override;

private:
    struct Waiting {
        std::uint64_t batch;
        std::function<void()> complete;
    };

    [[nodiscard]] ShelfManager& shelf() const;
    void carryOut(ShelfAction action);
    void completeAdditions();
    /// Calls `completion` once all changes so far are saved, or cannot be saved.
    template <class Outcome>
    void completeWhenSaved(std::vector<Outcome> outcomes, Completion<Outcome> completion);

    AppDelegate& app_;
    const UseTokens useTokens_;
    /// Additions that the shelf is still preparing in the background, with their batches.
    std::vector<Waiting> waiting_;
    Subscription itemsChanged_;
};

}  // namespace stowpocket
