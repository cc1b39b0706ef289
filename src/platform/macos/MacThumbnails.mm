// SPDX-License-Identifier: MIT
#import "platform/macos/CGPixels.h"
#import "platform/macos/Conversions.h"
#include "platform/macos/MacPictures.h"

#import <dispatch/dispatch.h>
#import <QuickLookThumbnailing/QuickLookThumbnailing.h>

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
                                 // Only the main thread can tell whether anybody still waits.
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

}  // namespace

std::unique_ptr<Thumbnails> makeQuickLookThumbnails(MakeImageContent makeContent) {
    return std::make_unique<QuickLookThumbnails>(std::move(makeContent));
}

}  // namespace stowpocket
