// SPDX-License-Identifier: MIT
#import "platform/macos/AppKitPictures.h"

#import "platform/macos/Conversions.h"

#include <algorithm>

namespace stowpocket {
namespace {

constexpr std::size_t bytesPerPixel = 4;
constexpr std::size_t bitsPerComponent = 8;
/// Far larger than any picture of a tile. The limit keeps the sizes below within their types.
constexpr std::size_t largestSide = 4096;

/// Owns an object of the system's drawing library and releases it with the library's own function.
template <class Ref, void (*release)(Ref)>
class Owned {
public:
    explicit Owned(Ref ref) : ref_(ref) {}
    ~Owned() { release(ref_); }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    [[nodiscard]] Ref get() const { return ref_; }

private:
    Ref ref_;
};
using ColorSpace = Owned<CGColorSpaceRef, CGColorSpaceRelease>;
using Context = Owned<CGContextRef, CGContextRelease>;
using OwnedImage = Owned<CGImageRef, CGImageRelease>;

/// Returns a context that draws into the bytes of `pixels`, which must stay, or null on failure.
CGContextRef makeContext(Pixels& pixels) {
    const ColorSpace space(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    const auto width = static_cast<std::size_t>(pixels.width);
    const auto height = static_cast<std::size_t>(pixels.height);
    return CGBitmapContextCreate(pixels.bytes.data(), width, height, bitsPerComponent, width * bytesPerPixel,
                                 space.get(),
                                 std::uint32_t{kCGImageAlphaPremultipliedFirst} | kCGBitmapByteOrder32Little);
}

std::optional<Pixels> drawn(CGImageRef image, std::size_t width, std::size_t height, CGRect place) {
    if (image == nullptr || width == 0 || height == 0 || width > largestSide || height > largestSide)
        return std::nullopt;
    Pixels pixels{static_cast<int>(width), static_cast<int>(height), Bytes(width * height * bytesPerPixel)};
    const Context context(makeContext(pixels));
    if (context.get() == nullptr)
        return std::nullopt;
    CGContextSetInterpolationQuality(context.get(), kCGInterpolationHigh);
    CGContextDrawImage(context.get(), place, image);
    return pixels;
}

}  // namespace

std::optional<Pixels> pixelsOf(CGImageRef image) {
    const std::size_t width = CGImageGetWidth(image);
    const std::size_t height = CGImageGetHeight(image);
    return drawn(image, width, height, CGRectMake(0, 0, static_cast<CGFloat>(width), static_cast<CGFloat>(height)));
}

std::optional<Pixels> pixelsOf(NSImage* image, double scale, int side) {
    const NSSize size = image.size;
    const double longest = std::max(size.width, size.height);
    if (side < 1 || !(longest > 0))
        return std::nullopt;
    const double factor = std::min(scale, side / longest);
    const CGFloat width = size.width * factor;
    const CGFloat height = size.height * factor;
    NSRect wanted = NSMakeRect(0, 0, width, height);
    const CGImageRef found = [image CGImageForProposedRect:&wanted context:nil hints:nil];
    const auto square = static_cast<std::size_t>(side);
    return drawn(found, square, square, CGRectMake((side - width) / 2, (side - height) / 2, width, height));
}

NSImage* nsImageOf(const Pixels& pixels, const Size& size) {
    Pixels copy = pixels;
    if (copy.width < 1 || copy.height < 1)
        return nil;
    const Context context(makeContext(copy));
    if (context.get() == nullptr)
        return nil;
    const OwnedImage image(CGBitmapContextCreateImage(context.get()));
    if (image.get() == nullptr)
        return nil;
    return [[NSImage alloc] initWithCGImage:image.get() size:NSMakeSize(size.width, size.height)];
}

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
