// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// A kind of contents that becomes a file where it is dropped without one.
struct ContentsKind {
    /// The uniform type identifier.
    std::string_view type;
    /// What it is called where nothing better is known.
    std::string_view name;
    std::string_view extension;
};

namespace contentsKind {
inline constexpr ContentsKind png{"public.png", "Image", "png"};
inline constexpr ContentsKind jpeg{"public.jpeg", "Image", "jpg"};
inline constexpr ContentsKind text{"public.utf8-plain-text", "Text", "txt"};
}  // namespace contentsKind

/// "words time.extension", with the kind's name in the place of missing words.
[[nodiscard]] std::string contentsFileName(const ContentsKind& kind, std::string_view words, std::string_view time);

/// A link as it is dragged from a web browser.
struct DroppedLink {
    /// An address of the web or of mail, in printable ASCII.
    std::string address;
    /// The title of the page in UTF-8, on one line; the address where the browser tells none.
    std::string title;
    friend bool operator==(const DroppedLink&, const DroppedLink&) = default;
};

/// None for other kinds of address, which a link file must not hold. The title may be anything.
[[nodiscard]] std::optional<DroppedLink> linkTo(std::string_view address, std::string_view title);
/// The link in the format text/x-moz-url: UTF-16, the address on the first line and the title on the second.
[[nodiscard]] std::optional<DroppedLink> linkOfMozURL(std::string_view bytes);
/// The first such link of a list in the format text/uri-list.
[[nodiscard]] std::optional<DroppedLink> linkOfUriList(std::string_view text);

/// The content of a desktop entry that leads to the address.
[[nodiscard]] std::string desktopEntryOf(const DroppedLink& link);

/// The first words of a text as the beginning of a file name: UTF-8 on one line of at most 60 bytes, without slashes,
/// invisible characters, and dots at either end. Empty if nothing is left. The text may be anything.
[[nodiscard]] std::string firstWords(std::string_view text);

}  // namespace stowpocket
