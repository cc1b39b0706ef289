// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSURL.h"

NS_ASSUME_NONNULL_BEGIN
typedef NSString* NSFileAttributeKey;
extern "C" NSFileAttributeKey const NSFileSize;
extern "C" NSFileAttributeKey const NSFilePosixPermissions;
extern "C" NSString* NSTemporaryDirectory(void);
DECL_ENUM(NSUInteger, NSSearchPathDirectory){NSApplicationSupportDirectory = 14};
DECL_OPTIONS(NSUInteger, NSSearchPathDomainMask){NSUserDomainMask = 1};
@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
@property(readonly, copy) NSURL* homeDirectoryForCurrentUser;
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory inDomains:(NSSearchPathDomainMask)domains;
- (NSString*)stringWithFileSystemRepresentation:(const char*)path length:(NSUInteger)length;
- (BOOL)fileExistsAtPath:(NSString*)path;
- (nullable NSDictionary<NSFileAttributeKey, id>*)attributesOfItemAtPath:(NSString*)path
                                                                   error:(NSError* _Nullable* _Nullable)error;
- (BOOL)createDirectoryAtURL:(NSURL*)url
    withIntermediateDirectories:(BOOL)createIntermediates
                     attributes:(nullable NSDictionary<NSFileAttributeKey, id>*)attributes
                          error:(NSError* _Nullable* _Nullable)error;
- (BOOL)copyItemAtURL:(NSURL*)from toURL:(NSURL*)to error:(NSError* _Nullable* _Nullable)error;
- (BOOL)removeItemAtURL:(NSURL*)url error:(NSError* _Nullable* _Nullable)error;
- (BOOL)trashItemAtURL:(NSURL*)url
      resultingItemURL:(NSURL* _Nullable* _Nullable)resultingURL
                 error:(NSError* _Nullable* _Nullable)error;
@end
@interface NSFormatter : NSObject <NSCopying, NSCoding>
@end
@interface NSLocale : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)localeWithLocaleIdentifier:(NSString*)identifier;
@end
@interface NSDateFormatter : NSFormatter
@property(null_resettable, copy) NSLocale* locale;
@property(null_resettable, copy) NSString* dateFormat;
- (NSString*)stringFromDate:(NSDate*)date;
@end
DECL_ENUM(NSInteger, NSByteCountFormatterCountStyle){NSByteCountFormatterCountStyleFile = 0};
@interface NSByteCountFormatter : NSFormatter
@property NSByteCountFormatterCountStyle countStyle;
- (NSString*)stringFromByteCount:(long long)bytes;
@end
@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(readonly, copy) NSURL* bundleURL;
@property(nullable, readonly, copy) NSDictionary<NSString*, id>* infoDictionary;
@end
NS_ASSUME_NONNULL_END
