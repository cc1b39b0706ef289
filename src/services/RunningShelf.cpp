// SPDX-License-Identifier: MIT
#include "services/RunningShelf.h"

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

/// In the order of the enumerations.
constexpr std::array<std::string_view, 4> addWords{"added", "already-on-shelf", "shelf-full", "malformed"};
constexpr std::array<std::string_view, 3> removeWords{"removed", "not-on-shelf", "malformed"};

template <class Outcome, std::size_t count>
std::optional<Outcome> outcomeFor(const std::array<std::string_view, count>& words, std::string_view word) {
    const auto found = std::ranges::find(words, word);
    return found == words.end() ? std::nullopt : std::optional(static_cast<Outcome>(found - words.begin()));
}

}  // namespace

std::string_view word(AddOutcome outcome) {
    return addWords.at(static_cast<std::size_t>(outcome));
}

std::string_view word(RemoveOutcome outcome) {
    return removeWords.at(static_cast<std::size_t>(outcome));
}

std::optional<AddOutcome> addOutcome(std::string_view word) {
    return outcomeFor<AddOutcome>(addWords, word);
}

std::optional<RemoveOutcome> removeOutcome(std::string_view word) {
    return outcomeFor<RemoveOutcome>(removeWords, word);
}

}  // namespace stowpocket
