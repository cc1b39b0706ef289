// SPDX-License-Identifier: MIT
#include "cli/CommandText.h"

#include "foundation/Text.h"

#include <cstdint>

namespace stowpocket {
namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

/// The length of the first character of `text` if it is a non-ASCII character that controls terminals or disguises
/// text: U+0080 to U+009F, direction marks, line separators. Else 0.
std::size_t deceptiveLength(std::string_view text) {
    const auto byte = [text](std::size_t at) { return at < text.size() ? static_cast<std::uint8_t>(text[at]) : 0; };
    const auto isWithin = [](int value, int first, int last) { return value >= first && value <= last; };
    if ((byte(0) == 0xC2 && isWithin(byte(1), 0x80, 0x9F)) || (byte(0) == 0xD8 && byte(1) == 0x9C))
        return 2;
    const bool isMark = byte(1) == 0x80 && (isWithin(byte(2), 0x8E, 0x8F) || isWithin(byte(2), 0xA8, 0xAE));
    const bool isIsolate = byte(1) == 0x81 && isWithin(byte(2), 0xA6, 0xA9);
    return byte(0) == 0xE2 && (isMark || isIsolate) ? 3 : 0;
}

bool isPlain(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isControl(text[at]) || deceptiveLength(text.substr(at)) > 0)
            return false;
    }
    return validUtf8(text) == text;
}

std::string hex(char character) {
    const auto byte = static_cast<std::uint8_t>(character);
    return {hexDigits[byte >> 4u], hexDigits[byte & 0x0Fu]};
}

/// The JSON escape of a character of two or three bytes in UTF-8.
std::string jsonEscape(std::string_view character) {
    std::uint32_t codePoint = static_cast<std::uint8_t>(character[0]) & (character.size() == 2 ? 0x1Fu : 0x0Fu);
    for (const char next : character.substr(1))
        codePoint = codePoint << 6u | (static_cast<std::uint8_t>(next) & 0x3Fu);
    return "\\u" + hex(static_cast<char>(codePoint >> 8u)) + hex(static_cast<char>(codePoint & 0xFFu));
}

/// In double quotes; `text` is UTF-8.
std::string jsonString(std::string_view text) {
    std::string quoted = "\"";
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (const std::size_t length = deceptiveLength(text.substr(at)); length > 0) {
            quoted += jsonEscape(text.substr(at, length));
            at += length - 1;
        } else if (isControl(character)) {
            quoted += "\\u00" + hex(character);
        } else if (character == '"' || character == '\\') {
            quoted.append("\\").append(1, character);
        } else {
            quoted += character;
        }
    }
    return quoted + '"';
}

using NameText = std::string (*)(std::string_view name);

std::optional<std::string> field(char letter, const StagedFile& file, NameText nameText) {
    switch (letter) {
    case 'p':
        return nameText(file.fileURL.path());
    case 'n':
        return nameText(file.fileURL.lastPathComponent());
    case 'u':
        return file.fileURL.string();
    case 'i':
        return file.id;
    case 's':
        return std::to_string(file.fileSize);
    case '%':
        return "%";
    default:
        return std::nullopt;
    }
}

std::optional<std::string> escaped(char letter) {
    constexpr std::string_view letters = "0nt\\";
    constexpr std::string_view characters{"\0\n\t\\", letters.size()};
    const std::size_t at = letters.find(letter);
    return at == std::string_view::npos ? std::nullopt : std::optional(std::string(1, characters[at]));
}

}  // namespace

std::string_view helpText() {
    return R"(Usage: stowpocket [FILES...]
       stowpocket VERB [OPTIONS] [--] [FILES...]

Without a verb the program starts, or the one that runs opens its shelf, with FILES on it.

Verbs:
  add FILES...         put files on the shelf; starts the program if needed
  list                 print the files on the shelf, one a line, oldest first
  remove FILES|IDS...  take files off the shelf; the files themselves stay
  clear                take all files off the shelf
  undo                 bring back what was taken off the shelf last
  copy [FILES|IDS...]  put files of the shelf, or all of them, on the clipboard
  paste                add what is on the clipboard; starts the program if needed
  open [FILES|IDS...]  open files of the shelf, or all of them, with their applications
  show                 open the shelf; starts the program if needed
  toggle               open or close the shelf; starts the program if needed
  quick-drop           add what is selected in the file manager; starts the program if needed

FILES are paths or file: URLs. A file called like a verb is written ./add.

Options:
  -h, --help           print this and end
      --version        print the version and end

Options of list, for scripts:
  -0                   end each file with NUL, and print names as they are
      --format FORMAT  print this of each file: %p path, %n name, %u URL, %i id,
                       %s size in bytes, %% a percent sign, and \0 \n \t \\
      --json           print all that is known of each file

Exit codes: 0 all done; 1 some files were not taken or not found; 2 wrong usage;
3 the program is not running or does not answer; 4 done, but not saved yet;
5 the program runs in another session.
)";
}

std::string printable(std::string_view text) {
    if (isPlain(text))
        return std::string(text);
    // Bytes above 0x7F are escaped too, since bytes after a broken sequence could be read as its end.
    std::string quoted = "$'";
    for (const char character : text) {
        if (character == '\n')
            quoted += "\\n";
        else if (character == '\t')
            quoted += "\\t";
        else if (character == '\'' || character == '\\')
            quoted.append("\\").append(1, character);
        else if (isControl(character) || static_cast<std::uint8_t>(character) > 0x7F)
            quoted += "\\x" + hex(character);
        else
            quoted += character;
    }
    return quoted + '\'';
}

std::optional<std::string> listText(std::span<const StagedFile> files, std::string_view format, char end) {
    const NameText nameText =
        end == '\0' ? [](std::string_view name) { return std::string(name); } : NameText(printable);
    std::string text;
    for (const StagedFile& file : files) {
        for (std::size_t at = 0; at < format.size(); ++at) {
            if (format[at] != '%' && format[at] != '\\') {
                text += format[at];
                continue;
            }
            const char mark = format[at++];
            if (at == format.size())
                return std::nullopt;
            const std::optional<std::string> part =
                mark == '%' ? field(format[at], file, nameText) : escaped(format[at]);
            if (!part)
                return std::nullopt;
            text += *part;
        }
        text += end;
    }
    return text;
}

std::string listJSON(std::span<const StagedFile> files) {
    std::string text = "[";
    for (const StagedFile& file : files) {
        const std::string path = file.fileURL.path();
        text += text.size() == 1 ? "\n  " : ",\n  ";
        text += "{\"id\": " + jsonString(file.id);
        text += ", \"url\": " + jsonString(file.fileURL.string());
        text += ", \"path\": " + (validUtf8(path) == path ? jsonString(path) : "null");
        text += std::string(", \"available\": ") + (file.isAvailable ? "true" : "false");
        text += ", \"size\": " + std::to_string(file.fileSize) + "}";
    }
    return text + (files.empty() ? "]\n" : "\n]\n");
}

}  // namespace stowpocket
