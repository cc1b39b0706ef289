// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <string_view>
#include <vector>

namespace stowpocket {

/// The local files of a list in the format text/uri-list (RFC 2483), in its order. Comments, other kinds of URL and
/// everything malformed are left out. `localHost` is this machine's name, which some programs put into file URLs.
[[nodiscard]] std::vector<FileURL> filesOfUriList(std::string_view text, std::string_view localHost);

/// The same format, written: one URL a line.
[[nodiscard]] std::string uriListOf(const std::vector<FileURL>& files);

}  // namespace stowpocket
