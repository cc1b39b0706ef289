// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
DECL_OPTIONS(NSUInteger, QLThumbnailGenerationRequestRepresentationTypes){
    QLThumbnailGenerationRequestRepresentationTypeIcon = 1 << 0,
    QLThumbnailGenerationRequestRepresentationTypeLowQualityThumbnail = 1 << 1,
    QLThumbnailGenerationRequestRepresentationTypeThumbnail = 1 << 2};
SINCE(10.15)
@interface QLThumbnailGenerationRequest : NSObject <NSCopying, NSSecureCoding>
- (instancetype)initWithFileAtURL:(NSURL*)url
                             size:(CGSize)size
                            scale:(CGFloat)scale
              representationTypes:(QLThumbnailGenerationRequestRepresentationTypes)types NS_DESIGNATED_INITIALIZER;
@end
SINCE(10.15)
@interface QLThumbnailRepresentation : NSObject
@property(readonly) CGImageRef CGImage;
@end
SINCE(10.15)
@interface QLThumbnailGenerator : NSObject
@property(class, readonly) QLThumbnailGenerator* sharedGenerator;
- (void)generateBestRepresentationForRequest:(QLThumbnailGenerationRequest*)request
                           completionHandler:(void (^)(QLThumbnailRepresentation* _Nullable thumbnail,
                                                       NSError* _Nullable error))completionHandler;
@end
NS_ASSUME_NONNULL_END
