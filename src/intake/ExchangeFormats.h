// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "services/OtherPrograms.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// The local files of a list in the format text/uri-list (RFC 2483), in its order. Comments, other kinds of URL and
/// everything malformed are left out. `localHost` is this machine's name, which some programs put into file URLs.
[[nodiscard]] std::vector<FileURL> filesOfUriList(std::string_view text, std::string_view localHost);

/// Writes the same format, one URL per line.
[[nodiscard]] std::string uriListOf(const std::vector<FileURL>& files);

/// One form of data that another program may fetch from the clipboard, by the name of its type.
struct ClipboardForm {
    std::string type;
    std::string bytes;
    friend bool operator==(const ClipboardForm&, const ClipboardForm&) = default;
};

/// The forms in which Linux desktops exchange files: a list of URLs, the lists of the file managers, which also say
/// that nothing is to be moved, and the paths for everything else.
[[nodiscard]] std::vector<ClipboardForm> clipboardFormsOf(const std::vector<FileURL>& files);

/// The Finder's selection, read by a script. Any failure yields an empty selection. Main thread, which waits for the
/// script.
class FinderSelection : public FileManagerSelection {
public:
    explicit FinderSelection(ScriptService& scripts) : scripts_(scripts) {}

    /// `completion` runs during the call.
    void read(Completion completion) override { completion(selectedFiles()); }
    [[nodiscard]] std::vector<FileURL> selectedFiles() const;

private:
    ScriptService& scripts_;
};

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
