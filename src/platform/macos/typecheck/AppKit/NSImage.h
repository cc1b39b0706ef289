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
@interface NSColor : NSObject <NSCopying, NSSecureCoding>
@property(class, readonly, strong) NSColor* controlTextColor;
+ (NSColor*)colorWithSRGBRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
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
