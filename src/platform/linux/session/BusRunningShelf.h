// SPDX-License-Identifier: MIT
#pragma once

#include "services/RunningShelf.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <string>

namespace stowpocket {

/// The running program, asked over the session bus. Needs the application object, but no loop that runs.
class BusRunningShelf : public RunningShelf {
public:
    /// `executable` is started where the program is needed and does not run; `tokens` go with every request that may
    /// open a window. `lock` is the path of the lock that the program holds while it runs.
    BusRunningShelf(QDBusConnection bus, std::string executable, StartupTokens tokens, std::string lock);

    [[nodiscard]] bool reach(StartProgram start) override;
    [[nodiscard]] std::optional<std::vector<AddOutcome>> add(std::span<const FileURL> files) override;
    [[nodiscard]] std::optional<std::vector<StagedFile>> list() override;
    [[nodiscard]] std::optional<std::vector<RemoveOutcome>> remove(std::span<const std::string> names) override;
    [[nodiscard]] bool perform(ShelfAction action) override;
    [[nodiscard]] std::string problem() const override { return problem_; }
    [[nodiscard]] bool runsElsewhere() const override { return runsElsewhere_; }
    [[nodiscard]] std::string saveProblem() const override { return saveProblem_; }

private:
    /// Notes why the program cannot be reached. False, for the caller to answer.
    bool noteAbsence(const std::string& otherwise);
    /// The values answered; none when there was no good answer, with the reason noted.
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
