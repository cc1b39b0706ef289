// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// Where a file is: an absolute `file:` URL. The path is kept as the bytes that the file system uses, so a name in
/// any encoding survives. Two URLs are equal when their strings are: "/a/", "/a" and "/b/../a" all differ.
class FileURL {
public:
    /// Parses a `file:` URL as other programs write it and percent-decodes the path. Returns none unless the text is
    /// the URL of a local file. It is not if it has another scheme, a relative path, a host other than "localhost" or
    /// `localHost`, a broken escape, a control character, or an escaped "/" or NUL, which no file name can contain. A
    /// query or fragment is ignored. Raw spaces and non-ASCII bytes are accepted, since some programs do not escape
    /// them.
    [[nodiscard]] static std::optional<FileURL> parse(std::string_view text, std::string_view localHost = {});

    /// The URL of an absolute path. Empty when the path is relative or contains NUL.
    [[nodiscard]] static std::optional<FileURL> fromPath(std::string_view path);

    /// The path without a trailing slash, in bytes.
    [[nodiscard]] std::string path() const;
    /// The last name of the path, in bytes; "/" for the root.
    [[nodiscard]] std::string lastPathComponent() const;
    /// What follows the last dot of the last name, without the dot. Empty for ".profile" and "name.".
    [[nodiscard]] std::string pathExtension() const;
    /// The folder that holds this file; the root is its own parent.
    [[nodiscard]] FileURL parent() const;
    /// The URL of the file called `name` in this folder. `name` is one plain name: see `isPlainFileName`.
    [[nodiscard]] FileURL appending(std::string_view name) const;
    /// The URL as text, escaped as GLib escapes file names, so that it can serve as a key that others share.
    [[nodiscard]] std::string string() const;

    friend bool operator==(const FileURL&, const FileURL&) = default;
    friend std::strong_ordering operator<=>(const FileURL&, const FileURL&) = default;

private:
    friend struct std::hash<FileURL>;
    explicit FileURL(std::string path) : path_(std::move(path)) {}

    std::string path_;
};

/// Whether `name` names a file inside a folder and nothing else: not empty, not "." or "..", without "/" or NUL.
[[nodiscard]] bool isPlainFileName(std::string_view name);

}  // namespace stowpocket

template <>
struct std::hash<stowpocket::FileURL> {
    std::size_t operator()(const stowpocket::FileURL& url) const noexcept {
        return std::hash<std::string>{}(url.path_);
    }
};
