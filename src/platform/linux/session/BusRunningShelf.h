// SPDX-License-Identifier: MIT
#pragma once

#include "services/RunningShelf.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <string>

namespace stowpocket {

/// The running program, reached over the session bus. Needs the application object, but no running event loop.
class BusRunningShelf : public RunningShelf {
public:
    /// `executable` is started when the program is needed and not running. `tokens` accompany every request that may
    /// open a window. `lock` is the path of the lock that the running program holds.
    BusRunningShelf(QDBusConnection bus, std::string executable, StartupTokens tokens, std::string lock);

    [[nodiscard]] bool reach(StartProgram start) override;
    [[nodiscard]] std::optional<std::vector<AddOutcome>> add(std::span<const FileURL> files) override;
    [[nodiscard]] std::optional<std::vector<StagedFile>> list() override;
    [[nodiscard]] std::optional<std::vector<RemoveOutcome>> remove(std::span<const std::string> names) override;
    [[nodiscard]] std::optional<std::vector<UseOutcome>> use(ItemUse what,
                                                             std::span<const std::string> names) override;
    [[nodiscard]] bool perform(ShelfAction action) override;
    [[nodiscard]] std::string problem() const override { return problem_; }
    [[nodiscard]] bool runsElsewhere() const override { return runsElsewhere_; }
    [[nodiscard]] std::string saveProblem() const override { return saveProblem_; }

private:
    /// Records why the program cannot be reached, and returns false.
    bool noteAbsence(const std::string& otherwise);
    /// The returned values. Empty after a failure, whose reason is recorded.
    [[nodiscard]] std::optional<QVariantList> call(const QString& method, const QVariantList& arguments);
    template <class Outcome>
    using OutcomeOf = std::optional<Outcome> (*)(std::string_view word);
    template <class Outcome>
    [[nodiscard]] std::optional<std::vector<Outcome>> callWithNames(const QString& method, const QStringList& names,
                                                                    OutcomeOf<Outcome> outcomeOf);

    QDBusConnection bus_;
    const std::string executable_;
    const StartupTokens tokens_;
    const std::string lock_;
    std::string problem_;
    bool runsElsewhere_ = false;
    std::string saveProblem_;
};

}  // namespace stowpocket
