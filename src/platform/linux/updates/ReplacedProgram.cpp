// SPDX-License-Identifier: MIT
#include "platform/linux/updates/ReplacedProgram.h"

#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/Folders.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace stowpocket {
namespace {

void execute(const std::string& program) {
    ::execl(program.c_str(), program.c_str(), nullptr);
}

}  // namespace

std::string downloadPath(const std::string& program) {
    const std::string target = linkTarget(program);
    return parentFolder(target) + "/." + target.substr(target.rfind('/') + 1) + ".download";
}

std::string replacedPath(const std::string& program) {
    return linkTarget(program) + ".old";
}

int becomeReplaced(const std::string& program) {
    // An AppImage stays mounted while one of the files that it handed down is open.
    ::closefrom(STDERR_FILENO + 1);
    execute(program);
    if (std::rename(replacedPath(program).c_str(), linkTarget(program).c_str()) == 0)
        execute(program);
    return EXIT_FAILURE;
}

}  // namespace stowpocket
