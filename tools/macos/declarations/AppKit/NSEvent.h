// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
DECL_OPTIONS(unsigned long long, NSEventMask){
    NSEventMaskLeftMouseDown = 1ULL << 1, NSEventMaskLeftMouseUp = 1ULL << 2, NSEventMaskRightMouseDown = 1ULL << 3,
    NSEventMaskRightMouseUp = 1ULL << 4, NSEventMaskKeyDown = 1ULL << 10};
DECL_OPTIONS(NSUInteger,
             NSEventModifierFlags){NSEventModifierFlagShift = 1UL << 17, NSEventModifierFlagControl = 1UL << 18,
                                   NSEventModifierFlagOption = 1UL << 19, NSEventModifierFlagCommand = 1UL << 20};
DECL_ENUM(NSUInteger, NSEventType){NSEventTypeLeftMouseDown = 1, NSEventTypeRightMouseUp = 4,
                                   NSEventTypeLeftMouseDragged = 6};
@class NSGraphicsContext;
@interface NSEvent : NSObject <NSCopying, NSCoding>
@property(class, readonly) NSUInteger pressedMouseButtons;
@property(class, readonly) NSEventModifierFlags modifierFlags;
+ (nullable NSEvent*)eventWithCGEvent:(CGEventRef)event;
@property(readonly) NSEventType type;
@property(readonly) NSTimeInterval timestamp;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(readonly) unsigned short keyCode;
@property(nullable, readonly, copy) NSString* charactersIgnoringModifiers;
@property(readonly) NSPoint locationInWindow;
+ (nullable NSEvent*)mouseEventWithType:(NSEventType)type
                               location:(NSPoint)location
                          modifierFlags:(NSEventModifierFlags)flags
                              timestamp:(NSTimeInterval)time
                           windowNumber:(NSInteger)windowNumber
                                context:(nullable NSGraphicsContext*)context
                            eventNumber:(NSInteger)eventNumber
                             clickCount:(NSInteger)clickCount
                               pressure:(float)pressure;
+ (nullable id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent* event))block;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)monitor;
@end
NS_ASSUME_NONNULL_END
