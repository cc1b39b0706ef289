// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "services/OtherPrograms.h"

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

}  // namespace stowpocket
