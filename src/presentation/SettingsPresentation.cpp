// SPDX-License-Identifier: MIT
#include "presentation/SettingsPresentation.h"

#include "services/MainBundle.h"
#include "shelf/PersistedShelf.h"

#include <algorithm>

namespace stowpocket {

std::optional<std::size_t> chosenCapacity(const PreferenceStore& preferences) {
    const auto choice = std::ranges::find(capacityChoices, preferences.integer(shelfCapacityKey));
    if (choice == capacityChoices.end())
        return std::nullopt;
    return static_cast<std::size_t>(choice - capacityChoices.begin());
}

std::string itemsOnShelfText(std::size_t count, const PreferenceStore& preferences) {
    return std::to_string(count) + " / " + std::to_string(shelfCapacity(preferences));
}

std::string versionText(const MainBundle& bundle) {
    const std::string* const version = bundle.infoString(infoKey::bundleShortVersionString);
    return "Version " + (version == nullptr ? std::string("1.0") : *version);
}

}  // namespace stowpocket
