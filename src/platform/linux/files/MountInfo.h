// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// One mounted file system: the kernel's number for the mount, where it stands, and what it is.
struct Mount {
    std::uint64_t id = 0;
    std::string point;
    std::string type;

    friend auto operator<=>(const Mount&, const Mount&) = default;
};
using Mounts = std::vector<Mount>;

/// Reads the form of /proc/self/mountinfo (proc(5)), in its order, which is that of mounting; lines that do not have
/// it are left out.
[[nodiscard]] Mounts parseMounts(std::string_view text);

}  // namespace stowpocket
