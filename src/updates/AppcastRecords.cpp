// SPDX-License-Identifier: MIT
#include "updates/AppcastRecords.h"

#include <array>
#include <charconv>

namespace stowpocket {
namespace {

constexpr std::array textFields{
    &AppcastItem::version,         &AppcastItem::displayVersion, &AppcastItem::minimumSystemVersion,
    &AppcastItem::operatingSystem, &AppcastItem::hardware,       &AppcastItem::channel,
    &AppcastItem::pageURL,         &AppcastItem::notes,          &AppcastItem::notesURL,
    &AppcastItem::downloadURL,     &AppcastItem::signature};

std::optional<std::string_view> takeField(std::string_view& bytes) {
    const std::size_t end = bytes.find('\0');
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view field = bytes.substr(0, end);
    bytes.remove_prefix(end + 1);
    return field;
}

std::optional<std::int64_t> numberOf(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

std::optional<AppcastItem> takeItem(std::string_view& bytes) {
    AppcastItem item;
    for (const auto field : textFields) {
        const std::optional<std::string_view> text = takeField(bytes);
        if (!text)
            return std::nullopt;
        item.*field = *text;
    }
    const std::optional<std::string_view> length = takeField(bytes);
    const std::optional<std::int64_t> number = length ? numberOf(*length) : std::nullopt;
    if (!number)
        return std::nullopt;
    item.length = *number;
    return item;
}

}  // namespace

std::string encodedItems(const std::vector<AppcastItem>& items) {
    std::string bytes;
    for (const AppcastItem& item : items) {
        for (const auto field : textFields) {
            for (const char character : item.*field) {
                if (character != '\0')
                    bytes += character;
            }
            bytes += '\0';
        }
        bytes += std::to_string(item.length) + '\0';
    }
    return bytes;
}

std::optional<std::vector<AppcastItem>> decodedItems(std::string_view bytes) {
    std::vector<AppcastItem> items;
    while (!bytes.empty()) {
        std::optional<AppcastItem> item = takeItem(bytes);
        if (!item)
            return std::nullopt;
        items.push_back(std::move(*item));
    }
    return items;
}

}  // namespace stowpocket
