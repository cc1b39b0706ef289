// SPDX-License-Identifier: MIT
#pragma once

#import <Foundation/Foundation.h>

#include <functional>

NS_ASSUME_NONNULL_BEGIN
/// Tells of a property's new value whenever it changes, on whatever thread changes it, for as long as this lives and
/// has not been ended. Keeps the object that it observes.
@interface StowpocketKeyPathObservation : NSObject
- (instancetype)initWithObject:(NSObject*)object
                       keyPath:(NSString*)keyPath
                       options:(NSKeyValueObservingOptions)options
                       changed:(std::function<void(id _Nullable)>)changed;
/// Nothing is told any more, and the object is let go.
- (void)end;
@end
NS_ASSUME_NONNULL_END
