// SPDX-License-Identifier: MIT
#include "updates/Appcast.h"

#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <vector>

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

/// Any other character that is not a digit separates parts.
bool isWordCharacter(char character) {
    return isAsciiLetter(character) || static_cast<unsigned char>(character) >= 0x80;
}

/// A number of any length without leading zeros, or a word in lower case.
struct Part {
    bool isNumber;
    std::string text;
};

struct Version {
    /// The leading numbers, separated by dots, and everything after them.
    std::vector<Part> release;
    std::vector<Part> rest;
};

template <class Predicate>
std::string_view takeWhile(std::string_view& text, Predicate predicate) {
    const auto end = std::ranges::find_if_not(text, predicate);
    const std::string_view taken = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(taken.size());
    return taken;
}

Part takeNumber(std::string_view& text) {
    std::string_view digits = takeWhile(text, isAsciiDigit);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return {true, std::string(digits)};
}

Version parsed(std::string_view text) {
    Version version;
    takeWhile(text, [](char character) { return character == ' '; });
    while (!text.empty() && (isAsciiDigit(text.front()) || text.front() == '.')) {
        if (text.front() == '.')
            text.remove_prefix(1);
        else
            version.release.push_back(takeNumber(text));
    }
    while (!text.empty()) {
        if (isAsciiDigit(text.front()))
            version.rest.push_back(takeNumber(text));
        else if (isWordCharacter(text.front()))
            version.rest.push_back({false, asciiLowercased(takeWhile(text, isWordCharacter))});
        else
            text.remove_prefix(1);
    }
    return version;
}

std::weak_ordering compareParts(const Part& left, const Part& right) {
    if (left.isNumber != right.isNumber)
        return left.isNumber ? std::weak_ordering::greater : std::weak_ordering::less;
    if (left.isNumber && left.text.size() != right.text.size())
        return left.text.size() <=> right.text.size();
    return left.text <=> right.text;
}

/// `missing` replaces the parts that the shorter list does not have.
std::weak_ordering compareLists(const std::vector<Part>& left, const std::vector<Part>& right, const Part& missing) {
    for (std::size_t at = 0; at < std::max(left.size(), right.size()); ++at) {
        const auto order =
            compareParts(at < left.size() ? left[at] : missing, at < right.size() ? right[at] : missing);
        if (order != std::weak_ordering::equivalent)
            return order;
    }
    return std::weak_ordering::equivalent;
}

/// The same processor architecture has two names.
std::string_view commonName(std::string_view hardware) {
    return hardware == "aarch64" ? "arm64" : hardware;
}

bool runsOnHardware(std::string_view needed, std::string_view hardware) {
    while (!needed.empty()) {
        const std::size_t comma = std::min(needed.find(','), needed.size());
        std::string_view name = needed.substr(0, comma);
        needed.remove_prefix(std::min(comma + 1, needed.size()));
        name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
        name = name.substr(0, name.find_last_not_of(' ') + 1);
        if (!name.empty() && commonName(name) != commonName(hardware))
            return false;
    }
    return true;
}

bool isSuitable(const AppcastItem& item, const UpdateSystem& system) {
    return !item.version.empty() && item.channel.empty() && item.operatingSystem == system.operatingSystem &&
           runsOnHardware(item.hardware, system.hardware) &&
           compareVersions(item.minimumSystemVersion, system.systemVersion) <= 0;
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

std::weak_ordering compareVersions(std::string_view left, std::string_view right) {
    const Version leftVersion = parsed(left);
    const Version rightVersion = parsed(right);
    // A number without digits: greater than every word, and not greater than zero.
    const Part nothing{true, {}};
    const auto release = compareLists(leftVersion.release, rightVersion.release, nothing);
    return release != std::weak_ordering::equivalent ? release
                                                     : compareLists(leftVersion.rest, rightVersion.rest, nothing);
}

const AppcastItem* selectUpdate(const std::vector<AppcastItem>& items, const UpdateSystem& system,
                                const std::string& runningVersion, const std::string& skippedVersion) {
    const AppcastItem* newest = nullptr;
    for (const AppcastItem& item : items) {
        const std::string& toBeat = newest == nullptr ? runningVersion : newest->version;
        if (isSuitable(item, system) && item.version != skippedVersion && compareVersions(item.version, toBeat) > 0)
            newest = &item;
    }
    return newest;
}

}  // namespace stowpocket
