// SPDX-License-Identifier: MIT
// Tries what a picture that has taken over its decoder would try, and prints what it could do.
//   confinement_probe free|confined FOLDER     as it is, or confined as the decoder is
//   confinement_probe unfiltered PROGRAM...    runs a program for which the kernel installs no filter
#include "platform/linux/pictures/Confinement.h"

#include <fcntl.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

namespace {

/// The folder has a file "data" and a listening socket "socket".
void tryAll(const char* folder, int earlySocket) {
    const std::string path = std::string(folder) + "/data";
    const std::string other = path + "2";
    sockaddr_un address{AF_UNIX, {}};
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s/socket", folder);
    char byte = 0;
    const auto tell = [](const char* what, bool isDone) { std::printf("%s %s\n", what, isDone ? "yes" : "no"); };

    tell("read-input", ::read(STDIN_FILENO, &byte, 1) == 1);
    bool isRun = false;
    std::thread([&isRun] { isRun = true; }).join();
    tell("thread", isRun);

    tell("open-for-reading", ::open(path.c_str(), O_RDONLY) >= 0);
    tell("open-for-writing", ::open(path.c_str(), O_WRONLY) >= 0);
    tell("create", ::open(other.c_str(), O_WRONLY | O_CREAT, 0600) >= 0);
    tell("unlink", ::unlink(path.c_str()) == 0);
    tell("socket", ::socket(AF_UNIX, SOCK_STREAM, 0) >= 0);
    tell("connect", ::connect(earlySocket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0);
    tell("signal-parent", ::kill(::getppid(), 0) == 0);
    tell("code", ::mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED);
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0)
        std::_Exit(EXIT_SUCCESS);
    tell("fork", child > 0 && ::waitpid(child, nullptr, 0) == child);
    ::execl((path + "3").c_str(), "missing", nullptr);
    tell("exec", errno == ENOENT);
    tell("ptrace", ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0);
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS);
}

int runUnfiltered(char** command) {
    auto* const filter = seccomp_init(SCMP_ACT_ALLOW);
    const bool isReady = seccomp_rule_add(filter, SCMP_ACT_ERRNO(EPERM), SCMP_SYS(seccomp), 0) == 0 &&
                         seccomp_rule_add(filter, SCMP_ACT_ERRNO(EPERM), SCMP_SYS(prctl), 1,
                                          SCMP_A0(SCMP_CMP_EQ, PR_SET_SECCOMP)) == 0 &&
                         seccomp_load(filter) == 0;
    return isReady ? ::execv(command[0], command) : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3)
        return EXIT_FAILURE;
    const std::string mode = argv[1];
    if (mode == "unfiltered")
        return runUnfiltered(argv + 2);
    const int earlySocket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (mode == "confined" && !stowpocket::confineToOpenFiles())
        return EXIT_FAILURE;
    tryAll(argv[2], earlySocket);
}
