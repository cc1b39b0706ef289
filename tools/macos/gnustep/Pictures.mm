// SPDX-License-Identifier: MIT
// What GNUstep lacks of symbols, colours, fonts and thumbnails.
#include "gnustep/StandIns.h"
#include "gnustep/Toolkit.h"

#import <QuickLookThumbnailing/QuickLookThumbnailing.h>

using namespace stowpocket;

// ---- pictures

@implementation NSImage (Later)
- (instancetype)initWithCGImage:(CGImageRef)image size:(NSSize)size {
    self = [self initWithSize:size];
    const auto width = static_cast<NSInteger>(CGImageGetWidth(image));
    NSBitmapImageRep* const pixels =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                pixelsWide:width
                                                pixelsHigh:static_cast<NSInteger>(CGImageGetHeight(image))
                                             bitsPerSample:8
                                           samplesPerPixel:4
                                                  hasAlpha:YES
                                                  isPlanar:NO
                                            colorSpaceName:NSDeviceRGBColorSpace
                                              bitmapFormat:NSAlphaNonpremultipliedBitmapFormat
                                               bytesPerRow:width * 4
                                              bitsPerPixel:32];
    standIn::copyRGBA(image, pixels.bitmapData);
    pixels.size = size;
    [self addRepresentation:pixels];
    return self;
}
- (CGImageRef)CGImageForProposedRect:(NSRect*)rect context:(NSGraphicsContext*)context hints:(NSDictionary*)hints {
    NSBitmapImageRep* const pixels = [NSBitmapImageRep imageRepWithData:self.TIFFRepresentation];
    if (pixels == nil || pixels.bitsPerPixel != 32)
        return nullptr;
    static CGImageRef lent;  // on macOS it goes with the image
    CGImageRelease(lent);
    lent = standIn::imageOfRGBA(pixels.bitmapData, static_cast<int>(pixels.pixelsWide),
                                static_cast<int>(pixels.pixelsHigh), static_cast<int>(pixels.bytesPerRow));
    return lent;
}

/// Every symbol is a square of 16 points in the first colour of its palette, black without one. Those whose names
/// begin with "no " are missing.
+ (NSImage*)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    if ([name hasPrefix:@"no "])
        return nil;
    NSImage* const image = [[NSImage alloc] initWithSize:NSMakeSize(16, 16)];
    standIn::note(image, "symbol", std::string(name.UTF8String) + '|' + description.UTF8String);
    return image;
}
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    const CGImageRef square = standIn::imageOfRGBA(configuration->rgba.data(), 1, 1, 4);
    NSImage* const image = [[NSImage alloc] initWithCGImage:square size:self.size];
    CGImageRelease(square);
    standIn::note(image, "symbol", standIn::noted(self, "symbol") + '|' + configuration->text);
    return image;
}
@end

@implementation NSImageSymbolConfiguration
+ (instancetype)configurationWithPointSize:(CGFloat)size weight:(CGFloat)weight {
    NSImageSymbolConfiguration* const made = [[NSImageSymbolConfiguration alloc] init];
    NSString* const text = [NSString stringWithFormat:@"%g %g", size, weight];
    made->text = text.UTF8String;
    return made;
}
+ (instancetype)configurationWithPaletteColors:(NSArray<NSColor*>*)colors {
    NSImageSymbolConfiguration* const made = [[NSImageSymbolConfiguration alloc] init];
    NSColor* const first = [colors.firstObject colorUsingColorSpaceName:NSDeviceRGBColorSpace];
    const auto byte = [](CGFloat component) { return static_cast<unsigned char>(std::lround(component * 255)); };
    made->rgba = {byte(first.redComponent), byte(first.greenComponent), byte(first.blueComponent), 255};
    return made;
}
- (instancetype)configurationByApplyingConfiguration:(NSImageSymbolConfiguration*)configuration {
    NSImageSymbolConfiguration* const made = [[NSImageSymbolConfiguration alloc] init];
    made->text = text + configuration->text;
    made->rgba = configuration->rgba;
    return made;
}
@end

#pragma clang diagnostic ignored "-Wprotocol"  // nobody copies or stores requests
@implementation QLThumbnailGenerationRequest {
@public
    NSURL* _url;
}
- (instancetype)initWithFileAtURL:(NSURL*)url
                             size:(CGSize)size
                            scale:(CGFloat)scale
              representationTypes:(QLThumbnailGenerationRequestRepresentationTypes)types {
    self = [super init];
    _url = url;
    return self;
}
@end
@implementation QLThumbnailRepresentation {
@public
    CGImageRef _image;
}
- (CGImageRef)CGImage {
    return _image;
}
- (void)dealloc {
    CGImageRelease(_image);
}
@end
/// Answers on another thread, with the picture itself.
@implementation QLThumbnailGenerator
+ (QLThumbnailGenerator*)sharedGenerator {
    static QLThumbnailGenerator* const generator = [[QLThumbnailGenerator alloc] init];
    return generator;
}
- (void)generateBestRepresentationForRequest:(QLThumbnailGenerationRequest*)request
                           completionHandler:(void (^)(QLThumbnailRepresentation*, NSError*))completionHandler {
    standIn::onAnotherThread(^{
      QLThumbnailRepresentation* const thumbnail = [[QLThumbnailRepresentation alloc] init];
      thumbnail->_image = standIn::imageOfFile(request->_url.path.fileSystemRepresentation);
      completionHandler(thumbnail->_image == nullptr ? nil : thumbnail, nil);
    });
}
@end

// ---- fonts and colours

@implementation NSFont (Later)
+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(CGFloat)weight {
    return [NSFont userFixedPitchFontOfSize:size];
}
@end

static NSAppearance* drawing;

@implementation NSApplication (Later)
- (NSAppearance*)effectiveAppearance {
    return [NSAppearance appearanceNamed:standIn::isDark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua];
}
@end
@implementation NSAppearance (Later)
- (void)performAsCurrentDrawingAppearance:(void (^)(void))block {
    drawing = self;
    block();
    drawing = nil;
}
@end
/// The accent is white in dark windows, red in light ones, and no colour at all anywhere else.
@implementation NSColor (Later)
+ (NSColor*)controlAccentColor {
    if (drawing == nil)
        return [NSColor colorWithPatternImage:[[NSImage alloc] initWithSize:NSMakeSize(1, 1)]];
    const bool isDark = [drawing.name isEqual:NSAppearanceNameDarkAqua];
    return [NSColor colorWithSRGBRed:1 green:isDark ? 1 : 0 blue:isDark ? 1 : 0 alpha:1];
}
@end
@implementation NSColorSpace (Later)
+ (NSColorSpace*)sRGBColorSpace {
    return NSColorSpace.deviceRGBColorSpace;
}
@end
