// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// From here on this process may compute, take memory, start threads, and read and write the files that it has open.
/// It can open no file, neither start nor signal a process, and reach nothing outside, for good. What it tries all
/// the same fails. False when the kernel does not confine it. Libraries that are still to be loaded are out of reach.
[[nodiscard]] bool confineToOpenFiles();

}  // namespace stowpocket
