// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"

namespace stowpocket {
namespace {

class AppleEventDescriptor : public EventDescriptor {
public:
    explicit AppleEventDescriptor(NSAppleEventDescriptor* descriptor) : descriptor_(descriptor) {}

    [[nodiscard]] int numberOfItems() const override { return static_cast<int>(descriptor_.numberOfItems); }
    [[nodiscard]] std::unique_ptr<EventDescriptor> descriptorAtIndex(int index) const override {
        NSAppleEventDescriptor* const item = [descriptor_ descriptorAtIndex:index];
        return item == nil ? nullptr : std::make_unique<AppleEventDescriptor>(item);
    }
    [[nodiscard]] std::optional<std::string> stringValue() const override { return utf8(descriptor_.stringValue); }

private:
    NSAppleEventDescriptor* const descriptor_;
};

class AppleScript : public Script {
public:
    explicit AppleScript(NSAppleScript* script) : script_(script) {}

    [[nodiscard]] std::unique_ptr<EventDescriptor> execute() override {
        NSDictionary<NSString*, id>* errorInfo = nil;
        NSAppleEventDescriptor* const result = [script_ executeAndReturnError:&errorInfo];
        return errorInfo != nil ? nullptr : std::make_unique<AppleEventDescriptor>(result);
    }

private:
    NSAppleScript* const script_;
};

class AppleScriptService : public ScriptService {
public:
    [[nodiscard]] std::unique_ptr<Script> makeScript(const std::string& source) override {
        NSAppleScript* const script = [[NSAppleScript alloc] initWithSource:nsString(source)];
        return script == nil ? nullptr : std::make_unique<AppleScript>(script);
    }
};

}  // namespace

std::unique_ptr<ScriptService> makeAppleScriptService() {
    return std::make_unique<AppleScriptService>();
}

}  // namespace stowpocket
