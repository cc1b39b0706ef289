// SPDX-License-Identifier: MIT
#include "platform/macos/MacSystem.h"

#import <ServiceManagement/ServiceManagement.h>

namespace stowpocket {
namespace {

class MacLoginItem : public LoginItem {
public:
    [[nodiscard]] Status status() const override {
        switch (SMAppService.mainAppService.status) {
        case SMAppServiceStatusNotRegistered:
            return Status::notRegistered;
        case SMAppServiceStatusEnabled:
            return Status::enabled;
        case SMAppServiceStatusRequiresApproval:
            return Status::requiresApproval;
        case SMAppServiceStatusNotFound:
            return Status::notFound;
        }
        return Status::notFound;
    }

    [[nodiscard]] bool registerItem() override { return [SMAppService.mainAppService registerAndReturnError:nil]; }
    [[nodiscard]] bool unregisterItem() override {
        return [SMAppService.mainAppService unregisterAndReturnError:nil];
    }
};

}  // namespace

std::unique_ptr<LoginItem> makeMacLoginItem() {
    return std::make_unique<MacLoginItem>();
}

}  // namespace stowpocket
