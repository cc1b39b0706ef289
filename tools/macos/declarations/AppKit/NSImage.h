// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
typedef CGFloat NSFontWeight;
extern "C" {
extern const NSFontWeight NSFontWeightRegular;
extern const NSFontWeight NSFontWeightMedium;
extern const NSFontWeight NSFontWeightSemibold;
extern const NSFontWeight NSFontWeightBold;
extern NSAttributedStringKey const NSFontAttributeName;
extern NSAttributedStringKey const NSForegroundColorAttributeName;
extern NSAttributedStringKey const NSBaselineOffsetAttributeName;
}
@interface NSFont : NSObject <NSCopying, NSSecureCoding>
+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
@end
@interface NSColorSpace : NSObject <NSSecureCoding>
@property(class, readonly, strong) NSColorSpace* sRGBColorSpace;
@end
@interface NSColor : NSObject <NSCopying, NSSecureCoding>
@property(class, readonly, strong) NSColor* controlTextColor;
@property(class, readonly, strong) NSColor* controlBackgroundColor;
@property(class, readonly, strong) NSColor* controlAccentColor SINCE(10.14);
@property(class, readonly, strong) NSColor* secondaryLabelColor SINCE(10.10);
@property(class, readonly, strong) NSColor* tertiaryLabelColor SINCE(10.10);
@property(class, readonly, strong) NSColor* systemOrangeColor SINCE(10.10);
@property(class, readonly, strong) NSColor* systemRedColor SINCE(10.10);
+ (NSColor*)colorWithSRGBRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
- (nullable NSColor*)colorUsingColorSpace:(NSColorSpace*)space;
- (void)getRed:(nullable CGFloat*)red
         green:(nullable CGFloat*)green
          blue:(nullable CGFloat*)blue
         alpha:(nullable CGFloat*)alpha;
@end

typedef NSString* NSAppearanceName;
extern "C" NSAppearanceName const NSAppearanceNameAqua SINCE(10.9);
extern "C" NSAppearanceName const NSAppearanceNameDarkAqua SINCE(10.14);
SINCE(10.9)
@interface NSAppearance : NSObject <NSSecureCoding>
+ (nullable NSAppearance*)appearanceNamed:(NSAppearanceName)name;
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)names SINCE(10.14);
- (void)performAsCurrentDrawingAppearance:(void (^)(void))block SINCE(11.0);
@end

SINCE(11.0)
@interface NSImageSymbolConfiguration : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)configurationWithPointSize:(CGFloat)size weight:(NSFontWeight)weight;
+ (instancetype)configurationWithPaletteColors:(NSArray<NSColor*>*)colors SINCE(12.0);
- (instancetype)configurationByApplyingConfiguration:(NSImageSymbolConfiguration*)configuration SINCE(12.0);
@end
@class NSGraphicsContext;
typedef NSString* NSImageHintKey;
@interface NSImage : NSObject <NSCopying, NSSecureCoding>
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description SINCE(11.0);
- (instancetype)initWithCGImage:(CGImageRef)image size:(NSSize)size;
@property NSSize size;
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration SINCE(11.0);
- (nullable CGImageRef)CGImageForProposedRect:(nullable NSRect*)rect
                                      context:(nullable NSGraphicsContext*)context
                                        hints:(nullable NSDictionary<NSImageHintKey, id>*)hints;
@end
NS_ASSUME_NONNULL_END
