// SPDX-License-Identifier: MIT
#import "platform/macos/SystemSymbol.h"

#import "platform/macos/Conversions.h"

namespace stowpocket {

NSFontWeight systemWeight(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular:
        return NSFontWeightRegular;
    case FontWeight::medium:
        return NSFontWeightMedium;
    case FontWeight::semibold:
        return NSFontWeightSemibold;
    case FontWeight::bold:
        return NSFontWeightBold;
    }
    return NSFontWeightRegular;
}

NSImageSymbolConfiguration* symbolConfiguration(double pointSize, FontWeight weight) {
    return [NSImageSymbolConfiguration configurationWithPointSize:pointSize weight:systemWeight(weight)];
}

NSImage* systemSymbol(std::string_view name, std::string_view accessibilityDescription,
                      NSImageSymbolConfiguration* configuration) {
    NSImage* const image = [NSImage imageWithSystemSymbolName:nsString(name)
                                     accessibilityDescription:nsString(accessibilityDescription)];
    return [image imageWithSymbolConfiguration:configuration];
}

}  // namespace stowpocket
