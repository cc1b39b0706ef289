// SPDX-License-Identifier: MIT
#include "services/SavedPreferenceStore.h"

#include "services/Dispatch.h"
#include "services/MainBundle.h"

#include <algorithm>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// Long enough for the changes of one user action.
constexpr auto coalescingDelay = 10ms;
/// After this time a disk that has not responded is reported as silent.
constexpr auto answerPatience = 2000ms;
constexpr auto finishPatience = 5000ms;
/// Between attempts that fail: doubled each time.
constexpr auto shortestPause = 1000ms;
constexpr auto longestPause = 30'000ms;

const std::string silentDisk = "the disk does not answer";

}  // namespace

SavedPreferenceStore::SavedPreferenceStore(Dispatch& dispatch, std::shared_ptr<PreferenceDisk> disk)
    : dispatch_(dispatch),
      disk_(std::move(disk)),
      queue_(dispatch.serialQueue(std::string(bundleIdentifier) + ".preferences")),
      pause_(shortestPause) {
    base_ = std::make_shared<const PreferenceDisk::Values>(disk_->read());
    adopt(*base_);
}

SavedPreferenceStore::~SavedPreferenceStore() {
    if (finishedGeneration_ != generation_)
        finish();
}

void SavedPreferenceStore::saveAgain() {
    if (!stored().empty())
        storedValuesChanged();
}

void SavedPreferenceStore::storedValuesChanged() {
    ++generation_;
    if (!isSaving_)
        saveAfter(coalescingDelay);
}

void SavedPreferenceStore::whenSaved(SaveCompletion completion) {
    if (savedGeneration_ == generation_)
        return completion(std::nullopt);
    waiting_.push_back({generation_, std::move(completion), nullptr});
    const auto waiting = std::prev(waiting_.end());
    waiting->timeLimit = dispatch_.after(answerPatience, [this, waiting] {
        const SaveCompletion overdue = std::move(waiting->completion);
        waiting_.erase(waiting);
        overdue(saveProblem().value_or(silentDisk));
    });
    startSaving();
}

void SavedPreferenceStore::saveAfter(std::chrono::milliseconds pause) {
    scheduled_ = dispatch_.after(pause, [this] { startSaving(); });
}

void SavedPreferenceStore::startSaving() {
    scheduled_.reset();
    if (isSaving_)
        return;
    isSaving_ = true;
    silence_ = dispatch_.after(answerPatience, [this] { setSaveProblem(silentDisk); });
    queue_->async([this, weak = std::weak_ptr(isAlive_), &dispatch = dispatch_, disk = disk_, base = base_,
                   values = stored(), generation = generation_]() mutable {
        PreferenceDisk::Saved saved = disk->save(*base, values);
        dispatch.async([this, weak, generation, values = std::move(values), saved = std::move(saved)] {
            if (weak.lock())
                finishSaving(generation, values, saved);
        });
    });
}

void SavedPreferenceStore::finishSaving(std::uint64_t generation, const PreferenceDisk::Values& sent,
                                        const PreferenceDisk::Saved& saved) {
    isSaving_ = false;
    silence_.reset();
    const bool hasChanged = generation_ != generation;
    if (saved.problem) {
        saveAfter(hasChanged ? coalescingDelay : pause_);
        pause_ = std::min(pause_ * 2, longestPause);
    } else {
        savedGeneration_ = generation;
        pause_ = shortestPause;
        base_ = std::make_shared<const PreferenceDisk::Values>(saved.values);
        takeOver(sent, saved.values);
        if (hasChanged)
            startSaving();
    }
    setSaveProblem(saved.problem);
    answer(generation, saved.problem);
}

void SavedPreferenceStore::answer(std::uint64_t generation, const std::optional<std::string>& problem) {
    const auto isAnswered = [generation](const Waiting& waiting) { return waiting.generation <= generation; };
    std::list<Waiting> answered;
    for (auto waiting = waiting_.begin(); waiting != waiting_.end();) {
        const auto next = std::next(waiting);
        if (isAnswered(*waiting))
            answered.splice(answered.end(), waiting_, waiting);
        waiting = next;
    }
    for (Waiting& waiting : answered) {
        waiting.timeLimit.reset();
        waiting.completion(problem);
    }
}

std::optional<std::string> SavedPreferenceStore::finish() {
    scheduled_.reset();
    finishedGeneration_ = generation_;
    const auto problem = std::make_shared<std::optional<std::string>>();
    const auto save = [disk = disk_, base = base_, values = stored(), isNeeded = savedGeneration_ != generation_,
                       problem] {
        if (isNeeded || (!values.empty() && !disk->isThere()))
            *problem = disk->save(*base, values).problem;
    };
    return queue_->await(save, finishPatience) ? *problem : silentDisk;
}

}  // namespace stowpocket
