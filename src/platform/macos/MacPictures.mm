// SPDX-License-Identifier: MIT
#include "platform/macos/MacPictures.h"

#import "platform/macos/AppKitPictures.h"
#import "platform/macos/Conversions.h"

#import <AppKit/AppKit.h>
#import <dispatch/dispatch.h>
#import <QuickLookThumbnailing/QuickLookThumbnailing.h>

#include <algorithm>

namespace stowpocket {
namespace {

class QuickLookThumbnails : public Thumbnails {
public:
    explicit QuickLookThumbnails(MakeImageContent makeContent) : makeContent_(std::move(makeContent)) {}

    void generate(const ThumbnailRequest& request, Completion completion) override {
        const Size size = request.size;
        QLThumbnailGenerationRequest* const asked = [[QLThumbnailGenerationRequest alloc]
              initWithFileAtURL:nsURL(request.fileURL)
                           size:CGSize{size.width, size.height}
                          scale:request.scale
            representationTypes:QLThumbnailGenerationRequestRepresentationTypeThumbnail];
        const std::weak_ptr<const bool> alive = alive_;
        const MakeImageContent makeContent = makeContent_;
        [QLThumbnailGenerator.sharedGenerator
            generateBestRepresentationForRequest:asked
                               completionHandler:^(QLThumbnailRepresentation* thumbnail, NSError*) {
                                 const std::optional<Image> image = imageOf(thumbnail, size, makeContent);
                                 // Only the main thread knows whether the caller still waits.
                                 dispatch_async(dispatch_get_main_queue(), ^{
                                   if (!alive.expired())
                                       completion(image);
                                 });
                               }];
    }

private:
    static std::optional<Image> imageOf(QLThumbnailRepresentation* thumbnail, const Size& size,
                                        const MakeImageContent& makeContent) {
        const std::optional<Pixels> pixels = pixelsOf(thumbnail.CGImage);
        return pixels ? std::optional(Image{makeContent(*pixels), size}) : std::nullopt;
    }

    const MakeImageContent makeContent_;
    const std::shared_ptr<const bool> alive_ = std::make_shared<bool>(true);
};

constexpr double iconSide = 48;

NSColor* colorOf(const std::array<double, 4>& rgba) {
    return [NSColor colorWithSRGBRed:rgba[0] green:rgba[1] blue:rgba[2] alpha:rgba[3]];
}

class MacWorkspaceIcons : public WorkspaceIcons {
public:
    explicit MacWorkspaceIcons(MakeImageContent makeContent) : makeContent_(std::move(makeContent)) {}

    [[nodiscard]] Image icon(const FileURL& url) override {
        NSImage* const image = [NSWorkspace.sharedWorkspace iconForFile:nsPath(url)];
        image.size = NSMakeSize(iconSide, iconSide);
        // Icons are cached forever, so they are made for the sharpest screen that may be connected.
        constexpr double sharpest = 2;
        const std::optional<Pixels> pixels = pixelsOf(image, sharpest, static_cast<int>(iconSide * sharpest));
        return {pixels ? makeContent_(*pixels) : nullptr, {iconSide, iconSide}};
    }

    [[nodiscard]] std::string lowercased(const std::string& extension) const override {
        return utf8(nsString(extension).lowercaseString).value_or(extension);
    }

private:
    const MakeImageContent makeContent_;
};

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

/// Returns the system's own appearance, which may have more contrast, unless the window is of the opposite kind.
NSAppearance* appearanceFor(bool isDark) {
    NSAppearanceName const wanted = isDark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua;
    NSAppearance* const own = NSApplication.sharedApplication.effectiveAppearance;
    NSAppearanceName const closest =
        [own bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    return [closest isEqualToString:wanted] ? own : [NSAppearance appearanceNamed:wanted];
}

}  // namespace

std::unique_ptr<Thumbnails> makeQuickLookThumbnails(MakeImageContent makeContent) {
    return std::make_unique<QuickLookThumbnails>(std::move(makeContent));
}

std::unique_ptr<WorkspaceIcons> makeMacWorkspaceIcons(MakeImageContent makeContent) {
    return std::make_unique<MacWorkspaceIcons>(std::move(makeContent));
}

std::optional<Pixels> systemSymbolPixels(const SymbolPicture& symbol, int side) {
    NSImageSymbolConfiguration* configuration = symbolConfiguration(symbol.fontSize, symbol.weight);
    if (symbol.primary != symbol.secondary) {
        NSImageSymbolConfiguration* const colors = [NSImageSymbolConfiguration
            configurationWithPaletteColors:@[ colorOf(symbol.primary), colorOf(symbol.secondary) ]];
        configuration = [configuration configurationByApplyingConfiguration:colors];
    }
    NSImage* const image = systemSymbol(symbol.name, {}, configuration);
    return image == nil ? std::nullopt : pixelsOf(image, 1, side);
}

std::optional<std::array<double, 4>> rgbaOf(MacColor color, bool isDark) {
    __block std::optional<std::array<double, 4>> rgba;
    // A colour of the palette has components only within an appearance.
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
            component = std::clamp(component, 0.0, 1.0);  // some screens show colours beyond this range
    }
    return rgba;
}

}  // namespace stowpocket
