// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace stowpocket {

/// Type and rights of the file at `path`, links followed, if the kernel has them in memory: a disk or a server is
/// never waited for. None for what was not asked for lately, and on kernels before 5.12. On any thread.
[[nodiscard]] std::optional<mode_t> cachedFileMode(const std::string& path);

}  // namespace stowpocket
