// SPDX-License-Identifier: MIT
#include "intake/ExchangeFormats.h"

#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace stowpocket {
namespace {

constexpr auto selectionScript = R"(tell application "Finder"
    set theSelection to selection
    set thePaths to {}
    repeat with theItem in theSelection
        set end of thePaths to POSIX path of (theItem as alias)
    end repeat
    return thePaths
end tell)";

void appendFile(std::vector<FileURL>& files, const EventDescriptor& descriptor) {
    const std::optional<std::string> path = descriptor.stringValue();
    if (!path)
        return;
    if (std::optional<FileURL> file = FileURL::fromPath(*path))
        files.push_back(std::move(*file));
}

constexpr std::array<std::string_view, 4> schemes{"http://", "https://", "ftp://", "mailto:"};
/// Longer addresses are no use in a link file.
constexpr std::size_t longestAddress = 8192;
constexpr std::size_t longestName = 60;
constexpr std::uint32_t replacement = 0xFFFD;

bool isLinkAddress(std::string_view text) {
    const std::string lowercased = asciiLowercased(text.substr(0, 8));
    return text.size() <= longestAddress &&
           std::ranges::any_of(schemes, [&](std::string_view scheme) { return lowercased.starts_with(scheme); }) &&
           std::ranges::all_of(text, [](char letter) { return letter > ' ' && letter < '\x7F'; });
}

void appendUtf8(std::string& text, std::uint32_t point) {
    const auto add = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (point < 0x80) {
        add(point);
    } else if (point < 0x800) {
        add(0xC0 | point >> 6);
        add(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        add(0xE0 | point >> 12);
        add(0x80 | (point >> 6 & 0x3F));
        add(0x80 | (point & 0x3F));
    } else {
        add(0xF0 | point >> 18);
        add(0x80 | (point >> 12 & 0x3F));
        add(0x80 | (point >> 6 & 0x3F));
        add(0x80 | (point & 0x3F));
    }
}

/// In the order of bytes of this machine's kind, as browsers write it. Halves of pairs are replaced.
std::string utf8OfUtf16(std::string_view bytes) {
    const auto unit = [bytes](std::size_t at) {
        return static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes[at])) |
               static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes[at + 1])) << 8;
    };
    std::string text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const std::uint32_t first = unit(at);
        if (first < 0xD800 || first > 0xDFFF) {
            appendUtf8(text, first);
            continue;
        }
        const std::uint32_t second = first < 0xDC00 && at + 3 < bytes.size() ? unit(at + 2) : 0;
        const bool isPair = second >= 0xDC00 && second <= 0xDFFF;
        appendUtf8(text, isPair ? 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00) : replacement);
        at += isPair ? 2 : 0;
    }
    return text;
}

/// The first character of valid UTF-8 and how many bytes it has.
struct Character {
    std::uint32_t point;
    std::size_t length;
};

Character firstCharacter(std::string_view text) {
    const auto lead = static_cast<std::uint8_t>(text.front());
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    std::uint32_t point = length == 1 ? lead : lead & (0x7Fu >> length);
    for (const char next : text.substr(1, length - 1))
        point = point << 6 | (static_cast<std::uint8_t>(next) & 0x3F);
    return {point, length};
}

bool isBlank(std::uint32_t point) {
    return point <= ' ' || (point >= 0x7F && point <= 0xA0) || (point >= 0x2000 && point <= 0x200A) ||
           point == 0x2028 || point == 0x2029 || point == 0x202F || point == 0x3000;
}

/// Marks of the direction, joiners and the like.
bool isInvisible(std::uint32_t point) {
    return point == 0xAD || point == 0x61C || (point >= 0x200B && point <= 0x200F) ||
           (point >= 0x202A && point <= 0x202E) || (point >= 0x2060 && point <= 0x206F) || point == 0xFEFF ||
           (point >= 0xE0000 && point <= 0xE007F);
}

/// Without invisible characters, each run of blanks and `separators` as one blank, and at most `mostBytes`.
std::string oneLine(std::string_view text, std::size_t mostBytes, std::string_view separators = {}) {
    // Enough of the text for the result, as blanks and marks are no part of it.
    const std::string valid = validUtf8(text.substr(0, 16 * mostBytes));
    std::string line;
    bool isBlankDue = false;
    for (std::string_view rest = valid; !rest.empty();) {
        const auto [point, length] = firstCharacter(rest);
        const std::string_view character = rest.substr(0, length);
        rest.remove_prefix(character.size());
        const bool separates = isBlank(point) || (length == 1 && separators.find(character) != separators.npos);
        if (separates)
            isBlankDue = !line.empty();
        if (separates || isInvisible(point))
            continue;
        if (line.size() + (isBlankDue ? 1 : 0) + character.size() > mostBytes)
            break;
        line.append(std::exchange(isBlankDue, false) ? " " : "").append(character);
    }
    return line;
}

/// A backslash begins an escape in the values of desktop entries.
std::string escaped(std::string_view value) {
    std::string text;
    for (const char letter : value)
        text.append(letter == '\\' ? "\\\\" : std::string(1, letter));
    return text;
}

/// Takes the first line off the text. Lines end in CR LF, in LF, in NUL or not at all.
std::string_view takeLine(std::string_view& text) {
    constexpr std::string_view ends("\r\n\0", 3);
    const std::size_t end = std::min(text.find_first_of(ends), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(text.find_first_not_of(ends, end), text.size()));
    return line;
}

}  // namespace

std::vector<FileURL> filesOfUriList(std::string_view text, std::string_view localHost) {
    // GTK and Qt end some lists with NUL. Lines end in CR LF, in LF or not at all.
    constexpr std::string_view lineEnds("\r\n\0", 3);
    std::vector<FileURL> files;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of(lineEnds);
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.starts_with('#'))
            continue;
        if (std::optional<FileURL> file = FileURL::parse(line, localHost))
            files.push_back(std::move(*file));
    }
    return files;
}

std::string uriListOf(const std::vector<FileURL>& files) {
    std::string text;
    for (const FileURL& file : files)
        text += file.string() + "\r\n";
    return text;
}

std::vector<ClipboardForm> clipboardFormsOf(const std::vector<FileURL>& files) {
    std::string copied = "copy";
    std::string paths;
    for (const FileURL& file : files) {
        copied += "\n" + file.string();
        paths += (paths.empty() ? "" : "\n") + file.path();
    }
    return {{"text/uri-list", uriListOf(files)},
            {"x-special/gnome-copied-files", std::move(copied)},
            {"application/x-kde-cutselection", "0"},
            {"text/plain", std::move(paths)}};
}

std::vector<FileURL> FinderSelection::selectedFiles() const {
    std::vector<FileURL> files;
    const std::unique_ptr<Script> script = scripts_.makeScript(selectionScript);
    const std::unique_ptr<EventDescriptor> result = script ? script->execute() : nullptr;
    if (!result)
        return files;
    const int count = result->numberOfItems();
    for (int index = 1; index <= count; ++index) {
        if (const auto item = result->descriptorAtIndex(index))
            appendFile(files, *item);
    }
    if (count == 0)
        appendFile(files, *result);
    return files;
}

std::string contentsFileName(const ContentsKind& kind, std::string_view words, std::string_view time) {
    return std::string(words.empty() ? kind.name : words).append(" ").append(time).append(".").append(kind.extension);
}

std::optional<DroppedLink> linkTo(std::string_view address, std::string_view title) {
    constexpr std::size_t longestTitle = 300;
    if (!isLinkAddress(address))
        return std::nullopt;
    std::string line = oneLine(title, longestTitle);
    return DroppedLink{std::string(address), line.empty() ? std::string(address) : std::move(line)};
}

std::optional<DroppedLink> linkOfMozURL(std::string_view bytes) {
    const std::string text = utf8OfUtf16(bytes);
    std::string_view rest = text;
    const std::string_view address = takeLine(rest);
    return linkTo(address, takeLine(rest));
}

std::optional<DroppedLink> linkOfUriList(std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (std::optional<DroppedLink> link = linkTo(line, {}))
            return link;
    }
    return std::nullopt;
}

std::string desktopEntryOf(const DroppedLink& link) {
    return "[Desktop Entry]\nVersion=1.0\nType=Link\nName=" + escaped(link.title) + "\nURL=" + escaped(link.address) +
           "\nIcon=text-html\n";
}

std::string firstWords(std::string_view text) {
    // What other file systems refuse is left out as well: files are copied there.
    std::string words = oneLine(text, longestName, "/\\:*?\"<>|");
    const auto isEdge = [](char letter) { return letter == '.' || letter == ' '; };
    words.erase(words.begin(), std::ranges::find_if_not(words, isEdge));
    while (!words.empty() && isEdge(words.back()))
        words.pop_back();
    return words;
}

}  // namespace stowpocket
