// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSObject.h"

NS_ASSUME_NONNULL_BEGIN
typedef struct {
    unsigned long state;
    id __unsafe_unretained _Nullable* _Nullable itemsPtr;
    unsigned long* _Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)count;
@end

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };
@interface NSString : NSObject <NSCopying, NSSecureCoding>
- (nullable instancetype)initWithBytes:(const void*)bytes
                                length:(NSUInteger)length
                              encoding:(NSStringEncoding)encoding;
@property(readonly, copy) NSString* lowercaseString;
@property(readonly, copy) NSString* uppercaseString;
- (BOOL)isEqualToString:(NSString*)string;
- (NSString*)stringByAppendingPathComponent:(NSString*)component;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
@end
typedef NSString* NSAttributedStringKey;
@interface NSAttributedString : NSObject <NSCopying, NSSecureCoding>
- (instancetype)initWithString:(NSString*)string
                    attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attributes;
@end

@interface NSNumber : NSObject <NSCopying, NSSecureCoding>
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithLong:(long)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
+ (NSNumber*)numberWithDouble:(double)value;
@property(readonly) BOOL boolValue;
@property(readonly) double doubleValue;
@property(readonly) long long longLongValue;
@end
@interface NSData : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes;
@end
@interface NSDate : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)seconds;
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds;
@property(readonly) NSTimeInterval timeIntervalSince1970;
@end

@interface NSArray<__covariant T> : NSObject <NSCopying, NSSecureCoding, NSFastEnumeration>
+ (instancetype)arrayWithObjects:(const T _Nonnull[_Nullable])objects count:(NSUInteger)count;
@property(readonly) NSUInteger count;
@property(nullable, readonly) T firstObject;
- (BOOL)containsObject:(T)object;
- (T)objectAtIndexedSubscript:(NSUInteger)index;
@end
@interface NSMutableArray<T> : NSArray <T>
+ (instancetype)arrayWithCapacity:(NSUInteger)capacity;
- (void)addObject:(T)object;
@end
@interface NSDictionary<__covariant K, __covariant V> : NSObject <NSCopying, NSSecureCoding, NSFastEnumeration>
+ (instancetype)dictionaryWithObjects:(const V _Nonnull[_Nullable])objects
                              forKeys:(const K<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
@property(readonly) NSUInteger count;
- (nullable V)objectForKeyedSubscript:(K)key;
@end
@interface NSMutableDictionary<K, V> : NSDictionary <K, V>
+ (instancetype)dictionary;
- (void)setObject:(nullable V)object forKeyedSubscript:(K<NSCopying>)key;
@end

@interface NSError : NSObject <NSCopying, NSSecureCoding>
@end

DECL_OPTIONS(NSUInteger, NSPropertyListReadOptions){NSPropertyListImmutable = 0};
typedef NSUInteger NSPropertyListWriteOptions;
DECL_ENUM(NSUInteger, NSPropertyListFormat){NSPropertyListXMLFormat_v1_0 = 100,
                                            NSPropertyListBinaryFormat_v1_0 = 200};
@interface NSPropertyListSerialization : NSObject
+ (nullable id)propertyListWithData:(NSData*)data
                            options:(NSPropertyListReadOptions)options
                             format:(nullable NSPropertyListFormat*)format
                              error:(NSError* _Nullable* _Nullable)error;
+ (nullable NSData*)dataWithPropertyList:(id)list
                                  format:(NSPropertyListFormat)format
                                 options:(NSPropertyListWriteOptions)options
                                   error:(NSError* _Nullable* _Nullable)error;
@end
@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable id)objectForKey:(NSString*)key;
- (void)setObject:(nullable id)value forKey:(NSString*)key;
- (void)removeObjectForKey:(NSString*)key;
- (void)registerDefaults:(NSDictionary<NSString*, id>*)defaults;
@end
NS_ASSUME_NONNULL_END
