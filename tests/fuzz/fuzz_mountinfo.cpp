// SPDX-License-Identifier: MIT
// A mount table with any names in it: mount points may be called anything.
#include "Fuzzing.h"
#include "platform/linux/session/MountInfo.h"

using namespace stowpocket;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const std::vector<MountPoint> all = mountPoints(text);
    invariant(std::ranges::is_sorted(all), "comparing needs the order");
    invariant(std::ranges::all_of(all, [](const MountPoint& mount) { return mount.path.starts_with('/'); }),
              "every mount point is absolute");
    const std::vector<MountPoint> some = mountPoints(text.substr(0, text.rfind('\n')));
    invariant(!changesBetween(some, all).unmounted, "a line more unmounts nothing");
    invariant(!changesBetween(all, some).mounted, "a line less mounts nothing");
    return 0;
}
