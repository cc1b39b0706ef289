// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

class PreferenceStore;
struct MainBundle;

struct SettingsTab {
    int id;
    std::string_view label;
    std::string_view icon;
};
inline constexpr std::array<SettingsTab, 3> settingsTabs{{
    {0, "General", "gear"},
    {1, "About", "info.circle"},
    {2, "More Larkfield", "square.grid.2x2"},
}};

inline constexpr std::array<std::int64_t, 3> capacityChoices{20, 50, 100};
/// The index of the stored choice; none for any other value.
[[nodiscard]] std::optional<std::size_t> chosenCapacity(const PreferenceStore& preferences);
/// The number of items and the current capacity.
[[nodiscard]] std::string itemsOnShelfText(std::size_t count, const PreferenceStore& preferences);

[[nodiscard]] std::string versionText(const MainBundle& bundle);

/// Another program of the same maker.
struct Utility {
    std::string_view icon;
    std::string_view name;
    std::string_view description;
    std::string_view url;
};
inline constexpr std::array<Utility, 5> utilities{{
    {"moon", "Dimmerbrook", "Dims every display a little more as the evening goes on.",
     "https://larkfield.example/dimmerbrook"},
    {"mic.slash", "Hushfinch", "Mutes the microphone in every call with one key.",
     "https://larkfield.example/hushfinch"},
    {"timer", "Tallowick", "Counts down to whatever comes next.", "https://larkfield.example/tallowick"},
    {"eyedropper", "Swatchmoor", "Picks any colour on the screen and remembers it.",
     "https://larkfield.example/swatchmoor"},
    {"chart.bar", "Brimgauge", "Shows how busy the processor and the memory are.",
     "https://larkfield.example/brimgauge"},
}};

/// The targets of links.
inline constexpr std::string_view productPage = "https://stowpocket.example/";
inline constexpr std::string_view makerPage = "https://larkfield.example/";

}  // namespace stowpocket
