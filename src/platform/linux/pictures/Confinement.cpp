// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/Confinement.h"

#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>

namespace stowpocket {
namespace {

/// The rule set for Landlock: the rights that are taken away unless a rule returns them, and there is no rule.
struct LandlockRights {
    std::uint64_t files;
    std::uint64_t network;
    std::uint64_t scopes;
};
/// The rights that each version of Landlock knows. It refuses unknown ones.
constexpr std::array<LandlockRights, 6> landlockVersions{
    {{0x1fff, 0, 0}, {0x3fff, 0, 0}, {0x7fff, 0, 0}, {0x7fff, 3, 0}, {0xffff, 3, 0}, {0xffff, 3, 3}}};
constexpr unsigned int askForVersion = 1;

/// A second barrier. Kernels without it are no weaker in anything that the filter refuses as well.
void giveUpRights() {
    const long version = ::syscall(SYS_landlock_create_ruleset, nullptr, 0, askForVersion);
    if (version < 1)
        return;
    const std::size_t known = std::min(static_cast<std::size_t>(version), landlockVersions.size());
    const LandlockRights& rights = landlockVersions[known - 1];
    const long rules = ::syscall(SYS_landlock_create_ruleset, &rights, sizeof rights, 0);
    if (rules < 0)
        return;
    ::syscall(SYS_landlock_restrict_self, rules, 0);
    ::close(static_cast<int>(rules));
}

/// The system calls that image libraries and their threads need after they are loaded.
constexpr std::array freeCalls{
    // files that are open
    SCMP_SYS(read), SCMP_SYS(pread64), SCMP_SYS(write), SCMP_SYS(lseek), SCMP_SYS(_llseek), SCMP_SYS(close),
    SCMP_SYS(fstat), SCMP_SYS(eventfd2),
    // memory
    SCMP_SYS(brk), SCMP_SYS(munmap), SCMP_SYS(mremap), SCMP_SYS(madvise),
    // threads
    SCMP_SYS(futex), SCMP_SYS(set_robust_list), SCMP_SYS(rseq), SCMP_SYS(sched_yield), SCMP_SYS(sched_getaffinity),
    SCMP_SYS(gettid), SCMP_SYS(getpid), SCMP_SYS(exit), SCMP_SYS(exit_group),
    // signals to itself
    SCMP_SYS(rt_sigaction), SCMP_SYS(rt_sigprocmask), SCMP_SYS(rt_sigreturn), SCMP_SYS(sigaltstack),
    // time and chance
    SCMP_SYS(clock_gettime), SCMP_SYS(clock_nanosleep), SCMP_SYS(nanosleep), SCMP_SYS(gettimeofday),
    SCMP_SYS(getrandom)};

constexpr scmp_datum_t threadFlags = CLONE_VM | CLONE_SIGHAND | CLONE_THREAD;
constexpr scmp_datum_t namespaceFlags =
    CLONE_NEWNS | CLONE_NEWUTS | CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET | CLONE_NEWCGROUP;

class Filter {
public:
    Filter() : filter_(seccomp_init(SCMP_ACT_ERRNO(EPERM)), seccomp_release) {}

    bool enter() {
        // The filter cannot see the arguments of clone3. Without clone3 the C library uses clone.
        return filter_ && std::ranges::all_of(freeCalls, [this](int call) { return add(SCMP_ACT_ALLOW, call); }) &&
               add(SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3)) &&
               allow(SCMP_SYS(clone), {0, SCMP_CMP_MASKED_EQ, threadFlags | namespaceFlags, threadFlags}) &&
               allow(SCMP_SYS(mmap), {2, SCMP_CMP_MASKED_EQ, PROT_EXEC, 0}) &&
               allow(SCMP_SYS(mprotect), {2, SCMP_CMP_MASKED_EQ, PROT_EXEC, 0}) &&
               seccomp_attr_set(filter_.get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0 && seccomp_load(filter_.get()) == 0;
    }

private:
    bool add(std::uint32_t action, int call) { return seccomp_rule_add(filter_.get(), action, call, 0) == 0; }
    bool allow(int call, const scmp_arg_cmp& condition) {
        return seccomp_rule_add_array(filter_.get(), SCMP_ACT_ALLOW, call, 1, &condition) == 0;
    }

    std::unique_ptr<void, decltype(&seccomp_release)> filter_;
};

}  // namespace

bool confineToOpenFiles() {
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return false;
    giveUpRights();
    return Filter().enter();
}

}  // namespace stowpocket
