// SPDX-License-Identifier: MIT
// Read before every adapter that runs on GNUstep: GNUstep's headers and declarations of what they lack of what the
// adapters call. A class that GNUstep has in name only is replaced under another name.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

// The declarations of other frameworks bring a BOOL of their own, which is not GNUstep's.
#include <objc/objc.h>
#pragma push_macro("YES")
#pragma push_macro("NO")
#pragma push_macro("nil")
#define BOOL BoolOfTheDeclarations
#include "decl.h"
#undef BOOL
#pragma pop_macro("YES")
#pragma pop_macro("NO")
#pragma pop_macro("nil")

#undef SINCE
#define SINCE(version)

#import <Foundation/Foundation.h>
#import <Foundation/NSByteCountFormatter.h>

typedef NSString* NSFileAttributeKey;
typedef NSString* NSKeyValueChangeKey;
enum : NSUInteger { NSURLBookmarkCreationWithSecurityScope = 1 << 11 };

NS_ASSUME_NONNULL_BEGIN
@interface NSObject (Later)
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(nullable void*)context;
@end

@interface NSURL (Later)
+ (NSURL*)fileURLWithFileSystemRepresentation:(const char*)path
                                  isDirectory:(BOOL)isDirectory
                                relativeToURL:(nullable NSURL*)base;
- (nullable NSData*)bookmarkDataWithOptions:(NSUInteger)options
             includingResourceValuesForKeys:(nullable NSArray*)keys
                              relativeToURL:(nullable NSURL*)base
                                      error:(NSError* _Nullable* _Nullable)error;
+ (nullable instancetype)URLByResolvingBookmarkData:(NSData*)data
                                            options:(NSUInteger)options
                                      relativeToURL:(nullable NSURL*)base
                                bookmarkDataIsStale:(BOOL*)isStale
                                              error:(NSError* _Nullable* _Nullable)error;
- (BOOL)startAccessingSecurityScopedResource;
- (void)stopAccessingSecurityScopedResource;
@end

@interface NSFileManager (Later)
@property(readonly) NSURL* homeDirectoryForCurrentUser;
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory inDomains:(NSSearchPathDomainMask)domains;
- (BOOL)trashItemAtURL:(NSURL*)url
      resultingItemURL:(NSURL* _Nullable* _Nullable)result
                 error:(NSError* _Nullable* _Nullable)error;
@end

@interface NSFileHandle (Later)
@property(copy, nullable) void (^readabilityHandler)(NSFileHandle*);
@end

@interface NSTask (Later)
@property(copy, nullable) NSURL* executableURL;
@property(copy, nullable) void (^terminationHandler)(NSTask*);
@property(readonly, getter=isRunning) BOOL running;
- (BOOL)launchAndReturnError:(NSError* _Nullable* _Nullable)error;
@end

#define NSURLSession StandInURLSession
#define NSURLSessionDataTask StandInURLSessionDataTask
@interface NSURLSessionDataTask : NSObject
@property(readonly) int64_t countOfBytesReceived;
- (void)resume;
- (void)cancel;
@end
@interface NSURLSession : NSObject
@property(class, readonly) NSURLSession* sharedSession;
- (NSURLSessionDataTask*)dataTaskWithURL:(NSURL*)url
                       completionHandler:(void (^)(NSData* _Nullable, NSURLResponse* _Nullable,
                                                   NSError* _Nullable))completionHandler;
@end

#define NSAppleEventDescriptor StandInEventDescriptor
#define NSAppleScript StandInAppleScript
@interface NSAppleEventDescriptor : NSObject
@property(readonly) NSInteger numberOfItems;
@property(readonly, nullable) NSString* stringValue;
- (nullable NSAppleEventDescriptor*)descriptorAtIndex:(NSInteger)index;
@end
@interface NSAppleScript : NSObject
- (nullable instancetype)initWithSource:(NSString*)source;
- (nullable NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>* _Nullable* _Nullable)error;
@end
NS_ASSUME_NONNULL_END

#include "LaterAppKit.h"

#undef nil
#undef YES
#undef NO
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
