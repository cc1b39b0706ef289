// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacStorage.h"

namespace stowpocket {
namespace {

/// When a call returns, the system's own service has the change and keeps it even if this process crashes.
class UserDefaultsStore : public PreferenceStore {
public:
    void registerDefaults(PropertyValue::Dictionary defaults) override {
        [defaults_ registerDefaults:propertyListOf(defaults)];
    }
    [[nodiscard]] std::optional<PropertyValue> value(std::string_view key) const override {
        return propertyValueOf([defaults_ objectForKey:nsString(key)]);
    }
    void setValue(std::string_view key, PropertyValue value) override {
        change(key, [&](NSString* name) { [defaults_ setObject:propertyListOf(value) forKey:name]; });
    }
    void removeValue(std::string_view key) override {
        change(key, [&](NSString* name) { [defaults_ removeObjectForKey:name]; });
    }
    [[nodiscard]] Signal<const std::string&>& changed() override { return changed_; }
    void whenSaved(SaveCompletion completion) override { completion(std::nullopt); }
    [[nodiscard]] std::optional<std::string> saveProblem() const override { return std::nullopt; }
    [[nodiscard]] Signal<>& saveProblemChanged() override { return saveProblemChanged_; }

private:
    template <class Write>
    void change(std::string_view key, Write write) {
        const std::optional<PropertyValue> before = value(key);
        write(nsString(key));
        if (value(key) != before)
            changed_.emit(std::string(key));
    }

    NSUserDefaults* const defaults_ = NSUserDefaults.standardUserDefaults;
    Signal<const std::string&> changed_;
    /// Never emitted.
    Signal<> saveProblemChanged_;
};

class MacPropertyListParser : public PropertyListParser {
public:
    [[nodiscard]] std::optional<PropertyValue> parse(const Bytes& bytes) override {
        @autoreleasepool {
            return propertyValueOf([NSPropertyListSerialization propertyListWithData:nsData(bytes)
                                                                             options:NSPropertyListImmutable
                                                                              format:nil
                                                                               error:nil]);
        }
    }
};

}  // namespace

std::unique_ptr<PreferenceStore> makeUserDefaultsStore() {
    return std::make_unique<UserDefaultsStore>();
}

std::unique_ptr<PropertyListParser> makeMacPropertyListParser() {
    return std::make_unique<MacPropertyListParser>();
}

MainBundle macMainBundle() {
    const NSBundle* const bundle = NSBundle.mainBundle;
    const std::optional<PropertyValue> info = propertyValueOf(bundle.infoDictionary);
    const PropertyValue::Dictionary* const dictionary = info ? info->dictionary() : nullptr;
    return {fileURLOf(bundle.bundleURL).value_or(*FileURL::fromPath("/")),
            dictionary == nullptr ? std::nullopt : std::optional(*dictionary)};
}

}  // namespace stowpocket
