// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSURL.h"

NS_ASSUME_NONNULL_BEGIN
@interface NSProgress : NSObject
@end
DECL_ENUM(NSInteger, NSItemProviderRepresentationVisibility){NSItemProviderRepresentationVisibilityAll = 0};
typedef void (^NSItemProviderCompletionHandler)(__kindof id<NSSecureCoding> _Nullable item,
                                                NSError* _Null_unspecified error);
@interface NSItemProvider : NSObject <NSCopying>
- (instancetype)init;
- (nullable instancetype)initWithContentsOfURL:(null_unspecified NSURL*)url;
@property(readonly, copy) NSArray<NSString*>* registeredTypeIdentifiers;
- (BOOL)hasItemConformingToTypeIdentifier:(NSString*)type;
- (void)registerDataRepresentationForTypeIdentifier:(NSString*)type
                                         visibility:(NSItemProviderRepresentationVisibility)visibility
                                        loadHandler:
                                            (NSProgress* _Nullable (^)(void (^completionHandler)(
                                                NSData* _Nullable data, NSError* _Nullable error)))loadHandler;
- (NSProgress*)loadFileRepresentationForTypeIdentifier:(NSString*)type
                                     completionHandler:
                                         (void (^)(NSURL* _Nullable url, NSError* _Nullable error))completionHandler;
- (void)loadItemForTypeIdentifier:(NSString*)type
                          options:(nullable NSDictionary*)options
                completionHandler:(nullable NSItemProviderCompletionHandler)completionHandler;
@end
NS_ASSUME_NONNULL_END
