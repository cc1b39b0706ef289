// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#include "../CoreGraphics/CoreGraphics.h"
#include "../decl.h"

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
extern "C" const NSRect NSZeroRect;
static inline NSSize NSMakeSize(CGFloat width, CGFloat height) {
    return NSSize{width, height};
}
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return NSRect{{x, y}, {width, height}};
}
DECL_ENUM(NSUInteger, NSRectEdge){NSRectEdgeMinX = 0, NSRectEdgeMinY = 1, NSRectEdgeMaxX = 2, NSRectEdgeMaxY = 3};

NS_ASSUME_NONNULL_BEGIN
@class NSArray<__covariant T>, NSCoder, NSData, NSDictionary<__covariant K, __covariant V>, NSError, NSNumber,
    NSString;
typedef NSString* NSNotificationName;
typedef NSString* NSKeyValueChangeKey;
typedef struct _NSZone NSZone;

@protocol NSObject
- (BOOL)isKindOfClass:(Class)cls;
- (BOOL)isEqual:(nullable id)object;
@end
@protocol NSCopying
- (id)copyWithZone:(nullable NSZone*)zone;
@end
@protocol NSCoding
- (void)encodeWithCoder:(NSCoder*)coder;
- (nullable instancetype)initWithCoder:(NSCoder*)coder;
@end
@protocol NSSecureCoding <NSCoding>
@end
__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (void)dealloc;
@end

DECL_OPTIONS(NSUInteger, NSKeyValueObservingOptions){
    NSKeyValueObservingOptionNew = 1, NSKeyValueObservingOptionOld = 2, NSKeyValueObservingOptionInitial = 4};
extern "C" NSKeyValueChangeKey const NSKeyValueChangeNewKey;
@interface NSObject (NSKeyValueObserving)
- (void)observeValueForKeyPath:(nullable NSString*)keyPath
                      ofObject:(nullable id)object
                        change:(nullable NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(nullable void*)context;
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(nullable void*)context;
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(nullable void*)context;
@end

@interface NSNotification : NSObject <NSCopying, NSCoding>
@property(readonly, copy) NSNotificationName name;
@end
@class NSOperationQueue;
@interface NSNotificationCenter : NSObject
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)object
                             queue:(nullable NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end
@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue* mainQueue;
@end
NS_ASSUME_NONNULL_END
