// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

enum class CommandLineVerb { run, showHelp, showVersion, refuse };

/// What the program was started with.
struct CommandLine {
    CommandLineVerb verb = CommandLineVerb::run;
    /// To be put on the shelf, in the order given.
    std::vector<FileURL> files;
    /// The option that was not understood.
    std::string refused;
};

/// `arguments` come without the program's name. Files are paths, relative ones seen from `workingDirectory`, or file
/// URLs, as desktops write them; what follows "--" is never an option.
[[nodiscard]] CommandLine readCommandLine(std::span<const std::string_view> arguments,
                                          std::string_view workingDirectory);

}  // namespace stowpocket
