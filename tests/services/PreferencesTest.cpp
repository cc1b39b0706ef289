// SPDX-License-Identifier: MIT
#include "fakes/FakeDispatch.h"
#include "platform/linux/preferences/LinuxPreferenceStore.h"
#include "services/PreferencesContract.h"
#include "support/TemporaryFolder.h"

namespace stowpocket {

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

INSTANTIATE_TYPED_TEST_SUITE_P(OnLinux, PreferencesContract, LinuxPreferences);

}  // namespace stowpocket
