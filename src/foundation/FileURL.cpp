// SPDX-License-Identifier: MIT
#include "foundation/FileURL.h"

#include "foundation/Invariant.h"
#include "foundation/Text.h"

#include <charconv>
#include <cstdint>

namespace stowpocket {
namespace {

/// The byte that two hexadecimal digits encode; none if `digits` is anything else.
std::optional<char> byteOfHex(std::string_view digits) {
    std::uint8_t byte = 0;
    const char* const all = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), all, byte, 16);
    return digits.size() == 2 && error == std::errc() && end == all ? std::optional(static_cast<char>(byte))
                                                                    : std::nullopt;
}

/// GLib leaves these unescaped in a file URI; thumbnail caches are keyed by exactly that form.
bool staysUnescaped(char character) {
    constexpr std::string_view marks = "!$&'()*+,-./:=@_~";
    return isAsciiLetter(character) || isAsciiDigit(character) || marks.find(character) != std::string_view::npos;
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isControl(text[at]))
            return std::nullopt;
        if (text[at] != '%') {
            decoded += text[at];
            continue;
        }
        const std::optional<char> byte = byteOfHex(text.substr(at + 1, 2));
        if (!byte || byte == '\0' || byte == '/')
            return std::nullopt;
        decoded += *byte;
        at += 2;
    }
    return decoded;
}

bool isLocal(std::string_view host, std::string_view localHost) {
    const std::string lowered = asciiLowercased(host);
    return lowered.empty() || lowered == "localhost" || lowered == asciiLowercased(localHost);
}

}  // namespace

std::optional<FileURL> FileURL::parse(std::string_view text, std::string_view localHost) {
    constexpr std::string_view scheme = "file:";
    if (asciiLowercased(text.substr(0, scheme.size())) != scheme)
        return std::nullopt;
    text.remove_prefix(scheme.size());
    text = text.substr(0, text.find_first_of("?#"));
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const std::size_t slash = text.find('/');
        if (slash == std::string_view::npos || !isLocal(text.substr(0, slash), localHost))
            return std::nullopt;
        text.remove_prefix(slash);
    }
    const std::optional<std::string> path = percentDecoded(text);
    return path ? fromPath(*path) : std::nullopt;
}

std::optional<FileURL> FileURL::fromPath(std::string_view path) {
    if (!path.starts_with('/') || path.find('\0') != std::string_view::npos)
        return std::nullopt;
    return FileURL(std::string(path));
}

std::string FileURL::path() const {
    const std::size_t last = path_.find_last_not_of('/');
    return last == std::string::npos ? "/" : path_.substr(0, last + 1);
}

std::string FileURL::lastPathComponent() const {
    const std::string trimmed = path();
    return trimmed == "/" ? trimmed : trimmed.substr(trimmed.rfind('/') + 1);
}

std::string FileURL::pathExtension() const {
    const std::string name = lastPathComponent();
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot + 1);
}

FileURL FileURL::parent() const {
    const std::string trimmed = path();
    const std::size_t slash = trimmed.rfind('/');
    return FileURL(slash == 0 ? "/" : trimmed.substr(0, slash));
}

FileURL FileURL::appending(std::string_view name) const {
    invariant(isPlainFileName(name), "a file URL is extended by one plain file name");
    std::string extended = path();
    if (extended != "/")
        extended += '/';
    return FileURL(extended.append(name));
}

std::string FileURL::string() const {
    std::string text = "file://";
    text.reserve(text.size() + path_.size());
    for (const char character : path_) {
        if (staysUnescaped(character)) {
            text += character;
            continue;
        }
        text += '%';
        appendHex(text, static_cast<std::uint8_t>(character));
    }
    return text;
}

bool isPlainFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
}

}  // namespace stowpocket
