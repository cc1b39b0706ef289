// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "platform/linux/files/Mounts.h"

#include <algorithm>

/// A mount table with any names in it: mount points may be called anything.
void stowpocket::checkInput(const std::string& text) {
    const Mounts all = parseMounts(text);
    invariant(std::ranges::all_of(all, [](const Mount& mount) { return mount.point.starts_with('/'); }),
              "every mount point is absolute");
    const Mounts some = parseMounts(text.substr(0, text.rfind('\n')));
    invariant(!changesBetween(some, all).unmounted, "a line more unmounts nothing");
    invariant(!changesBetween(all, some).mounted, "a line less mounts nothing");
}
