// SPDX-License-Identifier: MIT
// The fakes and the adapters of Linux, by what each service promises.
#include "fakes/FakeDispatch.h"
#include "fakes/FakeFiles.h"
#include "platform/linux/files/LinuxBookmarks.h"
#include "platform/linux/files/Mounts.h"
#include "platform/linux/files/PosixFileManager.h"
#include "platform/linux/preferences/LinuxPreferenceStore.h"
#include "platform/posix/FileProbe.h"
#include "services/FilesContract.h"
#include "services/PreferencesContract.h"

namespace stowpocket {
namespace {

struct InMemory {
    FakeFiles files;
    FakeFiles& bookmarks = files;
    [[nodiscard]] FileURL url(const std::string& name) const { return *FileURL::fromPath("/root/" + name); }
    void write(const std::string& name, const std::string& contents) { files.add(url(name).path(), contents); }
    void replace(const std::string& name) { files.add(url(name).path(), "other"); }
    void rename(const std::string& from, const std::string& to) { files.rename(url(from).path(), url(to).path()); }
    [[nodiscard]] std::string read(const std::string& name) const { return files.contents(url(name)); }
};

struct LinuxFiles {
    MountTable mounts;
    FileProbe probe{[](const std::string&) { return std::nullopt; }};
    PosixFileManager files{probe};
    LinuxBookmarks bookmarks{mounts, probe, {}};
};

class LinuxPreferences {
public:
    [[nodiscard]] PreferenceStore& store() { return *store_; }
    void restart() {
        store_->finish();
        store_.emplace(dispatch_, folder_.path("preferences.plist"));
    }

private:
    TemporaryFolder folder_;
    FakeDispatch dispatch_;
    std::optional<LinuxPreferenceStore> store_{std::in_place, dispatch_, folder_.path("preferences.plist")};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(OnLinux, PreferencesContract, LinuxPreferences);
INSTANTIATE_TYPED_TEST_SUITE_P(FilesInMemory, FilesContract, InMemory);
INSTANTIATE_TYPED_TEST_SUITE_P(FilesOnLinux, FilesContract, OnDisk<LinuxFiles>);

}  // namespace stowpocket
