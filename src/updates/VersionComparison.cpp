// SPDX-License-Identifier: MIT
#include "updates/VersionComparison.h"

#include "foundation/Text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace stowpocket {
namespace {

/// Everything that is neither a digit nor one of these parts what stands around it.
bool isWordCharacter(char character) {
    return isAsciiLetter(character) || static_cast<unsigned char>(character) >= 0x80;
}

/// A number without leading zeros, of any length, or a word in small letters.
struct Part {
    bool isNumber;
    std::string text;
};

struct Version {
    /// The numbers between dots that it begins with, and all that follows.
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

/// `missing` stands where the shorter list has no part.
std::weak_ordering compareLists(const std::vector<Part>& left, const std::vector<Part>& right, const Part& missing) {
    for (std::size_t at = 0; at < std::max(left.size(), right.size()); ++at) {
        const auto order =
            compareParts(at < left.size() ? left[at] : missing, at < right.size() ? right[at] : missing);
        if (order != std::weak_ordering::equivalent)
            return order;
    }
    return std::weak_ordering::equivalent;
}

}  // namespace

std::weak_ordering compareVersions(std::string_view left, std::string_view right) {
    const Version leftVersion = parsed(left);
    const Version rightVersion = parsed(right);
    // No digits at all: above every word, and not above a zero.
    const Part nothing{true, {}};
    const auto release = compareLists(leftVersion.release, rightVersion.release, nothing);
    return release != std::weak_ordering::equivalent ? release
                                                     : compareLists(leftVersion.rest, rightVersion.rest, nothing);
}

}  // namespace stowpocket
