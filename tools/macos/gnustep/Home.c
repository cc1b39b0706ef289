// SPDX-License-Identifier: MIT
// Loaded before all other libraries, so that HOME is the home: GNUstep and its daemons ask the user database, where a
// test cannot have a home of its own.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <pwd.h>
#include <stdlib.h>

#define ORIGINAL(function) ((typeof(&function))dlsym(RTLD_NEXT, #function))

static struct passwd* withHome(struct passwd* entry) {
    char* const home = getenv("HOME");
    if (entry != NULL && home != NULL)
        entry->pw_dir = home;
    return entry;
}
struct passwd* getpwnam(const char* name) {
    return withHome(ORIGINAL(getpwnam)(name));
}
struct passwd* getpwuid(uid_t user) {
    return withHome(ORIGINAL(getpwuid)(user));
}
int getpwnam_r(const char* name, struct passwd* entry, char* buffer, size_t size, struct passwd** found) {
    const int failure = ORIGINAL(getpwnam_r)(name, entry, buffer, size, found);
    withHome(*found);
    return failure;
}
int getpwuid_r(uid_t user, struct passwd* entry, char* buffer, size_t size, struct passwd** found) {
    const int failure = ORIGINAL(getpwuid_r)(user, entry, buffer, size, found);
    withHome(*found);
    return failure;
}
