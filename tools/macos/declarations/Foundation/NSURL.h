// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSValues.h"

NS_ASSUME_NONNULL_BEGIN
typedef NSString* NSURLResourceKey;
DECL_OPTIONS(NSUInteger, NSURLBookmarkCreationOptions){NSURLBookmarkCreationWithSecurityScope = 1UL << 11};
DECL_OPTIONS(NSUInteger, NSURLBookmarkResolutionOptions){NSURLBookmarkResolutionWithSecurityScope = 1UL << 10};
@interface NSURL : NSObject <NSCopying, NSSecureCoding>
+ (nullable instancetype)URLWithString:(NSString*)string;
+ (nullable NSURL*)URLWithDataRepresentation:(NSData*)data relativeToURL:(nullable NSURL*)base;
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDirectory;
+ (NSURL*)fileURLWithFileSystemRepresentation:(const char*)path
                                  isDirectory:(BOOL)isDirectory
                                relativeToURL:(nullable NSURL*)base;
+ (nullable instancetype)URLByResolvingBookmarkData:(NSData*)data
                                            options:(NSURLBookmarkResolutionOptions)options
                                      relativeToURL:(nullable NSURL*)base
                                bookmarkDataIsStale:(nullable BOOL*)isStale
                                              error:(NSError* _Nullable* _Nullable)error;
@property(nullable, readonly, copy) NSString* absoluteString;
@property(nullable, readonly, copy) NSURL* filePathURL;
- (nullable NSURL*)URLByAppendingPathComponent:(NSString*)component;
- (nullable NSData*)bookmarkDataWithOptions:(NSURLBookmarkCreationOptions)options
             includingResourceValuesForKeys:(nullable NSArray<NSURLResourceKey>*)keys
                              relativeToURL:(nullable NSURL*)base
                                      error:(NSError* _Nullable* _Nullable)error;
- (BOOL)startAccessingSecurityScopedResource;
- (void)stopAccessingSecurityScopedResource;
@end

DECL_OPTIONS(NSUInteger, NSDataReadingOptions){NSDataReadingMappedIfSafe = 1UL << 0};
@interface NSData (NSDataURLs)
+ (nullable instancetype)dataWithContentsOfURL:(NSURL*)url
                                       options:(NSDataReadingOptions)options
                                         error:(NSError* _Nullable* _Nullable)error;
- (BOOL)writeToURL:(NSURL*)url atomically:(BOOL)atomically;
@end

@interface NSURLResponse : NSObject <NSSecureCoding, NSCopying>
@end
@interface NSHTTPURLResponse : NSURLResponse
@property(readonly) NSInteger statusCode;
@end
@interface NSURLSessionTask : NSObject <NSCopying>
@property(readonly) int64_t countOfBytesReceived;
- (void)cancel;
- (void)resume;
@end
@interface NSURLSessionDataTask : NSURLSessionTask
@end
@interface NSURLSession : NSObject
@property(class, readonly, strong) NSURLSession* sharedSession;
- (NSURLSessionDataTask*)dataTaskWithURL:(NSURL*)url
                       completionHandler:(void (^)(NSData* _Nullable data, NSURLResponse* _Nullable response,
                                                   NSError* _Nullable error))completionHandler;
@end
NS_ASSUME_NONNULL_END
