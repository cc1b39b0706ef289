// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "services/FileManagerSelection.h"

#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// The local files of a list in the format text/uri-list (RFC 2483), in its order. Comments, other kinds of URL and
/// everything malformed are left out. `localHost` is this machine's name, which some programs put into file URLs.
[[nodiscard]] std::vector<FileURL> filesOfUriList(std::string_view text, std::string_view localHost);

/// Writes the same format, one URL per line.
[[nodiscard]] std::string uriListOf(const std::vector<FileURL>& files);

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
