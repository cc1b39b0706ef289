// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// Restricts this process for good: it may compute, allocate memory, start threads, and read and write the files that
/// are already open. It can open no file, start or signal no process, and reach nothing outside; such calls fail.
/// Returns false if the kernel does not support this. Libraries that are not loaded yet are out of reach.
[[nodiscard]] bool confineToOpenFiles();

}  // namespace stowpocket
