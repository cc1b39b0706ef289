// SPDX-License-Identifier: MIT
#import "platform/macos/CGPixels.h"
#import "platform/macos/Conversions.h"
#include "platform/macos/MacPictures.h"
#import "platform/macos/SystemSymbol.h"

namespace stowpocket {
namespace {

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
        // Icons are kept for good, so they are made for the sharpest screen that may be connected.
        constexpr double sharpest = 2;
        const std::optional<Pixels> pixels = pixelsOf(image, sharpest, static_cast<int>(iconSide * sharpest));
        return {pixels ? makeContent_(*pixels) : nullptr, {iconSide, iconSide}};
    }

private:
    const MakeImageContent makeContent_;
};

}  // namespace

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

}  // namespace stowpocket
