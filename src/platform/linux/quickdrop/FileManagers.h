// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace stowpocket {

/// How a file manager is made to copy its selection.
enum class CopyKey {
    controlC,
    /// For a program that may show a terminal, where Ctrl+C would end what runs in it.
    controlInsert,
};

struct KnownFileManager {
    std::string_view windowClass;
    CopyKey copyKey;
    /// Its Copy action can be run over the session bus, without any key.
    bool copiesOverBus;
};

/// The file manager whose windows have this class (the second part of WM_CLASS; users set the first part freely, for
/// terminals too). None for all other programs: no key is ever sent to those.
[[nodiscard]] std::optional<KnownFileManager> fileManagerOf(std::string_view windowClass);

}  // namespace stowpocket
