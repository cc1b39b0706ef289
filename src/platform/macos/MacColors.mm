// SPDX-License-Identifier: MIT
#include "platform/macos/MacColors.h"

#import <AppKit/AppKit.h>

#include <algorithm>

namespace stowpocket {
namespace {

NSColor* nsColor(MacColor color) {
    switch (color) {
    case MacColor::secondaryLabel:
        return NSColor.secondaryLabelColor;
    case MacColor::tertiaryLabel:
        return NSColor.tertiaryLabelColor;
    case MacColor::controlBackground:
        return NSColor.controlBackgroundColor;
    case MacColor::orange:
        return NSColor.systemOrangeColor;
    case MacColor::red:
        return NSColor.systemRedColor;
    case MacColor::controlAccent:
        return NSColor.controlAccentColor;
    }
    return NSColor.controlTextColor;
}

/// The system's own, which may be one of higher contrast, unless a window is dark in a light system or the reverse.
NSAppearance* appearanceFor(bool isDark) {
    NSAppearanceName const wanted = isDark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua;
    NSAppearance* const own = NSApplication.sharedApplication.effectiveAppearance;
    NSAppearanceName const closest =
        [own bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    return [closest isEqualToString:wanted] ? own : [NSAppearance appearanceNamed:wanted];
}

}  // namespace

std::optional<std::array<double, 4>> rgbaOf(MacColor color, bool isDark) {
    __block std::optional<std::array<double, 4>> rgba;
    // A colour of the palette has its components only in an appearance.
    [appearanceFor(isDark) performAsCurrentDrawingAppearance:^{
      NSColor* const resolved = [nsColor(color) colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
      if (resolved == nil)
          return;
      CGFloat red = 0;
      CGFloat green = 0;
      CGFloat blue = 0;
      CGFloat alpha = 0;
      [resolved getRed:&red green:&green blue:&blue alpha:&alpha];
      rgba = {red, green, blue, alpha};
    }];
    if (rgba) {
        for (double& component : *rgba)
            component = std::clamp(component, 0.0, 1.0);  // beyond are colours that only some screens show
    }
    return rgba;
}

}  // namespace stowpocket
