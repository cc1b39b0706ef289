// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSURL.h"

typedef uint32_t AEEventClass, AEEventID;
NS_ASSUME_NONNULL_BEGIN
@interface NSFileHandle : NSObject
@property(class, readonly, strong) NSFileHandle* fileHandleWithNullDevice;
@property(readonly, copy) NSData* availableData;
@property(nullable, copy) void (^readabilityHandler)(NSFileHandle* handle);
@property(readonly) int fileDescriptor;
@end
@interface NSPipe : NSObject
+ (NSPipe*)pipe;
@property(readonly, strong) NSFileHandle* fileHandleForReading;
@end
@interface NSTask : NSObject
- (instancetype)init NS_DESIGNATED_INITIALIZER;
@property(nullable, copy) NSURL* executableURL;
@property(nullable, copy) NSArray<NSString*>* arguments;
@property(nullable, strong) id standardInput;
@property(nullable, strong) id standardOutput;
@property(nullable, strong) id standardError;
@property(readonly, getter=isRunning) BOOL running;
@property(readonly) int processIdentifier;
@property(nullable, copy) void (^terminationHandler)(NSTask* task);
- (BOOL)launchAndReturnError:(NSError* _Nullable* _Nullable)error;
@end

@interface NSAppleEventDescriptor : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSInteger numberOfItems;
@property(nullable, readonly, copy) NSString* stringValue;
- (nullable NSAppleEventDescriptor*)descriptorAtIndex:(NSInteger)index;
@end
@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager*)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end
@interface NSAppleScript : NSObject <NSCopying>
- (nullable instancetype)initWithSource:(NSString*)source NS_DESIGNATED_INITIALIZER;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo;
@end
NS_ASSUME_NONNULL_END
