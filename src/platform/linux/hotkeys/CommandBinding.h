// SPDX-License-Identifier: MIT
#pragma once

#include "services/OtherPrograms.h"

#include <memory>
#include <string>

namespace stowpocket {

/// Runs the programs by which a desktop's settings are changed, found along PATH.
[[nodiscard]] std::shared_ptr<ChildProcess> makeSettingsPrograms();

/// The names of the desktop that this session runs, separated by colons.
[[nodiscard]] std::string sessionNames();

/// What starts the program in `executable`, as a shell takes it: its name alone where PATH leads to this file.
[[nodiscard]] std::string shellCommand(const std::string& executable);

}  // namespace stowpocket
